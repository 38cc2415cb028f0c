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
  // Runs between quotes copied whole: most texts hold none.
  std::string out;
  out.reserve(text.size() + 2);
  size_t from = 0;
  for (size_t q = text.find('\''); q != std::string::npos; q = text.find('\'', from)) {
    out.append(text, from, q + 1 - from);
    out += '\'';
    from = q + 1;
  }
  out.append(text, from, std::string::npos);
  return out;
}

}  // namespace ZTkDb::detail
