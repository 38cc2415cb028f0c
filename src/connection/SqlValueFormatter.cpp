#include "connection/SqlValueFormatter.h"

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
  for (char c : text) {
    if (c == '\'') out += '\'';
    out += c;
  }
  return out;
}

}  // namespace ZTkDb::detail
