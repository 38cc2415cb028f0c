#include "sql/Literals.h"

#include <cstdio>

#include "connection/SqlValueFormatter.h"
#include "runtime/Numbers.h"

namespace ZTkDb::detail {

std::string LongLiteral(int64_t value) { return std::to_string(value); }

std::string FlagLiteral(bool value, int16_t kind) {
  if (!value) return "0";
  return kind == 1 ? "-1" : "1";
}

std::string NumberLiteral(double value) { return InvariantNumberText(value); }

std::string CurrencyLiteral(const Currency& value) { return value.Text(); }

std::string FilterDateLiteral(const Date& value, int16_t kind) {
  if (kind == 1) return SqlValueFormatter::Instance().DateLiteral(value);
  char buf[16];
  std::snprintf(buf, sizeof buf, "%02d.%02d.%04d", value.Day(), value.Month(), value.Year());
  return buf;
}

std::string RecordDateText(const Date& value) { return value.ShortText(); }

std::string TextValue(const std::string& value) {
  return SqlValueFormatter::Instance().TextLiteral(value);
}

std::string IdListLiteral(const std::vector<std::string>& ids) {
  std::string out = "IN(";
  for (const auto& id : ids) out += id + ",";
  out.pop_back();
  return out + ")";
}

}  // namespace ZTkDb::detail
