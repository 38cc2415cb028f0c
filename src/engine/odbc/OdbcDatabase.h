#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/Database.h"
#include "engine/LiteralLifting.h"
#include "engine/RowSet.h"
#include "engine/SchemaCache.h"
#include "engine/StatementAdapter.h"
#include "engine/StatementPlans.h"
#include "engine/dialect/ServerDialect.h"
#include "engine/odbc/OdbcBlockFetch.h"
#include "engine/odbc/OdbcFetch.h"
#include "engine/odbc/OdbcHandle.h"
#include "runtime/ToolExport.h"

namespace ZTkDb::detail {

// An ODBC data source through unixODBC, in the role of the kind-2 engine.
// The server is recognised from the DBMS name its driver reports; its
// dialect (engine/dialect/) sets the session up and says how the server
// reads statements. Statements are adapted to it just before they run: the
// Jet DELETE forms become DELETE FROM, UPDATE SET targets lose their table
// qualifier, German date texts in date-column positions become the server's
// date literal, and only one statement runs per call, in the server's own
// reading of the text. A read-only open refuses every statement but a query
// before the driver sees it.
//
// Values come back typed: Null, flags (BIT), bytes, 16/32-bit integers,
// doubles, currency (NUMERIC/DECIMAL with at most 4 decimals, exact),
// timestamps as dates, text as UTF-8. Errors carry the SQLSTATE and the
// driver's text, under the DAO number where one exists and 3146 otherwise.
class OdbcDatabase final : public Database {
 public:
  // Connects with a DSN or DSN-less connection string; raises 3146 (with
  // SQLSTATE and driver text) when the driver or server refuses. `exclusive`
  // has no meaning for a server and is ignored; `readOnly` makes the engine
  // refuse writes (3027) and puts the session into the server's read-only
  // mode where it has one.
  ZTKDB_TOOL static std::shared_ptr<OdbcDatabase> Open(const std::string& connect, bool readOnly);

  ~OdbcDatabase() override;

  StorageKind Kind() const override { return StorageKind::Odbc; }
  int64_t LargestAmount() const override;
  const std::string& Path() const override { return connect_; }
  int64_t Execute(const std::string& sql) override;
  int64_t Execute(const Statement& sql) override;
  std::shared_ptr<const RowSet> Query(const std::string& sql,
                                      ResultSize size = ResultSize::kFew) override;
  std::shared_ptr<const RowSet> Query(const Statement& sql,
                                      ResultSize size = ResultSize::kFew) override;
  int64_t InsertRows(const std::string& table, const std::vector<std::string>& columns,
                     const std::vector<std::vector<Variant>>& rows) override;
  std::optional<std::string> FindTable(const std::string& name) override;
  std::vector<ColumnInfo> Columns(const std::string& table) override;
  void AddColumn(const std::string& table, const NewColumn& column) override;
  std::vector<std::string> TableNames() override;
  std::string QuoteName(const std::string& name) const override {
    return dialect_->QuoteName(name);
  }
  void BeginTrans() override;
  void BeginSnapshot() override;
  void CommitTrans() override;
  void Rollback() override;
  void Close() noexcept override;
  bool IsOpen() const noexcept override { return static_cast<bool>(dbc_); }

  const ServerDialect& Dialect() const { return *dialect_; }
  // The DBMS name the driver reports ("PostgreSQL", "SQLite", …).
  const std::string& DbmsName() const { return dbms_; }
  // The statement as it will reach the server.
  std::string Adapt(const std::string& sql, StatementFacts* facts = nullptr);
  // Runs `sql` as written: no adaptation, no one-statement check. For the
  // library's own DDL and session set-up only.
  void ExecuteRaw(const std::string& sql);

 private:
  struct Session;
  static Session Connect(const std::string& connect, bool readOnly);
  OdbcDatabase(OdbcEnv env, OdbcDbc dbc, std::string connect, bool readOnly);
  void SetUpSession();
  std::vector<std::string> RunSetUp(const std::string& text);
  void Reconnect();
  // Runs `run` on a live session: a session found dead before is replaced
  // first (outside a transaction); one that dies under `run` is replaced and
  // `run` runs once more when it is `idempotent` (a query) or the server
  // said the statement never ran.
  template <typename Run>
  auto OnLiveSession(bool idempotent, Run&& run) -> decltype(run());
  // `plainQuery`: the text only reads (it may then run twice, see
  // ServerDialect::SchemaVersion).
  std::shared_ptr<const RowSet> RunQuery(const std::string& text, bool plainQuery);
  // The statements of lifted literals, prepared once per shape and run
  // with the values bound (OdbcPrepared.cpp).
  struct Prepared;
  class Statements;
  struct Parameters;
  OdbcStmt PrepareText(const std::string& text);
  Prepared& PreparedFor(const LiftedStatement& lifted);
  // `rows` after `head` ("INSERT INTO t (…) VALUES "), `width` values each.
  int64_t InsertBound(const std::string& head, size_t width,
                      const std::vector<std::vector<Variant>>& rows);
  // Executes the prepared statement with `lifted`'s values; false when the
  // statement matched nothing (SQL_NO_DATA).
  bool ExecutePrepared(Prepared& p, const LiftedStatement& lifted);
  std::shared_ptr<const RowSet> QueryPrepared(const LiftedStatement& lifted);
  int64_t ExecuteLifted(const LiftedStatement& lifted);
  void ForgetStatements() noexcept;
  void EndSession() noexcept;
  // Reads the result of an executed statement; `p` keeps its columns' names
  // and fetches for the next run of the same shape.
  std::shared_ptr<const RowSet> ReadResult(SQLHSTMT stmt, Prepared* p);
  template <typename Body>
  auto WithPrepared(const LiftedStatement& lifted, Body body);
  std::shared_ptr<const RowSet> RunInChunks(const std::string& text,
                                            const ServerDialect::Cursor& cursor);
  void DescribeResult(SQLHSTMT stmt, std::shared_ptr<const RowSet::Columns>& columns,
                      std::vector<Fetch>& fetches);
  // `keep`: the prepared statement's serial, 0 for any other statement.
  std::shared_ptr<const RowSet> FetchRows(SQLHSTMT stmt, const std::vector<Fetch>& fetches,
                                          std::shared_ptr<RowSet> rows, uint64_t keep = 0);
  std::vector<std::string> CatalogTables();
  // Raises the failed call's error; notes whether it says the session is gone.
  [[noreturn]] void Fail(SQLSMALLINT type, SQLHANDLE handle, const std::string& what);
  // The current database where catalog calls must name it, else empty.
  std::string Catalog();
  SQLHDBC Handle();
  OdbcStmt NewStatement();
  // SQL_NO_DATA (a searched UPDATE/DELETE that matched nothing) is success.
  SQLRETURN ExecDirect(const OdbcStmt& stmt, const std::string& text);
  std::vector<ColumnInfo> CatalogColumns(const std::string& table);
  void EndTransaction(SQLSMALLINT completion);

  OdbcEnv env_;
  OdbcDbc dbc_;
  std::string connect_;
  std::string dbms_;
  const ServerDialect* dialect_ = &GenericDialect();
  bool read_only_ = false;
  // The server ended the session (found by the last failure).
  bool lost_ = false;
  // Behind a pooler in transaction mode (see SetUpSession).
  bool pooled_ = false;
  // The connection string names several servers, one of which may take
  // over from another (see Reconnect).
  bool several_servers_ = false;
  // Since when no server has taken a session again.
  std::optional<std::chrono::steady_clock::time_point> outage_since_;
  ServerDialect::Loss loss_ = ServerDialect::Loss::kNone;
  bool in_transaction_ = false;
  // The schema's version when the last query ran (where the dialect has one).
  std::string schema_version_;
  // The isolation level a snapshot replaced, set back when it ends.
  std::optional<SQLULEN> restore_isolation_;
  // The session died inside a transaction the host has not ended yet.
  bool transaction_lost_ = false;
  // Text goes through the narrow (UTF-8) entry points instead of the wide.
  bool narrow_ = false;
  AdaptationRules rules_;
  SchemaCache schema_{[this](const std::string& t) { return Columns(t); }};
  LiftingRules lifting_;
  std::unique_ptr<Statements> statements_;
  // With the statement cache: how each statement key runs, and the values
  // of the statement running now.
  std::unique_ptr<StatementPlans> plans_;
  LiftedStatement bound_;
  std::unique_ptr<BlockFetcher> blocks_;
};

}  // namespace ZTkDb::detail
