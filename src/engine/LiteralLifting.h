#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/SqlTokenizer.h"

namespace ZTkDb::detail {

// What a column holds, as far as binding a value for it is concerned.
enum class ColumnClass { kUnknown, kText, kDate, kOther };

// The decimals a number column stores as they are written: any (a
// floating column), or those with at most `scale` digits after the point
// and `precision - scale` before it (leading zeros aside), so that no
// rounding or range rule of the server can tell a bound value from the
// literal.
struct DecimalRoom {
  bool floating = true;
  int16_t precision = 0, scale = 0;
  bool Holds(std::string_view decimal) const;  // digits '.' digits
  bool operator==(const DecimalRoom&) const = default;
};

// A literal taken out of a statement, to be bound in its place.
// Whole rows bound for an insert add doubles, exact decimals and Nulls.
// Everything of a lifted value but its text, apart so that a recalled
// value can take it while its text is written into a reused buffer.
struct LiftedScalars {
  enum Kind { kText, kInteger, kTimestamp, kDouble, kDecimal, kNull } kind = kText;
  double number = 0;     // kDouble
  Kind null_as = kText;  // kNull: the type the Null is bound with
  int64_t integer = 0;   // kInteger
  // kTimestamp: the parts of 'YYYY-MM-DD HH:MM:SS'
  int16_t year = 0;
  uint16_t month = 0, day = 0, hour = 0, minute = 0, second = 0;
  // kDecimal: the column it is assigned to, which other digits in its
  // place must fit to be bound as well.
  DecimalRoom room;
};
struct LiftedValue : LiftedScalars {
  std::string text;  // kText: the string's value ('' undone); kDecimal: its digits
};

// A statement split into its shape (each lifted literal replaced by '?')
// and the values that stood there. The same shape comes back for every
// statement that differs only in those literals, so one prepared statement
// serves them all.
struct LiftedStatement {
  std::string shape;  // as built; read it through Shape()
  std::vector<LiftedValue> values;
  // A statement recalled from a learnt form shares the form's shape
  // instead of copying it (`shape` is then empty): it runs to kilobytes
  // and is the same for every statement of the form.
  std::shared_ptr<const std::string> shared_shape;
  const std::string& Shape() const { return shared_shape ? *shared_shape : shape; }
};

// Which literals an engine may bind instead of sending them as text. A
// literal is lifted only where the bound value provably reads like the
// literal: in a value position (after a comparison, an operator, a comma or
// bracket of an expression, or a keyword such as WHERE, AND, THEN), never in
// a select list (it would name the column), an ORDER BY or GROUP BY (a
// number there is a column position), an INSERT column list or a type's
// size, nor where a name is expected (SQLite reads 'x' there as a name).
struct LiftingRules {
  // Every plain '...' in a value position (SQLite: a bound text and a string
  // literal have the same type and no affinity).
  bool any_string = false;
  // Otherwise a string only where it is compared with or assigned to a
  // column whose class this answers: kText binds as text, kDate as a
  // timestamp (the string must be the dialect's 'YYYY-MM-DD HH:MM:SS').
  std::function<ColumnClass(const std::string& table, const std::string& column)> column_class;
  std::function<bool(const std::string& table)> is_table;
  // A text that holds '?' anywhere is not lifted: a driver that rewrites
  // markers might read one where the server sees text.
  bool refuse_question_marks = false;
  // A query whose select list holds '*' or 'table.*' is not lifted.
  bool refuse_star_results = false;
  // Where set, plain decimals (digits '.' digits) are lifted and this
  // stands in their place (see ServerDialect::BoundDecimal); a sign before
  // one stays in the text. With any_string, every one in a value position,
  // as a text of its digits that the marker casts; otherwise one assigned
  // to a column (SET c = 1.5, INSERT …
  // VALUES), as an exact decimal, when it fits the room decimal_room gives.
  const char* decimal_marker = nullptr;
  std::function<std::optional<DecimalRoom>(const std::string& table, const std::string& column)>
      decimal_room;
  // More values than this and the statement runs as text: binding must
  // never make a statement fail that runs as text (SQLite takes 32,766
  // parameters; psqlodbc loses its session on some ten thousand).
  size_t max_values = 2000;
};

// Digits, one '.', digits: a decimal with nothing a server might read
// otherwise (no exponent, no sign, no bare dot).
bool IsPlainDecimal(std::string_view text);
// Digits whose value a 32-bit integer holds (a sign is a token of its own);
// larger integers stay in the text.
bool ParseBindableInteger(std::string_view text, int64_t& out);

// 'YYYY-MM-DD HH:MM:SS' into `v` as a timestamp; false for any other text.
bool ParseTimestamp(const std::string& text, LiftedValue& v);

// The shape and values of a SELECT, INSERT, UPDATE or DELETE given as the
// tokens of `sql`; nothing for other statements (DDL, transaction control).
// A statement with no literal to lift has itself as its shape.
std::optional<LiftedStatement> LiftLiterals(const std::vector<Token>& tokens,
                                            const LiftingRules& rules);

}  // namespace ZTkDb::detail
