// ztk copy: the module's data from one database to another, as it stands.
#include "Copy.h"

#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <future>

#include "Output.h"
#include "Session.h"
#include "Text.h"
#include "Transfer.h"
#include "connection/ToolAccess.h"

namespace ztk {
namespace {

using ZTkDb::Variant;
using ZTkDb::tool::Database;
using ZTkDb::tool::RowSet;

// Parents before children: a link never names a row that is not there yet.
constexpr const char* kTables[] = {"T_Meldung",  "T_Auftrag",   "T_AuftragMeldung",
                                   "T_Leistung", "T_AMaterial", "T_MsgOrderDokument"};

// The target's spelling of each source column, in the source's order.
std::vector<std::string> TargetColumns(const RowSet& source, Database& target,
                                       const std::string& table) {
  const auto columns = target.Columns(table);
  std::vector<std::string> out;
  out.reserve(static_cast<size_t>(source.ColumnCount()));
  for (int32_t i = 0; i < source.ColumnCount(); ++i) {
    out.push_back(TargetColumn(columns, source.Name(i), table));
  }
  return out;
}

struct Copied {
  std::string name;  // as the module names it
  int64_t rows = 0;
};

// Copies one table and checks it: the rows it holds now, and (when it was
// empty) the checksum of every value read back.
Copied CopyTable(const std::shared_ptr<const RowSet>& rows, Engine& target, const std::string& name,
                 const std::string& table, int64_t before) {
  const std::vector<std::string> columns = TargetColumns(*rows, *target.db, table);
  RowWriter writer(target, table, columns);
  const FlagForms flags(target, table, columns);
  Progress progress(name, static_cast<size_t>(rows->RowCount()));
  std::vector<Variant> row;
  for (int64_t r = 0; r < rows->RowCount(); ++r) {
    rows->DecodeRow(r, row);
    flags.Apply(row);
    writer.Add(std::move(row));
    progress.Step(static_cast<size_t>(r + 1));
  }
  writer.Finish();
  int64_t held = 0;
  const uint64_t readBack = ChecksumOf(*target.db, table, columns, held);
  if (held != before + writer.Written()) {
    throw Failure(
        // TRANSLATORS: {2} is a table; {3} the number of rows it should hold.
        SayCount("{2}: the target holds {1} row after the copy, not {3}; nothing was written",
                 "{2}: the target holds {1} rows after the copy, not {3}; nothing was written",
                 static_cast<unsigned long>(held), name, before + writer.Written()));
  }
  // Appended rows are not told apart from those there before: the count
  // checks them, and the key refuses a clash.
  if (before == 0 && readBack != writer.Checksum()) {
    throw Failure(Say(_("{1}: the values read back from the target differ from the source's; "
                        "nothing was written"),
                      name));
  }
  return {name, writer.Written()};
}

void CheckEnds(const CopyOptions& options) {
  options.from.RequireOne(
      _("copy: give the source as either a SQLite file (--from-db) or an ODBC "
        "connection string (--from-odbc)"));
  options.to.RequireOne(
      _("copy: give the target as either a SQLite file (--to-db) or an ODBC "
        "connection string (--to-odbc)"));
  if (!options.from.db.empty() && options.from.db == options.to.db) {
    throw UsageError(_("copy: the source and the target are the same file"));
  }
}

void PrepareTarget(const CopyOptions& options) {
  if (options.init) {
    if (!options.to.db.empty())
      ZTkDb::tool::CreateModuleDatabase(options.to.db);
    else
      ZTkDb::tool::CreateModuleSchemaOdbc(options.to.odbc);
  } else if (!options.to.db.empty() && !std::filesystem::exists(options.to.db)) {
    throw Failure(
        Say(_("'{1}' does not exist (--init creates it with the module's tables)"), options.to.db));
  }
}

struct Planned {
  std::string name, table;
  int64_t before;
};

std::vector<Planned> PlanTables(Engine& source, Engine& target, bool append) {
  std::vector<Planned> plan;
  for (const char* name : kTables) {
    if (!source.db->FindTable(name)) continue;
    const std::optional<std::string> found = target.db->FindTable(name);
    if (!found) {
      throw Failure(Say(_("the target has no table {1} (--init creates the module's tables); "
                          "nothing was written"),
                        name));
    }
    const std::string& table = *found;
    const int64_t before = CountRows(*target.db, table);
    if (before > 0 && !append) {
      throw Failure(
          // TRANSLATORS: {2} is a table.
          SayCount("the target's {2} already holds {1} row (--append adds to it, refusing "
                   "any id that exists); nothing was written",
                   "the target's {2} already holds {1} rows (--append adds to them, "
                   "refusing any id that exists); nothing was written",
                   static_cast<unsigned long>(before), name));
    }
    plan.push_back({name, table, before});
  }
  return plan;
}

struct EndSnapshot {
  Database& db;
  ~EndSnapshot() { RollbackQuietly(db); }
};

std::vector<Copied> CopyTables(Engine& source, Engine& target, const std::vector<Planned>& plan) {
  // The next table is read from the source while this one is written:
  // the two ends are different connections, each used by one thread at
  // a time.
  auto read = [&source](const std::string& table) {
    return source.db->Query("SELECT * FROM " + table, ZTkDb::tool::ResultSize::kMany);
  };
  std::vector<Copied> copied;
  std::future<std::shared_ptr<const RowSet>> next;
  if (!plan.empty()) next = std::async(std::launch::async, read, plan[0].table);
  for (size_t i = 0; i < plan.size(); ++i) {
    auto rows = next.get();
    if (i + 1 < plan.size()) next = std::async(std::launch::async, read, plan[i + 1].table);
    copied.push_back(CopyTable(rows, target, plan[i].name, plan[i].table, plan[i].before));
  }
  return copied;
}

// The target's next ids follow the copied ones.
void AdvanceIds(Engine& target, const std::vector<Planned>& plan) {
  for (const Planned& p : plan) {
    if (p.name == std::string("T_AuftragMeldung")) continue;  // no id of its own
    for (const std::string& step : target.dialect->IdentityAdvance(p.table, "lId")) {
      target.db->Query(step);
    }
  }
}

std::vector<Copied> CopyInTransaction(Engine& source, Engine& target,
                                      const std::vector<Planned>& plan) {
  std::vector<Copied> copied;
  target.db->BeginTrans();
  try {
    copied = CopyTables(source, target, plan);
    AdvanceIds(target, plan);
    target.db->CommitTrans();
  } catch (const ZTkDb::Error& e) {
    RollbackQuietly(*target.db);
    if (e.Number() == 3022) {
      // TRANSLATORS: {1} is the database's own message, as it gives it.
      throw Failure(Say(_("an id of the source exists in the target already; nothing was written "
                          "({1})"),
                        e.Description()));
    }
    throw;
  } catch (...) {
    RollbackQuietly(*target.db);
    throw;
  }
  return copied;
}

void PrintCopied(const std::vector<Copied>& copied) {
  for (const Copied& c : copied) {
    // The count keeps its column: it is padded before it goes in.
    char count[24];
    std::snprintf(count, sizeof count, "%8" PRId64, c.rows);
    const std::string line =
        // TRANSLATORS: {1} is a count, padded with blanks to line up.
        Say(ngettext("{1} row copied and verified", "{1} rows copied and verified",
                     static_cast<unsigned long>(c.rows)),
            count);
    std::printf("%-20s %s\n", c.name.c_str(), line.c_str());
  }
}

}  // namespace

void Endpoint::RequireOne(const std::string& message) const {
  if (db.empty() == odbc.empty()) throw UsageError(message);
}

void Copy(const CopyOptions& options) {
  CheckEnds(options);
  NewTargetFile newFile(options.init ? options.to.db : std::string());
  PrepareTarget(options);
  Engine source = OpenEngine(options.from, false);
  Engine target = OpenEngine(options.to, true);
  const std::vector<Planned> plan = PlanTables(source, target, options.append);
  // Every table as one moment of the source left them, however busy it is:
  // no link copied without the order it names.
  source.db->BeginSnapshot();
  EndSnapshot endSnapshot{*source.db};
  const std::vector<Copied> copied = CopyInTransaction(source, target, plan);
  newFile.Keep();
  PrintCopied(copied);
}

}  // namespace ztk
