#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ztkdb/Export.h"
#include "ztkdb/Variant.h"

namespace ZTkDb {

namespace detail {
class Database;
class RowSet;
class Statement;
enum class ResultSize;
struct RecordsetAccess;
}  // namespace detail

// A scrollable snapshot of a query's result. The whole result is fetched when
// the recordset opens, so RecordCount is exact at once; clones share the rows
// and keep their own position. Positions are 0-based; BOF and EOF are the
// positions before the first and after the last row.
class ZTKDB_API Recordset {
 public:
  Recordset(std::shared_ptr<detail::Database> db, std::string sql,
            std::shared_ptr<const detail::RowSet> rows);
  Recordset(std::shared_ptr<detail::Database> db, std::shared_ptr<const detail::Statement> sql,
            detail::ResultSize size, std::shared_ptr<const detail::RowSet> rows);
  ~Recordset();
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  int32_t RecordCount() const;
  // -1 at BOF or EOF; setting a position outside 0..RecordCount-1 raises 3001.
  int32_t AbsolutePosition() const;
  void AbsolutePosition(int32_t position);
  bool Bof() const;
  bool Eof() const;

  // Moving first/last on an empty result leaves BOF and EOF set; MoveNext at
  // EOF and MovePrevious at BOF raise 3021 (no current record).
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();
  // Relative move; Move(0) re-reads the current row (3021 without one).
  void Move(int32_t rows);

  std::unique_ptr<Recordset> Clone() const;
  bool Restartable() const { return true; }
  // Runs the statement again and moves to the first row of the new result.
  void Requery();

  // The value of a column of the current row, looked up by name without
  // regard to case. Raises 3265 for an unknown name, 3021 without a row.
  const Variant& Fields(const std::string& name) const;
  const Variant& Fields(int32_t index) const;
  int32_t FieldCount() const;
  const std::string& FieldName(int32_t index) const;
  // -1 when the result has no such column.
  int32_t FieldIndex(const std::string& name) const;

 private:
  // The record procedures read rows without building Variants.
  friend struct detail::RecordsetAccess;
  void CheckCurrent() const;
  const std::vector<Variant>& CurrentRow() const;

  std::shared_ptr<detail::Database> db_;
  std::shared_ptr<const detail::Statement> sql_;
  detail::ResultSize size_;
  std::shared_ptr<const detail::RowSet> rows_;
  int64_t position_ = -1;  // -1 = BOF, RecordCount() = EOF
  mutable int64_t decoded_position_ = -1;
  mutable std::vector<Variant> current_;
};

}  // namespace ZTkDb
