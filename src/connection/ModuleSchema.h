#pragma once

#include <string>

namespace ZTkDb::detail {

// The DDL of the module's six tables for the embedded engine.
const char* SqliteSchemaDdl();

// Creates a new database file holding the module's tables; refuses to
// overwrite an existing file (error 3204).
void CreateModuleDatabase(const std::string& path);

}  // namespace ZTkDb::detail
