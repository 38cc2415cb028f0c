#pragma once

// What ZTkDb is measured against: each contender runs the statements the
// library sends, as hand-written code would — prepared once with '?'
// markers and run with the values bound (the engine's physical limit, and
// the libraries a host programmer would pick instead), or as literal text
// prepared on every call (for information). Every contender reads every
// column of every row into values of its own, text copied.
#include <memory>
#include <string>
#include <vector>

#include "engine/LiteralLifting.h"

namespace bench {

using Values = std::vector<ZTkDb::detail::LiftedValue>;

class Contender {
 public:
  virtual ~Contender() = default;
  // Prepares a statement shape ('?' markers); gives its number. `sample`
  // shows the kinds of the values it will be run with.
  virtual size_t Add(const std::string& shape, const Values& sample) = 0;
  // Runs shape `which` with `values`; gives the rows read, or for a
  // statement without a result 1.
  virtual int64_t Run(size_t which, const Values& values) = 0;
};

// SQLite's C API: prepared and bound, or the literal text each time.
std::unique_ptr<Contender> RawSqlite(const std::string& path, bool write, bool literal);
// SQLiteCpp, prepared statements.
std::unique_ptr<Contender> SqliteCpp(const std::string& path, bool write);
// ODBC's C API: SQLPrepare once and SQLBindParameter, cells read row by row
// with SQLGetData; or SQLExecDirect with the literal text.
std::unique_ptr<Contender> RawOdbc(const std::string& connect, bool literal);
// SOCI, prepared statements read into soci::row: through its ODBC backend
// and the same driver, or (`native`) its PostgreSQL backend on libpq.
// `connect` is the ODBC connection string either way.
std::unique_ptr<Contender> Soci(const std::string& connect, bool native);

// The shape and values of a statement text as the engine sent it.
ZTkDb::detail::LiftedStatement Shape(const std::string& sent, bool server);
// A shape's text with its values written in as literals.
std::string LiteralText(const std::string& shape, const Values& values);

}  // namespace bench
