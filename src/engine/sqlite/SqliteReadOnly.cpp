#include "engine/sqlite/SqliteReadOnly.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace ZTkDb::detail {

namespace {

std::string Word(const std::string& text, size_t& at) {
  at = std::min(text.find_first_not_of(" \t\r\n", at), text.size());
  size_t end = at;
  while (end < text.size() &&
         (std::isalnum(static_cast<unsigned char>(text[end])) || text[end] == '_')) {
    ++end;
  }
  std::string word = text.substr(at, end - at);
  for (char& c : word) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  at = end;
  return word;
}

}  // namespace

bool MayRunReadOnly(const std::string& text) {
  size_t at = 0;
  const std::string first = Word(text, at);
  if (first == "explain" || first == "with") return true;
  if (first != "pragma" || text.find('=') != std::string::npos) return false;
  std::string name = Word(text, at);
  if (at < text.size() && text[at] == '.') name = Word(text, ++at);  // schema.name
  if (text.find('(') == std::string::npos) return true;
  static constexpr std::string_view kQuestions[] = {
      "table_info", "table_xinfo",      "table_list",        "index_info",      "index_xinfo",
      "index_list", "foreign_key_list", "foreign_key_check", "integrity_check", "quick_check"};
  return std::find(std::begin(kQuestions), std::end(kQuestions), name) != std::end(kQuestions);
}

}  // namespace ZTkDb::detail
