// Several processes writing the same rows, a writer killed mid-stream, and
// a server stopped mid-session.
#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <regex>
#include <set>
#include <thread>

#include "Engines.h"
#include "TestData.h"
#include "TestSupport.h"
#include "ztkdb/CAuftrag.h"
#include "ztkdb/CAuftragListe.h"
#include "ztkdb/CTkDb.h"

using namespace ZTkDb;

namespace {

constexpr int kWriters = 4;
constexpr int kRounds = 40;
constexpr int kRows = 3;

// One writer process: kRounds times, read a row, add one to its number and
// write it back under the row's UId. Reports on `out` how many writes
// landed, how many were refused with the update box, and any error.
[[noreturn]] void Writer(const ztktest::EngineDb& db, const std::string& connect, int seed,
                         int out) {
  int landed = 0, refused = 0, errors = 0;
  std::string what;  // the last error, so that a failure says which
  try {
    int boxes = 0;
    SetMessageSink([&](const MessageBoxCall& box) {
      if (box.text == "CAuftrag.Update fehlgeschlagen. Bitte an TORQ melden!") ++boxes;
    });
    CTkDb tkdb;
    if (db.Which() == ztktest::Engine::kSqliteFile)
      tkdb.OpenJetDb("w", connect, false, false);
    else
      tkdb.OpenOdbcDb("w", connect, false, false);
    CAuftrag order;
    order.ConnectStorage("w");
    for (int i = 0; i < kRounds; ++i) {
      try {
        order.ReadById(1 + (seed + i) % kRows);
        order.Nr(order.Nr() + 1);
        const int before = boxes;
        order.Update();
        if (boxes == before)
          ++landed;
        else
          ++refused;
      } catch (const Error& e) {
        // A lock held past the busy timeout is 3260, and nothing landed.
        if (e.Number() != 3260) {
          ++errors;
          what = std::to_string(e.Number()) + " " + e.Description();
        } else
          ++refused;
      }
    }
  } catch (...) {
    ++errors;
  }
  const std::string report = std::to_string(landed) + " " + std::to_string(refused) + " " +
                             std::to_string(errors) + " " + what.substr(0, 400) + "\n";
  [[maybe_unused]] auto n = write(out, report.data(), report.size());
  _exit(0);
}

class ConcurrentWriters : public ::testing::TestWithParam<ztktest::Engine> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Engines, ConcurrentWriters,
                         ::testing::Values(ztktest::Engine::kSqliteFile, ztktest::Engine::kPostgres,
                                           ztktest::Engine::kPgBouncer),
                         ztktest::EngineName);

TEST_P(ConcurrentWriters, EveryWriteLandsOrShowsTheBoxAndNoneIsLost) {
  ztktest::EngineDb db(GetParam());
  std::string connect;
  {
    CTkDb tkdb;
    ztktest::CapturedBoxes quiet;
    ZTKTEST_OPEN_ENGINE(db, tkdb, "setup");
    for (int r = 0; r < kRows; ++r) ztktest::CreateOrder("setup", {.nr = 0});
    connect = db.ConnectString().empty() ? tkdb.DbPath() : db.ConnectString();
  }  // no connection is open while the writers fork
  int pipes[kWriters][2];
  std::vector<pid_t> children;
  for (int w = 0; w < kWriters; ++w) {
    ASSERT_EQ(pipe(pipes[w]), 0);
    const pid_t pid = fork();
    if (pid == 0) Writer(db, connect, w, pipes[w][1]);
    close(pipes[w][1]);
    children.push_back(pid);
  }
  int landed = 0, refused = 0, errors = 0;
  for (int w = 0; w < kWriters; ++w) {
    int status = 0;
    waitpid(children[static_cast<size_t>(w)], &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "writer " << w << " crashed";
    char buf[512] = {};
    [[maybe_unused]] auto n = read(pipes[w][0], buf, sizeof buf - 1);
    close(pipes[w][0]);
    int l = 0, r = 0, e = 0;
    ASSERT_EQ(std::sscanf(buf, "%d %d %d", &l, &r, &e), 3) << "writer " << w << " said nothing";
    EXPECT_EQ(e, 0) << "writer " << w << ": " << buf;
    landed += l;
    refused += r;
    errors += e;
  }
  EXPECT_EQ(errors, 0);
  EXPECT_EQ(landed + refused, kWriters * kRounds);
  EXPECT_GT(landed, 0);

  // The numbers count exactly the writes that landed: none lost, none twice.
  CTkDb tkdb;
  db.OpenAgain(tkdb, "check");
  EXPECT_EQ(ztktest::Scalar("check", "SELECT sum(lNr) FROM T_Auftrag").ToLong(), landed);
}

TEST(CrashSafety, AKilledWriterLeavesASoundFileWithEveryAcknowledgedCreate) {
  ztktest::TempDb file;
  int acks[2];
  ASSERT_EQ(pipe(acks), 0);
  const pid_t pid = fork();
  if (pid == 0) {
    close(acks[0]);
    ztktest::CapturedBoxes quiet;
    CTkDb tkdb;
    tkdb.OpenJetDb("crash", file.Path(), false, false);
    auto last = ztktest::CreateOrder("crash", {.nr = 1});
    for (int i = 2;; ++i) {
      auto order = ztktest::CreateOrder("crash", {.nr = i});
      // Acknowledged only after the call returned.
      const std::string ack = std::to_string(order->Id()) + "\n";
      [[maybe_unused]] auto n = write(acks[1], ack.data(), ack.size());
      last->Auftrag("geändert " + std::to_string(i));
      last->Update();
      last = std::move(order);
    }
  }
  close(acks[1]);
  std::this_thread::sleep_for(std::chrono::milliseconds(700));
  kill(pid, SIGKILL);
  int status = 0;
  waitpid(pid, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status));
  std::set<int> acknowledged;
  {
    FILE* in = fdopen(acks[0], "r");
    for (int id; std::fscanf(in, "%d", &id) == 1;) acknowledged.insert(id);
    std::fclose(in);
  }
  ASSERT_GT(acknowledged.size(), 10u);

  sqlite3* raw = nullptr;
  ASSERT_EQ(sqlite3_open(file.Path().c_str(), &raw), SQLITE_OK);
  sqlite3_stmt* check = nullptr;
  sqlite3_prepare_v2(raw, "PRAGMA integrity_check", -1, &check, nullptr);
  ASSERT_EQ(sqlite3_step(check), SQLITE_ROW);
  EXPECT_STREQ(reinterpret_cast<const char*>(sqlite3_column_text(check, 0)), "ok");
  sqlite3_finalize(check);
  sqlite3_close(raw);

  CTkDb tkdb;
  tkdb.OpenJetDb("after", file.Path(), false, true);
  CAuftrag order;
  order.ConnectStorage("after");
  for (int id : acknowledged) {
    order.ReadById(id);
    EXPECT_EQ(order.Id(), id) << "acknowledged create " << id << " is gone";
  }
}

TEST(ServerFaults, AStoppedServerGivesAClearErrorAndTheClientRecoversOnceItIsBack) {
  if (ztktest::PostgresConnectString("postgres").empty()) {
    if (ztktest::EnginesRequired()) FAIL() << "no PostgreSQL cluster";
    GTEST_SKIP() << "no PostgreSQL cluster";
  }
  // A cluster of its own: the suite's shared one must stay up.
  ztktest::TempDb dir(false);
  chmod(dir.Dir().c_str(), 0755);  // the server runs as another user
  const std::string pg = dir.Dir() + "/pg";
  const std::string script = "bash '" ZTKDB_SOURCE_DIR "/tests/pg_cluster' ";
  ASSERT_EQ(std::system((script + "start '" + pg + "' 54340 >/dev/null").c_str()), 0);
  const std::string connect = "Driver={PostgreSQL Unicode};Servername=" + pg +
                              ";Port=54340;Database=ztk_template;Username=postgres;";
  ztktest::CapturedBoxes boxes;
  {
    CTkDb tkdb;
    tkdb.OpenOdbcDb("fault", connect, false, false);
    ASSERT_TRUE(boxes.boxes.empty()) << boxes.boxes[0].text;
    CAuftrag order;
    order.ConnectStorage("fault");
    EXPECT_EQ(order.GetLastNr(), 0);

    const std::string bin = "$(ls -d /usr/lib/postgresql/*/bin | sort -V | tail -1)";
    const std::string asPg = getuid() == 0 ? "runuser -u postgres -- " : "";
    ASSERT_EQ(std::system(
                  (asPg + bin + "/pg_ctl -D '" + pg + "/data' -m immediate -w stop >/dev/null 2>&1")
                      .c_str()),
              0);

    const auto start = std::chrono::steady_clock::now();
    try {
      order.ReadById(1);
      ADD_FAILURE() << "a read on a stopped server succeeded";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), 3146);
      // The server's shutdown notice (57P01) or a lost connection (08xxx).
      EXPECT_TRUE(std::regex_search(e.Description(), std::regex(R"(\[(08|57)[0-9A-Z]{3}\])")))
          << e.Description();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));

    // Back up: the same objects go on by themselves, on a new session with
    // the same set-up, and write again.
    ASSERT_EQ(std::system((script + "start '" + pg + "' 54340 >/dev/null").c_str()), 0);
    EXPECT_EQ(order.GetLastNr(), 0);
    ztktest::CreateOrder("fault", {.nr = 5});
    EXPECT_EQ(order.GetLastNr(), 5);
    EXPECT_EQ(ztktest::Scalar("fault", "SHOW lock_timeout").ToString(), "5s");
    ztktest::Exec("fault", "DELETE FROM T_Auftrag");
  }
  {
    // A second open under the same name finds the registered connection.
    CTkDb tkdb;
    tkdb.OpenOdbcDb("fault", connect, false, false);
    EXPECT_TRUE(boxes.boxes.empty());
    CAuftrag order;
    order.ConnectStorage("fault");
    EXPECT_EQ(order.GetLastNr(), 0);
  }
  std::system((script + "stop '" + pg + "'").c_str());
}
