#pragma once

#include <string>
#include <utility>
#include <vector>

#include "runtime/ToolExport.h"

namespace ZTkDb::detail {

// The DDL of the module's six tables, per engine.
const char* SqliteSchemaDdl();
const char* PostgresSchemaDdl();
const char* MariaDbSchemaDdl();

// The statements of a DDL script: split at each ';' that ends a line, with
// comment lines dropped.
std::vector<std::string> SplitScript(const std::string& script);

// The module's flag (Yes/No) columns of `table`, compared without regard to
// case, as its DDL declares them: stored as -1/0 in a file the library opens
// as Jet, as 1/0 on a server; a statement of one kind finds no other's.
ZTKDB_TOOL bool IsModuleFlag(const std::string& table, const std::string& column);
// Every (table, column) of those flags.
ZTKDB_TOOL const std::vector<std::pair<std::string, std::string>>& ModuleFlags();

// Creates a new database file holding the module's tables; refuses to
// overwrite an existing file (error 3204).
ZTKDB_TOOL void CreateModuleDatabase(const std::string& path);

// Creates the module's tables on an ODBC data source (PostgreSQL, MariaDB or
// MySQL, or SQLite through its driver), in one transaction where the server
// has transactional DDL (MariaDB commits each CREATE). Refuses a source that
// already holds T_Auftrag (3204) and a server it has no DDL for (3001,
// naming it).
ZTKDB_TOOL void CreateModuleSchemaOdbc(const std::string& connect);

}  // namespace ZTkDb::detail
