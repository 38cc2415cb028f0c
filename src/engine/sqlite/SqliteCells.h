#pragma once

#include <string>
#include <string_view>

#include "ztkdb/Variant.h"

struct sqlite3_stmt;

namespace ZTkDb::detail {

class RowSet;

// What a column's declared type makes of its stored values.
// kStoredText: a column of TEXT affinity (CHAR, TEXT, CLOB), which holds
// only texts, blobs and Nulls; kText also MEMO, which may hold numbers.
enum class ColumnKind {
  kAuto,
  kBool,
  kByte,
  kInteger,
  kLong,
  kDouble,
  kCurrency,
  kDate,
  kText,
  kStoredText
};

ColumnKind KindFromDeclared(const char* declared);
// The text of a cell as SQLite holds it (valid until the next step).
std::string_view ColumnText(sqlite3_stmt* s, int i);
// The last stored date text a column gave and the date it reads as: a list
// repeats its dates row after row (every open order's unset one).
struct DateMemo {
  bool valid = false;
  char text[19];
  double ole = 0;
};
// The current row's cell `i` appended to `rows` as the Variant kind `kind`
// stands for; what the declared type does not explain is kept as stored.
// `memo`: the column's, kept by the caller from row to row.
void AppendCell(RowSet& rows, sqlite3_stmt* s, int i, ColumnKind kind, DateMemo* memo = nullptr);
// Binds `value` to parameter `i` in the form its literal would be stored
// in: flags -1/0, dates as 'YYYY-MM-DD HH:MM:SS', currency as REAL (the
// caller has checked that the form gives it back). A text is bound from
// `keep`, which must outlive the statement's next step. Gives SQLite's
// result code.
int BindCell(sqlite3_stmt* s, int i, const Variant& value, std::string& keep);

}  // namespace ZTkDb::detail
