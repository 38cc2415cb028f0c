#include "ztkdb/CLeistungListe.h"

#include "connection/WorkspaceNames.h"
#include "lists/ListCursor.h"
#include "lists/ListStatements.h"
#include "runtime/Guard.h"

namespace ZTkDb {
namespace {

using detail::StorageKind;

constexpr const char* kTable = "T_Leistung";

}  // namespace

CLeistungListe::CLeistungListe() : RecordList("CLeistungListe") {}

void CLeistungListe::ReadAll() {
  constexpr const char* kMember = "CLeistungListe.ReadAll";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [](StorageKind kind) {
      return detail::FillTableAndId("SELECT #Tabelle#.* FROM #Tabelle#", kind, kTable);
    });
  });
}

void CLeistungListe::ReadByOrderId(int32_t lOrderId) {
  constexpr const char* kMember = "CLeistungListe.ReadByOrderId";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return detail::FillTableAndId(
          "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lAuftragId = #lOrderId# ORDER BY "
          "#Tabelle#.lId",
          kind, kTable, "#lOrderId#", lOrderId);
    });
  });
}

void CLeistungListe::ReadAllRechEmpfNotEmpty() {
  constexpr const char* kMember = "CLeistungListe.ReadAllRechEmpfNotEmpty";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [](StorageKind kind) {
      // The process-wide flag decides, not the storage's kind.
      return detail::FillTableAndId(
          detail::ProcessFlags::oracle
              ? "SELECT #Tabelle#.* FROM #Tabelle# WHERE NOT #Tabelle#.stRechnEmpf IS NULL"
              : "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.stRechnEmpf <>''",
          kind, kTable);
    });
  });
}

}  // namespace ZTkDb
