#pragma once

#include <string>
#include <type_traits>

#include "records/RecordColumns.h"
#include "records/RecordCore.h"

// What a record class's column table (records/RecordColumns.h) expands to in the
// class's own file, where `Record` names the class and `Fields` its fields.

namespace ZTkDb::detail {

// How a property is handed over: texts by reference, the rest by value.
template <typename T>
using PropertyValue = std::conditional_t<std::is_same_v<T, std::string>, const std::string&, T>;

}  // namespace ZTkDb::detail

// The fields struct: one member per column, named as its property, holding
// what a reset leaves.
#define ZTKDB_FIELD(Property, Type, column, placeholder, load, insert, update, access) \
  ::ZTkDb::detail::Stored<Type> Property = ::ZTkDb::detail::Initial<Type>();

#define ZTKDB_COLUMN_SPEC(Property, Type, column, placeholder, load, insert, update, access) \
  {#column, "#" #placeholder "#", &Fields::Property, NullRule::load, insert, update},

// The class's layout, built once from its column table.
#define ZTKDB_RECORD_LAYOUT(COLUMNS)                                                   \
  [] {                                                                                 \
    using ::ZTkDb::detail::kLast;                                                      \
    using ::ZTkDb::detail::NullRule;                                                   \
    return ::ZTkDb::detail::RecordLayout<Fields>(                                      \
        std::vector<::ZTkDb::detail::ColumnSpec<Fields>>{COLUMNS(ZTKDB_COLUMN_SPEC)}); \
  }()

// In a record class's file: `Record`, its `Fields` and its `Layout()`.
#define ZTKDB_RECORD_FIELDS(Class, COLUMNS)                                                   \
  using Record = Class;                                                                       \
  struct Fields {                                                                             \
    COLUMNS(ZTKDB_FIELD)                                                                      \
  };                                                                                          \
  const ::ZTkDb::detail::RecordLayout<Fields>& Layout() {                                     \
    static const ::ZTkDb::detail::RecordLayout<Fields> layout = ZTKDB_RECORD_LAYOUT(COLUMNS); \
    return layout;                                                                            \
  }

// Accessor pairs: the getter returns the field, the setter stores its
// argument unchanged. Hosts bind to one named member per property, so the
// pairs stay separate functions rather than a generic accessor.
// NOLINTBEGIN(bugprone-macro-parentheses): Type is a type, never parenthesised.
// clang-format off
#define ZTKDB_PROPERTY(Property, Type, column, placeholder, load, insert, update, access) \
  ZTKDB_PROPERTY_##access(Property, Type)
#define ZTKDB_PROPERTY_ro(Property, Type) ZTKDB_GETTER(Property, Type)
#define ZTKDB_PROPERTY_rw(Property, Type) ZTKDB_GETTER(Property, Type) ZTKDB_SETTER(Property, Type)
#define ZTKDB_PROPERTY_kept(Property, Type) \
  ZTKDB_GETTER(Property, Type) void Record::Property(::ZTkDb::detail::PropertyValue<Type>) {}
#define ZTKDB_GETTER(Property, Type)                                                           \
  ::ZTkDb::detail::PropertyValue<Type> Record::Property() const {                              \
    return static_cast<::ZTkDb::detail::PropertyValue<Type>>(impl_->record.core.F().Property); \
  }
#define ZTKDB_SETTER(Property, Type)                                                     \
  void Record::Property(::ZTkDb::detail::PropertyValue<Type> value) {                    \
    impl_->record.core.F().Property = static_cast<::ZTkDb::detail::Stored<Type>>(value); \
  }
// clang-format on
// NOLINTEND(bugprone-macro-parentheses)

// The members every record class has in the same form: construction, its
// properties, ConnectStorage, the reads and writes by key and the list's
// load hook. `Impl` holds `record`; `Record` names `Class`.
#define ZTKDB_RECORD_MEMBERS(Class, COLUMNS)                                                     \
  Class::Class() : impl_(std::make_unique<Impl>()) {}                                            \
  Class::~Class() = default;                                                                     \
  COLUMNS(ZTKDB_PROPERTY)                                                                        \
  void Class::ConnectStorage(const std::string& stClientName) {                                  \
    detail::Guard(#Class ".ConnectStorage",                                                      \
                  [&] { impl_->record.core.ConnectStorage(stClientName); });                     \
  }                                                                                              \
  void Class::ReadById(int32_t lId) {                                                            \
    detail::Guard(#Class ".ReadById", [&] { impl_->record.ReadById(#Class ".ReadById", lId); }); \
  }                                                                                              \
  void Class::Update() {                                                                         \
    detail::Guard(#Class ".Update", [&] { impl_->record.Update(#Class ".Update"); });            \
  }                                                                                              \
  void Class::Delete() {                                                                         \
    detail::Guard(#Class ".Delete", [&] { impl_->record.Delete(#Class ".Delete"); });            \
  }                                                                                              \
  void Class::LoadFromRecordset(Recordset& rs) { impl_->record.core.LoadFromRecordset(rs); }
