#include "sql/SqlTemplate.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "runtime/Raise.h"
#include "runtime/SpareText.h"

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

namespace {

// The step lists of templates dropped on this thread, for the next ones:
// an update's forty-odd steps take a block past the allocator's fast
// caches, and every statement fills a template.
template <typename Step>
struct SpareSteps {
  std::vector<Step> steps;
  ~SpareSteps() { gone = true; }
  static thread_local bool gone;  // trivially destroyed: readable to the end
};
template <typename Step>
thread_local bool SpareSteps<Step>::gone = false;
template <typename Step>
SpareSteps<Step>& Spare() {
  thread_local SpareSteps<Step> spare;
  return spare;
}

}  // namespace

void SqlTemplate::BeginSteps() {
  if (steps_.capacity() < 48 && !SpareSteps<Step>::gone) steps_.swap(Spare<Step>().steps);
  steps_.clear();
  steps_.reserve(48);  // an update's forty-odd values, in one block
  if (arena_.capacity() < 128) arena_ = TakeSpareText();
  arena_.reserve(128);
}

SqlTemplate::~SqlTemplate() {
  GiveBackText(std::move(arena_));
  GiveBackText(std::move(text_));
  if (steps_.capacity() >= 48 && !SpareSteps<Step>::gone) {
    std::vector<Step>& spare = Spare<Step>().steps;
    if (spare.capacity() < steps_.capacity()) spare.swap(steps_);
  }
}

bool SqlTemplate::IsPlain(std::string_view placeholder) { return IsPlainPlaceholder(placeholder); }

SqlTemplate& SqlTemplate::Replace(std::string_view placeholder, std::string_view value) {
  if (placeholder.empty()) return *this;
  return AddStep(placeholder, value, IsPlainPlaceholder(placeholder));
}

SqlTemplate& SqlTemplate::AddStep(std::string_view placeholder, std::string_view value, bool plain,
                                   const char* constant) {
  if (!stepwise_ && plain && !HoldsPlaceholder(value)) {
    // Names and values side by side in one buffer: an update collects some
    // forty steps, and a pair of strings per step cost more than filling.
    if (steps_.empty()) BeginSteps();
    const auto at = static_cast<uint32_t>(arena_.size());
    arena_.append(placeholder);
    arena_.append(value);
    steps_.push_back({at, static_cast<uint32_t>(placeholder.size()),
                      static_cast<uint32_t>(value.size()), constant});
    return *this;
  }
  Flush();
  TakeConstant();
  stepwise_ = true;
  ReplaceAll(text_, placeholder, value);
  return *this;
}

std::string& SqlTemplate::OpenStep(std::string_view placeholder, bool plain, const char* constant) {
  if (!stepwise_ && plain) {
    if (steps_.empty()) BeginSteps();
    open_side_ = false;
    open_at_ = arena_.size();
    open_name_size_ = placeholder.size();
    open_constant_ = constant;
    arena_.append(placeholder);
    return arena_;
  }
  open_side_ = true;
  side_name_.assign(placeholder);
  side_.clear();
  return side_;
}

SqlTemplate& SqlTemplate::CloseStep() {
  if (open_side_) return Replace(side_name_, side_);
  const std::string_view value = std::string_view(arena_).substr(open_at_ + open_name_size_);
  if (HoldsPlaceholder(value)) {
    // Not one to collect: taken out again and filled as Replace would.
    side_name_.assign(arena_, open_at_, open_name_size_);
    side_.assign(value);
    arena_.resize(open_at_);
    return Replace(side_name_, side_);
  }
  steps_.push_back({static_cast<uint32_t>(open_at_), static_cast<uint32_t>(open_name_size_),
                    static_cast<uint32_t>(value.size()), open_constant_});
  return *this;
}

namespace {

// Most pieces of a filled text are a few bytes (", T_Auftrag.", a number):
// copied in place rather than by a call each.
// `n` bytes, sizeof(Word) <= n <= 2 * sizeof(Word), as two words that may
// overlap.
template <typename Word>
inline void CopyEnds(char* to, const char* from, size_t n) {
  Word a, b;
  std::memcpy(&a, from, sizeof a);
  std::memcpy(&b, from + n - sizeof b, sizeof b);
  std::memcpy(to, &a, sizeof a);
  std::memcpy(to + n - sizeof b, &b, sizeof b);
}

inline void CopyPiece(char* to, const char* from, size_t n) {
  if (n > 16) {
    std::memcpy(to, from, n);
  } else if (n >= 8) {
    CopyEnds<uint64_t>(to, from, n);
  } else if (n >= 4) {
    CopyEnds<uint32_t>(to, from, n);
  } else {
    for (size_t i = 0; i < n; ++i) to[i] = from[i];
  }
}

// A placeholder's name hashed from its length and its first and last eight
// bytes: names differ there, and every place and step asks.
uint32_t NameHash(std::string_view name) {
  uint64_t a = 0, b = 0;
  if (name.size() >= 8) {
    std::memcpy(&a, name.data(), 8);
    std::memcpy(&b, name.data() + name.size() - 8, 8);
  } else {
    std::memcpy(&a, name.data(), name.size());
  }
  uint64_t h = (a * 0x9E3779B97F4A7C15ull) ^ (b * 0xC2B2AE3D27D4EB4Full) ^ name.size();
  return static_cast<uint32_t>(h ^ (h >> 29));
}

}  // namespace

// Where a template's placeholders stand, each with its name's hash; `clear`
// when every one stands clear of the text around it (otherwise the steps
// are done one by one). With them, which step filled each place the last
// time, and the names of that time's steps: the same steps in the same
// order fill the same places.
struct TemplatePlaces {
  struct Place {
    uint32_t at, end, hash;
  };
  std::vector<Place> places;
  bool clear = true;
  std::string step_names;
  std::vector<uint32_t> step_name_ends;
  std::vector<const char*> step_constants;  // where a compiled name stood, or nullptr
  std::vector<int32_t> step_of_place;
};

namespace {

void FindPlaces(std::string_view text, TemplatePlaces& out) {
  out.places.clear();
  out.clear = true;
  out.step_names.clear();
  out.step_name_ends.clear();
  out.step_constants.clear();
  out.step_of_place.clear();
  for (size_t i = text.find('#'); i != std::string_view::npos; i = text.find('#', i)) {
    const size_t end = PlaceholderEnd(text, i);
    const bool clear =
        end != 0 && (i == 0 || (!IsNameChar(text[i - 1]) && text[i - 1] != '#')) &&
        (end == text.size() || (!IsNameChar(text[end]) && text[end] != '#'));
    if (!clear) {
      out.clear = false;
      return;
    }
    out.places.push_back({static_cast<uint32_t>(i), static_cast<uint32_t>(end),
                          NameHash(text.substr(i, end - i))});
    i = end;
  }
}

// The places of the constant templates this thread filled last, checked
// against the text itself (a constant is usually a literal of the program,
// but nothing stops a caller from reusing a buffer).
TemplatePlaces& PlacesOf(const char* constant, std::string_view text) {
  struct Known {
    const char* constant = nullptr;
    std::string text;
    TemplatePlaces places;
  };
  constexpr size_t kKnown = 32;
  thread_local Known known[kKnown];
  Known& k = known[(reinterpret_cast<uintptr_t>(constant) >> 4) % kKnown];
  if (k.constant != constant || k.text != text) {
    k.constant = constant;
    k.text.assign(text);
    FindPlaces(text, k.places);
  }
  return k.places;
}

}  // namespace

void SqlTemplate::Flush() const {
  if (steps_.empty()) {
    TakeConstant();
    return;
  }
  const std::string_view text = Current();
  const auto nameOf = [this](const Step& step) {
    return std::string_view(arena_).substr(step.at, step.name_size);
  };
  const auto valueOf = [this](const Step& step) {
    return std::string_view(arena_).substr(step.at + step.name_size, step.value_size);
  };
  TemplatePlaces local;
  if (!pending_constant_) FindPlaces(text, local);
  TemplatePlaces& found = pending_constant_ ? PlacesOf(constant_, text) : local;
  if (!found.clear) {
    // Placeholders that touch one another or the text around them: step
    // by step, as the steps were asked for.
    TakeConstant();
    for (const Step& step : steps_) ReplaceAll(text_, nameOf(step), valueOf(step));
    steps_.clear();
    arena_.clear();
    return;
  }
  const size_t places = found.places.size();
  bool same = found.step_name_ends.size() == steps_.size();
  for (size_t k = 0, from = 0; same && k < steps_.size(); from = found.step_name_ends[k++]) {
    // A compiled name at the same address is the same name.
    same = (steps_[k].constant && steps_[k].constant == found.step_constants[k]) ||
           std::string_view(found.step_names).substr(from, found.step_name_ends[k] - from) ==
               nameOf(steps_[k]);
  }
  if (!same) MatchSteps(text, found);
  // First the size, then the text: nothing is taken before the size is
  // known to be allowed.
  size_t size = text.size();
  for (size_t n = 0; n < places; ++n) {
    const int32_t k = found.step_of_place[n];
    if (k < 0) continue;
    const TemplatePlaces::Place& place = found.places[n];
    size = size - (place.end - place.at) + steps_[static_cast<size_t>(k)].value_size;
  }
  if (size > kMaxText) RaiseTooLarge();
  std::string out = TakeSpareText();
  out.resize(size);
  char* w = out.data();
  const auto put = [&w](std::string_view piece) {
    CopyPiece(w, piece.data(), piece.size());
    w += piece.size();
  };
  size_t from = 0;
  for (size_t n = 0; n < places; ++n) {
    const int32_t k = found.step_of_place[n];
    if (k < 0) continue;
    const TemplatePlaces::Place& place = found.places[n];
    put(text.substr(from, place.at - from));
    put(valueOf(steps_[static_cast<size_t>(k)]));
    from = place.end;
  }
  put(text.substr(from));
  GiveBackText(std::move(text_));
  text_ = std::move(out);
  pending_constant_ = false;
  steps_.clear();
  arena_.clear();
}

// Which step fills each place of `found`: each placeholder takes the value
// of the first step that named it (a later step with the same name would
// find nothing). The steps are found by name in a small open-addressed
// table that keeps the first of a name, on the stack for any usual number
// of steps.
void SqlTemplate::MatchSteps(std::string_view text, TemplatePlaces& found) const {
  const auto nameOf = [this](const Step& step) {
    return std::string_view(arena_).substr(step.at, step.name_size);
  };
  constexpr size_t kInPlace = 256;
  size_t slots = 16;
  while (slots < steps_.size() * 2) slots *= 2;
  int32_t inPlace[kInPlace];
  std::vector<int32_t> onHeap;
  int32_t* table = inPlace;
  if (slots > kInPlace) {
    onHeap.resize(slots);
    table = onHeap.data();
  }
  std::fill(table, table + slots, -1);
  found.step_names.clear();
  found.step_name_ends.clear();
  found.step_constants.clear();
  for (size_t k = 0; k < steps_.size(); ++k) {
    const std::string_view name = nameOf(steps_[k]);
    found.step_names.append(name);
    found.step_constants.push_back(steps_[k].constant);
    found.step_name_ends.push_back(static_cast<uint32_t>(found.step_names.size()));
    size_t at = NameHash(name) & (slots - 1);
    while (table[at] >= 0 && nameOf(steps_[static_cast<size_t>(table[at])]) != name) {
      at = (at + 1) & (slots - 1);
    }
    if (table[at] < 0) table[at] = static_cast<int32_t>(k);
  }
  found.step_of_place.assign(found.places.size(), -1);
  for (size_t n = 0; n < found.places.size(); ++n) {
    const TemplatePlaces::Place& place = found.places[n];
    const std::string_view name = text.substr(place.at, place.end - place.at);
    for (size_t at = place.hash & (slots - 1); table[at] >= 0; at = (at + 1) & (slots - 1)) {
      if (nameOf(steps_[static_cast<size_t>(table[at])]) == name) {
        found.step_of_place[n] = table[at];
        break;
      }
    }
  }
}

}  // namespace ZTkDb::detail
