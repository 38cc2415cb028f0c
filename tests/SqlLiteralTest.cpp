#include <gtest/gtest.h>

#include <cstdint>

#include "connection/SqlValueFormatter.h"
#include "sql/Literals.h"
#include "sql/Statement.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using namespace ZTkDb::detail;

namespace {
std::string KeyOf(const Statement& s) {
  std::string key;
  s.AppendKey(key);
  return key;
}
}  // namespace

TEST(Statement, ReplacesEveryOccurrenceCaseSensitively) {
  Statement t("SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lId = #lId# AND #tabelle#",
              detail::StorageKind::Odbc);
  t.Name("#Tabelle#", "T_Auftrag").Long("#lId#", 7);
  EXPECT_EQ(t.Render(), "SELECT T_Auftrag.* FROM T_Auftrag WHERE T_Auftrag.lId = 7 AND #tabelle#");
}

TEST(Statement, ALaterStepReplacesPlaceholdersInsideEarlierValues) {
  Statement t("VALUES ('#stBemerkung#', '#stKST#')", detail::StorageKind::Odbc);
  t.Text("#stBemerkung#", "#stKST#").Text("#stKST#", "K'1");
  EXPECT_EQ(t.Render(), "VALUES ('K''1', 'K''1')");
  // Such a value cannot be bound for its literal.
  EXPECT_FALSE(t.Bindable());
  // A step does not rescan what it inserted itself.
  Statement self("#a#", detail::StorageKind::Odbc);
  self.Raw("#a#", "x#a#");
  EXPECT_EQ(self.Render(), "x#a#");
  // A placeholder filled twice keeps the first value.
  Statement twice("#a# #a#", detail::StorageKind::Odbc);
  twice.Long("#a#", 1).Long("#a#", 2);
  EXPECT_EQ(twice.Render(), "1 1");
}

TEST(Statement, LiteralFormsFollowTheKind) {
  const Date d = Date::FromYmd(2026, 11, 15, 9, 7, 1);
  Statement jet("#f# #d# #r# #c# #n# #t#", detail::StorageKind::Jet);
  jet.Flag("#f#", true).FilterDate("#d#", d).RecordDate("#r#", d);
  jet.Amount("#c#", Currency::FromScaled(-5000), INT64_MAX).Number("#n#", 2.5).Text("#t#", "a'b");
  EXPECT_EQ(jet.Render(), "-1 #2026-11-15 09:07:01# 15.11.2026 09:07:01 -0.5  2.5 a''b");
  Statement other("#f# #d#", detail::StorageKind::Odbc);
  other.Flag("#f#", true).FilterDate("#d#", d);
  EXPECT_EQ(other.Render(), "1 15.11.2026");
  // A kind the library does not know writes a flag as the servers read it.
  EXPECT_EQ(FlagLiteral(true, static_cast<StorageKind>(3)), "1");
  // Values the storage cannot give back are refused as they are added.
  Statement bad("#d#", detail::StorageKind::Odbc);
  EXPECT_THROW(bad.RecordDate("#d#", Date(3e6)), Error);
  EXPECT_THROW(bad.Amount("#c#", Currency::FromScaled(INT64_MAX), 1000), Error);
}

TEST(Statement, TheKeyHoldsTheShapeAndTheClassesOfValues) {
  auto make = [](int64_t id, const std::string& text, const char* table, const std::string& raw) {
    static const char* const kText = "SELECT * FROM #T# WHERE a = #a# AND b = '#b#' AND c = #c#";
    Statement s(kText, detail::StorageKind::Odbc);
    s.Name("#T#", table).Long("#a#", id).Text("#b#", text).Raw("#c#", raw);
    return s;
  };
  const std::string key = KeyOf(make(1, "x", "T1", "abc"));
  EXPECT_EQ(KeyOf(make(2147483647, "O'Brien", "T1", "zz-9")), key);  // values only
  EXPECT_NE(KeyOf(make(-1, "x", "T1", "abc")), key);                 // a sign reads as a token
  EXPECT_NE(KeyOf(make(1, "x", "T2", "abc")), key);                  // a name
  // Raw text that is more than a value goes as text.
  EXPECT_FALSE(make(1, "x", "T1", "a' OR '1").Bindable());
  // An integer past 32 bits, a text a later step could read: no binding.
  EXPECT_FALSE(make(int64_t{1} << 40, "x", "T1", "a").Bindable());
  EXPECT_FALSE(make(1, "24.11.2026", "T1", "a").Bindable());
  EXPECT_FALSE(make(1, "a\\b", "T1", "a").Bindable());
  EXPECT_TRUE(make(1, "a'b\n%_", "T1", "a").Bindable());
}

TEST(Statement, StandInsKeepEachValuesClassAndDiffer) {
  Statement s("#a# #b# #c# #d# #e#", detail::StorageKind::Jet);
  s.Long("#a#", -7).Amount("#b#", Currency::FromScaled(12345), INT64_MAX).Flag("#c#", true);
  s.RecordDate("#d#", Date::FromYmd(2026, 1, 2)).Text("#e#", "x");
  std::vector<FillStep> a = s.Steps(), b = s.Steps();
  for (size_t i = 0; i < a.size(); ++i) {
    a[i] = s.StandIn(s.Steps()[i], i, 0);
    b[i] = s.StandIn(s.Steps()[i], i, 1);
    EXPECT_EQ(a[i].cls, s.Steps()[i].cls) << i;
    EXPECT_NE(s.LiteralOf(a[i]), s.LiteralOf(b[i])) << i;
  }
  EXPECT_EQ(s.LiteralOf(a[0]).front(), '-');
  EXPECT_NE(s.LiteralOf(a[1]).find('.'), std::string::npos);
  EXPECT_EQ(s.LiteralOf(a[3]).size(), 10u);  // a date at midnight stays one
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
