// ZTkDb against the raw engine, in one run: each operation is measured
// through the library and through the engine's own C API doing the same
// work with the same statement texts, and the summary prints their ratio.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sqlite3.h>
#include <sql.h>
#include <sqlext.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <algorithm>
#include <chrono>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "BenchData.h"
#include "connection/DbConnectionRegistry.h"
#include "connection/DbDialect.h"
#include "engine/RowSet.h"
#include "engine/odbc/OdbcDatabase.h"
#include "engine/odbc/Utf16.h"
#include "engine/sqlite/SqliteDatabase.h"
#include "ztkdb/ZTkDb.h"

namespace {

using namespace ZTkDb;

const std::vector<int32_t> kSizes = {1000, 10000, 100000};

struct Setup {
  std::string dir;
  std::map<int32_t, std::string> sqlite;
  std::map<int32_t, std::string> postgres;  // connection strings
};
Setup& Env() {
  static Setup setup;
  return setup;
}

// An engine that forwards to a real one and remembers the statements as
// they reach the server, so that the raw side runs exactly those texts.
class Capturing : public detail::Database {
 public:
  Capturing(std::shared_ptr<detail::Database> inner,
            std::function<std::string(const std::string&)> adapt)
      : inner_(std::move(inner)), adapt_(std::move(adapt)) {}
  int16_t Kind() const override { return inner_->Kind(); }
  const std::string& Path() const override { return inner_->Path(); }
  int64_t Execute(const std::string& sql) override {
    texts.push_back(adapt_(sql));
    return inner_->Execute(sql);
  }
  std::shared_ptr<const detail::RowSet> Query(const std::string& sql) override {
    texts.push_back(adapt_(sql));
    return inner_->Query(sql);
  }
  std::string FindTable(const std::string& n) override { return inner_->FindTable(n); }
  std::vector<detail::ColumnInfo> Columns(const std::string& t) override { return inner_->Columns(t); }
  void AddColumn(const std::string& t, const detail::NewColumn& c) override { inner_->AddColumn(t, c); }
  std::vector<std::string> TableNames() override { return inner_->TableNames(); }
  void BeginTrans() override { inner_->BeginTrans(); }
  void CommitTrans() override { inner_->CommitTrans(); }
  void Rollback() override { inner_->Rollback(); }
  void Close() noexcept override { inner_->Close(); }
  bool IsOpen() const noexcept override { return inner_->IsOpen(); }

  std::vector<std::string> texts;

 private:
  std::shared_ptr<detail::Database> inner_;
  std::function<std::string(const std::string&)> adapt_;
};

// Registers a capturing engine under `client` while it lives.
struct CaptureClient {
  CaptureClient(const std::string& client, std::shared_ptr<Capturing> db) : ws(detail::WorkspaceName(client)), engine(std::move(db)) {
    detail::DbConnectionRegistry::Instance().Add(ws).OpenOn(engine, "capture");
  }
  ~CaptureClient() { detail::DbConnectionRegistry::Instance().Remove(ws); }
  std::string ws;
  std::shared_ptr<Capturing> engine;
};

std::shared_ptr<Capturing> CaptureSqlite(const std::string& path) {
  auto inner = detail::SqliteDatabase::Open(path, false, false);
  return std::make_shared<Capturing>(inner, [inner](const std::string& s) { return inner->Adapt(s); });
}
std::shared_ptr<Capturing> CaptureOdbc(const std::string& connect) {
  auto inner = detail::OdbcDatabase::Open(connect, false);
  return std::make_shared<Capturing>(inner, [inner](const std::string& s) { return inner->Adapt(s); });
}

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

// The raw side reads every column of a row into values of its own, text
// copied, as a program using the C API directly would.
int64_t RawSqliteRow(sqlite3_stmt* s, std::vector<std::string>& texts) {
  int64_t sum = 0;
  const int n = sqlite3_column_count(s);
  texts.resize(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i) {
    switch (sqlite3_column_type(s, i)) {
      case SQLITE_INTEGER: sum += sqlite3_column_int64(s, i); break;
      case SQLITE_FLOAT: sum += static_cast<int64_t>(sqlite3_column_double(s, i)); break;
      case SQLITE_TEXT: {
        const auto* t = reinterpret_cast<const char*>(sqlite3_column_text(s, i));
        texts[static_cast<size_t>(i)].assign(t, static_cast<size_t>(sqlite3_column_bytes(s, i)));
        sum += static_cast<int64_t>(texts[static_cast<size_t>(i)].size());
        break;
      }
      default: break;
    }
  }
  return sum;
}

// Runs one statement text through raw sqlite3, reading every row.
int64_t RawSqlite(sqlite3* db, const std::string& sql, std::vector<std::string>& texts) {
  sqlite3_stmt* s = nullptr;
  if (sqlite3_prepare_v2(db, sql.c_str(), static_cast<int>(sql.size()), &s, nullptr) != SQLITE_OK) {
    std::fprintf(stderr, "raw sqlite: %s\n", sqlite3_errmsg(db));
    std::abort();
  }
  int64_t rows = 0;
  int rc;
  while ((rc = sqlite3_step(s)) == SQLITE_ROW) {
    benchmark::DoNotOptimize(RawSqliteRow(s, texts));
    ++rows;
  }
  if (rc != SQLITE_DONE) {
    std::fprintf(stderr, "raw sqlite: %s\n", sqlite3_errmsg(db));
    std::abort();
  }
  sqlite3_finalize(s);
  return rows;
}

std::string Replace(std::string text, const std::string& what, const std::string& with) {
  const size_t at = text.find(what);
  if (at == std::string::npos) {
    std::fprintf(stderr, "bench: '%s' not in captured text\n", what.c_str());
    std::abort();
  }
  return text.replace(at, what.size(), with);
}

std::string NextUId() {
  static uint64_t n = 0;
  char buf[40];
  std::snprintf(buf, sizeof buf, "%013llX-BENCHRAW-%08X", static_cast<unsigned long long>(++n),
                static_cast<unsigned>(getpid()));
  return buf;
}

void CreateOrder(CAuftrag& o) {
  const Date d = Date::Today();
  o.CreateNew7(1, 17, d, "08:15", 100, sotRoom, "Heizung im Raum 2.14 bleibt kalt", d, "", NoDate,
               "", false, NoDate, "", 0, 0, 2, 31, 1, 12, 1, hetTikora, "A", "Meier",
               "0711 4711", "Hausverwaltung", 5, "K100", "Stuttgart", "Bürogebäude Nord", "KST-7",
               "Zentrale", false, "", "Reparatur", Currency::FromScaled(1250000), "Wartung",
               "Schulz");
}

// ----- pairing ------------------------------------------------------------

// Every comparison runs both sides in the same iteration, back to back and
// alternating which goes first, so the ratio comes from times taken under
// the same conditions: on two cores shared with a database server, runs
// taken one after the other meet different loads and their ratio wanders.
template <typename Ztk, typename Raw>
void Paired(benchmark::State& state, Ztk ztk, Raw raw) {
  using Clock = std::chrono::steady_clock;
  Clock::duration ztkTime{};
  Clock::duration rawTime{};
  const auto timed = [](auto& side, Clock::duration& total) {
    const auto start = Clock::now();
    const int64_t rows = side();
    total += Clock::now() - start;
    return rows;
  };
  int64_t rows = 1;
  bool ztkFirst = true;
  for (auto _ : state) {
    int64_t rawRows = 0;
    if (ztkFirst) {
      rows = timed(ztk, ztkTime);
      rawRows = timed(raw, rawTime);
    } else {
      rawRows = timed(raw, rawTime);
      rows = timed(ztk, ztkTime);
    }
    if (rawRows != rows) {
      state.SkipWithError("the two sides saw different rows");
      return;
    }
    ztkFirst = !ztkFirst;
  }
  const double per =
      static_cast<double>(state.iterations()) * static_cast<double>(std::max<int64_t>(rows, 1));
  const auto ns = [](Clock::duration d) {
    return static_cast<double>(std::chrono::duration_cast<std::chrono::nanoseconds>(d).count());
  };
  state.counters["ztk_ns_row"] = ns(ztkTime) / per;
  state.counters["raw_ns_row"] = ns(rawTime) / per;
  state.counters["rows"] = static_cast<double>(rows);
}

// A client opened on the Jet path or the ODBC connection string.
void Open(CTkDb& tkdb, const std::string& target, bool odbc) {
  if (odbc) tkdb.OpenOdbcDb("bench", target, false, false);
  else tkdb.OpenJetDb("bench", target, false, false);
}

std::shared_ptr<Capturing> Capture(const std::string& target, bool odbc) {
  return odbc ? CaptureOdbc(target) : CaptureSqlite(target);
}

sqlite3* OpenRawSqlite(const std::string& path, bool write) {
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(path.c_str(), &db,
                      (write ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY) | SQLITE_OPEN_NOMUTEX,
                      nullptr) != SQLITE_OK) {
    std::fprintf(stderr, "raw sqlite: cannot open %s\n", path.c_str());
    std::abort();
  }
  // The settings ZTkDb's engine uses for a file it writes.
  if (write) sqlite3_exec(db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL", nullptr, nullptr, nullptr);
  return db;
}

struct RawSqliteDb {
  RawSqliteDb(const std::string& path, bool write) : db(OpenRawSqlite(path, write)) {}
  ~RawSqliteDb() { sqlite3_close(db); }
  RawSqliteDb(const RawSqliteDb&) = delete;
  RawSqliteDb& operator=(const RawSqliteDb&) = delete;
  int64_t Run(const std::string& sql) { return RawSqlite(db, sql, texts); }
  sqlite3* db;
  std::vector<std::string> texts;
};

// Raw ODBC: the same text, every column fetched with SQLGetData into its C
// type (text as UTF-16, the way the Unicode driver delivers it).
struct RawOdbc {
  explicit RawOdbc(const std::string& connect) {
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &env);
    SQLSetEnvAttr(env, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, env, &dbc);
    auto wide = detail::ToUtf16(connect);
    if (!SQL_SUCCEEDED(SQLDriverConnectW(dbc, nullptr, wide.data(), static_cast<SQLSMALLINT>(wide.size()),
                                         nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT))) {
      std::fprintf(stderr, "raw odbc: cannot connect\n");
      std::abort();
    }
  }
  ~RawOdbc() {
    SQLDisconnect(dbc);
    SQLFreeHandle(SQL_HANDLE_DBC, dbc);
    SQLFreeHandle(SQL_HANDLE_ENV, env);
  }
  int64_t Run(const std::string& sql) {
    SQLHANDLE stmt = SQL_NULL_HANDLE;
    SQLAllocHandle(SQL_HANDLE_STMT, dbc, &stmt);
    auto wide = detail::ToUtf16(sql);
    const SQLRETURN rc = SQLExecDirectW(stmt, wide.data(), static_cast<SQLINTEGER>(wide.size()));
    if (!SQL_SUCCEEDED(rc) && rc != SQL_NO_DATA) {
      std::fprintf(stderr, "raw odbc: statement failed\n");
      std::abort();
    }
    SQLSMALLINT columns = 0;
    SQLNumResultCols(stmt, &columns);
    std::vector<SQLSMALLINT> types(static_cast<size_t>(columns));
    for (SQLUSMALLINT c = 1; c <= columns; ++c) {
      SQLSMALLINT nameLength = 0, digits = 0, nullable = 0;
      SQLULEN size = 0;
      SQLWCHAR name[256];
      SQLDescribeColW(stmt, c, name, 256, &nameLength, &types[c - 1], &size, &digits, &nullable);
    }
    int64_t rows = 0;
    std::u16string text;
    SQLWCHAR buffer[2048];
    while (columns > 0 && SQL_SUCCEEDED(SQLFetch(stmt))) {
      for (SQLUSMALLINT c = 1; c <= columns; ++c) {
        SQLLEN indicator = 0;
        switch (types[c - 1]) {
          case SQL_INTEGER:
          case SQL_SMALLINT:
          case SQL_BIGINT: {
            SQLBIGINT v = 0;
            SQLGetData(stmt, c, SQL_C_SBIGINT, &v, sizeof v, &indicator);
            benchmark::DoNotOptimize(v);
            break;
          }
          case SQL_DOUBLE:
          case SQL_FLOAT: {
            double v = 0;
            SQLGetData(stmt, c, SQL_C_DOUBLE, &v, sizeof v, &indicator);
            benchmark::DoNotOptimize(v);
            break;
          }
          case SQL_TYPE_TIMESTAMP: {
            SQL_TIMESTAMP_STRUCT v{};
            SQLGetData(stmt, c, SQL_C_TYPE_TIMESTAMP, &v, sizeof v, &indicator);
            benchmark::DoNotOptimize(v);
            break;
          }
          default: {
            SQLRETURN r;
            text.clear();
            while (SQL_SUCCEEDED(r = SQLGetData(stmt, c, SQL_C_WCHAR, buffer, sizeof buffer, &indicator))) {
              if (indicator == SQL_NULL_DATA) break;
              const size_t units = indicator == SQL_NO_TOTAL || indicator > static_cast<SQLLEN>(sizeof buffer) - 2
                                       ? sizeof buffer / 2 - 1
                                       : static_cast<size_t>(indicator) / 2;
              text.append(reinterpret_cast<const char16_t*>(buffer), units);
              if (r == SQL_SUCCESS) break;
            }
            benchmark::DoNotOptimize(text.data());
          }
        }
      }
      ++rows;
    }
    SQLFreeHandle(SQL_HANDLE_STMT, stmt);
    return rows;
  }
  SQLHANDLE env = SQL_NULL_HANDLE;
  SQLHANDLE dbc = SQL_NULL_HANDLE;
};

// ----- list walk ---------------------------------------------------------

std::string CapturedWalkText(std::shared_ptr<Capturing> engine) {
  CaptureClient client("capture", engine);
  CAuftragListe list;
  list.ConnectStorage("capture");
  list.ReadByDone(false, osByOrderDate, 30);
  return engine->texts.back();
}

int64_t WalkOnce() {
  CAuftragListe list;
  list.ConnectStorage("bench");
  list.ReadByDone(false, osByOrderDate, 30);
  int64_t rows = 0;
  for (auto o = list.MoveFirst(); o; o = list.MoveNext()) {
    benchmark::DoNotOptimize(TouchOrder(*o));
    ++rows;
  }
  return rows;
}

void WalkSqlite(benchmark::State& state, const std::string& path) {
  const std::string sql = CapturedWalkText(CaptureSqlite(path));
  RawSqliteDb raw(path, false);
  CTkDb tkdb;
  Open(tkdb, path, false);
  Paired(state, WalkOnce, [&] { return raw.Run(sql); });
}

void WalkOdbc(benchmark::State& state, const std::string& connect) {
  const std::string sql = CapturedWalkText(CaptureOdbc(connect));
  RawOdbc raw(connect);
  CTkDb tkdb;
  Open(tkdb, connect, true);
  Paired(state, WalkOnce, [&] { return raw.Run(sql); });
}

// ----- create (insert + reread by UId) -----------------------------------

// The two texts a create sends, with the UId to be replaced.
std::pair<std::string, std::string> CapturedCreateTexts(std::shared_ptr<Capturing> engine,
                                                        std::string& uid) {
  CaptureClient client("capture", engine);
  CAuftrag o;
  o.ConnectStorage("capture");
  CreateOrder(o);
  uid = o.UId();
  const auto& t = engine->texts;
  return {t[t.size() - 2], t.back()};
}

// Each side writes into a database of its own, so both tables grow alike.
template <typename Raw>
void Create(benchmark::State& state, const std::string& ztkTarget, Raw& raw,
            const std::string& rawTarget, bool odbc) {
  std::string uid;
  const auto texts = CapturedCreateTexts(Capture(rawTarget, odbc), uid);
  CTkDb tkdb;
  Open(tkdb, ztkTarget, odbc);
  CAuftrag o;
  o.ConnectStorage("bench");
  Paired(
      state,
      [&o] {
        CreateOrder(o);
        benchmark::DoNotOptimize(TouchOrder(o));
        return int64_t{1};
      },
      [&] {
        const std::string fresh = NextUId();
        raw.Run(Replace(texts.first, uid, fresh));
        return raw.Run(Replace(texts.second, uid, fresh));
      });
}

void CreateSqlite(benchmark::State& state, const std::string& path, const std::string& rawPath) {
  RawSqliteDb raw(rawPath, true);
  Create(state, path, raw, rawPath, false);
}

// On the server both sides share the database: tables grow alike anyway.
void CreateOdbc(benchmark::State& state, const std::string& connect) {
  RawOdbc raw(connect);
  Create(state, connect, raw, connect, true);
}

// ----- read by id, update ------------------------------------------------

void ReadById(benchmark::State& state, const std::string& path, int32_t n) {
  auto engine = CaptureSqlite(path);
  {
    CaptureClient client("capture", engine);
    CAuftrag o;
    o.ConnectStorage("capture");
    o.ReadById(424242);
  }
  const std::string text = engine->texts.back();
  RawSqliteDb raw(path, false);
  CTkDb tkdb;
  Open(tkdb, path, false);
  CAuftrag o;
  o.ConnectStorage("bench");
  // Both sides draw the same sequence of rows.
  std::mt19937 ztkRng(7);
  std::mt19937 rawRng(7);
  const auto draw = [n](std::mt19937& rng) {
    return 1 + static_cast<int32_t>(rng() % static_cast<unsigned>(n));
  };
  Paired(
      state,
      [&] {
        o.ReadById(draw(ztkRng));
        benchmark::DoNotOptimize(TouchOrder(o));
        return int64_t{1};
      },
      [&] { return raw.Run(Replace(text, "424242", std::to_string(draw(rawRng)))); });
}

void Update(benchmark::State& state, const std::string& path, const std::string& rawPath) {
  auto engine = CaptureSqlite(rawPath);
  std::string oldUid;
  {
    CaptureClient client("capture", engine);
    CAuftrag o;
    o.ConnectStorage("capture");
    o.ReadById(2);
    oldUid = o.UId();
    o.Bemerkung("@BEMERKUNG@");
    o.Update();
  }
  const std::string text = engine->texts.back();
  // The captured update ran for real: the row now holds the UId of its SET
  // clause, and each raw update guards with the one before.
  const size_t set = text.find("stUId = '") + 9;
  const std::string capturedNew = text.substr(set, text.find('\'', set) - set);
  std::string current = capturedNew;
  RawSqliteDb raw(rawPath, true);
  CTkDb tkdb;
  Open(tkdb, path, false);
  CAuftrag o;
  o.ConnectStorage("bench");
  o.ReadById(1);
  int ztkRun = 0;
  int rawRun = 0;
  Paired(
      state,
      [&] {
        o.Bemerkung("Durchlauf " + std::to_string(++ztkRun));
        o.Update();
        return int64_t{1};
      },
      [&] {
        const std::string fresh = NextUId();
        std::string sql = Replace(text, "stUId = '" + capturedNew + "'", "stUId = '" + fresh + "'");
        sql = Replace(sql, "stUId='" + oldUid + "'", "stUId='" + current + "'");
        sql = Replace(sql, "@BEMERKUNG@", "Durchlauf " + std::to_string(++rawRun));
        raw.Run(sql);
        if (sqlite3_changes(raw.db) != 1) std::abort();
        current = fresh;
        return int64_t{1};
      });
}

// ----- ItemByRecId -------------------------------------------------------

// Lookups of 1000 ids drawn from the result: the same working set at every
// size, so the figure shows the cost of the lookup itself. (Ids drawn from
// all 100k rows also pay a cache miss on each row's values; the "all"
// variant shows that, for information.)
void ItemByRecId(benchmark::State& state, const std::string& path, bool allRows) {
  CTkDb tkdb;
  tkdb.OpenJetDb("bench", path, false, false);
  CAuftragListe list;
  list.ConnectStorage("bench");
  list.ReadAll();
  std::vector<int32_t> ids;
  for (auto rs = list.RsClone(); !rs->Eof(); rs->MoveNext()) ids.push_back(rs->Fields("lId").ToLong());
  std::mt19937 rng(3);
  std::shuffle(ids.begin(), ids.end(), rng);
  if (!allRows) ids.resize(std::min<size_t>(ids.size(), 1000));
  size_t next = 0;
  for (auto _ : state) {
    auto item = list.ItemByRecId(ids[next]);
    benchmark::DoNotOptimize(item->Id());
    if (++next == ids.size()) next = 0;
  }
  state.counters["rows"] = 1;
}

// ----- memory ------------------------------------------------------------

struct MemoryFigure {
  size_t held = 0;
  size_t values = 0;
  int32_t rows = 0;
};
MemoryFigure& Memory() {
  static MemoryFigure figure;
  return figure;
}

size_t ValueBytes(const Variant& v) {
  switch (v.Type()) {
    case vtEmpty:
    case vtNull: return 0;
    case vtBoolean:
    case vtByte: return 1;
    case vtInteger: return 2;
    case vtLong: return 4;
    case vtString: return v.ToString().size();
    default: return 8;
  }
}

void HoldList(benchmark::State& state, const std::string& path) {
  CTkDb tkdb;
  tkdb.OpenJetDb("bench", path, false, false);
  for (auto _ : state) {
    malloc_trim(0);
    const size_t before = mallinfo2().uordblks;
    auto list = std::make_unique<CAuftragListe>();
    list->ConnectStorage("bench");
    list->ReadAll();
    const size_t after = mallinfo2().uordblks;
    MemoryFigure& m = Memory();
    m.held = after - before;
    m.rows = list->Count();
    m.values = 0;
    for (auto rs = list->RsClone(); !rs->Eof(); rs->MoveNext()) {
      for (int32_t i = 0; i < rs->FieldCount(); ++i) m.values += ValueBytes(rs->Fields(i));
    }
  }
}

// ----- summary -----------------------------------------------------------

struct Result {
  double ns_per_row = 0;
};
std::map<std::string, Result>& Results() {
  static std::map<std::string, Result> results;
  return results;
}

class Collector : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    // With repetitions the median of each benchmark counts, else its run.
    for (const auto& run : runs) {
      if (run.error_occurred) continue;
      const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
      if (run.run_type != Run::RT_Iteration && !median) continue;
      auto it = run.counters.find("rows");
      const double rows = it == run.counters.end() || it->second.value <= 0 ? 1 : it->second.value;
      const std::string name = run.run_name.str();
      Results()[name].ns_per_row = run.GetAdjustedRealTime() / rows;
      for (const char* side : {"ztk", "raw"}) {
        auto split = run.counters.find(std::string(side) + "_ns_row");
        if (split != run.counters.end()) Results()[name + "#" + side].ns_per_row = split->second.value;
      }
    }
    ConsoleReporter::ReportRuns(runs);
  }
};

void Summary() {
  struct Line {
    const char* label;
    std::string ztk, raw;
    double target;
  };
  std::vector<Line> lines;
  for (int32_t n : kSizes) {
    const std::string s = std::to_string(n);
    lines.push_back({"list walk, per row", "Walk/sqlite/" + s + "#ztk", "Walk/sqlite/" + s + "#raw", 1.5});
    lines.push_back({"CreateNew7", "Create/sqlite/" + s + "#ztk", "Create/sqlite/" + s + "#raw", 1.2});
    lines.push_back({"ReadById", "ReadById/sqlite/" + s + "#ztk", "ReadById/sqlite/" + s + "#raw", 1.3});
    lines.push_back({"Update", "Update/sqlite/" + s + "#ztk", "Update/sqlite/" + s + "#raw", 1.3});
    lines.push_back({"ItemByRecId (vs 1k)", "ItemByRecId/" + s, "ItemByRecId/1000", 1.5});
    lines.push_back({"  over all rows (info)", "ItemByRecIdAll/" + s, "ItemByRecIdAll/1000", 99});
    lines.push_back({"list walk ODBC/PostgreSQL", "Walk/postgres/" + s + "#ztk", "Walk/postgres/" + s + "#raw", 1.3});
    lines.push_back({"CreateNew7 ODBC/PostgreSQL", "Create/postgres/" + s + "#ztk", "Create/postgres/" + s + "#raw", 1.3});
  }
  std::printf("\n%-28s %7s %14s %14s %7s %7s\n", "operation", "rows", "ZTkDb ns/row", "raw ns/row",
              "ratio", "target");
  bool allMet = true;
  for (const auto& l : lines) {
    const auto find = [](const std::string& name) {
      // Timed benchmarks carry the "/real_time" suffix before a side's "#".
      const size_t hash = name.find('#');
      const std::string timed = hash == std::string::npos
                                    ? name + "/real_time"
                                    : name.substr(0, hash) + "/real_time" + name.substr(hash);
      auto it = Results().find(timed);
      return it != Results().end() ? it : Results().find(name);
    };
    auto z = find(l.ztk);
    auto r = find(l.raw);
    if (z == Results().end() || r == Results().end()) continue;
    const double ratio = z->second.ns_per_row / r->second.ns_per_row;
    const bool met = ratio <= l.target;
    allMet &= met;
    const std::string rowsLabel = l.ztk.substr(l.ztk.rfind('/') + 1);
    std::printf("%-28s %7s %14.0f %14.0f %7.2f %6.1fx %s\n", l.label,
                rowsLabel.substr(0, rowsLabel.find('#')).c_str(), z->second.ns_per_row,
                r->second.ns_per_row, ratio, l.target, met ? "" : " MISSED");
  }
  const MemoryFigure& m = Memory();
  if (m.rows > 0) {
    const double ratio = static_cast<double>(m.held) / static_cast<double>(m.values);
    allMet &= ratio <= 2.0;
    std::printf("%-28s %7d %11zu kB %11zu kB %7.2f %6.1fx %s   (held vs. bytes of the values)\n",
                "memory holding the list", m.rows, m.held / 1024, m.values / 1024, ratio, 2.0,
                ratio <= 2.0 ? "" : " MISSED");
  }
  std::printf("\n%s\n", allMet ? "every target met" : "some targets missed");
}

}  // namespace

int main(int argc, char** argv) {
  Setup& env = Env();
  env.dir = std::getenv("ZTKDB_BENCH_DIR") ? std::getenv("ZTKDB_BENCH_DIR") : "bench-data";
  const char* pgAdmin = std::getenv("ZTKDB_BENCH_PG");  // "Driver=…;Servername=…;Port=…;Username=…;"
  ZTkDb::SetMessageSink([](const ZTkDb::MessageBoxCall& box) {
    std::fprintf(stderr, "box: %s\n", box.text.c_str());
  });
  for (int32_t n : kSizes) {
    std::fprintf(stderr, "data set of %d orders …\n", n);
    env.sqlite[n] = bench::SqliteDataSet(env.dir, n);
    if (pgAdmin) {
      const std::string c = bench::PostgresDataSet(pgAdmin, "bench_" + std::to_string(n), n);
      if (!c.empty()) env.postgres[n] = c;
    }
  }
  for (int32_t n : kSizes) {
    const std::string s = std::to_string(n);
    const std::string& path = env.sqlite[n];
    const std::string writable = bench::WritableCopy(path, "write-" + s + ".db");
    const std::string writableRaw = bench::WritableCopy(path, "write-raw-" + s + ".db");
    benchmark::RegisterBenchmark(("Walk/sqlite/" + s).c_str(), WalkSqlite, path)->UseRealTime();
    benchmark::RegisterBenchmark(("Create/sqlite/" + s).c_str(), CreateSqlite, writable, writableRaw)->UseRealTime();
    benchmark::RegisterBenchmark(("ReadById/sqlite/" + s).c_str(), ReadById, path, n)->UseRealTime();
    benchmark::RegisterBenchmark(("Update/sqlite/" + s).c_str(), Update, writable, writableRaw)->UseRealTime();
    benchmark::RegisterBenchmark(("ItemByRecId/" + s).c_str(), ItemByRecId, path, false)->UseRealTime();
    benchmark::RegisterBenchmark(("ItemByRecIdAll/" + s).c_str(), ItemByRecId, path, true)->UseRealTime();
    if (env.postgres.count(n)) {
      const std::string& pg = env.postgres[n];
      benchmark::RegisterBenchmark(("Walk/postgres/" + s).c_str(), WalkOdbc, pg)->UseRealTime();
      benchmark::RegisterBenchmark(("Create/postgres/" + s).c_str(), CreateOdbc, pg)->UseRealTime();
    }
  }
  benchmark::RegisterBenchmark("Memory/HoldList/100000", HoldList, env.sqlite[100000])->Iterations(1);
  benchmark::Initialize(&argc, argv);
  Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);
  Summary();
  benchmark::Shutdown();
  return 0;
}
