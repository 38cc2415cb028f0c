#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <vector>

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
// for everything else.
long DaoNumberFor(const std::string& sqlstate, const std::string& message);

// Raises the error of a failed call on `handle`: the DAO number, source
// "ZTkDb.ODBC", and the SQLSTATE and driver text of each record in the
// description. `what` names the call when the driver left no diagnostic.
[[noreturn]] void RaiseOdbc(SQLSMALLINT type, SQLHANDLE handle, const std::string& what);

inline bool Succeeded(SQLRETURN rc) { return rc == SQL_SUCCESS || rc == SQL_SUCCESS_WITH_INFO; }

}  // namespace ZTkDb::detail
