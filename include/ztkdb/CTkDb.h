/// \file
/// The connection manager, CTkDb.
#pragma once

#include <memory>
#include <string>

#include "ztkdb/Export.h"
#include "ztkdb/Workspace.h"

namespace ZTkDb {

/// Opens and closes one client's module database. Record and list objects find
/// the connection by the same client name. The object that registered a
/// connection owns it: its CloseDb (or its destruction) removes it; other
/// CTkDb objects opened under the same client name only borrow it.
///
/// The connection is registered as "<client>_ZTk" by OpenJetDb and as
/// "<client>_Zanto" by OpenOdbcDb, and every lookup (ConnectStorage, Ws,
/// DbPath, CloseDb) uses the form of whichever open ran last in the process. A
/// process that opens a file client and then a server client therefore no
/// longer reaches the file client; keep one kind of client per process.
///
/// A client (its CTkDb and the records and lists connected to it) belongs to
/// one thread at a time; different clients may work in different threads.
class ZTKDB_API CTkDb {
 public:
  /// An object that has opened nothing yet.
  CTkDb();
  /// Closes the connection if this object registered it (as CloseDb); never raises.
  ~CTkDb();
  /// Not copyable: a connection has one owner.
  CTkDb(const CTkDb&) = delete;
  /// Not copyable: a connection has one owner.
  CTkDb& operator=(const CTkDb&) = delete;

  /// The workspace of this client's connection, or Nothing.
  /// \return The workspace (its name and transactions), or an empty pointer when no
  ///   connection is registered under this object's client name.
  std::unique_ptr<Workspace> Ws() const;
  /// The database path (for ODBC the connection string), or "".
  /// \return The path or connection string of this client's connection; "" when no
  ///   connection is registered under this object's client name.
  std::string DbPath() const;

  /// Opens an ODBC data source. Never raises: a failure shows a critical box
  /// "CTkDb.OpenOdbcDb" + line break + the error's description.
  ///
  /// When a connection is registered under the client name already, it is used as
  /// it is and the other arguments are ignored. A connection string holding
  /// "ZANTOORACLE" (in any case) marks the process as one that has met Oracle, for
  /// good (see CLeistungListe::ReadAllRechEmpfNotEmpty).
  /// \par Message box
  /// On failure: the text "CTkDb.OpenOdbcDb", a line break and the error's description
  /// (with SQLSTATE and the driver's text); critical, default title, member
  /// "CTkDb.OpenOdbcDb", MessageBoxCall::number the error's number (3146 for a failed
  /// driver call).
  /// \param stClientName The name records and lists connect with.
  /// \param stConnStr A DSN ("DSN=Facility;") or a DSN-less connection string.
  /// \param bExclusive Ignored by servers: there is no file to lock.
  /// \param bReadOnly True to refuse every write with 3027.
  void OpenOdbcDb(const std::string& stClientName, const std::string& stConnStr, bool bExclusive,
                  bool bReadOnly);
  /// Opens a database file of the embedded engine and adds the column
  /// T_Auftrag.byAuftragstyp where an old database lacks it. Raises on failure.
  ///
  /// An earlier connection this object registered is closed first. When a connection is
  /// registered under the client name already, it is used as it is (the other arguments
  /// are ignored); the column check runs either way. The file must exist: nothing is
  /// created.
  /// \param stClientName The name records and lists connect with.
  /// \param stDbPath Path of the SQLite database file.
  /// \param bExclusive True to lock the file for this process; fails at once when
  ///   another process has it.
  /// \param bReadOnly True to refuse every write with 3027; works where the file or its
  ///   folder may not be written.
  /// \throws ZTkDb::Error 3024 for a missing file; 3051 for a file that cannot be opened
  ///   (locked, a folder, empty, not a database, or an Access file, which
  ///   `ztk import` converts); other engine errors unchanged.
  void OpenJetDb(const std::string& stClientName, const std::string& stDbPath, bool bExclusive,
                 bool bReadOnly);
  /// Removes the connection if this object registered it; otherwise nothing.
  /// Records and lists still connected to it raise 3420 from then on. Raises nothing.
  void CloseDb();

 private:
  void UpgradeSchema();

  std::string client_name_;
  bool opened_here_ = false;
};

}  // namespace ZTkDb
