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
  AppendTextLiteral(out, text);
  return out;
}

void SqlValueFormatter::AppendTextLiteral(std::string& out, std::string_view text) const {
  // Runs between quotes copied whole: most texts hold none.
  size_t from = 0;
  for (size_t q = text.find('\''); q != std::string_view::npos; q = text.find('\'', from)) {
    out.append(text.substr(from, q + 1 - from));
    out += '\'';
    from = q + 1;
  }
  out.append(text.substr(from));
}

}  // namespace ZTkDb::detail
