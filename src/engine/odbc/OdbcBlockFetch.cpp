#include "engine/odbc/OdbcBlockFetch.h"

#include <cstring>

#include "engine/RowSet.h"
#include "engine/odbc/OdbcError.h"
#include "engine/odbc/Utf16.h"

namespace ZTkDb::detail {
namespace {

// Leaves the statement as it was found: one row per fetch, nothing bound,
// no pointers into arrays that may move.
struct Unbind {
  SQLHSTMT stmt;
  bool keep = false;
  ~Unbind() {
    if (keep) return;
    SQLFreeStmt(stmt, SQL_UNBIND);
    SQLSetStmtAttr(stmt, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(1), 0);
    SQLSetStmtAttr(stmt, SQL_ATTR_ROWS_FETCHED_PTR, nullptr, 0);
    SQLSetStmtAttr(stmt, SQL_ATTR_ROW_STATUS_PTR, nullptr, 0);
  }
};

}  // namespace

void BlockFetcher::Bind(SQLHSTMT stmt, const std::vector<Fetch>& fetches, bool narrow,
                        const std::function<void(const char*)>& fail) {
  // Whatever stayed bound now points at arrays about to change.
  bound_ = 0;
  columns_.resize(fetches.size());
  const auto set = [&](SQLINTEGER attribute, SQLPOINTER value) {
    if (!Succeeded(SQLSetStmtAttr(stmt, attribute, value, 0))) fail("SQLSetStmtAttr");
  };
  set(SQL_ATTR_ROW_BIND_TYPE, reinterpret_cast<SQLPOINTER>(SQL_BIND_BY_COLUMN));
  set(SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(kRows));
  set(SQL_ATTR_ROWS_FETCHED_PTR, &fetched_);
  set(SQL_ATTR_ROW_STATUS_PTR, status_.data());
  const SQLLEN unit = narrow ? 1 : static_cast<SQLLEN>(sizeof(SQLWCHAR));
  for (size_t i = 0; i < fetches.size(); ++i) {
    Column& c = columns_[i];
    switch (fetches[i]) {
      case Fetch::kBool:
      case Fetch::kByte:
      case Fetch::kShort:
      case Fetch::kLong:
        c.c_type = SQL_C_SLONG;
        c.width = sizeof(SQLINTEGER);
        break;
      case Fetch::kBigint:
        c.c_type = SQL_C_SBIGINT;
        c.width = sizeof(SQLBIGINT);
        break;
      case Fetch::kDouble:
        c.c_type = SQL_C_DOUBLE;
        c.width = sizeof(SQLDOUBLE);
        break;
      case Fetch::kCurrency:
        // Digits as text: no binary floating point between the server's
        // exact value and ours.
        c.c_type = SQL_C_CHAR;
        c.width = 64;
        break;
      case Fetch::kDate:
        c.c_type = SQL_C_TYPE_TIMESTAMP;
        c.width = sizeof(SQL_TIMESTAMP_STRUCT);
        break;
      case Fetch::kText:
        c.c_type = narrow ? SQL_C_CHAR : SQL_C_WCHAR;
        c.width = static_cast<SQLLEN>(kTextUnits + 1) * unit;
        break;
    }
    const size_t bytes = static_cast<size_t>(c.width) * kRows;
    if (c.data.size() < bytes) c.data.resize(bytes);
    if (c.indicators.size() < kRows) c.indicators.resize(kRows);
    if (!Succeeded(SQLBindCol(stmt, static_cast<SQLUSMALLINT>(i + 1), c.c_type, c.data.data(),
                              c.width, c.indicators.data()))) {
      fail("SQLBindCol");
    }
  }
}

void BlockFetcher::Read(SQLHSTMT stmt, const std::vector<Fetch>& fetches, bool narrow, RowSet& rows,
                        const std::function<void(const char*)>& fail, uint64_t keep) {
  if (fetches.empty()) return;
  Unbind unbind{stmt};
  if (keep == 0 || keep != bound_ || fetches != bound_fetches_) {
    Bind(stmt, fetches, narrow, fail);
    if (keep != 0) {
      bound_ = keep;
      bound_fetches_ = fetches;
    }
  }
  unbind.keep = keep != 0;
  for (;;) {
    fetched_ = 0;
    const SQLRETURN rc = SQLFetch(stmt);
    if (rc == SQL_NO_DATA) break;
    if (!Succeeded(rc)) fail("SQLFetch");
    for (size_t r = 0; r < fetched_; ++r) {
      if (status_[r] == SQL_ROW_ERROR) fail("SQLFetch");
      rows.BeginRow();
      for (size_t i = 0; i < fetches.size(); ++i) {
        AppendCell(stmt, static_cast<SQLUSMALLINT>(i + 1), r, fetches[i], narrow, rows, fail);
      }
      rows.EndRow();
    }
    if (fetched_ < kRows) break;
  }
}

void BlockFetcher::AppendCell(SQLHSTMT stmt, SQLUSMALLINT column, size_t row, Fetch fetch,
                              bool narrow, RowSet& rows,
                              const std::function<void(const char*)>& fail) {
  const Column& c = columns_[column - 1];
  const SQLLEN indicator = c.indicators[row];
  if (indicator == SQL_NULL_DATA) return rows.AppendNull();
  const char* cell = c.data.data() + static_cast<size_t>(c.width) * row;
  switch (fetch) {
    case Fetch::kBool:
    case Fetch::kByte:
    case Fetch::kShort:
    case Fetch::kLong: {
      SQLINTEGER v;
      std::memcpy(&v, cell, sizeof v);
      return AppendInteger(rows, fetch, v);
    }
    case Fetch::kBigint: {
      SQLBIGINT v;
      std::memcpy(&v, cell, sizeof v);
      return AppendInteger(rows, fetch, v);
    }
    case Fetch::kDouble: {
      SQLDOUBLE v;
      std::memcpy(&v, cell, sizeof v);
      return rows.AppendDouble(v);
    }
    case Fetch::kDate: {
      SQL_TIMESTAMP_STRUCT ts;
      std::memcpy(&ts, cell, sizeof ts);
      return AppendTimestamp(rows, ts);
    }
    case Fetch::kCurrency:
    case Fetch::kText: break;
  }
  const SQLLEN unit = c.c_type == SQL_C_WCHAR ? static_cast<SQLLEN>(sizeof(SQLWCHAR)) : 1;
  if (indicator == SQL_NO_TOTAL || indicator > c.width - unit) {
    // Longer than the array holds: this one cell is read in full.
    if (!Succeeded(SQLSetPos(stmt, static_cast<SQLSETPOSIROW>(row + 1), SQL_POSITION,
                             SQL_LOCK_NO_CHANGE))) {
      fail("SQLSetPos");
    }
    if (!FetchText(stmt, column, narrow, text_)) {
      return rows.AppendNull();
    }
  } else if (c.c_type == SQL_C_WCHAR) {
    text_.clear();
    AppendUtf8(text_, reinterpret_cast<const SQLWCHAR*>(cell),
               static_cast<size_t>(indicator) / sizeof(SQLWCHAR));
  } else {
    text_.assign(cell, static_cast<size_t>(indicator));
  }
  if (fetch == Fetch::kCurrency) return AppendCurrencyText(rows, text_);
  rows.AppendText(text_);
}

}  // namespace ZTkDb::detail
