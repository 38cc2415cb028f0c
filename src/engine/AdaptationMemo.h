#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/StatementAdapter.h"

namespace ZTkDb::detail {

// What adaptation and lifting made of a statement's form, so that the next
// statement of the same form skips both. A form is the statement's tokens
// with its plain literals left out: decimal integers of up to 18 digits,
// '…' strings that hold no backslash and no '?' and could not be read
// as a date, and where the engine lifts decimals, those of the form
// digits '.' digits — the literals no adaptation rule reads or rewrites. Whatever
// else the statement holds (names, keywords, dates, other literals) is part
// of its form.
//
// A form is learnt, the second time it comes, from two runs of the full
// adaptation: the statement as it came, and the same statement with each
// plain literal replaced by a distinct stand-in of its kind. Only when both
// give the same shape, and every value that differs between them is one
// literal passed through, is the form kept; any other form keeps taking the
// full path. Recall then fills the learnt values with the statement's own
// literals.
//
// A learnt form is also kept as text: its bytes between the literals. A
// statement that is those bytes with a plain literal of the right kind in
// each gap is that form without being tokenised again, since no rule of any
// server's reading lets the bytes around a gap read differently for other
// digits or another quoted text there. The one rule that looks further (a
// '#' that might open a date searches for its closing '#') keeps a form
// with such a '#' out of this shortcut.
class AdaptationMemo {
 public:
  explicit AdaptationMemo(const AdaptationRules& rules);
  ~AdaptationMemo();
  AdaptationMemo(const AdaptationMemo&) = delete;
  AdaptationMemo& operator=(const AdaptationMemo&) = delete;

  // What AdaptStatement gives for `sql`: from the learnt form when there
  // is one (the text is then empty: the statement runs lifted), else from
  // the full path, which raises as it does.
  std::string Adapt(const std::string& sql, StatementFacts& facts);
  // Forms depend on the schema (which columns hold dates).
  void Clear();
  // Values of a recalled statement the engine is done with, kept (per
  // thread) so that the next recall fills their strings in place.
  static void GiveBack(std::vector<LiftedValue>&& values);

 private:
  struct Recall;
  struct Form;
  class Forms;
  std::shared_ptr<const Recall> Learn(const std::string& sql, const std::vector<Token>& tokens,
                                      const std::vector<size_t>& literals,
                                      const StatementFacts& facts);
  static bool Matches(const Recall& r, std::string_view sql, std::vector<std::string_view>& texts);
  // Whether each decimal fits the column its learnt value is bound for.
  static bool Fits(const Recall& r, const std::vector<std::string_view>& texts);
  static void Fill(const Recall& r, const std::vector<std::string_view>& texts,
                   StatementFacts& facts);
  // Whether plain decimals are left out of a form: wherever the engine
  // lifts them. SQLite lifts every one in a value position; a server one
  // assigned to a column its digits fit, so a learnt decimal slot keeps the
  // column's room, and other digits that do not fit it take the full path.
  bool Decimals() const { return rules_.lifting && rules_.lifting->decimal_marker; }
  const AdaptationRules& rules_;
  std::unique_ptr<Forms> forms_;
};

}  // namespace ZTkDb::detail
