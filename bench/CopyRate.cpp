// ztk copy's rate, rows written per second, into a new SQLite file and into
// an empty PostgreSQL database: the tool run as a user runs it.
#include "CopyRate.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "engine/odbc/OdbcDatabase.h"
#include "ztkdb/Error.h"

namespace bench {
namespace {

CopyFigure& Figure(bool server) {
  static CopyFigure sqlite, postgres;
  return server ? postgres : sqlite;
}

int64_t RowsOf(const std::string& path) {
  int64_t rows = 0;
  for (const char* table : {"T_Meldung", "T_Auftrag", "T_AuftragMeldung", "T_Leistung",
                            "T_AMaterial", "T_MsgOrderDokument"}) {
    const std::string command =
        "sqlite3 '" + path + "' 'SELECT COUNT(*) FROM " + std::string(table) + "'";
    FILE* p = popen(command.c_str(), "r");
    char line[64] = {};
    if (p && fgets(line, sizeof line, p)) rows += std::atoll(line);
    if (p) pclose(p);
  }
  return rows;
}

// A new, empty database for each run: the copy creates the module's tables.
bool FreshPostgres(const std::string& admin) {
  try {
    auto db = ZTkDb::detail::OdbcDatabase::Open(admin + "Database=postgres;", false);
    db->ExecuteRaw("DROP DATABASE IF EXISTS bench_copy");
    db->ExecuteRaw("CREATE DATABASE bench_copy");
    return true;
  } catch (const ZTkDb::Error&) {
    return false;
  }
}

void Run(benchmark::State& state, const std::string& source, const std::string& target,
         bool server) {
  for (auto _ : state) {
    const std::string to =
        server ? "--to-odbc '" + target + "Database=bench_copy;'" : "--to-db '" + target + "'";
    if (!server) std::filesystem::remove(target);
    if (server && !FreshPostgres(target)) {
      state.SkipWithError("no PostgreSQL database for the copy");
      return;
    }
    const std::string command = std::string("'") + ZTKDB_ZTK_PATH + "' copy --from-db '" + source +
                                "' " + to + " --init >/dev/null";
    const auto start = std::chrono::steady_clock::now();
    const int status = std::system(command.c_str());
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (status != 0) {
      state.SkipWithError("ztk copy failed");
      return;
    }
    CopyFigure& f = Figure(server);
    f.rows = RowsOf(source);
    f.runs.push_back(static_cast<double>(f.rows) / seconds);
    std::vector<double> sorted = f.runs;
    std::sort(sorted.begin(), sorted.end());
    f.rows_per_second = sorted[sorted.size() / 2];
  }
}

}  // namespace

const CopyFigure& CopyRate(bool server) { return Figure(server); }

void RegisterCopyRates(const std::string& source, const std::string& dir, const char* pgAdmin) {
  benchmark::RegisterBenchmark("Copy/sqlite/100000", Run, source, dir + "/copy-target.db", false)
      ->Iterations(1);
  if (!pgAdmin) return;
  benchmark::RegisterBenchmark("Copy/postgres/100000", Run, source, std::string(pgAdmin), true)
      ->Iterations(1);
}

}  // namespace bench
