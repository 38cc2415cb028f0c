#pragma once

// Accessor pairs of a record class whose Impl holds `record` (a TableRecord):
// the getter returns the field, the setter stores its argument unchanged.
// Hosts bind to one named member per property, so the pairs stay separate
// functions rather than a generic accessor.

#define ZTKDB_VALUE_PROPERTY(Class, Name, Type, member)                    \
  Type Class::Name() const { return impl_->record.core.F().member; }             \
  void Class::Name(Type value) { impl_->record.core.F().member = value; }

#define ZTKDB_TEXT_PROPERTY(Class, Name, member)                                 \
  const std::string& Class::Name() const { return impl_->record.core.F().member; }     \
  void Class::Name(const std::string& value) { impl_->record.core.F().member = value; }
