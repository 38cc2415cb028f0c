#include "Transfer.h"

#include <charconv>
#include <filesystem>

#include "Session.h"
#include "Text.h"

namespace ztk {
namespace {

// Rows handed to the engine at once: it binds them in statements of as
// many as its server takes.
constexpr size_t kRowsPerCall = 1000;

// A value's canonical bytes fed to an FNV-1a hash: flags 1/0, numbers by
// their digits, dates in ISO form, amounts exact, Null apart from ''.
class Hasher {
 public:
  void Add(const ZTkDb::Variant& v) {
    char digits[40];
    switch (v.Type()) {
      case ZTkDb::vtEmpty:
      case ZTkDb::vtNull: Bytes("\x01N", 2); break;
      case ZTkDb::vtBoolean: Bytes(v.ToBool() ? "1" : "0", 1); break;
      case ZTkDb::vtByte:
      case ZTkDb::vtInteger:
      case ZTkDb::vtLong: {
        const auto end = std::to_chars(digits, digits + sizeof digits, v.ToLong()).ptr;
        Bytes(digits, static_cast<size_t>(end - digits));
        break;
      }
      case ZTkDb::vtDouble: {
        const auto end = std::to_chars(digits, digits + sizeof digits, v.ToDouble()).ptr;
        Bytes(digits, static_cast<size_t>(end - digits));
        break;
      }
      case ZTkDb::vtCurrency: Text(v.ToCurrency().Text()); break;
      case ZTkDb::vtDate: Text(v.ToDate().IsoText()); break;
      default: Text(v.ToString()); break;
    }
    Bytes("\x1f", 1);
  }
  uint64_t Value() const { return h_; }

 private:
  void Text(const std::string& s) { Bytes(s.data(), s.size()); }
  void Bytes(const char* p, size_t n) {
    for (size_t i = 0; i < n; ++i) h_ = (h_ ^ static_cast<unsigned char>(p[i])) * 1099511628211ull;
  }
  uint64_t h_ = 1469598103934665603ull;
};

}  // namespace

Engine OpenEngine(const Endpoint& end, bool write) {
  return end.db.empty() ? ZTkDb::tool::OpenDataSource(end.odbc, write)
                        : ZTkDb::tool::OpenFile(end.db, write);
}

uint64_t RowHash(const std::vector<ZTkDb::Variant>& row) {
  Hasher h;
  for (const auto& v : row) h.Add(v);
  return h.Value();
}

NewTargetFile::NewTargetFile(const std::string& path) {
  std::error_code ignored;
  if (!path.empty() && !std::filesystem::exists(path, ignored)) path_ = path;
}

NewTargetFile::~NewTargetFile() {
  if (path_.empty()) return;
  std::error_code ignored;
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
    std::filesystem::remove(path_ + suffix, ignored);
  }
}

void RollbackQuietly(ZTkDb::tool::Database& db) noexcept {
  try {
    db.Rollback();
  } catch (...) {
    // A session that died took its transaction with it.
  }
}

std::string TargetColumn(const std::vector<ZTkDb::tool::ColumnInfo>& columns,
                         const std::string& name, const std::string& table) {
  const std::string wanted = ZTkDb::tool::LowerAscii(name);
  for (const auto& c : columns) {
    if (ZTkDb::tool::LowerAscii(c.name) == wanted) return c.name;
  }
  throw Failure(Say(_("the target's {1} has no column {2}; nothing was written"), table, name));
}

int64_t CountRows(ZTkDb::tool::Database& db, const std::string& table) {
  auto rows = db.Query("SELECT COUNT(*) AS n FROM " + table);
  std::vector<ZTkDb::Variant> row;
  rows->DecodeRow(0, row);
  return row[0].ToLong();
}

uint64_t ChecksumOf(ZTkDb::tool::Database& db, const std::string& table,
                    const std::vector<std::string>& columns, int64_t& count) {
  std::string select = "SELECT ";
  for (size_t i = 0; i < columns.size(); ++i) {
    select += i ? ", " : "";
    // An expression has no declared type: every engine gives its number.
    select +=
        ZTkDb::tool::IsModuleFlag(table, columns[i]) ? "(" + columns[i] + " + 0)" : columns[i];
  }
  auto rows = db.Query(select + " FROM " + table, ZTkDb::tool::ResultSize::kMany);
  uint64_t sum = 0;
  std::vector<ZTkDb::Variant> row;
  for (int64_t r = 0; r < rows->RowCount(); ++r) {
    rows->DecodeRow(r, row);
    sum += RowHash(row);
  }
  count = rows->RowCount();
  return sum;
}

FlagForms::FlagForms(const Engine& target, const std::string& table,
                     const std::vector<std::string>& names)
    : true_form_(target.TrueForm()) {
  for (size_t c = 0; c < names.size(); ++c) {
    if (ZTkDb::tool::IsModuleFlag(table, names[c])) flags_.push_back(c);
  }
}

void FlagForms::Apply(std::vector<ZTkDb::Variant>& row) const {
  for (size_t c : flags_) {
    if (c >= row.size() || row[c].IsNull() || row[c].IsEmpty()) continue;
    row[c] = ZTkDb::Variant(static_cast<int16_t>(row[c].ToBool() ? true_form_ : 0));
  }
}

RowWriter::RowWriter(const Engine& target, std::string table, std::vector<std::string> columns)
    : target_(target), table_(std::move(table)), columns_(std::move(columns)) {
  rows_.reserve(kRowsPerCall);
}

void RowWriter::Add(std::vector<ZTkDb::Variant> row) {
  checksum_ += RowHash(row);
  rows_.push_back(std::move(row));
  if (rows_.size() == kRowsPerCall) Finish();
}

void RowWriter::Finish() {
  if (rows_.empty()) return;
  written_ += target_.db->InsertRows(table_, columns_, rows_);
  rows_.clear();
}

}  // namespace ztk
