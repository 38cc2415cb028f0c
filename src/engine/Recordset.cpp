#include "ztkdb/Recordset.h"

#include "engine/Database.h"
#include "engine/RecordsetAccess.h"
#include "engine/RowSet.h"
#include "runtime/Raise.h"
#include "sql/Statement.h"

namespace ZTkDb {
namespace {
constexpr const char* kSource = "DAO.Recordset";
}

Recordset::Recordset(std::shared_ptr<detail::Database> db,
                     std::shared_ptr<const detail::Statement> sql, detail::ResultSize size,
                     std::shared_ptr<const detail::RowSet> rows)
    : db_(std::move(db)), sql_(std::move(sql)), size_(size), rows_(std::move(rows)) {
  position_ = rows_->RowCount() > 0 ? 0 : -1;
}

Recordset::~Recordset() = default;

namespace detail {
std::unique_ptr<Recordset> RecordsetAccess::Make(std::shared_ptr<Database> db, std::string text,
                                                 std::shared_ptr<const RowSet> rows) {
  return Make(std::move(db), std::make_shared<const Statement>(Statement::Text(std::move(text))),
              ResultSize::kFew, std::move(rows));
}
}  // namespace detail

int32_t Recordset::RecordCount() const { return static_cast<int32_t>(rows_->RowCount()); }

bool Recordset::Bof() const { return rows_->RowCount() == 0 || position_ < 0; }

bool Recordset::Eof() const { return rows_->RowCount() == 0 || position_ >= rows_->RowCount(); }

int32_t Recordset::AbsolutePosition() const {
  return Bof() || Eof() ? -1 : static_cast<int32_t>(position_);
}

void Recordset::AbsolutePosition(int32_t position) {
  if (position < 0 || position >= rows_->RowCount()) {
    detail::RaiseStandard(errInvalidArgument, kSource);
  }
  position_ = position;
}

void Recordset::MoveFirst() { position_ = rows_->RowCount() > 0 ? 0 : -1; }

void Recordset::MoveLast() { position_ = rows_->RowCount() - 1; }

void Recordset::MoveNext() {
  if (Eof()) detail::RaiseStandard(errNoCurrentRecord, kSource);
  ++position_;
}

void Recordset::MovePrevious() {
  if (Bof()) detail::RaiseStandard(errNoCurrentRecord, kSource);
  --position_;
}

void Recordset::Move(int32_t rows) {
  CheckCurrent();
  const int64_t target = position_ + rows;
  const int64_t count = rows_->RowCount();
  position_ = target < 0 ? -1 : (target >= count ? count : target);
  // Move 0 makes the row be delivered afresh.
  decoded_position_ = -1;
}

std::unique_ptr<Recordset> Recordset::Clone() const {
  std::unique_ptr<Recordset> clone(new Recordset(db_, sql_, size_, rows_));
  // A DAO clone starts without a current record; MoveFirst or a bookmark
  // positions it. We start it on the first row, which is what callers do next.
  return clone;
}

void Recordset::Requery() {
  // The same statement with the same result size: a long list is read in
  // chunks again.
  rows_ = db_->Query(*sql_, size_);
  decoded_position_ = -1;
  MoveFirst();
}

void Recordset::CheckCurrent() const {
  if (Bof() || Eof()) detail::RaiseStandard(errNoCurrentRecord, kSource);
}

const std::vector<Variant>& Recordset::CurrentRow() const {
  CheckCurrent();
  if (decoded_position_ != position_) {
    rows_->DecodeRow(position_, current_);
    decoded_position_ = position_;
  }
  return current_;
}

int32_t Recordset::FieldIndex(const std::string& name) const { return rows_->IndexOf(name); }

const Variant& Recordset::Fields(const std::string& name) const {
  const int32_t index = rows_->IndexOf(name);
  if (index < 0) {
    detail::Raise(errItemNotFound, kSource, "Item not found in this collection. (" + name + ")");
  }
  return CurrentRow()[static_cast<size_t>(index)];
}

const Variant& Recordset::Fields(int32_t index) const {
  if (index < 0 || index >= rows_->ColumnCount()) {
    detail::RaiseStandard(errItemNotFound, kSource);
  }
  return CurrentRow()[static_cast<size_t>(index)];
}

int32_t Recordset::FieldCount() const { return rows_->ColumnCount(); }

const std::string& Recordset::FieldName(int32_t index) const {
  if (index < 0 || index >= rows_->ColumnCount()) {
    detail::RaiseStandard(errItemNotFound, kSource);
  }
  return rows_->Name(index);
}

}  // namespace ZTkDb
