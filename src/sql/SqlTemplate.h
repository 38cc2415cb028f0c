#pragma once

#include <string>
#include <string_view>

namespace ZTkDb::detail {

// A statement text with placeholders (a name between two '#'), filled by
// successive case-sensitive replace-all steps. Each step scans the whole text
// as it stands, so a value holding a later placeholder's name is replaced by
// that later step; the text a step inserts is not rescanned by the same step.
class SqlTemplate {
 public:
  explicit SqlTemplate(std::string text) : text_(std::move(text)) {}

  SqlTemplate& Replace(std::string_view placeholder, std::string_view value);
  const std::string& Text() const& { return text_; }
  std::string Text() && { return std::move(text_); }

 private:
  std::string text_;
};

}  // namespace ZTkDb::detail
