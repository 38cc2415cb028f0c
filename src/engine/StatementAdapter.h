#pragma once

#include <functional>
#include <optional>
#include <string>

#include "engine/LiteralLifting.h"
#include "engine/SqlTokenizer.h"

namespace ZTkDb {
class Date;
}

namespace ZTkDb::detail {

// What one engine needs changed in the library's statements before they run.
struct AdaptationRules {
  // Text that replaces a date in a Jet date literal or in a German date text
  // standing in a date-column position, e.g. "'2026-11-15 00:00:00'".
  std::function<std::string(const Date&)> date_literal;
  // Whether "DELETE t.* FROM t WHERE" and "DELETE t WHERE" must become
  // "DELETE FROM t WHERE".
  bool rewrite_delete = true;
  // Whether "UPDATE t SET t.col = ..." must become "UPDATE t SET col = ...".
  bool unqualify_update_set = true;
  // Whether German date texts in date-column positions are rewritten.
  bool rewrite_german_dates = true;
  // Whether Jet date literals (#...#) are rewritten.
  bool rewrite_jet_dates = true;
  // Schema questions, asked with names as they stand in the statement
  // (compared without regard to case by the callee).
  std::function<bool(const std::string& table)> is_table;
  std::function<bool(const std::string& table, const std::string& column)> is_date_column;
  // How the engine's server reads the statement as it is given (nullptr:
  // the library's own reading) and as it is sent (nullptr: the same).
  const Lexicon* lexicon = nullptr;
  const Lexicon* final_lexicon = nullptr;
  // A string token rewritten for the server (see ServerDialect::HardenString).
  std::function<std::optional<std::string>(const Token&)> harden_string;
  // Which literals of the text as sent may be bound instead (nullptr: none;
  // the statement then runs as text).
  const LiftingRules* lifting = nullptr;
};

// What adaptation learnt about a statement on the way.
struct StatementFacts {
  // A SELECT that writes nothing (no INTO): what a read-only open may run.
  bool plain_query = false;
  // The sent text's shape and literal values, where `lifting` allows it.
  std::optional<LiftedStatement> lifted;
  // Where the statement ends in the sent text: after its last token, before
  // a closing ';' and the blanks and comments around it.
  size_t statement_end = 0;
};

// Adapts one statement to its engine. Every byte it has no rule for is kept,
// so a statement the engine must reject still reaches it and fails there.
// The text is read as the server reads it, before and after adaptation:
// raises 3129 when it holds more than one statement (a trailing ';' is fine;
// a ';' inside a string or comment is text), and 3075 when some part of it
// cannot be read with certainty (a string or comment never closed, a
// construct the server reads differently by its settings or version).
// `read`: the tokens of `sql` in the rules' lexicon, already found free of
// doubt, when the caller has them.
std::string AdaptStatement(const std::string& sql, const AdaptationRules& rules,
                           StatementFacts* facts = nullptr,
                           const std::vector<Token>* read = nullptr);

}  // namespace ZTkDb::detail
