#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <vector>

#include "engine/dialect/ServerDialect.h"

namespace ZTkDb::detail {

struct OdbcDiagnostic {
  std::string sqlstate;
  SQLINTEGER native = 0;
  std::string message;
};

// Every diagnostic record the driver left on `handle`.
std::vector<OdbcDiagnostic> Diagnostics(SQLSMALLINT type, SQLHANDLE handle);

// The DAO number hosts know for a server's error: 3022 duplicate key, 3075
// syntax, 3078 unknown table, 3061 unknown column, 3260 locked or timed out,
// 3314 Null in a required column, 3027 read-only; 3146 "ODBC--call failed"
// for everything else. The server's dialect decides first, then the ODBC
// state classes every driver reports.
long DaoNumberFor(const ServerDialect& dialect, const OdbcDiagnostic& diagnostic);

// Raises the error of a failed call on `handle`: the DAO number, source
// "ZTkDb.ODBC", and the SQLSTATE, native code and driver text of each record
// in the description. `what` names the call when the driver left no
// diagnostic.
[[noreturn]] void RaiseOdbc(SQLSMALLINT type, SQLHANDLE handle, const std::string& what,
                            const ServerDialect& dialect = GenericDialect());
// The same from diagnostics already read.
[[noreturn]] void RaiseDiagnostics(const std::vector<OdbcDiagnostic>& records,
                                   const std::string& what, const ServerDialect& dialect);

inline bool Succeeded(SQLRETURN rc) { return rc == SQL_SUCCESS || rc == SQL_SUCCESS_WITH_INFO; }

}  // namespace ZTkDb::detail
