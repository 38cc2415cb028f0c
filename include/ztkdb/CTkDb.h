#pragma once

#include <memory>
#include <string>

#include "ztkdb/Export.h"
#include "ztkdb/Workspace.h"

namespace ZTkDb {

// Opens and closes one client's module database. Record and list objects find
// the connection by the same client name. The object that registered a
// connection owns it: its CloseDb (or its destruction) removes it; other
// CTkDb objects opened under the same client name only borrow it.
class ZTKDB_API CTkDb {
 public:
  CTkDb();
  ~CTkDb();
  CTkDb(const CTkDb&) = delete;
  CTkDb& operator=(const CTkDb&) = delete;

  // The workspace of this client's connection, or Nothing.
  std::unique_ptr<Workspace> Ws() const;
  // The database path (for ODBC the connection string), or "".
  std::string DbPath() const;

  // Opens an ODBC data source. Never raises: a failure shows a critical box
  // "CTkDb.OpenOdbcDb" + line break + the error's description.
  void OpenOdbcDb(const std::string& stClientName, const std::string& stConnStr, bool bExclusive,
                  bool bReadOnly);
  // Opens a database file of the embedded engine and adds the column
  // T_Auftrag.byAuftragstyp where an old database lacks it. Raises on failure.
  void OpenJetDb(const std::string& stClientName, const std::string& stDbPath, bool bExclusive,
                 bool bReadOnly);
  // Removes the connection if this object registered it; otherwise nothing.
  void CloseDb();

 private:
  void UpgradeSchema();

  std::string client_name_;
  bool opened_here_ = false;
};

}  // namespace ZTkDb
