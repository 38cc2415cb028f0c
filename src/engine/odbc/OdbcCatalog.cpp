// What the connection's catalogue says: the current database, its tables
// and their columns.
#include <strings.h>

#include <algorithm>
#include <cctype>

#include "engine/RowSet.h"
#include "engine/odbc/OdbcDatabase.h"
#include "engine/odbc/OdbcFetch.h"
#include "engine/odbc/Utf16.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {

std::string OdbcDatabase::Catalog() {
  if (!dialect_->CatalogIsDatabase()) return {};
  SQLWCHAR buffer[256] = {};
  SQLINTEGER length = 0;
  if (!Succeeded(
          SQLGetConnectAttrW(Handle(), SQL_ATTR_CURRENT_CATALOG, buffer, sizeof buffer, &length))) {
    Fail(SQL_HANDLE_DBC, dbc_.Get(), "SQLGetConnectAttr");
  }
  return ToUtf8(buffer,
                std::min<size_t>(
                    static_cast<size_t>(std::max<SQLINTEGER>(length, 0)) / sizeof(SQLWCHAR), 255));
}

std::vector<ColumnInfo> OdbcDatabase::CatalogColumns(const std::string& table) {
  std::vector<ColumnInfo> out;
  OdbcStmt stmt = NewStatement();
  const std::string catalog = Catalog();
  SQLRETURN rc;
  if (narrow_) {
    std::string bytes = table;
    std::string cat = catalog;
    rc = SQLColumns(stmt.Get(), catalog.empty() ? nullptr : reinterpret_cast<SQLCHAR*>(cat.data()),
                    static_cast<SQLSMALLINT>(cat.size()), nullptr, 0,
                    reinterpret_cast<SQLCHAR*>(bytes.data()),
                    static_cast<SQLSMALLINT>(bytes.size()), nullptr, 0);
  } else {
    auto wide = ToUtf16(table);
    auto cat = ToUtf16(catalog);
    rc = SQLColumnsW(stmt.Get(), catalog.empty() ? nullptr : cat.data(),
                     static_cast<SQLSMALLINT>(cat.size()), nullptr, 0, wide.data(),
                     static_cast<SQLSMALLINT>(wide.size()), nullptr, 0);
  }
  if (!Succeeded(rc)) Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLColumns");
  while (Succeeded(SQLFetch(stmt.Get()))) {
    ColumnInfo info;
    FetchText(stmt.Get(), 4, narrow_, info.name);
    SQLSMALLINT dataType = 0;
    FetchFixed(stmt.Get(), 5, SQL_C_SSHORT, dataType);
    FetchText(stmt.Get(), 6, narrow_, info.declared_type);
    info.is_date = FetchFor(dataType, 0, info.declared_type) == Fetch::kDate;
    info.is_text = !info.is_date && (dataType == SQL_VARCHAR || dataType == SQL_LONGVARCHAR ||
                                     dataType == SQL_WVARCHAR || dataType == SQL_WLONGVARCHAR);
    info.is_float = dataType == SQL_DOUBLE || dataType == SQL_FLOAT || dataType == SQL_REAL;
    if (dataType == SQL_DECIMAL || dataType == SQL_NUMERIC) {
      // Unknown (Null) stays -1: no decimal is bound for the column.
      SQLINTEGER size = -1;
      SQLSMALLINT digits = -1;
      if (FetchFixed(stmt.Get(), 7, SQL_C_SLONG, size) &&
          FetchFixed(stmt.Get(), 9, SQL_C_SSHORT, digits) && size > 0 && size <= 1000 &&
          digits >= 0 && digits <= size) {
        info.precision = static_cast<int16_t>(size);
        info.scale = digits;
      }
    }
    out.push_back(std::move(info));
  }
  return out;
}

std::vector<std::string> OdbcDatabase::CatalogTables() {
  std::vector<std::string> out;
  OdbcStmt stmt = NewStatement();
  std::string catalog = Catalog();
  SQLCHAR type[] = "TABLE";
  // One server may hold many databases: only the current one's tables.
  if (!Succeeded(SQLTables(
          stmt.Get(), catalog.empty() ? nullptr : reinterpret_cast<SQLCHAR*>(catalog.data()),
          static_cast<SQLSMALLINT>(catalog.size()), nullptr, 0, nullptr, 0, type, SQL_NTS))) {
    Fail(SQL_HANDLE_STMT, stmt.Get(), "SQLTables");
  }
  while (Succeeded(SQLFetch(stmt.Get()))) {
    std::string name;
    if (FetchText(stmt.Get(), 3, narrow_, name) && !LowerAscii(name).starts_with("sqlite_")) {
      out.push_back(std::move(name));
    }
  }
  return out;
}

std::optional<std::string> OdbcDatabase::FindTable(const std::string& name) {
  for (const auto& table : TableNames()) {
    if (strcasecmp(table.c_str(), name.c_str()) == 0) return table;
  }
  return std::nullopt;
}

}  // namespace ZTkDb::detail
