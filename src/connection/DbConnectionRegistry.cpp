#include "connection/DbConnectionRegistry.h"

#include "engine/RowSet.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {

DbConnectionRegistry& DbConnectionRegistry::Instance() {
  static DbConnectionRegistry instance;
  return instance;
}

DbConnection* DbConnectionRegistry::Item(const std::string& name) {
  auto it = connections_.find(LowerAscii(name));
  return it == connections_.end() ? nullptr : it->second.get();
}

DbConnection& DbConnectionRegistry::Add(const std::string& name) {
  auto [it, added] = connections_.emplace(LowerAscii(name), std::make_unique<DbConnection>(name));
  if (!added) RaiseStandard(errDuplicateKeyInCollection, "DbConnectionRegistry.Add");
  return *it->second;
}

void DbConnectionRegistry::Remove(const std::string& name) {
  auto it = connections_.find(LowerAscii(name));
  if (it == connections_.end()) return;
  it->second->Close();
  connections_.erase(it);
}

}  // namespace ZTkDb::detail
