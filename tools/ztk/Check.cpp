// ztk check: stored forms that the library's statements would not find.
#include "Check.h"

#include <cstdio>

#include "Session.h"
#include "Text.h"
#include "Transfer.h"
#include "connection/ToolAccess.h"

namespace ztk {

void Check(const Endpoint& where, bool repair) {
  where.RequireOne(
      _("check: give either a SQLite file (--db) or an ODBC connection string (--odbc)"));
  Engine engine = OpenEngine(where, repair);
  const std::string truth = std::to_string(engine.TrueForm());
  struct Finding {
    std::string table, column;
    int64_t rows;
  };
  std::vector<Finding> found;
  for (const auto& [name, column] : ZTkDb::tool::ModuleFlags()) {
    const std::optional<std::string> spelled = engine.db->FindTable(name);
    if (!spelled) continue;
    const std::string& table = *spelled;
    const std::string stray =
        " WHERE " + column + " IS NOT NULL AND " + column + " <> 0 AND " + column + " <> " + truth;
    const int64_t rows = CountRows(*engine.db, table + stray);
    if (rows > 0) found.push_back({name, column, rows});
  }
  if (found.empty()) {
    // TRANSLATORS: {1} is the number this engine stores for true (1 or -1).
    std::printf("%s\n", Say(_("every flag holds {1} or 0: nothing to repair"), truth).c_str());
    return;
  }
  for (const Finding& f : found) {
    const auto rows = static_cast<unsigned long>(f.rows);
    std::string line;
    if (repair) {
      // TRANSLATORS: {2}.{3} is a table and its column, {4} the number this
      // engine stores for true (1 or -1).
      line = SayCount("{2}.{3}: {1} row holds another value than {4} for true",
                      "{2}.{3}: {1} rows hold another value than {4} for true", rows, f.table,
                      f.column, truth);
    } else {
      line = SayCount(
          // TRANSLATORS: {2}.{3} is a table and its column, {4} the number this
          // engine stores for true (1 or -1).
          "{2}.{3}: {1} row holds another value than {4} for true (--repair rewrites it)",
          "{2}.{3}: {1} rows hold another value than {4} for true (--repair rewrites them)", rows,
          f.table, f.column, truth);
    }
    std::printf("%s\n", line.c_str());
  }
  if (!repair) {
    throw Failure(
        _("the library's statements do not find some stored values; nothing was changed"));
  }
  engine.db->BeginTrans();
  try {
    for (const Finding& f : found) {
      const std::string table = engine.db->FindTable(f.table).value_or(f.table);
      engine.db->Execute("UPDATE " + table + " SET " + f.column + " = " + truth + " WHERE " +
                         f.column + " IS NOT NULL AND " + f.column + " <> 0 AND " + f.column +
                         " <> " + truth);
    }
    engine.db->CommitTrans();
  } catch (...) {
    RollbackQuietly(*engine.db);
    throw;
  }
  std::printf("%s\n", Say(_("repaired: every flag now holds {1} or 0"), truth).c_str());
}

}  // namespace ztk
