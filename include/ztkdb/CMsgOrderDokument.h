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

// A link from a report (message) or an order to a document file: one row of
// T_MsgOrderDokument. Connect it with ConnectStorage, fill it with CreateNew
// or ReadById, change it through its properties and write it with Update,
// which refuses to overwrite a row somebody else changed since it was read
// (the box "CMsgOrderDokument.Update fehlgeschlagen. Bitte an TORQ melden!").
// Members other than ConnectStorage and the properties raise 91 while the
// object is unconnected; every error reaches the caller unchanged.
class ZTKDB_API CMsgOrderDokument {
 public:
  CMsgOrderDokument();
  ~CMsgOrderDokument();
  CMsgOrderDokument(const CMsgOrderDokument&) = delete;
  CMsgOrderDokument& operator=(const CMsgOrderDokument&) = delete;

  int32_t Id() const;
  const std::string& UId() const;
  int32_t MsgId() const;
  void MsgId(int32_t value);
  int32_t OrderId() const;
  void OrderId(int32_t value);
  const std::string& Pfad() const;
  void Pfad(const std::string& value);
  const std::string& Datei() const;
  void Datei(const std::string& value);

  // Binds the object to the client's open database; nothing happens for an
  // empty name or a client that is not open.
  void ConnectStorage(const std::string& stClientName);
  // Inserts a row with a fresh UId and loads it back by that UId.
  void CreateNew(int32_t lMsgId, int32_t lOrderId, const std::string& stPfad,
                 const std::string& stDatei);
  // Loads the row; a missing id clears the object (Id 0) without an error.
  void ReadById(int32_t lId);
  void Update();
  void Delete();

 private:
  template <typename>
  friend class detail::ListCursor;
  void LoadFromRecordset(Recordset& rs);

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace ZTkDb
