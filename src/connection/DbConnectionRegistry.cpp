#include "connection/DbConnectionRegistry.h"

#include "engine/RowSet.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {

// Never destroyed: a CTkDb in a global or static removes its entry in its
// destructor, which may run after every other static is gone.
DbConnectionRegistry& DbConnectionRegistry::Instance() {
  static auto* instance = new DbConnectionRegistry;
  return *instance;
}

DbConnection* DbConnectionRegistry::Item(const std::string& name) {
  const std::lock_guard lock(mutex_);
  auto it = connections_.find(LowerAscii(name));
  return it == connections_.end() ? nullptr : it->second.get();
}

DbConnection& DbConnectionRegistry::Add(const std::string& name) {
  const std::lock_guard lock(mutex_);
  auto [it, added] = connections_.emplace(LowerAscii(name), std::make_unique<DbConnection>(name));
  if (!added) RaiseStandard(errDuplicateKeyInCollection, "DbConnectionRegistry.Add");
  generation_.fetch_add(1, std::memory_order_acq_rel);
  return *it->second;
}

void DbConnectionRegistry::Remove(const std::string& name) {
  std::unique_ptr<DbConnection> removed;
  {
    const std::lock_guard lock(mutex_);
    auto it = connections_.find(LowerAscii(name));
    if (it == connections_.end()) return;
    removed = std::move(it->second);
    connections_.erase(it);
    generation_.fetch_add(1, std::memory_order_acq_rel);
  }
  // Outside the lock: a server's disconnect may take its time, and other
  // clients need not wait for it.
  removed->Close();
}

}  // namespace ZTkDb::detail
