// A primary with a streaming standby under synchronous replication, named
// together in one connection string: the primary dies, the standby takes
// over, and the clients' writers go on by themselves.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <set>
#include <thread>

#include "Engines.h"
#include "TestData.h"
#include "TestSupport.h"
#include "engine/dialect/ServerDialect.h"
#include "ztkdb/CAuftrag.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;

namespace {

TEST(Failover, WritersGoOnOnTheNewPrimaryAndNoAcknowledgedCreateIsLost) {
  if (ztktest::PostgresConnectString("postgres").empty()) {
    if (ztktest::EnginesRequired()) FAIL() << "no PostgreSQL cluster";
    GTEST_SKIP() << "no PostgreSQL cluster";
  }
  ztktest::TempDb dir(false);
  chmod(dir.Dir().c_str(), 0755);  // the servers run as another user
  const std::string primary = dir.Dir() + "/primary";
  const std::string standby = dir.Dir() + "/standby";
  const std::string script = "bash '" ZTKDB_SOURCE_DIR "/tests/pg_cluster' ";
  const auto run = [&](const std::string& args) {
    return std::system((script + args + " >/dev/null").c_str());
  };
  ASSERT_EQ(
      std::system(("PG_CLUSTER_NO_POOLER=1 " + script + "start '" + primary + "' 54341 >/dev/null")
                      .c_str()),
      0);
  struct Stop {
    std::function<int(const std::string&)> run;
    std::string a, b;
    ~Stop() {
      run("stop '" + a + "'");
      run("stop '" + b + "'");
    }
  } stop{run, primary, standby};
  ASSERT_EQ(run("standby '" + standby + "' 54341 '" + primary + "' 54341"), 0);
  // The library's own terms for two servers (on one port, in two folders).
  const std::string connect = "Driver={PostgreSQL Unicode};Servername=" + primary + "," + standby +
                              ";Port=54341,54341;Database=ztk_template;Username=postgres;";

  constexpr int kWriters = 2;
  std::atomic<bool> promoted{false};
  std::atomic<bool> done{false};
  std::vector<std::vector<std::string>> acknowledged(kWriters);
  std::vector<int> afterTakeover(kWriters, 0);
  std::vector<std::string> opened(kWriters);
  std::vector<std::thread> writers;
  for (int w = 0; w < kWriters; ++w) {
    writers.emplace_back([&, w] {
      const std::string client = "writer" + std::to_string(w);
      ztktest::CapturedBoxes boxes;
      CTkDb tkdb;
      tkdb.OpenOdbcDb(client, connect, false, false);
      if (!boxes.boxes.empty()) {
        opened[static_cast<size_t>(w)] = boxes.boxes.front().text;
        return;
      }
      for (int i = 0; !done; ++i) {
        const bool after = promoted;
        try {
          auto order = ztktest::CreateOrder(client, {.nr = w * 100000 + i});
          // A create that returns has its row read back: acknowledged.
          if (order->Id() > 0) {
            acknowledged[static_cast<size_t>(w)].push_back(order->UId());
            if (after) ++afterTakeover[static_cast<size_t>(w)];
          }
        } catch (const Error&) {
          // The create under way when the primary died may or may not have
          // landed; the host hears of it.
          std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
      }
    });
  }
  // A reader whose server dies between two reads: its next read waits for
  // the standby to take over instead of failing (as a create's reading back
  // of the row it has just inserted does).
  std::atomic<bool> killed{false};
  std::string readerFailure = "did not run";
  std::thread reader([&] {
    CTkDb tkdb;
    tkdb.OpenOdbcDb("reader", connect, false, false);
    try {
      auto mine = ztktest::CreateOrder("reader", {.nr = 999999});
      while (!killed) std::this_thread::sleep_for(std::chrono::milliseconds(10));
      CAuftrag order;
      order.ConnectStorage("reader");
      order.ReadById(mine->Id());
      readerFailure = order.UId() == mine->UId() ? "" : "read back another row";
    } catch (const Error& e) {
      readerFailure = e.Description();
    }
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(1500));
  EXPECT_EQ(run("kill '" + primary + "'"), 0);
  killed = true;
  std::this_thread::sleep_for(std::chrono::milliseconds(1000));
  EXPECT_EQ(run("promote '" + standby + "'"), 0);
  promoted = true;
  std::this_thread::sleep_for(std::chrono::milliseconds(3000));
  done = true;
  for (auto& t : writers) t.join();
  reader.join();
  EXPECT_EQ(readerFailure, "");

  CTkDb check;
  check.OpenOdbcDb("check", connect, false, false);
  for (int w = 0; w < kWriters; ++w) {
    ASSERT_EQ(opened[static_cast<size_t>(w)], "");
    EXPECT_GT(afterTakeover[static_cast<size_t>(w)], 0) << "writer " << w << " stopped";
    CAuftrag order;
    order.ConnectStorage("check");
    for (const std::string& uid : acknowledged[static_cast<size_t>(w)]) {
      EXPECT_EQ(
          ztktest::Scalar("check", "SELECT COUNT(*) FROM T_Auftrag WHERE stUId = '" + uid + "'")
              .ToLong(),
          1)
          << "acknowledged create " << uid << " is gone";
    }
  }
}

}  // namespace

namespace {

// Several servers in the library's terms reach psqlodbc as libpq's options;
// one server is left as it is.
TEST(Failover, SeveralServersGoToTheDriverInItsOwnTerms) {
  using ZTkDb::detail::ForDriver;
  const auto writable = ForDriver(
      "Driver={PostgreSQL Unicode};Servername=db1, db2;Port={5432,5433};Database=tk;", false);
  EXPECT_TRUE(writable.several_servers);
  EXPECT_EQ(writable.text,
            "pqopt={host='db1,db2' port='5432,5433' target_session_attrs='read-write'};"
            "driver={PostgreSQL Unicode};database=tk;");
  // A braced password holding ';' and '}}' reaches the driver as given,
  // and one whose brace never closes cannot swallow the servers.
  EXPECT_EQ(ForDriver("Servername=a,b;PWD={x}};y}};z};UID=u", true).text,
            "pqopt={host='a,b' target_session_attrs='any'};pwd={x}};y}};z};uid=u;");
  EXPECT_EQ(ForDriver("Servername=a,b;PWD={p}}", true).text,
            "pqopt={host='a,b' target_session_attrs='any'};pwd={p}};");
  // A key given twice: the last holds, as for the driver.
  EXPECT_EQ(ForDriver("Servername=x;Servername=a,b;Port=1;Port=2,3", false).text,
            "pqopt={host='a,b' port='2,3' target_session_attrs='read-write'};");
  EXPECT_EQ(ForDriver("Driver={PostgreSQL Unicode};Server=a,b", true).text,
            "pqopt={host='a,b' target_session_attrs='any'};driver={PostgreSQL Unicode};");
  EXPECT_EQ(ForDriver("Servername=a,b;Port=5432", true).text,
            "pqopt={host='a,b' port='5432' target_session_attrs='any'};");
  EXPECT_EQ(ForDriver("Servername=a,b;TargetSessionAttrs=prefer-standby", true).text,
            "pqopt={host='a,b' target_session_attrs='prefer-standby'};");
  // Other drivers' Server= keeps its own meaning (SQL Server: host,port).
  for (const char* one : {"Driver={PostgreSQL Unicode};Servername=db1;Port=5432;",
                          "Driver={ODBC Driver 18 for SQL Server};Server=db,1433;UID=u;",
                          "Servername=a,b;pqopt={host=a,b};", "Driver=SQLite3;Database=x.db;"}) {
    const auto same = ForDriver(one, false);
    EXPECT_FALSE(same.several_servers) << one;
    EXPECT_EQ(same.text, one);
  }
}

}  // namespace
