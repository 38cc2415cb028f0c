#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZTkDb::detail {

struct TemplatePlaces;

// A placeholder the compiler has checked to be plain: '#', then letters,
// digits or '_', then '#'. A record's forty value slots are such constants;
// steps named by them skip the check a step named by any text needs.
class PlainPlaceholder {
 public:
  consteval PlainPlaceholder(const char* text) : text_(text) {  // NOLINT: converts by design
    if (!IsPlain(text_)) throw "a plain placeholder is #name#";  // fails the compilation
  }
  std::string_view Text() const { return text_; }

 private:
  static constexpr bool IsPlain(std::string_view p) {
    if (p.size() < 3 || p.front() != '#' || p.back() != '#') return false;
    for (size_t i = 1; i + 1 < p.size(); ++i) {
      const char c = p[i];
      if (!((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_')) {
        return false;
      }
    }
    return true;
  }
  std::string_view text_;
};

// A statement text with placeholders (a name between two '#'), filled by
// successive case-sensitive replace-all steps. Each step scans the whole text
// as it stands, so a value holding a later placeholder's name is replaced by
// that later step; the text a step inserts is not rescanned by the same step.
//
// The usual template fills forty placeholders of a two-kilobyte text; doing
// each step as a pass over the text costs more than the engine's own work.
// So while no inserted value holds a placeholder's form (#name#; a date
// such as #11/22/2026# is none) and the template's placeholders stand clear
// of one another, the steps are collected and done in one pass, which gives
// the same text; the first value with one turns every step back into a pass
// of its own.
//
// A filled text never grows past kMaxText: a step that would take it there
// raises error 7 (Out of memory) before it takes the memory, and nothing is
// sent. Values that name placeholders can otherwise double the text with
// every step.
class SqlTemplate {
 public:
  static constexpr size_t kMaxText = size_t{16} << 20;

  explicit SqlTemplate(std::string text) : text_(std::move(text)) {}
  // A template given as a C string (the statements are constants of the
  // program) is read where it stands until a step has to edit it; it must
  // outlive the template.
  explicit SqlTemplate(const char* constant) : constant_(constant), pending_constant_(true) {}
  SqlTemplate(const SqlTemplate&) = default;
  SqlTemplate(SqlTemplate&&) noexcept = default;
  SqlTemplate& operator=(const SqlTemplate&) = default;
  SqlTemplate& operator=(SqlTemplate&&) noexcept = default;
  ~SqlTemplate();

  SqlTemplate& Replace(std::string_view placeholder, std::string_view value);
  // Replace for a placeholder checked when compiled.
  SqlTemplate& Fill(PlainPlaceholder placeholder, std::string_view value) {
    return AddStep(placeholder.Text(), value, true, placeholder.Text().data());
  }
  // The same with the value that `write` appends to the string it is given
  // (written where the template keeps it, without a string of its own).
  template <typename Write>
  SqlTemplate& ReplaceWith(std::string_view placeholder, Write&& write) {
    write(OpenStep(placeholder, IsPlain(placeholder)));
    return CloseStep();
  }
  template <typename Write>
  SqlTemplate& FillWith(PlainPlaceholder placeholder, Write&& write) {
    write(OpenStep(placeholder.Text(), true, placeholder.Text().data()));
    return CloseStep();
  }
  const std::string& Text() const& {
    Flush();
    return text_;
  }
  std::string Text() && {
    Flush();
    return std::move(text_);
  }

 private:
  void Flush() const;
  // Before the first collected step: room for the steps and their values.
  void BeginSteps();
  // The text as it stands: the constant until the first edit.
  std::string_view Current() const { return pending_constant_ ? std::string_view(constant_) : text_; }
  void TakeConstant() const;
  static bool IsPlain(std::string_view placeholder);
  // `constant`: where a placeholder checked when compiled stands; the same
  // address is the same name.
  SqlTemplate& AddStep(std::string_view placeholder, std::string_view value, bool plain,
                       const char* constant = nullptr);
  std::string& OpenStep(std::string_view placeholder, bool plain, const char* constant = nullptr);
  SqlTemplate& CloseStep();
  void MatchSteps(std::string_view text, TemplatePlaces& found) const;
  static void ReplaceAll(std::string& text, std::string_view placeholder, std::string_view value);
  [[noreturn]] static void RaiseTooLarge();

  mutable std::string text_;
  const char* constant_ = nullptr;
  mutable bool pending_constant_ = false;
  // Collected steps: a name and its value, side by side in `arena_`, and
  // where a compiled name stands (or nullptr).
  struct Step {
    uint32_t at, name_size, value_size;
    const char* constant;
  };
  mutable std::string arena_;
  mutable std::vector<Step> steps_;
  // A step being written by ReplaceWith: in `arena_` from `open_at_`, or
  // (when steps are not collected) in `side_`.
  size_t open_at_ = 0;
  size_t open_name_size_ = 0;
  const char* open_constant_ = nullptr;
  bool open_side_ = false;
  std::string side_name_, side_;
  bool stepwise_ = false;
};

}  // namespace ZTkDb::detail
