#include "ztkdb/CMeldung.h"

#include "records/RecordProperties.h"
#include "records/TableRecord.h"
#include "runtime/Guard.h"
#include "runtime/Messages.h"
#include "sql/Literals.h"
#include "sql/Statement.h"

namespace ZTkDb {
namespace {

using detail::ColumnBinding;
using detail::NullRule;
using detail::ValueSlot;

struct MeldungFields {
  int32_t id = 0;
  std::string uid;
  int32_t nr = 0;
  std::string melder;
  int32_t melder_fa_id = 0;
  std::string melder_tel;
  Date melde_datum = NoDate;
  std::string melde_zeit;
  int32_t obj_id = 0;
  int32_t obj_typ = sotUndefined;
  std::string meldung;
  Date erled_bis_datum = NoDate;
  std::string erled_bis_zeit;
  Date wieder_datum = NoDate;
  std::string wieder_zeit;
  bool erledigt = false;
  Date erledigt_datum = NoDate;
  std::string erledigt_zeit;
  uint8_t geb_typ = 0;
  int32_t geb_id = 0;
  int32_t so_id = 0;
  uint8_t herkunft = hetUndefined;
  std::string nr_vorsatz;
  std::string bearbeiter;
  std::string tel_bearbeiter;
  std::string ort;
  std::string objekt;
  std::string bemerkung;
  std::string email;
  std::string leistungsart;
  std::string verantwortlicher;
};

using F = MeldungFields;

// stOrt comes after stEmail: a failing column stops the copy, so the order
// decides which fields already hold the new row.
const std::vector<ColumnBinding<F>>& LoadOrder() {
  static const std::vector<ColumnBinding<F>> columns = {
      {"lId", &F::id},
      {"stUId", &F::uid},
      {"lNr", &F::nr},
      {"stMelder", &F::melder, NullRule::kDefault},
      {"lMelderFaId", &F::melder_fa_id},
      {"stMelderTel", &F::melder_tel, NullRule::kDefault},
      {"MeldeDatum", &F::melde_datum},
      {"stMeldeZeit", &F::melde_zeit, NullRule::kDefault},
      {"lObjId", &F::obj_id},
      {"byObjTyp", &F::obj_typ},
      {"stMeldung", &F::meldung, NullRule::kKeepAfterMove0},
      {"ErledBisDatum", &F::erled_bis_datum},
      {"stErledBisZeit", &F::erled_bis_zeit, NullRule::kDefault},
      {"WiederDatum", &F::wieder_datum},
      {"stWiederZeit", &F::wieder_zeit, NullRule::kDefault},
      {"bErledigt", &F::erledigt},
      {"ErledigtDatum", &F::erledigt_datum},
      {"stErledigtZeit", &F::erledigt_zeit, NullRule::kDefault},
      {"byGebTyp", &F::geb_typ, NullRule::kDefault},
      {"lGebId", &F::geb_id, NullRule::kDefault},
      {"lSoId", &F::so_id, NullRule::kDefault},
      {"byHerkunft", &F::herkunft, NullRule::kDefault},
      {"stNrVorsatz", &F::nr_vorsatz, NullRule::kDefault},
      {"stBearbeiter", &F::bearbeiter, NullRule::kDefault},
      {"stTelBearbeiter", &F::tel_bearbeiter, NullRule::kDefault},
      {"stObjekt", &F::objekt, NullRule::kDefault},
      {"stBemerkung", &F::bemerkung, NullRule::kDefault},
      {"stEmail", &F::email, NullRule::kDefault},
      {"stOrt", &F::ort, NullRule::kDefault},
      {"stLeistungsart", &F::leistungsart, NullRule::kDefault},
      {"stVerantwortlicher", &F::verantwortlicher, NullRule::kDefault},
  };
  return columns;
}

// The value placeholders of the INSERT and the UPDATE, in filling order.
const std::vector<ValueSlot<F>>& RowValues() {
  static const std::vector<ValueSlot<F>> slots = {
      {"#lNr#", &F::nr},
      {"#stMelder#", &F::melder},
      {"#lMelderFaId#", &F::melder_fa_id},
      {"#stMelderTel#", &F::melder_tel},
      {"#MeldeDatum#", &F::melde_datum},
      {"#stMeldeZeit#", &F::melde_zeit},
      {"#lObjId#", &F::obj_id},
      {"#byObjTyp#", &F::obj_typ},
      {"#stMeldung#", &F::meldung},
      {"#ErledBisDatum#", &F::erled_bis_datum},
      {"#stErledBisZeit#", &F::erled_bis_zeit},
      {"#WiederDatum#", &F::wieder_datum},
      {"#stWiederZeit#", &F::wieder_zeit},
      {"#bErledigt#", &F::erledigt},
      {"#ErledigtDatum#", &F::erledigt_datum},
      {"#stErledigtZeit#", &F::erledigt_zeit},
      {"#byGebTyp#", &F::geb_typ},
      {"#lGebId#", &F::geb_id},
      {"#lSoId#", &F::so_id},
      {"#byHerkunft#", &F::herkunft},
      {"#stNrVorsatz#", &F::nr_vorsatz},
      {"#stBearbeiter#", &F::bearbeiter},
      {"#stTelBearbeiter#", &F::tel_bearbeiter},
      {"#stOrt#", &F::ort},
      {"#stObjekt#", &F::objekt},
      {"#stBemerkung#", &F::bemerkung},
      {"#stEmail#", &F::email},
      {"#stLeistungsart#", &F::leistungsart},
      {"#stVerantwortlicher#", &F::verantwortlicher},
  };
  return slots;
}

constexpr const char* kClass = "CMeldung";
constexpr const char* kTable = "T_Meldung";

constexpr const char* kInsert =
    "INSERT INTO #Tabelle# (stUId, lNr, stMelder, lMelderFaId, stMelderTel, MeldeDatum, "
    "stMeldeZeit, lObjId, byObjTyp, stMeldung, ErledBisDatum, stErledBisZeit, WiederDatum, "
    "stWiederZeit, bErledigt, ErledigtDatum, stErledigtZeit, byGebTyp, lGebId, lSoId, "
    "byHerkunft,stNrVorsatz, stBearbeiter,stTelBearbeiter, stOrt, stObjekt, stBemerkung, "
    "stEmail, stLeistungsart, stVerantwortlicher) VALUES ('#stUId#', #lNr#, '#stMelder#', "
    "#lMelderFaId#, '#stMelderTel#', '#MeldeDatum#', '#stMeldeZeit#', #lObjId#, #byObjTyp#, "
    "'#stMeldung#', '#ErledBisDatum#', '#stErledBisZeit#', '#WiederDatum#', '#stWiederZeit#', "
    "#bErledigt#, '#ErledigtDatum#', '#stErledigtZeit#', #byGebTyp#,#lGebId#,#lSoId#, "
    "#byHerkunft#,'#stNrVorsatz#','#stBearbeiter#','#stTelBearbeiter#','#stOrt#','#stObjekt#','#"
    "stBemerkung#','#stEmail#','#stLeistungsart#','#stVerantwortlicher#')";
constexpr const char* kUpdate =
    "UPDATE #Tabelle# SET #Tabelle#.stUId = '#stNewUId#', #Tabelle#.lNr = #lNr#, "
    "#Tabelle#.stMelder = '#stMelder#', #Tabelle#.lMelderFaId = #lMelderFaId#, "
    "#Tabelle#.stMelderTel = '#stMelderTel#', #Tabelle#.MeldeDatum = '#MeldeDatum#', "
    "#Tabelle#.stMeldeZeit = '#stMeldeZeit#', #Tabelle#.lObjId = #lObjId#, #Tabelle#.byObjTyp = "
    "#byObjTyp#, #Tabelle#.stMeldung = '#stMeldung#', #Tabelle#.ErledBisDatum = "
    "'#ErledBisDatum#', #Tabelle#.stErledBisZeit = '#stErledBisZeit#', #Tabelle#.WiederDatum = "
    "'#WiederDatum#', #Tabelle#.stWiederZeit = '#stWiederZeit#', #Tabelle#.bErledigt = "
    "#bErledigt#, #Tabelle#.ErledigtDatum = '#ErledigtDatum#', #Tabelle#.stErledigtZeit = "
    "'#stErledigtZeit#',#Tabelle#.byGebTyp = #byGebTyp#, #Tabelle#.lGebId = "
    "#lGebId#,#Tabelle#.lSoId = #lSoId#, #Tabelle#.byHerkunft= #byHerkunft#, "
    "#Tabelle#.stNrVorsatz='#stNrVorsatz#', #Tabelle#.stBearbeiter='#stBearbeiter#', "
    "#Tabelle#.stTelBearbeiter='#stTelBearbeiter#', #Tabelle#.stOrt='#stOrt#', "
    "#Tabelle#.stObjekt='#stObjekt#', #Tabelle#.stBemerkung='#stBemerkung#', "
    "#Tabelle#.stEmail='#stEmail#', #Tabelle#.stLeistungsart='#stLeistungsart#', "
    "#Tabelle#.stVerantwortlicher='#stVerantwortlicher#' WHERE ((#Tabelle#.lId=#lId#) AND "
    "(#Tabelle#.stUId='#stUId#'))";
constexpr const char* kSelectByNr =
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lNr = #lNr# AND #Tabelle#.stNrVorsatz = "
    "'#stNrVorsatz#'";
constexpr const char* kLastNr = "SELECT Max(#Tabelle#.lNr) As LastNr FROM #Tabelle#";
constexpr const char* kLastNrVorsatz =
    "SELECT Max(#Tabelle#.lNr) As LastNr FROM #Tabelle# WHERE #Tabelle#.stNrVorsatz = "
    "'#stNrVorsatz#'";

const detail::RecordStatements kStatements{
    .class_name = kClass,
    .table = kTable,
    .detail_table = nullptr,
    .insert = kInsert,
    .update = kUpdate,
    .select_by_id = detail::kSelectByIdText,
    .select_by_uid = detail::kSelectByUIdText,
    .delete_jet = detail::kDeleteJetText,
    .delete_other = detail::kDeleteOtherText,
};

}  // namespace

struct CMeldung::Impl {
  detail::TableRecord<F> record{kStatements, LoadOrder(), RowValues()};
};

ZTKDB_RECORD_MEMBERS(CMeldung)

ZTKDB_VALUE_PROPERTY(CMeldung, Nr, int32_t, nr)
ZTKDB_TEXT_PROPERTY(CMeldung, Melder, melder)
ZTKDB_VALUE_PROPERTY(CMeldung, MelderFaId, int32_t, melder_fa_id)
ZTKDB_TEXT_PROPERTY(CMeldung, MelderTel, melder_tel)
ZTKDB_VALUE_PROPERTY(CMeldung, MeldeDatum, Date, melde_datum)
ZTKDB_TEXT_PROPERTY(CMeldung, MeldeZeit, melde_zeit)
ZTKDB_VALUE_PROPERTY(CMeldung, ObjId, int32_t, obj_id)
TkObjTypes CMeldung::ObjTyp() const {
  return static_cast<TkObjTypes>(impl_->record.core.F().obj_typ);
}
void CMeldung::ObjTyp(TkObjTypes value) { impl_->record.core.F().obj_typ = value; }
ZTKDB_TEXT_PROPERTY(CMeldung, Meldung, meldung)
ZTKDB_VALUE_PROPERTY(CMeldung, ErledBisDatum, Date, erled_bis_datum)
ZTKDB_TEXT_PROPERTY(CMeldung, ErledBisZeit, erled_bis_zeit)
ZTKDB_VALUE_PROPERTY(CMeldung, WiederDatum, Date, wieder_datum)
ZTKDB_TEXT_PROPERTY(CMeldung, WiederZeit, wieder_zeit)
ZTKDB_VALUE_PROPERTY(CMeldung, Erledigt, bool, erledigt)
ZTKDB_VALUE_PROPERTY(CMeldung, ErledigtDatum, Date, erledigt_datum)
ZTKDB_TEXT_PROPERTY(CMeldung, ErledigtZeit, erledigt_zeit)
ZTKDB_VALUE_PROPERTY(CMeldung, GebTyp, uint8_t, geb_typ)
ZTKDB_VALUE_PROPERTY(CMeldung, GebId, int32_t, geb_id)
ZTKDB_VALUE_PROPERTY(CMeldung, SoId, int32_t, so_id)
ZTKDB_VALUE_PROPERTY(CMeldung, Herkunft, uint8_t, herkunft)
ZTKDB_TEXT_PROPERTY(CMeldung, NrVorsatz, nr_vorsatz)
ZTKDB_TEXT_PROPERTY(CMeldung, Bearbeiter, bearbeiter)
ZTKDB_TEXT_PROPERTY(CMeldung, TelBearbeiter, tel_bearbeiter)
ZTKDB_TEXT_PROPERTY(CMeldung, Ort, ort)
ZTKDB_TEXT_PROPERTY(CMeldung, Objekt, objekt)
ZTKDB_TEXT_PROPERTY(CMeldung, Bemerkung, bemerkung)
ZTKDB_TEXT_PROPERTY(CMeldung, Email, email)
ZTKDB_TEXT_PROPERTY(CMeldung, Leistungsart, leistungsart)
ZTKDB_TEXT_PROPERTY(CMeldung, Verantwortlicher, verantwortlicher)

// The retired creation methods: hosts still call them, so each names the
// version after it.
void CMeldung::CreateNew(int32_t, const std::string&, int32_t, const std::string&, Date,
                         const std::string&, int32_t, TkObjTypes, const std::string&, Date,
                         const std::string&, Date, const std::string&, bool, Date,
                         const std::string&, uint8_t, int32_t, uint8_t, const std::string&,
                         const std::string&, const std::string&, const std::string&,
                         const std::string&) {
  detail::Guard("CMeldung.CreateNew", [] {
    detail::ShowMessageBox("CreateNew1 benutzen!", {}, false, "CMeldung.CreateNew");
  });
}
void CMeldung::CreateNew1(int32_t, const std::string&, int32_t, const std::string&, Date,
                          const std::string&, int32_t, TkObjTypes, const std::string&, Date,
                          const std::string&, Date, const std::string&, bool, Date,
                          const std::string&, uint8_t, int32_t, uint8_t, const std::string&,
                          const std::string&, const std::string&, const std::string&,
                          const std::string&, const std::string&) {
  detail::Guard("CMeldung.CreateNew1", [] {
    detail::ShowMessageBox("CreateNew2 benutzen!", {}, false, "CMeldung.CreateNew1");
  });
}
void CMeldung::CreateNew2(int32_t, const std::string&, int32_t, const std::string&, Date,
                          const std::string&, int32_t, TkObjTypes, const std::string&, Date,
                          const std::string&, Date, const std::string&, bool, Date,
                          const std::string&, uint8_t, int32_t, uint8_t, const std::string&,
                          const std::string&, const std::string&, const std::string&,
                          const std::string&, const std::string&, const std::string&) {
  detail::Guard("CMeldung.CreateNew2", [] {
    detail::ShowMessageBox("CreateNew3 benutzen!", {}, false, "CMeldung.CreateNew2");
  });
}
void CMeldung::CreateNew3(int32_t, const std::string&, int32_t, const std::string&, Date,
                          const std::string&, int32_t, TkObjTypes, const std::string&, Date,
                          const std::string&, Date, const std::string&, bool, Date,
                          const std::string&, uint8_t, int32_t, int32_t, uint8_t,
                          const std::string&, const std::string&, const std::string&,
                          const std::string&, const std::string&, const std::string&,
                          const std::string&) {
  detail::Guard("CMeldung.CreateNew3", [] {
    detail::ShowMessageBox("CreateNew4 benutzen!", {}, false, "CMeldung.CreateNew3");
  });
}

void CMeldung::CreateNew4(
    int32_t lNr, const std::string& stMelder, int32_t lMelderFaId, const std::string& stMelderTel,
    Date MeldeDatum, const std::string& stMeldeZeit, int32_t lObjId, TkObjTypes eObjTyp,
    const std::string& stMeldung, Date ErledBisDatum, const std::string& stErledBisZeit,
    Date WiederDatum, const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
    const std::string& stErledigtZeit, uint8_t byGebTyp, int32_t lGebId, int32_t lSoId,
    uint8_t byHerkunft, const std::string& stNrVorsatz, const std::string& stBearbeiter,
    const std::string& stTelBearbeiter, const std::string& stOrt, const std::string& stObjekt,
    const std::string& stBemerkung, const std::string& stEmail, const std::string& stLeistungsart,
    const std::string& stVerantwortlicher) {
  constexpr const char* kMember = "CMeldung.CreateNew4";
  detail::Guard(kMember, [&] {
    MeldungFields row;
    row.nr = lNr;
    row.melder = stMelder;
    row.melder_fa_id = lMelderFaId;
    row.melder_tel = stMelderTel;
    row.melde_datum = MeldeDatum;
    row.melde_zeit = stMeldeZeit;
    row.obj_id = lObjId;
    row.obj_typ = eObjTyp;
    row.meldung = stMeldung;
    row.erled_bis_datum = ErledBisDatum;
    row.erled_bis_zeit = stErledBisZeit;
    row.wieder_datum = WiederDatum;
    row.wieder_zeit = stWiederZeit;
    row.erledigt = bErledigt;
    row.erledigt_datum = ErledigtDatum;
    row.erledigt_zeit = stErledigtZeit;
    row.geb_typ = byGebTyp;
    row.geb_id = lGebId;
    row.so_id = lSoId;
    row.herkunft = byHerkunft;
    row.nr_vorsatz = stNrVorsatz;
    row.bearbeiter = stBearbeiter;
    row.tel_bearbeiter = stTelBearbeiter;
    row.ort = stOrt;
    row.objekt = stObjekt;
    row.bemerkung = stBemerkung;
    row.email = stEmail;
    row.leistungsart = stLeistungsart;
    row.verantwortlicher = stVerantwortlicher;
    impl_->record.Create(kMember, row);
  });
}

void CMeldung::ReadByNr(int32_t lNr, const std::string& stVorsatz) {
  constexpr const char* kMember = "CMeldung.ReadByNr";
  detail::Guard(kMember, [&] {
    // The prefix goes in as given; the engine's one-statement rule is what
    // keeps a hostile prefix from running anything else.
    auto& record = impl_->record;
    record.core.ReadBy(
        kMember,
        record.Finish(
            record.Begin(kMember, kSelectByNr).Long("#lNr#", lNr).Raw("#stNrVorsatz#", stVorsatz)));
  });
}

int32_t CMeldung::GetLastNr() {
  constexpr const char* kMember = "CMeldung.GetLastNr";
  return detail::Guard(kMember, [&] {
    auto& record = impl_->record;
    return record.LastNumber(kMember, record.Finish(record.Begin(kMember, kLastNr)));
  });
}

int32_t CMeldung::GetLastNrVorsatz(const std::string& stNrVorsatz) {
  constexpr const char* kMember = "CMeldung.GetLastNrVorsatz";
  return detail::Guard(kMember, [&] {
    auto& record = impl_->record;
    return record.LastNumber(
        kMember,
        record.Finish(record.Begin(kMember, kLastNrVorsatz).Raw("#stNrVorsatz#", stNrVorsatz)));
  });
}

}  // namespace ZTkDb
