#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "ztkdb/CMsgOrderDokument.h"
#include "ztkdb/Export.h"
#include "ztkdb/Recordset.h"

namespace ZTkDb {

// The document links of the whole table, of one order or of one report,
// walked as a scrollable cursor. Every query leaves the cursor on its first
// row. Items are fresh CMsgOrderDokument objects connected to the list's
// client; "Nothing" is an empty pointer. On an empty result Bof() and Eof()
// are both false: test Count() first.
class ZTKDB_API CMsgOrderDokumentListe {
 public:
  CMsgOrderDokumentListe();
  ~CMsgOrderDokumentListe();
  CMsgOrderDokumentListe(const CMsgOrderDokumentListe&) = delete;
  CMsgOrderDokumentListe& operator=(const CMsgOrderDokumentListe&) = delete;

  int32_t AbsolutePosition() const;
  void AbsolutePosition(int32_t value);
  int32_t Count() const;
  // The row at vPos (0-based), or the current row when vPos is omitted.
  std::unique_ptr<CMsgOrderDokument> ItemByRsPos(std::optional<int32_t> vPos = std::nullopt);
  // The row whose lId is lRecId, without scanning; Nothing when absent (the
  // cursor then stays where it was). The default member.
  std::unique_ptr<CMsgOrderDokument> ItemByRecId(int32_t lRecId);
  std::unique_ptr<CMsgOrderDokument> operator()(int32_t lRecId) { return ItemByRecId(lRecId); }
  std::unique_ptr<CMsgOrderDokument> operator[](int32_t lRecId) { return ItemByRecId(lRecId); }
  bool Bof() const;
  bool Eof() const;
  std::unique_ptr<Recordset> RsClone() const;

  void ConnectStorage(const std::string& stClientName);
  void ReadAll();
  void ReadByOrderId(int32_t lOrderId);
  void ReadByMsgId(int32_t lMsgId);
  void Requery();
  std::unique_ptr<CMsgOrderDokument> MoveFirst();
  std::unique_ptr<CMsgOrderDokument> MoveLast();
  std::unique_ptr<CMsgOrderDokument> MoveNext();
  std::unique_ptr<CMsgOrderDokument> MovePrevious();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace ZTkDb
