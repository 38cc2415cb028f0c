#pragma once

#include "engine/odbc/OdbcError.h"

namespace ZTkDb::detail {

template <typename T>
bool FetchFixed(SQLHSTMT stmt, SQLUSMALLINT column, SQLSMALLINT cType, T& value) {
  SQLLEN indicator = 0;
  const SQLRETURN rc = SQLGetData(stmt, column, cType, &value, sizeof value, &indicator);
  if (!Succeeded(rc)) RaiseOdbc(SQL_HANDLE_STMT, stmt, "SQLGetData");
  return indicator != SQL_NULL_DATA;
}

}  // namespace ZTkDb::detail
