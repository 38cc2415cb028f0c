#include <gtest/gtest.h>
#include <sys/wait.h>

#include <chrono>
#include <filesystem>
#include <regex>
#include <set>

#include "TestData.h"
#include "TestSupport.h"
#include "connection/DbConnectionRegistry.h"
#include "connection/UIdGenerator.h"
#include "connection/WorkspaceNames.h"
#include "engine/RecordsetAccess.h"
#include "engine/TableDef.h"
#include "engine/sqlite/SqliteDatabase.h"
#include "ztkdb/CAuftrag.h"
#include "ztkdb/CAuftragListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using detail::DbConnectionRegistry;
using detail::ProcessFlags;

namespace {

detail::DbConnection* Registered(const std::string& client) {
  return DbConnectionRegistry::Instance().Item(detail::WorkspaceName(client));
}

}  // namespace

TEST(CTkDb, WorkspaceNameFollowsTheJetFlagAtTheMomentOfTheCall) {
  const bool saved = ProcessFlags::jet_workspace_names;
  ProcessFlags::jet_workspace_names = true;
  EXPECT_EQ(detail::WorkspaceName("Haus"), "Haus_ZTk");
  ProcessFlags::jet_workspace_names = false;
  EXPECT_EQ(detail::WorkspaceName("Haus"), "Haus_Zanto");
  ProcessFlags::jet_workspace_names = saved;
}

TEST(CTkDb, AnOwnerClosesOnCloseOnItsEndAndOnReopeningABorrowerNever) {
  ztktest::TempDb temp;
  {
    CTkDb first;
    first.OpenJetDb("own", temp.Path(), false, false);
    EXPECT_TRUE(ProcessFlags::jet_workspace_names);
    ASSERT_NE(Registered("own"), nullptr);
    EXPECT_EQ(first.DbPath(), temp.Path());
    ASSERT_NE(first.Ws(), nullptr);
    EXPECT_EQ(first.Ws()->Name(), "own_ZTk");

    CTkDb second;
    // The path is ignored when the client is already open.
    second.OpenJetDb("own", "/does/not/exist.db", false, false);
    EXPECT_EQ(second.DbPath(), temp.Path());
    second.CloseDb();
    EXPECT_NE(Registered("own"), nullptr) << "a borrower must not remove the connection";
    EXPECT_EQ(first.DbPath(), temp.Path());

    first.CloseDb();
    EXPECT_EQ(Registered("own"), nullptr);
    EXPECT_EQ(first.DbPath(), "");
    EXPECT_EQ(first.Ws(), nullptr);
    first.CloseDb();  // a second close does nothing
  }
  CTkDb fresh;
  EXPECT_NO_THROW(fresh.CloseDb());
  // An owner also closes when it goes, and when it opens another client.
  {
    CTkDb owner;
    owner.OpenJetDb("scoped", temp.Path(), false, false);
    EXPECT_NE(Registered("scoped"), nullptr);
  }
  EXPECT_EQ(Registered("scoped"), nullptr);
  ztktest::TempDb other;
  fresh.OpenJetDb("eins", temp.Path(), false, false);
  fresh.OpenJetDb("zwei", other.Path(), false, false);
  EXPECT_EQ(Registered("eins"), nullptr);
  EXPECT_NE(Registered("zwei"), nullptr);
}

TEST(CTkDb, FailedJetOpenRaisesAndLeavesNoEntryAndNoFile) {
  ztktest::TempDb temp(false);
  CTkDb tkdb;
  try {
    tkdb.OpenJetDb("kaputt", temp.Path(), false, false);
    FAIL() << "opened a missing file";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), errFileNotFound);
    EXPECT_NE(e.Description().find(temp.Path()), std::string::npos);
  }
  EXPECT_FALSE(std::filesystem::exists(temp.Path()));
  EXPECT_EQ(Registered("kaputt"), nullptr);
  EXPECT_EQ(tkdb.DbPath(), "");
}

TEST(CTkDb, OdbcFailureShowsTheBoxAndSetsTheFlags) {
  ztktest::CapturedBoxes boxes;
  ProcessFlags::jet_workspace_names = true;
  CTkDb tkdb;
  EXPECT_NO_THROW(tkdb.OpenOdbcDb("ora", "DSN=nirgends;zantooracle=1", false, false));
  EXPECT_FALSE(ProcessFlags::jet_workspace_names);
  EXPECT_TRUE(ProcessFlags::oracle);
  ASSERT_EQ(boxes.boxes.size(), 1u);
  EXPECT_TRUE(boxes.boxes[0].critical);
  EXPECT_EQ(boxes.boxes[0].title, "ZTkDb");
  EXPECT_EQ(boxes.boxes[0].text.rfind("CTkDb.OpenOdbcDb\n", 0), 0u) << boxes.boxes[0].text;
  EXPECT_EQ(Registered("ora"), nullptr);
  EXPECT_EQ(tkdb.DbPath(), "");

  // The Oracle flag survives a later Jet open.
  ztktest::TempDb temp;
  tkdb.OpenJetDb("danach", temp.Path(), false, false);
  EXPECT_TRUE(ProcessFlags::oracle);
  ProcessFlags::oracle = false;  // process-wide: leave it as other tests expect
}

TEST(CTkDb, UpgradeAddsOrderTypeToOldDatabasesOnce) {
  ztktest::TempDb temp;
  {
    auto db = detail::SqliteDatabase::Open(temp.Path(), false, false);
    db->Execute("INSERT INTO T_Auftrag (stUId, lNr) VALUES ('alt', 1)");
    db->Execute("ALTER TABLE T_Auftrag DROP COLUMN byAuftragstyp");
  }
  CTkDb tkdb;
  tkdb.OpenJetDb("alt", temp.Path(), false, false);
  auto db = Registered("alt")->GetDatabase();
  const size_t columns = db->Columns("T_Auftrag").size();
  auto field = detail::Fields(db, "T_Auftrag").Item("byAuftragstyp");
  EXPECT_EQ(field.declared_type, "TINYINT");
  auto rows = db->Query("SELECT byAuftragstyp FROM T_Auftrag");
  auto rs = detail::RecordsetAccess::Make(db, "", rows);
  EXPECT_EQ(rs->Fields("byAuftragstyp").ToByte(), 0);

  // A second open, also a borrowing one, adds nothing.
  CTkDb again;
  again.OpenJetDb("alt", temp.Path(), false, false);
  EXPECT_EQ(db->Columns("T_Auftrag").size(), columns);
}

TEST(CTkDb, WorkspaceTransactionsCommitAndRollBack) {
  ztktest::TempDb temp;
  CTkDb tkdb;
  tkdb.OpenJetDb("tx", temp.Path(), false, false);
  auto ws = tkdb.Ws();
  auto db = Registered("tx")->GetDatabase();
  ws->BeginTrans();
  db->Execute("INSERT INTO T_MsgOrderDokument (stUId) VALUES ('weg')");
  ws->Rollback();
  ws->BeginTrans();
  db->Execute("INSERT INTO T_MsgOrderDokument (stUId) VALUES ('bleibt')");
  ws->CommitTrans();
  auto rs =
      detail::RecordsetAccess::Make(db, "", db->Query("SELECT stUId FROM T_MsgOrderDokument"));
  ASSERT_EQ(rs->RecordCount(), 1);
  EXPECT_EQ(rs->Fields("stUId").ToString(), "bleibt");
  tkdb.CloseDb();
  try {
    ws->BeginTrans();
    FAIL();
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 3420);
  }
}

TEST(UIdGenerator, UniqueAndInIssueOrder) {
  auto& gen = detail::UIdGenerator::Instance();
  std::set<std::string> seen;
  std::string previous;
  for (int i = 0; i < 10000; ++i) {
    std::string uid = gen.NewUId();
    EXPECT_TRUE(seen.insert(uid).second) << uid;
    EXPECT_LT(previous, uid);
    previous = uid;
  }
  EXPECT_LE(previous.size(), 50u);  // fits the stUId columns
  // Microseconds since 1970, the process tag and the counter, in fixed-width
  // hex, so that text order is issue order.
  EXPECT_TRUE(std::regex_match(previous, std::regex("[0-9A-F]{13}-[0-9A-F]{8}-[0-9A-F]{8}")))
      << previous;
  const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(
                          std::chrono::system_clock::now().time_since_epoch())
                          .count();
  const long long issued = std::stoll(previous.substr(0, 13), nullptr, 16);
  EXPECT_LE(issued, micros);
  EXPECT_GT(issued, micros - 60'000'000);
}

TEST(UIdGenerator, DistinctAcrossProcesses) {
  int pipefd[2];
  ASSERT_EQ(pipe(pipefd), 0);
  const pid_t child = fork();
  if (child == 0) {
    // A child that inherited the parent's generator must still differ.
    std::string uid = detail::UIdGenerator::Instance().NewUId();
    ssize_t ignored = write(pipefd[1], uid.data(), uid.size());
    (void)ignored;
    _exit(0);
  }
  const std::string mine = detail::UIdGenerator::Instance().NewUId();
  char buf[64] = {};
  ssize_t n = read(pipefd[0], buf, sizeof buf);
  waitpid(child, nullptr, 0);
  ASSERT_GT(n, 0);
  EXPECT_NE(std::string(buf, static_cast<size_t>(n)), mine);
}

// A list hands out records connected to its client as the client stands at
// that moment: closed, to nothing; opened again on another file, to that file.
TEST(CTkDb, ListItemsConnectToTheClientAsItStandsWhenHandedOut) {
  ztktest::TempDb one, two;
  CTkDb tkdb;
  tkdb.OpenJetDb("items", one.Path(), false, false);
  const auto a = ztktest::CreateOrder("items", {.nr = 1});
  ztktest::CreateOrder("items", {.nr = 2});
  CAuftragListe orders;
  orders.ConnectStorage("items");
  orders.ReadByDone(false);
  ASSERT_EQ(orders.Count(), 2);
  auto item = orders.MoveFirst();
  item->ReadById(a->Id());
  EXPECT_EQ(item->Nr(), 1);

  tkdb.CloseDb();
  item = orders.MoveNext();
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(ztktest::ErrorNumberOf([&] { item->ReadById(a->Id()); }), 91);

  CTkDb again;
  again.OpenJetDb("items", two.Path(), false, false);
  const auto other = ztktest::CreateOrder("items", {.nr = 7});
  item = orders.MoveFirst();
  item->ReadById(other->Id());
  EXPECT_EQ(item->Nr(), 7);
  again.CloseDb();
}
