#include "engine/odbc/OdbcError.h"

#include "engine/RowSet.h"
#include "engine/odbc/Utf16.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {

std::vector<OdbcDiagnostic> Diagnostics(SQLSMALLINT type, SQLHANDLE handle) {
  std::vector<OdbcDiagnostic> out;
  if (handle == SQL_NULL_HANDLE) return out;
  for (SQLSMALLINT record = 1;; ++record) {
    SQLWCHAR state[6] = {};
    SQLINTEGER native = 0;
    SQLWCHAR text[1024] = {};
    SQLSMALLINT length = 0;
    const SQLRETURN rc = SQLGetDiagRecW(type, handle, record, state, &native, text, 1024, &length);
    if (!Succeeded(rc)) break;
    const size_t units =
        std::min<size_t>(static_cast<size_t>(std::max<SQLSMALLINT>(length, 0)), 1023);
    out.push_back({ToUtf8(state, 5), native, ToUtf8(text, units)});
  }
  return out;
}

long DaoNumberFor(const ServerDialect& dialect, const OdbcDiagnostic& d) {
  if (long number = dialect.ErrorNumber(d.sqlstate, d.native, d.message)) return number;
  if (long number = GenericDialect().ErrorNumber(d.sqlstate, d.native, d.message)) return number;
  return errOdbcCallFailed;
}

void RaiseOdbc(SQLSMALLINT type, SQLHANDLE handle, const std::string& what,
               const ServerDialect& dialect) {
  RaiseDiagnostics(Diagnostics(type, handle), what, dialect);
}

void RaiseDiagnostics(const std::vector<OdbcDiagnostic>& records, const std::string& what,
                      const ServerDialect& dialect) {
  if (records.empty()) {
    Raise(errOdbcCallFailed, "ZTkDb.ODBC",
          "ODBC--call failed. " + what + " failed without a diagnostic.");
  }
  const long number = DaoNumberFor(dialect, records.front());
  std::string description = number == errOdbcCallFailed ? "ODBC--call failed. " : "";
  for (size_t i = 0; i < records.size(); ++i) {
    if (i > 0) description += " / ";
    description += "[" + records[i].sqlstate + "] " + records[i].message;
    if (records[i].native != 0)
      description += " (native " + std::to_string(records[i].native) + ")";
  }
  Raise(number, "ZTkDb.ODBC", description);
}

}  // namespace ZTkDb::detail
