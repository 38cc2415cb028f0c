// A server that ends a client's session (a restart, an administrator, a
// timeout): the client's objects go on by themselves on a new session,
// and no write is ever made twice or half.
#include <gtest/gtest.h>

#include "Engines.h"
#include "TestData.h"
#include "TestSupport.h"
#include "engine/RecordsetAccess.h"
#include "engine/odbc/OdbcDatabase.h"
#include "ztkdb/CAuftragListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"
#include "ztkdb/Workspace.h"

using namespace ZTkDb;
using ztktest::Engine;
using ztktest::ErrorNumberOf;

namespace {

class Reconnect : public ::testing::TestWithParam<Engine> {
 protected:
  void SetUp() override { ZTKTEST_OPEN_ENGINE(db, tkdb, "rc"); }

  // Ends the client's session from another one, as an administrator would.
  void EndSession() {
    const bool pg = db.IsPostgres();
    const int64_t id =
        ztktest::Scalar("rc", pg ? "SELECT pg_backend_pid()" : "SELECT CONNECTION_ID()").ToLong();
    auto admin = detail::OdbcDatabase::Open(
        pg ? ztktest::PostgresConnectString("postgres") : ztktest::MariaDbConnectString("mysql"),
        false);
    if (pg)
      admin->Query("SELECT pg_terminate_backend(" + std::to_string(id) + ")");
    else
      admin->ExecuteRaw("KILL " + std::to_string(id));
    // The server is done with it before the client speaks again.
    for (int i = 0; i < 100; ++i) {
      const std::string probe =
          pg ? "SELECT count(*) FROM pg_stat_activity WHERE pid = " + std::to_string(id)
             : "SELECT count(*) FROM information_schema.processlist WHERE id = " +
                   std::to_string(id);
      auto rows = admin->Query(probe);
      if (detail::RecordsetAccess::Make(admin, "", rows)->Fields(0).ToLong() == 0) return;
      usleep(20000);
    }
  }
  int64_t Orders() { return ztktest::Scalar("rc", "SELECT count(*) FROM T_Auftrag").ToLong(); }

  ztktest::EngineDb db{GetParam()};
  CTkDb tkdb;
  ztktest::CapturedBoxes boxes;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Reconnect, ztktest::ServerEngines(), ztktest::EngineName);

TEST_P(Reconnect, ReadsGoOnByThemselves) {
  ztktest::CreateOrder("rc", {.nr = 1});
  CAuftragListe orders;
  orders.ConnectStorage("rc");
  EndSession();
  orders.ReadByDone(false);
  EXPECT_EQ(orders.Count(), 1);
  EndSession();
  EXPECT_EQ(Orders(), 1);
}

TEST_P(Reconnect, AWriteLandsOnceOrNotAtAllAndTheNextOneLands) {
  ztktest::CreateOrder("rc", {.nr = 1});
  EndSession();
  const long number = ErrorNumberOf([] { ztktest::CreateOrder("rc", {.nr = 2}); });
  // Run again only where the server said the statement never ran;
  // otherwise the host hears of it.
  EXPECT_TRUE(number == 0 || number == 3146) << number;
  EXPECT_EQ(Orders(), number == 0 ? 2 : 1);
  ztktest::CreateOrder("rc", {.nr = 3});
  EXPECT_EQ(Orders(), number == 0 ? 3 : 2);
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_P(Reconnect, ASessionLostInATransactionLosesTheWholeTransaction) {
  ztktest::CreateOrder("rc", {.nr = 1});
  auto ws = tkdb.Ws();
  ws->BeginTrans();
  ztktest::CreateOrder("rc", {.nr = 2});
  EndSession();
  EXPECT_EQ(ErrorNumberOf([] { ztktest::CreateOrder("rc", {.nr = 3}); }), 3146);
  ws->Rollback();  // nothing left to roll back: quiet
  EXPECT_EQ(Orders(), 1);
  // And a commit after the loss says that nothing was written.
  ws->BeginTrans();
  ztktest::CreateOrder("rc", {.nr = 4});
  EndSession();
  EXPECT_NE(ErrorNumberOf([] { ztktest::CreateOrder("rc", {.nr = 5}); }), 0);
  EXPECT_EQ(ErrorNumberOf([&] { ws->CommitTrans(); }), 3146);
  EXPECT_EQ(Orders(), 1);
  ztktest::CreateOrder("rc", {.nr = 6});
  EXPECT_EQ(Orders(), 2);
}
