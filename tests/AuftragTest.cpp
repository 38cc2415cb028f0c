#include <gtest/gtest.h>
#include <sqlite3.h>

#include "Engines.h"
#include "TestData.h"
#include "TestSupport.h"
#include "ztkdb/CAuftrag.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using ztktest::CreateOrder;

namespace {

class Auftraege : public ztktest::EngineTest {
 protected:
  Auftraege() : EngineTest("auf") {}
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Auftraege, ztktest::AllEngines(), ztktest::EngineName);

TEST_P(Auftraege, CreateThatWritesNoRowShowsTheNumberedCreateBox) {
  // Something on the server swallows the insert: the statement succeeds
  // and writes nothing. MariaDB has no way to do that quietly.
  switch (db.Which()) {
    case ztktest::Engine::kMariaDb:
      GTEST_SKIP() << "no trigger or rule drops an insert without an error";
    case ztktest::Engine::kPostgres:
    case ztktest::Engine::kPgBouncer:
      ztktest::Exec("auf", "CREATE RULE swallow AS ON INSERT TO T_Auftrag DO INSTEAD NOTHING");
      break;
    default: {
      // Beside the library: a trigger body is more than one statement.
      sqlite3* raw = nullptr;
      ASSERT_EQ(sqlite3_open(db.FilePath().c_str(), &raw), SQLITE_OK);
      EXPECT_EQ(sqlite3_exec(raw,
                             "CREATE TRIGGER swallow BEFORE INSERT ON T_Auftrag BEGIN SELECT "
                             "RAISE(IGNORE); END",
                             nullptr, nullptr, nullptr),
                SQLITE_OK);
      sqlite3_close(raw);
    }
  }
  auto order = CreateOrder("auf", {.nr = 3});
  ASSERT_EQ(boxes.boxes.size(), 1u);
  EXPECT_EQ(boxes.boxes[0].text, "CAuftrag.Create fehlgeschlagen. Bitte an TORQ melden!");
  EXPECT_EQ(boxes.boxes[0].title, "Zanto");
  EXPECT_TRUE(boxes.boxes[0].critical);
  EXPECT_EQ(boxes.boxes[0].member, "CAuftrag.CreateNew7");
  EXPECT_EQ(boxes.boxes[0].number, errInsertFailed);
  EXPECT_EQ(order->Id(), 0);  // nothing to read back
  EXPECT_EQ(Rows("T_Auftrag"), 0);
}

TEST_P(Auftraege, GetLastNrIsTheMaximumOverAllPrefixes) {
  auto order = Connected<CAuftrag>();
  EXPECT_EQ(order->GetLastNr(), 0);
  CreateOrder("auf", {.nr = 7, .vorsatz = "A"});
  CreateOrder("auf", {.nr = 12, .vorsatz = "B"});
  CreateOrder("auf", {.nr = 9, .vorsatz = "A"});
  EXPECT_EQ(order->GetLastNr(), 12);
  EXPECT_EQ(order->Id(), 0);
}

TEST_P(Auftraege, LinkToAReportAndRemoveIt) {
  auto order = CreateOrder("auf", {});
  order->Connect2Msg(7);
  EXPECT_EQ(order->MeldungId(), 7);
  auto again = Read<CAuftrag>(order->Id());
  EXPECT_EQ(again->MeldungId(), 7);

  again->DisConnectFromMsg();
  EXPECT_EQ(again->MeldungId(), 0);
  EXPECT_EQ(Rows("T_AuftragMeldung"), 0);
  again->ReadById(order->Id());
  EXPECT_EQ(again->MeldungId(), 0);
  again->DisConnectFromMsg();  // removing a missing link is no error
  again->Connect2Msg(4);
  again->ReadById(order->Id() + 100);  // a missing row clears the link field too
  EXPECT_EQ(again->MeldungId(), 0);
  ztktest::Exec("auf", "DELETE FROM T_AuftragMeldung");

  // A second Connect2Msg adds a second row; Delete leaves the links alone.
  order->Connect2Msg(8);
  order->Connect2Msg(8);
  EXPECT_EQ(Rows("T_AuftragMeldung", "lMeldungId = 8"), 2);
  order->Delete();
  EXPECT_EQ(order->Id(), 0);
  EXPECT_EQ(Rows("T_Auftrag"), 0);
  EXPECT_EQ(Rows("T_AuftragMeldung"), 2);
}

TEST_P(Auftraege, ReadsByNumberPrefixAndObjectHistory) {
  CreateOrder("auf", {.nr = 3, .vorsatz = "A", .text = "A3"});
  CreateOrder("auf", {.nr = 3, .vorsatz = "B", .text = "B3"});
  CreateOrder("auf", {.nr = 4,
                      .vorsatz = "A",
                      .obj_id = 55,
                      .obj_typ = sotTechObj,
                      .herkunft = hetTechnik,
                      .historie = 22,
                      .text = "Wartung"});
  CreateOrder("auf", {.nr = 5,
                      .erledigt = true,
                      .erledigt_datum = Date::Today(),
                      .obj_id = 55,
                      .obj_typ = sotTechObj,
                      .herkunft = hetTechnik,
                      .historie = 23});

  auto order = Connected<CAuftrag>();
  order->ReadByNr(3, "B");
  EXPECT_EQ(order->Auftrag(), "B3");
  order->ReadByNrOhneVorsatz(4);
  EXPECT_EQ(order->Auftrag(), "Wartung");
  order->ReadByNr(3, "C");
  EXPECT_EQ(order->Id(), 0);
  EXPECT_EQ(order->Auftrag(), "");

  // The object-history read selects no link: MeldungId stays as it was.
  order->MeldungId(99);
  order->ReadByObjHist(55, 22);
  EXPECT_EQ(order->Nr(), 4);
  EXPECT_EQ(order->MeldungId(), 99);
  order->ReadByObjHist(55, 23);  // done orders do not qualify
  EXPECT_EQ(order->Id(), 0);
  EXPECT_EQ(order->MeldungId(), 0);
}
