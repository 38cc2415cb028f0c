/// \file
/// Statement tracing: ZTkDb::SetStatementTrace.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

/// One statement as the library ran it.
struct StatementTrace {
  /// The statement as its server reads it when sent as text: the template
  /// filled with every value's literal. A bound statement ran with the same
  /// effect without this text being sent.
  std::string text;
  std::string engine;       ///< "SQLite", or the DBMS an ODBC driver names ("PostgreSQL", ...)
  bool bound = false;       ///< values bound to a prepared statement, or the text sent
  double milliseconds = 0;  ///< how long the statement took
  /// Rows written, or rows read by a query; -1 when the statement failed.
  int64_t rows = -1;
};

/// Receives one StatementTrace per statement, once the statement ended.
using TraceSink = std::function<void(const StatementTrace&)>;

/// Routes a trace of every statement of the process to `sink`; an empty
/// function ends it. Without a sink, `ZTKDB_TRACE=stderr` writes one line per
/// statement to stderr and `ZTKDB_TRACE=<file>` appends them to that file.
/// Tracing costs nothing while it is off; while it is on, each statement is
/// rendered as text once more for the trace. The sink is called in the
/// thread that ran the statement, and must not run statements itself. A
/// statement that ended in another thread while the sink was replaced may
/// still reach the old one after SetStatementTrace returns.
/// \param sink Called once per statement; an empty function to end the trace.
ZTKDB_API void SetStatementTrace(TraceSink sink);

}  // namespace ZTkDb
