#include "Engines.h"

#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>

#include "engine/odbc/OdbcDatabase.h"
#include "ztkdb/Error.h"

namespace ztktest {
namespace {

constexpr int kPort = 54329;

#ifdef ZTKDB_TEST_ODBCSYSINI
// Before the first ODBC call: the driver list without the driver's log file
// (a host's own setting wins).
[[maybe_unused]] const bool odbc_ini_set = setenv("ODBCSYSINI", ZTKDB_TEST_ODBCSYSINI, 0) == 0;
#endif

// A throwaway server this process uses: the one ctest started (in the
// folder `sub` of ZTKDB_TEST_SERVERS), or one started here by `script` and
// stopped at the process's exit.
class TestServer {
 public:
  static TestServer& Postgres() {
    static TestServer server("pg_cluster", "pg", ".s.PGSQL." + std::to_string(kPort),
                             " " + std::to_string(kPort));
    return server;
  }
  static TestServer& MariaDb() {
    static TestServer server("mariadb_server", "mariadb", "mysqld.sock", "");
    return server;
  }
  const std::string& Dir() const { return dir_; }

 private:
  TestServer(const char* script, const char* sub, const std::string& socket,
             const std::string& extra)
      : script_(script) {
    if (const char* shared = std::getenv("ZTKDB_TEST_SERVERS");
        shared && std::filesystem::exists(std::string(shared) + "/" + sub + "/" + socket)) {
      dir_ = std::string(shared) + "/" + sub;
      return;
    }
    std::string pattern =
        (std::filesystem::temp_directory_path() / (std::string("ztkdb-") + script + "-XXXXXX"))
            .string();
    if (!mkdtemp(pattern.data())) return;
    const std::string command = "bash '" ZTKDB_SOURCE_DIR "/tests/" + script_ + "' start '" +
                                pattern + "'" + extra + " >/dev/null";
    if (std::system(command.c_str()) == 0) {
      dir_ = pattern;
      owned_ = true;
    } else {
      std::filesystem::remove_all(pattern);
    }
  }
  ~TestServer() {
    if (!owned_) return;
    const std::string command =
        "bash '" ZTKDB_SOURCE_DIR "/tests/" + script_ + "' stop '" + dir_ + "' >/dev/null 2>&1";
    [[maybe_unused]] const int rc = std::system(command.c_str());
  }

  std::string script_;
  std::string dir_;
  bool owned_ = false;
};

bool SqliteOdbcAvailable() {
  static const bool available = [] {
    TempDb probe;
    try {
      ZTkDb::detail::OdbcDatabase::Open("Driver=SQLite3;Database=" + probe.Path() + ";", false);
      return true;
    } catch (const ZTkDb::Error&) {
      return false;
    }
  }();
  return available;
}

}  // namespace

bool EnginesRequired() {
  const char* v = std::getenv("ZTKDB_REQUIRE_ENGINES");
  return v && std::string(v) == "1";
}

namespace {
constexpr const char* kLeftOut = "left out of this run by ZTKDB_SKIP_ENGINES";
}

bool MustRun(const std::string& why) {
  return EnginesRequired() && why.find(kLeftOut) == std::string::npos;
}

std::string EngineName(const ::testing::TestParamInfo<Engine>& info) {
  switch (info.param) {
    case Engine::kSqliteFile: return "SqliteFile";
    case Engine::kSqliteOdbc: return "SqliteOdbc";
    case Engine::kPostgres: return "Postgres";
    case Engine::kMariaDb: return "MariaDb";
    case Engine::kPgBouncer: return "PgBouncer";
  }
  return "Unknown";
}

std::string PostgresConnectString(const std::string& database) {
  const std::string& dir = TestServer::Postgres().Dir();
  if (dir.empty()) return {};
  return "Driver={PostgreSQL Unicode};Servername=" + dir + ";Port=" + std::to_string(kPort) +
         ";Database=" + database + ";Username=postgres;";
}

// The pooler pg_cluster starts beside the cluster, when it could.
std::string PgBouncerConnectString(const std::string& database) {
  const std::string& dir = TestServer::Postgres().Dir();
  if (dir.empty() || !std::filesystem::exists(dir + "/.s.PGSQL." + std::to_string(kPort + 1))) {
    return {};
  }
  return "Driver={PostgreSQL Unicode};Servername=" + dir + ";Port=" + std::to_string(kPort + 1) +
         ";Database=" + database + ";Username=postgres;";
}

std::string MariaDbConnectString(const std::string& database) {
  const std::string& dir = TestServer::MariaDb().Dir();
  if (dir.empty()) return {};
  return "Driver={MariaDB Unicode};Socket=" + dir + "/mysqld.sock;Database=" + database +
         ";User=root;";
}

EngineDb::EngineDb(Engine engine)
    : engine_(engine),
      file_(/*withSchema=*/engine == Engine::kSqliteFile || engine == Engine::kSqliteOdbc) {}

EngineDb::~EngineDb() {
  try {
    if (!pg_database_.empty()) {
      auto admin = ZTkDb::detail::OdbcDatabase::Open(PostgresConnectString("postgres"), false);
      admin->ExecuteRaw("DROP DATABASE IF EXISTS " + pg_database_ + " WITH (FORCE)");
    }
    if (!maria_database_.empty()) {
      auto admin = ZTkDb::detail::OdbcDatabase::Open(MariaDbConnectString("mysql"), false);
      admin->ExecuteRaw("DROP DATABASE IF EXISTS " + maria_database_);
    }
  } catch (const ZTkDb::Error&) {
    // The server goes away with the run; a leftover database costs nothing.
  }
}

std::string EngineDb::Open(ZTkDb::CTkDb& tkdb, const std::string& client,
                           const std::string& options) {
  if (engine_ == Engine::kSqliteFile) {
    tkdb.OpenJetDb(client, file_.Path(), false, false);
    return {};
  }
  if (std::string why = Create(options); !why.empty()) return why;
  CapturedBoxes boxes;
  tkdb.OpenOdbcDb(client, connect_, false, false);
  if (!boxes.boxes.empty()) return boxes.boxes.front().text;
  return {};
}

std::string EngineDb::Create(const std::string& options) {
  static std::atomic<int> counter{0};
  const char* skipped = std::getenv("ZTKDB_SKIP_ENGINES");
  const std::string name = EngineName({engine_, 0});
  if (skipped && (std::string(",") + skipped + ",").find("," + name + ",") != std::string::npos) {
    return name + " is " + kLeftOut;
  }
  switch (engine_) {
    case Engine::kSqliteFile: return {};
    case Engine::kSqliteOdbc:
      if (!SqliteOdbcAvailable()) return "the SQLite3 ODBC driver is not installed";
      connect_ = "Driver=SQLite3;Database=" + file_.Path() + ";Timeout=5000;";
      break;
    case Engine::kPostgres:
    case Engine::kPgBouncer: {
      if (PostgresConnectString("postgres").empty()) return "no PostgreSQL cluster can run here";
      if (engine_ == Engine::kPgBouncer && PgBouncerConnectString("postgres").empty()) {
        return "no pgbouncer runs in front of the PostgreSQL cluster (Debian's pgbouncer)";
      }
      pg_database_ = "ztk_" + std::to_string(getpid()) + "_" + std::to_string(++counter);
      try {
        auto admin = ZTkDb::detail::OdbcDatabase::Open(PostgresConnectString("postgres"), false);
        admin->ExecuteRaw("CREATE DATABASE " + pg_database_ + " TEMPLATE ztk_template");
        // Behind a pooler the lock wait is the database's setting, as a
        // site's administrator sets it (a session's own would not hold).
        if (engine_ == Engine::kPgBouncer) {
          admin->ExecuteRaw("ALTER DATABASE " + pg_database_ + " SET lock_timeout = '5s'");
        }
      } catch (const ZTkDb::Error& e) {
        pg_database_.clear();
        return "cannot create a PostgreSQL test database: " + e.Description();
      }
      connect_ = engine_ == Engine::kPgBouncer ? PgBouncerConnectString(pg_database_)
                                               : PostgresConnectString(pg_database_);
      break;
    }
    case Engine::kMariaDb: {
      if (MariaDbConnectString("mysql").empty()) return "no MariaDB server can run here";
      maria_database_ = "ztk_" + std::to_string(getpid()) + "_" + std::to_string(++counter);
      try {
        // No template databases here: the tables are copied one by one.
        auto admin = ZTkDb::detail::OdbcDatabase::Open(MariaDbConnectString("mysql"), false);
        admin->ExecuteRaw("CREATE DATABASE " + maria_database_);
        for (const char* table : {"T_Auftrag", "T_AuftragMeldung", "T_Meldung", "T_Leistung",
                                  "T_AMaterial", "T_MsgOrderDokument"}) {
          admin->ExecuteRaw("CREATE TABLE " + maria_database_ + "." + table +
                            " LIKE ztk_template." + table);
        }
      } catch (const ZTkDb::Error& e) {
        maria_database_.clear();
        return "cannot create a MariaDB test database: " + e.Description();
      }
      connect_ = MariaDbConnectString(maria_database_);
      break;
    }
  }
  connect_ += options;
  return {};
}

void EngineDb::OpenAgain(ZTkDb::CTkDb& tkdb, const std::string& client) {
  if (engine_ == Engine::kSqliteFile) {
    tkdb.OpenJetDb(client, file_.Path(), false, false);
  } else {
    tkdb.OpenOdbcDb(client, connect_, false, false);
  }
}

}  // namespace ztktest
