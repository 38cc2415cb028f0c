#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "connection/DbConnection.h"
#include "runtime/ToolExport.h"

namespace ZTkDb::detail {

// The process-wide map of workspace names to connections, created on first
// use. Names are compared without regard to case, as a collection key is.
// Clients may live in different threads, so the map is locked; a connection
// itself serves one thread at a time.
class DbConnectionRegistry {
 public:
  ZTKDB_TOOL static DbConnectionRegistry& Instance();

  // The connection registered under `name`, or nullptr (Nothing).
  ZTKDB_TOOL DbConnection* Item(const std::string& name);
  // Registers a new, not yet opened connection; raises 457 if `name` is taken.
  DbConnection& Add(const std::string& name);
  // Closes and forgets the connection; nothing happens for an unknown name.
  void Remove(const std::string& name);
  // Changes whenever a connection is added or removed: an answer of Item
  // holds for as long as this stays the same.
  uint64_t Generation() const { return generation_.load(std::memory_order_acquire); }

 private:
  DbConnectionRegistry() = default;
  std::mutex mutex_;
  std::atomic<uint64_t> generation_{0};
  std::map<std::string, std::unique_ptr<DbConnection>> connections_;
};

}  // namespace ZTkDb::detail
