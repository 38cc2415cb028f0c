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

long DaoNumberFor(const std::string& sqlstate, const std::string& message) {
  const std::string lower = LowerAscii(message);
  auto says = [&](const char* words) { return lower.find(words) != std::string::npos; };
  if (sqlstate == "23505" || says("unique constraint") || says("duplicate key") ||
      (sqlstate.starts_with("23") && says("unique"))) {
    return errDuplicateValue;
  }
  if (sqlstate == "23502" || says("not-null constraint") || says("not null constraint"))
    return 3314;
  if (sqlstate == "42P01" || sqlstate == "42S02" || says("no such table")) return errTableNotFound;
  if (sqlstate == "42703" || sqlstate == "42S22" || says("no such column"))
    return errTooFewParameters;
  if (sqlstate == "42601" || says("syntax error") || says("unrecognized token") ||
      says("incomplete input")) {
    return errSyntax;
  }
  if (sqlstate == "40001" || sqlstate == "40P01" || sqlstate == "55P03" ||
      sqlstate.starts_with("HYT") || says("database is locked")) {
    return errLocked;
  }
  if (sqlstate == "25006" || says("readonly database") || says("read-only transaction")) {
    return errReadOnly;
  }
  return errOdbcCallFailed;
}

void RaiseOdbc(SQLSMALLINT type, SQLHANDLE handle, const std::string& what) {
  const auto records = Diagnostics(type, handle);
  if (records.empty()) {
    Raise(errOdbcCallFailed, "ZTkDb.ODBC",
          "ODBC--call failed. " + what + " failed without a diagnostic.");
  }
  const long number = DaoNumberFor(records.front().sqlstate, records.front().message);
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
