#pragma once

#include <memory>
#include <string>

#include "connection/RecordStorage.h"
#include "engine/Database.h"
#include "runtime/ToolExport.h"
#include "ztkdb/Variant.h"
#include "ztkdb/Workspace.h"

namespace ZTkDb::detail {

// One client's open database, registered under its workspace name.
class DbConnection {
 public:
  explicit DbConnection(std::string workspaceName) : name_(std::move(workspaceName)) {}

  const std::string& DbPath() const { return path_; }
  // The workspace handle; nullptr before the connection is opened.
  std::unique_ptr<ZTkDb::Workspace> GetWorkspace() const;
  // The open database; raises 91 before the connection is opened.
  ZTKDB_TOOL std::shared_ptr<Database> GetDatabase() const;

  void OpenJet(const std::string& path, bool exclusive, bool readOnly);
  void OpenOdbc(const std::string& connect, const std::string& user, const std::string& password,
                const Variant& exclusive, bool readOnly);
  // Opens the connection on a database object made elsewhere (an engine the
  // registry does not know how to open, or a recording one in tests).
  void OpenOn(std::shared_ptr<Database> db, const std::string& path);
  // A new storage bound to this connection; raises 91 before it is opened.
  std::unique_ptr<RecordStorage> CreateStorage() const;
  void Close() noexcept;

 private:
  std::string name_;
  std::string path_;
  std::shared_ptr<Database> db_;
};

}  // namespace ZTkDb::detail
