#include "ztkdb/CLeistung.h"

#include "records/RecordProperties.h"
#include "records/TableRecord.h"
#include "runtime/Guard.h"
#include "runtime/Messages.h"

namespace ZTkDb {
namespace {

using detail::ColumnBinding;
using detail::NullRule;
using detail::ValueSlot;

struct LeistungFields {
  int32_t id = 0;
  std::string uid;
  int32_t auftrag_id = 0;
  int32_t auftrag_nehmer_id = 0;
  Date ausf_datum = NoDate;
  std::string ausf_zeit;
  int32_t leist_art_id = 0;
  double stunden = 0;
  Currency preis_pro_std;
  double faktor = 0;
  double weg = 0;
  Currency preis_pro_km;
  std::string bemerkung;
  int32_t rechn_empf_id = 0;
  std::string kostenart;
  std::string kostenstelle;
  std::string auftragnehmer;
  std::string ansprech;
  std::string leistart;
  std::string rechn_empf;
  int32_t ansprech_id = 0;
  bool fremdleistung = false;
};

using F = LeistungFields;

const std::vector<ColumnBinding<F>>& LoadOrder() {
  static const std::vector<ColumnBinding<F>> columns = {
      {"lId", &F::id},
      {"stUId", &F::uid},
      {"lAuftragId", &F::auftrag_id},
      {"lAuftragNehmerId", &F::auftrag_nehmer_id},
      {"AusfDatum", &F::ausf_datum},
      {"stAusfZeit", &F::ausf_zeit, NullRule::kDefault},
      {"lLeistArtId", &F::leist_art_id},
      {"dStunden", &F::stunden},
      {"cuPreisProStd", &F::preis_pro_std},
      {"dFaktor", &F::faktor},
      {"dWeg", &F::weg},
      {"cuPreisProKm", &F::preis_pro_km},
      {"stBemerkung", &F::bemerkung, NullRule::kDefault},
      {"lRechnEmpfId", &F::rechn_empf_id},
      {"stKostenart", &F::kostenart, NullRule::kDefault},
      {"stKostenstelle", &F::kostenstelle, NullRule::kDefault},
      {"stAnsprech", &F::ansprech, NullRule::kDefault},
      {"stAuftragnehmer", &F::auftragnehmer, NullRule::kDefault},
      {"stLeistArt", &F::leistart, NullRule::kDefault},
      {"stRechnEmpf", &F::rechn_empf, NullRule::kDefault},
      {"lAnsprechId", &F::ansprech_id, NullRule::kDefault},
      {"bFremdleistung", &F::fremdleistung},
  };
  return columns;
}

// Filling order of the INSERT and the UPDATE. The cost centre's placeholder
// is #stKST#; a remark holding "#stKST#" is replaced again by that later
// step, as it always was.
const std::vector<ValueSlot<F>>& RowValues() {
  static const std::vector<ValueSlot<F>> slots = {
      {"#lAuftragId#", &F::auftrag_id},
      {"#lAuftragNehmerId#", &F::auftrag_nehmer_id},
      {"#AusfDatum#", &F::ausf_datum},
      {"#stAusfZeit#", &F::ausf_zeit},
      {"#lLeistArtId#", &F::leist_art_id},
      {"#dStunden#", &F::stunden},
      {"#cuPreisProStd#", &F::preis_pro_std},
      {"#dFaktor#", &F::faktor},
      {"#dWeg#", &F::weg},
      {"#cuPreisProKm#", &F::preis_pro_km},
      {"#stBemerkung#", &F::bemerkung},
      {"#lRechnEmpfId#", &F::rechn_empf_id},
      {"#stKostenart#", &F::kostenart},
      {"#stKST#", &F::kostenstelle},
      {"#stAuftragnehmer#", &F::auftragnehmer},
      {"#stAnsprech#", &F::ansprech},
      {"#stLeistArt#", &F::leistart},
      {"#stRechnEmpf#", &F::rechn_empf},
      {"#lAnsprechId#", &F::ansprech_id},
      {"#bFremdleistung#", &F::fremdleistung},
  };
  return slots;
}

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

struct CLeistung::Impl {
  detail::TableRecord<F> record{kStatements, LoadOrder(), RowValues()};
};

ZTKDB_RECORD_MEMBERS(CLeistung)

ZTKDB_VALUE_PROPERTY(CLeistung, AuftragId, int32_t, auftrag_id)
ZTKDB_VALUE_PROPERTY(CLeistung, AuftragNehmerId, int32_t, auftrag_nehmer_id)
ZTKDB_VALUE_PROPERTY(CLeistung, AusfDatum, Date, ausf_datum)
ZTKDB_TEXT_PROPERTY(CLeistung, AusfZeit, ausf_zeit)
ZTKDB_VALUE_PROPERTY(CLeistung, LeistArtId, int32_t, leist_art_id)
ZTKDB_VALUE_PROPERTY(CLeistung, Stunden, double, stunden)
ZTKDB_VALUE_PROPERTY(CLeistung, PreisProStd, Currency, preis_pro_std)
ZTKDB_VALUE_PROPERTY(CLeistung, Faktor, double, faktor)
ZTKDB_VALUE_PROPERTY(CLeistung, Weg, double, weg)
ZTKDB_VALUE_PROPERTY(CLeistung, PreisProKm, Currency, preis_pro_km)
ZTKDB_TEXT_PROPERTY(CLeistung, Bemerkung, bemerkung)
ZTKDB_VALUE_PROPERTY(CLeistung, RechnEmpfId, int32_t, rechn_empf_id)
ZTKDB_TEXT_PROPERTY(CLeistung, Kostenart, kostenart)
ZTKDB_TEXT_PROPERTY(CLeistung, Kostenstelle, kostenstelle)
ZTKDB_TEXT_PROPERTY(CLeistung, Auftragnehmer, auftragnehmer)
ZTKDB_TEXT_PROPERTY(CLeistung, Ansprech, ansprech)
ZTKDB_TEXT_PROPERTY(CLeistung, Leistart, leistart)
ZTKDB_TEXT_PROPERTY(CLeistung, RechnEmpf, rechn_empf)
ZTKDB_VALUE_PROPERTY(CLeistung, AnsprechId, int32_t, ansprech_id)
ZTKDB_VALUE_PROPERTY(CLeistung, Fremdleistung, bool, fremdleistung)

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
    LeistungFields row;
    row.auftrag_id = lAuftragId;
    row.auftrag_nehmer_id = lAuftragNehmerId;
    row.ausf_datum = AusfDatum;
    row.ausf_zeit = stAusfZeit;
    row.leist_art_id = lLeistArtId;
    row.stunden = dStunden;
    row.preis_pro_std = cuPreisProStd;
    row.faktor = dFaktor;
    row.weg = dWeg;
    row.preis_pro_km = cuPreisProKm;
    row.bemerkung = stBemerkung;
    row.rechn_empf_id = lRechnEmpfId;
    row.kostenart = stKostenart;
    row.ansprech_id = lAnsprechId;
    row.kostenstelle = stKST;
    row.auftragnehmer = stAuftragnehmer;
    row.ansprech = stAnsprech;
    row.leistart = stLeistArt;
    row.rechn_empf = stRechnEmpf;
    row.fremdleistung = bFremdleistung;
    impl_->record.Create("CLeistung.CreateNew1", row);
  });
}

}  // namespace ZTkDb
