#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "TestSupport.h"
#include "ztkdb/CTkDb.h"

namespace ztktest {

// The engines the record and list suites run on, from one source.
// kPgBouncer: the PostgreSQL cluster behind pgbouncer in transaction mode,
// whose few server connections the suite's clients share.
enum class Engine { kSqliteFile, kSqliteOdbc, kPostgres, kMariaDb, kPgBouncer };

inline auto AllEngines() {
  return ::testing::Values(Engine::kSqliteFile, Engine::kSqliteOdbc, Engine::kPostgres,
                           Engine::kMariaDb, Engine::kPgBouncer);
}
// The engines that are servers reached through ODBC.
inline auto ServerEngines() {
  return ::testing::Values(Engine::kPostgres, Engine::kMariaDb, Engine::kPgBouncer);
}
std::string EngineName(const ::testing::TestParamInfo<Engine>& info);

// A fresh module database on one engine, opened under a client name: a new
// SQLite file (through the embedded engine or the SQLite ODBC driver), or a
// new database on the suite's PostgreSQL cluster or MariaDB server, dropped
// afterwards.
// When the engine cannot be reached the test is skipped, or fails when
// ZTKDB_REQUIRE_ENGINES=1 (as scripts/test sets it).
class EngineDb {
 public:
  explicit EngineDb(Engine engine);
  ~EngineDb();
  EngineDb(const EngineDb&) = delete;
  EngineDb& operator=(const EngineDb&) = delete;

  // Opens the database with OpenJetDb / OpenOdbcDb under `client`; gives
  // why it could not (empty on success). `options` is appended to the ODBC
  // connection string.
  std::string Open(ZTkDb::CTkDb& tkdb, const std::string& client, const std::string& options = "");
  // Creates the database without opening it (the same reasons as Open).
  std::string Create(const std::string& options = "");

  // Opens the same database a second time under another client name, as a
  // second connection.
  void OpenAgain(ZTkDb::CTkDb& tkdb, const std::string& client);

  Engine Which() const { return engine_; }
  // The storage kind the records see: 1 embedded, 2 ODBC.
  bool Jet() const { return engine_ == Engine::kSqliteFile; }
  // A server reached through a Unicode ODBC driver (PostgreSQL, MariaDB):
  // text travels as UTF-16, and amounts are stored exactly (DECIMAL(19,4)).
  bool IsServer() const { return engine_ >= Engine::kPostgres; }
  // PostgreSQL, directly or through the pooler.
  bool IsPostgres() const { return engine_ == Engine::kPostgres || engine_ == Engine::kPgBouncer; }
  // How a true flag is stored and compared in raw statements.
  const char* TrueText() const { return Jet() ? "-1" : "1"; }
  // The database's name on its server (PostgreSQL, MariaDB), once created.
  const std::string& ServerDatabase() const {
    return engine_ == Engine::kMariaDb ? maria_database_ : pg_database_;
  }
  // The SQLite file (the embedded engine and the SQLite ODBC driver).
  const std::string& FilePath() const { return file_.Path(); }
  // The ODBC connection string (empty for the embedded engine).
  const std::string& ConnectString() const { return connect_; }

 private:
  Engine engine_;
  TempDb file_;
  std::string connect_;
  std::string pg_database_;
  std::string maria_database_;
};

// The suite's PostgreSQL cluster: the one ctest started (ZTKDB_TEST_SERVERS), or
// one started for this process and stopped at its exit. Empty string when
// none can run here.
std::string PostgresConnectString(const std::string& database);
// The same for the suite's MariaDB server.
std::string MariaDbConnectString(const std::string& database);

bool EnginesRequired();
// Whether a test that cannot open its engine for `why` fails: when engines
// are required, unless the run leaves that engine out on purpose
// (ZTKDB_SKIP_ENGINES, e.g. "PgBouncer").
bool MustRun(const std::string& why);

// Fails the test (engines required) or skips it when `reason`, the reason
// an engine cannot be used, is not empty.
#define ZTKTEST_NEED_ENGINE(reason)                 \
  do {                                              \
    const std::string why_ = (reason);              \
    if (!why_.empty()) {                            \
      if (::ztktest::MustRun(why_)) FAIL() << why_; \
      GTEST_SKIP() << why_;                         \
    }                                               \
  } while (0)
// In a fixture's SetUp: opens `db` under `client`, or fails or skips.
#define ZTKTEST_OPEN_ENGINE(db, tkdb, client) ZTKTEST_NEED_ENGINE((db).Open((tkdb), (client)))

// The fixture of a suite that runs on every engine: a fresh database opened
// under the suite's client name, and the boxes shown meanwhile.
class EngineTest : public ::testing::TestWithParam<Engine> {
 protected:
  explicit EngineTest(const char* clientName) : client(clientName) {}
  void SetUp() override { ZTKTEST_OPEN_ENGINE(db, tkdb, client); }

  // The rows of `table` that satisfy `where`.
  int64_t Rows(const std::string& table, const std::string& where = "1=1") const {
    return Scalar(client, "SELECT count(*) FROM " + table + " WHERE " + where).ToLong();
  }
  // A new record bound to the suite's client.
  template <typename R>
  std::unique_ptr<R> Connected() const {
    auto r = std::make_unique<R>();
    r->ConnectStorage(client);
    return r;
  }

  // A record of class R read by its id under the suite's client.
  template <typename R>
  std::unique_ptr<R> Read(int32_t id) const {
    return ReadBack<R>(client, id);
  }

  const std::string client;
  EngineDb db{GetParam()};
  ZTkDb::CTkDb tkdb;
  CapturedBoxes boxes;
};

}  // namespace ztktest
