#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/LiteralLifting.h"
#include "engine/StatementAdapter.h"
#include "engine/StatementCache.h"
#include "sql/Statement.h"

namespace ZTkDb::detail {

// How the statements of one key run: as text, or prepared once in `shape`
// with each marker bound from a value of the statement (or a constant the
// template holds).
struct StatementPlan {
  bool bound = false;
  bool plain_query = false;
  std::shared_ptr<const std::string> shape;
  struct Param {
    // How the step's value becomes the bound value: its magnitude as an
    // integer (the sign in the text, or negated where the reading takes
    // it into the literal), its digits as a decimal, its
    // text (or a date's) with the template's characters around it, or a
    // date's parts.
    enum Conversion : uint8_t {
      kConstant,
      kInteger,
      kNegatedInteger,  // the sign read into the literal
      kDecimal,
      kText,
      kIsoText,
      kGermanText,
      kParts,
    };
    Conversion conversion = kConstant;
    uint32_t step = 0;
    std::string prefix, suffix;
    LiftedValue value;  // the bound kind; for kConstant the whole value, for kDecimal its room
  };
  std::vector<Param> params;
  // Per step, how many markers its value fills.
  std::vector<uint32_t> uses;
};

// The plans of one connection, by statement key (Statement::AppendKey).
// A key is learnt on its first sighting: its text is made twice with
// distinct stand-ins for the values and each goes the whole text path
// (`adapt`: the server's reading, the one-statement check, every
// adaptation, the lifting of literals). Only when both give the same shape
// and every marker there holds a constant or one value's stand-in under the
// same conversion are the key's statements bound from then on; any other
// key runs as text.
class StatementPlans {
 public:
  using Adapt = std::function<void(const std::string& text, StatementFacts& facts)>;
  explicit StatementPlans(Adapt adapt) : adapt_(std::move(adapt)) {}

  // `out` filled with the shape and values `sql` runs with, bound; false
  // when it must run as text (its key, or one of its values, cannot be
  // bound with its literal's effect).
  bool Bind(const Statement& sql, LiftedStatement& out, bool& plainQuery);
  // Plans depend on the schema (which columns hold dates, decimals' room).
  void Clear() { plans_.Clear(); }

 private:
  StatementPlan Learn(const Statement& sql) const;

  Adapt adapt_;
  StatementCache<StatementPlan> plans_;
  std::string key_;
};

}  // namespace ZTkDb::detail
