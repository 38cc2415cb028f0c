#include "connection/SqlValueFormatter.h"

#include "runtime/Quoting.h"

namespace ZTkDb::detail {

SqlValueFormatter& SqlValueFormatter::Instance() {
  static auto* instance = new SqlValueFormatter;  // never destroyed, as the registry
  return *instance;
}

std::string SqlValueFormatter::DateLiteral(const Date& date) const {
  return "#" + date.IsoText() + "#";
}

std::string SqlValueFormatter::TextLiteral(const std::string& text) const {
  std::string out;
  out.reserve(text.size() + 2);
  AppendTextLiteral(out, text);
  return out;
}

void SqlValueFormatter::AppendTextLiteral(std::string& out, std::string_view text) const {
  AppendDoubled(out, text, '\'');
}

}  // namespace ZTkDb::detail
