#include "sql/SqlTemplate.h"

namespace ZTkDb::detail {

SqlTemplate& SqlTemplate::Replace(std::string_view placeholder, std::string_view value) {
  if (placeholder.empty()) return *this;
  size_t pos = text_.find(placeholder);
  if (pos == std::string::npos) return *this;
  std::string out;
  out.reserve(text_.size() + value.size() * 2);
  size_t from = 0;
  while (pos != std::string::npos) {
    out.append(text_, from, pos - from);
    out.append(value);
    from = pos + placeholder.size();
    pos = text_.find(placeholder, from);
  }
  out.append(text_, from, std::string::npos);
  text_ = std::move(out);
  return *this;
}

}  // namespace ZTkDb::detail
