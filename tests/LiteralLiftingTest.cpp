// Which literals are bound instead of sent: a literal lifted where the
// bound value could read differently would change a result, and one lifted
// where a name or a column position stands would break the statement.
#include <gtest/gtest.h>

#include "engine/LiteralLifting.h"
#include "engine/dialect/ServerDialect.h"

using namespace ZTkDb::detail;

namespace {

std::string ShapeOf(const std::string& sql, const LiftingRules& rules,
                    std::vector<LiftedValue>* values = nullptr) {
  const auto lifted = LiftLiterals(Tokenize(sql, SqliteDialect().Lexical()), rules);
  if (!lifted) return "(not lifted)";
  if (values) *values = lifted->values;
  return lifted->shape;
}

LiftingRules Sqlite() {
  LiftingRules rules;
  rules.any_string = true;
  return rules;
}

// A server schema: T_Auftrag with a text, a date and a number column.
LiftingRules Server() {
  LiftingRules rules;
  rules.is_table = [](const std::string& t) { return t == "T_Auftrag" || t == "T_Meldung"; };
  rules.column_class = [](const std::string& t, const std::string& c) {
    if (t != "T_Auftrag" && t != "T_Meldung") return ColumnClass::kUnknown;
    if (c == "stOrt" || c == "stUId") return ColumnClass::kText;
    if (c == "AuftragsDatum") return ColumnClass::kDate;
    if (c == "lId" || c == "lNr") return ColumnClass::kOther;
    return ColumnClass::kUnknown;
  };
  rules.refuse_question_marks = true;
  return rules;
}

}  // namespace

TEST(LiteralLifting, ValuesAreLiftedWhereTheyStandAsValuesOnly) {
  const struct {
    const char* sql;
    const char* shape;
  } cases[] = {
      {"SELECT * FROM T_Auftrag WHERE lId=42", "SELECT * FROM T_Auftrag WHERE lId=?"},
      {"UPDATE T_Auftrag SET stOrt = 'a''b', lNr = -7 WHERE stUId='x' AND lNr IN (1, 2)",
       "UPDATE T_Auftrag SET stOrt = ?, lNr = ? WHERE stUId=? AND lNr IN (?, ?)"},
      // A literal in the select list names its column; ORDER BY 2 is a position.
      {"SELECT 'x', lNr + 1 AS n FROM T_Auftrag WHERE lNr > 1 ORDER BY 2, lNr",
       "SELECT 'x', lNr + 1 AS n FROM T_Auftrag WHERE lNr > ? ORDER BY 2, lNr"},
      {"SELECT lId FROM T_Auftrag GROUP BY lId HAVING COUNT(*) > 3 LIMIT 5",
       "SELECT lId FROM T_Auftrag GROUP BY lId HAVING COUNT(*) > 3 LIMIT 5"},
      // Names: INSERT's column list, SQLite's 'name' after FROM or AS, type sizes.
      {"INSERT INTO T_Auftrag ('stOrt', lNr) VALUES ('Ulm', 3)",
       "INSERT INTO T_Auftrag ('stOrt', lNr) VALUES (?, ?)"},
      {"SELECT * FROM 'T_Auftrag' a WHERE CAST(lNr AS DECIMAL(19, 4)) = 2",
       "SELECT * FROM 'T_Auftrag' a WHERE CAST(lNr AS DECIMAL(19, 4)) = ?"},
      {"DELETE FROM T_Auftrag WHERE x = '1'::int", "DELETE FROM T_Auftrag WHERE x = '1'::int"},
      // Subquery select lists keep theirs too; its WHERE is lifted.
      {"SELECT * FROM T_Auftrag WHERE lId IN (SELECT 1 FROM T_Meldung WHERE lNr = 9)",
       "SELECT * FROM T_Auftrag WHERE lId IN (SELECT 1 FROM T_Meldung WHERE lNr = ?)"},
      // Only plain decimal integers: no decimals, hex, or prefixed strings.
      {"SELECT * FROM t WHERE a = 1.5 AND b = 0x10 AND c = X'00' AND d = 99999999999999999999",
       "SELECT * FROM t WHERE a = 1.5 AND b = 0x10 AND c = X'00' AND d = 99999999999999999999"},
  };
  for (const auto& c : cases) EXPECT_EQ(ShapeOf(c.sql, Sqlite()), c.shape) << c.sql;
  EXPECT_EQ(ShapeOf("CREATE TABLE t (a TEXT DEFAULT 'x')", Sqlite()), "(not lifted)");
  EXPECT_EQ(ShapeOf("BEGIN", Sqlite()), "(not lifted)");

  // The sign goes with its number; a binary minus stays.
  std::vector<LiftedValue> values;
  EXPECT_EQ(ShapeOf("SELECT * FROM t WHERE a = -5 AND b - 3 > (-2)", Sqlite(), &values),
            "SELECT * FROM t WHERE a = ? AND b - ? > (?)");
  ASSERT_EQ(values.size(), 3u);
  EXPECT_EQ(values[0].integer, -5);
  EXPECT_EQ(values[1].integer, 3);
  EXPECT_EQ(values[2].integer, -2);
}

TEST(LiteralLifting, OnAServerStringsAreBoundOnlyBesideAColumnOfKnownType) {
  std::vector<LiftedValue> values;
  EXPECT_EQ(ShapeOf("SELECT * FROM T_Auftrag WHERE stOrt = 'Ulm' AND AuftragsDatum >= "
                    "'2026-11-15 00:00:00' AND stAuftrag = 'x' AND 'y' = T_Auftrag.stUId",
                    Server(), &values),
            "SELECT * FROM T_Auftrag WHERE stOrt = ? AND AuftragsDatum >= ? AND stAuftrag = 'x' "
            "AND ? = T_Auftrag.stUId");
  ASSERT_EQ(values.size(), 3u);
  EXPECT_EQ(values[0].kind, LiftedValue::kText);
  EXPECT_EQ(values[1].kind, LiftedValue::kTimestamp);
  EXPECT_EQ(values[1].year, 2026);
  EXPECT_EQ(values[1].second, 0);
  EXPECT_EQ(values[2].text, "y");

  // A date column beside a text that is not the stored form, a string that
  // is part of a larger expression, a number column: left as text.
  EXPECT_EQ(ShapeOf("UPDATE T_Auftrag SET AuftragsDatum = '15.11.2026', stOrt = 'a' || stOrt, "
                    "lNr = '5' WHERE lId = 1",
                    Server()),
            "UPDATE T_Auftrag SET AuftragsDatum = '15.11.2026', stOrt = 'a' || stOrt, lNr = '5' "
            "WHERE lId = ?");
  EXPECT_EQ(ShapeOf("INSERT INTO T_Auftrag (stOrt, AuftragsDatum, stAuftrag, lNr) VALUES ('a', "
                    "'2026-01-02 03:04:05', 'b', 7)",
                    Server()),
            "INSERT INTO T_Auftrag (stOrt, AuftragsDatum, stAuftrag, lNr) VALUES (?, ?, 'b', ?)");
  // A '?' anywhere: the driver's own marker reading must not meet a new one.
  EXPECT_EQ(ShapeOf("SELECT * FROM T_Auftrag WHERE stOrt = 'why?' AND lId = 1", Server()),
            "(not lifted)");
}

TEST(LiteralLifting, AStatementWithMoreValuesThanAServerBindsRunsAsText) {
  std::string sql = "SELECT * FROM T_Auftrag WHERE lId IN (0";
  for (int i = 1; i < 2001; ++i) sql += ", " + std::to_string(i);
  sql += ")";
  LiftingRules rules = Server();
  EXPECT_EQ(ShapeOf(sql, rules), "(not lifted)");
  rules.max_values = 2001;
  EXPECT_NE(ShapeOf(sql, rules), "(not lifted)");
}
