// PostgreSQL through psqlodbc.
#include <algorithm>
#include <cctype>
#include <regex>
#include <utility>

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

using Pairs = std::vector<std::pair<std::string, std::string>>;

// A connection string's key=value pairs in order, keys folded to lower case
// and stripped of blanks; a value in braces may hold ';', and '}}' in it
// stands for one '}' (a password may hold both).
Pairs ConnectPairs(const std::string& connect) {
  Pairs out;
  size_t at = 0;
  while (at < connect.size()) {
    const size_t eq = connect.find('=', at);
    const size_t semicolon = connect.find(';', at);
    if (eq == std::string::npos || (semicolon != std::string::npos && semicolon < eq)) {
      if (semicolon == std::string::npos) break;
      at = semicolon + 1;
      continue;
    }
    std::string key = connect.substr(at, eq - at);
    std::erase(key, ' ');
    for (char& c : key) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    size_t value_start = eq + 1;
    while (value_start < connect.size() && connect[value_start] == ' ') ++value_start;
    size_t end = connect.find(';', value_start);
    if (value_start < connect.size() && connect[value_start] == '{') {
      size_t close = connect.find('}', value_start);
      while (close != std::string::npos && close + 1 < connect.size() && connect[close + 1] == '}')
        close = connect.find('}', close + 2);
      end = close == std::string::npos ? std::string::npos : connect.find(';', close);
    }
    if (end == std::string::npos) end = connect.size();
    out.emplace_back(std::move(key), connect.substr(value_start, end - value_start));
    at = end + 1;
  }
  return out;
}

// A key given twice counts as psqlodbc counts it: the last one holds.
const std::string* Find(const Pairs& pairs, const char* key) {
  const std::string* found = nullptr;
  for (const auto& [k, v] : pairs) {
    if (k == key) found = &v;
  }
  return found;
}

std::string Unbraced(std::string value) {
  std::erase_if(value, [](char c) { return c == ' ' || c == '{' || c == '}'; });
  return value;
}

std::vector<std::string> SplitList(const std::string& ports) {
  std::vector<std::string> out;
  size_t at = 0;
  while (at <= ports.size() && !ports.empty()) {
    const size_t comma = std::min(ports.find(',', at), ports.size());
    out.push_back(ports.substr(at, comma - at));
    at = comma + 1;
  }
  return out;
}

// A value in libpq's connection options: quoted, with its quotes and
// backslashes escaped.
std::string LibpqValue(const std::string& value) {
  std::string out = "'";
  for (char c : value) {
    if (c == '\\' || c == '\'') out += '\\';
    out += c;
  }
  return out + "'";
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
        + direct + "set_config('lock_timeout', '5s', false) END, current_setting('lock_timeout')";
    if (readOnly)
      text += ", " + direct + "set_config('default_transaction_read_only', 'on', false) END";
    // Behind a pooler the lock wait is the database's or the role's: without
    // one a write on a locked row would wait for ever instead of ending in
    // 3260.
    return {std::move(text),
            "standard_conforming_strings = on",
            {{1, "on", "standard_conforming_strings = on"},
             {4, "",
              "a lock wait (behind a connection pooler the administrator sets it: "
              "ALTER DATABASE ... SET lock_timeout = '5s', or ALTER ROLE ...)",
              "0"}},
            2};
  }

  // psqlodbc's Port=, or the port of its libpq options. Of several servers
  // on different ports the one a session reached is not known: no port then,
  // and every session counts as pooled, which is right everywhere.
  std::string RequestedPort(const std::string& connect) const override {
    const auto pairs = ConnectPairs(connect);
    std::string ports = "5432";
    if (const std::string* port = Find(pairs, "port")) {
      ports = Unbraced(*port);
    } else if (const std::string* options = Find(pairs, "pqopt")) {
      static const std::regex kPort(R"((?:^|\s)port\s*=\s*'?([0-9,]+))");
      std::smatch m;
      if (std::regex_search(*options, m, kPort)) ports = m[1].str();
    }
    const auto each = SplitList(ports);
    if (each.empty()) return {};
    for (const std::string& p : each) {
      if (p != each.front()) return {};
    }
    return each.front();
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

  // 57P03: the server would not start a session. 57P01 for a fast shutdown
  // or a terminated backend: the server ended the session and says so
  // before it reads another statement; a statement that was running is
  // rolled back with it. The same state comes when it stops at once
  // (immediate shutdown) or gives up waiting for a synchronous standby, and
  // 57P02 after another process crashed: a statement may have committed
  // then, and only the words (in English) tell the first case from these.
  Loss SessionLoss(const std::string& state, long native,
                   const std::string& message) const override {
    if (state == "57P03" ||
        (state == "57P01" &&
         message.find("terminating connection due to administrator command") != std::string::npos &&
         message.find("synchronous replication") == std::string::npos)) {
      return Loss::kLostBeforeStatement;
    }
    if (state.starts_with("57P")) return Loss::kSessionLost;
    // psqlodbc reports a session that died under a prepared statement as a
    // general error carrying libpq's words; whether the statement ran is
    // not known then.
    if (state == "HY000" &&
        (message.find("server closed the connection unexpectedly") != std::string::npos ||
         message.find("terminating connection due to administrator command") != std::string::npos ||
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
  // trips of its own): a long list is read through a cursor instead. No
  // cursor is held (WITH HOLD): the server would run the query a second time
  // to keep its rows at the commit, and behind a pooler no cursor outlives a
  // transaction. The query is joined to the texts around it by line breaks,
  // so that a comment at its end ends there. Inside the host's transaction
  // the previous list's cursor is still open and is closed in the same text.
  std::optional<Cursor> LargeResultCursor(bool inTransaction) const override {
    const char* fetch = "FETCH FORWARD 2000 FROM ztkdb_rows";
    return Cursor{"SELECT * FROM (\n",
                  "\n) AS ztkdb_rows LIMIT 2001",
                  std::string(inTransaction ? "CLOSE ALL; " : "") +
                      "DECLARE ztkdb_rows NO SCROLL CURSOR FOR\n",
                  std::string("\n; ") + fetch,
                  fetch,
                  2000};
  }

 private:
  Lexicon lexicon_ = MakeLexicon();
};

}  // namespace

DriverConnect ForDriver(const std::string& connect, bool readOnly) {
  const Pairs pairs = ConnectPairs(connect);
  const std::string* servers = Find(pairs, "servername");
  // Server= is other drivers' key too, where a comma may mean something
  // else (SQL Server: "host,port"): only psqlodbc's own string is rewritten.
  const std::string* driver = Find(pairs, "driver");
  if (!servers && driver && LowerAscii(*driver).find("postgres") != std::string::npos)
    servers = Find(pairs, "server");
  if (!servers || servers->find(',') == std::string::npos || Find(pairs, "pqopt")) {
    return {connect, false};
  }
  std::string hosts;
  for (const std::string& host : SplitList(Unbraced(*servers))) {
    hosts += (hosts.empty() ? "" : ",") + host;
  }
  std::string options = "host=" + LibpqValue(hosts);
  if (const std::string* ports = Find(pairs, "port"))
    options += " port=" + LibpqValue(Unbraced(*ports));
  const std::string* attrs = Find(pairs, "targetsessionattrs");
  options += " target_session_attrs=" + LibpqValue(attrs      ? Unbraced(*attrs)
                                                   : readOnly ? "any"
                                                              : "read-write");
  std::string text;
  for (const auto& [key, value] : pairs) {
    if (key == "servername" || key == "server" || key == "port" || key == "targetsessionattrs") {
      continue;
    }
    text += key + "=" + value + ";";
  }
  // The libpq options first: a last value whose brace never closes (which
  // psqlodbc reads to the end) cannot swallow them.
  return {"pqopt={" + options + "};" + text, true};
}

const ServerDialect& PostgresDialect() {
  static const auto* dialect = new Postgres;  // never destroyed: hosts' statics may use it
  return *dialect;
}

}  // namespace ZTkDb::detail
