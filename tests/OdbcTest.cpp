#include <gtest/gtest.h>

#include "Engines.h"
#include "TestData.h"
#include "TestSupport.h"
#include "connection/ModuleSchema.h"
#include "connection/WorkspaceNames.h"
#include "engine/odbc/OdbcDatabase.h"
#include "ztkdb/CAuftragListe.h"
#include "ztkdb/CMsgOrderDokument.h"
#include "ztkdb/CMsgOrderDokumentListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using ztktest::ErrorNumberOf;

namespace {

class TwoConnections : public ::testing::TestWithParam<ztktest::Engine> {
 protected:
  void SetUp() override {
    ZTKTEST_OPEN_ENGINE(db, first, "erster");
    db.OpenAgain(second, "zweiter");
  }
  ztktest::EngineDb db{GetParam()};
  CTkDb first;
  CTkDb second;
  ztktest::CapturedBoxes boxes;
};

// The error a raw statement raises on the client's engine.
Error ErrorOf(const std::string& client, const std::string& sql) {
  try {
    ztktest::Scalar(client, sql);
  } catch (const Error& e) {
    return e;
  }
  return Error(0, "", "");
}

// A server database of its own (PostgreSQL or MariaDB), empty, dropped
// afterwards.
class ServerScratch {
 public:
  explicit ServerScratch(bool maria) : maria_(maria) {
    if (Connect("x").empty()) return;
    name_ = "ztk_scratch_" + std::to_string(getpid());
    Admin()->ExecuteRaw(Drop());
    Admin()->ExecuteRaw("CREATE DATABASE " + name_);
  }
  ~ServerScratch() {
    if (name_.empty()) return;
    try {
      Admin()->ExecuteRaw(Drop());
    } catch (const Error&) {
    }
  }
  std::string Connect() const { return Connect(name_); }
  bool Available() const { return !name_.empty(); }

 private:
  std::string Connect(const std::string& db) const {
    return maria_ ? ztktest::MariaDbConnectString(db) : ztktest::PostgresConnectString(db);
  }
  std::shared_ptr<detail::OdbcDatabase> Admin() const {
    return detail::OdbcDatabase::Open(Connect(maria_ ? "mysql" : "postgres"), false);
  }
  std::string Drop() const {
    return "DROP DATABASE IF EXISTS " + name_ + (maria_ ? "" : " WITH (FORCE)");
  }
  bool maria_;
  std::string name_;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Engines, TwoConnections, ztktest::AllEngines(), ztktest::EngineName);

TEST_P(TwoConnections, WriteOnOneIsSeenByAListOnTheOtherAndTheUIdGuardSpansBoth) {
  auto mine = ztktest::CreateOrder("erster", {.nr = 1, .text = "C:\\Ablage\\O'Neil's \"Tür\""});
  CAuftragListe theirs;
  theirs.ConnectStorage("zweiter");
  theirs.ReadByDone(false, osByOrderNumber);
  ASSERT_EQ(theirs.Count(), 1);
  auto theirCopy = theirs.MoveFirst();
  EXPECT_EQ(theirCopy->Auftrag(), "C:\\Ablage\\O'Neil's \"Tür\"");

  theirCopy->Auftrag("von der anderen Verbindung");
  theirCopy->Update();
  EXPECT_TRUE(boxes.boxes.empty());
  mine->Auftrag("veraltet");
  mine->Update();
  ASSERT_EQ(boxes.boxes.size(), 1u);
  EXPECT_EQ(boxes.boxes[0].text, "CAuftrag.Update fehlgeschlagen. Bitte an TORQ melden!");
  mine->ReadById(mine->Id());
  EXPECT_EQ(mine->Auftrag(), "von der anderen Verbindung");
}

// Another session drops a column and adds it again, which moves it to the
// end: statements prepared before read and write every column by its name
// afterwards, not by where it used to stand.
TEST_P(TwoConnections, AColumnMovedByTheOtherConnectionIsStillReadByItsName) {
  CMsgOrderDokument link;
  link.ConnectStorage("erster");
  link.CreateNew(2, 3, "\\\\srv\\ablage", "plan.pdf");
  const int32_t id = link.Id();
  for (int i = 0; i < 3; ++i) link.ReadById(id);  // prepared and remembered
  CMsgOrderDokumentListe links;
  links.ConnectStorage("erster");
  links.ReadByOrderId(3);
  ASSERT_EQ(links.Count(), 1);

  ztktest::Exec("zweiter", "ALTER TABLE T_MsgOrderDokument DROP COLUMN stPfad");
  ztktest::Exec("zweiter", "ALTER TABLE T_MsgOrderDokument ADD stPfad VARCHAR(255)");
  ztktest::Exec("zweiter", "UPDATE T_MsgOrderDokument SET stPfad = 'neu'");
  for (int i = 0; i < 2; ++i) {
    SCOPED_TRACE(i);
    link.ReadById(id);
    EXPECT_EQ(link.Pfad(), "neu");
    EXPECT_EQ(link.Datei(), "plan.pdf");
    EXPECT_EQ(link.MsgId(), 2);
    EXPECT_EQ(link.OrderId(), 3);
    links.Requery();
    ASSERT_EQ(links.Count(), 1);
    EXPECT_EQ(links.MoveFirst()->Datei(), "plan.pdf");
  }
  link.Datei("plan2.pdf");
  link.Update();
  auto back = ztktest::ReadBack<CMsgOrderDokument>("zweiter", id);
  EXPECT_EQ(back->Pfad(), "neu");
  EXPECT_EQ(back->Datei(), "plan2.pdf");
  EXPECT_EQ(back->MsgId(), 2);

  // The same on the widest table, read by id and through a list.
  auto order = ztktest::CreateOrder("erster", {.nr = 7, .text = "Tür klemmt"});
  for (int i = 0; i < 3; ++i) order->ReadById(order->Id());
  CAuftragListe orders;
  orders.ConnectStorage("erster");
  orders.ReadByDone(false);
  ztktest::Exec("zweiter", "ALTER TABLE T_Auftrag DROP COLUMN stOrt");
  ztktest::Exec("zweiter", "ALTER TABLE T_Auftrag ADD stOrt VARCHAR(255)");
  ztktest::Exec("zweiter", "UPDATE T_Auftrag SET stOrt = 'Halle 7'");
  order->ReadById(order->Id());
  EXPECT_EQ(order->Ort(), "Halle 7");
  EXPECT_EQ(order->Auftrag(), "Tür klemmt");
  EXPECT_EQ(order->Nr(), 7);
  orders.Requery();
  ASSERT_EQ(orders.Count(), 1);
  EXPECT_EQ(orders.MoveFirst()->Ort(), "Halle 7");
  order->Ort("Halle 5");
  order->Update();
  auto orderBack = ztktest::ReadBack<CAuftrag>("zweiter", order->Id());
  EXPECT_EQ(orderBack->Ort(), "Halle 5");
  EXPECT_EQ(orderBack->Auftrag(), "Tür klemmt");
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_P(TwoConnections, BadStatementsReportClearErrors) {
  const Error table = ErrorOf("erster", "SELECT * FROM T_Nirgends");
  EXPECT_EQ(table.Number(), 3078);
  const Error column = ErrorOf("erster", "SELECT lNirgends FROM T_Auftrag");
  EXPECT_EQ(column.Number(), 3061);
  const Error syntax = ErrorOf("erster", "SELEKT 1");
  EXPECT_EQ(syntax.Number(), 3075);
  if (db.IsPostgres()) {
    EXPECT_NE(table.Description().find("[42P01]"), std::string::npos) << table.Description();
    EXPECT_NE(syntax.Description().find("[42601]"), std::string::npos) << syntax.Description();
  }
  if (db.Which() == ztktest::Engine::kMariaDb) {
    EXPECT_NE(table.Description().find("(native 1146)"), std::string::npos) << table.Description();
    EXPECT_NE(syntax.Description().find("(native 1064)"), std::string::npos)
        << syntax.Description();
  }
  ztktest::Exec("erster", "INSERT INTO T_Auftrag (stUId) VALUES ('doppelt')");
  EXPECT_EQ(ErrorNumberOf([] {
              ztktest::Exec("zweiter", "INSERT INTO T_Auftrag (stUId) VALUES ('doppelt')");
            }),
            3022);
  ztktest::Exec("erster", "DELETE FROM T_Auftrag");
  // Two statements in one text never reach the server.
  ztktest::CreateOrder("erster", {});
  EXPECT_EQ(ErrorOf("erster", "SELECT 1 FROM T_Auftrag; DELETE FROM T_Auftrag").Number(), 3129);
  EXPECT_EQ(ztktest::Scalar("zweiter", "SELECT count(*) FROM T_Auftrag").ToLong(), 1);
}

TEST(Odbc, FailedOpensShowTheBoxAndLeaveNoConnection) {
  ztktest::CapturedBoxes boxes;
  CTkDb tkdb;
  tkdb.OpenOdbcDb("kaputt", "Driver={Kein Treiber};Database=x;", false, false);
  std::string unreachable = ztktest::PostgresConnectString("ztk");
  if (!unreachable.empty()) {
    unreachable.replace(unreachable.find("Servername=") + 11, 1, "/nirgends/");
    tkdb.OpenOdbcDb("kaputt", unreachable, false, false);
    tkdb.OpenOdbcDb("kaputt", ztktest::PostgresConnectString("gibt_es_nicht"), false, false);
  }
  ASSERT_EQ(boxes.boxes.size(), unreachable.empty() ? 1u : 3u);
  for (const auto& box : boxes.boxes) {
    EXPECT_TRUE(box.text.starts_with("CTkDb.OpenOdbcDb\n")) << box.text;
    EXPECT_TRUE(box.critical);
    EXPECT_NE(box.text.find('['), std::string::npos) << box.text;  // the SQLSTATE
  }
  if (!unreachable.empty()) {
    EXPECT_NE(boxes.boxes[1].text.find("08001"), std::string::npos) << boxes.boxes[1].text;
    EXPECT_NE(boxes.boxes[2].text.find("gibt_es_nicht"), std::string::npos) << boxes.boxes[2].text;
  }
  EXPECT_EQ(tkdb.DbPath(), "");
  EXPECT_FALSE(tkdb.Ws());
}

TEST(Odbc, OracleMarkerInAnyCaseSetsTheFlagForGood) {
  const std::string pg = ztktest::PostgresConnectString("ztk_template");
  if (pg.empty()) GTEST_SKIP() << "no PostgreSQL cluster";
  detail::ProcessFlags::oracle = false;
  {
    CTkDb tkdb;
    tkdb.OpenOdbcDb("orakel", pg + "zantoOracle=1;", false, true);
    EXPECT_NE(tkdb.DbPath(), "");
  }
  EXPECT_TRUE(detail::ProcessFlags::oracle);
  ztktest::TempDb file;
  CTkDb jet;
  jet.OpenJetDb("jet", file.Path(), false, false);
  EXPECT_TRUE(detail::ProcessFlags::oracle);
  detail::ProcessFlags::oracle = false;
}

TEST(Odbc, ModuleSchemaOnAnEmptyServerDatabaseAllOrNothing) {
  // MariaDB holds the other tests' databases beside this one: only its own
  // tables count.
  for (bool maria : {false, true}) {
    ServerScratch scratch(maria);
    if (!scratch.Available()) {
      if (ztktest::EnginesRequired()) FAIL() << "no server for the scratch database";
      GTEST_SKIP() << "no server for the scratch database";
    }
    detail::CreateModuleSchemaOdbc(scratch.Connect());
    auto db = detail::OdbcDatabase::Open(scratch.Connect(), false);
    EXPECT_EQ(db->TableNames().size(), 6u);
    EXPECT_EQ(ErrorNumberOf([&] { detail::CreateModuleSchemaOdbc(scratch.Connect()); }), 3204);
    CTkDb tkdb;
    tkdb.OpenOdbcDb("schema", scratch.Connect(), false, false);
    ztktest::CreateOrder("schema", {.nr = 7});
    EXPECT_EQ(ztktest::Scalar("schema", "SELECT count(*) FROM T_Auftrag").ToLong(), 1);
  }

  // The same on SQLite through its driver.
  ztktest::TempDb file(/*withSchema=*/false);
  detail::CreateModuleSchemaOdbc("Driver=SQLite3;Database=" + file.Path() + ";");
  ztktest::CapturedBoxes boxes;
  CTkDb tkdb;
  tkdb.OpenJetDb("neu", file.Path(), false, false);
  EXPECT_TRUE(boxes.boxes.empty());
  EXPECT_EQ(ztktest::Scalar("neu", "SELECT count(*) FROM T_Meldung").ToLong(), 0);
}

TEST(Odbc, ScriptSplittingKeepsMultiLineStatementsAndDropsComments) {
  const auto statements = detail::SplitScript(
      "-- comment\nCREATE TABLE a (\n  x INTEGER\n);\n\nCREATE INDEX i ON a (x);\n");
  ASSERT_EQ(statements.size(), 2u);
  EXPECT_EQ(statements[0], "CREATE TABLE a (\n  x INTEGER\n)");
  EXPECT_EQ(statements[1], "CREATE INDEX i ON a (x)");
}
