// Lists across a network: what round trips cost where each one takes 1.3 ms.
#include "Network.h"

#include <libpq-fe.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <regex>
#include <thread>

#include "BenchData.h"
#include "Contenders.h"
#include "Contest.h"
#include "CountingProxy.h"
#include "ztkdb/CAuftrag.h"
#include "ztkdb/CAuftragListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"
#include "ztkdb/Trace.h"

namespace bench {
namespace {

constexpr auto kOneWay = std::chrono::microseconds(650);

struct Figures {
  int64_t ztk_trips = 0;
  int64_t floor_trips = 0;
  int64_t odbc_trips = 0;
};
std::map<int32_t, Figures>& Net() {
  static std::map<int32_t, Figures> figures;
  return figures;
}

// A proxy in front of the bench cluster's socket, on the same port number.
struct Route {
  std::unique_ptr<ztktest::CountingProxy> proxy;
  std::string odbc;   // the library's connection string through it
  std::string libpq;  // libpq's
};

Route Through(const std::string& connect) {
  std::smatch m;
  if (!std::regex_search(connect, m,
                         std::regex("Servername=([^;]*);Port=([0-9]+);.*Database=([^;]*)"))) {
    return {};
  }
  const std::string dir = (std::filesystem::temp_directory_path() /
                           ("ztk-net-" + std::to_string(::getpid()) + "-" + m[3].str()))
                              .string();
  std::filesystem::create_directories(dir);
  const std::string socket = "/.s.PGSQL." + m[2].str();
  Route r;
  r.proxy = std::make_unique<ztktest::CountingProxy>(dir + socket, m[1].str() + socket, kOneWay);
  r.odbc = std::regex_replace(connect, std::regex("Servername=[^;]*"), "Servername=" + dir);
  r.libpq = "host=" + dir + " port=" + m[2].str() + " dbname=" + m[3].str() + " user=postgres";
  return r;
}

void NetList(benchmark::State& state, const std::string& connect, int32_t orders) {
  Route route = Through(connect);
  std::string text;
  ZTkDb::SetStatementTrace([&text](const ZTkDb::StatementTrace& t) { text = t.text; });
  ZTkDb::CTkDb tkdb;
  tkdb.OpenOdbcDb("net", route.odbc, false, false);
  {
    ZTkDb::CAuftragListe list;
    list.ConnectStorage("net");
    list.ReadAll();
  }
  ZTkDb::SetStatementTrace(nullptr);
  PGconn* pq = PQconnectdb(route.libpq.c_str());
  PGresult* prepared = PQprepare(pq, "list", text.c_str(), 0, nullptr);
  if (PQresultStatus(prepared) != PGRES_COMMAND_OK) {
    state.SkipWithError(PQerrorMessage(pq));
  }
  PQclear(prepared);
  // What the driver alone costs: the same statement prepared once through
  // ODBC by hand, every cell read into a value, as the library's list does.
  auto odbc = RawOdbc(route.odbc, false);
  const auto shape = Shape(text, true);
  const size_t odbcList = odbc->Add(shape.shape, shape.values);
  int64_t ztkTrips = 0, floorTrips = 0, odbcTrips = 0, runs = 0;
  std::vector<Side> sides = {{"ztk",
                              [&] {
                                route.proxy->Reset();
                                ZTkDb::CAuftragListe list;
                                list.ConnectStorage("net");
                                list.ReadAll();
                                int64_t rows = 0;
                                for (auto o = list.MoveFirst(); o; o = list.MoveNext()) {
                                  benchmark::DoNotOptimize(o->Nr());
                                  ++rows;
                                }
                                ztkTrips += route.proxy->RoundTrips();
                                ++runs;
                                return rows;
                              }},
                             {"libpq",
                              [&] {
                                route.proxy->Reset();
                                PGresult* r =
                                    PQexecPrepared(pq, "list", 0, nullptr, nullptr, nullptr, 0);
                                const int rows = PQntuples(r);
                                const int columns = PQnfields(r);
                                size_t bytes = 0;
                                for (int i = 0; i < rows; ++i) {
                                  for (int c = 0; c < columns; ++c) bytes += PQgetlength(r, i, c);
                                }
                                benchmark::DoNotOptimize(bytes);
                                PQclear(r);
                                floorTrips += route.proxy->RoundTrips();
                                return int64_t{rows};
                              }},
                             {"odbc", [&] {
                                route.proxy->Reset();
                                const int64_t rows = odbc->Run(odbcList, shape.values);
                                odbcTrips += route.proxy->RoundTrips();
                                return rows;
                              }}};
  Contest(state, std::move(sides));
  PQfinish(pq);
  Figures& f = Net()[orders];
  f.ztk_trips = runs ? ztkTrips / runs : 0;
  f.floor_trips = runs ? floorTrips / runs : 0;
  f.odbc_trips = runs ? odbcTrips / runs : 0;
}

// Operations per second of the clients' mix, directly and pooled.
std::map<std::string, double>& Throughput() {
  static std::map<std::string, double> figures;
  return figures;
}

void Clients(benchmark::State& state, const std::string& connect, int32_t orders, const char* how) {
  constexpr int kClients = 32;
  constexpr auto kRun = std::chrono::seconds(5);
  for (auto _ : state) {
    std::atomic<int64_t> operations{0}, failures{0};
    std::atomic<bool> stop{false};
    std::vector<std::thread> clients;
    for (int c = 0; c < kClients; ++c) {
      clients.emplace_back([&, c] {
        const std::string name = std::string(how) + std::to_string(c);
        ZTkDb::CTkDb tkdb;
        tkdb.OpenOdbcDb(name, connect, false, false);
        std::mt19937 random(static_cast<unsigned>(c));
        ZTkDb::CAuftrag order;
        order.ConnectStorage(name);
        ZTkDb::CAuftragListe list;
        list.ConnectStorage(name);
        while (!stop) {
          const int pick = static_cast<int>(random() % 10);
          const int32_t id = 1 + static_cast<int32_t>(random() % static_cast<unsigned>(orders));
          try {
            if (pick < 6) {
              order.ReadById(id);
            } else if (pick < 8) {
              list.ReadByNr(id);
            } else if (pick < 9) {
              const ZTkDb::Date d = ZTkDb::Date::Today();
              order.CreateNew7(id, 17, d, "08:15", 100, ZTkDb::sotRoom, "Heizung kalt", d, "",
                               ZTkDb::NoDate, "", false, ZTkDb::NoDate, "", 0, 0, 2, 31, 1, 12, 1,
                               ZTkDb::hetTikora, "A", "Meier", "0711 4711", "Hausverwaltung", 5,
                               "K100", "Stuttgart", "Nord", "KST-7", "Zentrale", false, "",
                               "Reparatur", ZTkDb::Currency::FromScaled(1250050), "Wartung",
                               "Schulz");
            } else {
              order.ReadById(id);
              order.Bemerkung("gesehen");
              order.Update();
            }
            ++operations;
          } catch (const ZTkDb::Error&) {
            ++failures;
          }
        }
      });
    }
    std::this_thread::sleep_for(kRun);
    stop = true;
    for (auto& t : clients) t.join();
    const double perSecond =
        static_cast<double>(operations) / std::chrono::duration<double>(kRun).count();
    Throughput()[how] = perSecond;
    state.counters["ops_per_s"] = perSecond;
    state.counters["failures"] = static_cast<double>(failures);
  }
}

}  // namespace

void RegisterClients(const std::string& connect, int32_t orders) {
  std::smatch m;
  if (!std::regex_search(connect, m, std::regex("Port=([0-9]+)"))) return;
  const std::string pooled =
      m.prefix().str() + "Port=" + std::to_string(std::stoi(m[1].str()) + 1) + m.suffix().str();
  benchmark::RegisterBenchmark("Clients/postgres/direct", Clients, connect, orders, "direct")
      ->Iterations(1)
      ->UseRealTime();
  benchmark::RegisterBenchmark("Clients/postgres/pgbouncer", Clients, pooled, orders, "pooled")
      ->Iterations(1)
      ->UseRealTime();
}

void RegisterNetwork(const std::string& pgAdmin) {
  for (const int32_t n : {1000, 50000}) {
    const std::string connect = PostgresDataSet(pgAdmin, "net_" + std::to_string(n), n);
    if (connect.empty()) continue;
    benchmark::RegisterBenchmark(("Net/postgres/" + std::to_string(n)).c_str(), NetList, connect, n)
        ->UseRealTime()
        ->MinTime(1.0);
  }
}

bool NetworkSummary(const std::map<std::string, double>& results) {
  bool met = true;
  for (auto& [n, f] : Net()) {
    const std::string key = "Net/postgres/" + std::to_string(n);
    const auto get = [&](const char* side) {
      auto it = results.find(key + "#" + side);
      return it == results.end() ? 0.0 : it->second;
    };
    const double ztk = get("ztk"), floor = get("libpq"), odbc = get("odbc");
    if (ztk <= 0 || floor <= 0) continue;
    const double target = n <= 1000 ? 1.2 : 2.0;
    const double ratio = ztk / floor;
    met &= ratio <= target;
    std::printf(
        "list of %d orders at 1.3 ms round trips: ZTkDb %.2f ms (%lld round trips), libpq "
        "prepared %.2f ms (%lld): %.2fx (target %.1fx) %s\n",
        n, ztk * n / 1e6, static_cast<long long>(f.ztk_trips), floor * n / 1e6,
        static_cast<long long>(f.floor_trips), ratio, target, ratio <= target ? "" : "MISSED");
    // The driver's own share: where raw ODBC is already past the target,
    // no library above the driver can meet it.
    if (odbc > 0) {
      std::printf(
          "    the same list through raw prepared ODBC %.2f ms (%lld round trips): %.2fx of "
          "libpq; ZTkDb %.2fx of raw ODBC\n",
          odbc * n / 1e6, static_cast<long long>(f.odbc_trips), odbc / floor, ztk / odbc);
    }
  }
  const double direct = Throughput()["direct"], pooled = Throughput()["pooled"];
  if (direct > 0 && pooled > 0) {
    const double ratio = pooled / direct;
    met &= ratio >= 0.75;
    std::printf(
        "32 clients' mix: %.0f operations/s directly, %.0f through pgbouncer in "
        "transaction mode: %.2f (target 0.75) %s\n",
        direct, pooled, ratio, ratio >= 0.75 ? "" : "MISSED");
  }
  return met;
}

}  // namespace bench
