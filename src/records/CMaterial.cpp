#include "ztkdb/CMaterial.h"

#include "records/RecordProperties.h"
#include "records/TableRecord.h"
#include "runtime/Guard.h"
#include "runtime/Messages.h"

namespace ZTkDb {
namespace {

ZTKDB_RECORD_FIELDS(CMaterial, ZTKDB_MATERIAL_COLUMNS)

constexpr const char* kInsert =
    "INSERT INTO #Tabelle# (stUId, lAuftragId,stMatKlasse, stBezeichnung, dMenge, "
    "cuPreisProEinheit, dFaktor, lRechnEmpfId, stKostenart, stKostenstelle, stRechnEmpf, "
    "stEinheit,bFremdleistung) VALUES ('#stUId#', #lAuftragId#, '#stMatKlasse#', "
    "'#stBezeichnung#', #dMenge#, #cuPreisProEinheit#, #dFaktor#, #lRechnEmpfId#, "
    "'#stKostenart#', '#stKostenstelle#', '#stRechnEmpf#', '#stEinheit#', #bFremdleistung#)";
constexpr const char* kUpdate =
    "UPDATE #Tabelle# SET #Tabelle#.stUId = '#stNewUId#', #Tabelle#.lAuftragId = #lAuftragId#, "
    "#Tabelle#.stMatKlasse = '#stMatKlasse#', #Tabelle#.stBezeichnung = '#stBezeichnung#', "
    "#Tabelle#.dMenge = #dMenge#, #Tabelle#.cuPreisProEinheit = #cuPreisProEinheit#, "
    "#Tabelle#.dFaktor = #dFaktor#, #Tabelle#.lRechnEmpfId = #lRechnEmpfId#, "
    "#Tabelle#.stKostenart = '#stKostenart#', #Tabelle#.stKostenstelle = '#stKostenstelle#', "
    "#Tabelle#.stRechnEmpf = '#stRechnEmpf#',#Tabelle#.bFremdleistung = #bFremdleistung#, "
    "#Tabelle#.stEinheit = '#stEinheit#' WHERE ((#Tabelle#.lId=#lId#) AND "
    "(#Tabelle#.stUId='#stUId#'))";

const detail::RecordStatements kStatements{
    .class_name = "CMaterial",
    .table = "T_AMaterial",
    .detail_table = nullptr,
    .insert = kInsert,
    .update = kUpdate,
    .select_by_id = detail::kSelectByIdText,
    .select_by_uid = detail::kSelectByUIdText,
    .delete_jet = detail::kDeleteJetText,
    .delete_other = detail::kDeleteOtherText,
};

}  // namespace

template <>
const detail::RecordStatements& detail::StatementsOf<CMaterial>() {
  return kStatements;
}

struct CMaterial::Impl {
  detail::TableRecord<Fields> record{kStatements, Layout()};
};

ZTKDB_RECORD_MEMBERS(CMaterial, ZTKDB_MATERIAL_COLUMNS)

void CMaterial::CreateNew(int32_t, const std::string&, double, Currency, double, int32_t,
                          const std::string&, const std::string&, const std::string&) {
  detail::Guard("CMaterial.CreateNew", [] {
    detail::ShowMessageBox("CreateNew1 benutzen!", "Zanto", false, "CMaterial.CreateNew");
  });
}
void CMaterial::CreateNew1(int32_t, const std::string&, double, Currency, double, int32_t,
                           const std::string&, const std::string&, const std::string&,
                           const std::string&) {
  detail::Guard("CMaterial.CreateNew1", [] {
    detail::ShowMessageBox("CreateNew2 verwenden.", "Zanto", false, "CMaterial.CreateNew1");
  });
}
void CMaterial::CreateNew2(int32_t, const std::string&, double, Currency, double, int32_t,
                           const std::string&, const std::string&, const std::string&,
                           const std::string&, bool) {
  detail::Guard("CMaterial.CreateNew2", [] {
    detail::ShowMessageBox("CreateNew3 verwenden.", "Zanto", false, "CMaterial.CreateNew2");
  });
}

void CMaterial::CreateNew3(int32_t lAuftragId, const std::string& stMatKlasse,
                           const std::string& stBezeichnung, double dMenge,
                           Currency cuPreisProEinheit, double dFaktor, int32_t lRechnEmpfId,
                           const std::string& stKostenart, const std::string& stKST,
                           const std::string& stEinheit, const std::string& stRechnEmpf,
                           bool bFremdleistung) {
  detail::Guard("CMaterial.CreateNew3", [&] {
    Fields row;
    row.AuftragId = lAuftragId;
    row.MatKlasse = stMatKlasse;
    row.Bezeichnung = stBezeichnung;
    row.Menge = dMenge;
    row.PreisProEinheit = cuPreisProEinheit;
    row.Faktor = dFaktor;
    row.RechnEmpfId = lRechnEmpfId;
    row.Kostenart = stKostenart;
    row.Kostenstelle = stKST;
    row.Einheit = stEinheit;
    row.RechnEmpf = stRechnEmpf;
    row.Fremdleistung = bFremdleistung;
    impl_->record.Create("CMaterial.CreateNew3", row);
  });
}

}  // namespace ZTkDb
