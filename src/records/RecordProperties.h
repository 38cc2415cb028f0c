#pragma once

// Accessor pairs of a record class whose Impl holds `record` (a TableRecord):
// the getter returns the field, the setter stores its argument unchanged.
// Hosts bind to one named member per property, so the pairs stay separate
// functions rather than a generic accessor.

#define ZTKDB_VALUE_PROPERTY(Class, Name, Type, member)              \
  Type Class::Name() const { return impl_->record.core.F().member; } \
  void Class::Name(Type value) { impl_->record.core.F().member = value; }

#define ZTKDB_TEXT_PROPERTY(Class, Name, member)                                   \
  const std::string& Class::Name() const { return impl_->record.core.F().member; } \
  void Class::Name(const std::string& value) { impl_->record.core.F().member = value; }

// The members every record class has in the same form: construction, the
// row identity, ConnectStorage, the reads and writes by key and the list's
// load hook. `Impl` holds `record`.
#define ZTKDB_RECORD_MEMBERS(Class)                                                              \
  Class::Class() : impl_(std::make_unique<Impl>()) {}                                            \
  Class::~Class() = default;                                                                     \
  int32_t Class::Id() const { return impl_->record.core.F().id; }                                \
  const std::string& Class::UId() const { return impl_->record.core.F().uid; }                   \
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
