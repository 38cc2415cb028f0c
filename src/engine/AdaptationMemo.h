#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/StatementAdapter.h"

namespace ZTkDb::detail {

// What adaptation and lifting made of a statement's form, so that the next
// statement of the same form skips both. A form is the statement's tokens
// with its plain literals left out: decimal integers of up to 18 digits,
// and '…' strings that hold no backslash and no '?' and could not be read
// as a date — the literals no adaptation rule reads or rewrites. Whatever
// else the statement holds (names, keywords, dates, other literals) is part
// of its form.
//
// A form is learnt, the second time it comes, from two runs of the full
// adaptation: the statement as
// it came, and the same statement with each plain literal replaced by a
// distinct stand-in of its kind. Only when both give the same shape, and
// every value that differs between them is one literal passed through, is
// the form kept; any other form keeps taking the full path. Recall then
// fills the learnt values with the statement's own literals.
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

 private:
  struct Form;
  class Forms;
  void Learn(Form& form, const std::string& sql, const std::vector<Token>& tokens,
             const std::vector<size_t>& literals, const StatementFacts& facts);
  const AdaptationRules& rules_;
  std::unique_ptr<Forms> forms_;
};

}  // namespace ZTkDb::detail
