#include "Transfer.h"

#include <algorithm>
#include <cstdio>

#include "Session.h"
#include "engine/RowSet.h"
#include "engine/odbc/OdbcDatabase.h"
#include "engine/sqlite/SqliteDatabase.h"
#include "sql/Literals.h"

namespace ztk {
namespace {

// Rows per INSERT, and values per INSERT: the engine binds each value, and
// SQLite takes at most 32,766 parameters in one statement (PostgreSQL and
// MariaDB 65,535).
constexpr int kBatchRows = 100;
constexpr size_t kBatchValues = 30000;

std::string DoubleText(double v) {
  char text[40];
  std::snprintf(text, sizeof text, "%.17g", v);
  return text;
}

std::string Canonical(const ZTkDb::Variant& v) {
  switch (v.Type()) {
    case ZTkDb::vtEmpty:
    case ZTkDb::vtNull: return std::string("\x01N", 2);
    case ZTkDb::vtBoolean: return v.ToBool() ? "1" : "0";
    case ZTkDb::vtByte:
    case ZTkDb::vtInteger:
    case ZTkDb::vtLong: return std::to_string(v.ToLong());
    case ZTkDb::vtCurrency: return v.ToCurrency().Text();
    case ZTkDb::vtDate: return v.ToDate().IsoText();
    case ZTkDb::vtDouble: return DoubleText(v.ToDouble());
    default: return v.ToString();
  }
}

}  // namespace

Engine OpenEngine(const Endpoint& end, bool write) {
  if (!end.db.empty()) {
    return {ZTkDb::detail::SqliteDatabase::Open(end.db, false, !write),
            &ZTkDb::detail::SqliteDialect()};
  }
  auto odbc = ZTkDb::detail::OdbcDatabase::Open(end.odbc, !write);
  const ZTkDb::detail::ServerDialect* dialect = &odbc->Dialect();
  return {odbc, dialect};
}

std::string Literal(const ZTkDb::Variant& v, const Engine& target) {
  const int16_t kind = target.db->Kind();
  switch (v.Type()) {
    case ZTkDb::vtEmpty:
    case ZTkDb::vtNull: return "NULL";
    case ZTkDb::vtBoolean: return ZTkDb::detail::FlagLiteral(v.ToBool(), kind);
    case ZTkDb::vtByte:
    case ZTkDb::vtInteger:
    case ZTkDb::vtLong: return ZTkDb::detail::LongLiteral(v.ToLong());
    case ZTkDb::vtCurrency: return ZTkDb::detail::CurrencyLiteral(v.ToCurrency(), kind);
    case ZTkDb::vtDate:
      ZTkDb::detail::CheckStorableDate(v.ToDate());
      return target.dialect->DateLiteral(v.ToDate());
    case ZTkDb::vtDouble: return DoubleText(v.ToDouble());
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

uint64_t RowHash(const std::vector<ZTkDb::Variant>& row) {
  uint64_t h = 1469598103934665603ull;
  for (const auto& v : row) {
    for (unsigned char ch : Canonical(v)) h = (h ^ ch) * 1099511628211ull;
    h = (h ^ 0x1fu) * 1099511628211ull;
  }
  return h;
}

void RollbackQuietly(ZTkDb::detail::Database& db) noexcept {
  try {
    db.Rollback();
  } catch (...) {
    // A session that died took its transaction with it.
  }
}

std::string TargetColumn(const std::vector<ZTkDb::detail::ColumnInfo>& columns,
                         const std::string& name, const std::string& table) {
  const std::string wanted = ZTkDb::detail::LowerAscii(name);
  for (const auto& c : columns) {
    if (ZTkDb::detail::LowerAscii(c.name) == wanted) return c.name;
  }
  throw Failure("the target's " + table + " has no column " + name + "; nothing was written");
}

int64_t CountRows(ZTkDb::detail::Database& db, const std::string& table) {
  auto rows = db.Query("SELECT COUNT(*) AS n FROM " + table);
  std::vector<ZTkDb::Variant> row;
  rows->DecodeRow(0, row);
  return row[0].ToLong();
}

uint64_t ChecksumOf(ZTkDb::detail::Database& db, const std::string& table,
                    const std::vector<std::string>& columns, int64_t& count) {
  std::string select = "SELECT ";
  for (size_t i = 0; i < columns.size(); ++i) select += (i ? ", " : "") + columns[i];
  auto rows = db.Query(select + " FROM " + table, ZTkDb::detail::ResultSize::kMany);
  uint64_t sum = 0;
  std::vector<ZTkDb::Variant> row;
  for (int64_t r = 0; r < rows->RowCount(); ++r) {
    rows->DecodeRow(r, row);
    sum += RowHash(row);
  }
  count = rows->RowCount();
  return sum;
}

RowWriter::RowWriter(const Engine& target, std::string table,
                     const std::vector<std::string>& columns)
    : target_(target) {
  batch_rows_ = static_cast<int>(
      std::clamp<size_t>(kBatchValues / std::max<size_t>(columns.size(), 1), 1, kBatchRows));
  head_ = "INSERT INTO " + table + " (";
  for (size_t i = 0; i < columns.size(); ++i) head_ += (i ? ", " : "") + columns[i];
  head_ += ") VALUES ";
}

void RowWriter::Add(const std::vector<ZTkDb::Variant>& row) {
  if (rows_in_batch_ == 0) sql_ += head_;
  sql_ += rows_in_batch_ == 0 ? "(" : ", (";
  for (size_t c = 0; c < row.size(); ++c) {
    if (c) sql_ += ", ";
    sql_ += Literal(row[c], target_);
  }
  sql_ += ")";
  checksum_ += RowHash(row);
  if (++rows_in_batch_ == batch_rows_) Finish();
}

void RowWriter::Finish() {
  if (rows_in_batch_ == 0) return;
  target_.db->Execute(sql_);
  written_ += rows_in_batch_;
  rows_in_batch_ = 0;
  sql_.clear();
}

}  // namespace ztk
