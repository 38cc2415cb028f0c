// MariaDB and MySQL through MariaDB Connector/ODBC (or MySQL's driver).
#include "engine/dialect/ServerDialect.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {
namespace {

Lexicon MakeLexicon() {
  Lexicon lx;
  lx.server = "MariaDB";
  lx.backtick_names = true;
  lx.double_quote_strings = true;
  lx.hex_strings = true;
  lx.bit_strings = true;
  lx.national_strings = true;
  lx.hash_comments = true;
  lx.dash_comment_needs_blank = true;
  lx.executable_comments = true;
  lx.refuse_braces = true;
  // backslash_strings stays off: the session runs with NO_BACKSLASH_ESCAPES.
  return lx;
}

class MariaDb final : public ServerDialect {
 public:
  Id Which() const override { return Id::kMariaDb; }
  const char* Name() const override { return "MariaDB"; }
  const Lexicon& Lexical() const override { return lexicon_; }
  std::string DateLiteral(const Date& date) const override { return IsoDateLiteral(date); }

  // One SET, and its own check: under a client character set other than
  // UTF-8 (whose bytes could end a string) sql_mode is given a value the
  // server refuses, which fails the whole SET and names the reason.
  SessionSetUp SetUp(bool readOnly, const std::string& /*requested_port*/) const override {
    std::string text =
        // '...' as the library writes it: a backslash is a backslash. Strict
        // mode: a value the column cannot hold is an error, never cut.
        "SET SESSION sql_mode = IF(@@SESSION.character_set_client LIKE 'utf8%', "
        "CONCAT(@@SESSION.sql_mode, ',NO_BACKSLASH_ESCAPES,STRICT_TRANS_TABLES'), "
        "'a client character set other than UTF-8'), "
        // A locked row ends in 3260 after the same wait as on the embedded engine.
        "SESSION innodb_lock_wait_timeout = 5";
    // MariaDB's and MySQL's read-only variables differ in name; the
    // statement is the same (a second round trip, for read-only opens only).
    return {std::move(text),
            "NO_BACKSLASH_ESCAPES in sql_mode with a utf8mb4 client character set "
            "(CHARSET=utf8mb4 in the connection string)",
            {},
            0,
            readOnly ? "SET SESSION TRANSACTION READ ONLY" : ""};
  }

  bool TypeNamesTellKinds() const override { return false; }

  long ErrorNumber(const std::string& /*state*/, long native,
                   const std::string& /*message*/) const override {
    switch (native) {
      case 1062: return errDuplicateValue;    // duplicate entry
      case 1064: return errSyntax;            // parse error
      case 1146: return errTableNotFound;     // no such table
      case 1054: return errTooFewParameters;  // unknown column
      case 1205:                              // lock wait timeout
      case 1213: return errLocked;            // deadlock
      case 1048: return 3314;                 // column cannot be null
      case 1406: return 3163;                 // data too long for the column
      case 1792: return errReadOnly;          // read-only transaction
      default: return 0;
    }
  }

  // 2006 "server has gone away" and 5014 (the client library could not
  // write the statement): the connection was found closed before the
  // statement was sent. 2013 and 5013 (lost while waiting for the answer),
  // 1927 (killed), 4031 (idle timeout), 2055: gone, the statement's fate
  // unknown.
  Loss SessionLoss(const std::string& state, long native,
                   const std::string& message) const override {
    if (native == 2006 || native == 5014) return Loss::kLostBeforeStatement;
    if (native == 2013 || native == 5013 || native == 1927 || native == 4031 || native == 2055) {
      return Loss::kSessionLost;
    }
    return ServerDialect::SessionLoss(state, native, message);
  }

  const ColumnTypes& Types() const override {
    static constexpr ColumnTypes kTypes = {"SMALLINT", "SMALLINT",      "SMALLINT",
                                           "INT",      "DECIMAL(19,4)", "DOUBLE",
                                           "DATETIME", "LONGTEXT",      "VARCHAR(255)"};
    return kTypes;
  }

  bool CatalogIsDatabase() const override { return true; }
  // Integers, and strings beside a text or date column: a bound value takes
  // the connection's character set like a literal, and a date compares as
  // a DATETIME either way.
  bool BindsLiterals() const override { return true; }
  // A decimal assigned to a DECIMAL column with room for its digits is
  // stored unrounded either way; a DOUBLE reads the decimal literal and
  // the bound digits with the same conversion of its text.
  const char* BoundDecimal() const override { return "?"; }
  // "..." is a string here.
  std::string QuoteName(const std::string& name) const override { return Quoted(name, '`'); }

 private:
  Lexicon lexicon_ = MakeLexicon();
};

}  // namespace

const ServerDialect& MariaDbDialect() {
  static const auto* dialect = new MariaDb;  // never destroyed: hosts' statics may use it
  return *dialect;
}

}  // namespace ZTkDb::detail
