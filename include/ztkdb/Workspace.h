#pragma once

#include <memory>
#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

namespace detail {
class Database;
}

// The workspace of one client's open database: its name (the registry key
// under which other components of the process share the connection) and its
// transactions. A handle: it stays valid after the connection is closed, but
// its transaction calls then raise 3420.
class ZTKDB_API Workspace {
 public:
  Workspace(std::string name, std::shared_ptr<detail::Database> db);
  ~Workspace();

  const std::string& Name() const { return name_; }
  void BeginTrans();
  void CommitTrans();
  void Rollback();

 private:
  std::string name_;
  std::shared_ptr<detail::Database> db_;
};

}  // namespace ZTkDb
