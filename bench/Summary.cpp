#include "Summary.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <map>

#include "CopyRate.h"
#include "Network.h"
#include "ztkdb/ZTkDb.h"

namespace bench {
namespace {

// ns per row by "Op/engine/size#side".
std::map<std::string, double>& Results() {
  static std::map<std::string, double> results;
  return results;
}

struct MemoryFigure {
  long before_kb = 0, peak_kb = 0, held_kb = 0;
  int32_t rows = 0;
};
std::map<std::string, MemoryFigure>& Memory() {
  static std::map<std::string, MemoryFigure> figures;
  return figures;
}

long StatusKb(const char* field) {
  std::ifstream in("/proc/self/status");
  std::string line;
  while (std::getline(in, line)) {
    if (line.rfind(field, 0) == 0) return std::stol(line.substr(line.find(':') + 1));
  }
  return 0;
}

// In a child process, so that nothing the benchmarks before it left behind
// counts: the connection is opened and used first, then the peak is reset
// and the list built.
MemoryFigure MeasureList(const std::string& target, bool odbc) {
  int fds[2];
  if (pipe(fds) != 0) return {};
  const pid_t pid = fork();
  if (pid == 0) {
    MemoryFigure m;
    {
      ZTkDb::CTkDb tkdb;
      if (odbc)
        tkdb.OpenOdbcDb("memory", target, false, false);
      else
        tkdb.OpenJetDb("memory", target, false, false);
      {
        ZTkDb::CAuftrag warm;
        warm.ConnectStorage("memory");
        warm.ReadById(1);
      }
      malloc_trim(0);
      std::ofstream("/proc/self/clear_refs") << "5";
      m.before_kb = StatusKb("VmRSS");
      // Large blocks are mapped apart from the heap: both count.
      const auto inUseNow = [] { return mallinfo2().uordblks + mallinfo2().hblkhd; };
      const size_t inUse = inUseNow();
      ZTkDb::CAuftragListe list;
      list.ConnectStorage("memory");
      list.ReadAll();
      m.peak_kb = StatusKb("VmHWM");
      // What the list holds is what is still in use; a driver's freed copy
      // stays in the process's heap but is not held.
      m.held_kb = static_cast<long>((inUseNow() - inUse) / 1024);
      m.rows = list.Count();
    }
    (void)!write(fds[1], &m, sizeof m);
    _exit(0);
  }
  close(fds[1]);
  MemoryFigure m;
  if (read(fds[0], &m, sizeof m) != static_cast<ssize_t>(sizeof m)) m = {};
  close(fds[0]);
  waitpid(pid, nullptr, 0);
  return m;
}

void MemoryBenchmark(benchmark::State& state, const std::string& engine, const std::string& target,
                     bool odbc) {
  for (auto _ : state) Memory()[engine] = MeasureList(target, odbc);
}

}  // namespace

void Collector::ReportRuns(const std::vector<Run>& runs) {
  for (const auto& run : runs) {
    if (run.error_occurred) continue;
    const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
    if (run.run_type != Run::RT_Iteration && !median) continue;
    std::string name = run.run_name.str();
    // "Walk/sqlite/10000/min_time:2.000/real_time" is Walk/sqlite/10000.
    for (const char* tail : {"/min_time", "/real_time"}) {
      const size_t suffix = name.find(tail);
      if (suffix != std::string::npos) name.erase(suffix);
    }
    auto it = run.counters.find("rows");
    const double rows = it == run.counters.end() || it->second.value <= 0 ? 1 : it->second.value;
    Results()[name] = run.GetAdjustedRealTime() / rows;
    for (const auto& [counter, value] : run.counters) {
      const size_t at = counter.rfind("_ns_row");
      if (at != std::string::npos) Results()[name + "#" + counter.substr(0, at)] = value.value;
    }
  }
  ConsoleReporter::ReportRuns(runs);
}

void RegisterMemory(const std::string& sqlite, const std::string& postgres) {
  benchmark::RegisterBenchmark("Memory/sqlite/100000", MemoryBenchmark, "sqlite", sqlite, false)
      ->Iterations(1);
  if (!postgres.empty()) {
    benchmark::RegisterBenchmark("Memory/postgres/100000", MemoryBenchmark, "postgres", postgres,
                                 true)
        ->Iterations(1);
  }
}

bool Summary(const std::vector<int32_t>& sizes) {
  struct Line {
    const char* op;
    const char* engine;
    const char* peer;
    double target;  // ZTkDb against raw prepared
  };
  // Within 1.05 of the engine's limit everywhere, and on PostgreSQL's walk
  // ahead of it: blocks of rows against the raw path's cell-by-cell reads.
  const Line lines[] = {
      {"Walk", "sqlite", "sqlitecpp", 1.05},     {"Create", "sqlite", "sqlitecpp", 1.05},
      {"ReadById", "sqlite", "sqlitecpp", 1.05}, {"Update", "sqlite", "sqlitecpp", 1.05},
      {"Walk", "postgres", "soci", 0.9},         {"Create", "postgres", "soci", 1.05},
      {"ReadById", "postgres", "soci", 1.05},
  };
  bool allMet = true;
  std::printf("\n%-9s %-9s %7s %10s %10s %10s %10s %8s %7s %9s\n", "operation", "engine", "rows",
              "ZTkDb ns", "raw prep.", "peer", "literal", "vs raw", "target", "vs peer");
  for (int32_t n : sizes) {
    for (const Line& l : lines) {
      const std::string key = std::string(l.op) + "/" + l.engine + "/" + std::to_string(n);
      const auto get = [&](const std::string& side) {
        auto it = Results().find(key + "#" + side);
        return it == Results().end() ? 0.0 : it->second;
      };
      const double ztk = get("ztk"), raw = get("raw"), peer = get(l.peer), literal = get("literal");
      if (ztk <= 0 || raw <= 0) continue;
      const double ratio = ztk / raw;
      const double vsPeer = peer > 0 ? ztk / peer : 0;
      const bool met = ratio <= l.target && (peer <= 0 || vsPeer < 1.0);
      allMet &= met;
      std::printf("%-9s %-9s %7d %10.0f %10.0f %10.0f %10.0f %8.2f %6.2fx %6.2f %-9s %s\n", l.op,
                  l.engine, n, ztk, raw, peer, literal, ratio, l.target, vsPeer, l.peer,
                  met ? "" : "MISSED");
    }
  }
  for (const auto& [engine, m] : Memory()) {
    if (m.rows == 0) continue;
    const long held = std::max(1L, m.held_kb);
    const long peak = m.peak_kb - m.before_kb;
    const double ratio = static_cast<double>(peak) / static_cast<double>(held);
    allMet &= ratio <= 2.0;
    std::printf(
        "list of %d orders on %s: %ld kB held, %ld kB at the peak while built: %.2fx "
        "(target 2x) %s\n",
        m.rows, engine.c_str(), held, peak, ratio, ratio <= 2.0 ? "" : "MISSED");
  }
  for (const bool server : {false, true}) {
    const CopyFigure& c = CopyRate(server);
    if (c.rows == 0) continue;
    const double target = server ? 20000 : 100000;
    allMet &= c.rows_per_second >= target;
    std::printf("ztk copy of %lld rows into %s: %.0f rows/s (target %.0f) %s\n",
                static_cast<long long>(c.rows), server ? "PostgreSQL" : "a SQLite file",
                c.rows_per_second, target, c.rows_per_second >= target ? "" : "MISSED");
  }
  allMet &= NetworkSummary(Results());
  std::printf("\n%s\n", allMet ? "every target met" : "some targets missed");
  return allMet;
}

}  // namespace bench
