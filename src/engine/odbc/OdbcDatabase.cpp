#include "engine/odbc/OdbcDatabase.h"

#include <strings.h>

#include <cctype>
#include <cstring>
#include <mutex>

#include "engine/RowSet.h"
#include "engine/odbc/OdbcError.h"
#include "engine/odbc/Utf16.h"
#include "runtime/Numbers.h"
#include "runtime/Raise.h"
#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"

namespace ZTkDb::detail {
namespace {

constexpr const char* kSource = "ZTkDb.ODBC";

// How a result column is fetched and what Variant kind it becomes.
enum class Fetch { kBool, kByte, kShort, kLong, kBigint, kDouble, kCurrency, kDate, kText };

bool TypeNameSays(const std::string& typeName, const char* word) {
  return LowerAscii(typeName).find(word) != std::string::npos;
}

Fetch FetchFor(SQLSMALLINT type, SQLSMALLINT digits, const std::string& typeName) {
  // Drivers of file databases report declared type names the SQL type does
  // not tell apart (SQLite's CURRENCY, DATETIME).
  if (TypeNameSays(typeName, "currency") || TypeNameSays(typeName, "money"))
    return Fetch::kCurrency;
  switch (type) {
    case SQL_BIT:
      return Fetch::kBool;
    case SQL_TINYINT:
      return Fetch::kByte;
    case SQL_SMALLINT:
      return Fetch::kShort;
    case SQL_INTEGER:
      return Fetch::kLong;
    case SQL_BIGINT:
      return Fetch::kBigint;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return Fetch::kDouble;
    case SQL_NUMERIC:
    case SQL_DECIMAL:
      return digits <= 4 ? Fetch::kCurrency : Fetch::kDouble;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
    case SQL_DATE:
    case SQL_TIMESTAMP:
      return Fetch::kDate;
    default:
      break;
  }
  if (TypeNameSays(typeName, "date") || TypeNameSays(typeName, "time")) return Fetch::kDate;
  if (TypeNameSays(typeName, "bit") || TypeNameSays(typeName, "bool")) return Fetch::kBool;
  return Fetch::kText;
}

// Exact decimal text ("-12.5000", "3") to a currency scaled by 10,000.
bool ParseScaled(const std::string& text, int64_t& out) {
  size_t i = 0;
  while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i]))) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
  int64_t whole = 0;
  int64_t fraction = 0;
  int fractionDigits = 0;
  bool any = false;
  for (; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i, any = true) {
    if (whole > 922337203685477) return false;
    whole = whole * 10 + (text[i] - '0');
  }
  if (i < text.size() && text[i] == '.') {
    for (++i; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]));
         ++i, any = true) {
      if (fractionDigits < 4) {
        fraction = fraction * 10 + (text[i] - '0');
        ++fractionDigits;
      } else if (text[i] != '0') {
        return false;  // more than four decimals: not a currency value
      }
    }
  }
  if (!any || i != text.size()) return false;
  while (fractionDigits++ < 4) fraction *= 10;
  // Beyond the currency range the caller's general path raises overflow.
  constexpr int64_t kMaxWhole = INT64_MAX / 10000;
  if (whole > kMaxWhole || (whole == kMaxWhole && fraction > INT64_MAX % 10000 + (negative ? 1 : 0))) {
    return false;
  }
  out = whole * 10000 + fraction;
  if (negative) out = -out;
  return true;
}

// The whole of a text column, fetched in pieces into `out`: UTF-16 from a
// Unicode driver, UTF-8 bytes from an ANSI driver (`narrow`). False for Null.
// The buffers live on: a result fetches thousands of texts.
bool FetchText(SQLHSTMT stmt, SQLUSMALLINT column, bool narrow, std::string& out) {
  thread_local std::vector<SQLWCHAR> wideBuffer(2048);
  thread_local std::vector<SQLWCHAR> pieces;
  out.clear();
  pieces.clear();
  const SQLSMALLINT cType = narrow ? SQL_C_CHAR : SQL_C_WCHAR;
  const size_t unit = narrow ? 1 : sizeof(SQLWCHAR);
  const size_t bytes = wideBuffer.size() * sizeof(SQLWCHAR);
  const size_t capacity = bytes / unit - 1;
  for (;;) {
    SQLLEN indicator = 0;
    const SQLRETURN rc = SQLGetData(stmt, column, cType, wideBuffer.data(),
                                    static_cast<SQLLEN>(bytes), &indicator);
    if (rc == SQL_NO_DATA) break;
    if (!Succeeded(rc)) RaiseOdbc(SQL_HANDLE_STMT, stmt, "SQLGetData");
    if (indicator == SQL_NULL_DATA) return false;
    const size_t available = indicator == SQL_NO_TOTAL || indicator < 0
                                 ? capacity
                                 : static_cast<size_t>(indicator) / unit;
    const size_t take = std::min(available, capacity);
    if (narrow) {
      out.append(reinterpret_cast<const char*>(wideBuffer.data()), take);
    } else if (rc == SQL_SUCCESS && pieces.empty()) {
      AppendUtf8(out, wideBuffer.data(), take);  // the usual single piece
    } else {
      // Pieces are joined first, so that no surrogate pair is cut.
      pieces.insert(pieces.end(), wideBuffer.begin(), wideBuffer.begin() + static_cast<long>(take));
    }
    if (rc == SQL_SUCCESS) break;  // the last piece
  }
  if (!pieces.empty()) AppendUtf8(out, pieces.data(), pieces.size());
  return true;
}

template <typename T>
bool FetchFixed(SQLHSTMT stmt, SQLUSMALLINT column, SQLSMALLINT cType, T& value) {
  SQLLEN indicator = 0;
  const SQLRETURN rc = SQLGetData(stmt, column, cType, &value, sizeof value, &indicator);
  if (!Succeeded(rc)) RaiseOdbc(SQL_HANDLE_STMT, stmt, "SQLGetData");
  return indicator != SQL_NULL_DATA;
}

void AppendCell(RowSet& rows, SQLHSTMT stmt, SQLUSMALLINT column, Fetch fetch, bool narrow) {
  switch (fetch) {
    case Fetch::kBool: {
      SQLINTEGER v = 0;
      if (!FetchFixed(stmt, column, SQL_C_SLONG, v)) return rows.AppendNull();
      return rows.AppendBool(v != 0);
    }
    case Fetch::kByte:
    case Fetch::kShort: {
      SQLINTEGER v = 0;
      if (!FetchFixed(stmt, column, SQL_C_SLONG, v)) return rows.AppendNull();
      if (fetch == Fetch::kByte && v >= 0 && v <= 255)
        return rows.AppendByte(static_cast<uint8_t>(v));
      if (v >= INT16_MIN && v <= INT16_MAX) return rows.AppendInteger(static_cast<int16_t>(v));
      return rows.AppendLong(v);
    }
    case Fetch::kLong: {
      SQLINTEGER v = 0;
      if (!FetchFixed(stmt, column, SQL_C_SLONG, v)) return rows.AppendNull();
      return rows.AppendLong(v);
    }
    case Fetch::kBigint: {
      SQLBIGINT v = 0;
      if (!FetchFixed(stmt, column, SQL_C_SBIGINT, v)) return rows.AppendNull();
      if (v >= INT32_MIN && v <= INT32_MAX) return rows.AppendLong(static_cast<int32_t>(v));
      return rows.AppendDouble(static_cast<double>(v));
    }
    case Fetch::kDouble: {
      SQLDOUBLE v = 0;
      if (!FetchFixed(stmt, column, SQL_C_DOUBLE, v)) return rows.AppendNull();
      return rows.AppendDouble(v);
    }
    case Fetch::kCurrency: {
      // As text, so that no binary floating point stands between the
      // server's exact value and ours.
      thread_local std::string text;
      if (!FetchText(stmt, column, narrow, text)) return rows.AppendNull();
      int64_t scaled = 0;
      if (ParseScaled(text, scaled)) return rows.AppendCurrency(scaled);
      double d = 0;
      // Beyond the currency range the field that reads it raises 6.
      if (TryParseNumber(text, d)) return rows.AppendDouble(d);
      return rows.AppendText(text);
    }
    case Fetch::kDate: {
      SQL_TIMESTAMP_STRUCT ts{};
      SQLLEN indicator = 0;
      const SQLRETURN rc =
          SQLGetData(stmt, column, SQL_C_TYPE_TIMESTAMP, &ts, sizeof ts, &indicator);
      if (Succeeded(rc)) {
        if (indicator == SQL_NULL_DATA) return rows.AppendNull();
        try {
          return rows.AppendDate(
              Date::FromYmd(ts.year, ts.month, ts.day, ts.hour, ts.minute, ts.second).Value());
        } catch (const Error&) {
          // No calendar date (a server's zero date): the field that reads it raises.
          return rows.AppendText(std::to_string(ts.year) + "-" + std::to_string(ts.month) + "-" +
                                 std::to_string(ts.day));
        }
      }
      // A driver that cannot convert its stored text: read the text instead.
      std::string text;
      if (!FetchText(stmt, column, narrow, text)) return rows.AppendNull();
      Date d;
      if (Date::TryParse(text, d)) return rows.AppendDate(d.Value());
      return rows.AppendText(text);
    }
    case Fetch::kText: {
      thread_local std::string text;
      if (!FetchText(stmt, column, narrow, text)) return rows.AppendNull();
      return rows.AppendText(text);
    }
  }
}

struct ColumnDescription {
  std::string name;
  SQLSMALLINT type = 0;
  SQLSMALLINT digits = 0;
  std::string type_name;
};

ColumnDescription Describe(SQLHSTMT stmt, SQLUSMALLINT column, bool narrow) {
  ColumnDescription d;
  SQLSMALLINT nullable = 0;
  SQLULEN size = 0;
  SQLSMALLINT length = 0;
  SQLSMALLINT typeLength = 0;
  SQLRETURN rc;
  if (narrow) {
    SQLCHAR name[512] = {};
    SQLCHAR typeName[128] = {};
    rc = SQLDescribeCol(stmt, column, name, sizeof name, &length, &d.type, &size, &d.digits,
                        &nullable);
    SQLColAttribute(stmt, column, SQL_DESC_TYPE_NAME, typeName, sizeof typeName, &typeLength,
                    nullptr);
    d.name.assign(reinterpret_cast<const char*>(name),
                  std::min<size_t>(std::max<SQLSMALLINT>(length, 0), 511));
    d.type_name.assign(reinterpret_cast<const char*>(typeName),
                       std::min<size_t>(std::max<SQLSMALLINT>(typeLength, 0), 127));
  } else {
    SQLWCHAR name[256] = {};
    SQLWCHAR typeName[128] = {};
    rc = SQLDescribeColW(stmt, column, name, 256, &length, &d.type, &size, &d.digits, &nullable);
    SQLColAttributeW(stmt, column, SQL_DESC_TYPE_NAME, typeName, sizeof typeName, &typeLength,
                     nullptr);
    d.name = ToUtf8(name, std::min<size_t>(std::max<SQLSMALLINT>(length, 0), 255));
    d.type_name = ToUtf8(
        typeName, std::min<size_t>(std::max<SQLSMALLINT>(typeLength, 0) / sizeof(SQLWCHAR), 127));
  }
  if (!Succeeded(rc)) RaiseOdbc(SQL_HANDLE_STMT, stmt, "SQLDescribeCol");
  return d;
}

std::string GetInfoText(SQLHDBC dbc, SQLUSMALLINT info) {
  SQLWCHAR buffer[256] = {};
  SQLSMALLINT length = 0;
  if (!Succeeded(SQLGetInfoW(dbc, info, buffer, sizeof buffer, &length))) return {};
  return ToUtf8(buffer,
                std::min<size_t>(
                    static_cast<size_t>(std::max<SQLSMALLINT>(length, 0)) / sizeof(SQLWCHAR), 255));
}

bool IsBlank(const std::string& s) {
  for (char c : s) {
    if (!std::isspace(static_cast<unsigned char>(c)) && c != ';') return false;
  }
  return true;
}

bool StartsWithWord(const std::string& s, const char* word) {
  size_t i = 0;
  while (i < s.size() && (std::isspace(static_cast<unsigned char>(s[i])) || s[i] == '(')) ++i;
  const size_t n = std::strlen(word);
  return s.size() - i >= n && strncasecmp(s.c_str() + i, word, n) == 0 &&
         (s.size() - i == n || !std::isalnum(static_cast<unsigned char>(s[i + n])));
}

}  // namespace

std::shared_ptr<OdbcDatabase> OdbcDatabase::Open(const std::string& connect, bool readOnly) {
  SQLHANDLE raw = SQL_NULL_HANDLE;
  if (!Succeeded(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &raw))) {
    Raise(errOdbcCallFailed, kSource,
          "ODBC--call failed. The ODBC driver manager is not available.");
  }
  OdbcEnv env(raw);
  SQLSetEnvAttr(env.Get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  if (!Succeeded(SQLAllocHandle(SQL_HANDLE_DBC, env.Get(), &raw))) {
    RaiseOdbc(SQL_HANDLE_ENV, env.Get(), "SQLAllocHandle");
  }
  OdbcDbc dbc(raw);
  // An unreachable server must fail within a bounded time, not hang a host.
  SQLSetConnectAttr(dbc.Get(), SQL_ATTR_LOGIN_TIMEOUT, reinterpret_cast<SQLPOINTER>(15), 0);
  if (readOnly) {
    SQLSetConnectAttr(dbc.Get(), SQL_ATTR_ACCESS_MODE,
                      reinterpret_cast<SQLPOINTER>(SQL_MODE_READ_ONLY), 0);
  }
  auto wide = ToUtf16(connect);
  SQLWCHAR out[1024];
  SQLSMALLINT outLength = 0;
  SQLRETURN rc;
  {
    // psqlodbc switches the process locale while it connects (setlocale is
    // not thread-safe), so clients opening in several threads take turns.
    static std::mutex connecting;
    const std::lock_guard lock(connecting);
    rc = SQLDriverConnectW(dbc.Get(), nullptr, wide.data(), static_cast<SQLSMALLINT>(wide.size()),
                           out, 1024, &outLength, SQL_DRIVER_NOPROMPT);
  }
  if (!Succeeded(rc)) RaiseOdbc(SQL_HANDLE_DBC, dbc.Get(), "SQLDriverConnect");
  dbc.MarkConnected();

  auto db = std::shared_ptr<OdbcDatabase>(
      new OdbcDatabase(std::move(env), std::move(dbc), connect, readOnly));
  db->SetUpSession();
  return db;
}

OdbcDatabase::OdbcDatabase(OdbcEnv env, OdbcDbc dbc, std::string connect, bool readOnly)
    : env_(std::move(env)), dbc_(std::move(dbc)), connect_(std::move(connect)), read_only_(readOnly) {
  dbms_ = GetInfoText(dbc_.Get(), SQL_DBMS_NAME);
  dialect_ = &DialectForDbms(dbms_);
  narrow_ = dialect_->NarrowText();
  rules_ = schema_.Rules([this](const Date& d) { return dialect_->DateLiteral(d); });
  rules_.lexicon = &dialect_->Lexical();
  rules_.harden_string = [this](const Token& t) { return dialect_->HardenString(t); };
}

OdbcDatabase::~OdbcDatabase() { Close(); }

// The session must read statements exactly as the dialect's lexicon says; a
// session whose settings did not take is closed rather than used.
void OdbcDatabase::SetUpSession() {
  for (const std::string& step : dialect_->SessionSetup(read_only_)) ExecuteRaw(step);
  for (const auto& check : dialect_->SessionChecks()) {
    OdbcStmt stmt = NewStatement();
    ExecDirect(stmt, check.query);
    std::string value;
    if (Succeeded(SQLFetch(stmt.Get()))) FetchText(stmt.Get(), 1, narrow_, value);
    if (LowerAscii(value).find(LowerAscii(check.must_contain)) == std::string::npos) {
      Close();
      Raise(errOdbcCallFailed, kSource,
            "ODBC--call failed. The " + std::string(dialect_->Name()) +
                " session could not be set to " + check.why + " (" + check.query + " gave '" +
                value + "'); it is not used.");
    }
  }
}

void OdbcDatabase::Fail(SQLSMALLINT type, SQLHANDLE handle, const std::string& what) const {
  RaiseOdbc(type, handle, what, *dialect_);
}

SQLHDBC OdbcDatabase::Handle() {
  if (!dbc_) Raise(3420, kSource, "Object invalid or no longer set (the database is closed).");
  return dbc_.Get();
}

OdbcStmt OdbcDatabase::NewStatement() {
  SQLHANDLE raw = SQL_NULL_HANDLE;
  SQLHDBC dbc = Handle();
  if (!Succeeded(SQLAllocHandle(SQL_HANDLE_STMT, dbc, &raw))) Fail(SQL_HANDLE_DBC, dbc, "SQLAllocHandle");
  return OdbcStmt(raw);
}

SQLRETURN OdbcDatabase::ExecDirect(const OdbcStmt& stmt, const std::string& text) {
  SQLRETURN rc;
  if (narrow_) {
    std::string bytes = text;
    rc = SQLExecDirect(stmt.Get(), reinterpret_cast<SQLCHAR*>(bytes.data()),
                       static_cast<SQLINTEGER>(bytes.size()));
  } else {
    auto wide = ToUtf16(text);
    rc = SQLExecDirectW(stmt.Get(), wide.data(), static_cast<SQLINTEGER>(wide.size()));
  }
  if (rc == SQL_NO_DATA) return rc;
  if (!Succeeded(rc)) Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLExecDirect");
  return rc;
}

std::string OdbcDatabase::Adapt(const std::string& sql, StatementFacts* facts) {
  // An empty statement never reaches the driver: some run nothing and report
  // success, which would hide the caller's mistake.
  if (IsBlank(sql)) {
    Raise(errInvalidStatement, kSource, StandardDescription(errInvalidStatement));
  }
  return AdaptStatement(sql, rules_, facts);
}

[[noreturn]] static void RaiseReadOnly(const char* source) {
  Raise(errReadOnly, source,
        "Cannot update. Database or object is read-only (opened read-only); the statement was "
        "not sent.");
}

int64_t OdbcDatabase::Execute(const std::string& sql) {
  const std::string text = Adapt(sql);
  if (StartsWithWord(text, "SELECT")) Raise(3065, kSource, "Cannot execute a select query.");
  if (read_only_) RaiseReadOnly(kSource);
  OdbcStmt stmt = NewStatement();
  if (ExecDirect(stmt, text) == SQL_NO_DATA) return 0;
  SQLLEN count = 0;
  if (!Succeeded(SQLRowCount(stmt.Get(), &count))) Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLRowCount");
  if (StartsWithWord(text, "CREATE") || StartsWithWord(text, "ALTER") ||
      StartsWithWord(text, "DROP")) {
    schema_.Clear();
  }
  return count < 0 ? 0 : count;
}

void OdbcDatabase::ExecuteRaw(const std::string& sql) {
  OdbcStmt stmt = NewStatement();
  ExecDirect(stmt, sql);
  schema_.Clear();
}

std::string OdbcDatabase::QueryText(const std::string& sql) {
  StatementFacts facts;
  std::string text = Adapt(sql, &facts);
  if (read_only_ && !facts.plain_query) RaiseReadOnly(kSource);
  return text;
}

std::shared_ptr<const RowSet> OdbcDatabase::Query(const std::string& sql) {
  const std::string text = QueryText(sql);
  OdbcStmt stmt = NewStatement();
  const bool noData = ExecDirect(stmt, text) == SQL_NO_DATA;
  SQLSMALLINT columns = 0;
  if (!noData && !Succeeded(SQLNumResultCols(stmt.Get(), &columns))) {
    Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLNumResultCols");
  }
  std::vector<std::string> names;
  std::vector<Fetch> fetches;
  for (SQLUSMALLINT i = 1; i <= columns; ++i) {
    const ColumnDescription d = Describe(stmt.Get(), i, narrow_);
    names.push_back(d.name);
    fetches.push_back(FetchFor(d.type, d.digits, d.type_name));
  }
  auto rows = std::make_shared<RowSet>(std::move(names));
  if (noData || columns == 0) return rows;
  for (;;) {
    const SQLRETURN rc = SQLFetch(stmt.Get());
    if (rc == SQL_NO_DATA) break;
    if (!Succeeded(rc)) Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLFetch");
    rows->BeginRow();
    for (SQLUSMALLINT i = 1; i <= columns; ++i) {
      AppendCell(*rows, stmt.Get(), i, fetches[i - 1], narrow_);
    }
    rows->EndRow();
  }
  return rows;
}

std::string OdbcDatabase::Catalog() {
  if (!dialect_->CatalogIsDatabase()) return {};
  SQLWCHAR buffer[256] = {};
  SQLINTEGER length = 0;
  if (!Succeeded(SQLGetConnectAttrW(Handle(), SQL_ATTR_CURRENT_CATALOG, buffer, sizeof buffer,
                                    &length))) {
    Fail(SQL_HANDLE_DBC, dbc_.Get(), "SQLGetConnectAttr");
  }
  return ToUtf8(buffer, std::min<size_t>(static_cast<size_t>(std::max<SQLINTEGER>(length, 0)) /
                                             sizeof(SQLWCHAR),
                                         255));
}

std::vector<ColumnInfo> OdbcDatabase::CatalogColumns(const std::string& table) {
  std::vector<ColumnInfo> out;
  OdbcStmt stmt = NewStatement();
  const std::string catalog = Catalog();
  SQLRETURN rc;
  if (narrow_) {
    std::string bytes = table;
    std::string cat = catalog;
    rc = SQLColumns(stmt.Get(), catalog.empty() ? nullptr : reinterpret_cast<SQLCHAR*>(cat.data()),
                    static_cast<SQLSMALLINT>(cat.size()), nullptr, 0,
                    reinterpret_cast<SQLCHAR*>(bytes.data()), static_cast<SQLSMALLINT>(bytes.size()),
                    nullptr, 0);
  } else {
    auto wide = ToUtf16(table);
    auto cat = ToUtf16(catalog);
    rc = SQLColumnsW(stmt.Get(), catalog.empty() ? nullptr : cat.data(),
                     static_cast<SQLSMALLINT>(cat.size()), nullptr, 0, wide.data(),
                     static_cast<SQLSMALLINT>(wide.size()), nullptr, 0);
  }
  if (!Succeeded(rc)) Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLColumns");
  while (Succeeded(SQLFetch(stmt.Get()))) {
    ColumnInfo info;
    FetchText(stmt.Get(), 4, narrow_, info.name);
    SQLSMALLINT dataType = 0;
    FetchFixed(stmt.Get(), 5, SQL_C_SSHORT, dataType);
    FetchText(stmt.Get(), 6, narrow_, info.declared_type);
    info.is_date = FetchFor(dataType, 0, info.declared_type) == Fetch::kDate;
    out.push_back(std::move(info));
  }
  return out;
}

std::vector<ColumnInfo> OdbcDatabase::Columns(const std::string& table) {
  // Servers fold unquoted names to one case; the library writes them mixed.
  for (const std::string& name : {table, LowerAscii(table)}) {
    auto found = CatalogColumns(name);
    if (!found.empty()) return found;
  }
  std::string upper = table;
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return CatalogColumns(upper);
}

std::vector<std::string> OdbcDatabase::TableNames() {
  std::vector<std::string> out;
  OdbcStmt stmt = NewStatement();
  std::string catalog = Catalog();
  SQLCHAR type[] = "TABLE";
  // One server may hold many databases: only the current one's tables.
  if (!Succeeded(SQLTables(stmt.Get(),
                           catalog.empty() ? nullptr : reinterpret_cast<SQLCHAR*>(catalog.data()),
                           static_cast<SQLSMALLINT>(catalog.size()), nullptr, 0, nullptr, 0, type,
                           SQL_NTS))) {
    Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLTables");
  }
  while (Succeeded(SQLFetch(stmt.Get()))) {
    std::string name;
    if (FetchText(stmt.Get(), 3, narrow_, name) && !LowerAscii(name).starts_with("sqlite_")) {
      out.push_back(std::move(name));
    }
  }
  return out;
}

std::string OdbcDatabase::FindTable(const std::string& name) {
  for (const auto& table : TableNames()) {
    if (strcasecmp(table.c_str(), name.c_str()) == 0) return table;
  }
  return {};
}

void OdbcDatabase::AddColumn(const std::string& table, const NewColumn& column) {
  if (read_only_) RaiseReadOnly(kSource);
  std::string sql = "ALTER TABLE " + table + " ADD " + column.name + " " +
                    dialect_->ColumnType(column.type);
  if (!column.default_value.IsEmpty() && !column.default_value.IsNull()) {
    sql += " DEFAULT " + column.default_value.ToString();
  } else if (column.required) {
    sql += " DEFAULT 0";
  }
  if (column.required) sql += " NOT NULL";
  ExecuteRaw(sql);
}

void OdbcDatabase::BeginTrans() {
  if (!Succeeded(SQLSetConnectAttr(Handle(), SQL_ATTR_AUTOCOMMIT,
                                   reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_OFF), 0))) {
    Fail(SQL_HANDLE_DBC, dbc_.Get(), "SQLSetConnectAttr");
  }
}

void OdbcDatabase::EndTransaction(SQLSMALLINT completion) {
  SQLHDBC dbc = Handle();
  const SQLRETURN rc = SQLEndTran(SQL_HANDLE_DBC, dbc, completion);
  SQLSetConnectAttr(dbc, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_ON), 0);
  if (!Succeeded(rc)) Fail(SQL_HANDLE_DBC, dbc, "SQLEndTran");
}

void OdbcDatabase::CommitTrans() { EndTransaction(SQL_COMMIT); }
void OdbcDatabase::Rollback() { EndTransaction(SQL_ROLLBACK); }

void OdbcDatabase::Close() noexcept {
  dbc_.Reset();
  env_.Reset();
  schema_.Clear();
}

}  // namespace ZTkDb::detail
