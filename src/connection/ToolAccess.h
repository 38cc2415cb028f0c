#pragma once

// What the ztk tool uses of the library's insides, in one place: engines
// opened on a file or a data source (or the one a client's session holds),
// the module's schema, and recordsets over the tool's own queries. What is
// not inline here is exported for the tool only (ZTKDB_TOOL, checked by
// tests/exports.sh) and promises hosts nothing. The tool includes no other
// internal header but the record classes' column tables
// (records/RecordColumns.h), macros naming public properties only.
#include <cstdint>
#include <memory>
#include <string>

#include "connection/DbConnectionRegistry.h"
#include "connection/ModuleSchema.h"
#include "connection/WorkspaceNames.h"
#include "engine/Database.h"
#include "engine/RecordsetAccess.h"
#include "engine/RowSet.h"
#include "engine/dialect/ServerDialect.h"
#include "engine/odbc/OdbcDatabase.h"
#include "engine/sqlite/SqliteDatabase.h"

namespace ZTkDb::tool {

using detail::ColumnInfo;
using detail::DaoFieldType;
using detail::Database;
using detail::ResultSize;
using detail::RowSet;
using detail::ServerDialect;
// The column types a new table's columns take.
using detail::dbBoolean;
using detail::dbByte;
using detail::dbCurrency;
using detail::dbDate;
using detail::dbDouble;
using detail::dbInteger;
using detail::dbLong;
using detail::dbMemo;
using detail::dbText;

using detail::CreateModuleDatabase;
using detail::CreateModuleSchemaOdbc;
using detail::IsModuleFlag;
using detail::LowerAscii;
using detail::ModuleFlags;

// An engine of its own, not registered under any client, with the dialect
// of its server. `jet`: a file the library opens as Jet, whose statements
// compare flags with -1.
struct OpenedEngine {
  std::shared_ptr<Database> db;
  const ServerDialect* dialect = nullptr;
  bool jet = false;
  // True as the engine's own statements store and compare it.
  int16_t TrueForm() const { return jet ? -1 : 1; }
};

inline OpenedEngine OpenFile(const std::string& path, bool write) {
  return {detail::SqliteDatabase::Open(path, false, !write), &detail::SqliteDialect(), true};
}

inline OpenedEngine OpenDataSource(const std::string& connect, bool write) {
  auto odbc = detail::OdbcDatabase::Open(connect, !write);
  const ServerDialect* dialect = &odbc->Dialect();
  return {std::move(odbc), dialect, false};
}

// The engine a client's open session holds.
inline std::shared_ptr<Database> EngineOf(const std::string& client) {
  return detail::DbConnectionRegistry::Instance()
      .Item(detail::WorkspaceName(client))
      ->GetDatabase();
}

// The result of one of the tool's own texts, as a host's recordset.
inline std::unique_ptr<Recordset> Results(const std::shared_ptr<Database>& db,
                                          const std::string& text) {
  auto rows = db->Query(text);
  return detail::RecordsetAccess::Make(db, text, std::move(rows));
}

}  // namespace ZTkDb::tool
