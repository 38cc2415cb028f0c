// SQLite: the embedded engine's files, and the same files through the SQLite
// ODBC driver.
#include "engine/RowSet.h"
#include "engine/dialect/ServerDialect.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {
namespace {

Lexicon MakeLexicon(bool library) {
  Lexicon lx;
  lx.server = "SQLite";
  lx.bracket_names = true;
  lx.backtick_names = true;
  lx.hex_strings = true;
  lx.sqlite_variables = true;
  lx.refuse_braces = !library;
  lx.jet_dates = library;
  return lx;
}

class Sqlite final : public ServerDialect {
 public:
  Id Which() const override { return Id::kSqlite; }
  const char* Name() const override { return "SQLite"; }
  const Lexicon& Lexical() const override { return lexicon_; }
  std::string DateLiteral(const Date& date) const override { return IsoDateLiteral(date); }

  SessionSetUp SetUp(bool readOnly, const std::string& /*requested_port*/) const override {
    // The ODBC driver ignores the read-only access mode; SQLite's own switch
    // refuses every write on the connection.
    if (readOnly) return {"PRAGMA query_only = 1", "a read-only connection", {}};
    return {};
  }

  long ErrorNumber(const std::string& /*state*/, long /*native*/,
                   const std::string& message) const override {
    // The driver reports SQLite's message under a generic state.
    const std::string lower = LowerAscii(message);
    auto says = [&](const char* words) { return lower.find(words) != std::string::npos; };
    if (says("unique constraint") || says("is not unique")) return errDuplicateValue;
    if (says("not null constraint")) return 3314;
    if (says("no such table")) return errTableNotFound;
    if (says("no such column")) return errTooFewParameters;
    if (says("syntax error") || says("unrecognized token") || says("incomplete input")) {
      return errSyntax;
    }
    if (says("database is locked") || says("database table is locked")) return errLocked;
    if (says("readonly database") || says("query_only")) return errReadOnly;
    return 0;
  }

  const ColumnTypes& Types() const override {
    static constexpr ColumnTypes kTypes = {"BIT",      "TINYINT",  "SMALLINT",
                                           "INTEGER",  "CURRENCY", "DOUBLE",
                                           "DATETIME", "TEXT",     "VARCHAR(255)"};
    return kTypes;
  }

  // The driver is an ANSI driver: unixODBC would hand it only the low byte
  // of each UTF-16 unit of a wide call. Its narrow calls take and give UTF-8
  // bytes as SQLite stores them.
  bool NarrowText() const override { return true; }
  const char* SchemaVersion() const override { return "PRAGMA schema_version"; }
  bool BindsLiterals() const override { return true; }
  bool StringsReadAsBoundText() const override { return true; }
  // SQLite reads a decimal literal and casts a text to REAL with one and
  // the same conversion, so the cast of the bound digits is the literal's
  // number to the last bit (a double bound from our own reading might not
  // be: SQLite rounds through long double). The unary plus leaves the
  // value without affinity, as a literal has none; the cast alone would
  // carry REAL affinity into a comparison with a text column.
  const char* BoundDecimal() const override { return "+CAST(? AS REAL)"; }
  bool StoresAmountsAsDouble() const override { return true; }

 private:
  Lexicon lexicon_ = MakeLexicon(false);
};

}  // namespace

const ServerDialect& SqliteDialect() {
  static const auto* dialect = new Sqlite;  // never destroyed: hosts' statics may use it
  return *dialect;
}

// The library's statements as the embedded engine is given them: SQLite's
// reading with the Jet date literals the engine rewrites.
const Lexicon& LibraryLexicon() {
  static const auto* lexicon = new Lexicon(MakeLexicon(true));
  return *lexicon;
}

}  // namespace ZTkDb::detail
