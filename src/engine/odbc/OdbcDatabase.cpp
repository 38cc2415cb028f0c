#include "engine/odbc/OdbcDatabase.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstring>
#include <limits>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "engine/RowSet.h"
#include "engine/Trace.h"
#include "engine/odbc/OdbcError.h"
#include "engine/odbc/OdbcFetch.h"
#include "engine/odbc/OdbcPrepared.h"
#include "engine/odbc/Utf16.h"
#include "runtime/Numbers.h"
#include "runtime/Raise.h"
#include "runtime/Storable.h"
#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"

namespace ZTkDb::detail {
namespace {

constexpr const char* kSource = "ZTkDb.ODBC";

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

// A connected session: environment and connection handles.
struct OdbcDatabase::Session {
  OdbcEnv env;
  OdbcDbc dbc;
};

OdbcDatabase::Session OdbcDatabase::Connect(const std::string& connect, bool readOnly) {
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
    // Drivers that honour it refuse writes themselves; the engine refuses
    // them in any case.
    SQLSetConnectAttr(dbc.Get(), SQL_ATTR_ACCESS_MODE,
                      reinterpret_cast<SQLPOINTER>(SQL_MODE_READ_ONLY), 0);
  }
  auto wide = ToUtf16(ForDriver(connect, readOnly).text);
  SQLWCHAR out[1024];
  SQLSMALLINT outLength = 0;
  SQLRETURN rc;
  {
    // psqlodbc switches the process locale while it connects (setlocale is
    // not thread-safe), so clients opening in several threads take turns.
    static auto* connecting = new std::mutex;
    const std::lock_guard lock(*connecting);
    rc = SQLDriverConnectW(dbc.Get(), nullptr, wide.data(), static_cast<SQLSMALLINT>(wide.size()),
                           out, 1024, &outLength, SQL_DRIVER_NOPROMPT);
  }
  if (!Succeeded(rc)) RaiseOdbc(SQL_HANDLE_DBC, dbc.Get(), "SQLDriverConnect");
  dbc.MarkConnected();
  return {std::move(env), std::move(dbc)};
}

std::shared_ptr<OdbcDatabase> OdbcDatabase::Open(const std::string& connect, bool readOnly) {
  Session session = Connect(connect, readOnly);
  auto db = std::shared_ptr<OdbcDatabase>(
      new OdbcDatabase(std::move(session.env), std::move(session.dbc), connect, readOnly));
  db->several_servers_ = ForDriver(connect, readOnly).several_servers;
  db->SetUpSession();
  return db;
}

// The same connection string and session set-up as the first time. Where
// the connection string names several servers, one may be taking over from
// another that failed: the session is sought again until one takes it, for
// as long as a takeover may take, so that a read after the failure (a
// create's reading back of its row, say) finds the row on the new server.
void OdbcDatabase::Reconnect() {
  constexpr auto kTakeover = std::chrono::seconds(30);
  std::optional<Session> found;
  while (!found) {
    try {
      found.emplace(Connect(connect_, read_only_));
    } catch (const Error& e) {
      // Only while no server takes the session (08: none reached; 57P03: one
      // starting up or a standby refusing writes), and for one takeover's
      // time per outage, not per call.
      const auto now = std::chrono::steady_clock::now();
      if (!outage_since_) outage_since_ = now;
      const bool unreachable = e.Description().find("[08") != std::string::npos ||
                               e.Description().find("[57P03]") != std::string::npos;
      if (!several_servers_ || !unreachable || now - *outage_since_ >= kTakeover) throw;
      std::this_thread::sleep_for(std::chrono::milliseconds(250));
    }
  }
  outage_since_.reset();
  Session session = std::move(*found);
  EndSession();  // and the statements prepared on it
  dbc_ = std::move(session.dbc);
  env_ = std::move(session.env);
  lost_ = false;
  in_transaction_ = false;
  SetUpSession();
}

template <typename Run>
auto OdbcDatabase::OnLiveSession(bool idempotent, Run&& run) -> decltype(run()) {
  if (lost_ && !in_transaction_) Reconnect();
  try {
    return run();
  } catch (const Error&) {
    if (!lost_) throw;
    if (in_transaction_) {
      // The transaction died with the session: the host hears of it, and
      // the next statement after it starts a new session.
      in_transaction_ = false;
      transaction_lost_ = true;
      throw;
    }
    // A query runs again; a write only when the server said it never ran,
    // so that nothing is ever written twice.
    if (!idempotent && loss_ != ServerDialect::Loss::kLostBeforeStatement) throw;
    Reconnect();
    return run();
  }
}

OdbcDatabase::OdbcDatabase(OdbcEnv env, OdbcDbc dbc, std::string connect, bool readOnly)
    : env_(std::move(env)),
      dbc_(std::move(dbc)),
      connect_(std::move(connect)),
      read_only_(readOnly) {
  dbms_ = GetInfoText(dbc_.Get(), SQL_DBMS_NAME);
  dialect_ = &DialectForDbms(dbms_);
  narrow_ = dialect_->NarrowText();
  rules_ = schema_.Rules([this](const Date& d) { return dialect_->DateLiteral(d); });
  rules_.lexicon = &dialect_->Lexical();
  rules_.harden_string = [this](const Token& t) { return dialect_->HardenString(t); };
  if (dialect_->BindsLiterals() && Statements::Enabled()) {
    lifting_ = schema_.Lifting();
    lifting_.any_string = dialect_->StringsReadAsBoundText();
    lifting_.decimal_marker = dialect_->BoundDecimal();
    // The driver finds its parameter markers with a reading of its own.
    lifting_.refuse_question_marks = true;
    // A driver that keeps describing a result as it was prepared, though
    // its server now sends another session's changed table, reads moved
    // columns under the old names: what a result's columns are is then left
    // to the text, prepared anew on every run.
    lifting_.refuse_star_results = !dialect_->ChangedResultState();
    statements_ = std::make_unique<Statements>();
    AdaptationRules learning = rules_;
    learning.lifting = &lifting_;
    plans_ = std::make_unique<StatementPlans>(
        [learning](const std::string& text, StatementFacts& facts) {
          AdaptStatement(text, learning, &facts);
        });
  }
  if (dialect_->FetchesInBlocks()) blocks_ = std::make_unique<BlockFetcher>();
}

OdbcDatabase::~OdbcDatabase() { Close(); }

// The session must read statements exactly as the dialect's lexicon says; a
// session whose settings did not take is closed rather than used.
void OdbcDatabase::SetUpSession() {
  const auto setUp = dialect_->SetUp(read_only_, dialect_->RequestedPort(connect_));
  if (setUp.text.empty()) return;
  // A session that is not what the library's statements assume is closed
  // rather than used.
  const auto refuse = [&](const std::string& what, const std::string& why) {
    Close();
    Raise(errOdbcCallFailed, kSource,
          "ODBC--call failed. The " + std::string(dialect_->Name()) +
              " session could not be set to " + what + " (" + why + "); it is not used.");
  };
  std::vector<std::string> row;
  try {
    row = RunSetUp(setUp.text);
    if (!setUp.then.empty()) RunSetUp(setUp.then);
  } catch (const Error& e) {
    if (lost_) throw;
    refuse(setUp.needs, e.Description());
  }
  for (const auto& check : setUp.checks) {
    const size_t at = static_cast<size_t>(check.column) - 1;
    const std::string value = at < row.size() ? row[at] : std::string();
    if (LowerAscii(value).find(LowerAscii(check.must_contain)) == std::string::npos ||
        (!check.must_not_be.empty() && value == check.must_not_be)) {
      refuse(check.why, "its set-up gave '" + value + "'");
    }
  }
  const size_t port = static_cast<size_t>(setUp.port_column) - 1;
  if (!pooled_ && setUp.port_column > 0 && port < row.size() &&
      row[port] != dialect_->RequestedPort(connect_)) {
    // Opened again with the options a pooler needs: what this session
    // prepared would be missing from the next transaction's server
    // connection, or left behind on it for other clients.
    pooled_ = true;
    // Preparing nothing on the server, the driver describes a result as it
    // first ran, like a driver that keeps describing it as prepared.
    lifting_.refuse_star_results = true;
    connect_ += (connect_.empty() || connect_.back() == ';' ? "" : ";") + dialect_->PooledOptions();
    Reconnect();
  }
}

// Runs a text of one or more statements; gives the last row any of them
// answered with, each value as text.
std::vector<std::string> OdbcDatabase::RunSetUp(const std::string& text) {
  OdbcStmt stmt = NewStatement();
  std::vector<std::string> row;
  if (ExecDirect(stmt, text) == SQL_NO_DATA) return row;
  for (;;) {
    SQLSMALLINT columns = 0;
    if (Succeeded(SQLNumResultCols(stmt.Get(), &columns)) && columns > 0 &&
        Succeeded(SQLFetch(stmt.Get()))) {
      row.assign(static_cast<size_t>(columns), std::string());
      for (SQLSMALLINT i = 1; i <= columns; ++i) {
        FetchText(stmt.Get(), static_cast<SQLUSMALLINT>(i), narrow_,
                  row[static_cast<size_t>(i - 1)]);
      }
    }
    const SQLRETURN rc = SQLMoreResults(stmt.Get());
    if (rc == SQL_NO_DATA) break;
    if (!Succeeded(rc)) Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLMoreResults");
  }
  return row;
}

void OdbcDatabase::Fail(SQLSMALLINT type, SQLHANDLE handle, const std::string& what) {
  auto records = Diagnostics(type, handle);
  loss_ = ServerDialect::Loss::kNone;
  for (const auto& record : records) {
    const auto loss = dialect_->SessionLoss(record.sqlstate, record.native, record.message);
    if (loss > loss_) loss_ = loss;
  }
  const bool named = std::any_of(records.begin(), records.end(), [](const OdbcDiagnostic& r) {
    return r.sqlstate.starts_with("08") || r.sqlstate.starts_with("57");
  });
  // Some drivers report a session that died under a prepared statement only
  // as a general error; the connection itself knows. Whether the statement
  // ran is not known then, so a write is not tried again.
  SQLUINTEGER dead = SQL_CD_FALSE;
  if (loss_ == ServerDialect::Loss::kNone && dbc_ && type == SQL_HANDLE_STMT &&
      Succeeded(SQLGetConnectAttr(dbc_.Get(), SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr)) &&
      dead == SQL_CD_TRUE) {
    loss_ = ServerDialect::Loss::kSessionLost;
  }
  // The host learns that the connection was lost under the state class
  // every driver uses for it.
  if (loss_ != ServerDialect::Loss::kNone && !named) {
    records.insert(records.begin(),
                   OdbcDiagnostic{"08S01", 0, "The connection to the server was lost."});
  }
  if (loss_ != ServerDialect::Loss::kNone) lost_ = true;
  RaiseDiagnostics(records, what, *dialect_);
}

SQLHDBC OdbcDatabase::Handle() {
  if (!dbc_) Raise(3420, kSource, "Object invalid or no longer set (the database is closed).");
  return dbc_.Get();
}

OdbcStmt OdbcDatabase::NewStatement() {
  SQLHANDLE raw = SQL_NULL_HANDLE;
  SQLHDBC dbc = Handle();
  if (!Succeeded(SQLAllocHandle(SQL_HANDLE_STMT, dbc, &raw)))
    Fail(SQL_HANDLE_DBC, dbc, "SQLAllocHandle");
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

int64_t OdbcDatabase::Execute(const Statement& sql) {
  bool plainQuery = false;
  if (!plans_ || !plans_->Bind(sql, bound_, plainQuery)) return Execute(sql.Render());
  TraceScope trace(dbms_.c_str(), nullptr, &sql, true);
  if (StartsWithWord(bound_.Shape(), "SELECT")) {
    Raise(3065, kSource, "Cannot execute a select query.");
  }
  if (read_only_) RaiseReadOnly(kSource);
  const int64_t count = OnLiveSession(false, [&] { return ExecuteLifted(bound_); });
  trace.Rows(count);
  return count;
}

int64_t OdbcDatabase::Execute(const std::string& sql) {
  TraceScope trace(dbms_.c_str(), &sql, nullptr, false);
  const std::string text = Adapt(sql);
  if (StartsWithWord(text, "SELECT")) {
    Raise(3065, kSource, "Cannot execute a select query.");
  }
  if (read_only_) RaiseReadOnly(kSource);
  const SQLLEN count = OnLiveSession(false, [&]() -> SQLLEN {
    OdbcStmt stmt = NewStatement();
    if (ExecDirect(stmt, text) == SQL_NO_DATA) return 0;
    SQLLEN affected = 0;
    if (!Succeeded(SQLRowCount(stmt.Get(), &affected))) {
      Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLRowCount");
    }
    return affected;
  });
  if (StartsWithWord(text, "CREATE") || StartsWithWord(text, "ALTER") ||
      StartsWithWord(text, "DROP")) {
    schema_.Clear();
    ForgetStatements();
  }
  trace.Rows(count < 0 ? 0 : count);
  return count < 0 ? 0 : count;
}

// A driver that reads REAL through its 15-digit text gives back amounts
// exactly below 10^11 only.
int64_t OdbcDatabase::LargestAmount() const {
  return dialect_->StoresAmountsAsDouble() ? kLargestFifteenDigitAmount
                                           : std::numeric_limits<int64_t>::max();
}

int64_t OdbcDatabase::InsertRows(const std::string& table, const std::vector<std::string>& columns,
                                 const std::vector<std::vector<Variant>>& rows) {
  if (read_only_) RaiseReadOnly(kSource);
  CheckStorableRows(rows, columns.size(), LargestAmount());
  std::string head = "INSERT INTO " + table + " (";
  for (size_t i = 0; i < columns.size(); ++i) head += (i ? ", " : "") + columns[i];
  head += ") VALUES ";
  return OnLiveSession(false, [&] { return InsertBound(head, columns.size(), rows); });
}

void OdbcDatabase::ExecuteRaw(const std::string& sql) {
  OdbcStmt stmt = NewStatement();
  ExecDirect(stmt, sql);
  schema_.Clear();
  ForgetStatements();
}

std::shared_ptr<const RowSet> OdbcDatabase::Query(const Statement& sql, ResultSize size) {
  // A long result read through a cursor needs the statement's text.
  const bool chunked = size == ResultSize::kMany && dialect_->LargeResultCursor(in_transaction_);
  bool plainQuery = false;
  if (chunked || !plans_ || !plans_->Bind(sql, bound_, plainQuery)) {
    return Query(sql.Render(), size);
  }
  TraceScope trace(dbms_.c_str(), nullptr, &sql, true);
  if (read_only_ && !plainQuery) RaiseReadOnly(kSource);
  auto rows = OnLiveSession(true, [&] { return QueryPrepared(bound_); });
  trace.Rows(rows->RowCount());
  return rows;
}

std::shared_ptr<const RowSet> OdbcDatabase::Query(const std::string& sql, ResultSize size) {
  TraceScope trace(dbms_.c_str(), &sql, nullptr, false);
  StatementFacts facts;
  const std::string text = Adapt(sql, &facts);
  if (read_only_ && !facts.plain_query) RaiseReadOnly(kSource);
  std::shared_ptr<const RowSet> rows;
  const auto cursor = size == ResultSize::kMany && facts.plain_query
                          ? dialect_->LargeResultCursor(in_transaction_)
                          : decltype(dialect_->LargeResultCursor(in_transaction_)){};
  if (cursor) {
    // The statement alone, without a closing ';' or what follows it, goes
    // inside the cursor's texts.
    const std::string statement = text.substr(0, std::min(facts.statement_end, text.size()));
    rows = OnLiveSession(true, [&] { return RunInChunks(statement, *cursor); });
  } else {
    rows = OnLiveSession(true, [&] { return RunQuery(text, facts.plain_query); });
  }
  trace.Rows(rows->RowCount());
  return rows;
}

std::shared_ptr<const RowSet> OdbcDatabase::RunQuery(const std::string& text, bool plainQuery) {
  if (const char* version = plainQuery ? dialect_->SchemaVersion() : nullptr) {
    // When another session changed the tables, the text runs once unread:
    // its engine notices the change only while it runs, after the driver
    // described the result by the tables as they were.
    std::string now;
    const OdbcStmt probe = NewStatement();
    ExecDirect(probe, version);
    if (Succeeded(SQLFetch(probe.Get()))) FetchText(probe.Get(), 1, narrow_, now);
    if (!schema_version_.empty() && now != schema_version_) {
      const OdbcStmt stale = NewStatement();
      if (ExecDirect(stale, text) != SQL_NO_DATA) SQLFetch(stale.Get());
    }
    schema_version_ = std::move(now);
  }
  OdbcStmt stmt = NewStatement();
  if (ExecDirect(stmt, text) == SQL_NO_DATA)
    return std::make_shared<RowSet>(std::vector<std::string>{});
  return ReadResult(stmt.Get(), nullptr);
}

std::vector<ColumnInfo> OdbcDatabase::Columns(const std::string& table) {
  return OnLiveSession(true, [&] {
    // Servers fold unquoted names to one case; the library writes them
    // mixed. The server's own case is asked for first: each lookup is a
    // round trip.
    std::string upper = table;
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    std::vector<std::string> tried;
    for (const std::string& name : {dialect_->FoldedName(table), table, LowerAscii(table), upper}) {
      if (std::find(tried.begin(), tried.end(), name) != tried.end()) continue;
      tried.push_back(name);
      auto found = CatalogColumns(name);
      if (!found.empty()) return found;
    }
    return std::vector<ColumnInfo>{};
  });
}

std::vector<std::string> OdbcDatabase::TableNames() {
  return OnLiveSession(true, [&] { return CatalogTables(); });
}

void OdbcDatabase::AddColumn(const std::string& table, const NewColumn& column) {
  if (read_only_) RaiseReadOnly(kSource);
  std::string sql =
      "ALTER TABLE " + table + " ADD " + column.name + " " + dialect_->ColumnType(column.type);
  if (!column.default_value.IsEmpty() && !column.default_value.IsNull()) {
    sql += " DEFAULT " + column.default_value.ToString();
  } else if (column.required) {
    sql += " DEFAULT 0";
  }
  if (column.required) sql += " NOT NULL";
  ExecuteRaw(sql);
}

void OdbcDatabase::BeginTrans() {
  if (lost_) Reconnect();
  transaction_lost_ = false;
  if (!Succeeded(SQLSetConnectAttr(Handle(), SQL_ATTR_AUTOCOMMIT,
                                   reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_OFF), 0))) {
    Fail(SQL_HANDLE_DBC, dbc_.Get(), "SQLSetConnectAttr");
  }
  in_transaction_ = true;
}

// Repeatable reads: one snapshot for the whole transaction on PostgreSQL
// (where each statement otherwise sees its own moment) and on MariaDB's
// InnoDB; a driver that cannot set it is already at least this strict.
void OdbcDatabase::BeginSnapshot() {
  if (lost_) Reconnect();
  SQLHDBC dbc = Handle();
  SQLULEN current = 0;
  if (Succeeded(SQLGetConnectAttr(dbc, SQL_ATTR_TXN_ISOLATION, &current, 0, nullptr)) &&
      current != SQL_TXN_REPEATABLE_READ && current != SQL_TXN_SERIALIZABLE) {
    if (!Succeeded(SQLSetConnectAttr(dbc, SQL_ATTR_TXN_ISOLATION,
                                     reinterpret_cast<SQLPOINTER>(SQL_TXN_REPEATABLE_READ), 0))) {
      Fail(SQL_HANDLE_DBC, dbc, "SQLSetConnectAttr");
    }
    restore_isolation_ = current;
  }
  BeginTrans();
}

void OdbcDatabase::EndTransaction(SQLSMALLINT completion) {
  in_transaction_ = false;
  const std::optional<SQLULEN> isolation = std::exchange(restore_isolation_, std::nullopt);
  if (transaction_lost_ || lost_) {
    // The server ended the session and with it the transaction: nothing is
    // left to roll back, and nothing of it was committed.
    transaction_lost_ = false;
    if (completion == SQL_COMMIT) {
      Raise(errOdbcCallFailed, kSource,
            "ODBC--call failed. The connection to the server was lost during the transaction; "
            "the server rolled it back and nothing of it was written.");
    }
    return;
  }
  SQLHDBC dbc = Handle();
  const SQLRETURN rc = SQLEndTran(SQL_HANDLE_DBC, dbc, completion);
  SQLSetConnectAttr(dbc, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_ON), 0);
  if (isolation) {
    SQLSetConnectAttr(dbc, SQL_ATTR_TXN_ISOLATION, reinterpret_cast<SQLPOINTER>(*isolation), 0);
  }
  if (!Succeeded(rc)) Fail(SQL_HANDLE_DBC, dbc, "SQLEndTran");
}

void OdbcDatabase::CommitTrans() { EndTransaction(SQL_COMMIT); }
void OdbcDatabase::Rollback() { EndTransaction(SQL_ROLLBACK); }

void OdbcDatabase::Close() noexcept {
  EndSession();
  lost_ = false;
  in_transaction_ = false;
  env_.Reset();
  schema_.Clear();
}

}  // namespace ZTkDb::detail
