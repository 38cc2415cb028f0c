#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>

namespace ZTkDb::detail {

class RowSet;

// How a result column is fetched and what Variant kind it becomes.
enum class Fetch { kBool, kByte, kShort, kLong, kBigint, kDouble, kCurrency, kDate, kText };

// The fetch for a column's SQL type, decimal digits and the type name the
// driver reports (file databases' drivers report types such as CURRENCY and
// DATETIME only by name).
Fetch FetchFor(SQLSMALLINT type, SQLSMALLINT digits, const std::string& typeName);

// The whole of a text column into `out`: UTF-16 from a Unicode driver,
// UTF-8 bytes from an ANSI driver (`narrow`). False for Null.
bool FetchText(SQLHSTMT stmt, SQLUSMALLINT column, bool narrow, std::string& out);

// One fixed-size value; false for Null.
template <typename T>
bool FetchFixed(SQLHSTMT stmt, SQLUSMALLINT column, SQLSMALLINT cType, T& value);

// The current row's cell of `column` appended to `rows`, converted as far
// as it can be without losing anything: what does not fit its column's
// kind is appended as it came, and the field that reads it raises.
void AppendCell(RowSet& rows, SQLHSTMT stmt, SQLUSMALLINT column, Fetch fetch, bool narrow);

// The conversions AppendCell makes, for values fetched otherwise.
void AppendInteger(RowSet& rows, Fetch fetch, int64_t v);  // kBool … kBigint
void AppendCurrencyText(RowSet& rows, const std::string& text);
void AppendTimestamp(RowSet& rows, const SQL_TIMESTAMP_STRUCT& ts);

struct ColumnDescription {
  std::string name;
  SQLSMALLINT type = 0;
  SQLSMALLINT digits = 0;
  std::string type_name;
};
// A result column's name, SQL type and scale, and its declared type's name
// where `typeName` asks for it. Asked for as single attributes: a whole
// description (SQLDescribeCol), the concise type or the type's name make
// psqlodbc look the column's table up in the catalogue, a round trip.
ColumnDescription Describe(SQLHSTMT stmt, SQLUSMALLINT column, bool narrow, bool typeName);

}  // namespace ZTkDb::detail

#include "engine/odbc/OdbcFetch.inl"
