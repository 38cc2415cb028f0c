/// \file
/// The document link record, CMsgOrderDokument.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

class Recordset;
namespace detail {
template <typename>
class ListCursor;
}

/// A link from a report (message) or an order to a document file: one row of
/// T_MsgOrderDokument. Connect it with ConnectStorage, fill it with CreateNew
/// or ReadById, change it through its properties and write it with Update,
/// which refuses to overwrite a row somebody else changed since it was read
/// (the critical box "CMsgOrderDokument.Update fehlgeschlagen. Bitte an TORQ
/// melden!", title "Zanto", MessageBoxCall::number 3197).
/// Members other than ConnectStorage and the properties raise 91 while the
/// object is unconnected; every error reaches the caller unchanged.
class ZTKDB_API CMsgOrderDokument {
 public:
  /// An empty, unconnected link: Id 0, ids 0, empty texts.
  CMsgOrderDokument();
  /// Releases the object's storage; the row stays as it is.
  ~CMsgOrderDokument();
  /// Not copyable: each record owns its own storage.
  CMsgOrderDokument(const CMsgOrderDokument&) = delete;
  /// Not copyable: each record owns its own storage.
  CMsgOrderDokument& operator=(const CMsgOrderDokument&) = delete;

  /// Row id (lId), assigned by the database; 0 while no row is loaded.
  int32_t Id() const;
  /// Row token (stUId): replaced by every write; Update matches the row by it.
  const std::string& UId() const;
  /// The report the document belongs to (lMsgId, a report's Id); 0 for none.
  int32_t MsgId() const;
  /// Sets MsgId; nothing is written until Update.
  void MsgId(int32_t value);
  /// The order the document belongs to (lOrderId, an order's Id); 0 for none.
  int32_t OrderId() const;
  /// Sets OrderId; nothing is written until Update.
  void OrderId(int32_t value);
  /// Folder path of the document (stPfad).
  const std::string& Pfad() const;
  /// Sets Pfad; nothing is written until Update.
  void Pfad(const std::string& value);
  /// File name of the document (stDatei).
  const std::string& Datei() const;
  /// Sets Datei; nothing is written until Update.
  void Datei(const std::string& value);

  /// Binds the object to the client's open database; nothing happens for an
  /// empty name or a client that is not open (the object keeps the storage it
  /// had, or stays unconnected and raises 91 on its next call).
  /// \param stClientName The name the client's database was opened under (CTkDb).
  void ConnectStorage(const std::string& stClientName);
  /// Inserts a row with a fresh UId and loads it back by that UId, which gives the
  /// object the id the database assigned. The object is cleared first.
  /// \par Message box
  /// "CMsgOrderDokument.Create fehlgeschlagen. Bitte an TORQ melden!": critical, titled
  /// "Zanto", MessageBoxCall::number 3155 (errInsertFailed), when the insert wrote no
  /// row; the object is then left cleared (Id 0) and nothing is raised.
  /// \param lMsgId The report the document belongs to (lMsgId); 0 for none.
  /// \param lOrderId The order the document belongs to (lOrderId); 0 for none.
  /// \param stPfad Folder path of the document (stPfad).
  /// \param stDatei File name of the document (stDatei).
  /// \throws ZTkDb::Error 91 while unconnected; 3163 for a text longer than its column;
  ///   3027 on a read-only open; 3260 when the lock stays held past the wait; 3420 once
  ///   the database is closed; other engine errors unchanged.
  void CreateNew(int32_t lMsgId, int32_t lOrderId, const std::string& stPfad,
                 const std::string& stDatei);
  /// Loads the row; a missing id clears the object (Id 0) without an error.
  /// \param lId Row id (lId) of the link.
  /// \throws ZTkDb::Error 91 while unconnected; 94 when an id column holds Null; 3420
  ///   once the database is closed; other engine errors unchanged.
  void ReadById(int32_t lId);
  /// Writes every field to the object's row in one statement, with a fresh UId, provided
  /// the row still carries the UId the object holds. The object takes the fresh UId
  /// whether or not the row was written, so after a conflict every further Update fails
  /// too until the link is read again.
  /// \par Message box
  /// "CMsgOrderDokument.Update fehlgeschlagen. Bitte an TORQ melden!": critical, titled
  /// "Zanto", MessageBoxCall::number 3197 (errWriteConflict), when no row was written
  /// because another writer changed or deleted it since it was read (or Id is 0).
  /// Nothing is raised then.
  /// \throws ZTkDb::Error as CreateNew.
  void Update();
  /// Deletes the row whatever its version and clears the object. No box: a row
  /// that was gone already is no error.
  /// \throws ZTkDb::Error 91 while unconnected; 3027 on a read-only open; 3260 when the
  ///   lock stays held past the wait; 3420 once the database is closed; other engine
  ///   errors unchanged.
  void Delete();

 private:
  template <typename>
  friend class detail::ListCursor;
  void LoadFromRecordset(Recordset& rs);

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace ZTkDb
