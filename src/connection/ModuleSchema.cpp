#include "connection/ModuleSchema.h"

#include "engine/sqlite/SqliteDatabase.h"

namespace ZTkDb::detail {

void CreateModuleDatabase(const std::string& path) { SqliteDatabase::Create(path, SqliteSchemaDdl()); }

}  // namespace ZTkDb::detail
