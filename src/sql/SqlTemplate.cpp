#include "sql/SqlTemplate.h"

#include <algorithm>
#include <cstdint>

#include "runtime/Raise.h"

namespace ZTkDb::detail {
namespace {

// A table: every character of every placeholder of every statement asks.
struct NameChars {
  bool is[256] = {};
  constexpr NameChars() {
    for (int c = 0; c < 256; ++c) {
      is[c] = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
    }
  }
};
constexpr NameChars kNameChars;

bool IsNameChar(char c) { return kNameChars.is[static_cast<unsigned char>(c)]; }

// "#name#" at `at`; gives the position after it, or 0 when there is none.
size_t PlaceholderEnd(std::string_view text, size_t at) {
  size_t j = at + 1;
  while (j < text.size() && IsNameChar(text[j])) ++j;
  return j > at + 1 && j < text.size() && text[j] == '#' ? j + 1 : 0;
}

bool IsPlainPlaceholder(std::string_view p) {
  if (p.size() < 3 || p.front() != '#' || p.back() != '#') return false;
  for (size_t i = 1; i + 1 < p.size(); ++i) {
    if (!IsNameChar(p[i])) return false;
  }
  return true;
}

// Whether `value` holds a placeholder's form, "#name#": only then can a
// later step find anything in it. A '#' at a value's edge cannot join the
// text around it into one, since a placeholder filled in one pass stands
// clear of name characters and '#' on both sides (Flush checks that).
bool HoldsPlaceholder(std::string_view value) {
  for (size_t i = value.find('#'); i != std::string_view::npos; i = value.find('#', i + 1)) {
    size_t j = i + 1;
    while (j < value.size() && IsNameChar(value[j])) ++j;
    if (j > i + 1 && j < value.size() && value[j] == '#') return true;
  }
  return false;
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

void SqlTemplate::TakeConstant() const {
  if (!pending_constant_) return;
  text_.assign(constant_);
  pending_constant_ = false;
}

SqlTemplate& SqlTemplate::Replace(std::string_view placeholder, std::string_view value) {
  if (placeholder.empty()) return *this;
  if (!stepwise_ && !HoldsPlaceholder(value) && IsPlainPlaceholder(placeholder)) {
    // A read has a few steps, an update some forty: room for a read's at once.
    if (pending_.empty()) pending_.reserve(8);
    pending_.emplace_back(placeholder, value);
    return *this;
  }
  Flush();
  TakeConstant();
  stepwise_ = true;
  ReplaceAll(text_, placeholder, value);
  return *this;
}

void SqlTemplate::Flush() const {
  if (pending_.empty()) {
    TakeConstant();
    return;
  }
  const std::string_view text = Current();
  // One pass: each placeholder of the text takes the value of the first step
  // that named it (a later step with the same name would find nothing). An
  // update fills some forty names at eighty places: the steps are found by
  // name in a small open-addressed table that keeps the first of a name, on
  // the stack for any usual number of steps; a read's few steps are simply
  // compared in order.
  constexpr size_t kInPlace = 128;
  constexpr size_t kCompared = 8;
  const bool hashed = pending_.size() > kCompared;
  size_t slots = hashed ? 16 : 1;
  while (hashed && slots < pending_.size() * 2) slots *= 2;
  int32_t inPlace[kInPlace];
  std::vector<int32_t> onHeap;
  int32_t* table = inPlace;
  if (slots > kInPlace) {
    onHeap.resize(slots);
    table = onHeap.data();
  }
  std::fill(table, table + slots, -1);
  const auto home = [slots](std::string_view name) {
    uint32_t h = 2166136261u;
    for (char c : name) h = (h ^ static_cast<unsigned char>(c)) * 16777619u;
    return h & (slots - 1);
  };
  for (size_t k = 0; hashed && k < pending_.size(); ++k) {
    const std::string& name = pending_[k].first;
    size_t at = home(name);
    while (table[at] >= 0 && pending_[static_cast<size_t>(table[at])].first != name) {
      at = (at + 1) & (slots - 1);
    }
    if (table[at] < 0) table[at] = static_cast<int32_t>(k);
  }
  const auto find = [&](std::string_view name) -> const std::string* {
    if (!hashed) {
      for (const auto& step : pending_) {
        if (step.first == name) return &step.second;
      }
      return nullptr;
    }
    for (size_t at = home(name); table[at] >= 0; at = (at + 1) & (slots - 1)) {
      const auto& step = pending_[static_cast<size_t>(table[at])];
      if (step.first == name) return &step.second;
    }
    return nullptr;
  };
  // First the check, the places and the size, then the text: nothing is
  // taken before the size is known to be allowed.
  struct Filled {
    size_t at, end;
    const std::string* value;
  };
  constexpr size_t kFilledInPlace = 128;
  Filled filledInPlace[kFilledInPlace];
  std::vector<Filled> filledMore;
  size_t filled = 0;
  size_t size = text.size();
  for (size_t i = text.find('#'); i != std::string_view::npos; i = text.find('#', i)) {
    const size_t end = PlaceholderEnd(text, i);
    const bool clear =
        end != 0 && (i == 0 || (!IsNameChar(text[i - 1]) && text[i - 1] != '#')) &&
        (end == text.size() || (!IsNameChar(text[end]) && text[end] != '#'));
    if (!clear) {
      // Placeholders that touch one another or the text around them: step
      // by step, as the steps were asked for.
      TakeConstant();
      for (const auto& [placeholder, value] : pending_) ReplaceAll(text_, placeholder, value);
      pending_.clear();
      return;
    }
    if (const std::string* value = find(text.substr(i, end - i))) {
      size = size - (end - i) + value->size();
      const Filled f{i, end, value};
      if (filled < kFilledInPlace) {
        filledInPlace[filled] = f;
      } else {
        filledMore.push_back(f);
      }
      ++filled;
    }
    i = end;
  }
  if (size > kMaxText) RaiseTooLarge();
  std::string out;
  out.reserve(size);
  size_t from = 0;
  for (size_t n = 0; n < filled; ++n) {
    const Filled& f = n < kFilledInPlace ? filledInPlace[n] : filledMore[n - kFilledInPlace];
    out.append(text.substr(from, f.at - from));
    out.append(*f.value);
    from = f.end;
  }
  out.append(text.substr(from));
  text_ = std::move(out);
  pending_constant_ = false;
  pending_.clear();
}

}  // namespace ZTkDb::detail
