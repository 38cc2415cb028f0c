#include "ztkdb/CMaterial.h"

#include "records/RecordProperties.h"
#include "records/TableRecord.h"
#include "runtime/Guard.h"
#include "runtime/Messages.h"

namespace ZTkDb {
namespace {

using detail::ColumnBinding;
using detail::NullRule;
using detail::ValueSlot;

struct MaterialFields {
  int32_t id = 0;
  std::string uid;
  int32_t auftrag_id = 0;
  std::string mat_klasse;
  std::string bezeichnung;
  double menge = 0;
  Currency preis_pro_einheit;
  double faktor = 0;
  int32_t rechn_empf_id = 0;
  std::string kostenart;
  std::string kostenstelle;
  std::string rechn_empf;
  std::string einheit;
  bool fremdleistung = false;
};

using F = MaterialFields;

const std::vector<ColumnBinding<F>>& LoadOrder() {
  static const std::vector<ColumnBinding<F>> columns = {
      {"lId", &F::id},
      {"stUId", &F::uid},
      {"lAuftragId", &F::auftrag_id},
      {"stMatKlasse", &F::mat_klasse, NullRule::kDefault},
      {"stBezeichnung", &F::bezeichnung, NullRule::kDefault},
      {"dMenge", &F::menge},
      {"cuPreisProEinheit", &F::preis_pro_einheit},
      {"dFaktor", &F::faktor},
      {"lRechnEmpfId", &F::rechn_empf_id},
      {"stKostenart", &F::kostenart, NullRule::kDefault},
      {"stKostenstelle", &F::kostenstelle, NullRule::kDefault},
      {"stRechnEmpf", &F::rechn_empf, NullRule::kDefault},
      {"stEinheit", &F::einheit, NullRule::kDefault},
      {"bFremdleistung", &F::fremdleistung},
  };
  return columns;
}

// Filling orders: the INSERT puts the unit before the recipient, the UPDATE
// after it.
const std::vector<ValueSlot<F>>& InsertValues() {
  static const std::vector<ValueSlot<F>> slots = {
      {"#lAuftragId#", &F::auftrag_id},
      {"#stMatKlasse#", &F::mat_klasse},
      {"#stBezeichnung#", &F::bezeichnung},
      {"#dMenge#", &F::menge},
      {"#cuPreisProEinheit#", &F::preis_pro_einheit},
      {"#dFaktor#", &F::faktor},
      {"#lRechnEmpfId#", &F::rechn_empf_id},
      {"#stKostenart#", &F::kostenart},
      {"#stKostenstelle#", &F::kostenstelle},
      {"#stEinheit#", &F::einheit},
      {"#stRechnEmpf#", &F::rechn_empf},
  };
  return slots;
}

const std::vector<ValueSlot<F>>& UpdateValues() {
  static const std::vector<ValueSlot<F>> slots = {
      {"#lAuftragId#", &F::auftrag_id},
      {"#stMatKlasse#", &F::mat_klasse},
      {"#stBezeichnung#", &F::bezeichnung},
      {"#dMenge#", &F::menge},
      {"#cuPreisProEinheit#", &F::preis_pro_einheit},
      {"#dFaktor#", &F::faktor},
      {"#lRechnEmpfId#", &F::rechn_empf_id},
      {"#stKostenart#", &F::kostenart},
      {"#stKostenstelle#", &F::kostenstelle},
      {"#stRechnEmpf#", &F::rechn_empf},
      {"#stEinheit#", &F::einheit},
  };
  return slots;
}

// The flag has always been filled last, after the row's id and UId.
const std::vector<ValueSlot<F>>& LastValues() {
  static const std::vector<ValueSlot<F>> slots = {{"#bFremdleistung#", &F::fremdleistung}};
  return slots;
}

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

struct CMaterial::Impl {
  detail::TableRecord<F> record{kStatements, LoadOrder(), InsertValues(), UpdateValues(),
                                LastValues()};
};

ZTKDB_RECORD_MEMBERS(CMaterial)

ZTKDB_VALUE_PROPERTY(CMaterial, AuftragId, int32_t, auftrag_id)
ZTKDB_TEXT_PROPERTY(CMaterial, Bezeichnung, bezeichnung)
ZTKDB_VALUE_PROPERTY(CMaterial, Menge, double, menge)
ZTKDB_VALUE_PROPERTY(CMaterial, PreisProEinheit, Currency, preis_pro_einheit)
ZTKDB_VALUE_PROPERTY(CMaterial, Faktor, double, faktor)
ZTKDB_VALUE_PROPERTY(CMaterial, RechnEmpfId, int32_t, rechn_empf_id)
ZTKDB_TEXT_PROPERTY(CMaterial, Kostenart, kostenart)
ZTKDB_TEXT_PROPERTY(CMaterial, Kostenstelle, kostenstelle)
ZTKDB_TEXT_PROPERTY(CMaterial, RechnEmpf, rechn_empf)
ZTKDB_VALUE_PROPERTY(CMaterial, Fremdleistung, bool, fremdleistung)
const std::string& CMaterial::Einheit() const { return impl_->record.core.F().einheit; }
void CMaterial::Einheit(const std::string&) {
  // Deliberately keeps the current unit: hosts rely on Update writing the
  // unit the booking was loaded with.
}
ZTKDB_TEXT_PROPERTY(CMaterial, MatKlasse, mat_klasse)

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
    MaterialFields row;
    row.auftrag_id = lAuftragId;
    row.mat_klasse = stMatKlasse;
    row.bezeichnung = stBezeichnung;
    row.menge = dMenge;
    row.preis_pro_einheit = cuPreisProEinheit;
    row.faktor = dFaktor;
    row.rechn_empf_id = lRechnEmpfId;
    row.kostenart = stKostenart;
    row.kostenstelle = stKST;
    row.einheit = stEinheit;
    row.rechn_empf = stRechnEmpf;
    row.fremdleistung = bFremdleistung;
    impl_->record.Create("CMaterial.CreateNew3", row);
  });
}

}  // namespace ZTkDb
