// Template definitions of RecordCore; included by RecordCore.h only.
#include <cstring>

#include "engine/RecordsetAccess.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {

// What reading a row into a record keeps per thread: the fields' column
// positions in the last result read, and the row's cells. Reached through
// a call, not as a thread_local of the template: in a shared library every
// use of one asks the loader for its address (some eighty per row, as the
// compiler would rather ask again than keep the address).
struct RowReadCache {
  uint64_t serial = 0;
  std::vector<int32_t> positions;
  std::vector<RowSet::Cell> cells;
};
RowReadCache& ThreadRowReadCache();

template <typename Fields>
void RecordCore<Fields>::ConnectStorage(const std::string& clientName) {
  if (auto storage = StorageForClient(clientName)) {
    ReleaseStorageQuietly();
    storage_ = std::move(storage);
  }
}

template <typename Fields>
RecordStorage& RecordCore<Fields>::Storage(const char* member) {
  if (!storage_) RaiseStandard(errObjectNotSet, member);
  return *storage_;
}

template <typename Fields>
void RecordCore<Fields>::ClearFields() {
  fields_ = Fields{};
  if (storage_) {
    storage_->CloseRecordset();
    storage_->ReleaseQuery();
  }
}

// A stored value into a field: the common pairs directly, everything else
// through the Variant conversions (which raise 94 for Null, 6, 13, …).
template <typename T>
void AssignCell(const RowSet::Cell& cell, T& out) {
  if constexpr (std::is_same_v<T, std::string>) {
    if (cell.type == vtString) return void(out.assign(cell.data, cell.size));
  } else if constexpr (std::is_same_v<T, int32_t>) {
    if (cell.type == vtLong) return void(std::memcpy(&out, cell.data, sizeof out));
  } else if constexpr (std::is_same_v<T, bool>) {
    if (cell.type == vtBoolean) return void(out = cell.data[0] != 0);
  } else if constexpr (std::is_same_v<T, uint8_t>) {
    if (cell.type == vtByte) return void(out = static_cast<uint8_t>(cell.data[0]));
  } else if constexpr (std::is_same_v<T, double>) {
    if (cell.type == vtDouble) return void(std::memcpy(&out, cell.data, sizeof out));
  } else if constexpr (std::is_same_v<T, Date>) {
    if (cell.type == vtDate) {
      double v;
      std::memcpy(&v, cell.data, sizeof v);
      return void(out = Date(v));
    }
  } else if constexpr (std::is_same_v<T, Currency>) {
    if (cell.type == vtCurrency) {
      int64_t v;
      std::memcpy(&v, cell.data, sizeof v);
      return void(out = Currency::FromScaled(v));
    }
  }
  AssignConverted(RowSet::ToVariant(cell), out);
}

template <typename Fields>
void RecordCore<Fields>::ReadFromRecordset(Recordset& rs) {
  const RowSet& rows = RecordsetAccess::Rows(rs);
  const int64_t row = RecordsetAccess::CurrentRow(rs);
  // A list hands out every row of one result: the columns' positions are
  // looked up once per result, not once per row.
  RowReadCache& c = ThreadRowReadCache();
  const std::vector<int32_t>& positions = c.positions;
  const std::vector<RowSet::Cell>& cells = c.cells;
  if (c.serial != rows.Serial()) {
    c.positions.clear();
    for (const auto& binding : columns_) c.positions.push_back(rows.IndexOf(binding.column));
    c.serial = rows.Serial();
  }
  rows.ViewRow(row, c.cells);
  for (size_t i = 0; i < columns_.size(); ++i) {
    const auto& binding = columns_[i];
    const int32_t position = positions[i];
    std::visit(
        [&](auto member) {
          auto& field = fields_.*member;
          using T = std::decay_t<decltype(field)>;
          if (binding.rule == NullRule::kOptional) {
            // Result sets without the column are expected; so is any failure here.
            if (position < 0) return;
            try {
              if (cells[static_cast<size_t>(position)].type == vtNull) field = T{};
              else AssignCell(cells[static_cast<size_t>(position)], field);
            } catch (const Error&) {
            }
            return;
          }
          if (position < 0) rs.Fields(binding.column);  // raises the unknown-field error
          const RowSet::Cell& cell = cells[static_cast<size_t>(position)];
          const bool isNull = cell.type == vtNull;
          if (binding.rule == NullRule::kDefault && isNull) {
            field = T{};
          } else if (binding.rule == NullRule::kKeep) {
            if (!isNull) AssignCell(cell, field);
          } else if (binding.rule == NullRule::kKeepAfterMove0) {
            if (!isNull) {
              // The row is delivered afresh; a snapshot's values stay the same.
              rs.Move(0);
              AssignCell(cell, field);
            }
          } else {
            AssignCell(cell, field);
          }
        },
        binding.target);
  }
}

template <typename Fields>
void RecordCore<Fields>::ReadBy(const char* member, Statement sql) {
  RecordStorage& storage = Storage(member);
  storage.SetSql("", std::move(sql));
  storage.OpenRecordset();
  Recordset& rs = *storage.GetRecordset();
  if (rs.RecordCount() >= 1) {
    ReadFromRecordset(rs);
    storage.CloseRecordset();
    storage.ReleaseQuery();
  } else {
    ClearFields();
  }
}

template <typename Fields>
int64_t RecordCore<Fields>::ExecuteChecked(const char* member, Statement sql,
                                           const char* what) {
  RecordStorage& storage = Storage(member);
  storage.SetSql("", std::move(sql));
  storage.GetQueryDef().Execute();
  const int64_t affected = storage.GetQueryDef().RecordsAffected();
  if (affected == 0) ShowWriteFailed(class_name_, member, what);
  return affected;
}

template <typename Fields>
void RecordCore<Fields>::ExecutePlain(const char* member, Statement sql) {
  RecordStorage& storage = Storage(member);
  storage.SetSql("", std::move(sql));
  storage.GetQueryDef().Execute();
}

template <typename Fields>
void FillValues(Statement& sql, const Fields& fields, const std::vector<ValueSlot<Fields>>& slots,
                int64_t largestAmount) {
  for (const auto& slot : slots) {
    std::visit(
        [&](auto member) {
          const auto& value = fields.*member;
          using T = std::decay_t<decltype(value)>;
          if constexpr (std::is_same_v<T, std::string>) sql.Text(slot.placeholder, value);
          else if constexpr (std::is_same_v<T, bool>) sql.Flag(slot.placeholder, value);
          else if constexpr (std::is_same_v<T, Date>) sql.RecordDate(slot.placeholder, value);
          else if constexpr (std::is_same_v<T, Currency>) sql.Amount(slot.placeholder, value, largestAmount);
          else if constexpr (std::is_same_v<T, double>) sql.Number(slot.placeholder, value);
          else sql.Long(slot.placeholder, value);
        },
        slot.source);
  }
}

template <typename Fields>
void RecordCore<Fields>::ReleaseStorageQuietly() noexcept {
  if (storage_) {
    storage_->CloseRecordset();
    storage_->ReleaseQuery();
  }
}

}  // namespace ZTkDb::detail
