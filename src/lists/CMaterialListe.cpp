#include "ztkdb/CMaterialListe.h"

#include "lists/ListCursor.h"
#include "lists/ListStatements.h"
#include "runtime/Guard.h"

namespace ZTkDb {
namespace {

using detail::StorageKind;

constexpr const char* kTable = "T_AMaterial";

}  // namespace

CMaterialListe::CMaterialListe() : RecordList("CMaterialListe") {}

void CMaterialListe::ReadAll() {
  constexpr const char* kMember = "CMaterialListe.ReadAll";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [](StorageKind kind) {
      return detail::FillTableAndId("SELECT #Tabelle#.* FROM #Tabelle#", kind, kTable);
    });
  });
}

void CMaterialListe::ReadByOrderId(int32_t lOrderId) {
  constexpr const char* kMember = "CMaterialListe.ReadByOrderId";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return detail::FillTableAndId(
          "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lAuftragId = #lOrderId#", kind, kTable,
          "#lOrderId#", lOrderId);
    });
  });
}

void CMaterialListe::ReadMaterialByOrderId(int32_t lOrderId) {
  constexpr const char* kMember = "CMaterialListe.ReadMaterialByOrderId";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      // The constant 0 serves every kind.
      return detail::FillTableAndId(
          "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lAuftragId = #lOrderId# AND "
          "#Tabelle#.bFremdleistung = 0",
          kind, kTable, "#lOrderId#", lOrderId);
    });
  });
}

void CMaterialListe::ReadFremdByOrderId(int32_t lOrderId) {
  constexpr const char* kMember = "CMaterialListe.ReadFremdByOrderId";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return detail::FillTableAndId(
                 "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lAuftragId = #lOrderId# AND "
                 "#Tabelle#.bFremdleistung = #TRUE#",
                 kind, kTable, "#lOrderId#", lOrderId)
          .Flag("#TRUE#", true);
    });
  });
}

}  // namespace ZTkDb
