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

// The cursor members every list class shares. A list runs one query at a
// time; every query (and every Requery that finds rows) leaves the cursor on
// the first row. Items are fresh record objects connected to the list's
// client, holding the row's values and nothing else of the list; "Nothing" is
// an empty pointer. On an empty result Bof() and Eof() are both false: test
// Count() first. Errors reach the caller unchanged; the source of an error
// raised here names the list class and the member.
template <typename Record>
class ZTKDB_API RecordList {
 public:
  RecordList(const RecordList&) = delete;
  RecordList& operator=(const RecordList&) = delete;

  // 0-based position of the current row; 0 without a result.
  int32_t AbsolutePosition() const;
  void AbsolutePosition(int32_t value);
  // Rows of the current result; 0 without one.
  int32_t Count() const;
  // The row at vPos (0-based; the cursor moves there), or the current row
  // when vPos is omitted.
  std::unique_ptr<Record> ItemByRsPos(std::optional<int32_t> vPos = std::nullopt);
  // The row whose lId is lRecId, found without scanning; Nothing when absent
  // (the cursor then stays where it was). The default member.
  std::unique_ptr<Record> ItemByRecId(int32_t lRecId);
  std::unique_ptr<Record> operator()(int32_t lRecId) { return ItemByRecId(lRecId); }
  std::unique_ptr<Record> operator[](int32_t lRecId) { return ItemByRecId(lRecId); }
  bool Bof() const;
  bool Eof() const;
  // An independent cursor over the same result; Nothing without a result.
  std::unique_ptr<Recordset> RsClone() const;

  // Binds the list to the client's open database; nothing happens for an
  // empty name or a client that is not open.
  void ConnectStorage(const std::string& stClientName);
  // Runs the last query again and rebuilds the index.
  void Requery();
  // Each returns the row moved to, or Nothing on an empty result or past
  // either end (the cursor then stands at Bof/Eof).
  std::unique_ptr<Record> MoveFirst();
  std::unique_ptr<Record> MoveLast();
  std::unique_ptr<Record> MoveNext();
  std::unique_ptr<Record> MovePrevious();

 protected:
  explicit RecordList(const char* className);
  ~RecordList();
  detail::ListCursor<Record>& Cursor() { return *cursor_; }
  const char* ClassName() const { return class_name_; }

 private:
  const char* class_name_;
  std::unique_ptr<detail::ListCursor<Record>> cursor_;
};

}  // namespace ZTkDb
