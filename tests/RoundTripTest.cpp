// Round trips per operation on the servers, counted by a proxy between the
// library and the server's socket: across a network each one costs a
// latency, and dozens of clients share the server.
#include <gtest/gtest.h>
#include <sql.h>
#include <sqlext.h>
#include <unistd.h>

#include <filesystem>
#include <regex>

#include "CountingProxy.h"
#include "Engines.h"
#include "TestData.h"
#include "TestSupport.h"
#include "engine/odbc/OdbcDatabase.h"
#include "ztkdb/CAuftrag.h"
#include "ztkdb/CAuftragListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Workspace.h"

using namespace ZTkDb;
using ztktest::Engine;

namespace {

class RoundTrips : public ::testing::TestWithParam<Engine> {
 protected:
  void SetUp() override {
    ZTKTEST_NEED_ENGINE(db_.Create());
    static int serial = 0;
    dir_ = std::filesystem::temp_directory_path() /
           ("ztk-proxy-" + std::to_string(::getpid()) + "-" + std::to_string(++serial));
    std::filesystem::create_directories(dir_);
    const std::string& connect = db_.ConnectString();
    std::smatch m;
    if (std::regex_search(connect, m, std::regex("Servername=([^;]*);Port=([0-9]+)"))) {
      // On the server's own port number: no pooler is seen.
      const std::string socket = "/.s.PGSQL." + m[2].str();
      proxy_ =
          std::make_unique<ztktest::CountingProxy>(dir_.string() + socket, m[1].str() + socket);
      connect_ = m.prefix().str() + "Servername=" + dir_.string() + ";Port=" + m[2].str() +
                 m.suffix().str();
    } else {
      ASSERT_TRUE(std::regex_search(connect, m, std::regex("Socket=([^;]*)")));
      proxy_ = std::make_unique<ztktest::CountingProxy>(dir_.string() + "/mysqld.sock", m[1].str());
      connect_ = m.prefix().str() + "Socket=" + dir_.string() + "/mysqld.sock" + m.suffix().str();
    }
  }
  void TearDown() override {
    proxy_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(dir_, ignored);
  }

  template <typename Run>
  int64_t Count(Run&& run) {
    proxy_->Reset();
    run();
    return proxy_->RoundTrips();
  }

  // What the driver itself costs to connect and disconnect.
  int64_t DriverConnect() {
    SQLHENV env = nullptr;
    SQLHDBC dbc = nullptr;
    SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &env);
    SQLSetEnvAttr(env, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, env, &dbc);
    std::string text = connect_;
    const int64_t trips = Count([&] {
      EXPECT_TRUE(
          SQL_SUCCEEDED(SQLDriverConnect(dbc, nullptr, reinterpret_cast<SQLCHAR*>(text.data()),
                                         SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT)));
      SQLDisconnect(dbc);
    });
    SQLFreeHandle(SQL_HANDLE_DBC, dbc);
    SQLFreeHandle(SQL_HANDLE_ENV, env);
    return trips;
  }

  ztktest::EngineDb db_{GetParam()};
  std::filesystem::path dir_;
  std::unique_ptr<ztktest::CountingProxy> proxy_;
  std::string connect_;
};

INSTANTIATE_TEST_SUITE_P(Engines, RoundTrips,
                         ::testing::Values(Engine::kPostgres, Engine::kMariaDb),
                         ztktest::EngineName);

TEST_P(RoundTrips, EachOperationCostsWhatTheServerMust) {
  const bool pg = GetParam() == Engine::kPostgres;
  const int64_t driver = DriverConnect();
  CTkDb tkdb;
  // The session's set-up and its check are one text.
  EXPECT_LE(Count([&] { tkdb.OpenOdbcDb("rt", connect_, false, false); }), driver + 1);
  ASSERT_FALSE(tkdb.DbPath().empty());

  // First use on a connection: the table's columns looked up once, in the
  // server's own case; the statements prepared; no catalogue query for the
  // result (PostgreSQL: the driver's schema query, one lookup, a prepare and
  // its description per statement).
  std::unique_ptr<CAuftrag> order;
  EXPECT_LE(Count([&] { order = ztktest::CreateOrder("rt", {.nr = 1}); }), pg ? 8 : 4);

  // Warm: what the statements themselves need.
  EXPECT_EQ(Count([&] { order = ztktest::CreateOrder("rt", {.nr = 2}); }), 2);  // insert, reread
  CAuftrag read;
  read.ConnectStorage("rt");
  read.ReadById(order->Id());
  EXPECT_EQ(Count([&] { read.ReadById(order->Id()); }), 1);
  read.Update();
  EXPECT_EQ(Count([&] { read.Update(); }), 1);
  CAuftragListe list;
  list.ConnectStorage("rt");
  list.ReadByNr(1);
  EXPECT_EQ(Count([&] { list.ReadByNr(2); }), 1);
  EXPECT_EQ(list.Count(), 1);

  // A long list on PostgreSQL, whose driver would otherwise hold all of it:
  // the bounded run that proves it long, then a cursor opened with its first
  // chunk of 2,000 rows, a round trip per further chunk, and the commit.
  auto ws = tkdb.Ws();
  ws->BeginTrans();
  for (int i = 0; i < 2100; ++i) ztktest::CreateOrder("rt", {.nr = 100 + i});
  ws->CommitTrans();
  EXPECT_EQ(Count([&] { list.ReadAll(); }), pg ? 4 : 1);
  EXPECT_EQ(list.Count(), 2102);
  EXPECT_EQ(ztktest::WalkNumbers(list).back(), 2199);
  EXPECT_EQ(Count([&] { list.ReadAll(); }), pg ? 4 : 1);

  read.ReadById(order->Id());
  read.Delete();
  order = ztktest::CreateOrder("rt", {.nr = 3});
  read.ReadById(order->Id());
  EXPECT_EQ(Count([&] { read.Delete(); }), 1);
  // Closing frees the prepared statements with the session, not each with a
  // round trip of its own.
  EXPECT_LE(Count([&] { tkdb.CloseDb(); }), 1);
}

// Lists inside a host's transaction on every server configuration: the
// cursor of one list never stands in the way of the next, and a rollback
// takes the transaction's rows back.
class ServerLists : public ::testing::TestWithParam<Engine> {};

INSTANTIATE_TEST_SUITE_P(Engines, ServerLists, ztktest::ServerEngines(), ztktest::EngineName);

TEST_P(ServerLists, ListsInsideATransactionAndAfterIt) {
  ztktest::EngineDb db(GetParam());
  CTkDb tkdb;
  ZTKTEST_OPEN_ENGINE(db, tkdb, "tx");
  for (int i = 0; i < 3; ++i) ztktest::CreateOrder("tx", {.nr = 1 + i});
  CAuftragListe list;
  list.ConnectStorage("tx");
  auto ws = tkdb.Ws();
  ws->BeginTrans();
  list.ReadAll();
  EXPECT_EQ(list.Count(), 3);
  ztktest::CreateOrder("tx", {.nr = 50});
  list.ReadByNr(50);
  EXPECT_EQ(list.Count(), 1);
  list.ReadAll();
  EXPECT_EQ(list.Count(), 4);
  ws->Rollback();
  list.ReadAll();
  EXPECT_EQ(list.Count(), 3);
  // A long result inside a transaction, twice: the cursors stand in nobody's
  // way, and a text that ends in a comment keeps it to itself.
  auto engine = ztktest::EngineOf("tx");
  ws->BeginTrans();
  for (int i = 0; i < 2; ++i) {
    const auto rows = engine->Query(
        "SELECT g.n FROM (SELECT 1 AS n) AS g CROSS JOIN T_Auftrag a CROSS JOIN T_Auftrag b "
        "CROSS JOIN T_Auftrag c CROSS JOIN T_Auftrag d CROSS JOIN T_Auftrag e CROSS JOIN "
        "T_Auftrag f CROSS JOIN T_Auftrag h CROSS JOIN T_Auftrag k -- 3^8 rows",
        ZTkDb::detail::ResultSize::kMany);
    EXPECT_EQ(rows->RowCount(), 6561);
  }
  ws->CommitTrans();
  EXPECT_EQ(engine->Query("SELECT lNr FROM T_Auftrag -- all", ZTkDb::detail::ResultSize::kMany)
                ->RowCount(),
            3);
  list.ReadByNr(2);
  ASSERT_EQ(list.Count(), 1);
  EXPECT_EQ(list.MoveFirst()->Nr(), 2);
}

}  // namespace

namespace {

// The set-up checks itself in its one round trip: a session whose bytes
// could end a string is refused, and says what to set.
TEST(SessionSetUp, MariaDbRefusesAClientCharacterSetOtherThanUtf8) {
  ztktest::EngineDb db(Engine::kMariaDb);
  CTkDb tkdb;
  const std::string why = db.Open(tkdb, "latin", "CHARSET=latin1;");
  if (why.find("MariaDb is") == 0 || why.find("no MariaDB") != std::string::npos) {
    if (ztktest::MustRun(why)) FAIL() << why;
    GTEST_SKIP() << why;
  }
  EXPECT_NE(why.find("could not be set to"), std::string::npos) << why;
  EXPECT_NE(why.find("CHARSET=utf8mb4"), std::string::npos) << why;
  EXPECT_TRUE(tkdb.DbPath().empty());
}

}  // namespace

namespace {

// Behind a pooler the library sets no lock wait of its own (it would stay on
// the shared server connection): the database's must be there, or the open
// says what the administrator sets.
TEST(SessionSetUp, BehindAPoolerTheDatabaseMustHaveALockWait) {
  ztktest::EngineDb db(Engine::kPgBouncer);
  ZTKTEST_NEED_ENGINE(db.Create());
  const auto admin = [&](const std::string& sql) {
    ZTkDb::detail::OdbcDatabase::Open(ztktest::PostgresConnectString("postgres"), false)
        ->ExecuteRaw(sql);
  };
  admin("ALTER DATABASE " + db.ServerDatabase() + " RESET lock_timeout");
  ztktest::CapturedBoxes boxes;
  CTkDb tkdb;
  tkdb.OpenOdbcDb("nowait", db.ConnectString(), false, false);
  ASSERT_EQ(boxes.boxes.size(), 1u);
  EXPECT_NE(boxes.boxes[0].text.find("SET lock_timeout = '5s'"), std::string::npos)
      << boxes.boxes[0].text;
  EXPECT_TRUE(tkdb.DbPath().empty());
  // Every other test through the pooler opens a database that has one.
}

}  // namespace
