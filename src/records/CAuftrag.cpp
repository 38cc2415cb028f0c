#include "ztkdb/CAuftrag.h"

#include "records/RecordProperties.h"
#include "records/TableRecord.h"
#include "runtime/Guard.h"
#include "runtime/Messages.h"
#include "sql/Literals.h"
#include "sql/Statement.h"

namespace ZTkDb {
namespace {

ZTKDB_RECORD_FIELDS(CAuftrag, ZTKDB_AUFTRAG_COLUMNS)

using detail::Statement;
using detail::StorageKind;

constexpr const char* kClass = "CAuftrag";
constexpr const char* kTable = "T_Auftrag";
constexpr const char* kLinkTable = "T_AuftragMeldung";

constexpr const char* kInsert =
    "INSERT INTO #Tabelle# (stUId, lNr, lAuftragNehmerId, AuftragsDatum, stAuftragsZeit, lObjId, "
    "byObjTyp, stAuftrag, ErledBisDatum, stErledBisZeit, WiederDatum, stWiederZeit, bErledigt, "
    "bGesperrt, ErledigtDatum, stErledigtZeit, lTechObjTerminId, "
    "lTageFrist,byAuftragstyp,lAnsprechId, byGebTyp,lGebId,lSoId, byHerkunft, stNrVorsatz, "
    "stBearbeiter, stTelBearbeiter, stAuftragGeber, lAufGebFaId, stAufGebKst, stOrt, "
    "stLeistungsart, stVerantwortlicher, stObjekt,stKostenstelle, stRechnEmpf, stBemerkung, "
    "stAuftragstyp, cuKosten) VALUES ('#stUId#', #lNr#, #lAuftragNehmerId#, '#AuftragsDatum#', "
    "'#stAuftragsZeit#', #lObjId#, #byObjTyp#, '#stAuftrag#', '#ErledBisDatum#', "
    "'#stErledBisZeit#', '#WiederDatum#', '#stWiederZeit#', #bErledigt#, #bGesperrt#, "
    "'#ErledigtDatum#', '#stErledigtZeit#', #lTechObjTerminId#, #lTageFrist#, #byAuftragstyp#, "
    "#lAnsprechId#, #byGebTyp#, #lGebId#, #lSoId#, "
    "#byHerkunft#,'#stNrVorsatz#','#stBearbeiter#','#stTelBearbeiter#', '#stAuftragGeber#', "
    "#lAufGebFaId#, "
    "'#stAufGebKst#','#stOrt#','#stLeistungsart#','#stVerantwortlicher#','#stObjekt#','#"
    "stKostenstelle#','#stRechnEmpf#','#stBemerkung#', "
    "'#stAuftragstyp#', #cuKosten#)";
constexpr const char* kUpdate =
    "UPDATE #Tabelle# SET #Tabelle#.stUId = '#stNewUId#', #Tabelle#.lNr = #lNr#, "
    "#Tabelle#.lAuftragNehmerId = #lAuftragNehmerId#, #Tabelle#.AuftragsDatum = "
    "'#AuftragsDatum#', #Tabelle#.stAuftragsZeit = '#stAuftragsZeit#', #Tabelle#.lObjId = "
    "#lObjId#, #Tabelle#.byObjTyp = #byObjTyp#, #Tabelle#.stAuftrag = '#stAuftrag#', "
    "#Tabelle#.ErledBisDatum = '#ErledBisDatum#', #Tabelle#.stErledBisZeit = '#stErledBisZeit#', "
    "#Tabelle#.WiederDatum = '#WiederDatum#', #Tabelle#.stWiederZeit = '#stWiederZeit#', "
    "#Tabelle#.bErledigt = #bErledigt#, #Tabelle#.bGesperrt = #bGesperrt#, "
    "#Tabelle#.ErledigtDatum = '#ErledigtDatum#',#Tabelle#.stErledigtZeit = '#stErledigtZeit#', "
    "#Tabelle#.lTechObjTerminId = #lTechObjTerminId#, #Tabelle#.lTageFrist = #lTageFrist#, "
    "#Tabelle#.byAuftragstyp=#byAuftragstyp#, #Tabelle#.lAnsprechId = #lAnsprechId#, "
    "#Tabelle#.byGebTyp=#byGebTyp#, #Tabelle#.lGebId = #lGebId#,#Tabelle#.lSoId = "
    "#lSoId#,#Tabelle#.byHerkunft=#byHerkunft#, #Tabelle#.stNrVorsatz='#stNrVorsatz#', "
    "#Tabelle#.stBearbeiter='#stBearbeiter#', #Tabelle#.stTelBearbeiter='#stTelBearbeiter#', "
    "#Tabelle#.stAuftragGeber='#stAuftragGeber#', #Tabelle#.lAufGebFaId=#lAufGebFaId#, "
    "#Tabelle#.stAufGebKst='#stAufGebKst#', #Tabelle#.stOrt='#stOrt#', "
    "#Tabelle#.stObjekt='#stObjekt#', #Tabelle#.stKostenstelle='#stKostenstelle#', "
    "#Tabelle#.stRechnEmpf='#stRechnEmpf#', #Tabelle#.stBemerkung='#stBemerkung#', "
    "#Tabelle#.stLeistungsart='#stLeistungsart#', "
    "#Tabelle#.stVerantwortlicher='#stVerantwortlicher#', "
    "#Tabelle#.stAuftragstyp='#stAuftragstyp#', #Tabelle#.cuKosten = #cuKosten# WHERE "
    "((#Tabelle#.lId=#lId#) AND (#Tabelle#.stUId='#stUId#'))";
constexpr const char* kSelectById =
    "SELECT #Tabelle#.*, #DetailTabelle#.lMeldungId FROM #Tabelle# LEFT JOIN #DetailTabelle# ON "
    "#Tabelle#.lId = #DetailTabelle#.lAuftragId WHERE #Tabelle#.lId = #lId#";
constexpr const char* kSelectByObjHist =
    "SELECT #Tabelle#.* From #Tabelle# WHERE #Tabelle#.lObjId=#lObjektId#  AND "
    "#Tabelle#.byObjTyp=6 AND #Tabelle#.bErledigt=0 AND #Tabelle#.byHerkunft=3 AND "
    "#Tabelle#.lTageFrist= #lTageFrist#";
constexpr const char* kSelectByNr =
    "SELECT #Tabelle#.*, #DetailTabelle#.lMeldungId FROM #Tabelle# LEFT JOIN #DetailTabelle# ON "
    "#Tabelle#.lId = #DetailTabelle#.lAuftragId WHERE #Tabelle#.lNr = #lNr# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#'";
constexpr const char* kSelectByNrOhneVorsatz =
    "SELECT #Tabelle#.*, #DetailTabelle#.lMeldungId FROM #Tabelle# LEFT JOIN #DetailTabelle# ON "
    "#Tabelle#.lId = #DetailTabelle#.lAuftragId WHERE #Tabelle#.lNr = #lNr#";
constexpr const char* kSelectByUId =
    "SELECT #Tabelle#.*, #DetailTabelle#.lMeldungId FROM #Tabelle# LEFT JOIN #DetailTabelle# ON "
    "#Tabelle#.lId = #DetailTabelle#.lAuftragId WHERE #Tabelle#.stUId = '#stUId#'";
constexpr const char* kLink =
    "INSERT INTO #DetailTabelle# (lAuftragId, lMeldungId) VALUES (#lAuftragId#, #lMeldungId#)";
// The Jet form on every connection kind; the engine layer makes it run.
constexpr const char* kUnlink =
    "DELETE #DetailTabelle#.* FROM #DetailTabelle# WHERE ((#DetailTabelle#.lMeldungId = "
    "#lMeldungId#) AND (#DetailTabelle#.lAuftragId = #lAuftragId#))";
constexpr const char* kLastNr = "SELECT Max(#Tabelle#.lNr) As LastNr FROM #Tabelle#";

const detail::RecordStatements kStatements{
    .class_name = kClass,
    .table = kTable,
    .detail_table = kLinkTable,
    .insert = kInsert,
    .update = kUpdate,
    .select_by_id = kSelectById,
    .select_by_uid = kSelectByUId,
    .delete_jet = detail::kDeleteJetText,
    .delete_other = detail::kDeleteOtherText,
};

}  // namespace

template <>
const detail::RecordStatements& detail::StatementsOf<CAuftrag>() {
  return kStatements;
}

struct CAuftrag::Impl {
  detail::TableRecord<Fields> record{kStatements, Layout()};

  // A read by key of the order's own: the first matching row, or a cleared
  // record.
  template <typename Values>
  void ReadBy(const char* member, const char* text, Values&& values) {
    Statement sql = record.Begin(member, text);
    values(sql);
    record.core.ReadBy(member, record.Finish(sql));
  }
};

ZTKDB_RECORD_MEMBERS(CAuftrag, ZTKDB_AUFTRAG_COLUMNS)

// The retired creation methods: hosts still call them, so each names its
// successor (texts and titles exactly as users have always seen them).
void CAuftrag::CreateNew(int32_t, int32_t, Date, const std::string&, int32_t, TkObjTypes,
                         const std::string&, Date, const std::string&, Date, const std::string&,
                         bool, Date, const std::string&, int32_t, int32_t, uint8_t, int32_t,
                         uint8_t, int32_t, uint8_t, const std::string&, const std::string&,
                         const std::string&, int32_t, const std::string&, const std::string&,
                         const std::string&) {
  detail::Guard("CAuftrag.CreateNew", [] {
    detail::ShowMessageBox("CreateNew2 benutzen.", {}, false, "CAuftrag.CreateNew");
  });
}
void CAuftrag::CreateNew1(int32_t, int32_t, Date, const std::string&, int32_t, TkObjTypes,
                          const std::string&, Date, const std::string&, Date, const std::string&,
                          bool, Date, const std::string&, int32_t, int32_t, uint8_t, int32_t,
                          uint8_t, int32_t, uint8_t, const std::string&, const std::string&,
                          const std::string&, int32_t, const std::string&, const std::string&,
                          const std::string&, const std::string&, const std::string&) {
  detail::Guard("CAuftrag.CreateNew1", [] {
    detail::ShowMessageBox("CreateNew2 benutzen.", {}, false, "CAuftrag.CreateNew1");
  });
}
void CAuftrag::CreateNew2(int32_t, int32_t, Date, const std::string&, int32_t, TkObjTypes,
                          const std::string&, Date, const std::string&, Date, const std::string&,
                          bool, Date, const std::string&, int32_t, int32_t, uint8_t, int32_t,
                          uint8_t, int32_t, uint8_t, const std::string&, const std::string&,
                          const std::string&, const std::string&, int32_t, const std::string&,
                          const std::string&, const std::string&, const std::string&,
                          const std::string&, bool) {
  detail::Guard("CAuftrag.CreateNew2", [] {
    detail::ShowMessageBox("CreateNew3 benutzen!", {}, false, "CAuftrag.CreateNew2");
  });
}
void CAuftrag::CreateNew3(int32_t, int32_t, Date, const std::string&, int32_t, TkObjTypes,
                          const std::string&, Date, const std::string&, Date, const std::string&,
                          bool, Date, const std::string&, int32_t, int32_t, uint8_t, int32_t,
                          uint8_t, int32_t, uint8_t, const std::string&, const std::string&,
                          const std::string&, const std::string&, int32_t, const std::string&,
                          const std::string&, const std::string&, const std::string&,
                          const std::string&, bool, const std::string&) {
  detail::Guard("CAuftrag.CreateNew3", [] {
    detail::ShowMessageBox("CreateNew4 benutzen!", {}, false, "CAuftrag.CreateNew3");
  });
}
void CAuftrag::CreateNew4(int32_t, int32_t, Date, const std::string&, int32_t, TkObjTypes,
                          const std::string&, Date, const std::string&, Date, const std::string&,
                          bool, Date, const std::string&, int32_t, int32_t, uint8_t, int32_t,
                          uint8_t, int32_t, uint8_t, const std::string&, const std::string&,
                          const std::string&, const std::string&, int32_t, const std::string&,
                          const std::string&, const std::string&, const std::string&,
                          const std::string&, bool, const std::string&, const std::string&) {
  detail::Guard("CAuftrag.CreateNew4", [] {
    detail::ShowMessageBox("Createnew5 benutzen!", "Zanto", false, "CAuftrag.CreateNew4");
  });
}
void CAuftrag::CreateNew5(int32_t, int32_t, Date, const std::string&, int32_t, TkObjTypes,
                          const std::string&, Date, const std::string&, Date, const std::string&,
                          bool, Date, const std::string&, int32_t, int32_t, uint8_t, int32_t,
                          uint8_t, int32_t, uint8_t, const std::string&, const std::string&,
                          const std::string&, const std::string&, int32_t, const std::string&,
                          const std::string&, const std::string&, const std::string&,
                          const std::string&, bool, const std::string&, const std::string&,
                          Currency) {
  detail::Guard("CAuftrag.CreateNew5", [] {
    detail::ShowMessageBox("Createnew6 benutzen!", "Zanto", false, "CAuftrag.CreateNew5");
  });
}
void CAuftrag::CreateNew6(int32_t, int32_t, Date, const std::string&, int32_t, TkObjTypes,
                          const std::string&, Date, const std::string&, Date, const std::string&,
                          bool, Date, const std::string&, int32_t, int32_t, uint8_t, int32_t,
                          uint8_t, int32_t, int32_t, uint8_t, const std::string&,
                          const std::string&, const std::string&, const std::string&, int32_t,
                          const std::string&, const std::string&, const std::string&,
                          const std::string&, const std::string&, bool, const std::string&,
                          const std::string&, Currency) {
  detail::Guard("CAuftrag.CreateNew6", [] {
    detail::ShowMessageBox("Createnew7 benutzen!", "Zanto", false, "CAuftrag.CreateNew6");
  });
}

void CAuftrag::CreateNew7(
    int32_t lNr, int32_t lAuftragNehmerId, Date AuftragsDatum, const std::string& stAuftragsZeit,
    int32_t lObjId, TkObjTypes eObjTyp, const std::string& stAuftrag, Date ErledBisDatum,
    const std::string& stErledBisZeit, Date WiederDatum, const std::string& stWiederZeit,
    bool bErledigt, Date ErledigtDatum, const std::string& stErledigtZeit, int32_t lOvObjAufgabeId,
    int32_t lOvObjHistorieId, uint8_t byAuftragstyp, int32_t lAnsprechId, uint8_t byGebTyp,
    int32_t lGebId, int32_t lSoId, uint8_t byHerkunft, const std::string& stNrVorsatz,
    const std::string& stBearbeiter, const std::string& stTelBearbeiter,
    const std::string& stAufGeber, int32_t lAufGebFaId, const std::string& stAufGebKst,
    const std::string& stOrt, const std::string& stObjekt, const std::string& stKostenstelle,
    const std::string& stRechnEmpf, bool bGesperrt, const std::string& stBemerkung,
    const std::string& stAuftragstyp, Currency cuKosten, const std::string& stLeistungsart,
    const std::string& stVerantwortlicher) {
  constexpr const char* kMember = "CAuftrag.CreateNew7";
  detail::Guard(kMember, [&] {
    Fields row;
    row.Nr = lNr;
    row.AnsprechId = lAnsprechId;
    row.GebTyp = byGebTyp;
    row.GebId = lGebId;
    row.AuftragNehmerId = lAuftragNehmerId;
    row.AuftragsDatum = AuftragsDatum;
    row.AuftragsZeit = stAuftragsZeit;
    row.ObjId = lObjId;
    row.ObjTyp = eObjTyp;
    row.Auftrag = stAuftrag;
    row.ErledBisDatum = ErledBisDatum;
    row.ErledBisZeit = stErledBisZeit;
    row.WiederDatum = WiederDatum;
    row.WiederZeit = stWiederZeit;
    row.Erledigt = bErledigt;
    row.ErledigtDatum = ErledigtDatum;
    row.ErledigtZeit = stErledigtZeit;
    row.Auftragstyp = byAuftragstyp;
    row.ObjAufgabeId = lOvObjAufgabeId;
    row.ObjHistorieId = lOvObjHistorieId;
    row.Herkunft = byHerkunft;
    row.NrVorsatz = stNrVorsatz;
    row.Bearbeiter = stBearbeiter;
    row.TelBearbeiter = stTelBearbeiter;
    row.AuftragGeber = stAufGeber;
    row.AufGebFaId = lAufGebFaId;
    row.AufGebKst = stAufGebKst;
    row.Ort = stOrt;
    row.Objekt = stObjekt;
    row.Kostenstelle = stKostenstelle;
    row.RechnEmpf = stRechnEmpf;
    row.Gesperrt = bGesperrt;
    row.Bemerkung = stBemerkung;
    row.AuftragstypText = stAuftragstyp;
    row.Kosten = cuKosten;
    row.SoId = lSoId;
    row.Leistungsart = stLeistungsart;
    row.Verantwortlicher = stVerantwortlicher;
    impl_->record.Create(kMember, row);
  });
}

void CAuftrag::Connect2Msg(int32_t lMsgId) {
  constexpr const char* kMember = "CAuftrag.Connect2Msg";
  detail::Guard(kMember, [&] {
    auto& core = impl_->record.core;
    Statement sql(kLink, core.DbKind(kMember));
    sql.Name("#DetailTabelle#", kLinkTable)
        .Long("#lAuftragId#", core.F().Id)
        .Long("#lMeldungId#", lMsgId);
    core.ExecutePlain(kMember, std::move(sql));
    core.F().MeldungId = lMsgId;
    core.Storage(kMember).CloseRecordset();
  });
}

void CAuftrag::DisConnectFromMsg() {
  constexpr const char* kMember = "CAuftrag.DisConnectFromMsg";
  detail::Guard(kMember, [&] {
    auto& core = impl_->record.core;
    Statement sql(kUnlink, core.DbKind(kMember));
    sql.Name("#DetailTabelle#", kLinkTable)
        .Long("#lAuftragId#", core.F().Id)
        .Long("#lMeldungId#", core.F().MeldungId);
    core.ExecutePlain(kMember, std::move(sql));
    core.F().MeldungId = 0;
    core.Storage(kMember).CloseRecordset();
  });
}

void CAuftrag::ReadByObjHist(int32_t lObjId, int32_t lHistId) {
  constexpr const char* kMember = "CAuftrag.ReadByObjHist";
  detail::Guard(kMember, [&] {
    impl_->ReadBy(kMember, kSelectByObjHist, [&](Statement& sql) {
      sql.Long("#lObjektId#", lObjId).Long("#lTageFrist#", lHistId);
    });
  });
}

void CAuftrag::ReadByNr(int32_t lNr, const std::string& stVorsatz) {
  constexpr const char* kMember = "CAuftrag.ReadByNr";
  detail::Guard(kMember, [&] {
    // The prefix goes in as given; the engine's one-statement rule is what
    // keeps a hostile prefix from running anything else.
    impl_->ReadBy(kMember, kSelectByNr,
                  [&](Statement& sql) { sql.Long("#lNr#", lNr).Raw("#stNrVorsatz#", stVorsatz); });
  });
}

void CAuftrag::ReadByNrOhneVorsatz(int32_t lNr) {
  constexpr const char* kMember = "CAuftrag.ReadByNrOhneVorsatz";
  detail::Guard(kMember, [&] {
    impl_->ReadBy(kMember, kSelectByNrOhneVorsatz, [&](Statement& sql) { sql.Long("#lNr#", lNr); });
  });
}

int32_t CAuftrag::GetLastNr() {
  constexpr const char* kMember = "CAuftrag.GetLastNr";
  return detail::Guard(kMember, [&] {
    auto& record = impl_->record;
    return record.LastNumber(kMember, record.Finish(record.Begin(kMember, kLastNr)));
  });
}

}  // namespace ZTkDb
