// Nothing stored that cannot be read back, no write acknowledged and lost:
// values past the limits refused before any statement, a bad row written by
// someone else confined to itself, files moved or shared by two writers.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include "Engines.h"
#include "TestData.h"
#include "TestSupport.h"
#include "sql/Statement.h"
#include "ztkdb/CAuftrag.h"
#include "ztkdb/CAuftragListe.h"
#include "ztkdb/CMeldungListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"
#include "ztkdb/Workspace.h"

using namespace ZTkDb;
using ztktest::Engine;
using ztktest::ErrorNumberOf;

namespace {

class Integrity : public ztktest::EngineTest {
 protected:
  Integrity() : EngineTest("ok") {}
};

const std::vector<Date>& UnstorableDates() {
  static const std::vector<Date> dates = {
      Date(3e6),        // year 10113
      Date(-700000.0),  // before 01.01.0100
      Date(-684000.0),  // a two-digit year: 0026
      Date(std::numeric_limits<double>::quiet_NaN()),
      Date(std::numeric_limits<double>::infinity()),
      Date(-std::numeric_limits<double>::infinity()),
  };
  return dates;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Integrity, ztktest::AllEngines(), ztktest::EngineName);

TEST_P(Integrity, DatesOutsideTheStoredRangeAreRefusedBeforeAnyStatement) {
  auto order = ztktest::CreateOrder("ok", {.nr = 1});
  for (const Date& bad : UnstorableDates()) {
    SCOPED_TRACE(bad.Value());
    EXPECT_EQ(ErrorNumberOf([&] { ztktest::CreateOrder("ok", {.nr = 2, .datum = bad}); }), 6);
    EXPECT_EQ(ErrorNumberOf([&] { ztktest::CreateOrder("ok", {.nr = 3, .wieder = bad}); }), 6);
    order->ErledigtDatum(bad);
    EXPECT_EQ(ErrorNumberOf([&] { order->Update(); }), 6);
    auto reports = Connected<CMeldungListe>();
    EXPECT_EQ(ErrorNumberOf([&] { reports->ReadAllInZeitraum(Date::Today(), bad); }), 6);
  }
  EXPECT_EQ(Rows("T_Auftrag"), 1);
  order->ReadById(order->Id());
  EXPECT_EQ(order->ErledigtDatum(), NoDate);
}

// A row written by another program with values the library cannot give
// back: the list still walks every other row, and the row itself can be
// read (with the error) and deleted.
TEST_P(Integrity, ABadRowFromElsewhereStaysConfinedToItself) {
  ztktest::CreateOrder("ok", {.nr = 1});
  ztktest::CreateOrder("ok", {.nr = 3});
  auto other = ztktest::CreateOrder("ok", {.nr = 2});
  const std::string amount = db.Which() == Engine::kSqliteFile ? "1e16" : "950000000000000";
  ztktest::Exec("ok",
                "UPDATE T_Auftrag SET cuKosten = " + amount + ", stUId = 'fremd' WHERE lNr = 2");
  auto orders = Connected<CAuftragListe>();
  orders->ReadByDone(false, osByOrderNumber);
  ASSERT_EQ(orders->Count(), 3);
  std::vector<int32_t> good;
  int failed = 0;
  for (int i = 0; i < 3; ++i) {
    try {
      auto item = i == 0 ? orders->MoveFirst() : orders->MoveNext();
      if (item) good.push_back(item->Nr());
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), 6);
      ++failed;
    }
  }
  EXPECT_EQ(good, (std::vector<int32_t>{1, 3}));
  EXPECT_EQ(failed, 1);

  auto bad = Connected<CAuftrag>();
  EXPECT_EQ(ErrorNumberOf([&] { bad->ReadByNr(2, ""); }), 0);  // no such prefix: not found
  const int32_t id = static_cast<int32_t>(
      ztktest::Scalar("ok", "SELECT lId FROM T_Auftrag WHERE stUId = 'fremd'").ToLong());
  EXPECT_EQ(ErrorNumberOf([&] { bad->ReadById(id); }), 6);
  EXPECT_EQ(bad->Id(), id);
  bad->Delete();
  EXPECT_EQ(Rows("T_Auftrag"), 2);
}

TEST(IntegrityFile, MoneyTheEmbeddedEngineCannotGiveBackIsRefusedBeforeTheInsert) {
  ztktest::EngineDb db(Engine::kSqliteFile);
  CTkDb tkdb;
  ZTKTEST_OPEN_ENGINE(db, tkdb, "geld");
  const int64_t limit = (int64_t{1} << 39) * 10000;
  for (int64_t scaled : {limit, -limit, limit - 1, int64_t{1}}) {
    auto order = ztktest::CreateOrder("geld", {});
    order->Kosten(Currency::FromScaled(scaled));
    order->Update();
    order->ReadById(order->Id());
    EXPECT_EQ(order->Kosten().Scaled(), scaled);
  }
  auto order = ztktest::CreateOrder("geld", {});
  order->Kosten(Currency::FromScaled(limit + 1));
  EXPECT_EQ(ErrorNumberOf([&] { order->Update(); }), 6);
  order->ReadById(order->Id());
  EXPECT_EQ(order->Kosten().Scaled(), 1250000);
}

// A text that would take the statement past 16 MB is refused alike whether
// the statement would have been bound or sent as text.
TEST(IntegrityFile, ARecordTextPastTheStatementLimitIsRefusedOnEitherPath) {
  ztktest::EngineDb db(Engine::kSqliteFile);
  CTkDb tkdb;
  ZTKTEST_OPEN_ENGINE(db, tkdb, "gross");
  auto order = ztktest::CreateOrder("gross", {});
  order->Bemerkung(std::string(8 << 20, 'x'));
  order->Update();
  order->Bemerkung(std::string((16 << 20) + 1, 'y'));
  EXPECT_EQ(ErrorNumberOf([&] { order->Update(); }), 7);
  order->ReadById(order->Id());
  EXPECT_EQ(order->Bemerkung(), std::string(8 << 20, 'x'));
}

// Texts holding placeholder names fill later steps with themselves: the
// statement would double with every step. It stops at 16 MB with error 7.
TEST(IntegrityTemplate, FillingStopsAtItsLimitWithOutOfMemory) {
  // Each step's value names the next placeholder thirty times.
  auto times = [](const char* name) {
    std::string out;
    for (int i = 0; i < 30; ++i) out += name;
    return out;
  };
  detail::Statement sql("INSERT INTO t VALUES ('#a#')", detail::StorageKind::Odbc);
  sql.Raw("#a#", times("#b#")).Raw("#b#", times("#c#")).Raw("#c#", times("#d#"));
  sql.Raw("#d#", times("#e#")).Raw("#e#", times("#f#")).Raw("#f#", "xxxxx");
  EXPECT_EQ(ErrorNumberOf([&] { (void)sql.Render(); }), 7);
  // A large text that fits is filled as usual.
  detail::Statement big("SELECT '#a#'", detail::StorageKind::Odbc);
  big.Text("#a#", std::string(8 << 20, 'x'));
  EXPECT_EQ(big.Render().size(), (8u << 20) + 9);
}

TEST(IntegrityFile, NoWriteIsAcknowledgedIntoAFileMovedOrDeletedWhileOpen) {
  for (bool remove : {false, true}) {
    ztktest::TempDb file;
    CTkDb tkdb;
    tkdb.OpenJetDb("weg", file.Path(), false, false);
    auto order = ztktest::CreateOrder("weg", {.nr = 1});
    const std::string elsewhere = file.Path() + ".verschoben";
    if (remove)
      std::filesystem::remove(file.Path());
    else
      std::filesystem::rename(file.Path(), elsewhere);
    try {
      ztktest::CreateOrder("weg", {.nr = 2});
      ADD_FAILURE() << "a write into a moved file was acknowledged";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), 3051);
      EXPECT_NE(e.Description().find(file.Path()), std::string::npos) << e.Description();
    }
    order->Auftrag("geändert");
    EXPECT_EQ(ErrorNumberOf([&] { order->Update(); }), 3051);
    // In a transaction the commit is refused and nothing stays behind.
    auto ws = tkdb.Ws();
    ws->BeginTrans();
    EXPECT_NE(ErrorNumberOf([&] { ztktest::CreateOrder("weg", {.nr = 3}); }), 0);
    EXPECT_NE(ErrorNumberOf([&] { ws->CommitTrans(); }), 0);
    tkdb.CloseDb();
    std::filesystem::remove(elsewhere);
  }
}

// Two processes, each writing its own rows inside transactions: each waits
// for the other's lock instead of failing at once.
TEST(IntegrityFile, WriteTransactionsOfTwoProcessesBothLand) {
  ztktest::TempDb file;
  int64_t before = 0;
  {
    CTkDb tkdb;
    tkdb.OpenJetDb("setup", file.Path(), false, false);
    ztktest::CreateOrder("setup", {.nr = 1});
    ztktest::CreateOrder("setup", {.nr = 2});
    before = ztktest::Scalar("setup", "SELECT sum(lAnsprechId) FROM T_Auftrag").ToLong();
  }
  constexpr int kRounds = 25;
  pid_t children[2];
  for (int c = 0; c < 2; ++c) {
    children[c] = fork();
    if (children[c] == 0) {
      int failures = 0;
      try {
        CTkDb tkdb;
        tkdb.OpenJetDb("w", file.Path(), false, false);
        CAuftrag order;
        order.ConnectStorage("w");
        auto ws = tkdb.Ws();
        for (int i = 0; i < kRounds; ++i) {
          try {
            ws->BeginTrans();
            order.ReadByNr(c + 1, "A");
            order.AnsprechId(order.AnsprechId() + 1);
            order.Update();
            usleep(2000);  // hold the lock a while
            ws->CommitTrans();
          } catch (const Error&) {
            ++failures;
            try {
              ws->Rollback();
            } catch (const Error&) {
            }
          }
        }
      } catch (...) {
        _exit(99);
      }
      _exit(failures);
    }
  }
  for (pid_t child : children) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "writes failed instead of waiting";
  }
  CTkDb tkdb;
  tkdb.OpenJetDb("check", file.Path(), false, false);
  EXPECT_EQ(ztktest::Scalar("check", "SELECT sum(lAnsprechId) FROM T_Auftrag").ToLong() - before,
            2 * kRounds);
}

namespace {

// Opens `path` read-only as user nobody in a child process: the number of
// orders it reads, or 100 + the error number's last two digits.
int OrdersReadAsNobody(const std::string& path) {
  const pid_t child = fork();
  if (child == 0) {
    if (setgid(65534) != 0 || setuid(65534) != 0) _exit(99);
    try {
      CTkDb tkdb;
      tkdb.OpenJetDb("leser", path, false, true);
      _exit(static_cast<int>(ztktest::Scalar("leser", "SELECT count(*) FROM T_Auftrag").ToLong()));
    } catch (const Error& e) {
      std::fprintf(stderr, "%ld %s\n", e.Number(), e.Description().c_str());
      _exit(100 + static_cast<int>(e.Number() % 100));
    }
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool Leftovers(const std::string& path) {
  return std::filesystem::exists(path + "-wal") || std::filesystem::exists(path + "-shm");
}

}  // namespace

// A reader who may not write the file or its folder can still read it, and
// leaves nothing in the folder that would stand in its owner's way.
TEST(IntegrityFile, ReadOnlyOpensWorkWithoutWriteAccessAndLeaveNothingBehind) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root to act as another user";
  ztktest::TempDb file;
  const std::string dir = std::filesystem::path(file.Path()).parent_path();
  {
    CTkDb owner;
    owner.OpenJetDb("owner", file.Path(), false, false);
    ztktest::CreateOrder("owner", {.nr = 1});
  }
  ASSERT_FALSE(Leftovers(file.Path()));
  namespace fs = std::filesystem;
  using fs::perms;
  // A write-protected file in a folder the reader cannot write.
  fs::permissions(file.Path(), perms::owner_read | perms::group_read | perms::others_read);
  fs::permissions(dir, perms::owner_all | perms::group_read | perms::group_exec |
                           perms::others_read | perms::others_exec);
  EXPECT_EQ(OrdersReadAsNobody(file.Path()), 1);
  EXPECT_FALSE(Leftovers(file.Path()));
  // The folder writable by everyone: still nothing of the reader's stays.
  fs::permissions(file.Path(),
                  perms::owner_read | perms::owner_write | perms::group_read | perms::others_read);
  fs::permissions(dir, perms::all);
  EXPECT_EQ(OrdersReadAsNobody(file.Path()), 1);
  EXPECT_FALSE(Leftovers(file.Path()));
  // While the owner writes: the reader sees every committed row, the
  // owner's own WAL index serving it.
  CTkDb owner;
  owner.OpenJetDb("owner", file.Path(), false, false);
  ztktest::CreateOrder("owner", {.nr = 2});
  ASSERT_TRUE(Leftovers(file.Path()));
  EXPECT_EQ(OrdersReadAsNobody(file.Path()), 2);
  ztktest::CreateOrder("owner", {.nr = 3});
  EXPECT_EQ(ztktest::Scalar("owner", "SELECT count(*) FROM T_Auftrag").ToLong(), 3);
  fs::permissions(dir, perms::owner_all);
}
