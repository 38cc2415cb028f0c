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

// The cluster this process uses; started here only when ctest did not.
class PgCluster {
 public:
  static PgCluster& Instance() {
    static PgCluster cluster;
    return cluster;
  }
  const std::string& Dir() const { return dir_; }

 private:
  PgCluster() {
    if (const char* shared = std::getenv("ZTKDB_PG_DIR");
        shared &&
        std::filesystem::exists(std::string(shared) + "/.s.PGSQL." + std::to_string(kPort))) {
      dir_ = shared;
      return;
    }
    std::string pattern = (std::filesystem::temp_directory_path() / "ztkdb-pg-XXXXXX").string();
    if (!mkdtemp(pattern.data())) return;
    const std::string command = "bash '" ZTKDB_SOURCE_DIR "/tests/pg_cluster' start '" + pattern +
                                "' " + std::to_string(kPort) + " >/dev/null";
    if (std::system(command.c_str()) == 0) {
      dir_ = pattern;
      owned_ = true;
    } else {
      std::filesystem::remove_all(pattern);
    }
  }
  ~PgCluster() {
    if (!owned_) return;
    const std::string command =
        "bash '" ZTKDB_SOURCE_DIR "/tests/pg_cluster' stop '" + dir_ + "' >/dev/null 2>&1";
    [[maybe_unused]] const int rc = std::system(command.c_str());
  }

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

std::string EngineName(const ::testing::TestParamInfo<Engine>& info) {
  switch (info.param) {
    case Engine::kSqliteFile:
      return "SqliteFile";
    case Engine::kSqliteOdbc:
      return "SqliteOdbc";
    case Engine::kPostgres:
      return "Postgres";
  }
  return "Unknown";
}

std::string PostgresConnectString(const std::string& database) {
  const std::string& dir = PgCluster::Instance().Dir();
  if (dir.empty()) return {};
  return "Driver={PostgreSQL Unicode};Servername=" + dir + ";Port=" + std::to_string(kPort) +
         ";Database=" + database + ";Username=postgres;";
}

EngineDb::EngineDb(Engine engine)
    : engine_(engine), file_(/*withSchema=*/engine != Engine::kPostgres) {}

EngineDb::~EngineDb() {
  if (pg_database_.empty()) return;
  try {
    auto admin = ZTkDb::detail::OdbcDatabase::Open(PostgresConnectString("postgres"), false);
    admin->ExecuteRaw("DROP DATABASE IF EXISTS " + pg_database_ + " WITH (FORCE)");
  } catch (const ZTkDb::Error&) {
    // The cluster goes away with the run; a leftover database costs nothing.
  }
}

std::string EngineDb::Open(ZTkDb::CTkDb& tkdb, const std::string& client) {
  static std::atomic<int> counter{0};
  switch (engine_) {
    case Engine::kSqliteFile:
      tkdb.OpenJetDb(client, file_.Path(), false, false);
      return {};
    case Engine::kSqliteOdbc:
      if (!SqliteOdbcAvailable()) return "the SQLite3 ODBC driver is not installed";
      connect_ = "Driver=SQLite3;Database=" + file_.Path() + ";Timeout=5000;";
      break;
    case Engine::kPostgres: {
      if (PostgresConnectString("postgres").empty()) return "no PostgreSQL cluster can run here";
      pg_database_ = "ztk_" + std::to_string(getpid()) + "_" + std::to_string(++counter);
      try {
        auto admin = ZTkDb::detail::OdbcDatabase::Open(PostgresConnectString("postgres"), false);
        admin->ExecuteRaw("CREATE DATABASE " + pg_database_ + " TEMPLATE ztk_template");
      } catch (const ZTkDb::Error& e) {
        pg_database_.clear();
        return "cannot create a PostgreSQL test database: " + e.Description();
      }
      connect_ = PostgresConnectString(pg_database_);
      break;
    }
  }
  CapturedBoxes boxes;
  tkdb.OpenOdbcDb(client, connect_, false, false);
  if (!boxes.boxes.empty()) return boxes.boxes.front().text;
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
