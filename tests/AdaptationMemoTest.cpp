// A statement whose form was learnt must run exactly as the full reading
// would run it: the same shape, the same values, the same verdicts, for
// every literal a host may send in every place a literal may stand.
#include <gtest/gtest.h>

#include "EngineRules.h"
#include "engine/AdaptationMemo.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using namespace ZTkDb::detail;

namespace {

// Texts that could be taken for something else: quotes, dates and
// near-dates, markers, backslashes, and the stand-ins learning uses.
const std::vector<std::string> kStrings = {
    "'abc'",    "'O''Brien'", "''",        "'9x'",          "'1.5'",           "'12.05.2024'",
    "'what?'",  "'back\\'",   "'{8F-11}'", "'ZtkMemoProbe0x'", "'1.2.2024 10:00'", "'-- x'",
    "'2024-05-12 10:00:00'",
};
// Around the 32 bits a bound integer has, and in the stand-ins' own range.
const std::vector<std::string> kNumbers = {"0",          "7",         "123456789012345678",
                                           "2147483648", "00012",     "9070000000000000",
                                           "2147483647", "2070000001"};
// Decimals, the stand-in among them, and numbers a decimal slot may meet;
// the first rounds' fit an amount's column, so that its form is learnt
// before digits that do not fit it come.
const std::vector<std::string> kDecimals = {"1.5", "0.0", "125.5000", "00.10", "99999999999999.9999",
                                            "12345678901234567890.0123456789", "3",
                                            "9070000000000000.25"};

// `form` with each {N} and {S} filled, starting at `seed` in the pools.
std::string Fill(const std::string& form, size_t seed) {
  std::string out;
  size_t n = seed, s = seed * 7, d = seed * 3;
  for (size_t i = 0; i < form.size(); ++i) {
    if (form.compare(i, 3, "{D}") == 0) {
      out += kDecimals[d++ % kDecimals.size()];
      i += 2;
    } else if (form.compare(i, 3, "{N}") == 0) {
      out += kNumbers[n++ % kNumbers.size()];
      i += 2;
    } else if (form.compare(i, 3, "{S}") == 0) {
      out += kStrings[s++ % kStrings.size()];
      i += 2;
    } else {
      out += form[i];
    }
  }
  return out;
}

std::string Describe(const StatementFacts& f) {
  std::string out = f.plain_query ? "query|" : "other|";
  if (!f.lifted) return out + "(not lifted)";
  out += f.lifted->Shape();
  for (const LiftedValue& v : f.lifted->values) {
    out += "|" + std::to_string(v.kind) + ":" + std::to_string(v.integer) + ":" + v.text + ":" +
           std::to_string(v.year) + "-" + std::to_string(v.month) + "-" + std::to_string(v.day) +
           " " + std::to_string(v.hour) + ":" + std::to_string(v.minute) + ":" +
           std::to_string(v.second);
  }
  return out;
}

}  // namespace

class AdaptationMemoOn : public testing::TestWithParam<const ServerDialect*> {};

TEST_P(AdaptationMemoOn, ALearntFormRunsAsTheFullReadingWouldForAnyLiteral) {
  const std::vector<std::string> forms = {
      "SELECT T_Auftrag.*, T_AuftragMeldung.lMeldungId FROM T_Auftrag LEFT JOIN T_AuftragMeldung "
      "ON T_Auftrag.lId = T_AuftragMeldung.lAuftragId WHERE T_Auftrag.lId = {N}",
      "UPDATE T_Auftrag SET T_Auftrag.stUId = {S}, T_Auftrag.AuftragsDatum = {S}, "
      "T_Auftrag.lNr = {N}, T_Auftrag.stAuftrag = {S} WHERE T_Auftrag.lId = {N} AND "
      "T_Auftrag.stUId = {S}",
      "INSERT INTO T_Auftrag (lNr, stUId, AuftragsDatum, stAuftrag) VALUES ({N}, {S}, {S}, {S})",
      "SELECT * FROM T_Auftrag WHERE lNr > - {N} ORDER BY 2 LIMIT {N}",
      "SELECT {N} AS x, {S} AS y FROM T_Auftrag WHERE stAuftrag = {S}",
      "DELETE T_Auftrag.* FROM T_Auftrag WHERE lId = {N}",
      "SELECT * FROM T_Auftrag WHERE stAuftrag IN ({S}, {S}, {S}) AND lNr BETWEEN {N} AND -{N}",
      "SELECT * FROM T_Auftrag WHERE AuftragsDatum = {S} AND #01/02/2024# < ErledigtDatum",
      "SELECT * FROM T_Auftrag WHERE stAuftrag = {S} -- {S}\n AND lNr = {N};",
      "SELECT * FROM T_Auftrag WHERE stAuftrag = {S}; DELETE FROM T_Auftrag WHERE lId = {N}",
      "UPDATE T_Auftrag SET T_Auftrag.lNr = {D}, T_Auftrag.stAuftrag = {S} WHERE "
      "T_Auftrag.lId = {N} AND T_Auftrag.lNr <> -{D}",
      "SELECT {D} AS x, lNr * {D} FROM T_Auftrag WHERE lNr IN ({D}, -{D}, {N}) ORDER BY {N}",
      "UPDATE T_Auftrag SET cuKosten = {D}, dStunden = {D}, stAuftrag = {S} WHERE lId = {N}",
      "INSERT INTO T_Auftrag (cuKosten, dStunden, lNr) VALUES ({D}, {D}, {N})",
  };
  ztktest::EngineRules engine(*GetParam());
  AdaptationMemo memo(engine.rules);
  int recalled = 0;
  for (size_t round = 0; round < 24; ++round) {
    for (const std::string& form : forms) {
      const std::string sql = Fill(form, round);
      SCOPED_TRACE(sql);
      StatementFacts full, fromMemo;
      std::string fullText, memoText;
      long fullError = 0, memoError = 0;
      try {
        fullText = AdaptStatement(sql, engine.rules, &full);
      } catch (const Error& e) {
        fullError = e.Number();
      }
      try {
        memoText = memo.Adapt(sql, fromMemo);
      } catch (const Error& e) {
        memoError = e.Number();
      }
      ASSERT_EQ(memoError, fullError);
      if (fullError) continue;
      ASSERT_EQ(Describe(fromMemo), Describe(full));
      // The engine hands values back; the next recall, of any form, fills them.
      if (fromMemo.lifted) AdaptationMemo::GiveBack(std::move(fromMemo.lifted->values));
      if (memoText.empty()) {
        recalled += &form == &forms.front();
      } else {
        EXPECT_EQ(memoText, fullText);
      }
    }
  }
  // A read by id comes from the memo from its third time on, whenever its id
  // fits 32 bits (five of every eight rounds: 15 of 24).
  EXPECT_EQ(recalled, 13);
}

// A learnt form is matched as text; what fills its gaps must not change how
// the bytes around them read. Each group is learnt from its first two texts
// and then asked the rest, every answer checked against the full reading.
TEST_P(AdaptationMemoOn, ATextThatOnlyLooksLikeALearntFormIsReadAfresh) {
  const std::vector<std::vector<std::string>> groups = {
      // '#' looks ahead for its closing '#': other digits make a date of it.
      {"SELECT * FROM T_Auftrag WHERE lNr = 1 AND AuftragsDatum = #2024-01-32#",
       "SELECT * FROM T_Auftrag WHERE lNr = 2 AND AuftragsDatum = #2024-01-32#",
       "SELECT * FROM T_Auftrag WHERE lNr = 3 AND AuftragsDatum = #2024-01-15#",
       "SELECT * FROM T_Auftrag WHERE lNr = 4 AND AuftragsDatum = #2024-02-29#"},
      {"SELECT * FROM T_Auftrag WHERE lNr = 1 AND # 5 = 5",
       "SELECT * FROM T_Auftrag WHERE lNr = 2 AND # 5 = 5",
       "SELECT * FROM T_Auftrag WHERE lNr = 3 AND #12/1/2024# = 5"},
      // Gaps filled with more than a plain literal, or a literal of another kind.
      {"SELECT * FROM T_Auftrag WHERE lNr = 5 AND stAuftrag = 'a' AND lId = 6",
       "SELECT * FROM T_Auftrag WHERE lNr = 7 AND stAuftrag = 'b' AND lId = 8",
       "SELECT * FROM T_Auftrag WHERE lNr = 5e3 AND stAuftrag = 'a' AND lId = 6",
       "SELECT * FROM T_Auftrag WHERE lNr = 5.5 AND stAuftrag = 'a' AND lId = 6",
       "SELECT * FROM T_Auftrag WHERE lNr = 5 AND stAuftrag = 'a'' AND lId = ''6' AND lId = 6",
       "SELECT * FROM T_Auftrag WHERE lNr = 5 AND stAuftrag = 'a\\' AND lId = 6",
       "SELECT * FROM T_Auftrag WHERE lNr = 5 AND stAuftrag = 'a?' AND lId = 6",
       "SELECT * FROM T_Auftrag WHERE lNr = 5 AND stAuftrag = '1.2.2024' AND lId = 6",
       "SELECT * FROM T_Auftrag WHERE lNr = 5 AND stAuftrag = 'x' AND lId = 1234567890123456789",
       "SELECT * FROM T_Auftrag WHERE lNr = 5 AND stAuftrag = 'x' AND lId = 6 -- ",
       "SELECT * FROM T_Auftrag WHERE lNr = 5 AND stAuftrag = 'x' AND lId = 6;",
       "SELECT * FROM T_Auftrag WHERE lNr = 5 AND stAuftrag = '' AND lId = 00"},
      // A decimal's gap filled with what only begins like one.
      {"SELECT * FROM T_Auftrag WHERE lNr = 1.5 AND lId = 2",
       "SELECT * FROM T_Auftrag WHERE lNr = 2.5 AND lId = 3",
       "SELECT * FROM T_Auftrag WHERE lNr = 1.5e3 AND lId = 2",
       "SELECT * FROM T_Auftrag WHERE lNr = 1. AND lId = 2",
       "SELECT * FROM T_Auftrag WHERE lNr = 1.5.5 AND lId = 2",
       "SELECT * FROM T_Auftrag WHERE lNr = 15 AND lId = 2",
       "SELECT * FROM T_Auftrag WHERE lNr = 0x1.5 AND lId = 2",
       "SELECT * FROM T_Auftrag WHERE lNr = '1.5' AND lId = 2",
       "SELECT * FROM T_Auftrag WHERE lNr = 1.5' AND lId = 2",
       "SELECT * FROM T_Auftrag WHERE lNr = 00000000000000000000000.1 AND lId = 2"},
      // A server binds a decimal only where its digits fit the column.
      {"UPDATE T_Auftrag SET cuKosten = 1.5 WHERE lId = 1",
       "UPDATE T_Auftrag SET cuKosten = 2.5 WHERE lId = 2",
       "UPDATE T_Auftrag SET cuKosten = 1.23456 WHERE lId = 3",
       "UPDATE T_Auftrag SET cuKosten = 1234567890123456.5 WHERE lId = 4",
       "UPDATE T_Auftrag SET cuKosten = 3.5 WHERE lId = 5"},
      // Literals side by side, and a string before a line break.
      {"SELECT 1'a' FROM T_Auftrag WHERE stAuftrag = 'a'\n",
       "SELECT 2'b' FROM T_Auftrag WHERE stAuftrag = 'b'\n",
       "SELECT 3'c' FROM T_Auftrag WHERE stAuftrag = 'c'\n'd'",
       "SELECT 33'c''d' FROM T_Auftrag WHERE stAuftrag = 'c'\n"},
  };
  ztktest::EngineRules engine(*GetParam());
  for (const auto& group : groups) {
    AdaptationMemo memo(engine.rules);
    for (const std::string& sql : group) {
      SCOPED_TRACE(sql);
      StatementFacts full, fromMemo;
      long fullError = 0, memoError = 0;
      try {
        AdaptStatement(sql, engine.rules, &full);
      } catch (const Error& e) {
        fullError = e.Number();
      }
      try {
        memo.Adapt(sql, fromMemo);
      } catch (const Error& e) {
        memoError = e.Number();
      }
      ASSERT_EQ(memoError, fullError);
      if (!fullError) {
        ASSERT_EQ(Describe(fromMemo), Describe(full));
      }
    }
  }
}

// Every booking brings an amount of its own: its statement must come from
// the memo like any other, as long as the digits fit where they are bound;
// digits that do not fit are read afresh, as the full reading would.
TEST_P(AdaptationMemoOn, AnAmountOfNewDigitsIsRecalledWhereItFitsItsColumn) {
  ztktest::EngineRules engine(*GetParam());
  AdaptationMemo memo(engine.rules);
  const bool server = GetParam() != &SqliteDialect();
  const struct {
    const char* amount;
    bool recalled;
  } cases[] = {{"1.5", false},     {"2.25", false},  {"1250.0001", true}, {"0.5", true},
               {"1.23456", !server}, {"999999999999999.9999", true},
               {"1234567890123456.5", !server}, {"7.1", true}};
  for (const char* form : {"UPDATE T_Auftrag SET cuKosten = {A}, stAuftrag = 'x' WHERE lId = 3",
                           "INSERT INTO T_Auftrag (lNr, cuKosten, dStunden) VALUES (1, {A}, {A})"}) {
    for (const auto& c : cases) {
      std::string sql = form;
      for (size_t at; (at = sql.find("{A}")) != std::string::npos;) sql.replace(at, 3, c.amount);
      SCOPED_TRACE(sql);
      StatementFacts full, fromMemo;
      AdaptStatement(sql, engine.rules, &full);
      const bool recalled = memo.Adapt(sql, fromMemo).empty();
      EXPECT_EQ(Describe(fromMemo), Describe(full));
      EXPECT_EQ(recalled, c.recalled);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Engines, AdaptationMemoOn,
                         testing::Values(&SqliteDialect(), &PostgresDialect(), &MariaDbDialect()),
                         [](const testing::TestParamInfo<const ServerDialect*>& p) {
                           return std::string(p.param->Name());
                         });
