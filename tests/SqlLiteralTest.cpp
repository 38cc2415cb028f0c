#include <gtest/gtest.h>

#include <random>

#include "connection/SqlValueFormatter.h"
#include "sql/Literals.h"
#include "sql/SqlTemplate.h"

using namespace ZTkDb;
using namespace ZTkDb::detail;

TEST(SqlTemplate, ReplacesEveryOccurrenceCaseSensitively) {
  SqlTemplate t("SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lId = #lId# AND #tabelle#");
  t.Replace("#Tabelle#", "T_Auftrag").Replace("#lId#", "7");
  EXPECT_EQ(t.Text(), "SELECT T_Auftrag.* FROM T_Auftrag WHERE T_Auftrag.lId = 7 AND #tabelle#");
}

TEST(SqlTemplate, ALaterStepReplacesPlaceholdersInsideEarlierValues) {
  SqlTemplate t("VALUES ('#stBemerkung#', '#stKST#')");
  t.Replace("#stBemerkung#", "#stKST#").Replace("#stKST#", "K1");
  EXPECT_EQ(t.Text(), "VALUES ('K1', 'K1')");
  // A step does not rescan what it inserted itself.
  SqlTemplate self("#a#");
  self.Replace("#a#", "x#a#");
  EXPECT_EQ(self.Text(), "x#a#");
}

TEST(SqlTemplate, HundredsOfPlaceholdersAreAllFilled) {
  std::string text, expected;
  for (int k = 0; k < 300; ++k) {
    text += "#n" + std::to_string(k % 7) + "#,";
    expected += "v" + std::to_string(k % 7) + ",";
  }
  SqlTemplate t(text);
  for (int k = 0; k < 7; ++k) t.Replace("#n" + std::to_string(k) + "#", "v" + std::to_string(k));
  EXPECT_EQ(t.Text(), expected);
}

// Any template and any values: the same text as replacing step by step over
// the whole text, including values that hold '#' or placeholder names and
// placeholders glued to other text.
TEST(SqlTemplate, CollectedStepsGiveTheStepByStepText) {
  std::vector<std::string> pieces = {"#a#", "#bb#", "#c1#", "x", " ", ".", "'", "#",
                                     "a",   "(",    "#a#.#bb#"};
  const std::vector<std::string> values = {"",     "v",  "7",  "#a#", "#",          "bb",  "#bb",
                                           "c1#",  "'x'", "#a", "a#",  "#11/2/2026#", "#a#b", "x#bb#"};
  std::vector<std::string> names = {"#a#", "#bb#", "#c1#", "#zz#"};
  // As many names as an update fills, so that lookups by name collide.
  for (int k = 0; k < 40; ++k) {
    names.push_back("#p" + std::to_string(k) + "#");
    pieces.push_back(" #p" + std::to_string(k) + "#,");
  }
  std::mt19937 rng(11);
  // A third of the rounds fill one constant template again, with steps that
  // name its placeholders in this order or another, or only some of them.
  static const std::string constant = "x #a#, #bb# (#c1#) #p1#.#p2# #a# '#p3#'";
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (int k = static_cast<int>(rng() % 40); k > 0; --k) text += pieces[rng() % pieces.size()];
    if (round % 3 == 2) text = constant;
    std::string expected = text;
    // Half the templates as constants read in place, half as strings.
    SqlTemplate t = round % 3 == 2  ? SqlTemplate(constant.c_str())
                    : round % 2 == 1 ? SqlTemplate(text.c_str())
                                     : SqlTemplate(text);
    for (int k = static_cast<int>(rng() % 50); k > 0; --k) {
      const std::string& name = names[rng() % (round % 3 == 2 ? 8 : names.size())];
      const std::string& value = values[rng() % values.size()];
      std::string out;
      size_t from = 0;
      for (size_t at = expected.find(name); at != std::string::npos; at = expected.find(name, from)) {
        out += expected.substr(from, at - from) + value;
        from = at + name.size();
      }
      expected = out + expected.substr(from);
      // Half the values written in place, as records write their texts.
      if (rng() % 2) {
        t.ReplaceWith(name, [&value](std::string& to) { to += value; });
      } else {
        t.Replace(name, value);
      }
    }
    ASSERT_EQ(t.Text(), expected) << "template " << text;
  }
}

TEST(Literals, FlagsPerKind) {
  EXPECT_EQ(FlagLiteral(true, 1), "-1");
  EXPECT_EQ(FlagLiteral(true, 2), "1");
  EXPECT_EQ(FlagLiteral(true, 3), "1");
  EXPECT_EQ(FlagLiteral(false, 1), "0");
  EXPECT_EQ(FlagLiteral(false, 2), "0");
  EXPECT_EQ(TrueLiteral(1), "-1");
  EXPECT_EQ(TrueLiteral(2), "1");
}

TEST(Literals, NumbersAndMoney) {
  EXPECT_EQ(LongLiteral(4711), "4711");
  EXPECT_EQ(LongLiteral(-1), "-1");
  EXPECT_EQ(NumberLiteral(2.5), " 2.5");
  EXPECT_EQ(NumberLiteral(-3), "-3");
  EXPECT_EQ(CurrencyLiteral(Currency::FromDouble(12.5), 2), " 12.5");
  EXPECT_EQ(CurrencyLiteral(Currency::FromDouble(-0.5), 1), "-0.5");
}

TEST(Literals, DatesPerKindAndForRecords) {
  const Date d = Date::FromYmd(2026, 11, 15);
  EXPECT_EQ(FilterDateLiteral(d, 1), "#2026-11-15 00:00:00#");
  EXPECT_EQ(FilterDateLiteral(d, 2), "15.11.2026");
  // The filter form of other kinds is the date alone, even with a time part.
  EXPECT_EQ(FilterDateLiteral(Date::FromYmd(2026, 3, 5, 9, 0, 0), 2), "05.03.2026");
  EXPECT_EQ(SqlValueFormatter::Instance().DateLiteral(Date::FromYmd(2026, 3, 5, 9, 7, 1)),
            "#2026-03-05 09:07:01#");
  EXPECT_EQ(RecordDateText(d), "15.11.2026");
  EXPECT_EQ(RecordDateText(Date::FromYmd(2026, 3, 5, 9, 7, 1)), "05.03.2026 09:07:01");
  EXPECT_EQ(RecordDateText(NoDate), "31.12.9999");
}

TEST(Literals, TextIsQuotedOnlyByDoubling) {
  EXPECT_EQ(TextValue("O'Brien's"), "O''Brien''s");
  EXPECT_EQ(TextValue("#stKST# \\ %"), "#stKST# \\ %");
}

TEST(Literals, IdListRule) {
  EXPECT_EQ(IdListLiteral({"3", "7"}), "IN(3,7)");
  EXPECT_EQ(IdListLiteral({"7"}), "IN(7)");
  EXPECT_EQ(IdListLiteral({}), "IN)");
  EXPECT_EQ(IdListLiteral({"3) OR (1=1"}), "IN(3) OR (1=1)");  // elements are not protected
}
