#include <gtest/gtest.h>
#include <strings.h>

#include "engine/StatementAdapter.h"
#include "ztkdb/Date.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using ZTkDb::detail::AdaptationRules;
using ZTkDb::detail::AdaptStatement;

namespace {

// The schema facts of the two tables the rules need, without an engine.
AdaptationRules TestRules() {
  AdaptationRules rules;
  rules.date_literal = [](const Date& d) { return "'" + d.IsoText() + "'"; };
  rules.is_table = [](const std::string& t) {
    return strcasecmp(t.c_str(), "T_Auftrag") == 0 || strcasecmp(t.c_str(), "T_Meldung") == 0;
  };
  rules.is_date_column = [](const std::string& t, const std::string& c) {
    if (strcasecmp(t.c_str(), "T_Auftrag") != 0 && strcasecmp(t.c_str(), "T_Meldung") != 0) {
      return false;
    }
    for (const char* d : {"AuftragsDatum", "ErledigtDatum", "MeldeDatum", "ErledBisDatum"}) {
      if (strcasecmp(c.c_str(), d) == 0) return true;
    }
    return false;
  };
  return rules;
}

std::string Adapt(const std::string& sql) { return AdaptStatement(sql, TestRules()); }

}  // namespace

TEST(Adaptation, JetDateLiteralBecomesStoredForm) {
  EXPECT_EQ(Adapt("SELECT * FROM T_Auftrag WHERE T_Auftrag.ErledigtDatum>=#2026-10-23 00:00:00#"),
            "SELECT * FROM T_Auftrag WHERE T_Auftrag.ErledigtDatum>='2026-10-23 00:00:00'");
  EXPECT_EQ(Adapt("SELECT 1 WHERE x = #11/15/2026#"), "SELECT 1 WHERE x = '2026-11-15 00:00:00'");
}

TEST(Adaptation, GermanDateInDateColumnPositions) {
  // comparison, both directions, bracketed column
  EXPECT_EQ(
      Adapt("SELECT T_Auftrag.* FROM T_Auftrag WHERE T_Auftrag.Auftragsdatum >= '01.11.2026'"),
      "SELECT T_Auftrag.* FROM T_Auftrag WHERE T_Auftrag.Auftragsdatum >= '2026-11-01 "
      "00:00:00'");
  EXPECT_EQ(Adapt("SELECT 1 FROM T_Meldung Where (((T_Meldung.MeldeDatum) <= '15.11.2026'))"),
            "SELECT 1 FROM T_Meldung Where (((T_Meldung.MeldeDatum) <= '2026-11-15 00:00:00'))");
  EXPECT_EQ(Adapt("SELECT 1 FROM T_Meldung WHERE '15.11.2026 08:30:00' < (MeldeDatum)"),
            "SELECT 1 FROM T_Meldung WHERE '2026-11-15 08:30:00' < (MeldeDatum)");
  // SET col = 'text' in an UPDATE, unqualified column of the target table
  EXPECT_EQ(Adapt("UPDATE T_Auftrag SET AuftragsDatum = '31.12.9999', stAuftrag = '31.12.9999'"),
            "UPDATE T_Auftrag SET AuftragsDatum = '9999-12-31 00:00:00', stAuftrag = '31.12.9999'");
}

TEST(Adaptation, InsertPairsColumnsWithValuesByIndex) {
  EXPECT_EQ(Adapt("INSERT INTO T_Auftrag (stUId, AuftragsDatum, stAuftrag, lNr) VALUES ('u', "
                  "'15.11.2026', '15.11.2026', (1+2))"),
            "INSERT INTO T_Auftrag (stUId, AuftragsDatum, stAuftrag, lNr) VALUES ('u', '2026-11-15 "
            "00:00:00', '15.11.2026', (1+2))");
}

TEST(Adaptation, DateLookingTextOutsideDatePositionsIsUntouched) {
  for (const std::string sql : {
           "SELECT 1 FROM T_Auftrag WHERE T_Auftrag.stAuftrag = '15.11.2026'",
           "SELECT 1 FROM T_Auftrag WHERE T_Auftrag.AuftragsDatum = 'not a date'",
           "SELECT 1 FROM T_Auftrag WHERE T_Auftrag.AuftragsDatum = '2026-11-15'",
           "SELECT '15.11.2026' FROM T_Auftrag",
           "SELECT 1 FROM T_Auftrag WHERE T_Auftrag.stAuftrag = 'it''s #2026-01-01# ; here'",
           "SELECT 1 FROM T_Auftrag WHERE T_Auftrag.lSoId IN)",
           "SELECT 1 FROM T_Meldung WHERE T_Meldung.MeldeDatum = #dat#   ANDT_Meldung.x >= 8:00",
           "   \n\tselect  *\nfrom [T_Auftrag] -- comment with '15.11.2026'\n",
       }) {
    EXPECT_EQ(Adapt(sql), sql);
  }
}

TEST(Adaptation, DeleteFormsBecomeDeleteFrom) {
  EXPECT_EQ(Adapt("DELETE T_Auftrag.* FROM T_Auftrag WHERE T_Auftrag.lId = 7;"),
            "DELETE FROM T_Auftrag WHERE T_Auftrag.lId = 7;");
  EXPECT_EQ(Adapt("DELETE T_Auftrag WHERE T_Auftrag.lId = 7"),
            "DELETE FROM T_Auftrag WHERE T_Auftrag.lId = 7");
  EXPECT_EQ(Adapt("DELETE FROM T_Auftrag WHERE lId = 7"), "DELETE FROM T_Auftrag WHERE lId = 7");
  EXPECT_EQ(Adapt("DELETE T_AuftragMeldung.* FROM T_AuftragMeldung WHERE "
                  "((T_AuftragMeldung.lMeldungId = 3) AND (T_AuftragMeldung.lAuftragId = 4))"),
            "DELETE FROM T_AuftragMeldung WHERE ((T_AuftragMeldung.lMeldungId = 3) AND "
            "(T_AuftragMeldung.lAuftragId = 4))");
}

TEST(Adaptation, UpdateSetTargetsLoseTheTableQualifier) {
  EXPECT_EQ(Adapt("UPDATE T_Auftrag SET T_Auftrag.stUId = 'n', T_Auftrag.lNr = "
                  "(1+2),T_Auftrag.ErledigtDatum "
                  "= '01.02.2026' WHERE ((T_Auftrag.lId=1) AND (T_Auftrag.stUId='o'))"),
            "UPDATE T_Auftrag SET stUId = 'n', lNr = (1+2),ErledigtDatum = '2026-02-01 00:00:00' "
            "WHERE ((T_Auftrag.lId=1) AND (T_Auftrag.stUId='o'))");
  // another table's qualifier is the engine's to reject
  EXPECT_EQ(Adapt("UPDATE T_Auftrag SET T_Meldung.lNr = 1"),
            "UPDATE T_Auftrag SET T_Meldung.lNr = 1");
}

TEST(Adaptation, SecondStatementIsRefused) {
  for (const std::string sql : {
           "SELECT 1; SELECT 2",
           "SELECT * FROM T_Meldung WHERE stNrVorsatz = 'x'; DELETE FROM T_Meldung; --'",
           "SELECT 1;;DROP TABLE T_Auftrag",
       }) {
    try {
      Adapt(sql);
      ADD_FAILURE() << "accepted: " << sql;
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), errInvalidStatement) << sql;
    }
  }
  EXPECT_EQ(Adapt("SELECT 1;  -- done\n"), "SELECT 1;  -- done\n");
  EXPECT_EQ(Adapt("SELECT ';' ;"), "SELECT ';' ;");
}

TEST(Adaptation, AdaptingTwiceChangesNothingMore) {
  const std::string sql =
      "DELETE T_Auftrag.* FROM T_Auftrag WHERE T_Auftrag.ErledigtDatum >= #2026-01-01 00:00:00# "
      "AND T_Auftrag.AuftragsDatum < '02.01.2026'";
  const std::string once = Adapt(sql);
  EXPECT_EQ(Adapt(once), once);
}
