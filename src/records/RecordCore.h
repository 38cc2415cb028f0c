#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "connection/RecordStorage.h"
#include "sql/Statement.h"
#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"
#include "ztkdb/Recordset.h"

namespace ZTkDb::detail {

// What a Null in a column does to its field while a row is copied in.
enum class NullRule {
  kError,     // plain conversion: Null raises 94 and stops the copy there
  kDefault,   // Null gives 0 / "" / False
  kKeep,      // Null leaves the field as it was; otherwise the column is read again
  kOptional,  // a missing column, or any failure reading it, leaves the field; Null gives 0
  // Null leaves the field as it was; otherwise the recordset moves by 0 rows
  // and the column is read again, so a driver that streams long texts
  // delivers the value afresh.
  kKeepAfterMove0,
};

// One column of a record's load order, bound to the field it fills.
template <typename Fields>
struct ColumnBinding {
  using Target =
      std::variant<int32_t Fields::*, uint8_t Fields::*, bool Fields::*, double Fields::*,
                   Currency Fields::*, Date Fields::*, std::string Fields::*>;
  const char* column;
  Target target;
  NullRule rule = NullRule::kError;
};

// One value placeholder of a record's INSERT/UPDATE and the field it takes
// its value from, filled as the field's type: numbers, flags, dates,
// texts, amounts (see Statement).
template <typename Fields>
struct ValueSlot {
  Placeholder placeholder;
  typename ColumnBinding<Fields>::Target source;
};

// A filling place after every other value; in the UPDATE after the row's key.
inline constexpr int kLast = 1000;

// One line of a record class's column table (records/RecordColumns.h).
template <typename Fields>
struct ColumnSpec {
  const char* column;
  Placeholder placeholder;
  typename ColumnBinding<Fields>::Target target;
  NullRule rule;
  int insert;  // place in the INSERT's filling order, 0: not carried
  int update;  // the same for the UPDATE
};

// What a record class's column table gives its statements: the load order
// and the filling orders, derived once per class.
template <typename Fields>
struct RecordLayout {
  explicit RecordLayout(const std::vector<ColumnSpec<Fields>>& columns) {
    std::vector<const ColumnSpec<Fields>*> byInsert, byUpdate;
    for (const auto& c : columns) {
      load.push_back({c.column, c.target, c.rule});
      if (c.insert > 0) byInsert.push_back(&c);
      if (c.update > 0) byUpdate.push_back(&c);
    }
    std::stable_sort(byInsert.begin(), byInsert.end(),
                     [](auto* a, auto* b) { return a->insert < b->insert; });
    std::stable_sort(byUpdate.begin(), byUpdate.end(),
                     [](auto* a, auto* b) { return a->update < b->update; });
    for (auto* c : byInsert) insert.push_back({c->placeholder, c->target});
    for (auto* c : byUpdate)
      (c->update == kLast ? after_key : update).push_back({c->placeholder, c->target});
  }
  std::vector<ColumnBinding<Fields>> load;
  std::vector<ValueSlot<Fields>> insert;     // the INSERT's values after its #stUId#
  std::vector<ValueSlot<Fields>> update;     // the UPDATE's values before the row's key
  std::vector<ValueSlot<Fields>> after_key;  // and after it
};

// A property's type as its field keeps it: an enumeration as its number.
template <typename T>
using Stored = std::conditional_t<std::is_enum_v<T>, int32_t, T>;

// What a reset leaves in a field: no date, or zero and empty.
template <typename T>
Stored<T> Initial() {
  if constexpr (std::is_same_v<T, Date>)
    return NoDate;
  else
    return Stored<T>{};
}

// The record pattern shared by every record class: a storage, the fields,
// reset, load, read by key, checked writes. A record class supplies its
// fields struct (default member values = the defaults of a reset), its load
// order and its statements.
template <typename Fields>
class RecordCore {
 public:
  RecordCore(const char* className, const std::vector<ColumnBinding<Fields>>& columns)
      : class_name_(className), columns_(columns) {}
  ~RecordCore() { ReleaseStorageQuietly(); }

  Fields& F() { return fields_; }
  const Fields& F() const { return fields_; }
  const char* ClassName() const { return class_name_; }

  // Nothing happens for an empty name or an unknown client.
  void ConnectStorage(const std::string& clientName);
  bool Connected() const { return storage_ != nullptr; }
  // The storage; raises 91 while unconnected.
  RecordStorage& Storage(const char* member);
  StorageKind DbKind(const char* member) { return Storage(member).DbKind(); }
  int64_t LargestAmount(const char* member) { return Storage(member).LargestAmount(); }

  void ClearFields();
  void ReadFromRecordset(Recordset& rs);
  // The list's hook, called on the fresh record it hands out for a row:
  // nothing to clear first.
  void LoadFromRecordset(Recordset& rs) { ReadFromRecordset(rs); }

  // Opens `sql`; loads its first row without clearing first, or clears the
  // record when nothing is found.
  void ReadBy(const char* member, Statement sql);
  // Runs an INSERT or UPDATE; shows "<class>.<what> fehlgeschlagen. Bitte an
  // TORQ melden!" when it affected no row. Returns the rows affected.
  int64_t ExecuteChecked(const char* member, Statement sql, const char* what);
  // Runs a statement without looking at what it affected.
  void ExecutePlain(const char* member, Statement sql);

 private:
  void ReleaseStorageQuietly() noexcept;

  const char* class_name_;
  const std::vector<ColumnBinding<Fields>>& columns_;
  Fields fields_;
  std::unique_ptr<RecordStorage> storage_;
};

// Fills each slot's placeholder with its field, in slot order (a value
// holding a later placeholder's name is replaced again, as the templates
// expect).
template <typename Fields>
void FillValues(Statement& sql, const Fields& fields, const std::vector<ValueSlot<Fields>>& slots,
                int64_t largestAmount);

// Shared by RecordCore and the lists: a new storage for a client, or nullptr.
std::unique_ptr<RecordStorage> StorageForClient(const std::string& clientName);

// Shows the critical "<class>.<what> fehlgeschlagen" box titled "Zanto",
// numbered for programs: a create that wrote nothing, or an update whose
// row another writer changed or deleted since it was read.
void ShowWriteFailed(const std::string& className, const char* member, const char* what);

// The value of a column converted to the type of field it fills.
void AssignConverted(const Variant& v, int32_t& out);
void AssignConverted(const Variant& v, uint8_t& out);
void AssignConverted(const Variant& v, bool& out);
void AssignConverted(const Variant& v, double& out);
void AssignConverted(const Variant& v, Currency& out);
void AssignConverted(const Variant& v, Date& out);
void AssignConverted(const Variant& v, std::string& out);

}  // namespace ZTkDb::detail

#include "records/RecordCore.inl"
