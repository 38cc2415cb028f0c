// ztk copy: the module's data from one database to another, as it stands.
#include "Copy.h"

#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "Output.h"
#include "Session.h"
#include "connection/ModuleSchema.h"
#include "engine/RowSet.h"
#include "engine/dialect/ServerDialect.h"
#include "engine/odbc/OdbcDatabase.h"
#include "engine/sqlite/SqliteDatabase.h"
#include "sql/Literals.h"

namespace ztk {
namespace {

using ZTkDb::Variant;
using ZTkDb::detail::Database;
using ZTkDb::detail::RowSet;
using ZTkDb::detail::ServerDialect;

// Parents before children, so that a reader of a half-copied target would
// never meet a link to a row not there yet (the copy commits as one anyway).
constexpr const char* kTables[] = {"T_Meldung",  "T_Auftrag",   "T_AuftragMeldung",
                                   "T_Leistung", "T_AMaterial", "T_MsgOrderDokument"};
constexpr size_t kBatchRows = 100;

struct Engine {
  std::shared_ptr<Database> db;
  const ServerDialect* dialect = nullptr;
};

Engine Open(const Endpoint& end, bool write) {
  if (!end.db.empty()) {
    return {ZTkDb::detail::SqliteDatabase::Open(end.db, false, !write),
            &ZTkDb::detail::SqliteDialect()};
  }
  auto odbc = ZTkDb::detail::OdbcDatabase::Open(end.odbc, !write);
  const ServerDialect* dialect = &odbc->Dialect();
  return {odbc, dialect};
}

// A value written as the target stores it; what it cannot store exactly is
// refused (6) before anything is sent.
std::string Literal(const Variant& v, const Engine& target) {
  const int16_t kind = target.db->Kind();
  switch (v.Type()) {
    case ZTkDb::vtEmpty:
    case ZTkDb::vtNull: return "NULL";
    case ZTkDb::vtBoolean: return ZTkDb::detail::FlagLiteral(v.ToBool(), kind);
    case ZTkDb::vtByte:
    case ZTkDb::vtInteger:
    case ZTkDb::vtLong: return ZTkDb::detail::LongLiteral(v.ToLong());
    case ZTkDb::vtCurrency: return ZTkDb::detail::CurrencyLiteral(v.ToCurrency(), kind);
    case ZTkDb::vtDate: {
      ZTkDb::detail::CheckStorableDate(v.ToDate());
      return target.dialect->DateLiteral(v.ToDate());
    }
    case ZTkDb::vtDouble: {
      char text[40];
      std::snprintf(text, sizeof text, "%.17g", v.ToDouble());
      return text;
    }
    default: {
      std::string out = "'";
      for (char c : v.ToString()) {
        if (c == '\'') out += '\'';
        out += c;
      }
      return out + "'";
    }
  }
}

// A value as every engine reads it back the same: flags as 1/0, numbers as
// their digits, dates in ISO form, amounts exact.
std::string Canonical(const Variant& v) {
  switch (v.Type()) {
    case ZTkDb::vtEmpty:
    case ZTkDb::vtNull: return std::string("\x01N", 2);
    case ZTkDb::vtBoolean: return v.ToBool() ? "1" : "0";
    case ZTkDb::vtByte:
    case ZTkDb::vtInteger:
    case ZTkDb::vtLong: return std::to_string(v.ToLong());
    case ZTkDb::vtCurrency: return v.ToCurrency().Text();
    case ZTkDb::vtDate: return v.ToDate().IsoText();
    case ZTkDb::vtDouble: {
      char text[40];
      std::snprintf(text, sizeof text, "%.17g", v.ToDouble());
      return text;
    }
    default: return v.ToString();
  }
}

// An order-independent checksum of a result: the sum of its rows' hashes.
uint64_t Checksum(const RowSet& rows, const std::vector<int32_t>& columns) {
  uint64_t sum = 0;
  std::vector<Variant> row;
  for (int64_t r = 0; r < rows.RowCount(); ++r) {
    rows.DecodeRow(r, row);
    uint64_t h = 1469598103934665603ull;
    for (int32_t c : columns) {
      for (unsigned char ch : Canonical(row[static_cast<size_t>(c)]) + '\x1f') {
        h = (h ^ ch) * 1099511628211ull;
      }
    }
    sum += h;
  }
  return sum;
}

// The target's spelling of each source column, in the source's order.
std::vector<std::string> TargetColumns(const RowSet& source, Database& target,
                                       const std::string& table) {
  const auto columns = target.Columns(table);
  std::vector<std::string> out;
  for (int32_t i = 0; i < source.ColumnCount(); ++i) {
    const std::string wanted = ZTkDb::detail::LowerAscii(source.Name(i));
    std::string found;
    for (const auto& c : columns) {
      if (ZTkDb::detail::LowerAscii(c.name) == wanted) found = c.name;
    }
    if (found.empty()) {
      throw Failure("the target's " + table + " has no column " + source.Name(i) +
                    "; nothing was written");
    }
    out.push_back(found);
  }
  return out;
}

void RollbackQuietly(Database& db) noexcept {
  try {
    db.Rollback();
  } catch (...) {
    // A session that died took its transaction with it.
  }
}

int64_t Count(Database& db, const std::string& table) {
  auto rows = db.Query("SELECT COUNT(*) AS n FROM " + table);
  std::vector<Variant> row;
  rows->DecodeRow(0, row);
  return row[0].ToLong();
}

struct Copied {
  std::string name;   // as the module names it
  std::string table;  // as the target spells it
  int64_t rows = 0;
  uint64_t checksum = 0;
  std::vector<std::string> columns;
  bool has_id = false;
};

Copied CopyTable(Engine& source, Engine& target, const std::string& table) {
  Copied done;
  done.table = table;
  auto rows = source.db->Query("SELECT * FROM " + table, ZTkDb::detail::ResultSize::kMany);
  done.rows = rows->RowCount();
  done.columns = TargetColumns(*rows, *target.db, table);
  std::vector<int32_t> all;
  for (int32_t i = 0; i < rows->ColumnCount(); ++i) {
    all.push_back(i);
    done.has_id |= ZTkDb::detail::LowerAscii(rows->Name(i)) == "lid";
  }
  done.checksum = Checksum(*rows, all);
  std::string head = "INSERT INTO " + table + " (";
  for (size_t i = 0; i < done.columns.size(); ++i) head += (i ? ", " : "") + done.columns[i];
  head += ") VALUES ";
  Progress progress(table, static_cast<size_t>(done.rows));
  std::vector<Variant> row;
  for (int64_t first = 0; first < done.rows; first += kBatchRows) {
    std::string sql = head;
    const int64_t last = std::min<int64_t>(done.rows, first + kBatchRows);
    for (int64_t r = first; r < last; ++r) {
      rows->DecodeRow(r, row);
      sql += r == first ? "(" : ", (";
      for (size_t c = 0; c < row.size(); ++c) sql += (c ? ", " : "") + Literal(row[c], target);
      sql += ")";
    }
    target.db->Execute(sql);
    progress.Step(static_cast<size_t>(last));
  }
  return done;
}

void Verify(Engine& target, const Copied& copied, int64_t before) {
  std::string select = "SELECT ";
  for (size_t i = 0; i < copied.columns.size(); ++i) select += (i ? ", " : "") + copied.columns[i];
  auto rows = target.db->Query(select + " FROM " + copied.table, ZTkDb::detail::ResultSize::kMany);
  if (rows->RowCount() != before + copied.rows) {
    throw Failure(copied.table + ": the target holds " + std::to_string(rows->RowCount()) +
                  " rows after the copy, not " + std::to_string(before + copied.rows) +
                  "; nothing was written");
  }
  if (before > 0) return;  // appended: the copied rows alone cannot be told apart cheaply
  std::vector<int32_t> all;
  for (int32_t i = 0; i < rows->ColumnCount(); ++i) all.push_back(i);
  if (Checksum(*rows, all) != copied.checksum) {
    throw Failure(copied.table + ": the values read back from the target differ from the "
                                 "source's; nothing was written");
  }
}

}  // namespace

void Copy(const CopyOptions& options) {
  if (options.from.Empty() || options.to.Empty()) {
    throw UsageError("copy needs a source (--from-db PATH or --from-odbc CONNSTR) and a target "
                     "(--to-db PATH or --to-odbc CONNSTR)");
  }
  if (!options.from.db.empty() && options.from.db == options.to.db) {
    throw UsageError("copy: the source and the target are the same file");
  }
  if (options.init) {
    if (!options.to.db.empty()) ZTkDb::detail::CreateModuleDatabase(options.to.db);
    else ZTkDb::detail::CreateModuleSchemaOdbc(options.to.odbc);
  } else if (!options.to.db.empty() && !std::filesystem::exists(options.to.db)) {
    throw Failure("'" + options.to.db + "' does not exist (--init creates it with the module's tables)");
  }
  Engine source = Open(options.from, false);
  Engine target = Open(options.to, true);
  std::vector<std::string> tables, names;
  std::vector<int64_t> before;
  for (const char* t : kTables) {
    const std::string found = source.db->FindTable(t);
    if (found.empty()) continue;
    const std::string there = target.db->FindTable(t);
    if (there.empty()) {
      throw Failure("the target has no table " + std::string(t) +
                    " (--init creates the module's tables); nothing was written");
    }
    tables.push_back(there);
    names.push_back(t);
    before.push_back(Count(*target.db, there));
    if (before.back() > 0 && !options.append) {
      throw Failure("the target's " + there + " already holds " + std::to_string(before.back()) +
                    " rows (--append adds to them, refusing any id that exists); nothing was written");
    }
  }
  std::vector<Copied> copied;
  target.db->BeginTrans();
  try {
    for (size_t i = 0; i < tables.size(); ++i) {
      copied.push_back(CopyTable(source, target, tables[i]));
      copied.back().name = names[i];
      Verify(target, copied.back(), before[i]);
    }
    for (const Copied& c : copied) {
      if (!c.has_id) continue;
      for (const std::string& step : target.dialect->IdentityAdvance(c.table, "lId")) {
        target.db->Query(step);
      }
    }
    target.db->CommitTrans();
  } catch (const ZTkDb::Error& e) {
    RollbackQuietly(*target.db);
    if (e.Number() == 3022) {
      throw Failure("an id of the source exists in the target already; nothing was written (" +
                    e.Description() + ")");
    }
    throw;
  } catch (...) {
    RollbackQuietly(*target.db);
    throw;
  }
  for (const Copied& c : copied) {
    std::printf("%-20s %8" PRId64 " rows copied and verified\n", c.name.c_str(), c.rows);
  }
}

}  // namespace ztk
