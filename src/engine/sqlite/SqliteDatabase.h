#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/Database.h"
#include "engine/LiteralLifting.h"
#include "engine/SchemaCache.h"
#include "engine/StatementAdapter.h"
#include "engine/StatementPlans.h"
#include "engine/dialect/ServerDialect.h"
#include "runtime/Storable.h"
#include "runtime/ToolExport.h"

struct sqlite3;
struct sqlite3_stmt;

namespace ZTkDb::detail {

struct SqliteCloser {
  void operator()(sqlite3* db) const noexcept;
};

// A SQLite database file, in the role of the embedded (kind 1) engine.
// Dates are stored as 'YYYY-MM-DD HH:MM:SS' text in DATETIME columns, flags as
// -1/0, currency as REAL; reading turns them back into the Variant kinds the
// declared column types stand for.
class SqliteDatabase final : public Database {
 public:
  // Opens an existing file. Raises 3024 when it does not exist (nothing is
  // created), 3051 when it is empty or not a SQLite database (an Access file
  // is named as such), cannot be opened, or is locked exclusively by another
  // process. Writes into a file that was moved or deleted while open are
  // refused (3051).
  ZTKDB_TOOL static std::shared_ptr<SqliteDatabase> Open(const std::string& path, bool exclusive,
                                                         bool readOnly);
  // Creates a new database file from `ddl`; refuses an existing file (3204).
  static void Create(const std::string& path, const std::string& ddl);

  // How long a writer waits for another process's lock before error 3260.
  static constexpr int kBusyTimeoutMs = 5000;

  ~SqliteDatabase() override;

  StorageKind Kind() const override { return StorageKind::Jet; }
  int64_t LargestAmount() const override { return kLargestJetAmount; }
  const std::string& Path() const override { return path_; }
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
    return SqliteDialect().QuoteName(name);
  }
  void BeginTrans() override;
  void BeginSnapshot() override;
  void CommitTrans() override;
  void Rollback() override;
  void Close() noexcept override;
  bool IsOpen() const noexcept override { return db_ != nullptr; }

  // The statement as it will reach SQLite.
  std::string Adapt(const std::string& sql, StatementFacts* facts = nullptr);

 private:
  SqliteDatabase(std::unique_ptr<sqlite3, SqliteCloser> db, std::string path, bool readOnly);
  struct Prepared;
  class Statements;
  sqlite3* Handle();
  void ExecuteInternal(const std::string& sql);
  void RefuseIfMoved();
  // The prepared statement for a lifted statement, its values bound.
  Prepared& Bound(const LiftedStatement& lifted);
  std::shared_ptr<const RowSet> ReadRows(Prepared& p);
  void ForgetStatements();

  std::unique_ptr<sqlite3, SqliteCloser> db_;
  std::string path_;
  bool read_only_ = false;
  LiftingRules lifting_;
  AdaptationRules rules_;
  SchemaCache schema_{[this](const std::string& t) { return Columns(t); }};
  // Declared after db_: finalized before the connection closes.
  std::unique_ptr<Statements> statements_;
  // With the statement cache: how each statement key runs, and the values
  // of the statement running now.
  std::unique_ptr<StatementPlans> plans_;
  LiftedStatement bound_;
};

}  // namespace ZTkDb::detail
