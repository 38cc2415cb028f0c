#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/StorageKind.h"
#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"

namespace ZTkDb::detail {

// A placeholder the compiler has checked to be plain: '#', then letters,
// digits or '_', then '#'. Every placeholder of the program is one; being a
// constant, it outlives every statement that names it.
class Placeholder {
 public:
  consteval Placeholder(const char* text) : text_(text) {  // NOLINT: converts by design
    if (!IsPlain(text_)) throw "a placeholder is #name#";  // fails the compilation
  }
  constexpr std::string_view Text() const { return text_; }

 private:
  static constexpr bool IsPlain(std::string_view p) {
    if (p.size() < 3 || p.front() != '#' || p.back() != '#') return false;
    for (size_t i = 1; i + 1 < p.size(); ++i) {
      const char c = p[i];
      if (!((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
            c == '_')) {
        return false;
      }
    }
    return true;
  }
  std::string_view text_;
};

// One step of filling a template: a placeholder and what replaces it.
struct FillStep {
  enum Kind : uint8_t {
    kName,        // a table, column or keyword of the program: part of the shape
    kRaw,         // a caller's text put in as it stands (unescaped)
    kText,        // a text in a quoted slot, its quotes doubled
    kLong,        // decimal digits
    kFlag,        // the flag literal of the dialect
    kNumber,      // a double, invariant, blank before when not negative
    kAmount,      // a Currency, invariant, blank before when not negative
    kDate,        // a record's date: the short date text (quoted slot)
    kFilterDate,  // a filter's date: Jet literal on kind 1, dd.mm.yyyy otherwise
  };
  // How the value's literal reads to a server's lexer: every value of one
  // class reads as the same tokens, with only the literal's digits or
  // characters differing (see Statement::Class).
  enum Class : uint8_t {
    kShapeOnly,  // names, and any value whose literal can read otherwise
    kPlain,      // digits; a string without quote-sensitive content
    kNegative,   // '-' then digits
    kFraction,   // digits '.' digits
    kNegativeFraction,
    kDateOnly,  // a date at midnight, written without its time
    kDateTime,
  };

  std::string_view placeholder;
  Kind kind = kName;
  Class cls = kShapeOnly;
  int64_t integer = 0;  // kLong, kFlag (0/1), kAmount (scaled)
  double number = 0;    // kNumber; kDate and kFilterDate (the OLE value)
  std::string text;     // kName, kRaw, kText

  bool IsValue() const { return kind != kName && !(kind == kRaw && cls == kShapeOnly); }
};

// What a record or list hands its storage: a constant template, the kind
// of connection it was chosen for (which also picks the literal forms), and
// the steps that fill it, in order. Its text is the template filled by
// successive case-sensitive replace-all steps: each step scans the whole
// text as it stands, so a value holding a later placeholder's name is
// replaced by that later step; the text a step inserts is not rescanned by
// the same step.
//
// Values are kept typed; an engine may bind them instead of reading them
// back from the text, as long as each has the effect its literal has.
// Values the storage cannot give back are refused as they are added (6),
// before any statement exists.
class Statement {
 public:
  // A template that is a constant of the program, alive as long as it: it
  // is known by its address (two texts at one address would share what an
  // engine learnt of the first).
  Statement(const char* constant, StorageKind kind) : constant_(constant), kind_(kind) {}
  // A template put together at run time (a list's join and its tail).
  Statement(std::string text, StorageKind kind) : owned_(std::move(text)), kind_(kind) {}
  // A finished text from a host or a tool: no steps, never bound.
  static Statement Text(std::string text);

  Statement& Name(Placeholder p, std::string_view text);
  // A caller's text, unescaped. Unless it is inert (letters, digits, '_',
  // '-', ':', blanks) it may change the statement's shape, which then goes
  // as text.
  Statement& Raw(Placeholder p, std::string_view text);
  Statement& Text(Placeholder p, std::string_view value);
  Statement& Long(Placeholder p, int64_t value);
  Statement& Flag(Placeholder p, bool value);
  Statement& Number(Placeholder p, double value);
  // Raises 6 for an amount beyond ±`largest` (scaled) or the kind's limit.
  Statement& Amount(Placeholder p, const Currency& value, int64_t largest);
  // Both raise 6 for a date outside the storable range.
  Statement& RecordDate(Placeholder p, const Date& value);
  Statement& FilterDate(Placeholder p, const Date& value);

  StorageKind Kind() const { return kind_; }
  const std::vector<FillStep>& Steps() const { return steps_; }
  bool IsHostText() const { return host_text_; }
  std::string_view Template() const { return constant_ ? std::string_view(constant_) : owned_; }

  // The filled text, byte for byte what the server gets as text. Raises 7
  // when it would grow past kMaxText. A host's text comes back as it is.
  std::string Render() const;
  // The same with each value's literal made from `values` in its place
  // (one per step, in order; steps that are no values are taken as they
  // are).
  std::string RenderWith(const std::vector<FillStep>& values) const;
  static constexpr size_t kMaxText = size_t{16} << 20;

  // What decides the text's shape, appended to `out`: the template, the
  // kind, the names and fixed texts, each value's kind and class. Two
  // statements with the same key differ only in values of the same class.
  void AppendKey(std::string& out) const;
  // Whether every value may stand for its literal: none holds '#' (a later
  // step might find a placeholder in it) nor reads otherwise (kShapeOnly).
  bool Bindable() const { return bindable_; }

  // Whether a text in a quoted slot can be bound for its escaped literal.
  static bool TextBindable(std::string_view text);

  // The literal a step puts into the text.
  std::string LiteralOf(const FillStep& step) const;
  // A value of `step`'s kind and class, distinct for each `index` and each
  // `set` (0 or 1), that no template holds: what an engine learns the
  // statement's shape with.
  FillStep StandIn(const FillStep& step, size_t index, int set) const;

 private:
  Statement() = default;
  FillStep& Add(Placeholder p, FillStep::Kind kind);

  const char* constant_ = nullptr;
  std::string owned_;
  StorageKind kind_ = StorageKind::Odbc;
  bool host_text_ = false;
  bool bindable_ = true;
  std::vector<FillStep> steps_;
};

// The parts a date's literal shows, to the second, as every literal form
// writes it.
struct DateParts {
  int year, month, day, hour, minute, second;
  bool operator==(const DateParts&) const = default;
};
DateParts PartsOf(const Date& date);

}  // namespace ZTkDb::detail
