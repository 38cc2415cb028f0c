#include "ztkdb/CLeistung.h"

#include "records/RecordProperties.h"
#include "records/TableRecord.h"
#include "runtime/Guard.h"
#include "runtime/Messages.h"

namespace ZTkDb {
namespace {

ZTKDB_RECORD_FIELDS(CLeistung, ZTKDB_LEISTUNG_COLUMNS)

constexpr const char* kInsert =
    "INSERT INTO #Tabelle# (stUId, lAuftragId, lAuftragNehmerId, AusfDatum, stAusfZeit, "
    "lLeistArtId, dStunden, cuPreisProStd, dFaktor, dWeg, cuPreisProKm, stBemerkung, "
    "lRechnEmpfId, stKostenart, lAnsprechId, stKostenstelle, stAuftragnehmer, stAnsprech, "
    "stLeistArt, stRechnEmpf,bFremdleistung) VALUES ('#stUId#', #lAuftragId#, "
    "#lAuftragNehmerId#, '#AusfDatum#', '#stAusfZeit#', #lLeistArtId#, #dStunden#, "
    "#cuPreisProStd#, #dFaktor#, #dWeg#, #cuPreisProKm#, '#stBemerkung#', #lRechnEmpfId#, "
    "'#stKostenart#', #lAnsprechId#, '#stKST#', '#stAuftragnehmer#', '#stAnsprech#', "
    "'#stLeistArt#', '#stRechnEmpf#', #bFremdleistung# )";
constexpr const char* kUpdate =
    "UPDATE #Tabelle# SET #Tabelle#.stUId = '#stNewUId#', #Tabelle#.lAuftragId = #lAuftragId#, "
    "#Tabelle#.lAuftragNehmerId = #lAuftragNehmerId#, #Tabelle#.AusfDatum = '#AusfDatum#', "
    "#Tabelle#.stAusfZeit = '#stAusfZeit#', #Tabelle#.lLeistArtId = #lLeistArtId#, "
    "#Tabelle#.dStunden = #dStunden#, #Tabelle#.cuPreisProStd = #cuPreisProStd#, "
    "#Tabelle#.dFaktor = #dFaktor#, #Tabelle#.dWeg = #dWeg#, #Tabelle#.cuPreisProKm = "
    "#cuPreisProKm#, #Tabelle#.stBemerkung = '#stBemerkung#', #Tabelle#.lRechnEmpfId = "
    "#lRechnEmpfId#, #Tabelle#.stKostenart = '#stKostenart#',#Tabelle#.stKostenstelle = "
    "'#stKST#',#Tabelle#.stAuftragnehmer = '#stAuftragnehmer#', #Tabelle#.stAnsprech = "
    "'#stAnsprech#',#Tabelle#.stLeistArt = '#stLeistArt#',#Tabelle#.stRechnEmpf = "
    "'#stRechnEmpf#',#Tabelle#.lAnsprechId=#lAnsprechId#, #Tabelle#.bFremdleistung = "
    "#bFremdleistung# WHERE ((#Tabelle#.lId=#lId#) AND (#Tabelle#.stUId='#stUId#'))";

const detail::RecordStatements kStatements{
    .class_name = "CLeistung",
    .table = "T_Leistung",
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
const detail::RecordStatements& detail::StatementsOf<CLeistung>() {
  return kStatements;
}

struct CLeistung::Impl {
  detail::TableRecord<Fields> record{kStatements, Layout()};
};

ZTKDB_RECORD_MEMBERS(CLeistung, ZTKDB_LEISTUNG_COLUMNS)

void CLeistung::CreateNew(int32_t, int32_t, Date, const std::string&, int32_t, double, Currency,
                          double, double, Currency, const std::string&, int32_t, const std::string&,
                          int32_t, const std::string&) {
  detail::Guard("CLeistung.CreateNew", [] {
    detail::ShowMessageBox("CreateNew1 benutzen!", "Zanto", false, "CLeistung.CreateNew");
  });
}

void CLeistung::CreateNew1(int32_t lAuftragId, int32_t lAuftragNehmerId, Date AusfDatum,
                           const std::string& stAusfZeit, int32_t lLeistArtId, double dStunden,
                           Currency cuPreisProStd, double dFaktor, double dWeg,
                           Currency cuPreisProKm, const std::string& stBemerkung,
                           int32_t lRechnEmpfId, const std::string& stKostenart,
                           int32_t lAnsprechId, const std::string& stKST,
                           const std::string& stAuftragnehmer, const std::string& stAnsprech,
                           const std::string& stLeistArt, const std::string& stRechnEmpf,
                           bool bFremdleistung) {
  detail::Guard("CLeistung.CreateNew1", [&] {
    Fields row;
    row.AuftragId = lAuftragId;
    row.AuftragNehmerId = lAuftragNehmerId;
    row.AusfDatum = AusfDatum;
    row.AusfZeit = stAusfZeit;
    row.LeistArtId = lLeistArtId;
    row.Stunden = dStunden;
    row.PreisProStd = cuPreisProStd;
    row.Faktor = dFaktor;
    row.Weg = dWeg;
    row.PreisProKm = cuPreisProKm;
    row.Bemerkung = stBemerkung;
    row.RechnEmpfId = lRechnEmpfId;
    row.Kostenart = stKostenart;
    row.AnsprechId = lAnsprechId;
    row.Kostenstelle = stKST;
    row.Auftragnehmer = stAuftragnehmer;
    row.Ansprech = stAnsprech;
    row.Leistart = stLeistArt;
    row.RechnEmpf = stRechnEmpf;
    row.Fremdleistung = bFremdleistung;
    impl_->record.Create("CLeistung.CreateNew1", row);
  });
}

}  // namespace ZTkDb
