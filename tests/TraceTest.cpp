// What a host sees of the statements its records run: each one traced once,
// as the text its server reads, bound where the engine could bind every
// value with its literal's effect and sent as text otherwise.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "Engines.h"
#include "TestData.h"
#include "ztkdb/CAuftrag.h"
#include "ztkdb/CMeldungListe.h"
#include "ztkdb/Error.h"
#include "ztkdb/Trace.h"

using namespace ZTkDb;

namespace {

bool CacheOff() {
  const char* setting = std::getenv("ZTKDB_STATEMENT_CACHE");
  return setting && std::strcmp(setting, "0") == 0;
}

class Traced : public ::testing::TestWithParam<ztktest::Engine> {
 protected:
  void SetUp() override {
    ZTKTEST_OPEN_ENGINE(db, tkdb, "trc");
    SetStatementTrace([this](const StatementTrace& t) { seen.push_back(t); });
  }
  void TearDown() override { SetStatementTrace({}); }

  // The traces whose text starts with `head`.
  std::vector<StatementTrace> Starting(const std::string& head) const {
    std::vector<StatementTrace> out;
    for (const auto& t : seen) {
      if (t.text.rfind(head, 0) == 0) out.push_back(t);
    }
    return out;
  }

  ztktest::EngineDb db{GetParam()};
  CTkDb tkdb;
  std::vector<StatementTrace> seen;
};

INSTANTIATE_TEST_SUITE_P(Engines, Traced, ztktest::AllEngines(), ztktest::EngineName);

TEST_P(Traced, EachStatementOnceWithItsTextAndHowItRan) {
  auto order = ztktest::CreateOrder("trc", {});
  for (const char* text : {"Halle 7", "O'Brien \\ #x# ? 24.11.2026 -- ; ä😀", "Halle 5"}) {
    order->Auftrag(text);
    order->Update();
    order->ReadById(order->Id());
    EXPECT_EQ(order->Auftrag(), text);
  }
  const auto updates = Starting("UPDATE T_Auftrag SET T_Auftrag.stUId = '");
  ASSERT_EQ(updates.size(), 3u);
  // The text is the template filled with the literals, whatever ran.
  EXPECT_NE(updates[0].text.find("T_Auftrag.stAuftrag = 'Halle 7'"), std::string::npos);
  EXPECT_NE(updates[1].text.find("'O''Brien \\ #x# ? 24.11.2026 -- ; ä😀'"), std::string::npos);
  for (const auto& u : updates) {
    EXPECT_EQ(u.rows, 1);
    EXPECT_GE(u.milliseconds, 0);
    EXPECT_EQ(u.engine, GetParam() == ztktest::Engine::kSqliteFile   ? "SQLite"
                        : GetParam() == ztktest::Engine::kSqliteOdbc ? "SQLite"
                        : GetParam() == ztktest::Engine::kMariaDb    ? "MariaDB"
                                                                     : "PostgreSQL");
  }
  // Plain values are bound; a text another step or a reading could take
  // for more than text goes as text, and so does everything without the
  // cache.
  EXPECT_EQ(updates[0].bound, !CacheOff());
  EXPECT_FALSE(updates[1].bound);
  EXPECT_EQ(updates[2].bound, !CacheOff());
  // Reads by key: bound where the driver describes a changed table anew.
  const auto reads = Starting("SELECT T_Auftrag.*, T_AuftragMeldung.lMeldungId FROM T_Auftrag");
  ASSERT_FALSE(reads.empty());
  const bool readsBound = !CacheOff() && (GetParam() == ztktest::Engine::kSqliteFile ||
                                          GetParam() == ztktest::Engine::kPostgres);
  for (const auto& r : reads) {
    EXPECT_EQ(r.bound, readsBound) << r.text;
    EXPECT_EQ(r.rows, 1);
  }
}

TEST_P(Traced, AFailedStatementIsTracedWithoutRowsAndTheSinkCanBeRemoved) {
  auto order = ztktest::CreateOrder("trc", {});
  seen.clear();
  // The prefix goes in unescaped: the server's reading refuses a second statement.
  EXPECT_NE(ztktest::ErrorNumberOf([&] { order->ReadByNr(1, "x'; DELETE FROM T_Auftrag; --"); }),
            0);
  ASSERT_EQ(seen.size(), 1u);
  EXPECT_EQ(seen[0].rows, -1);
  EXPECT_FALSE(seen[0].bound);
  EXPECT_NE(seen[0].text.find("stNrVorsatz = 'x'; DELETE FROM T_Auftrag; --'"), std::string::npos);
  SetStatementTrace({});
  order->ReadById(order->Id());
  EXPECT_EQ(seen.size(), 1u);
  // A sink that throws does not fail the statement.
  SetStatementTrace([](const StatementTrace&) { throw std::runtime_error("sink"); });
  order->ReadById(order->Id());
  EXPECT_NE(order->Id(), 0);
}

// A list on the server is read in chunks through a cursor, which takes
// its text; Requery runs the same statement with the same size.
TEST_P(Traced, RequeryRunsTheListsStatementAgain) {
  ztktest::CreateReport("trc", {});
  CMeldungListe list;
  list.ConnectStorage("trc");
  list.ReadAll();
  ASSERT_EQ(list.Count(), 1);
  ztktest::CreateReport("trc", {});
  list.Requery();
  EXPECT_EQ(list.Count(), 2);
  std::vector<StatementTrace> reads;
  for (const auto& t : Starting("SELECT T_Meldung.* FROM T_Meldung")) {
    if (t.text.find("WHERE") == std::string::npos) reads.push_back(t);
  }
  ASSERT_EQ(reads.size(), 2u);
  EXPECT_EQ(reads[0].text, reads[1].text);
  EXPECT_EQ(reads[0].bound, reads[1].bound);
}

}  // namespace
