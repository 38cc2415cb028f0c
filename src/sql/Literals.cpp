#include "sql/Literals.h"

#include <cassert>
#include <cmath>
#include <cstdio>

#include "connection/SqlValueFormatter.h"
#include "runtime/Numbers.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {

std::string LongLiteral(int64_t value) { return std::to_string(value); }

std::string FlagLiteral(bool value, StorageKind kind) {
  if (!value) return "0";
  return kind == StorageKind::Jet ? "-1" : "1";
}

std::string NumberLiteral(double value) { return InvariantNumberText(value); }

std::string CurrencyLiteral(const Currency& value, StorageKind kind, int64_t largest) {
  CheckStorableCurrency(value, kind, largest);
  return value.Text();
}

namespace {

// "dd.mm.yyyy" with an optional " hh:nn:ss", or the same in ISO order:
// the only shapes a date may take in a statement.
[[maybe_unused]] bool WellFormed(const std::string& text) {
  auto digits = [&](size_t at, size_t n) {
    for (size_t i = at; i < at + n; ++i) {
      if (i >= text.size() || text[i] < '0' || text[i] > '9') return false;
    }
    return true;
  };
  const bool german = text.size() >= 10 && digits(0, 2) && text[2] == '.' && digits(3, 2) &&
                      text[5] == '.' && digits(6, 4);
  const bool iso = text.size() >= 10 && digits(0, 4) && text[4] == '-' && digits(5, 2) &&
                   text[7] == '-' && digits(8, 2);
  if (!german && !iso) return false;
  return text.size() == 10 ||
         (text.size() == 19 && text[10] == ' ' && digits(11, 2) && text[13] == ':' &&
          digits(14, 2) && text[16] == ':' && digits(17, 2));
}

}  // namespace

std::string FilterDateLiteral(const Date& value, StorageKind kind) {
  CheckStorableDate(value);
  if (kind == StorageKind::Jet) {
    std::string text = SqlValueFormatter::Instance().DateLiteral(value);
    assert(text.size() >= 12 && WellFormed(text.substr(1, text.size() - 2)));
    return text;
  }
  char buf[16];
  std::snprintf(buf, sizeof buf, "%02d.%02d.%04d", value.Day(), value.Month(), value.Year());
  assert(WellFormed(buf));
  return buf;
}

std::string RecordDateText(const Date& value) {
  CheckStorableDate(value);
  std::string text = value.ShortText();
  assert(WellFormed(text));
  return text;
}

std::string TextValue(const std::string& value) {
  return SqlValueFormatter::Instance().TextLiteral(value);
}

void AppendTextValue(std::string& out, std::string_view value) {
  SqlValueFormatter::Instance().AppendTextLiteral(out, value);
}

std::string IdListLiteral(const std::vector<std::string>& ids) {
  std::string out = "IN(";
  for (const auto& id : ids) out += id + ",";
  out.pop_back();
  return out + ")";
}

}  // namespace ZTkDb::detail
