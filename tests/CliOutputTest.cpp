// ztk's output for people (tables that fit an 80-column terminal, whatever
// the texts hold) and for programs (nothing cut when piped, CSV, exact JSON),
// and the conveniences around it.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "TestSupport.h"
#include "ZtkRun.h"

using ztktest::Columns;
using ztktest::Lines;
using ztktest::Outcome;
using ztktest::Ztk;

namespace {

class CliOutput : public ztktest::ZtkDatabase {
 protected:
  void SetUp() override {
    ZtkDatabase::SetUp();
    for (const char* text : {"Heizung\tim Keller, \"dringend\"", "会议室的空调坏了 😀😀😀 还有灯",
                             "Ein sehr langer Auftragstext, der auf keinem schmalen Terminal in "
                             "eine Spalte passt und trotzdem vollständig gelesen werden will"}) {
      ASSERT_EQ(On({"auftrag", "add", std::string("Auftrag=") + text, "Ort=Stuttgart-Mitte",
                    "Kosten=1234567,8901", "--force"})
                    .code,
                0);
    }
  }
};

}  // namespace

TEST_F(CliOutput, TablesFitTheTerminalAndAreWholeWhenPiped) {
  const Outcome tty = ztktest::ZtkOnTerminal({"--db", path, "auftrag", "list"}, 80);
  ASSERT_EQ(tty.code, 0) << tty.out;
  const auto lines = Lines(tty.out);
  ASSERT_GE(lines.size(), 5u);
  for (const auto& line : lines) EXPECT_LE(Columns(line), 80u) << line;
  EXPECT_NE(tty.out.find("…"), std::string::npos);
  EXPECT_EQ(tty.out.find('\t'), std::string::npos);

  const Outcome wide = ztktest::ZtkOnTerminal({"--db", path, "--wide", "auftrag", "list"}, 80);
  EXPECT_NE(wide.out.find("vollständig gelesen werden will"), std::string::npos);
  const Outcome piped = On({"auftrag", "list"});
  EXPECT_NE(piped.out.find("vollständig gelesen werden will"), std::string::npos);
  EXPECT_EQ(piped.out.find("…"), std::string::npos);
  // A wide character counts two: the columns after it stay in line.
  const auto pipedLines = Lines(piped.out);
  const size_t at = Columns(pipedLines[0].substr(0, pipedLines[0].find("Place")));
  for (size_t i = 2; i < 5; ++i) {
    const size_t city = pipedLines[i].find("Stuttgart");
    ASSERT_NE(city, std::string::npos) << pipedLines[i];
    EXPECT_EQ(Columns(pipedLines[i].substr(0, city)), at) << pipedLines[i];
  }
  EXPECT_NE(On({"auftrag", "show", "3"}).out.find("will"), std::string::npos);
}

// Money as exact decimal text; a text that is not UTF-8 as U+FFFD. (CSV
// and JSON agree field by field: the desk's tests.)
TEST_F(CliOutput, MoneyExactAndForeignBytesMarked) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(db, "UPDATE T_Auftrag SET stOrt = CAST(X'4BF66C6E' AS TEXT) WHERE lId = 1",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(db);
  const Outcome json = On({"--json", "auftrag", "list"});
  ASSERT_EQ(json.code, 0) << json.err;
  const auto rows = json.Json();
  EXPECT_EQ(rows[0]["Kosten"], "1234567.8901");
  EXPECT_EQ(rows[0]["Ort"], "K\xEF\xBF\xBDln");
  EXPECT_NE(On({"auftrag", "list"}).out.find("K\xEF\xBF\xBDln"), std::string::npos);
}

TEST_F(CliOutput, ConveniencesAndClearMessages) {
  const Outcome env = Ztk({"--json", "tables"}, {"ZTK_DB=" + path});
  ASSERT_EQ(env.code, 0) << env.err;
  EXPECT_EQ(env.Json()["T_Auftrag"], 3);
  const Outcome version = Ztk({"--version"});
  EXPECT_EQ(version.code, 0);
  EXPECT_EQ(version.out.find("ztk "), 0u) << version.out;
  const Outcome help = Ztk({"help", "auftrag", "done"});
  EXPECT_EQ(help.code, 0);
  EXPECT_NE(help.out.find("--date"), std::string::npos) << help.out;
  const Outcome unknown = Ztk({"foo"});
  EXPECT_EQ(unknown.code, 2);
  EXPECT_NE(unknown.err.find("unknown command 'foo'"), std::string::npos) << unknown.err;
  const Outcome twice = Ztk({"--db", path, "--db", path, "tables"});
  EXPECT_EQ(twice.code, 2);
  EXPECT_NE(twice.err.find("--db was given more than once"), std::string::npos) << twice.err;

  const Outcome readOnly = On({"--read-only", "auftrag", "set", "1", "Ort=Ulm"});
  EXPECT_EQ(readOnly.code, 1);
  EXPECT_NE(readOnly.err.find("3027"), std::string::npos) << readOnly.err;
  const Outcome query =
      On({"--json", "query", "SELECT count(*) AS n FROM T_Auftrag WHERE cuKosten > 1000"});
  ASSERT_EQ(query.code, 0) << query.err;
  EXPECT_EQ(query.Json()[0]["n"], 3);
  const Outcome write = On({"query", "DELETE FROM T_Auftrag"});
  EXPECT_EQ(write.code, 1);
  // What reads runs read-only, as the engine itself reads it; a write
  // hidden in a WITH does not.
  for (const char* reading :
       {"PRAGMA table_info(T_Auftrag)", "PRAGMA main.index_list ( T_Auftrag )",
        "PRAGMA integrity_check", "EXPLAIN QUERY PLAN SELECT * FROM T_Auftrag",
        "WITH x AS (SELECT lId FROM T_Auftrag) SELECT count(*) AS n FROM x"}) {
    const Outcome ran = On({"--json", "query", reading});
    EXPECT_EQ(ran.code, 0) << reading << ran.err;
  }
  // Nor what writes nothing but would change the connection.
  for (const char* changing :
       {"WITH x AS (SELECT 1) DELETE FROM T_Auftrag WHERE lId IN (SELECT * FROM x)",
        "PRAGMA query_only = 0", "PRAGMA query_only(0)", "PRAGMA main.query_only (false)",
        "PRAGMA busy_timeout(1)", "BEGIN", "ATTACH 'elsewhere.db' AS e", "VACUUM INTO 'copy.db'"}) {
    const Outcome refused = On({"query", changing});
    EXPECT_EQ(refused.code, 1) << changing;
    EXPECT_NE(refused.err.find("3027"), std::string::npos) << changing << refused.err;
  }
  EXPECT_EQ(On({"--json", "tables"}).Json()["T_Auftrag"], 3);

  // A file the user may not change, in a folder they may not change, opens
  // read-only with a note; what only reads runs, what writes is refused.
  ztktest::TempDb shelf(false);
  const std::string locked = shelf.Dir() + "/locked.db";
  std::filesystem::copy_file(path, locked);
  ASSERT_EQ(::chmod(locked.c_str(), 0444), 0);
  ASSERT_EQ(::chmod(shelf.Dir().c_str(), 0555), 0);
  const std::vector<std::string> user =
      ::geteuid() == 0 ? std::vector<std::string>{"ZTKTEST_NOBODY=1"} : std::vector<std::string>{};
  const Outcome looked = Ztk({"--db", locked, "--json", "auftrag", "list"}, user);
  EXPECT_EQ(looked.code, 0) << looked.err;
  EXPECT_EQ(looked.Json().size(), 3u);
  EXPECT_NE(looked.err.find("opened read-only"), std::string::npos) << looked.err;
  EXPECT_EQ(Ztk({"--db", locked, "--json", "query", "PRAGMA integrity_check"}, user).code, 0);
  const Outcome refused = Ztk({"--db", locked, "auftrag", "set", "1", "Ort=Ulm"}, user);
  EXPECT_EQ(refused.code, 1) << refused.err;
  EXPECT_NE(refused.err.find("3027"), std::string::npos) << refused.err;
  ::chmod(shelf.Dir().c_str(), 0755);
}

// The manual page and the completion come from the same command tree.
TEST(CliDocs, ManPageAndCompletionCoverEveryCommand) {
  const Outcome man = Ztk({"man"});
  ASSERT_EQ(man.code, 0);
  EXPECT_EQ(man.out.find(".TH ZTK 1"), 0u);
  for (const char* command : {"auftrag reopen", "meldung done", "query", "dokument add"}) {
    EXPECT_NE(man.out.find(std::string(".B ztk ") + command), std::string::npos) << command;
  }
}

// Another program holds the write lock past the wait: the tool says so
// plainly, and nothing is written.
TEST_F(CliOutput, ABusyDatabaseIsSaidPlainlyAndNothingIsWritten) {
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  const Outcome busy = On({"auftrag", "add", "Auftrag=wartet"});
  sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
  sqlite3_close(other);
  EXPECT_EQ(busy.code, 1);
  EXPECT_NE(busy.err.find("busy"), std::string::npos) << busy.err;
  EXPECT_NE(busy.err.find("Nothing was written"), std::string::npos) << busy.err;
  EXPECT_EQ(On({"--json", "tables"}).Json()["T_Auftrag"], 3);
}
