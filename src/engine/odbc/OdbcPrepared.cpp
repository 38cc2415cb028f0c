// Statements whose literals were lifted: prepared once per shape, executed
// with the values bound, their results described once per shape.
#include "engine/odbc/OdbcPrepared.h"

#include <algorithm>
#include <atomic>

#include "engine/odbc/OdbcError.h"
#include "engine/odbc/Utf16.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {
namespace {

// Rows in one INSERT at most, fewer where the table is wide.
constexpr size_t kRowsPerInsert = 250;

char TypeLetter(LiftedValue::Kind kind) {
  switch (kind) {
    case LiftedValue::kText: return 't';
    case LiftedValue::kTimestamp: return 'd';
    case LiftedValue::kInteger: return 'i';
    case LiftedValue::kDouble: return 'f';
    case LiftedValue::kDecimal: return 'c';
    case LiftedValue::kNull: return 'n';
  }
  return '?';
}

// The shape and the types its markers are bound with: a server types a
// prepared statement's parameters once. A Null counts as the type it is
// bound with.
std::string KeyOf(const LiftedStatement& lifted) {
  std::string key = lifted.Shape();
  key += '\x01';
  for (const LiftedValue& v : lifted.values) {
    if (v.kind == LiftedValue::kInteger && (v.integer > INT32_MAX || v.integer < INT32_MIN)) {
      key += 'b';
    } else {
      key += TypeLetter(v.kind == LiftedValue::kNull ? v.null_as : v.kind);
    }
  }
  return key;
}

SQLSMALLINT SqlTypeOf(LiftedValue::Kind kind, bool narrow) {
  switch (kind) {
    case LiftedValue::kInteger: return SQL_INTEGER;
    case LiftedValue::kTimestamp: return SQL_TYPE_TIMESTAMP;
    case LiftedValue::kDouble: return SQL_DOUBLE;
    case LiftedValue::kDecimal: return SQL_DECIMAL;
    default: return narrow ? SQL_VARCHAR : SQL_WVARCHAR;
  }
}

// Closes the statement's cursor, so that it can run again.
struct CursorCloser {
  SQLHSTMT stmt;
  ~CursorCloser() { SQLFreeStmt(stmt, SQL_CLOSE); }
};

}  // namespace

// The bound values, kept until the statement has run. Every vector is
// reserved for all values first: the driver holds pointers into them.
struct OdbcDatabase::Parameters {
  explicit Parameters(size_t n) {
    wide.reserve(n);
    narrow.reserve(n);
    stamps.reserve(n);
    integers.reserve(n);
    doubles.reserve(n);
    lengths.reserve(n);
  }
  std::vector<std::basic_string<SQLWCHAR>> wide;
  std::vector<std::string> narrow;
  std::vector<SQL_TIMESTAMP_STRUCT> stamps;
  std::vector<SQLBIGINT> integers;
  std::vector<double> doubles;
  std::vector<SQLLEN> lengths;
};

void OdbcDatabase::ForgetStatements() noexcept {
  if (statements_) statements_->Clear();
  if (plans_) plans_->Clear();
}

// Freeing a prepared statement while connected costs a round trip each
// (the driver closes it on the server); a session that ends first takes
// them all with it. A driver that refuses to end a session inside a
// transaction gets it rolled back first; one that still refuses frees the
// statements itself.
void OdbcDatabase::EndSession() noexcept {
  if (dbc_ && in_transaction_) SQLEndTran(SQL_HANDLE_DBC, dbc_.Get(), SQL_ROLLBACK);
  const bool ended = dbc_.Disconnect();
  if (statements_) {
    if (ended) statements_->ForEach([](Prepared& p) { p.stmt.Release(); });
    statements_->Clear();
  }
  if (plans_) plans_->Clear();
  dbc_.Reset();
}

OdbcStmt OdbcDatabase::PrepareText(const std::string& text) {
  OdbcStmt stmt = NewStatement();
  SQLRETURN rc;
  if (narrow_) {
    std::string bytes = text;
    rc = SQLPrepare(stmt.Get(), reinterpret_cast<SQLCHAR*>(bytes.data()),
                    static_cast<SQLINTEGER>(bytes.size()));
  } else {
    auto wide = ToUtf16(text);
    rc = SQLPrepareW(stmt.Get(), wide.data(), static_cast<SQLINTEGER>(wide.size()));
  }
  if (!Succeeded(rc)) Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLPrepare");
  return stmt;
}

OdbcDatabase::Prepared& OdbcDatabase::PreparedFor(const LiftedStatement& lifted) {
  const std::string key = KeyOf(lifted);
  if (Prepared* found = statements_->Find(key)) return *found;
  static std::atomic<uint64_t> serials{0};
  OdbcStmt stmt = PrepareText(lifted.Shape());
  // The driver's count of markers is the lifting's, or a value would land
  // in another's place (counted locally by the drivers: no round trip).
  SQLSMALLINT markers = 0;
  if (Succeeded(SQLNumParams(stmt.Get(), &markers)) &&
      static_cast<size_t>(markers) != lifted.values.size()) {
    Raise(errEngine, "ZTkDb.ODBC",
          "Internal error: a statement's parameters do not match its values; it was not run.");
  }
  return statements_->Insert(key, Prepared{std::move(stmt), nullptr, {}, ++serials});
}

bool OdbcDatabase::ExecutePrepared(Prepared& p, const LiftedStatement& lifted) {
  SQLHSTMT s = p.stmt.Get();
  Parameters params(lifted.values.size());
  SQLUSMALLINT k = 1;
  for (const LiftedValue& v : lifted.values) {
    SQLRETURN rc = SQL_SUCCESS;
    switch (v.kind) {
      case LiftedValue::kInteger: {
        params.integers.push_back(v.integer);
        const bool wide = v.integer > INT32_MAX || v.integer < INT32_MIN;
        rc = SQLBindParameter(s, k, SQL_PARAM_INPUT, SQL_C_SBIGINT, wide ? SQL_BIGINT : SQL_INTEGER,
                              0, 0, &params.integers.back(), 0, nullptr);
        break;
      }
      case LiftedValue::kText: {
        SQLLEN bytes = 0;
        SQLPOINTER data = nullptr;
        SQLULEN size = 0;
        if (narrow_) {
          params.narrow.push_back(v.text);
          bytes = static_cast<SQLLEN>(v.text.size());
          data = params.narrow.back().data();
          size = v.text.size();
        } else {
          params.wide.push_back(ToUtf16(v.text));
          size = params.wide.back().size();
          bytes = static_cast<SQLLEN>(size * sizeof(SQLWCHAR));
          data = params.wide.back().data();
        }
        params.lengths.push_back(bytes);
        rc = SQLBindParameter(s, k, SQL_PARAM_INPUT, narrow_ ? SQL_C_CHAR : SQL_C_WCHAR,
                              narrow_ ? SQL_VARCHAR : SQL_WVARCHAR, std::max<SQLULEN>(size, 1), 0,
                              data, bytes, &params.lengths.back());
        break;
      }
      case LiftedValue::kTimestamp: {
        SQL_TIMESTAMP_STRUCT ts{};
        ts.year = v.year;
        ts.month = v.month;
        ts.day = v.day;
        ts.hour = v.hour;
        ts.minute = v.minute;
        ts.second = v.second;
        params.stamps.push_back(ts);
        rc = SQLBindParameter(s, k, SQL_PARAM_INPUT, SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, 19,
                              0, &params.stamps.back(), sizeof ts, nullptr);
        break;
      }
      case LiftedValue::kDouble:
        params.doubles.push_back(v.number);
        rc = SQLBindParameter(s, k, SQL_PARAM_INPUT, SQL_C_DOUBLE, SQL_DOUBLE, 15, 0,
                              &params.doubles.back(), 0, nullptr);
        break;
      case LiftedValue::kDecimal: {
        // Exact: the digits, read by the server as a decimal of just their
        // size (a driver may round to the scale it is told).
        params.narrow.push_back(v.text);
        params.lengths.push_back(static_cast<SQLLEN>(v.text.size()));
        const size_t dot = v.text.find('.');
        const size_t digits =
            v.text.size() - (v.text.starts_with('-') ? 1 : 0) - (dot != std::string::npos);
        const auto scale =
            static_cast<SQLSMALLINT>(dot == std::string::npos ? 0 : v.text.size() - dot - 1);
        rc = SQLBindParameter(s, k, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_DECIMAL,
                              std::max<SQLULEN>(digits, 1), scale, params.narrow.back().data(),
                              params.lengths.back(), &params.lengths.back());
        break;
      }
      case LiftedValue::kNull:
        params.lengths.push_back(SQL_NULL_DATA);
        rc = SQLBindParameter(s, k, SQL_PARAM_INPUT, SQL_C_CHAR, SqlTypeOf(v.null_as, narrow_),
                              v.null_as == LiftedValue::kTimestamp ? 19 : 1, 0, nullptr, 0,
                              &params.lengths.back());
        break;
    }
    if (!Succeeded(rc)) Fail(SQL_HANDLE_STMT, s, "SQLBindParameter");
    ++k;
  }
  const SQLRETURN rc = SQLExecute(s);
  if (rc == SQL_NO_DATA) return false;
  if (!Succeeded(rc)) Fail(SQL_HANDLE_STMT, s, "SQLExecute");
  return true;
}

// Runs `body` on the statement prepared for `lifted`. A statement that
// failed is prepared afresh next time; one the server refused because its
// result changed shape under it is prepared afresh and run once more at
// once, unless the refusal aborted a transaction of the host's.
template <typename Body>
auto OdbcDatabase::WithPrepared(const LiftedStatement& lifted, Body body) {
  for (bool again = true;; again = false) {
    Prepared& p = PreparedFor(lifted);
    try {
      const CursorCloser close{p.stmt.Get()};
      return body(p);
    } catch (const Error& e) {
      statements_->Erase(KeyOf(lifted));
      const char* changed = dialect_->ChangedResultState();
      if (!again || !changed || in_transaction_ ||
          e.Description().find("[" + std::string(changed) + "]") == std::string::npos) {
        throw;
      }
    } catch (...) {
      statements_->Erase(KeyOf(lifted));
      throw;
    }
  }
}

std::shared_ptr<const RowSet> OdbcDatabase::QueryPrepared(const LiftedStatement& lifted) {
  return WithPrepared(lifted, [&](Prepared& p) -> std::shared_ptr<const RowSet> {
    if (!ExecutePrepared(p, lifted)) return std::make_shared<RowSet>(std::vector<std::string>{});
    return ReadResult(p.stmt.Get(), &p);
  });
}

int64_t OdbcDatabase::ExecuteLifted(const LiftedStatement& lifted) {
  return WithPrepared(lifted, [&](Prepared& p) -> int64_t {
    if (!ExecutePrepared(p, lifted)) return 0;
    SQLLEN affected = 0;
    if (!Succeeded(SQLRowCount(p.stmt.Get(), &affected))) {
      Fail(SQL_HANDLE_STMT, p.stmt.Get(), "SQLRowCount");
    }
    return std::max<SQLLEN>(affected, 0);
  });
}

namespace {

LiftedValue BoundValue(const Variant& v, bool amountsAsDouble) {
  LiftedValue out;
  switch (v.Type()) {
    case vtEmpty:
    case vtNull: out.kind = LiftedValue::kNull; break;
    case vtBoolean:
      out.kind = LiftedValue::kInteger;
      out.integer = v.ToBool() ? 1 : 0;
      break;
    case vtByte:
    case vtInteger:
    case vtLong:
      out.kind = LiftedValue::kInteger;
      out.integer = v.ToLong();
      break;
    case vtDouble:
      out.kind = LiftedValue::kDouble;
      out.number = v.ToDouble();
      break;
    case vtCurrency: {
      if (amountsAsDouble) {
        out.kind = LiftedValue::kDouble;
        out.number = static_cast<double>(v.ToCurrency().Scaled()) / 10000.0;
        break;
      }
      out.kind = LiftedValue::kDecimal;
      out.text = v.ToCurrency().Text();
      if (!out.text.empty() && out.text[0] == ' ') out.text.erase(0, 1);
      break;
    }
    case vtDate: {
      const Date d = v.ToDate();
      out.kind = LiftedValue::kTimestamp;
      out.year = static_cast<int16_t>(d.Year());
      out.month = static_cast<uint16_t>(d.Month());
      out.day = static_cast<uint16_t>(d.Day());
      out.hour = static_cast<uint16_t>(d.Hour());
      out.minute = static_cast<uint16_t>(d.Minute());
      out.second = static_cast<uint16_t>(d.Second());
      break;
    }
    default: out.text = v.ToString(); break;
  }
  return out;
}

}  // namespace

// Rows go in statements of as many rows as the driver takes values in one,
// each shape prepared once: one round trip per statement, not per row.
int64_t OdbcDatabase::InsertBound(const std::string& head, size_t width,
                                  const std::vector<std::vector<Variant>>& rows) {
  if (rows.empty() || width == 0) return 0;
  const bool asDouble = dialect_->StoresAmountsAsDouble();
  // A Null is bound as the type its column's values are, so that every
  // statement of the table has one shape and one set of parameter types.
  std::vector<LiftedValue::Kind> nullAs(width, LiftedValue::kText);
  for (size_t c = 0; c < width; ++c) {
    for (const auto& row : rows) {
      if (row[c].IsNull() || row[c].IsEmpty()) continue;
      nullAs[c] = BoundValue(row[c], asDouble).kind;
      break;
    }
  }
  const size_t perStatement = std::clamp<size_t>(lifting_.max_values / width, 1, kRowsPerInsert);
  LiftedStatement lifted;
  for (size_t first = 0; first < rows.size(); first += perStatement) {
    const size_t count = std::min(perStatement, rows.size() - first);
    lifted.shape = head;
    lifted.values.clear();
    for (size_t r = 0; r < count; ++r) {
      lifted.shape += r ? ", (" : "(";
      for (size_t c = 0; c < width; ++c) {
        lifted.shape += c ? ", ?" : "?";
        LiftedValue v = BoundValue(rows[first + r][c], asDouble);
        v.null_as = nullAs[c];
        lifted.values.push_back(std::move(v));
      }
      lifted.shape += ")";
    }
    Prepared local;
    Prepared* p = &local;
    if (statements_) {
      p = &PreparedFor(lifted);
    } else {
      local.stmt = PrepareText(lifted.shape);
    }
    try {
      const CursorCloser close{p->stmt.Get()};
      ExecutePrepared(*p, lifted);
    } catch (...) {
      if (statements_) statements_->Erase(KeyOf(lifted));
      throw;
    }
  }
  return static_cast<int64_t>(rows.size());
}

void OdbcDatabase::DescribeResult(SQLHSTMT stmt, std::shared_ptr<const RowSet::Columns>& columns,
                                  std::vector<Fetch>& fetches) {
  SQLSMALLINT count = 0;
  if (!Succeeded(SQLNumResultCols(stmt, &count))) Fail(SQL_HANDLE_STMT, stmt, "SQLNumResultCols");
  std::vector<std::string> names;
  fetches.clear();
  for (SQLUSMALLINT i = 1; i <= count; ++i) {
    const ColumnDescription d = Describe(stmt, i, narrow_, dialect_->TypeNamesTellKinds());
    names.push_back(d.name);
    fetches.push_back(FetchFor(d.type, d.digits, d.type_name));
  }
  columns = std::make_shared<const RowSet::Columns>(std::move(names));
}

std::shared_ptr<const RowSet> OdbcDatabase::ReadResult(SQLHSTMT stmt, Prepared* p) {
  if (!p) {
    std::shared_ptr<const RowSet::Columns> columns;
    std::vector<Fetch> fetches;
    DescribeResult(stmt, columns, fetches);
    return FetchRows(stmt, fetches, std::make_shared<RowSet>(columns));
  }
  if (!p->columns) DescribeResult(stmt, p->columns, p->fetches);
  return FetchRows(stmt, p->fetches, std::make_shared<RowSet>(p->columns), p->serial);
}

// The query runs bounded to one row more than a chunk; only a result that
// proves longer runs again under a cursor, its rows fetched a chunk at a
// time, so that the driver never holds more than one chunk besides the rows
// already read. The cursor lives in a transaction of its own (or the
// host's), whose end closes it.
std::shared_ptr<const RowSet> OdbcDatabase::RunInChunks(const std::string& text,
                                                        const ServerDialect::Cursor& cursor) {
  {
    auto probe = RunQuery(cursor.probe_prefix + text + cursor.probe_suffix, true);
    if (probe->RowCount() <= cursor.rows) return probe;
  }
  const bool own = !in_transaction_;
  SQLHDBC dbc = Handle();
  if (own && !Succeeded(SQLSetConnectAttr(dbc, SQL_ATTR_AUTOCOMMIT,
                                          reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_OFF), 0))) {
    Fail(SQL_HANDLE_DBC, dbc, "SQLSetConnectAttr");
  }
  const auto end = [&](SQLSMALLINT completion) {
    if (!own || !dbc_) return;
    SQLEndTran(SQL_HANDLE_DBC, dbc_.Get(), completion);
    SQLSetConnectAttr(dbc_.Get(), SQL_ATTR_AUTOCOMMIT,
                      reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_ON), 0);
  };
  try {
    std::shared_ptr<const RowSet::Columns> columns;
    std::vector<Fetch> fetches;
    std::shared_ptr<RowSet> rows;
    const OdbcStmt stmt = NewStatement();
    ExecDirect(stmt, cursor.open + text + cursor.then_fetch);
    // The opening's own statements answer with no columns: the chunk is the
    // last result.
    for (SQLSMALLINT count = 0; Succeeded(SQLNumResultCols(stmt.Get(), &count)) && count == 0;) {
      const SQLRETURN rc = SQLMoreResults(stmt.Get());
      if (rc == SQL_NO_DATA) break;
      if (!Succeeded(rc)) Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLMoreResults");
    }
    for (bool first = true;; first = false) {
      if (!first) ExecDirect(stmt, cursor.fetch);
      if (!rows) {
        DescribeResult(stmt.Get(), columns, fetches);
        rows = std::make_shared<RowSet>(columns);
      }
      const int64_t before = rows->RowCount();
      FetchRows(stmt.Get(), fetches, rows);
      SQLFreeStmt(stmt.Get(), SQL_CLOSE);
      if (rows->RowCount() - before < cursor.rows) break;
    }
    end(SQL_COMMIT);
    return rows;
  } catch (...) {
    end(SQL_ROLLBACK);
    throw;
  }
}

// A block of rows at a time where the driver allows it, else row by row,
// each cell read with SQLGetData into its kind.
std::shared_ptr<const RowSet> OdbcDatabase::FetchRows(SQLHSTMT stmt,
                                                      const std::vector<Fetch>& fetches,
                                                      std::shared_ptr<RowSet> rows, uint64_t keep) {
  const auto columns = static_cast<SQLUSMALLINT>(fetches.size());
  if (columns == 0) return rows;
  if (blocks_) {
    blocks_->Read(
        stmt, fetches, narrow_, *rows, [&](const char* what) { Fail(SQL_HANDLE_STMT, stmt, what); },
        keep);
    return rows;
  }
  for (;;) {
    const SQLRETURN rc = SQLFetch(stmt);
    if (rc == SQL_NO_DATA) break;
    if (!Succeeded(rc)) Fail(SQL_HANDLE_STMT, stmt, "SQLFetch");
    rows->BeginRow();
    for (SQLUSMALLINT i = 1; i <= columns; ++i) AppendCell(*rows, stmt, i, fetches[i - 1], narrow_);
    rows->EndRow();
  }
  return rows;
}

}  // namespace ZTkDb::detail
