// ztk copy between engines: every table comes back value by value, ids and
// row tokens included, and each target hands out fresh ids afterwards; a
// copy that cannot be made whole writes nothing.
#include <gtest/gtest.h>

#include <filesystem>

#include "Engines.h"
#include "TestData.h"
#include "TestSupport.h"
#include "ZtkRun.h"
#include "connection/ModuleSchema.h"
#include "engine/RowSet.h"
#include "engine/sqlite/SqliteDatabase.h"
#include "ztkdb/ZTkDb.h"

using namespace ZTkDb;
using ztktest::Engine;
using ztktest::Ztk;

namespace {

const char* const kTables[] = {"T_Auftrag",  "T_AuftragMeldung", "T_Meldung",
                               "T_Leistung", "T_AMaterial",      "T_MsgOrderDokument"};

// Every row of every table as the engine stores it, sorted: each value's
// type and text, a flag as its number (-1 in a file the library opens as
// Jet, 1 on a server), never as a truth value.
std::vector<std::string> Contents(detail::Database& db, bool file) {
  std::vector<std::string> out;
  for (const char* table : kTables) {
    std::string select = "SELECT ";
    const auto columns = db.Columns(table);
    for (size_t c = 0; c < columns.size(); ++c) {
      const std::string& name = columns[c].name;
      select += (c ? ", " : "") +
                (detail::IsModuleFlag(table, name) ? "(" + name + " + 0) AS " + name : name);
    }
    auto rows = db.Query(select + " FROM " + table);
    std::vector<Variant> row;
    for (int64_t r = 0; r < rows->RowCount(); ++r) {
      rows->DecodeRow(r, row);
      std::string line = table;
      for (int32_t c = 0; c < rows->ColumnCount(); ++c) {
        const Variant& v = row[static_cast<size_t>(c)];
        // A server has no text-only date column: types are compared within
        // one kind of engine.
        line += "|" + detail::LowerAscii(rows->Name(c)) + ":" +
                (file ? std::to_string(v.Type()) + ":" : "") + (v.IsNull() ? "NULL" : v.ToString());
      }
      out.push_back(line);
    }
  }
  std::sort(out.begin(), out.end());
  return out;
}
std::vector<std::string> Contents(const std::string& path) {
  return Contents(*detail::SqliteDatabase::Open(path, false, true), true);
}

// The ids each list family gives on `client`: the statements of the
// client's kind must find on a copy what they found on the source.
std::vector<std::vector<int32_t>> ListAnswers(const std::string& client) {
  std::vector<std::vector<int32_t>> out;
  const auto walk = [&](auto& list) {
    std::vector<int32_t> ids;
    for (auto item = list.MoveFirst(); item; item = list.MoveNext()) ids.push_back(item->Id());
    std::sort(ids.begin(), ids.end());
    out.push_back(std::move(ids));
  };
  CAuftragListe orders;
  orders.ConnectStorage(client);
  CMeldungListe reports;
  reports.ConnectStorage(client);
  CMaterialListe material;
  material.ConnectStorage(client);
  for (bool done : {false, true}) {
    orders.ReadByDone(done, osUnsorted, 30000);
    walk(orders);
    reports.ReadByDone(done, msUnsorted, 30000);
    walk(reports);
  }
  const Date from = Date::FromYmd(2000, 1, 1), to = Date::FromYmd(2100, 1, 1);
  reports.ReadAllInZeitAndOpen(from, to);
  walk(reports);
  reports.ReadAllInZeitraum(from, to);
  walk(reports);
  orders.ReadAllInZeitraum(from, to);
  walk(orders);
  orders.ReadByDoneAndVorsatz(true, "A", osUnsorted, 30000);
  walk(orders);
  orders.ReadWithMsgConn(true);
  walk(orders);
  CLeistungListe labour;
  labour.ConnectStorage(client);
  CMsgOrderDokumentListe documents;
  documents.ConnectStorage(client);
  orders.ReadAll();
  std::vector<int32_t> orderIds;
  for (auto o = orders.MoveFirst(); o; o = orders.MoveNext()) orderIds.push_back(o->Id());
  for (int32_t id : orderIds) {
    material.ReadFremdByOrderId(id);
    walk(material);
    material.ReadMaterialByOrderId(id);
    walk(material);
    labour.ReadByOrderId(id);
    walk(labour);
    documents.ReadByOrderId(id);
    walk(documents);
  }
  return out;
}

int32_t FreshOrderId(ztktest::EngineDb& db) {
  CTkDb tkdb;
  db.OpenAgain(tkdb, "fresh");
  return ztktest::CreateOrder("fresh", {.nr = 4711})->Id();
}

}  // namespace

TEST(Copy, ADemoDatabaseGoesRoundSqlitePostgresMariaDbSqliteUnchanged) {
  ztktest::TempDb dir(false);
  const std::string demo = dir.Path() + ".demo.db", back = dir.Path() + ".back.db";
  ASSERT_EQ(Ztk({"demo", demo}).code, 0);
  ztktest::EngineDb pg(Engine::kPostgres), maria(Engine::kMariaDb);
  for (auto* db : {&pg, &maria}) ZTKTEST_NEED_ENGINE(db->Create());
  auto step = Ztk({"copy", "--from-db", demo, "--to-odbc", pg.ConnectString()});
  ASSERT_EQ(step.code, 0) << step.err;
  EXPECT_NE(step.out.find("T_Auftrag"), std::string::npos) << step.out << step.err;
  step = Ztk({"copy", "--from-odbc", pg.ConnectString(), "--to-odbc", maria.ConnectString()});
  ASSERT_EQ(step.code, 0) << step.err;
  step = Ztk({"copy", "--from-odbc", maria.ConnectString(), "--to-db", back, "--init"});
  ASSERT_EQ(step.code, 0) << step.err;
  EXPECT_EQ(Contents(back), Contents(demo));
  CTkDb demoClient, backClient;
  demoClient.OpenJetDb("demo-ro", demo, false, true);
  backClient.OpenJetDb("back-ro", back, false, true);
  const auto answers = ListAnswers("demo-ro");
  ASSERT_GT(answers[2].size() + answers[3].size(), 0u) << "the demo has done orders and reports";
  EXPECT_EQ(ListAnswers("back-ro"), answers);
  {
    CTkDb server;
    pg.OpenAgain(server, "pg-copy");
    EXPECT_EQ(ListAnswers("pg-copy"), answers);
  }

  // Server to file to server: the second server holds what the first did.
  ztktest::EngineDb pg2(Engine::kPostgres);
  ASSERT_EQ(pg2.Create(), "");
  const std::string mid = dir.Path() + ".mid.db";
  ASSERT_EQ(Ztk({"copy", "--from-odbc", pg.ConnectString(), "--to-db", mid, "--init"}).code, 0);
  step = Ztk({"copy", "--from-db", mid, "--to-odbc", pg2.ConnectString()});
  ASSERT_EQ(step.code, 0) << step.err;
  EXPECT_EQ(Contents(mid), Contents(demo));
  CTkDb pg1Client, pg2Client;
  pg.OpenAgain(pg1Client, "pg1");
  pg2.OpenAgain(pg2Client, "pg2");
  EXPECT_EQ(Contents(*ztktest::EngineOf("pg2"), false), Contents(*ztktest::EngineOf("pg1"), false));

  // Each target's next id follows the copied ones.
  auto file = detail::SqliteDatabase::Open(demo, false, true);
  auto maxRows = file->Query("SELECT MAX(lId) AS m FROM T_Auftrag");
  std::vector<Variant> row;
  maxRows->DecodeRow(0, row);
  const int32_t max = row[0].ToLong();
  EXPECT_GT(FreshOrderId(pg), max);
  EXPECT_GT(FreshOrderId(maria), max);
  CTkDb tkdb;
  tkdb.OpenJetDb("back", back, false, false);
  EXPECT_GT(ztktest::CreateOrder("back", {.nr = 4711})->Id(), max);
}

TEST(Copy, ACopyThatCannotBeWholeWritesNothing) {
  ztktest::TempDb dir(false);
  const std::string demo = dir.Path() + ".demo.db", target = dir.Path() + ".target.db";
  ASSERT_EQ(Ztk({"demo", demo}).code, 0);
  EXPECT_EQ(Ztk({"copy", "--from-db", demo, "--to-db", target}).code, 1);  // no such file
  // A copy that fails leaves no file its --init made.
  EXPECT_EQ(Ztk({"copy", "--from-db", demo + ".missing", "--to-db", target, "--init"}).code, 1);
  EXPECT_FALSE(std::filesystem::exists(target));
  ASSERT_EQ(Ztk({"copy", "--from-db", demo, "--to-db", target, "--init"}).code, 0);
  const auto copied = Contents(target);

  // A target with rows: refused, and with --append every id clashes.
  auto again = Ztk({"copy", "--from-db", demo, "--to-db", target});
  EXPECT_EQ(again.code, 1);
  EXPECT_NE(again.err.find("--append"), std::string::npos) << again.err;
  again = Ztk({"copy", "--from-db", demo, "--to-db", target, "--append"});
  EXPECT_EQ(again.code, 1);
  EXPECT_NE(again.err.find("nothing was written"), std::string::npos) << again.err;
  EXPECT_EQ(Contents(target), copied);

  // Appending what is not there yet works.
  const std::string more = dir.Path() + ".more.db";
  ASSERT_EQ(Ztk({"init", more}).code, 0);
  {
    CTkDb tkdb;
    tkdb.OpenJetDb("more", more, false, false);
    ztktest::Exec("more", "INSERT INTO T_Meldung (lId, lNr, stUId) VALUES (900001, 1, 'X-1')");
  }
  const auto appended = Ztk({"copy", "--from-db", more, "--to-db", target, "--append"});
  EXPECT_EQ(appended.code, 0) << appended.err;
  EXPECT_EQ(Contents(target).size(), copied.size() + 1);
  EXPECT_EQ(Ztk({"copy", "--from-db", demo, "--to-db", demo}).code, 2);
}

// A copy killed in the middle (kill -9, a machine going down) leaves the
// target as it was: everything went in one transaction.
TEST(Copy, ACopyKilledHalfwayLeavesTheTargetEmpty) {
  ztktest::TempDb source, target;
  {
    // Enough rows that the copy is still writing when it is killed.
    auto db = detail::SqliteDatabase::Open(source.Path(), false, false);
    std::vector<std::vector<Variant>> rows;
    for (int32_t id = 1; id <= 200000; ++id) {
      rows.push_back(
          {Variant(id), Variant("UID-" + std::to_string(id)), Variant(std::string(200, 'x'))});
    }
    db->BeginTrans();
    db->InsertRows("T_Leistung", {"lId", "stUId", "stBemerkung"}, rows);
    db->CommitTrans();
  }
  const pid_t pid = fork();
  if (pid == 0) {
    const int null = open("/dev/null", O_RDWR);
    dup2(null, 0);
    dup2(null, 1);
    dup2(null, 2);
    execl(ZTKDB_ZTK_PATH, ZTKDB_ZTK_PATH, "copy", "--from-db", source.Path().c_str(), "--to-db",
          target.Path().c_str(), static_cast<char*>(nullptr));
    _exit(127);
  }
  // Killed once it has written a few megabytes into the target's log.
  const std::string wal = target.Path() + "-wal";
  for (int i = 0; i < 20000; ++i) {
    std::error_code ignored;
    if (std::filesystem::exists(wal) && std::filesystem::file_size(wal, ignored) > (4u << 20))
      break;
    usleep(1000);
  }
  kill(pid, SIGKILL);
  int status = 0;
  waitpid(pid, &status, 0);
  ASSERT_TRUE(WIFSIGNALED(status)) << "the copy ended before it could be killed";

  auto db = detail::SqliteDatabase::Open(target.Path(), false, true);
  for (const char* table : kTables) {
    auto rows = db->Query(std::string("SELECT COUNT(*) AS n FROM ") + table);
    std::vector<Variant> row;
    rows->DecodeRow(0, row);
    EXPECT_EQ(row[0].ToLong(), 0) << table;
  }
  db->Close();
  const auto again = Ztk({"copy", "--from-db", source.Path(), "--to-db", target.Path()});
  EXPECT_EQ(again.code, 0) << again.err;
}

// A file an older copy wrote with 1 for true: its lists find none of those
// rows until `ztk check --repair` rewrites them as the file's own -1.
TEST(Copy, FlagsAnOlderCopyWroteInAServersFormAreFoundAndRepaired) {
  ztktest::TempDb dir(false);
  const std::string demo = dir.Path() + ".demo.db", old = dir.Path() + ".old.db";
  ASSERT_EQ(Ztk({"demo", demo}).code, 0);
  std::filesystem::copy_file(demo, old);
  {
    auto file = detail::SqliteDatabase::Open(old, false, false);
    for (const auto& [table, column] : detail::ModuleFlags()) {
      file->Execute("UPDATE " + table + " SET " + column + " = 1 WHERE " + column + " = -1");
    }
  }
  CTkDb clients;
  clients.OpenJetDb("demo", demo, false, true);
  const auto answers = ListAnswers("demo");
  {
    CTkDb tkdb;
    tkdb.OpenJetDb("old", old, false, true);
    EXPECT_NE(ListAnswers("old"), answers);
  }
  auto found = Ztk({"--db", old, "check"});
  EXPECT_EQ(found.code, 1);
  EXPECT_NE(found.out.find("T_Meldung.bErledigt"), std::string::npos) << found.out;
  EXPECT_NE(found.err.find("nothing was changed"), std::string::npos) << found.err;
  EXPECT_EQ(Ztk({"--db", old, "--read-only", "check"}).code, 1);
  EXPECT_EQ(Ztk({"--db", old, "--read-only", "check", "--repair"}).code, 2);
  // The flags the check knows, as the module's DDL declares them.
  EXPECT_EQ(detail::ModuleFlags(),
            (std::vector<std::pair<std::string, std::string>>{{"T_Auftrag", "bErledigt"},
                                                              {"T_Auftrag", "bGesperrt"},
                                                              {"T_Meldung", "bErledigt"},
                                                              {"T_Leistung", "bFremdleistung"},
                                                              {"T_AMaterial", "bFremdleistung"}}));
  const auto repaired = Ztk({"--db", old, "check", "--repair"});
  ASSERT_EQ(repaired.code, 0) << repaired.err;
  EXPECT_EQ(Ztk({"--db", old, "check"}).code, 0);
  EXPECT_EQ(Contents(old), Contents(demo));
  CTkDb tkdb;
  tkdb.OpenJetDb("old", old, false, true);
  EXPECT_EQ(ListAnswers("old"), answers);
}
