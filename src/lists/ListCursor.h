#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include "connection/RecordStorage.h"
#include "engine/RecordsetAccess.h"
#include "lists/IdIndex.h"
#include "records/RecordCore.h"
#include "runtime/Raise.h"
#include "ztkdb/Recordset.h"

namespace ZTkDb::detail {

// The cursor every list class shares: it runs one query at a time in its own
// storage, indexes the result by lId in one walk, and hands out fresh record
// objects (own storage, same client) for rows. `Record` is the public record
// class; it befriends this template for LoadFromRecordset.
template <typename Record>
class ListCursor {
 public:
  explicit ListCursor(const char* className) : class_name_(className) {}
  ~ListCursor() { ResetResult(); }

  void ConnectStorage(const std::string& clientName) {
    if (auto storage = StorageForClient(clientName)) {
      ResetResult();
      storage_ = std::move(storage);
    }
    if (storage_) client_name_ = clientName;
  }

  // The query pattern: reset, open `sql`, run `opened` (a list's own state
  // that is set once the result is open, such as its sort order), index.
  template <typename Opened>
  void RunQuery(const char* member, Statement sql, Opened&& opened) {
    ResetResult();
    if (!storage_) RaiseStandard(errObjectNotSet, member);
    storage_->SetSql("", std::move(sql));
    // A list may be long: the engine is free to read it in chunks.
    storage_->OpenRecordset(ResultSize::kMany);
    opened();
    if (Rs()->RecordCount() != 0) BuildIndex();
  }
  void RunQuery(const char* member, Statement sql) {
    RunQuery(member, std::move(sql), [] {});
  }

  // A list's read: drop the old result first (so a failing statement leaves
  // an empty list), build the statement for the storage's kind with
  // `build(kind)`, then run it as RunQuery does.
  template <typename Build, typename Opened>
  void Read(const char* member, Build&& build, Opened&& opened) {
    ResetResult();
    RunQuery(member, build(DbKind(member)), std::forward<Opened>(opened));
  }
  template <typename Build>
  void Read(const char* member, Build&& build) {
    Read(member, std::forward<Build>(build), [] {});
  }

  // The storage's connection kind; raises 91 while unconnected.
  StorageKind DbKind(const char* member) const {
    if (!storage_) RaiseStandard(errObjectNotSet, member);
    return storage_->DbKind();
  }

  void ResetResult() noexcept {
    index_.reset();
    if (storage_) {
      storage_->CloseRecordset();
      storage_->ReleaseQuery();
    }
  }

  int32_t Count() const { return Rs() ? Rs()->RecordCount() : 0; }

  int32_t AbsolutePosition() const { return Rs() ? Rs()->AbsolutePosition() : 0; }
  void AbsolutePosition(int32_t position) {
    if (!Rs()) RaiseStandard(errObjectNotSet, std::string(class_name_) + ".AbsolutePosition");
    Rs()->AbsolutePosition(position);
  }

  // Callers test Count first: on an empty result both are False.
  bool Bof() const { return Count() != 0 && Rs()->Bof(); }
  bool Eof() const { return Count() != 0 && Rs()->Eof(); }

  std::unique_ptr<Recordset> RsClone() const { return Rs() ? Rs()->Clone() : nullptr; }

  std::unique_ptr<Record> ItemByRsPos(std::optional<int32_t> position) {
    if (Count() == 0) return nullptr;
    if (position) Rs()->AbsolutePosition(*position);
    auto item = std::make_unique<Record>();
    item->ConnectStorage(client_name_);
    item->LoadFromRecordset(*Rs());
    return item;
  }

  // O(1): the index built by the query's one walk; a miss leaves the cursor.
  std::unique_ptr<Record> ItemByRecId(int32_t recId) {
    if (Count() == 0 || !index_) return nullptr;
    const int32_t position = index_->Find(recId);
    if (position < 0) return nullptr;
    return ItemByRsPos(position);
  }

  std::unique_ptr<Record> MoveFirst() {
    if (Count() == 0) return nullptr;
    Rs()->MoveFirst();
    return ItemByRsPos(std::nullopt);
  }
  std::unique_ptr<Record> MoveLast() {
    if (Count() == 0) return nullptr;
    Rs()->MoveLast();
    return ItemByRsPos(std::nullopt);
  }
  std::unique_ptr<Record> MoveNext() {
    if (Count() != 0) Rs()->MoveNext();
    return Count() == 0 || Rs()->Bof() || Rs()->Eof() ? nullptr : ItemByRsPos(std::nullopt);
  }
  std::unique_ptr<Record> MovePrevious() {
    if (Count() != 0) Rs()->MovePrevious();
    return Count() == 0 || Rs()->Bof() || Rs()->Eof() ? nullptr : ItemByRsPos(std::nullopt);
  }

  void Requery() {
    index_.reset();
    if (!Rs()) RaiseStandard(errObjectNotSet, std::string(class_name_) + ".Requery");
    // Our snapshots are always restartable and know their count at once.
    Rs()->Requery();
    if (Rs()->RecordCount() != 0) BuildIndex();
  }

  RecordStorage* Storage() const { return storage_.get(); }

 private:
  Recordset* Rs() const { return storage_ ? storage_->GetRecordset() : nullptr; }

  // One walk over the result; a repeated lId ends it with error 457, the
  // cursor on the repeated row and the rows before it indexed.
  void BuildIndex() {
    index_.emplace(static_cast<size_t>(Rs()->RecordCount()));
    Recordset& rs = *Rs();
    const int32_t idColumn = rs.FieldIndex("lId");
    if (idColumn < 0) rs.Fields("lId");  // raises the unknown-field error
    const RowSet& rows = RecordsetAccess::Rows(rs);
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
      const RowSet::Cell cell = rows.CellAt(rs.AbsolutePosition(), idColumn);
      int32_t id;
      if (cell.type == vtLong)
        std::memcpy(&id, cell.data, sizeof id);
      else
        id = RowSet::ToVariant(cell).ToLong();
      if (!index_->Insert(id, rs.AbsolutePosition())) {
        RaiseStandard(errDuplicateKeyInCollection, class_name_);
      }
    }
    rs.MoveFirst();
  }

  const char* class_name_;
  std::string client_name_;
  std::unique_ptr<RecordStorage> storage_;
  // Row id to 0-based position; empty optional = no index.
  std::optional<IdIndex> index_;
};

}  // namespace ZTkDb::detail
