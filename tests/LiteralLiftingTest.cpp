// Which literals are bound instead of sent: a literal lifted where the
// bound value could read differently would change a result, and one lifted
// where a name or a column position stands would break the statement.
#include <gtest/gtest.h>
#include <sqlite3.h>

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
  rules.decimal_marker = SqliteDialect().BoundDecimal();
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
  // cuKosten: an amount of 19 digits, 4 after the point; dStunden floating.
  rules.decimal_marker = "?";
  rules.decimal_room = [](const std::string& t,
                          const std::string& c) -> std::optional<DecimalRoom> {
    if (t != "T_Auftrag") return std::nullopt;
    if (c == "dStunden") return DecimalRoom{};
    if (c == "cuKosten") return DecimalRoom{false, 19, 4};
    return std::nullopt;
  };
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
      // A parameter the text holds already (SQLite reads ":int" as one) would
      // shift every bound value after it: such a text is run as it stands.
      {"DELETE FROM T_Auftrag WHERE x = '1'::int", "(not lifted)"},
      {"SELECT * FROM T_Auftrag WHERE lNr = 1 AND lSoId IN (?)", "(not lifted)"},
      {"SELECT * FROM T_Auftrag WHERE lNr = 1 AND lSoId IN (?2)", "(not lifted)"},
      {"SELECT * FROM T_Auftrag WHERE lNr = 1 AND lSoId IN (@a)", "(not lifted)"},
      {"SELECT * FROM T_Auftrag WHERE lNr = 1 AND lSoId IN ($a)", "(not lifted)"},
      {"SELECT * FROM T_Auftrag WHERE lNr = 1 AND lSoId IN (#a)", "(not lifted)"},
      {"SELECT * FROM T_Auftrag WHERE lNr = 1 AND stOrt = ':a' || '?'",
       "SELECT * FROM T_Auftrag WHERE lNr = ? AND stOrt = ? || ?"},
      // Subquery select lists keep theirs too; its WHERE is lifted.
      {"SELECT * FROM T_Auftrag WHERE lId IN (SELECT 1 FROM T_Meldung WHERE lNr = 9)",
       "SELECT * FROM T_Auftrag WHERE lId IN (SELECT 1 FROM T_Meldung WHERE lNr = ?)"},
      // Plain decimal integers and decimals: no exponents, hex, prefixed
      // strings or integers past 32 bits (a server types their literal wider
      // than a parameter compared with an integer column).
      {"SELECT * FROM t WHERE a = 1.5 AND b = 0x10 AND c = X'00' AND d = 99999999999999999999",
       "SELECT * FROM t WHERE a = +CAST(? AS REAL) AND b = 0x10 AND c = X'00' AND d = "
       "99999999999999999999"},
      {"SELECT * FROM t WHERE a = 2147483647 AND b = 2147483648 AND c = -2147483649",
       "SELECT * FROM t WHERE a = ? AND b = 2147483648 AND c = -2147483649"},
      {"SELECT * FROM t WHERE a IN (1e5, 1.5e3, .5, 5.) AND b = -0.25",
       "SELECT * FROM t WHERE a IN (1e5, 1.5e3, .5, 5.) AND b = -+CAST(? AS REAL)"},
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
  // Decimals only where assigned to a column that holds them unrounded;
  // never compared (a server may compare a bound text as a double), nor
  // with a sign (a minus before an untyped value is ambiguous).
  values.clear();
  EXPECT_EQ(ShapeOf("UPDATE T_Auftrag SET cuKosten = 1.5, dStunden = 0.123456, cuKosten = 0.12345, "
                    "lNr = 2.5, dStunden = -1.5, dStunden = 1.5 + 1 WHERE dStunden = 1.5",
                    Server(), &values),
            "UPDATE T_Auftrag SET cuKosten = ?, dStunden = ?, cuKosten = 0.12345, lNr = 2.5, "
            "dStunden = -1.5, dStunden = 1.5 + ? WHERE dStunden = 1.5");
  ASSERT_EQ(values.size(), 3u);
  EXPECT_EQ(values[0].kind, LiftedValue::kDecimal);
  EXPECT_EQ(values[1].text, "0.123456");
  EXPECT_EQ(ShapeOf("INSERT INTO T_Auftrag (cuKosten, lNr, dStunden) VALUES (12.25, 3.5, (1.5))",
                    Server()),
            "INSERT INTO T_Auftrag (cuKosten, lNr, dStunden) VALUES (?, 3.5, (1.5))");
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

// A decimal is bound as its digits and cast by SQLite itself: whatever it
// meets (a text column, a sign, arithmetic, a comparison across types), it
// must read as its literal does, down to the last bit of the double.
TEST(LiteralLifting, ABoundDecimalReadsOnSqliteAsItsLiteral) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(":memory:", &db), SQLITE_OK);
  ASSERT_EQ(
      sqlite3_exec(db,
                   "CREATE TABLE t (stOrt TEXT, cuKosten CURRENCY, dStunden DOUBLE, lNr INTEGER);"
                   "INSERT INTO t VALUES ('1.50', 1.5, 1.5, 2), ('1.5', 2, 0.1, 3);",
                   nullptr, nullptr, nullptr),
      SQLITE_OK);
  const auto rows = [db](const std::string& sql, const std::vector<LiftedValue>* values) {
    sqlite3_stmt* s = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(db, sql.c_str(), -1, &s, nullptr), SQLITE_OK) << sql;
    for (size_t k = 0; values && k < values->size(); ++k) {
      const LiftedValue& v = (*values)[k];
      const int at = static_cast<int>(k) + 1;
      if (v.kind == LiftedValue::kInteger)
        sqlite3_bind_int64(s, at, v.integer);
      else
        sqlite3_bind_text(s, at, v.text.data(), static_cast<int>(v.text.size()), SQLITE_STATIC);
    }
    std::string out;
    while (sqlite3_step(s) == SQLITE_ROW) {
      for (int i = 0; i < sqlite3_column_count(s); ++i) {
        out += std::to_string(sqlite3_column_type(s, i)) + ":";
        // Seventeen digits tell every double apart.
        if (sqlite3_column_type(s, i) == SQLITE_FLOAT) {
          char buf[40];
          std::snprintf(buf, sizeof buf, "%.17g", sqlite3_column_double(s, i));
          out += buf;
        } else if (const auto* t = sqlite3_column_text(s, i)) {
          out += reinterpret_cast<const char*>(t);
        }
        out += "|";
      }
      out += "\n";
    }
    sqlite3_finalize(s);
    return out;
  };
  for (const char* sql : {
           "SELECT stOrt FROM t WHERE stOrt = 1.5",
           "SELECT stOrt FROM t WHERE 1.50 = stOrt OR stOrt < 1.0",
           "SELECT lNr FROM t WHERE cuKosten = 1.5 AND dStunden > 0.5",
           "SELECT lNr FROM t WHERE dStunden = 0.1 OR dStunden = -0.0",
           "SELECT lNr, lNr * 0.1, lNr + 0.30000000000000004441, lNr - -0.0 FROM t WHERE lNr > 0.5",
           "SELECT lNr FROM t WHERE lNr = 2.0 OR stOrt || 0.5 = '1.50.5'",
           "SELECT lNr, 1 / 3.0 FROM t WHERE lNr IN (3.0, 2.000000000000000000001)",
           "SELECT typeof(x), x FROM (SELECT lNr * 123456789012345.6789 AS x FROM t) WHERE x > "
           "9.999999999999999e22 OR x > 0.1",
           "SELECT lNr FROM t WHERE 2.2250738585072011e-308 < 0.000000000000000000000000000000001",
           "SELECT lNr FROM t WHERE 179769313486231570000000000000000000000000000000000000000000000"
           "000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
           "000"
           "000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
           "000"
           "0000000000000000000000000000000000000000000000000000000000000000000000000000000000000."
           "9 > 1.1",
       }) {
    std::vector<LiftedValue> values;
    const std::string shape = ShapeOf(sql, Sqlite(), &values);
    ASSERT_NE(shape, sql) << "nothing lifted: " << sql;
    EXPECT_EQ(rows(shape, &values), rows(sql, nullptr)) << sql << "\n" << shape;
  }
  // The cast alone carries REAL affinity: '1.50' would then equal 1.5.
  std::vector<LiftedValue> values;
  ShapeOf("SELECT stOrt FROM t WHERE stOrt = 1.5", Sqlite(), &values);
  EXPECT_NE(rows("SELECT stOrt FROM t WHERE stOrt = CAST(? AS REAL)", &values),
            rows("SELECT stOrt FROM t WHERE stOrt = 1.5", nullptr));
  sqlite3_close(db);
}
