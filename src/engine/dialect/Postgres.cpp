// PostgreSQL through psqlodbc.
#include <algorithm>
#include <cctype>

#include "engine/RowSet.h"
#include "engine/dialect/ServerDialect.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {
namespace {

Lexicon MakeLexicon() {
  Lexicon lx;
  lx.server = "PostgreSQL";
  lx.e_strings = true;
  lx.dollar_quotes = true;
  lx.hex_strings = true;
  lx.bit_strings = true;
  lx.national_strings = true;
  lx.unicode_strings = true;
  lx.string_continuation = true;
  lx.nested_comments = true;
  lx.comment_ends_at_cr = true;
  // psqlodbc rewrites ODBC escapes before the server sees the text.
  lx.refuse_braces = true;
  return lx;
}

class Postgres final : public ServerDialect {
 public:
  Id Which() const override { return Id::kPostgres; }
  const char* Name() const override { return "PostgreSQL"; }
  const Lexicon& Lexical() const override { return lexicon_; }
  std::string DateLiteral(const Date& date) const override { return IsoDateLiteral(date); }

  // The session reads '...' without backslash escapes, but one function call
  // (set_config) in a statement could change that for the statements after
  // it. A plain string holding a backslash therefore goes as E'...' with its
  // backslashes doubled, which reads the same with either setting.
  std::optional<std::string> HardenString(const Token& token) const override {
    const std::string_view text = token.text;
    if (text.find('\\') == std::string_view::npos) return {};
    if (text.front() == '\'') {
      std::string out = "E'";
      for (char c : text.substr(1)) {
        if (c == '\\') out += '\\';
        out += c;
      }
      return out;
    }
    const char prefix = static_cast<char>(text.front() | 0x20);
    if (prefix == 'e' || prefix == 'x' || prefix == 'b' || prefix == '$') return {};
    // N'...' and U&'...' follow the setting and have no escaped form.
    Raise(errSyntax, "ZTkDb.Engine",
          "Syntax error: a prefixed string holding a backslash cannot be read with certainty "
          "(PostgreSQL reading); the statement was not sent.");
  }

  // One text: the settings every session needs, then a row that shows one
  // took and gives the port the server listens on. What would stay on a
  // server connection a pooler hands other clients (the lock wait, a
  // read-only session) is set only where that port is the one asked for.
  SessionSetUp SetUp(bool readOnly, const std::string& requested_port) const override {
    // Only digits go into the text; anything else never matches.
    const bool digits =
        !requested_port.empty() && std::all_of(requested_port.begin(), requested_port.end(),
                                               [](char c) { return c >= '0' && c <= '9'; });
    const std::string direct =
        "CASE WHEN current_setting('port') = '" + (digits ? requested_port : "") + "' THEN ";
    std::string text =
        // The driver sets DateStyle 'ISO' at connect; DMY keeps its ISO
        // output (which the driver must read) and makes 'dd.mm.yyyy' input
        // a date.
        "SET DateStyle = 'ISO, DMY'; "
        // '...' as the library writes it: only '' is special inside.
        "SET standard_conforming_strings = on; "
        "SELECT current_setting('standard_conforming_strings'), current_setting('port'), "
        // A locked row ends in 3260 after the same wait as on the embedded engine.
        + direct + "set_config('lock_timeout', '5s', false) END";
    if (readOnly)
      text += ", " + direct + "set_config('default_transaction_read_only', 'on', false) END";
    return {std::move(text),
            "standard_conforming_strings = on",
            {{1, "on", "standard_conforming_strings = on"}},
            2};
  }

  // psqlodbc's Port= (any case, braces allowed); the first of several.
  std::string RequestedPort(const std::string& connect) const override {
    size_t at = 0;
    while (at < connect.size()) {
      const size_t end = std::min(connect.find(';', at), connect.size());
      const std::string pair = connect.substr(at, end - at);
      at = end + 1;
      const size_t eq = pair.find('=');
      if (eq == std::string::npos) continue;
      std::string key = pair.substr(0, eq);
      std::erase(key, ' ');
      for (char& c : key) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
      if (key != "port") continue;
      std::string value = pair.substr(eq + 1);
      std::erase_if(value, [](char c) { return c == ' ' || c == '{' || c == '}'; });
      return value.substr(0, value.find(','));
    }
    return "5432";
  }

  // With server-side prepares off, psqlodbc fills the parameters into the
  // text itself. DateStyle and standard_conforming_strings are among the
  // settings pgbouncer keeps per client; lock_timeout and a read-only
  // session are not: the database's or the role's own settings hold there
  // (and the engine refuses writes on a read-only open itself).
  std::string FoldedName(const std::string& name) const override { return LowerAscii(name); }

  bool TypeNamesTellKinds() const override { return false; }
  std::string PooledOptions() const override { return "UseServerSidePrepare=0;"; }

  long ErrorNumber(const std::string& state, long /*native*/,
                   const std::string& /*message*/) const override {
    if (state == "23505") return errDuplicateValue;
    if (state == "23502") return 3314;  // field cannot contain Null
    if (state == "42P01") return errTableNotFound;
    if (state == "42703") return errTooFewParameters;
    if (state == "42601") return errSyntax;
    // serialization failure, deadlock, lock_timeout
    if (state == "40001" || state == "40P01" || state == "55P03") return errLocked;
    if (state == "25006") return errReadOnly;  // read-only transaction
    return 0;
  }

  // 57P01..03: the server ended the session (shutdown, crash, or a
  // terminated backend) and says so before it reads another statement; a
  // statement that was running is rolled back with it.
  Loss SessionLoss(const std::string& state, long native,
                   const std::string& message) const override {
    if (state == "57P01" || state == "57P02" || state == "57P03") return Loss::kLostBeforeStatement;
    // psqlodbc reports a session that died under a prepared statement as a
    // general error carrying libpq's words; whether the statement ran is
    // not known then.
    if (state == "HY000" && (message.find("server closed the connection unexpectedly") !=
                                 std::string::npos ||
                             message.find("terminating connection due to administrator command") !=
                                 std::string::npos ||
                             message.find("no connection to the server") != std::string::npos)) {
      return Loss::kSessionLost;
    }
    return ServerDialect::SessionLoss(state, native, message);
  }

  const ColumnTypes& Types() const override {
    static constexpr ColumnTypes kTypes = {"SMALLINT",     "SMALLINT",      "SMALLINT",
                                           "INTEGER",      "NUMERIC(19,4)", "DOUBLE PRECISION",
                                           "TIMESTAMP(0)", "TEXT",          "VARCHAR(255)"};
    return kTypes;
  }

  // An integer literal is int4 (int8 beyond), as the bound value is typed;
  // a string literal takes the type of the text or timestamp column beside
  // it, which a text bound as varchar or a timestamp matches. Fixed-width
  // char(n) columns are not "text" here: varchar would compare with their
  // padding.
  bool BindsLiterals() const override { return true; }
  // A decimal assigned to a numeric or floating column: the bound digits
  // and the literal's numeric constant reach the column through the same
  // input conversion, and the column's precision holds either unrounded.
  const char* BoundDecimal() const override { return "?"; }
  bool FetchesInBlocks() const override { return true; }
  // "cached plan must not change result type".
  const char* ChangedResultState() const override { return "0A000"; }
  // An identity's sequence knows nothing of rows inserted with their ids.
  std::vector<std::string> IdentityAdvance(const std::string& table,
                                           const std::string& column) const override {
    return {"SELECT setval(pg_get_serial_sequence('" + LowerAscii(table) + "', '" +
            LowerAscii(column) + "'), COALESCE(MAX(" + column + "), 0) + 1, false) FROM " + table};
  }
  // psqlodbc reads a whole result into its own memory before the first
  // fetch (unless UseDeclareFetch, which costs every small query round
  // trips of its own): a long list is read through a cursor instead. The
  // cursor is opened with its first chunk in one round trip, which for most
  // lists is all of it; held, it needs no transaction, which would cost
  // another round trip to end. Its rest is kept by the server from the end
  // of the first round trip, as a query's result is kept by the driver.
  // Behind a pooler the session has no server connection of its own to
  // hold a cursor on between transactions: it lives in one transaction.
  // Either way the previous list's cursor (the session's cursors are the
  // engine's) is closed in the same text, not in a round trip of its own.
  std::optional<Cursor> LargeResultCursor(bool pooled) const override {
    const char* fetch = "FETCH FORWARD 2000 FROM ztkdb_rows";
    return Cursor{pooled ? "CLOSE ALL; DECLARE ztkdb_rows NO SCROLL CURSOR FOR "
                         : "CLOSE ALL; DECLARE ztkdb_rows NO SCROLL CURSOR WITH HOLD FOR ",
                  std::string("; ") + fetch, fetch, 2000, !pooled};
  }

 private:
  Lexicon lexicon_ = MakeLexicon();
};

}  // namespace

const ServerDialect& PostgresDialect() {
  static const auto* dialect = new Postgres;  // never destroyed: hosts' statics may use it
  return *dialect;
}

}  // namespace ZTkDb::detail
