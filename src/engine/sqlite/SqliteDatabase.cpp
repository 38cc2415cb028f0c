#include "engine/sqlite/SqliteDatabase.h"

#include <sqlite3.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "engine/RowSet.h"
#include "engine/SqlTokenizer.h"
#include "engine/StatementCache.h"
#include "engine/Trace.h"
#include "engine/dialect/ServerDialect.h"
#include "engine/sqlite/SqliteCells.h"
#include "engine/sqlite/SqliteReadOnly.h"
#include "runtime/Numbers.h"
#include "runtime/Quoting.h"
#include "runtime/Raise.h"
#include "runtime/Storable.h"

namespace ZTkDb::detail {
namespace {

constexpr const char* kSource = "ZTkDb.SQLite";
constexpr const char* kEngine = "SQLite";

struct StatementFinalizer {
  void operator()(sqlite3_stmt* s) const noexcept { sqlite3_finalize(s); }
};
using StmtHandle = std::unique_ptr<sqlite3_stmt, StatementFinalizer>;

long NumberFor(int rc, const std::string& message) {
  switch (rc & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return errLocked;
    case SQLITE_READONLY: return errReadOnly;
    case SQLITE_NOTADB:
    case SQLITE_CANTOPEN: return errCannotOpenFile;
    case SQLITE_CONSTRAINT:
      if (rc == SQLITE_CONSTRAINT_UNIQUE || rc == SQLITE_CONSTRAINT_PRIMARYKEY) {
        return errDuplicateValue;
      }
      if (rc == SQLITE_CONSTRAINT_NOTNULL) return 3314;  // field cannot contain Null
      return errEngine;
    default: break;
  }
  if (message.starts_with("no such table")) return errTableNotFound;
  if (message.starts_with("no such column")) return errTooFewParameters;
  if (message.find("syntax error") != std::string::npos ||
      message.find("incomplete input") != std::string::npos ||
      message.find("unrecognized token") != std::string::npos) {
    return errSyntax;
  }
  return errEngine;
}

[[noreturn]] void RaiseSqlite(sqlite3* db, int rc) {
  std::string message = db ? sqlite3_errmsg(db) : sqlite3_errstr(rc);
  const long number = NumberFor(rc, message);
  Raise(number, kSource, message + " (SQLite error " + std::to_string(rc) + ")");
}

StmtHandle Prepare(sqlite3* db, const std::string& sql, bool persistent = false) {
  sqlite3_stmt* raw = nullptr;
  const char* tail = nullptr;
  const int rc = sqlite3_prepare_v3(db, sql.c_str(), static_cast<int>(sql.size()),
                                    persistent ? SQLITE_PREPARE_PERSISTENT : 0, &raw, &tail);
  StmtHandle stmt(raw);
  if (rc != SQLITE_OK) RaiseSqlite(db, rc);
  if (!stmt) RaiseStandard(errInvalidStatement, kSource);
  // The adapter refuses a second statement already; SQLite's own reading of
  // what follows the first one keeps it from ever running one, whatever path
  // the text took. Only blanks, comments and semicolons may follow.
  while (tail && *tail) {
    sqlite3_stmt* next = nullptr;
    const char* rest = nullptr;
    const int more = sqlite3_prepare_v2(db, tail, -1, &next, &rest);
    sqlite3_finalize(next);
    if (more != SQLITE_OK || next != nullptr || rest == tail) {
      Raise(errInvalidStatement, kSource, "Characters found after end of SQL statement.");
    }
    tail = rest;
  }
  return stmt;
}

std::string DefaultLiteral(const Variant& v) {
  switch (v.Type()) {
    case vtEmpty:
    case vtNull: return {};
    case vtString: return Quoted(v.ToString(), '\'');
    case vtBoolean: return v.ToBool() ? "-1" : "0";
    case vtDate: return "'" + v.ToDate().IsoText() + "'";
    default: return PlainNumberText(v.ToDouble());
  }
}

bool FileExists(const std::string& path, bool& isDirectory, off_t* size = nullptr) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) return false;
  isDirectory = S_ISDIR(st.st_mode);
  if (size) *size = st.st_size;
  return true;
}

// How a file is opened. A read-only open must work where its user cannot
// write, and must leave nothing behind: a WAL index (-shm) created by a
// reader belongs to the reader, and its owner could no longer write the
// database. So a reader that could not write the database itself creates
// nothing: it uses the writer's -wal/-shm where a writer has them, and
// otherwise reads the file as it stands (immutable: nobody is writing it).
std::string FileUri(const std::string& path, bool readOnly) {
  std::string uri = "file:";
  static const char* hex = "0123456789ABCDEF";
  for (unsigned char c : path) {
    if (std::isalnum(c) || c == '/' || c == '.' || c == '-' || c == '_' || c == '~' || c >= 0x80) {
      uri += static_cast<char>(c);
    } else {
      uri += '%';
      uri += hex[c >> 4];
      uri += hex[c & 15];
    }
  }
  if (!readOnly) return uri;
  bool ignored = false;
  const bool writerFiles = FileExists(path + "-wal", ignored) && FileExists(path + "-shm", ignored);
  const size_t slash = path.rfind('/');
  const std::string dir = slash == std::string::npos ? "."
                          : slash == 0               ? "/"
                                                     : path.substr(0, slash);
  const bool mayWrite = ::access(path.c_str(), W_OK) == 0 && ::access(dir.c_str(), W_OK) == 0;
  return uri + (writerFiles || mayWrite ? "?mode=ro" : "?immutable=1");
}

// Access files carry their engine's name at byte 4.
std::string AccessSignature(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  char head[20] = {};
  in.read(head, sizeof head);
  const std::string_view h(head + 4, 15);
  if (h == "Standard Jet DB" || h == "Standard ACE DB") return std::string(h);
  return {};
}

}  // namespace

void SqliteCloser::operator()(sqlite3* db) const noexcept { sqlite3_close_v2(db); }

// A statement prepared once per shape, with what its result's columns are.
struct SqliteDatabase::Prepared {
  explicit Prepared(StmtHandle prepared = {}) : stmt(std::move(prepared)) {}
  StmtHandle stmt;
  std::shared_ptr<const RowSet::Columns> columns;
  std::vector<ColumnKind> kinds;
  // Per column, the last date read (kept from one run to the next: a text
  // reads as the same date whenever it comes).
  std::vector<DateMemo> dates;

  // How often SQLite has prepared the statement anew when it was described.
  int reprepared = -1;

  // The columns as the statement now has them: SQLite prepares a statement
  // anew inside a step when the schema changed under it, possibly by another
  // process; a column dropped and added again moves the others.
  void Describe() {
    const int now = sqlite3_stmt_status(stmt.get(), SQLITE_STMTSTATUS_REPREPARE, 0);
    if (columns && now == reprepared) return;
    reprepared = now;
    const int count = sqlite3_column_count(stmt.get());
    std::vector<std::string> names;
    kinds.clear();
    for (int i = 0; i < count; ++i) {
      names.emplace_back(sqlite3_column_name(stmt.get(), i));
      kinds.push_back(KindFromDeclared(sqlite3_column_decltype(stmt.get(), i)));
    }
    columns = std::make_shared<const RowSet::Columns>(std::move(names));
    dates.assign(kinds.size(), DateMemo{});
  }
};

class SqliteDatabase::Statements : public StatementCache<Prepared> {};

// Leaves a statement ready for its next run, whatever happened in this one:
// a statement left mid-result would hold its read lock.
struct ResetGuard {
  sqlite3_stmt* stmt;
  ~ResetGuard() { sqlite3_reset(stmt); }
};

SqliteDatabase::SqliteDatabase(std::unique_ptr<sqlite3, SqliteCloser> db, std::string path,
                               bool readOnly)
    : db_(std::move(db)), path_(std::move(path)), read_only_(readOnly) {
  rules_ = schema_.Rules([](const Date& d) { return SqliteDialect().DateLiteral(d); });
  // The library's Jet forms come in; what goes out is read as SQLite reads it.
  rules_.lexicon = &LibraryLexicon();
  rules_.final_lexicon = &SqliteDialect().Lexical();
  // A bound text and a string literal read alike in SQLite: both have no
  // affinity, and a column compared with either applies its own.
  lifting_.any_string = true;
  lifting_.decimal_marker = SqliteDialect().BoundDecimal();
  lifting_.max_values =
      static_cast<size_t>(sqlite3_limit(db_.get(), SQLITE_LIMIT_VARIABLE_NUMBER, -1));
  if (Statements::Enabled()) {
    statements_ = std::make_unique<Statements>();
    AdaptationRules learning = rules_;
    learning.lifting = &lifting_;
    plans_ = std::make_unique<StatementPlans>(
        [learning](const std::string& text, StatementFacts& facts) {
          AdaptStatement(text, learning, &facts);
        });
  }
}

SqliteDatabase::~SqliteDatabase() = default;

SqliteDatabase::Prepared& SqliteDatabase::Bound(const LiftedStatement& lifted) {
  sqlite3* db = Handle();
  const std::string& shape = lifted.Shape();
  Prepared* p = statements_->Find(shape);
  if (!p) {
    Prepared fresh{Prepare(db, shape, true)};
    p = &statements_->Insert(shape, std::move(fresh));
  }
  sqlite3_stmt* s = p->stmt.get();
  // Every parameter is bound on every run, so none keeps a value (or a
  // pointer to a freed text) from the last one; a shape with markers the
  // lifting did not place is never run bound.
  if (sqlite3_bind_parameter_count(s) != static_cast<int>(lifted.values.size())) {
    Raise(errEngine, kSource,
          "Internal error: a statement's parameters do not match its values; it was not run.");
  }
  int k = 1;
  for (const LiftedValue& v : lifted.values) {
    const int rc = v.kind == LiftedValue::kInteger
                       ? sqlite3_bind_int64(s, k, v.integer)
                       : sqlite3_bind_text(s, k, v.text.data(), static_cast<int>(v.text.size()),
                                           SQLITE_STATIC);
    if (rc != SQLITE_OK) RaiseSqlite(db, rc);
    ++k;
  }
  return *p;
}

void SqliteDatabase::ForgetStatements() {
  if (statements_) statements_->Clear();
  if (plans_) plans_->Clear();
}

std::shared_ptr<SqliteDatabase> SqliteDatabase::Open(const std::string& path, bool exclusive,
                                                     bool readOnly) {
  bool isDirectory = false;
  off_t size = 0;
  if (path.empty() || !FileExists(path, isDirectory, &size)) {
    Raise(errFileNotFound, kSource, "Could not find file '" + path + "'.");
  }
  if (isDirectory)
    Raise(errCannotOpenFile, kSource, "'" + path + "' is a folder, not a database file.");
  // SQLite would take an empty file for a new database and make it one.
  if (size == 0) {
    Raise(errCannotOpenFile, kSource,
          "'" + path + "' is empty, not a database file (ztk init creates a new one).");
  }
  const std::string access = AccessSignature(path);
  if (!access.empty()) {
    Raise(errCannotOpenFile, kSource,
          "'" + path + "' is a Microsoft Access database (" + access +
              "); only SQLite database files can be opened. Convert it once with: ztk import '" +
              path + "' NEW.db");
  }
  sqlite3* raw = nullptr;
  // No per-call mutex: a connection serves the thread that opened it, and
  // the library takes no locks of its own either.
  const int flags = (readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) |
                    SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_URI;
  const int rc = sqlite3_open_v2(FileUri(path, readOnly).c_str(), &raw, flags, nullptr);
  std::unique_ptr<sqlite3, SqliteCloser> db(raw);
  if (rc != SQLITE_OK) {
    Raise(errCannotOpenFile, kSource,
          "Cannot open '" + path + "': " + (raw ? sqlite3_errmsg(raw) : sqlite3_errstr(rc)));
  }
  sqlite3_extended_result_codes(raw, 1);
  auto run = [&](const char* sql) {
    const int r = sqlite3_exec(raw, sql, nullptr, nullptr, nullptr);
    if (r == SQLITE_OK) return;
    std::string message = sqlite3_errmsg(raw);
    if ((r & 0xff) == SQLITE_NOTADB) message = "the file is not a database";
    if ((r & 0xff) == SQLITE_BUSY) message = "the file is already in use";
    Raise(errCannotOpenFile, kSource, "Cannot open '" + path + "': " + message);
  };
  // An exclusive open must fail at once when someone else has the file.
  sqlite3_busy_timeout(raw, exclusive ? 0 : kBusyTimeoutMs);
  if (exclusive) run("PRAGMA locking_mode=EXCLUSIVE");
  run("SELECT count(*) FROM sqlite_master");
  if (!readOnly) {
    // WAL lets readers go on while one process writes; NORMAL sync keeps
    // every committed write across a crash of the process.
    run("PRAGMA journal_mode=WAL");
    run("PRAGMA synchronous=NORMAL");
    if (exclusive) run("BEGIN EXCLUSIVE; COMMIT");
  }
  sqlite3_busy_timeout(raw, kBusyTimeoutMs);
  return std::shared_ptr<SqliteDatabase>(new SqliteDatabase(std::move(db), path, readOnly));
}

void SqliteDatabase::Create(const std::string& path, const std::string& ddl) {
  bool isDirectory = false;
  if (FileExists(path, isDirectory)) {
    Raise(3204, kSource, "Database '" + path + "' already exists.");
  }
  sqlite3* raw = nullptr;
  const int rc =
      sqlite3_open_v2(path.c_str(), &raw,
                      SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXCLUSIVE, nullptr);
  std::unique_ptr<sqlite3, SqliteCloser> db(raw);
  if (rc != SQLITE_OK) {
    Raise(errCannotOpenFile, kSource,
          "Cannot create '" + path + "': " + (raw ? sqlite3_errmsg(raw) : sqlite3_errstr(rc)));
  }
  const std::string script = "PRAGMA journal_mode=WAL; BEGIN; " + ddl + "\nCOMMIT;";
  char* error = nullptr;
  if (sqlite3_exec(raw, script.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
    std::string message = error ? error : "unknown error";
    sqlite3_free(error);
    db.reset();
    std::remove(path.c_str());
    Raise(errEngine, kSource, "Cannot create '" + path + "': " + message);
  }
}

sqlite3* SqliteDatabase::Handle() {
  if (!db_) Raise(3420, kSource, "Object invalid or no longer set (the database is closed).");
  return db_.get();
}

std::string SqliteDatabase::Adapt(const std::string& sql, StatementFacts* facts) {
  return AdaptStatement(sql, rules_, facts);
}

// The statements a read-only open may run besides SELECT, by their first
// word; a PRAGMA only as a question (no "=").
[[noreturn]] static void RaiseReadOnly() {
  Raise(errReadOnly, kSource,
        "Cannot update. Database or object is read-only (opened read-only); the statement was "
        "not sent.");
}

// A file renamed or deleted while open still takes writes, into a file no
// one will open again; they are refused instead.
void SqliteDatabase::RefuseIfMoved() {
  int moved = 0;
  if (sqlite3_file_control(Handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK &&
      moved) {
    Raise(errCannotOpenFile, kSource,
          "The database file '" + path_ +
              "' was moved or deleted after it was opened; nothing was written. Open it again "
              "where it is now.");
  }
}

int64_t SqliteDatabase::Execute(const Statement& sql) {
  bool plainQuery = false;
  if (!plans_ || !plans_->Bind(sql, bound_, plainQuery)) return Execute(sql.Render());
  TraceScope trace(kEngine, nullptr, &sql, true);
  sqlite3* db = Handle();
  Prepared& p = Bound(bound_);
  const ResetGuard reset{p.stmt.get()};
  if (sqlite3_column_count(p.stmt.get()) > 0) {
    Raise(3065, kSource, "Cannot execute a select query.");
  }
  if (read_only_) RaiseReadOnly();
  RefuseIfMoved();
  const int rc = sqlite3_step(p.stmt.get());
  if (rc != SQLITE_DONE && rc != SQLITE_ROW) RaiseSqlite(db, rc);
  trace.Rows(sqlite3_changes64(db));
  return sqlite3_changes64(db);
}

int64_t SqliteDatabase::Execute(const std::string& sql) {
  TraceScope trace(kEngine, &sql, nullptr, false);
  sqlite3* db = Handle();
  const std::string text = Adapt(sql);
  StmtHandle stmt = Prepare(db, text);
  if (sqlite3_column_count(stmt.get()) > 0) {
    Raise(3065, kSource, "Cannot execute a select query.");
  }
  if (read_only_) RaiseReadOnly();
  RefuseIfMoved();
  const int rc = sqlite3_step(stmt.get());
  if (rc != SQLITE_DONE && rc != SQLITE_ROW) RaiseSqlite(db, rc);
  const char* sent = sqlite3_sql(stmt.get());
  if (sent && (strncasecmp(sent, "CREATE", 6) == 0 || strncasecmp(sent, "DROP", 4) == 0 ||
               strncasecmp(sent, "ALTER", 5) == 0)) {
    schema_.Clear();
    ForgetStatements();
  }
  trace.Rows(sqlite3_changes64(db));
  return sqlite3_changes64(db);
}

// One prepared single-row INSERT stepped per row: SQLite has no round trip
// to save, and a statement of many rows would only parse longer.
int64_t SqliteDatabase::InsertRows(const std::string& table,
                                   const std::vector<std::string>& columns,
                                   const std::vector<std::vector<Variant>>& rows) {
  sqlite3* db = Handle();
  if (read_only_) RaiseReadOnly();
  CheckStorableRows(rows, columns.size(), kLargestJetAmount);
  if (rows.empty()) return 0;
  RefuseIfMoved();
  std::string sql = "INSERT INTO " + table + " (";
  for (size_t i = 0; i < columns.size(); ++i) sql += (i ? ", " : "") + columns[i];
  sql += ") VALUES (";
  for (size_t i = 0; i < columns.size(); ++i) sql += i ? ", ?" : "?";
  sql += ")";
  Prepared once{};
  Prepared* p = statements_ ? statements_->Find(sql) : nullptr;
  if (!p) {
    Prepared fresh{Prepare(db, sql, statements_ != nullptr)};
    p = statements_ ? &statements_->Insert(sql, std::move(fresh)) : &(once = std::move(fresh));
  }
  sqlite3_stmt* s = p->stmt.get();
  const ResetGuard reset{s};
  std::vector<std::string> texts(columns.size());
  for (const auto& row : rows) {
    for (size_t c = 0; c < row.size(); ++c) {
      const int rc = BindCell(s, static_cast<int>(c) + 1, row[c], texts[c]);
      if (rc != SQLITE_OK) RaiseSqlite(db, rc);
    }
    const int rc = sqlite3_step(s);
    if (rc != SQLITE_DONE) RaiseSqlite(db, rc);
    sqlite3_reset(s);
  }
  return static_cast<int64_t>(rows.size());
}

// A file's result is read row by row as it is stepped: there is no second
// copy to bound, whatever its size.
std::shared_ptr<const RowSet> SqliteDatabase::Query(const std::string& sql, ResultSize /*size*/) {
  TraceScope trace(kEngine, &sql, nullptr, false);
  sqlite3* db = Handle();
  StatementFacts facts;
  const std::string text = Adapt(sql, &facts);
  // Beyond a plain SELECT, a read-only open runs EXPLAIN, WITH … SELECT and
  // PRAGMA reads when SQLite's own reading says they write nothing. Nothing
  // else: BEGIN or ATTACH "write nothing" too, but would change the
  // connection under the host. What cannot be read at all is refused as a
  // write; nothing refused is stepped.
  const bool probe = read_only_ && !facts.plain_query;
  if (probe && !MayRunReadOnly(text)) RaiseReadOnly();
  Prepared once{[&] {
    if (!probe) return Prepare(db, text);
    try {
      return Prepare(db, text);
    } catch (const Error&) {
      RaiseReadOnly();
    }
  }()};
  if (probe && !sqlite3_stmt_readonly(once.stmt.get())) RaiseReadOnly();
  auto rows = ReadRows(once);
  trace.Rows(rows->RowCount());
  return rows;
}

std::shared_ptr<const RowSet> SqliteDatabase::Query(const Statement& sql, ResultSize size) {
  bool plainQuery = false;
  if (!plans_ || !plans_->Bind(sql, bound_, plainQuery)) return Query(sql.Render(), size);
  TraceScope trace(kEngine, nullptr, &sql, true);
  Handle();
  if (read_only_ && !plainQuery) RaiseReadOnly();
  Prepared& p = Bound(bound_);
  const ResetGuard reset{p.stmt.get()};
  auto rows = ReadRows(p);
  trace.Rows(rows->RowCount());
  return rows;
}

std::shared_ptr<const RowSet> SqliteDatabase::ReadRows(Prepared& p) {
  sqlite3_stmt* s = p.stmt.get();
  // Described after the first step: that is where a statement is prepared
  // anew for a changed schema.
  int rc = sqlite3_step(s);
  if (rc != SQLITE_DONE && rc != SQLITE_ROW) RaiseSqlite(db_.get(), rc);
  p.Describe();
  auto rows = std::make_shared<RowSet>(p.columns);
  const int columns = static_cast<int>(p.kinds.size());
  const ColumnKind* kinds = p.kinds.data();
  DateMemo* dates = p.dates.data();
  for (; rc != SQLITE_DONE; rc = sqlite3_step(s)) {
    if (rc != SQLITE_ROW) RaiseSqlite(db_.get(), rc);
    rows->BeginRow();
    for (int i = 0; i < columns; ++i) AppendCell(*rows, s, i, kinds[i], &dates[i]);
    rows->EndRow();
  }
  return rows;
}

std::optional<std::string> SqliteDatabase::FindTable(const std::string& name) {
  StmtHandle stmt = Prepare(Handle(),
                            "SELECT name FROM sqlite_master WHERE type IN ('table','view') AND "
                            "name = ?1 COLLATE NOCASE");
  sqlite3_bind_text(stmt.get(), 1, name.c_str(), static_cast<int>(name.size()), SQLITE_TRANSIENT);
  if (sqlite3_step(stmt.get()) != SQLITE_ROW) return std::nullopt;
  return std::string(ColumnText(stmt.get(), 0));
}

std::vector<ColumnInfo> SqliteDatabase::Columns(const std::string& table) {
  std::vector<ColumnInfo> out;
  StmtHandle stmt = Prepare(Handle(), "SELECT name, type FROM pragma_table_info(?1)");
  sqlite3_bind_text(stmt.get(), 1, table.c_str(), static_cast<int>(table.size()), SQLITE_TRANSIENT);
  while (sqlite3_step(stmt.get()) == SQLITE_ROW) {
    ColumnInfo info;
    info.name = std::string(ColumnText(stmt.get(), 0));
    info.declared_type = std::string(ColumnText(stmt.get(), 1));
    info.is_date = KindFromDeclared(info.declared_type.c_str()) == ColumnKind::kDate;
    out.push_back(std::move(info));
  }
  return out;
}

void SqliteDatabase::AddColumn(const std::string& table, const NewColumn& column) {
  if (read_only_) RaiseReadOnly();
  std::string sql = "ALTER TABLE " + SqliteDialect().QuoteName(table) + " ADD COLUMN " +
                    SqliteDialect().QuoteName(column.name) + " " +
                    SqliteDialect().ColumnType(column.type);
  const std::string def = DefaultLiteral(column.default_value);
  if (column.required) {
    // SQLite can add a NOT NULL column only with a default for the existing rows.
    sql += " NOT NULL DEFAULT " + (def.empty() ? std::string("0") : def);
  } else if (!def.empty()) {
    sql += " DEFAULT " + def;
  }
  ExecuteInternal(sql);
  schema_.Clear();
  ForgetStatements();
}

std::vector<std::string> SqliteDatabase::TableNames() {
  std::vector<std::string> out;
  StmtHandle stmt = Prepare(Handle(),
                            "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE "
                            "'sqlite\\_%' ESCAPE '\\' ORDER BY name");
  while (sqlite3_step(stmt.get()) == SQLITE_ROW) out.emplace_back(ColumnText(stmt.get(), 0));
  return out;
}

void SqliteDatabase::ExecuteInternal(const std::string& sql) {
  sqlite3* db = Handle();
  StmtHandle stmt = Prepare(db, sql);
  const int rc = sqlite3_step(stmt.get());
  if (rc != SQLITE_DONE && rc != SQLITE_ROW) RaiseSqlite(db, rc);
}

// A write transaction takes the write lock at its start, where the busy
// timeout applies; a deferred one would take it at its first write and fail
// at once when another writer holds it.
void SqliteDatabase::BeginTrans() { ExecuteInternal(read_only_ ? "BEGIN" : "BEGIN IMMEDIATE"); }
// Deferred: no write lock; the first read fixes what every later read sees.
void SqliteDatabase::BeginSnapshot() { ExecuteInternal("BEGIN"); }

void SqliteDatabase::CommitTrans() {
  if (!read_only_ && !sqlite3_get_autocommit(Handle())) {
    try {
      RefuseIfMoved();
    } catch (const Error&) {
      ExecuteInternal("ROLLBACK");
      throw;
    }
  }
  ExecuteInternal("COMMIT");
}
void SqliteDatabase::Rollback() { ExecuteInternal("ROLLBACK"); }

void SqliteDatabase::Close() noexcept {
  ForgetStatements();
  db_.reset();
  schema_.Clear();
}

}  // namespace ZTkDb::detail
