#include "connection/ModuleSchema.h"

#include <sstream>

#include "engine/RowSet.h"
#include "engine/odbc/OdbcDatabase.h"
#include "engine/sqlite/SqliteDatabase.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {

std::vector<std::string> SplitScript(const std::string& script) {
  std::vector<std::string> statements;
  std::string current;
  std::istringstream lines(script);
  for (std::string line; std::getline(lines, line);) {
    const size_t first = line.find_first_not_of(" \t\r");
    if (first == std::string::npos || line.compare(first, 2, "--") == 0) continue;
    const size_t last = line.find_last_not_of(" \t\r");
    const bool ends = line[last] == ';';
    current += line.substr(0, ends ? last : last + 1);
    if (ends) {
      statements.push_back(std::move(current));
      current.clear();
    } else {
      current += '\n';
    }
  }
  if (current.find_first_not_of(" \t\r\n") != std::string::npos) statements.push_back(current);
  return statements;
}

const std::vector<std::pair<std::string, std::string>>& ModuleFlags() {
  // Read once from the embedded engine's DDL, where the declared type BIT
  // is what makes a column a flag to the library.
  static const auto flags = [] {
    std::vector<std::pair<std::string, std::string>> out;
    std::istringstream lines(SqliteSchemaDdl());
    std::string table;
    for (std::string line; std::getline(lines, line);) {
      std::istringstream words(line);
      std::string first, second, third;
      words >> first >> second >> third;
      if (first.empty() || first.starts_with("--")) continue;
      if (LowerAscii(first) == "create" && LowerAscii(second) == "table") {
        table = third.substr(0, third.find('('));
      } else if (first.starts_with(")")) {
        table.clear();
      } else if (!table.empty()) {
        // "bErledigt BIT," or "bFremdleistung BIT" (the last column).
        const std::string type = LowerAscii(second.substr(0, second.find_first_of(",()")));
        if (type == "bit") out.emplace_back(table, first);
      }
    }
    return out;
  }();
  return flags;
}

bool IsModuleFlag(const std::string& table, const std::string& column) {
  const std::string t = LowerAscii(table), c = LowerAscii(column);
  for (const auto& [ft, fc] : ModuleFlags()) {
    if (LowerAscii(ft) == t && LowerAscii(fc) == c) return true;
  }
  return false;
}

void CreateModuleDatabase(const std::string& path) {
  SqliteDatabase::Create(path, SqliteSchemaDdl());
}

void CreateModuleSchemaOdbc(const std::string& connect) {
  auto db = OdbcDatabase::Open(connect, false);
  const char* ddl = nullptr;
  switch (db->Dialect().Which()) {
    case ServerDialect::Id::kPostgres: ddl = PostgresSchemaDdl(); break;
    case ServerDialect::Id::kMariaDb: ddl = MariaDbSchemaDdl(); break;
    case ServerDialect::Id::kSqlite: ddl = SqliteSchemaDdl(); break;
    case ServerDialect::Id::kGeneric:
      Raise(errInvalidArgument, "ZTkDb.Schema",
            "No module schema for the DBMS '" + db->DbmsName() +
                "'; create the tables from the PostgreSQL DDL adapted to this server.");
  }
  if (db->FindTable("T_Auftrag")) {
    Raise(3204, "ZTkDb.Schema", "The data source already holds the module tables (T_Auftrag).");
  }
  std::string script = ddl;
  if (db->Dialect().Which() == ServerDialect::Id::kMariaDb &&
      LowerAscii(db->DbmsName()).find("mariadb") == std::string::npos) {
    for (size_t at; (at = script.find("utf8mb4_nopad_bin")) != std::string::npos;) {
      script.replace(at, 17, "utf8mb4_bin");
    }
  }
  db->BeginTrans();
  try {
    for (const std::string& statement : SplitScript(script)) db->ExecuteRaw(statement);
    db->CommitTrans();
  } catch (...) {
    try {
      db->Rollback();
    } catch (const Error&) {
      // The statement's own error is the one to report.
    }
    throw;
  }
}

}  // namespace ZTkDb::detail
