/// \file
/// The engine's scrollable result, ZTkDb::Recordset.
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

/// A scrollable snapshot of a query's result. The whole result is fetched when
/// the recordset opens, so RecordCount is exact at once; clones share the rows
/// and keep their own position. Positions are 0-based; BOF and EOF are the
/// positions before the first and after the last row.
///
/// Hosts receive recordsets from a list's RsClone (and from Clone). The rows
/// stay readable after the database is closed; Requery then raises 3420.
/// Unlike a list, a recordset answers Bof() and Eof() with true on an empty
/// result.
class ZTKDB_API Recordset {
 public:
  /// Releases this cursor; clones and the list keep the rows.
  ~Recordset();
  /// Not copyable: Clone gives a second cursor.
  Recordset(const Recordset&) = delete;
  /// Not copyable: Clone gives a second cursor.
  Recordset& operator=(const Recordset&) = delete;

  /// The number of rows.
  /// \return The exact count of the result's rows.
  int32_t RecordCount() const;
  /// -1 at BOF or EOF; setting a position outside 0..RecordCount-1 raises 3001.
  /// \return The 0-based position of the current row, or -1.
  int32_t AbsolutePosition() const;
  /// Moves to a row.
  /// \param position The 0-based position, from 0 to RecordCount() - 1.
  /// \throws ZTkDb::Error 3001 for a position outside the result.
  void AbsolutePosition(int32_t position);
  /// Whether the cursor stands before the first row (BOF). Spelled Bof because EOF is
  /// a macro of the C library.
  /// \return True before the first row, and always on an empty result.
  bool Bof() const;
  /// Whether the cursor stands after the last row (EOF).
  /// \return True after the last row, and always on an empty result.
  bool Eof() const;

  /// Moving first/last on an empty result leaves BOF and EOF set; MoveNext at
  /// EOF and MovePrevious at BOF raise 3021 (no current record).
  void MoveFirst();
  /// Moves to the last row; on an empty result BOF and EOF stay set.
  void MoveLast();
  /// Moves to the next row, or to EOF after the last one.
  /// \throws ZTkDb::Error 3021 at EOF.
  void MoveNext();
  /// Moves to the previous row, or to BOF before the first one.
  /// \throws ZTkDb::Error 3021 at BOF.
  void MovePrevious();
  /// Relative move; Move(0) re-reads the current row (3021 without one).
  /// A move past either end stops at BOF or EOF.
  /// \param rows How many rows to move, backwards when negative.
  /// \throws ZTkDb::Error 3021 when there is no current row to move from.
  void Move(int32_t rows);

  /// A second cursor over the same rows, on the first row, with its own position.
  /// \return The clone.
  std::unique_ptr<Recordset> Clone() const;
  /// Whether Requery can run the statement again.
  /// \return Always true.
  bool Restartable() const { return true; }
  /// Runs the statement again and moves to the first row of the new result.
  /// \throws ZTkDb::Error 3420 once the database is closed; other engine errors
  ///   unchanged.
  void Requery();

  /// The value of a column of the current row, looked up by name without
  /// regard to case. Raises 3265 for an unknown name, 3021 without a row.
  /// \param name The column's name.
  /// \return The value, valid until the cursor moves.
  /// \throws ZTkDb::Error 3265 for an unknown name; 3021 without a current row.
  const Variant& Fields(const std::string& name) const;
  /// The value of a column of the current row, by position.
  /// \param index The 0-based column position, below FieldCount().
  /// \return The value, valid until the cursor moves.
  /// \throws ZTkDb::Error 3265 for a position outside the columns; 3021 without a
  ///   current row.
  const Variant& Fields(int32_t index) const;
  /// The number of columns.
  /// \return The column count of the result.
  int32_t FieldCount() const;
  /// The name of a column.
  /// \param index The 0-based column position, below FieldCount().
  /// \return The column's name as the result gives it.
  /// \throws ZTkDb::Error 3265 for a position outside the columns.
  const std::string& FieldName(int32_t index) const;
  /// -1 when the result has no such column.
  /// \param name The column's name, without regard to case.
  /// \return The column's 0-based position, or -1.
  int32_t FieldIndex(const std::string& name) const;

 private:
  // Only the engine makes recordsets; the record procedures read rows
  // without building Variants.
  friend struct detail::RecordsetAccess;
  Recordset(std::shared_ptr<detail::Database> db, std::shared_ptr<const detail::Statement> sql,
            detail::ResultSize size, std::shared_ptr<const detail::RowSet> rows);
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
