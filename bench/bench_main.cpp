// ZTkDb against the raw engines and the libraries a host programmer would
// pick instead, in one run: each operation runs through the library and
// through every contender in the same iterations, on the statements the
// library sends (see Contenders.h), and the summary prints the ratios.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "BenchData.h"
#include "Capture.h"
#include "Contenders.h"
#include "Contest.h"
#include "CopyRate.h"
#include "Network.h"
#include "Summary.h"
#include "ztkdb/ZTkDb.h"

namespace {

using namespace ZTkDb;
using bench::Contender;
using bench::Side;
using bench::Values;

const std::vector<int32_t> kSizes = {10000, 100000};
constexpr double kWalkTime = 2.0;  // seconds a repetition of a walk runs at least

// Every property of an order, folded into a number the optimiser must keep.
int64_t TouchOrder(const CAuftrag& o) {
  int64_t sum = o.Id() + o.Nr() + o.AnsprechId() + o.GebTyp() + o.GebId() + o.AuftragNehmerId() +
                o.ObjId() + o.ObjTyp() + o.Erledigt() + o.Auftragstyp() + o.ObjAufgabeId() +
                o.ObjHistorieId() + o.MeldungId() + o.Herkunft() + o.AufGebFaId() + o.Gesperrt() +
                o.SoId() + o.Kosten().Scaled();
  sum += static_cast<int64_t>(o.AuftragsDatum().Value() + o.ErledBisDatum().Value() +
                              o.WiederDatum().Value() + o.ErledigtDatum().Value());
  for (const std::string* s :
       {&o.UId(), &o.AuftragsZeit(), &o.Auftrag(), &o.ErledBisZeit(), &o.WiederZeit(),
        &o.ErledigtZeit(), &o.NrVorsatz(), &o.Bearbeiter(), &o.TelBearbeiter(), &o.AuftragGeber(),
        &o.AufGebKst(), &o.Ort(), &o.Objekt(), &o.Kostenstelle(), &o.RechnEmpf(), &o.Bemerkung(),
        &o.AuftragstypText(), &o.Leistungsart(), &o.Verantwortlicher()}) {
    sum += static_cast<int64_t>(s->size());
  }
  return sum;
}

std::string NextUId() {
  static uint64_t n = 0;
  char buf[40];
  std::snprintf(buf, sizeof buf, "%013llX-BENCHRAW-%08X", static_cast<unsigned long long>(++n),
                static_cast<unsigned>(getpid()));
  return buf;
}
// A different amount on every call, as bookings and orders have: never a
// whole number, so that every call's statement holds a decimal.
Currency Amount(int run) { return Currency::FromScaled(1250000 + 100 * (run % 9000) + 50); }
void SetAmount(Values& values, size_t at, int run) {
  values[at].number = static_cast<double>(Amount(run).Scaled()) / 10000.0;
  values[at].text = Amount(run).Text();
}

void CreateOrder(CAuftrag& o, int run) {
  const Date d = Date::Today();
  o.CreateNew7(1, 17, d, "08:15", 100, sotRoom, "Heizung im Raum 2.14 bleibt kalt", d, "", NoDate,
               "", false, NoDate, "", 0, 0, 2, 31, 1, 12, 1, hetTikora, "A", "Meier", "0711 4711",
               "Hausverwaltung", 5, "K100", "Stuttgart", "Bürogebäude Nord", "KST-7", "Zentrale",
               false, "", "Reparatur", Amount(run), "Wartung", "Schulz");
}

// A client opened on the SQLite file or the ODBC connection string.
void Open(CTkDb& tkdb, const std::string& target, bool odbc) {
  if (odbc)
    tkdb.OpenOdbcDb("bench", target, false, false);
  else
    tkdb.OpenJetDb("bench", target, false, false);
}

// The contenders of one engine, each on a target of its own where they
// write (so that every table grows alike), else on the same one.
struct Field {
  std::vector<std::pair<std::string, std::unique_ptr<Contender>>> contenders;
};

Field SqliteField(const std::string& path, bool write, const std::string& tag) {
  const auto target = [&](const char* who) {
    return write ? bench::WritableCopy(path, std::string(who) + "-" + tag + ".db") : path;
  };
  Field f;
  f.contenders.emplace_back("raw", bench::RawSqlite(target("raw"), write, false));
  f.contenders.emplace_back("sqlitecpp", bench::SqliteCpp(target("sqlitecpp"), write));
  f.contenders.emplace_back("literal", bench::RawSqlite(target("literal"), write, true));
  return f;
}

Field ServerField(const std::string& connect) {
  Field f;
  f.contenders.emplace_back("raw", bench::RawOdbc(connect, false));
  f.contenders.emplace_back("soci", bench::Soci(connect, false));
  f.contenders.emplace_back("soci-libpq", bench::Soci(connect, true));
  f.contenders.emplace_back("literal", bench::RawOdbc(connect, true));
  return f;
}

size_t IndexOfText(const Values& values, const std::string& text) {
  for (size_t i = 0; i < values.size(); ++i) {
    if (values[i].text == text) return i;
  }
  std::fprintf(stderr, "bench: '%s' not among the statement's values\n", text.c_str());
  std::abort();
}

size_t IndexOfDouble(const Values& values) {
  for (size_t i = 0; i < values.size(); ++i) {
    if (values[i].kind == ZTkDb::detail::LiftedValue::kDouble) return i;
  }
  std::fprintf(stderr, "bench: no amount among the statement's values\n");
  std::abort();
}

size_t IndexOfInteger(const Values& values, int64_t n) {
  for (size_t i = 0; i < values.size(); ++i) {
    if (values[i].kind == ZTkDb::detail::LiftedValue::kInteger && values[i].integer == n) return i;
  }
  std::fprintf(stderr, "bench: %lld not among the statement's values\n", static_cast<long long>(n));
  std::abort();
}

// ----- list walk ---------------------------------------------------------

void ReadOpenOrders(CAuftragListe& list) { list.ReadByDone(false, osByOrderDate, 30); }

void Walk(benchmark::State& state, const std::string& target, bool odbc) {
  std::string sent;
  {
    bench::CaptureClient capture("capture", target, odbc);
    CAuftragListe list;
    list.ConnectStorage("capture");
    ReadOpenOrders(list);
    sent = capture.engine->texts.back();
  }
  const auto walk = bench::Shape(sent, odbc);
  Field field = odbc ? ServerField(target) : SqliteField(target, false, "");
  CTkDb tkdb;
  Open(tkdb, target, odbc);
  std::vector<Side> sides = {{"ztk", [] {
                                CAuftragListe list;
                                list.ConnectStorage("bench");
                                ReadOpenOrders(list);
                                int64_t rows = 0;
                                for (auto o = list.MoveFirst(); o; o = list.MoveNext()) {
                                  benchmark::DoNotOptimize(TouchOrder(*o));
                                  ++rows;
                                }
                                return rows;
                              }}};
  for (auto& [name, c] : field.contenders) {
    const size_t id = c->Add(walk.shape, walk.values);
    sides.push_back({name, [&c = *c, id, &walk] { return c.Run(id, walk.values); }});
  }
  bench::Contest(state, std::move(sides));
}

// ----- create (insert + reread by UId) -----------------------------------

void Create(benchmark::State& state, const std::string& target, bool odbc) {
  std::string uid;
  std::vector<std::string> sent;
  // The texts are taken on a copy of their own: every side starts on a file
  // in the same state, so that their logs fill, and their checkpoints (a
  // pair of syncs each) fall, at the same iterations.
  {
    const std::string scratch = odbc ? target : bench::WritableCopy(target, "capture-create.db");
    bench::CaptureClient capture("capture", scratch, odbc);
    CAuftrag o;
    o.ConnectStorage("capture");
    CreateOrder(o, 0);
    uid = o.UId();
    const auto& t = capture.engine->texts;
    sent = {t[t.size() - 2], t.back()};
  }
  const auto insert = bench::Shape(sent[0], odbc);
  const auto reread = bench::Shape(sent[1], odbc);
  const size_t insertUid = IndexOfText(insert.values, uid);
  const size_t rereadUid = IndexOfText(reread.values, uid);
  const size_t insertAmount = IndexOfDouble(insert.values);
  Field field = odbc ? ServerField(target) : SqliteField(target, true, "create");
  CTkDb tkdb;
  Open(tkdb, odbc ? target : bench::WritableCopy(target, "ztk-create.db"), odbc);
  CAuftrag o;
  o.ConnectStorage("bench");
  std::vector<Side> sides = {{"ztk", [&o, run = 0]() mutable {
                                CreateOrder(o, ++run);
                                benchmark::DoNotOptimize(TouchOrder(o));
                                return int64_t{1};
                              }}};
  for (auto& [name, c] : field.contenders) {
    const size_t ins = c->Add(insert.shape, insert.values);
    const size_t re = c->Add(reread.shape, reread.values);
    sides.push_back({name, [&c = *c, ins, re, a = insert.values, b = reread.values, insertUid,
                            rereadUid, insertAmount, run = 0]() mutable {
                       const std::string fresh = NextUId();
                       a[insertUid].text = fresh;
                       SetAmount(a, insertAmount, ++run);
                       b[rereadUid].text = fresh;
                       c.Run(ins, a);
                       return c.Run(re, b);
                     }});
  }
  bench::Contest(state, std::move(sides));
}

// ----- read by id --------------------------------------------------------

void ReadById(benchmark::State& state, const std::string& target, bool odbc, int32_t n) {
  std::string sent;
  {
    bench::CaptureClient capture("capture", target, odbc);
    CAuftrag o;
    o.ConnectStorage("capture");
    o.ReadById(424242);
    sent = capture.engine->texts.back();
  }
  const auto byId = bench::Shape(sent, odbc);
  const size_t idAt = IndexOfInteger(byId.values, 424242);
  Field field = odbc ? ServerField(target) : SqliteField(target, false, "");
  CTkDb tkdb;
  Open(tkdb, target, odbc);
  CAuftrag o;
  o.ConnectStorage("bench");
  // Every side draws the same sequence of rows.
  const auto draw = [n](std::mt19937& rng) {
    return 1 + static_cast<int32_t>(rng() % static_cast<unsigned>(n));
  };
  std::vector<Side> sides = {{"ztk", [&o, draw, rng = std::mt19937(7)]() mutable {
                                o.ReadById(draw(rng));
                                benchmark::DoNotOptimize(TouchOrder(o));
                                return int64_t{1};
                              }}};
  for (auto& [name, c] : field.contenders) {
    const size_t id = c->Add(byId.shape, byId.values);
    sides.push_back(
        {name, [&c = *c, id, v = byId.values, idAt, draw, rng = std::mt19937(7)]() mutable {
           v[idAt].integer = draw(rng);
           return c.Run(id, v);
         }});
  }
  bench::Contest(state, std::move(sides));
}

// ----- update ------------------------------------------------------------

// Each side updates order 1 of its own copy, each update guarded by the
// UId the one before wrote.
void Update(benchmark::State& state, const std::string& path) {
  const std::string scratch = bench::WritableCopy(path, "capture-update.db");
  std::string sent, oldUid, capturedNew;
  {
    bench::CaptureClient capture("capture", scratch, false);
    CAuftrag o;
    o.ConnectStorage("capture");
    o.ReadById(1);
    oldUid = o.UId();
    o.Bemerkung("@BEMERKUNG@");
    o.Kosten(Amount(0));
    o.Update();
    capturedNew = o.UId();
    sent = capture.engine->texts.back();
  }
  const auto update = bench::Shape(sent, false);
  const size_t newAt = IndexOfText(update.values, capturedNew);
  const size_t guardAt = IndexOfText(update.values, oldUid);
  const size_t noteAt = IndexOfText(update.values, "@BEMERKUNG@");
  const size_t amountAt = IndexOfDouble(update.values);
  Field field = SqliteField(path, true, "update");
  CTkDb tkdb;
  Open(tkdb, bench::WritableCopy(path, "ztk-update.db"), false);
  CAuftrag o;
  o.ConnectStorage("bench");
  o.ReadById(1);
  std::vector<Side> sides = {{"ztk", [&o, run = 0]() mutable {
                                o.Bemerkung("Durchlauf " + std::to_string(++run));
                                o.Kosten(Amount(run));
                                o.Update();
                                return int64_t{1};
                              }}};
  for (auto& [name, c] : field.contenders) {
    const size_t id = c->Add(update.shape, update.values);
    sides.push_back({name, [&c = *c, id, v = update.values, newAt, guardAt, noteAt, amountAt,
                            oldUid, run = 0]() mutable {
                       const std::string fresh = NextUId();
                       if (run == 0) v[guardAt].text = oldUid;
                       v[newAt].text = fresh;
                       v[noteAt].text = "Durchlauf " + std::to_string(++run);
                       SetAmount(v, amountAt, run);
                       const int64_t changed = c.Run(id, v);
                       if (changed != 1) std::abort();
                       v[guardAt].text = fresh;
                       return changed;
                     }});
  }
  bench::Contest(state, std::move(sides));
}

// ----- ItemByRecId -------------------------------------------------------

// Lookups of 1000 ids drawn from the result: the same working set at every
// size, so the figure shows the cost of the lookup itself.
void ItemByRecId(benchmark::State& state, const std::string& path) {
  CTkDb tkdb;
  tkdb.OpenJetDb("bench", path, false, false);
  CAuftragListe list;
  list.ConnectStorage("bench");
  list.ReadAll();
  std::vector<int32_t> ids;
  for (auto rs = list.RsClone(); !rs->Eof(); rs->MoveNext())
    ids.push_back(rs->Fields("lId").ToLong());
  std::mt19937 rng(3);
  std::shuffle(ids.begin(), ids.end(), rng);
  ids.resize(std::min<size_t>(ids.size(), 1000));
  size_t next = 0;
  for (auto _ : state) {
    auto item = list.ItemByRecId(ids[next]);
    benchmark::DoNotOptimize(item->Id());
    if (++next == ids.size()) next = 0;
  }
  state.counters["rows"] = 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string dir =
      std::getenv("ZTKDB_BENCH_DIR") ? std::getenv("ZTKDB_BENCH_DIR") : "bench-data";
  const char* pgAdmin =
      std::getenv("ZTKDB_BENCH_PG");  // "Driver=…;Servername=…;Port=…;Username=…;"
  ZTkDb::SetMessageSink([](const ZTkDb::MessageBoxCall& box) {
    std::fprintf(stderr, "box: %s\n", box.text.c_str());
  });
  std::map<int32_t, std::string> sqlite, postgres;
  for (int32_t n : kSizes) {
    std::fprintf(stderr, "data set of %d orders …\n", n);
    sqlite[n] = bench::SqliteDataSet(dir, n);
    if (pgAdmin) {
      const std::string c = bench::PostgresDataSet(pgAdmin, "bench_" + std::to_string(n), n);
      if (!c.empty()) postgres[n] = c;
    }
  }
  for (int32_t n : kSizes) {
    const std::string s = std::to_string(n);
    const std::string& path = sqlite[n];
    // A walk takes tens of milliseconds a side: at the default time a
    // repetition would hold a handful of them, and its median one noisy run.
    benchmark::RegisterBenchmark(("Walk/sqlite/" + s).c_str(), Walk, path, false)
        ->UseRealTime()
        ->MinTime(kWalkTime);
    benchmark::RegisterBenchmark(("Create/sqlite/" + s).c_str(), Create, path, false)
        ->UseRealTime();
    benchmark::RegisterBenchmark(("ReadById/sqlite/" + s).c_str(), ReadById, path, false, n)
        ->UseRealTime();
    benchmark::RegisterBenchmark(("Update/sqlite/" + s).c_str(), Update, path)->UseRealTime();
    benchmark::RegisterBenchmark(("ItemByRecId/" + s).c_str(), ItemByRecId, path)->UseRealTime();
    if (postgres.count(n)) {
      const std::string& pg = postgres[n];
      benchmark::RegisterBenchmark(("Walk/postgres/" + s).c_str(), Walk, pg, true)
          ->UseRealTime()
          ->MinTime(kWalkTime);
      benchmark::RegisterBenchmark(("Create/postgres/" + s).c_str(), Create, pg, true)
          ->UseRealTime();
      benchmark::RegisterBenchmark(("ReadById/postgres/" + s).c_str(), ReadById, pg, true, n)
          ->UseRealTime();
    }
  }
  bench::RegisterMemory(sqlite[100000], postgres.count(100000) ? postgres[100000] : "");
  bench::RegisterCopyRates(sqlite[100000], dir, pgAdmin);
  if (pgAdmin) bench::RegisterNetwork(pgAdmin);
  if (postgres.count(10000)) bench::RegisterClients(postgres[10000], 10000);
  benchmark::Initialize(&argc, argv);
  bench::Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);
  const bool met = bench::Summary(kSizes);
  benchmark::Shutdown();
  return met ? 0 : 0;  // a report, not a test: missed targets are printed
}
