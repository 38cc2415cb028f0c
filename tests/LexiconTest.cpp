// Each server's reading of statement text: where its strings, names and
// comments end decides where a statement ends, and a text any of them could
// read two ways is refused before it is sent.
#include <gtest/gtest.h>

#include "TestSupport.h"
#include "engine/StatementAdapter.h"
#include "engine/dialect/ServerDialect.h"
#include "ztkdb/Date.h"

using namespace ZTkDb::detail;
using ztktest::ErrorNumberOf;

namespace {

struct Case {
  const char* text;
  long sqlite, postgres, mariadb, generic;  // 0 one statement, 3129 two, 3075 unreadable
};

// The statements as each engine adapts them, with no schema behind them.
long Outcome(const ServerDialect& dialect, const std::string& text, std::string* out = nullptr) {
  AdaptationRules rules;
  rules.date_literal = [&](const ZTkDb::Date& d) { return dialect.DateLiteral(d); };
  rules.lexicon = &dialect.Lexical();
  rules.harden_string = [&](const Token& t) { return dialect.HardenString(t); };
  return ErrorNumberOf([&] {
    const std::string adapted = AdaptStatement(text, rules);
    if (out) *out = adapted;
  });
}

}  // namespace

TEST(Lexicon, EachServerFindsTheStatementsItsServerWouldRun) {
  const Case cases[] = {
      // The library's own forms read alike everywhere.
      {"SELECT * FROM T_Auftrag WHERE stNrVorsatz = 'O''Neil; x' ;", 0, 0, 0, 0},
      {"SELECT 1; SELECT 2", 3129, 3129, 3129, 3129},
      {"SELECT 'a'; -- trailing\n", 0, 0, 0, 0},
      // Strings that end at a different quote on different servers.
      {"SELECT E'\\''; DELETE FROM t; --'", 0, 3129, 0, 3075},
      {"SELECT t.E'\\''; DELETE FROM t; --'", 0, 3129, 0, 3075},
      {"SELECT '\\'; DELETE FROM t; --'", 3129, 3129, 3129, 3129},
      {"SELECT X'41''; DELETE FROM t; --'", 0, 0, 0, 0},
      {"SELECT $$'$$; DELETE FROM t; --'", 0, 3129, 0, 3075},
      {"SELECT $q$ ; $q$", 3129, 0, 3129, 3129},
      {"SELECT a$b$c FROM t", 0, 0, 0, 0},
      {"SELECT 'a'\n'\\''; DELETE FROM t; --'", 0, 3075, 0, 3075},
      {"SELECT \"'\" ; DELETE FROM t; --\"", 3129, 3129, 3129, 3129},
      // Names quoted where the server quotes them, brackets where it does not.
      {"SELECT a[']' ; DELETE FROM t; -- ']", 0, 3129, 3129, 3129},
      {"SELECT `'` ; DELETE FROM t; -- '", 3129, 0, 3129, 3075},
      // Comments.
      {"SELECT 1 # '\n; DELETE FROM t; -- '", 0, 0, 3129, 3075},
      {"SELECT 1 --x'\n; DELETE FROM t; -- '", 3129, 3129, 0, 3129},
      {"SELECT 1 -- c\r; DELETE FROM t", 0, 3129, 0, 0},
      {"SELECT 1 /* /* */ ' */ ; DELETE FROM t; -- '", 3075, 3129, 3075, 3075},
      {"SELECT 1 /*! ; DELETE FROM t */", 0, 0, 3075, 0},
      {"SELECT 1 /*M!100000 ; DELETE FROM t */", 0, 0, 3075, 0},
      {"SELECT 'x' /* never closed", 3075, 3075, 3075, 3075},
      {"SELECT 'never closed", 3075, 3075, 3075, 3075},
      // SQLite's Tcl-style parameter runs over quotes up to a ')' or blank.
      {"SELECT $a(';x) ; DELETE FROM t; --'", 3129, 0, 0, 3075},
      // ODBC escapes are the driver's to rewrite.
      {"SELECT {fn CONCAT('a', 'b')}", 3075, 3075, 3075, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(Outcome(SqliteDialect(), c.text), c.sqlite) << "SQLite";
    EXPECT_EQ(Outcome(PostgresDialect(), c.text), c.postgres) << "PostgreSQL";
    EXPECT_EQ(Outcome(MariaDbDialect(), c.text), c.mariadb) << "MariaDB";
    EXPECT_EQ(Outcome(GenericDialect(), c.text), c.generic) << "generic ODBC";
  }
}

// PostgreSQL: a plain string holding a backslash goes as an E'' string, which
// reads the same whether or not the session treats '...' as standard.
TEST(Lexicon, PostgresSendsBackslashStringsInTheirEscapedForm) {
  std::string out;
  ASSERT_EQ(Outcome(PostgresDialect(), "SELECT 'C:\\Temp\\', 'O''Neil\\', E'\\n', 'plain'", &out),
            0);
  EXPECT_EQ(out, "SELECT E'C:\\\\Temp\\\\', E'O''Neil\\\\', E'\\n', 'plain'");
  EXPECT_EQ(Outcome(PostgresDialect(), "SELECT N'\\'"), 3075);
  EXPECT_EQ(Outcome(PostgresDialect(), "SELECT U&'\\0041'"), 3075);
  ASSERT_EQ(Outcome(MariaDbDialect(), "SELECT 'C:\\Temp\\'", &out), 0);
  EXPECT_EQ(out, "SELECT 'C:\\Temp\\'");
}

TEST(Lexicon, DialectsFollowTheDbmsNameTheDriverReports) {
  EXPECT_EQ(DialectForDbms("PostgreSQL").Which(), ServerDialect::Id::kPostgres);
  EXPECT_EQ(DialectForDbms("MariaDB").Which(), ServerDialect::Id::kMariaDb);
  EXPECT_EQ(DialectForDbms("MySQL").Which(), ServerDialect::Id::kMariaDb);
  EXPECT_EQ(DialectForDbms("SQLite").Which(), ServerDialect::Id::kSqlite);
  EXPECT_EQ(DialectForDbms("Microsoft SQL Server").Which(), ServerDialect::Id::kGeneric);
  // Native codes of MariaDB, SQLSTATEs of PostgreSQL, messages of SQLite.
  EXPECT_EQ(MariaDbDialect().ErrorNumber("23000", 1062, "Duplicate entry"), 3022);
  EXPECT_EQ(MariaDbDialect().ErrorNumber("HY000", 1205, "Lock wait timeout"), 3260);
  EXPECT_EQ(MariaDbDialect().ErrorNumber("25006", 1792, "READ ONLY"), 3027);
  EXPECT_EQ(PostgresDialect().ErrorNumber("55P03", 7, "lock timeout"), 3260);
  EXPECT_EQ(SqliteDialect().ErrorNumber("HY000", 19, "UNIQUE constraint failed: t.a"), 3022);
}
