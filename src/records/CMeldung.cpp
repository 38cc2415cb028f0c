#include "ztkdb/CMeldung.h"

#include "records/RecordProperties.h"
#include "records/TableRecord.h"
#include "runtime/Guard.h"
#include "runtime/Messages.h"
#include "sql/Literals.h"
#include "sql/Statement.h"

namespace ZTkDb {
namespace {

ZTKDB_RECORD_FIELDS(CMeldung, ZTKDB_MELDUNG_COLUMNS)

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

template <>
const detail::RecordStatements& detail::StatementsOf<CMeldung>() {
  return kStatements;
}

struct CMeldung::Impl {
  detail::TableRecord<Fields> record{kStatements, Layout()};
};

ZTKDB_RECORD_MEMBERS(CMeldung, ZTKDB_MELDUNG_COLUMNS)

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
    Fields row;
    row.Nr = lNr;
    row.Melder = stMelder;
    row.MelderFaId = lMelderFaId;
    row.MelderTel = stMelderTel;
    row.MeldeDatum = MeldeDatum;
    row.MeldeZeit = stMeldeZeit;
    row.ObjId = lObjId;
    row.ObjTyp = eObjTyp;
    row.Meldung = stMeldung;
    row.ErledBisDatum = ErledBisDatum;
    row.ErledBisZeit = stErledBisZeit;
    row.WiederDatum = WiederDatum;
    row.WiederZeit = stWiederZeit;
    row.Erledigt = bErledigt;
    row.ErledigtDatum = ErledigtDatum;
    row.ErledigtZeit = stErledigtZeit;
    row.GebTyp = byGebTyp;
    row.GebId = lGebId;
    row.SoId = lSoId;
    row.Herkunft = byHerkunft;
    row.NrVorsatz = stNrVorsatz;
    row.Bearbeiter = stBearbeiter;
    row.TelBearbeiter = stTelBearbeiter;
    row.Ort = stOrt;
    row.Objekt = stObjekt;
    row.Bemerkung = stBemerkung;
    row.Email = stEmail;
    row.Leistungsart = stLeistungsart;
    row.Verantwortlicher = stVerantwortlicher;
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
