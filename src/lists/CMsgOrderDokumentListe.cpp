#include "ztkdb/CMsgOrderDokumentListe.h"

#include "lists/ListCursor.h"
#include "lists/ListStatements.h"
#include "runtime/Guard.h"

namespace ZTkDb {
namespace {

using detail::StorageKind;

constexpr const char* kTable = "T_MsgOrderDokument";

}  // namespace

CMsgOrderDokumentListe::CMsgOrderDokumentListe() : RecordList("CMsgOrderDokumentListe") {}

void CMsgOrderDokumentListe::ReadAll() {
  constexpr const char* kMember = "CMsgOrderDokumentListe.ReadAll";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return detail::FillTableAndId("SELECT #Tabelle#.* FROM #Tabelle#;", kind, kTable);
    });
  });
}

void CMsgOrderDokumentListe::ReadByOrderId(int32_t lOrderId) {
  constexpr const char* kMember = "CMsgOrderDokumentListe.ReadByOrderId";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return detail::FillTableAndId(
          "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lOrderId = #lOrderId#", kind, kTable,
          "#lOrderId#", lOrderId);
    });
  });
}

void CMsgOrderDokumentListe::ReadByMsgId(int32_t lMsgId) {
  constexpr const char* kMember = "CMsgOrderDokumentListe.ReadByMsgId";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return detail::FillTableAndId(
          "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lMsgId = #lMsgId#", kind, kTable,
          "#lMsgId#", lMsgId);
    });
  });
}

}  // namespace ZTkDb
