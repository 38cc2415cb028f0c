// ztk import: an Access (Jet/ACE) file's data into a database this library
// opens, read from the values as Access stored them.
#include "Import.h"

// glib's C++ parts must be seen outside mdbtools' extern "C".
#include <glib.h>
#include <mdbtools.h>

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include "Output.h"
#include "Session.h"
#include "Text.h"
#include "Transfer.h"
#include "connection/ToolAccess.h"

namespace ztk {
namespace {

using ZTkDb::Variant;
using ZTkDb::tool::DaoFieldType;

constexpr const char* kModuleTables[] = {"T_Meldung",  "T_Auftrag",   "T_AuftragMeldung",
                                         "T_Leistung", "T_AMaterial", "T_MsgOrderDokument"};
// A memo longer than this is refused rather than cut.
constexpr size_t kBindSize = size_t{4} << 20;

struct MdbCloser {
  void operator()(MdbHandle* mdb) const noexcept { mdb_close(mdb); }
};
struct TableCloser {
  void operator()(MdbTableDef* t) const noexcept { mdb_free_tabledef(t); }
};

// The DAO type a Jet column becomes; false for what no database of ours
// holds (OLE objects, binary, attachments and multi-value fields).
bool DaoTypeOf(int jetType, DaoFieldType& out) {
  switch (jetType) {
    case MDB_BOOL: out = ZTkDb::tool::dbBoolean; return true;
    case MDB_BYTE: out = ZTkDb::tool::dbByte; return true;
    case MDB_INT: out = ZTkDb::tool::dbInteger; return true;
    case MDB_LONGINT: out = ZTkDb::tool::dbLong; return true;
    case MDB_MONEY: out = ZTkDb::tool::dbCurrency; return true;
    case MDB_FLOAT:
    case MDB_DOUBLE:
    case MDB_NUMERIC: out = ZTkDb::tool::dbDouble; return true;
    case MDB_DATETIME: out = ZTkDb::tool::dbDate; return true;
    case MDB_TEXT:
    case MDB_REPID: out = ZTkDb::tool::dbText; return true;
    case MDB_MEMO: out = ZTkDb::tool::dbMemo; return true;
    default: return false;
  }
}

// One open table of the file with its columns bound.
class JetTable {
 public:
  JetTable(MdbHandle* mdb, const std::string& name) : mdb_(mdb), name_(name) {
    table_.reset(mdb_read_table_by_name(mdb, const_cast<gchar*>(name.c_str()), MDB_TABLE));
    if (!table_ || !mdb_read_columns(table_.get())) {
      throw Failure(
          Say(_("the table {1} of the Access file cannot be read; nothing was written"), name));
    }
    mdb_rewind_table(table_.get());
    const auto count = table_->num_cols;
    buffers_.resize(count);
    lengths_.resize(count);
    for (unsigned j = 0; j < count; ++j) {
      buffers_[j].assign(kBindSize, '\0');
      mdb_bind_column(table_.get(), static_cast<int>(j + 1), buffers_[j].data(), &lengths_[j]);
      Column(j);  // every column is known by now
    }
  }
  unsigned Count() const { return table_->num_cols; }
  MdbColumn* Column(unsigned j) const {
    return static_cast<MdbColumn*>(g_ptr_array_index(table_->columns, j));
  }
  int64_t Rows() const { return static_cast<int64_t>(table_->num_rows); }
  bool Next() { return mdb_fetch_row(table_.get()) != 0; }

  // The current row's value of column `j`, from the bytes Access stored.
  Variant Value(unsigned j) const {
    const MdbColumn* col = Column(j);
    const char* bound = buffers_[j].data();
    const int boundLength = lengths_[j];
    if (col->col_type == MDB_BOOL) return Variant(bound[0] == '1');
    if (col->cur_value_len == 0) return Variant::Null();
    const unsigned char* p = mdb_->pg_buf + col->cur_value_start;
    switch (col->col_type) {
      case MDB_BYTE: return Variant(static_cast<uint8_t>(p[0]));
      case MDB_INT:
        return Variant(static_cast<int16_t>(mdb_get_int16(mdb_->pg_buf, col->cur_value_start)));
      case MDB_LONGINT:
        return Variant(static_cast<int32_t>(mdb_get_int32(mdb_->pg_buf, col->cur_value_start)));
      case MDB_MONEY: {
        int64_t scaled = 0;
        std::memcpy(&scaled, p, sizeof scaled);  // little-endian, as the file and this machine
        return Variant(ZTkDb::Currency::FromScaled(scaled));
      }
      case MDB_FLOAT:
        return Variant(static_cast<double>(mdb_get_single(mdb_->pg_buf, col->cur_value_start)));
      case MDB_DOUBLE: return Variant(mdb_get_double(mdb_->pg_buf, col->cur_value_start));
      case MDB_DATETIME:
        return Variant(ZTkDb::Date(mdb_get_double(mdb_->pg_buf, col->cur_value_start)));
      case MDB_NUMERIC: return Variant(std::strtod(bound, nullptr));
      default: break;
    }
    if (static_cast<size_t>(boundLength) + 1 >= kBindSize) {
      // TRANSLATORS: {1}.{2} is a table and its column.
      throw Failure(Say(_("{1}.{2} holds a text longer than {3} MB; nothing was written"), name_,
                        col->name, kBindSize >> 20));
    }
    return Variant(std::string(bound, static_cast<size_t>(boundLength)));
  }

 private:
  MdbHandle* mdb_;
  std::string name_;
  std::unique_ptr<MdbTableDef, TableCloser> table_;
  std::vector<std::string> buffers_;
  std::vector<int> lengths_;
};

std::unique_ptr<MdbHandle, MdbCloser> OpenFile(const std::string& file) {
  if (!std::filesystem::is_regular_file(file)) {
    throw Failure(Say(_("'{1}' is not a file"), file));
  }
  std::unique_ptr<MdbHandle, MdbCloser> mdb(mdb_open(file.c_str(), MDB_NOFLAGS));
  if (!mdb) {
    throw Failure(
        Say(_("'{1}' is not an Access database that can be read; nothing was written"), file));
  }
  if (mdb->f->db_passwd[0] != '\0') {
    throw Failure(Say(_("'{1}' is protected by a password, so nothing was written; remove the "
                        "password in Access first"),
                      file));
  }
  if (!mdb_read_catalog(mdb.get(), MDB_TABLE)) {
    throw Failure(Say(_("the tables of '{1}' cannot be read (is the file encrypted?); nothing was "
                        "written"),
                      file));
  }
  mdb_set_bind_size(mdb.get(), kBindSize);
  return mdb;
}

std::string ModuleName(const std::string& table) {
  for (const char* m : kModuleTables) {
    if (ZTkDb::tool::LowerAscii(table) == ZTkDb::tool::LowerAscii(m)) return m;
  }
  return {};
}

struct Planned {
  std::string source;                       // as the file names it
  std::string target;                       // as the statements name it on the target
  std::vector<unsigned> columns;            // the file's columns copied
  std::vector<std::string> target_columns;  // as the statements name them
  bool created = false;
};

Planned PlanModuleTable(const JetTable& t, const std::string& name, Engine& target) {
  Planned p{name, target.db->FindTable(ModuleName(name)).value_or(ModuleName(name)), {}, {}, false};
  const auto columns = target.db->Columns(p.target);
  for (unsigned j = 0; j < t.Count(); ++j) {
    p.columns.push_back(j);
    p.target_columns.push_back(TargetColumn(columns, t.Column(j)->name, ModuleName(name)));
  }
  return p;
}

Planned PlanOtherTable(const JetTable& t, const std::string& name, Engine& target,
                       std::vector<std::string>& skipped) {
  if (target.db->FindTable(name)) {
    throw Failure(Say(_("the target has a table {1} already; nothing was written"), name));
  }
  Planned p{name, target.dialect->QuoteName(name), {}, {}, true};
  for (unsigned j = 0; j < t.Count(); ++j) {
    DaoFieldType type = ZTkDb::tool::dbText;
    if (!DaoTypeOf(t.Column(j)->col_type, type)) {
      skipped.push_back(name + "." + t.Column(j)->name);
      continue;
    }
    p.columns.push_back(j);
    p.target_columns.push_back(target.dialect->QuoteName(t.Column(j)->name));
  }
  return p;
}

std::string CreateStatement(const JetTable& t, const Planned& p, const Engine& target) {
  std::string sql = "CREATE TABLE " + p.target + " (";
  for (size_t i = 0; i < p.columns.size(); ++i) {
    DaoFieldType type = ZTkDb::tool::dbText;
    DaoTypeOf(t.Column(p.columns[i])->col_type, type);
    sql += (i ? ", " : "") + p.target_columns[i] + " " + target.dialect->ColumnType(type);
  }
  return sql + ")";
}

std::vector<std::string> TablesToImport(const MdbHandle& mdb, const ImportOptions& options) {
  std::vector<std::string> names;
  for (unsigned i = 0; i < mdb.num_catalog; ++i) {
    auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb.catalog, i));
    if (entry->object_type != MDB_TABLE || mdb_is_system_table(entry)) continue;
    const std::string name = entry->object_name;
    if (!ModuleName(name).empty() || options.all_tables) names.push_back(name);
  }
  if (names.empty()) {
    throw Failure(Say(_("'{1}' holds none of the module's tables (--all-tables copies every "
                        "table); nothing was written"),
                      options.file));
  }
  return names;
}

Engine OpenTarget(const Endpoint& to) {
  if (!to.db.empty() && !std::filesystem::exists(to.db)) {
    ZTkDb::tool::CreateModuleDatabase(to.db);
  }
  Engine target = OpenEngine(to, true);
  if (!target.db->FindTable("T_Auftrag") && to.db.empty()) {
    ZTkDb::tool::CreateModuleSchemaOdbc(to.odbc);
  }
  return target;
}

std::vector<Planned> PlanTables(MdbHandle* mdb, const std::vector<std::string>& names,
                                Engine& target, std::vector<std::string>& skipped) {
  std::vector<Planned> plan;
  for (const std::string& name : names) {
    JetTable t(mdb, name);
    if (!ModuleName(name).empty()) {
      Planned p = PlanModuleTable(t, name, target);
      if (CountRows(*target.db, p.target) > 0) {
        throw Failure(
            Say(_("the target's {1} already holds rows; nothing was written"), ModuleName(name)));
      }
      plan.push_back(std::move(p));
    } else {
      plan.push_back(PlanOtherTable(t, name, target, skipped));
    }
  }
  return plan;
}

// `created` grows with each table made, so that a failure part of the way
// drops those made so far.
void CreateTables(MdbHandle* mdb, const std::vector<Planned>& plan, Engine& target,
                  std::vector<std::string>& created) {
  for (const Planned& p : plan) {
    if (!p.created) continue;
    JetTable t(mdb, p.source);
    target.db->Execute(CreateStatement(t, p, target));
    created.push_back(p.target);
  }
}

void DropTables(Engine& target, const std::vector<std::string>& created) {
  for (const std::string& table : created) {
    try {
      target.db->Execute("DROP TABLE " + table);
    } catch (...) {
      // Left for the host to see; the failure is reported either way.
    }
  }
}

struct Done {
  std::string name;
  int64_t read = 0, written = 0;
};

Done WriteTable(MdbHandle* mdb, const Planned& p, Engine& target) {
  JetTable t(mdb, p.source);
  RowWriter writer(target, p.target, p.target_columns);
  const FlagForms flags(target, p.target, p.target_columns);
  Progress progress(p.source, static_cast<size_t>(std::max<int64_t>(t.Rows(), 0)));
  std::vector<Variant> row(p.columns.size());
  int64_t read = 0;
  while (t.Next()) {
    for (size_t i = 0; i < p.columns.size(); ++i) row[i] = t.Value(p.columns[i]);
    flags.Apply(row);
    writer.Add(row);
    progress.Step(static_cast<size_t>(++read));
  }
  writer.Finish();
  int64_t held = 0;
  if (ChecksumOf(*target.db, p.target, p.target_columns, held) != writer.Checksum() ||
      held != read) {
    throw Failure(Say(_("{1}: the values read back from the target differ from the file's; "
                        "nothing was written"),
                      p.source));
  }
  return {p.source, read, writer.Written()};
}

std::vector<Done> WriteInTransaction(MdbHandle* mdb, const std::vector<Planned>& plan,
                                     Engine& target) {
  std::vector<Done> done;
  target.db->BeginTrans();
  try {
    for (const Planned& p : plan) done.push_back(WriteTable(mdb, p, target));
    for (const Planned& p : plan) {
      if (p.created || ModuleName(p.source) == "T_AuftragMeldung") continue;
      for (const std::string& step : target.dialect->IdentityAdvance(p.target, "lId")) {
        target.db->Query(step);
      }
    }
    target.db->CommitTrans();
  } catch (...) {
    RollbackQuietly(*target.db);
    throw;
  }
  return done;
}

// Tables are created first: some servers commit each CREATE by itself.
// They are dropped again when the import fails.
std::vector<Done> WriteTables(MdbHandle* mdb, const std::vector<Planned>& plan, Engine& target) {
  std::vector<std::string> created;
  try {
    CreateTables(mdb, plan, target, created);
    return WriteInTransaction(mdb, plan, target);
  } catch (...) {
    DropTables(target, created);
    throw;
  }
}

void PrintDone(const std::vector<Done>& done, const std::vector<std::string>& skipped) {
  for (const Done& d : done) {
    // The counts keep their columns: they are padded before they go in.
    char read[24], written[24];
    std::snprintf(read, sizeof read, "%8" PRId64, d.read);
    std::snprintf(written, sizeof written, "%8" PRId64, d.written);
    // TRANSLATORS: {1} and {2} are counts of rows, padded with blanks to line
    // up.
    const std::string line = Say(ngettext("{1} row read, {2} written", "{1} rows read, {2} written",
                                          static_cast<unsigned long>(d.read)),
                                 read, written);
    std::printf("%-24s %s\n", d.name.c_str(), line.c_str());
  }
  for (const std::string& column : skipped) {
    // TRANSLATORS: {1} is a table and its column (Table.Column).
    std::printf(
        "%s\n",
        Say(_("not copied: {1} (an OLE object, binary data or attachments)"), column).c_str());
  }
}

}  // namespace

void Import(const ImportOptions& options) {
  options.to.RequireOne(
      _("import: give the target as either a SQLite file (TARGET or --to-db) or an "
        "ODBC connection string (--to-odbc)"));
  auto mdb = OpenFile(options.file);
  const std::vector<std::string> names = TablesToImport(*mdb, options);
  NewTargetFile newFile(options.to.db);
  Engine target = OpenTarget(options.to);
  std::vector<std::string> skipped;
  const std::vector<Planned> plan = PlanTables(mdb.get(), names, target, skipped);
  const std::vector<Done> done = WriteTables(mdb.get(), plan, target);
  newFile.Keep();
  PrintDone(done, skipped);
}

}  // namespace ztk
