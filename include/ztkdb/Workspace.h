/// \file
/// A client's workspace and its transactions, ZTkDb::Workspace.
#pragma once

#include <memory>
#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

namespace detail {
class Database;
}

/// The workspace of one client's open database: its name (the registry key
/// under which other components of the process share the connection) and its
/// transactions. A handle: it stays valid after the connection is closed, but
/// its transaction calls then raise 3420.
///
/// Hosts get it from CTkDb::Ws. A transaction spans the client's connection, so
/// the writes of every record and list connected to that client take part in it.
class ZTKDB_API Workspace {
 public:
  /// \cond INTERNAL
  Workspace(std::string name, std::shared_ptr<detail::Database> db);
  /// \endcond
  /// Releases the handle; the connection and any open transaction stay.
  ~Workspace();

  /// The registry key of the connection: "<client>_ZTk" or "<client>_Zanto".
  /// \return The workspace name.
  const std::string& Name() const { return name_; }
  /// Begins a transaction. On the embedded engine a writer's transaction takes the
  /// write lock at once, waiting up to 5 s for another process's.
  /// \throws ZTkDb::Error 3260 when the lock stays held past the wait; 3420 once the
  ///   database is closed; other engine errors unchanged (one for a transaction begun
  ///   twice).
  void BeginTrans();
  /// Commits the transaction.
  /// \throws ZTkDb::Error 3051 (and nothing is committed) when the database file was
  ///   renamed or deleted while open; 3420 once the database is closed; other engine
  ///   errors unchanged (one when no transaction is open).
  void CommitTrans();
  /// Rolls the transaction back.
  /// \throws ZTkDb::Error 3420 once the database is closed; other engine errors
  ///   unchanged (one when no transaction is open).
  void Rollback();

 private:
  std::string name_;
  std::shared_ptr<detail::Database> db_;
};

}  // namespace ZTkDb
