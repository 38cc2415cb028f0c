#include <gtest/gtest.h>

#include <functional>

#include "Engines.h"
#include "TestSupport.h"
#include "ztkdb/CMsgOrderDokument.h"
#include "ztkdb/CMsgOrderDokumentListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;

namespace {

class Dokumente : public ztktest::EngineTest {
 protected:
  Dokumente() : EngineTest("dok") {}

  std::unique_ptr<CMsgOrderDokument> Create(int32_t msg, int32_t order, const std::string& pfad,
                                            const std::string& datei) {
    auto d = std::make_unique<CMsgOrderDokument>();
    d->ConnectStorage("dok");
    d->CreateNew(msg, order, pfad, datei);
    return d;
  }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Dokumente, ztktest::AllEngines(), ztktest::EngineName);

TEST_P(Dokumente, ListCursorOverEmptyOneAndManyRows) {
  CMsgOrderDokumentListe list;
  list.ConnectStorage("dok");
  list.ReadAll();
  EXPECT_EQ(list.Count(), 0);
  EXPECT_FALSE(list.Bof());
  EXPECT_FALSE(list.Eof());
  EXPECT_EQ(list.MoveFirst(), nullptr);
  EXPECT_EQ(list.MoveNext(), nullptr);
  EXPECT_EQ(list.ItemByRsPos(), nullptr);
  EXPECT_EQ(list(1), nullptr);

  auto only = Create(7, 0, "p", "eins");
  list.ReadByMsgId(7);
  ASSERT_EQ(list.Count(), 1);
  EXPECT_EQ(list.ItemByRsPos()->Datei(), "eins");
  EXPECT_EQ(list.MoveNext(), nullptr);
  EXPECT_TRUE(list.Eof());

  for (int i = 0; i < 4; ++i) Create(0, 42, "p", "d" + std::to_string(i));
  list.ReadByOrderId(42);
  ASSERT_EQ(list.Count(), 4);
  EXPECT_EQ(list.AbsolutePosition(), 0);
  int walked = 0;
  for (auto item = list.ItemByRsPos(); item; item = list.MoveNext()) {
    EXPECT_EQ(item->OrderId(), 42);
    ++walked;
  }
  EXPECT_EQ(walked, 4);
  EXPECT_TRUE(list.Eof());
  auto last = list.MovePrevious();
  ASSERT_NE(last, nullptr);
  EXPECT_EQ(list.AbsolutePosition(), 3);

  // ReadByOrderId(0) lists the links that belong to no order
  list.ReadByOrderId(0);
  EXPECT_EQ(list.Count(), 1);
}

TEST_P(Dokumente, ItemsAreIndependentRecordsOfTheListsClient) {
  auto a = Create(0, 5, "p", "a");
  auto b = Create(0, 5, "p", "b");
  CMsgOrderDokumentListe list;
  list.ConnectStorage("dok");
  list.ReadByOrderId(5);
  auto item = list[b->Id()];
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(item->Datei(), "b");
  EXPECT_EQ(list.AbsolutePosition(), 1);
  item->Datei("b2");
  item->Update();  // the item has its own storage
  EXPECT_EQ(Rows("T_MsgOrderDokument", "stDatei = 'b2'"), 1);
  EXPECT_TRUE(boxes.boxes.empty());

  EXPECT_EQ(list.ItemByRecId(99999), nullptr);
  EXPECT_EQ(list.AbsolutePosition(), 1) << "a miss leaves the cursor";
}

TEST_P(Dokumente, RequerySeesRowsAddedByAnotherObject) {
  Create(0, 8, "p", "x");
  CMsgOrderDokumentListe list;
  list.ConnectStorage("dok");
  list.ReadByOrderId(8);
  EXPECT_EQ(list.Count(), 1);
  auto added = Create(0, 8, "p", "y");
  list.Requery();
  EXPECT_EQ(list.Count(), 2);
  EXPECT_EQ(list.AbsolutePosition(), 0);
  EXPECT_NE(list(added->Id()), nullptr);
  auto clone = list.RsClone();
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(clone->RecordCount(), 2);
}

TEST(DokumentListe, WithoutStorageRaises91) {
  CMsgOrderDokumentListe list;
  EXPECT_EQ(list.Count(), 0);
  try {
    list.ReadAll();
    FAIL();
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), errObjectNotSet);
  }
  // Each member names itself as the source.
  for (const auto& [member, call] : std::vector<std::pair<std::string, std::function<void()>>>{
           {"CMsgOrderDokumentListe.Requery", [&] { list.Requery(); }},
           {"CMsgOrderDokumentListe.AbsolutePosition", [&] { list.AbsolutePosition(1); }}}) {
    try {
      call();
      ADD_FAILURE() << member;
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), errObjectNotSet);
      EXPECT_EQ(e.Source(), member);
    }
  }
}
