// A dispatcher's morning with ztk on an 80-column terminal, in English and
// in German: tables that keep numbers and dates whole, help that fits, one
// language throughout, and the machine forms of CSV and JSON.
#include <gtest/gtest.h>

#include <regex>

#include "TestSupport.h"
#include "ZtkRun.h"

using ztktest::Columns;
using ztktest::Lines;
using ztktest::Outcome;
using ztktest::Ztk;
using ztktest::ZtkOnTerminal;

namespace {

struct Language {
  const char* name;
  std::vector<std::string> env;
  std::regex date;                       // a whole date as this language writes it
  std::vector<const char*> dateHeaders;  // the lists' leading date columns
  const char* dueHeader;                 // the order list's due date column
  const char* rows;                      // the count line's word
  const char* didYouMean;                // the nearest-command suggestion
  std::vector<const char*> foreign;      // words of the other language
};

const Language kEnglish{
    "English", {},     std::regex(R"(\d{4}-\d\d-\d\d)"), {"Ordered", "Due", "Reported"},
    "Due",     "rows", "did you mean 'auftrag list'",    {"Zeilen", "gelöscht", "Fällig", "Feld"}};
const Language kGerman{"German",
                       {"LANG=de_DE.UTF-8"},
                       std::regex(R"(\d\d\.\d\d\.\d{4})"),
                       {"Datum", "Fällig", "Gemeldet"},
                       "Fällig",
                       "Zeilen",
                       "meinten Sie „auftrag list“",
                       {" rows", "deleted", "Due", "yes"}};

class Desk : public ::testing::TestWithParam<const Language*> {
 protected:
  static void SetUpTestSuite() {
    dir_ = new ztktest::TempDb(false);
    path_ = dir_->Dir() + "/desk.db";
    const Outcome made = Ztk({"demo", path_, "--reports", "40"});
    ASSERT_EQ(made.code, 0) << made.err;
    // One order whose text no 80-column table can hold.
    ASSERT_EQ(Ztk({"--db", path_, "auftrag", "set", "1",
                   "Auftrag=Die Lüftung im Serverraum pfeift seit Montag, bitte Filter und "
                   "Keilriemen prüfen und den Hausmeister vorher anrufen",
                   "ErledBisDatum=01.01.2020", "Erledigt=nein"})
                  .code,
              0);
  }
  static void TearDownTestSuite() { delete dir_; }
  bool HasLocale() const {
    if (GetParam()->env.empty()) return true;
    return std::system("locale -a 2>/dev/null | grep -qix de_DE.utf8") == 0;
  }
  Outcome Tty(std::vector<std::string> args) const {
    args.insert(args.begin(), {"--db", path_});
    return ZtkOnTerminal(args, 80, GetParam()->env);
  }
  Outcome Run(std::vector<std::string> args) const {
    args.insert(args.begin(), {"--db", path_});
    return Ztk(args, GetParam()->env);
  }
  static ztktest::TempDb* dir_;
  static std::string path_;
};
ztktest::TempDb* Desk::dir_ = nullptr;
std::string Desk::path_;

#define NEEDS_LOCALE()                                                                       \
  if (!HasLocale()) {                                                                        \
    if (std::getenv("ZTKDB_REQUIRE_ENGINES")) FAIL() << "the de_DE.UTF-8 locale is missing"; \
    GTEST_SKIP() << "no de_DE.UTF-8 locale (scripts/setup makes it)";                        \
  }

}  // namespace

TEST_P(Desk, ListsKeepNumbersAndDatesWholeAt80Columns) {
  NEEDS_LOCALE();
  const Language& l = *GetParam();
  for (const auto& args : std::vector<std::vector<std::string>>{
           {"auftrag", "list"}, {"auftrag", "list", "--overdue"}, {"meldung", "list"}}) {
    const Outcome tty = Tty(args);
    ASSERT_EQ(tty.code, 0) << tty.out;
    const auto lines = Lines(tty.out);
    ASSERT_GE(lines.size(), 4u) << tty.out;
    for (const auto& line : lines) EXPECT_LE(Columns(line), 80u) << line;
    // Every row has its number and its dates, whole, under their headers
    // (only the number, in ASCII, stands before them).
    size_t dates = 0;
    for (const char* header : l.dateHeaders) {
      const size_t at = lines[0].find(header);
      if (at == std::string::npos) continue;
      ++dates;
      for (size_t i = 2; i + 1 < lines.size(); ++i) {
        EXPECT_TRUE(std::regex_match(lines[i].substr(at, 10), l.date))
            << header << ": " << lines[i];
      }
    }
    EXPECT_GE(dates, 1u) << lines[0];
    for (size_t i = 2; i + 1 < lines.size(); ++i) {
      EXPECT_TRUE(std::regex_search(lines[i], std::regex("^[AM][0-9]+ "))) << lines[i];
    }
    EXPECT_NE(lines.back().find(l.rows), std::string::npos) << lines.back();
  }
  const Outcome overdue = Tty({"auftrag", "list", "--overdue"});
  EXPECT_NE(overdue.out.find(l.dueHeader), std::string::npos) << overdue.out;
  EXPECT_NE(overdue.out.find("Lüftung"), std::string::npos) << overdue.out;

  // show wraps the text it was opened for instead of cutting it.
  const Outcome shown = Tty({"auftrag", "show", "A1"});
  ASSERT_EQ(shown.code, 0) << shown.out;
  for (const auto& line : Lines(shown.out)) EXPECT_LE(Columns(line), 80u) << line;
  EXPECT_EQ(shown.out.find("…"), std::string::npos) << shown.out;
  for (const char* word : {"Lüftung", "Keilriemen", "Hausmeister", "anrufen"}) {
    EXPECT_NE(shown.out.find(word), std::string::npos) << word << shown.out;
  }
}

TEST_P(Desk, OneLanguageInHelpErrorsAndCounts) {
  NEEDS_LOCALE();
  const Language& l = *GetParam();
  std::string said;
  for (const auto& args : std::vector<std::vector<std::string>>{
           {"help", "auftrag", "list"}, {"help"}, {"meldung", "list"}, {"auftrag", "show", "A1"}}) {
    const Outcome tty = Tty(args);
    EXPECT_EQ(tty.code, 0) << tty.out;
    for (const auto& line : Lines(tty.out)) EXPECT_LE(Columns(line), 80u) << line;
    said += tty.out;
  }
  const Outcome slip = Run({"auftrag", "lst"});
  EXPECT_EQ(slip.code, 2);
  EXPECT_NE(slip.err.find(l.didYouMean), std::string::npos) << slip.err;
  said +=
      slip.err + Run({"auftrag", "show", "A999"}).err + Run({"auftrag", "list", "--sort", "x"}).err;
  for (const char* word : l.foreign) {
    EXPECT_EQ(said.find(word), std::string::npos) << l.name << " output holds '" << word << "'";
  }
}

INSTANTIATE_TEST_SUITE_P(Languages, Desk, ::testing::Values(&kEnglish, &kGerman),
                         [](const auto& p) { return std::string(p.param->name); });

// Programs get every field in machine forms, the same in CSV as in JSON,
// whatever the language; --local gives the desk's forms.
TEST(DeskForms, CsvAndJsonAgreeInMachineForms) {
  ztktest::TempDb dir(false);
  const std::string db = dir.Dir() + "/forms.db";
  ASSERT_EQ(Ztk({"init", db}).code, 0);
  ASSERT_EQ(Ztk({"--db", db, "auftrag", "add", "Auftrag=Tür, \"klemmt\"", "Kosten=1234,5",
                 "AuftragsDatum=01.03.2024", "Erledigt=ja", "ErledigtDatum=02.03.2024"})
                .code,
            0);
  for (const std::vector<std::string>& env :
       {std::vector<std::string>{}, std::vector<std::string>{"LANG=de_DE.UTF-8"}}) {
    const Outcome csv = Ztk({"--db", db, "--csv", "auftrag", "list"}, env);
    const Outcome json = Ztk({"--db", db, "--json", "auftrag", "list"}, env);
    ASSERT_EQ(csv.code, 0) << csv.err;
    EXPECT_EQ(csv.out.find('\r'), std::string::npos);
    const auto lines = Lines(csv.out);
    ASSERT_EQ(lines.size(), 2u) << csv.out;
    const auto row = nlohmann::ordered_json::parse(json.out)[0];
    std::string keys;
    for (const auto& item : row.items()) keys += (keys.empty() ? "" : ",") + item.key();
    EXPECT_EQ(lines[0], keys);
    EXPECT_NE(lines[1].find(",2024-03-02,"), std::string::npos) << lines[1];
    EXPECT_NE(lines[1].find(",true,"), std::string::npos) << lines[1];
    EXPECT_NE(lines[1].find(",1234.5,"), std::string::npos) << lines[1];
    EXPECT_NE(lines[1].find("\"Tür, \"\"klemmt\"\"\""), std::string::npos) << lines[1];
    EXPECT_EQ(row["ErledigtDatum"], "2024-03-02");
    EXPECT_EQ(row["Erledigt"], true);
    EXPECT_EQ(row["Kosten"], "1234.5");
  }
  const Outcome local =
      Ztk({"--db", db, "--csv", "--local", "auftrag", "list"}, {"LANG=de_DE.UTF-8"});
  if (std::system("locale -a 2>/dev/null | grep -qix de_DE.utf8") == 0) {
    EXPECT_NE(local.out.find(",02.03.2024,"), std::string::npos) << local.out;
    EXPECT_NE(local.out.find(",ja,"), std::string::npos) << local.out;
    EXPECT_NE(local.out.find("\"1.234,50\""), std::string::npos) << local.out;
  }
  const Outcome query =
      Ztk({"--db", db, "--csv", "query", "SELECT ErledigtDatum AS d FROM T_Auftrag"});
  EXPECT_EQ(query.out, "d\n2024-03-02\n") << query.out;
}

// Completion offers an option's values, and an option's value does not
// count as a command word.
TEST(DeskCompletion, SortValuesAndWordsAfterThem) {
  ztktest::TempDb dir(false);
  const std::string script = dir.Dir() + "/ztk.bash";
  std::ofstream(script) << Ztk({"completion"}).out;
  auto complete = [&](const std::string& words, int cword) {
    const std::string reply = dir.Dir() + "/reply";
    const std::string probe = "bash -c 'source " + script + "; COMP_WORDS=(" + words +
                              "); COMP_CWORD=" + std::to_string(cword) +
                              "; _ztk; echo \"${COMPREPLY[@]}\"' > " + reply;
    EXPECT_EQ(std::system(probe.c_str()), 0);
    return ztktest::FileBytes(reply);
  };
  EXPECT_EQ(complete("ztk auftrag list --sort \"\"", 4),
            "none nr datum bis erledigt wieder meldung\n");
  EXPECT_EQ(complete("ztk meldung list --sort er", 4), "erledigt\n");
  EXPECT_EQ(complete("ztk auftrag list --sort nr --ov", 5), "--overdue\n");
  EXPECT_EQ(complete("ztk --db x.db auftrag re", 4), "reopen\n");
}

// The progress line stays within a narrow terminal, however long the rows
// take: the bar shrinks and the rate gives way.
TEST(DeskProgress, FitsANarrowTerminal) {
  ztktest::TempDb dir(false);
  const Outcome tty = ZtkOnTerminal({"demo", dir.Dir() + "/p.db", "--reports", "3000"}, 44);
  ASSERT_EQ(tty.code, 0) << tty.out;
  size_t bars = 0;
  std::stringstream s(tty.out);
  for (std::string segment; std::getline(s, segment, '\r');) {
    if (segment.find("█") == std::string::npos && segment.find("░") == std::string::npos) continue;
    ++bars;
    const size_t end = segment.find("\x1b[K");
    EXPECT_LE(Columns(segment.substr(0, end)), 44u) << segment;
  }
  EXPECT_GT(bars, 0u);
}
