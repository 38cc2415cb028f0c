#include "sql/SqlTemplate.h"

#include "runtime/Raise.h"

namespace ZTkDb::detail {
namespace {

bool IsNameChar(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

// "#name#" at `at`; gives the position after it, or 0 when there is none.
size_t PlaceholderEnd(const std::string& text, size_t at) {
  size_t j = at + 1;
  while (j < text.size() && IsNameChar(text[j])) ++j;
  return j > at + 1 && j < text.size() && text[j] == '#' ? j + 1 : 0;
}

// Every '#' belongs to a placeholder, and no placeholder touches a name
// character or another '#': then values without a '#' cannot make new
// placeholders out of the text around them.
bool PlaceholdersStandClear(const std::string& text) {
  for (size_t i = text.find('#'); i != std::string::npos; i = text.find('#', i)) {
    const size_t end = PlaceholderEnd(text, i);
    if (end == 0) return false;
    if (i > 0 && (IsNameChar(text[i - 1]) || text[i - 1] == '#')) return false;
    if (end < text.size() && (IsNameChar(text[end]) || text[end] == '#')) return false;
    i = end;
  }
  return true;
}

bool IsPlainPlaceholder(std::string_view p) {
  if (p.size() < 3 || p.front() != '#' || p.back() != '#') return false;
  for (size_t i = 1; i + 1 < p.size(); ++i) {
    if (!IsNameChar(p[i])) return false;
  }
  return true;
}

}  // namespace

void SqlTemplate::RaiseTooLarge() {
  Raise(7, "ZTkDb.SqlTemplate",
        "Out of memory: the filled statement would be larger than 16 MB; nothing was sent.");
}

void SqlTemplate::ReplaceAll(std::string& text, std::string_view placeholder,
                             std::string_view value) {
  size_t pos = text.find(placeholder);
  if (pos == std::string::npos) return;
  size_t count = 0;
  for (size_t p = pos; p != std::string::npos; p = text.find(placeholder, p + placeholder.size())) {
    ++count;
  }
  const size_t grown = value.size() > placeholder.size() ? value.size() - placeholder.size() : 0;
  if (grown > 0 && (grown > kMaxText / count || text.size() + grown * count > kMaxText)) {
    RaiseTooLarge();
  }
  std::string out;
  out.reserve(text.size() + grown * count);
  size_t from = 0;
  while (pos != std::string::npos) {
    out.append(text, from, pos - from);
    out.append(value);
    from = pos + placeholder.size();
    pos = text.find(placeholder, from);
  }
  out.append(text, from, std::string::npos);
  text = std::move(out);
}

SqlTemplate& SqlTemplate::Replace(std::string_view placeholder, std::string_view value) {
  if (placeholder.empty()) return *this;
  if (!stepwise_ && value.find('#') == std::string_view::npos && IsPlainPlaceholder(placeholder)) {
    pending_.emplace_back(placeholder, value);
    return *this;
  }
  Flush();
  stepwise_ = true;
  ReplaceAll(text_, placeholder, value);
  return *this;
}

void SqlTemplate::Flush() const {
  if (pending_.empty()) return;
  if (!PlaceholdersStandClear(text_)) {
    for (const auto& [placeholder, value] : pending_) ReplaceAll(text_, placeholder, value);
    pending_.clear();
    return;
  }
  // One pass: each placeholder of the text takes the value of the first step
  // that named it (a later step with the same name would find nothing).
  std::string out;
  out.reserve(text_.size() * 2);
  size_t from = 0;
  for (size_t i = text_.find('#'); i != std::string::npos; i = text_.find('#', i)) {
    const size_t end = PlaceholderEnd(text_, i);
    const std::string_view name(text_.data() + i, end - i);
    const std::pair<std::string, std::string>* step = nullptr;
    for (const auto& p : pending_) {
      if (p.first == name) {
        step = &p;
        break;
      }
    }
    if (step) {
      if (out.size() + (i - from) + step->second.size() > kMaxText) RaiseTooLarge();
      out.append(text_, from, i - from);
      out.append(step->second);
      from = end;
    }
    i = end;
  }
  out.append(text_, from, std::string::npos);
  text_ = std::move(out);
  pending_.clear();
}

}  // namespace ZTkDb::detail
