/// \file
/// The cursor members every list class shares, ZTkDb::RecordList.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "ztkdb/Export.h"
#include "ztkdb/Recordset.h"

namespace ZTkDb {

namespace detail {
template <typename>
class ListCursor;
}

/// The cursor members every list class shares. A list runs one query at a
/// time; every query (and every Requery that finds rows) leaves the cursor on
/// the first row. Items are fresh record objects connected to the list's
/// client, holding the row's values and nothing else of the list; "Nothing" is
/// an empty pointer. On an empty result Bof() and Eof() are both false: test
/// Count() first. Errors reach the caller unchanged; the source of an error
/// raised here names the list class and the member.
///
/// A walk: `for (auto r = list.MoveFirst(); r; r = list.MoveNext()) { … }`.
/// Handing out an item loads its row as the record's reads do, so it raises 94
/// when a column that takes no Null holds Null.
/// \tparam Record The record class the list hands out (CAuftrag, CMeldung, …).
template <typename Record>
class ZTKDB_API RecordList {
 public:
  /// Not copyable: each list owns its own storage and result.
  RecordList(const RecordList&) = delete;
  /// Not copyable: each list owns its own storage and result.
  RecordList& operator=(const RecordList&) = delete;

  /// 0-based position of the current row; 0 without a result.
  /// \return The position, 0 without a result, -1 while the cursor stands at Bof or Eof.
  int32_t AbsolutePosition() const;
  /// Moves the cursor to a row.
  /// \param value The 0-based position, from 0 to Count() - 1.
  /// \throws ZTkDb::Error 91 without a result; 3001 for a position outside the result.
  void AbsolutePosition(int32_t value);
  /// Rows of the current result; 0 without one.
  /// \return The number of rows, exact as soon as the query ran.
  int32_t Count() const;
  /// The row at vPos (0-based; the cursor moves there), or the current row
  /// when vPos is omitted.
  /// \param vPos The 0-based position, or std::nullopt for the current row.
  /// \return A new record of that row, or Nothing when the result is empty.
  /// \throws ZTkDb::Error 3001 for a position outside the result; 3021 when vPos is
  ///   omitted and the cursor stands at Bof or Eof; 94 and the other loading errors.
  std::unique_ptr<Record> ItemByRsPos(std::optional<int32_t> vPos = std::nullopt);
  /// The row whose lId is lRecId, found without scanning; Nothing when absent
  /// (the cursor then stays where it was). The default member.
  /// \param lRecId The row id (the record's Id).
  /// \return A new record of that row (the cursor moves there), or Nothing.
  /// \throws ZTkDb::Error 94 and the other loading errors.
  std::unique_ptr<Record> ItemByRecId(int32_t lRecId);
  /// The default member: ItemByRecId(lRecId), as `list(4711)`.
  /// \param lRecId The row id (the record's Id).
  /// \return As ItemByRecId.
  /// \throws ZTkDb::Error As ItemByRecId.
  std::unique_ptr<Record> operator()(int32_t lRecId) { return ItemByRecId(lRecId); }
  /// ItemByRecId(lRecId), as `list[4711]`.
  /// \param lRecId The row id (the record's Id).
  /// \return As ItemByRecId.
  /// \throws ZTkDb::Error As ItemByRecId.
  std::unique_ptr<Record> operator[](int32_t lRecId) { return ItemByRecId(lRecId); }
  /// Whether the cursor stands before the first row (BOF). Spelled Bof because EOF is
  /// a macro of the C library.
  /// \return True before the first row; false on an empty result or without one.
  bool Bof() const;
  /// Whether the cursor stands after the last row (EOF).
  /// \return True after the last row; false on an empty result or without one.
  bool Eof() const;
  /// An independent cursor over the same result; Nothing without a result.
  /// \return A new recordset on the first row, sharing the rows, with its own position.
  std::unique_ptr<Recordset> RsClone() const;

  /// Binds the list to the client's open database; nothing happens for an
  /// empty name or a client that is not open. A bind that succeeds drops the result.
  /// \param stClientName The name the client's database was opened under (CTkDb).
  void ConnectStorage(const std::string& stClientName);
  /// Runs the last query again and rebuilds the index.
  /// \throws ZTkDb::Error 91 without a result; 457 for a repeated id; 3420 once
  ///   the database is closed; other engine errors unchanged.
  void Requery();
  /// Each returns the row moved to, or Nothing on an empty result or past
  /// either end (the cursor then stands at Bof/Eof).
  /// \return A new record of the first row, or Nothing.
  /// \throws ZTkDb::Error 94 and the other loading errors.
  std::unique_ptr<Record> MoveFirst();
  /// Moves to the last row.
  /// \return A new record of the last row, or Nothing on an empty result.
  /// \throws ZTkDb::Error 94 and the other loading errors.
  std::unique_ptr<Record> MoveLast();
  /// Moves to the next row.
  /// \return A new record of that row, or Nothing past the last row (the cursor then
  ///   stands at Eof) or on an empty result.
  /// \throws ZTkDb::Error 3021 when the cursor stood at Eof already; 94 and the other
  ///   loading errors.
  std::unique_ptr<Record> MoveNext();
  /// Moves to the previous row.
  /// \return A new record of that row, or Nothing before the first row (the cursor
  ///   then stands at Bof) or on an empty result.
  /// \throws ZTkDb::Error 3021 when the cursor stood at Bof already; 94 and the other
  ///   loading errors.
  std::unique_ptr<Record> MovePrevious();

 protected:
  /// \cond INTERNAL
  explicit RecordList(const char* className);
  ~RecordList();
  detail::ListCursor<Record>& Cursor() { return *cursor_; }
  const char* ClassName() const { return class_name_; }
  /// \endcond

 private:
  const char* class_name_;
  std::unique_ptr<detail::ListCursor<Record>> cursor_;
};

}  // namespace ZTkDb
