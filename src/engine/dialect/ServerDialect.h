#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engine/Database.h"
#include "engine/SqlTokenizer.h"
#include "runtime/Quoting.h"
#include "runtime/ToolExport.h"

namespace ZTkDb {
class Date;
}

namespace ZTkDb::detail {

// Everything the engine must know about one database server, kept in one
// place per server: how it reads the text of a statement (and how its
// session is set up so that it reads it that way), its date literal, what
// its errors mean, and the column types it is given. Supporting another
// server is one new implementation of this class.
class ServerDialect {
 public:
  enum class Id { kSqlite, kPostgres, kMariaDb, kGeneric };

  virtual ~ServerDialect() = default;

  virtual Id Which() const = 0;
  virtual const char* Name() const = 0;
  // The server's own reading of statement text, as its session is set up.
  virtual const Lexicon& Lexical() const = 0;
  // The server's literal for a date: "'2026-11-15 14:30:00'".
  virtual std::string DateLiteral(const Date& date) const = 0;
  // A string token of an adapted statement rewritten into a form the server
  // reads the same whatever its string settings; nullopt keeps the token.
  // Raises 3075 for a string that has no such form.
  virtual std::optional<std::string> HardenString(const Token& /*string*/) const { return {}; }

  // What a column of the set-up's answer must contain, and what the session
  // would lack without it (for the error text).
  struct SessionCheck {
    int column;  // 1-based
    std::string must_contain;
    std::string why;
    std::string must_not_be = {};  // a value that fails the check whatever it contains
  };
  // A new ODBC session's set-up, run right after connecting (and again
  // after a reconnect) as one text in one round trip: it sets what the
  // dialect's reading needs and, where the server can answer in the same
  // text, ends in a query of one row that proves it took. `needs` names
  // what the set-up gives the session, for the error text of a set-up that
  // failed.
  struct SessionSetUp {
    std::string text;
    std::string needs;
    std::vector<SessionCheck> checks;
    // The column of that row holding the port the server itself listens
    // on (0: none). A connection pooler in transaction mode hands each
    // transaction whichever server connection is free, and listens on a
    // port of its own: a port other than `requested_port` tells it from the
    // server. Nothing the set-up leaves on a server connection, and that
    // such a pooler would hand other clients, may be set then.
    int port_column = 0;
    // A statement run after it, where the server takes no second one in the
    // same text.
    std::string then = {};
  };
  virtual SessionSetUp SetUp(bool /*readOnly*/, const std::string& /*requested_port*/) const {
    return {};
  }
  // The port the connection string asks for; empty where the server has no
  // such notion, or where several servers are asked for on different ports.
  virtual std::string RequestedPort(const std::string& /*connect*/) const { return {}; }
  // Behind a pooler: what the connection string adds (no statement
  // prepared under a name on a server connection the next transaction may
  // not get).
  virtual std::string PooledOptions() const { return {}; }

  // The DAO error number of a server error, or 0 when this server gives the
  // error no particular meaning (the ODBC state classes decide then).
  virtual long ErrorNumber(const std::string& sqlstate, long native,
                           const std::string& message) const = 0;
  // Whether an error says that the session is gone, and whether it also
  // says that the statement which got it never ran (so that running it again
  // on a new session cannot run it twice).
  enum class Loss { kNone, kSessionLost, kLostBeforeStatement };
  virtual Loss SessionLoss(const std::string& sqlstate, long /*native*/,
                           const std::string& /*message*/) const {
    return sqlstate.starts_with("08") ? Loss::kSessionLost : Loss::kNone;
  }
  // The server's column types for the DAO types the library creates.
  struct ColumnTypes {
    const char* flag;
    const char* byte;
    const char* integer;
    const char* long_integer;
    const char* currency;
    const char* floating;  // single and double
    const char* date;
    const char* memo;
    const char* text;
  };
  virtual const ColumnTypes& Types() const = 0;
  // The column type of a new column of a DAO type.
  ZTKDB_TOOL const char* ColumnType(DaoFieldType type) const;
  // Whether catalog calls must name the current database because one server
  // holds many databases with the same table names (MariaDB, MySQL).
  virtual bool CatalogIsDatabase() const { return false; }
  // Whether text travels as UTF-8 through the driver's narrow calls (an
  // ANSI driver that stores what it is given).
  virtual bool NarrowText() const { return false; }

  // Whether literals may be bound in place (see LiftingRules): only where
  // the server's typing of a bound value is known to match its literal's.
  virtual bool BindsLiterals() const { return false; }
  // Whether any plain string reads like a bound text, wherever it stands in
  // a value position (SQLite), rather than only beside a known column.
  virtual bool StringsReadAsBoundText() const { return false; }
  // What stands for a plain decimal (1.5) that is bound (see LiftingRules):
  // the server must read the bound digits into the very number its literal
  // gives. nullptr: decimals stay in the text.
  virtual const char* BoundDecimal() const { return nullptr; }
  // Whether results are read a block of rows at a time into bound arrays
  // (the driver gets data from a bound column of a block, SQL_GD_BLOCK and
  // SQL_GD_BOUND, as psqlodbc does).
  virtual bool FetchesInBlocks() const { return false; }
  // The SQLSTATE with which the server refuses to run a prepared statement
  // whose result changed shape since it was prepared (another session's
  // ALTER TABLE), or null where the server runs it with the new shape and
  // the result's columns must be compared with the ones described.
  virtual const char* ChangedResultState() const { return nullptr; }
  // A query giving the version of the tables' definitions, where a driver
  // describes a result when it prepares it, before its engine notices
  // another session's change: the moved columns would go by their old
  // names. A changed version makes the query's text run once unread first.
  virtual const char* SchemaVersion() const { return nullptr; }
  // Whether amounts are stored as binary doubles (SQLite's REAL): a bound
  // amount then goes as the double nearest it, since the driver's own
  // reading of decimal text may land on another.
  virtual bool StoresAmountsAsDouble() const { return false; }
  // How a large result is read in chunks where the driver would otherwise
  // copy all of it before handing over the first row. First the query runs
  // bounded to one row more than a chunk (`probe_prefix` + query +
  // `probe_suffix`): most lists end there, in one round trip. A result that
  // proves longer is read through a cursor in a transaction (its own, or the
  // host's): `open` + query + `then_fetch` declares it and fetches its first
  // chunk in one text, `fetch` each further chunk of `rows`; the
  // transaction's end closes it.
  struct Cursor {
    std::string probe_prefix;
    std::string probe_suffix;
    std::string open;
    std::string then_fetch;
    std::string fetch;
    int64_t rows = 0;
  };
  virtual std::optional<Cursor> LargeResultCursor(bool /*inTransaction*/) const {
    return std::nullopt;
  }
  // Whether a result column's declared type name tells its kind where its
  // SQL type does not (file databases' CURRENCY, DATETIME); asking for it
  // costs a round trip with some drivers.
  virtual bool TypeNamesTellKinds() const { return true; }
  // An unquoted name as the server's catalogue keeps it (servers fold such
  // names to one case); the name itself where the case is kept.
  virtual std::string FoldedName(const std::string& name) const { return name; }
  // A table or column name as the server reads it, whatever it holds
  // (blanks, umlauts, its own quote).
  virtual std::string QuoteName(const std::string& name) const { return Quoted(name, '"'); }
  // Queries that move an identity column's next value past the rows written
  // with explicit ids (none where the server does that by itself).
  virtual std::vector<std::string> IdentityAdvance(const std::string& /*table*/,
                                                   const std::string& /*column*/) const {
    return {};
  }
};

ZTKDB_TOOL const ServerDialect& SqliteDialect();
const ServerDialect& PostgresDialect();
const ServerDialect& MariaDbDialect();
// A server the library has no rules for: standard SQL, and anything whose
// meaning differs between servers refused.
const ServerDialect& GenericDialect();

// The dialect for the DBMS name an ODBC driver reports (SQL_DBMS_NAME).
const ServerDialect& DialectForDbms(const std::string& dbmsName);

// A connection string as its driver takes it, and whether it names several
// servers, one of which may take over from another. psqlodbc takes one
// server in Servername= and Port=: several (Servername=a,b;Port=p,q) go to
// libpq in its own options, which open the first server that takes writes
// (for a read-only open the first that answers), or what
// TargetSessionAttrs= asks for (prefer-standby, say).
struct DriverConnect {
  std::string text;
  bool several_servers = false;
};
DriverConnect ForDriver(const std::string& connect, bool readOnly);

// Quoted ISO text, the date literal every known server reads.
std::string IsoDateLiteral(const Date& date);

}  // namespace ZTkDb::detail
