// ztk check: stored forms that the library's statements would not find.
#include "Check.h"

#include <cinttypes>
#include <cstdio>

#include "Session.h"
#include "Transfer.h"
#include "connection/ModuleSchema.h"

namespace ztk {

void Check(const Endpoint& where, bool repair) {
  where.RequireOne("check (--db or --odbc)");
  Engine engine = OpenEngine(where, repair);
  const std::string truth = std::to_string(engine.TrueForm());
  struct Finding {
    std::string table, column;
    int64_t rows;
  };
  std::vector<Finding> found;
  for (const auto& [name, column] : ZTkDb::detail::ModuleFlags()) {
    const std::string table = engine.db->FindTable(name);
    if (table.empty()) continue;
    const std::string stray =
        " WHERE " + column + " IS NOT NULL AND " + column + " <> 0 AND " + column + " <> " + truth;
    const int64_t rows = CountRows(*engine.db, table + stray);
    if (rows > 0) found.push_back({name, column, rows});
  }
  if (found.empty()) {
    std::printf("every flag holds %s or 0: nothing to repair\n", truth.c_str());
    return;
  }
  for (const Finding& f : found) {
    std::printf("%s.%s: %" PRId64 " rows hold another value than %s for true%s\n", f.table.c_str(),
                f.column.c_str(), f.rows, truth.c_str(), repair ? "" : " (--repair rewrites them)");
  }
  if (!repair)
    throw Failure("stored values the library's statements do not find; nothing was changed");
  engine.db->BeginTrans();
  try {
    for (const Finding& f : found) {
      const std::string table = engine.db->FindTable(f.table);
      engine.db->Execute("UPDATE " + table + " SET " + f.column + " = " + truth + " WHERE " +
                         f.column + " IS NOT NULL AND " + f.column + " <> 0 AND " + f.column +
                         " <> " + truth);
    }
    engine.db->CommitTrans();
  } catch (...) {
    RollbackQuietly(*engine.db);
    throw;
  }
  std::printf("repaired: every flag now holds %s or 0\n", truth.c_str());
}

}  // namespace ztk
