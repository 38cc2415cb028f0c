// A server the library has no rules of its own for, and the choice of
// dialect by the DBMS name a driver reports.
#include "engine/RowSet.h"
#include "engine/dialect/ServerDialect.h"
#include "runtime/Raise.h"
#include "ztkdb/Date.h"

namespace ZTkDb::detail {
namespace {

Lexicon MakeLexicon() {
  Lexicon lx;
  lx.server = "standard SQL";
  // Standard strings, "names", -- and /* */ comments. Whatever means
  // different things on different servers is refused rather than guessed:
  // quoted names in brackets or backticks, '#' and '$', and a string whose
  // end depends on whether a backslash escapes.
  lx.refuse_outside_strings = "[]`#$\\";
  lx.ambiguous_backslashes = true;
  return lx;
}

class Generic final : public ServerDialect {
 public:
  Id Which() const override { return Id::kGeneric; }
  const char* Name() const override { return "ODBC"; }
  const Lexicon& Lexical() const override { return lexicon_; }
  // The ODBC timestamp escape: every driver translates it for its server.
  std::string DateLiteral(const Date& date) const override {
    return "{ts '" + date.IsoText() + "'}";
  }

  // The ODBC states every driver reports; the message as a last resort.
  long ErrorNumber(const std::string& state, long /*native*/,
                   const std::string& message) const override {
    const std::string lower = LowerAscii(message);
    auto says = [&](const char* words) { return lower.find(words) != std::string::npos; };
    if (state.starts_with("23") && (says("unique") || says("duplicate"))) return errDuplicateValue;
    if (state.starts_with("23") && says("null")) return 3314;
    if (state == "42S02") return errTableNotFound;
    if (state == "42S22") return errTooFewParameters;
    if (state == "42000" && says("syntax")) return errSyntax;
    if (state == "40001" || state.starts_with("HYT")) return errLocked;
    if (state == "25000" && says("read")) return errReadOnly;
    return 0;
  }

  const ColumnTypes& Types() const override {
    static constexpr ColumnTypes kTypes = {"SMALLINT",  "SMALLINT",      "SMALLINT",
                                           "INTEGER",   "NUMERIC(19,4)", "DOUBLE PRECISION",
                                           "TIMESTAMP", "VARCHAR(255)",  "VARCHAR(255)"};
    return kTypes;
  }

 private:
  Lexicon lexicon_ = MakeLexicon();
};

}  // namespace

const ServerDialect& GenericDialect() {
  static const auto* dialect = new Generic;  // never destroyed: hosts' statics may use it
  return *dialect;
}

const ServerDialect& DialectForDbms(const std::string& dbmsName) {
  const std::string lower = LowerAscii(dbmsName);
  if (lower.find("postgres") != std::string::npos) return PostgresDialect();
  if (lower.find("sqlite") != std::string::npos) return SqliteDialect();
  if (lower.find("mariadb") != std::string::npos || lower.find("mysql") != std::string::npos) {
    return MariaDbDialect();
  }
  return GenericDialect();
}

std::string IsoDateLiteral(const Date& date) { return "'" + date.IsoText() + "'"; }

const char* ServerDialect::ColumnType(DaoFieldType type) const {
  const ColumnTypes& t = Types();
  switch (type) {
    case dbBoolean: return t.flag;
    case dbByte: return t.byte;
    case dbInteger: return t.integer;
    case dbLong: return t.long_integer;
    case dbCurrency: return t.currency;
    case dbSingle:
    case dbDouble: return t.floating;
    case dbDate: return t.date;
    case dbMemo: return t.memo;
    case dbText: return t.text;
  }
  return t.text;
}

}  // namespace ZTkDb::detail
