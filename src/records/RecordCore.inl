// Template definitions of RecordCore; included by RecordCore.h only.
#include "runtime/Raise.h"
#include "sql/Literals.h"

namespace ZTkDb::detail {

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

template <typename Fields>
void RecordCore<Fields>::ReadFromRecordset(Recordset& rs) {
  for (const auto& binding : columns_) {
    std::visit(
        [&](auto member) {
          auto& field = fields_.*member;
          using T = std::decay_t<decltype(field)>;
          if (binding.rule == NullRule::kOptional) {
            // Result sets without the column are expected; so is any failure here.
            try {
              const int32_t index = rs.FieldIndex(binding.column);
              if (index < 0) return;
              const Variant& v = rs.Fields(index);
              if (v.IsNull()) field = T{};
              else AssignConverted(v, field);
            } catch (const Error&) {
            }
            return;
          }
          const Variant& v = rs.Fields(binding.column);
          if (binding.rule == NullRule::kDefault && v.IsNull()) {
            field = T{};
          } else if (binding.rule == NullRule::kKeep) {
            if (!v.IsNull()) AssignConverted(rs.Fields(binding.column), field);
          } else if (binding.rule == NullRule::kKeepAfterMove0) {
            if (!v.IsNull()) {
              rs.Move(0);
              AssignConverted(rs.Fields(binding.column), field);
            }
          } else {
            AssignConverted(v, field);
          }
        },
        binding.target);
  }
}

template <typename Fields>
void RecordCore<Fields>::ReadBy(const char* member, const std::string& sql) {
  RecordStorage& storage = Storage(member);
  storage.SetSql("", sql);
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
int64_t RecordCore<Fields>::ExecuteChecked(const char* member, const std::string& sql,
                                           const char* what) {
  RecordStorage& storage = Storage(member);
  storage.SetSql("", sql);
  storage.GetQueryDef().Execute();
  const int64_t affected = storage.GetQueryDef().RecordsAffected();
  if (affected == 0) ShowWriteFailed(class_name_, what);
  return affected;
}

template <typename Fields>
void RecordCore<Fields>::ExecutePlain(const char* member, const std::string& sql) {
  RecordStorage& storage = Storage(member);
  storage.SetSql("", sql);
  storage.GetQueryDef().Execute();
}

template <typename Fields>
void FillValues(SqlTemplate& sql, const Fields& fields, const std::vector<ValueSlot<Fields>>& slots,
                int16_t kind) {
  for (const auto& slot : slots) {
    std::visit(
        [&](auto member) {
          const auto& value = fields.*member;
          using T = std::decay_t<decltype(value)>;
          if constexpr (std::is_same_v<T, std::string>) sql.Replace(slot.placeholder, TextValue(value));
          else if constexpr (std::is_same_v<T, bool>) sql.Replace(slot.placeholder, FlagLiteral(value, kind));
          else if constexpr (std::is_same_v<T, Date>) sql.Replace(slot.placeholder, RecordDateText(value));
          else if constexpr (std::is_same_v<T, Currency>) sql.Replace(slot.placeholder, CurrencyLiteral(value));
          else if constexpr (std::is_same_v<T, double>) sql.Replace(slot.placeholder, NumberLiteral(value));
          else sql.Replace(slot.placeholder, LongLiteral(value));
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
