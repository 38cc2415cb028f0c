#include "ztkdb/CAuftrag.h"

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
using detail::Statement;
using detail::StorageKind;
using detail::ValueSlot;

struct AuftragFields {
  int32_t id = 0;
  std::string uid;
  int32_t nr = 0;
  int32_t ansprech_id = 0;
  uint8_t geb_typ = 0;
  int32_t geb_id = 0;
  int32_t auftrag_nehmer_id = 0;
  Date auftrags_datum = NoDate;
  std::string auftrags_zeit;
  int32_t obj_id = 0;
  int32_t obj_typ = sotUndefined;
  std::string auftrag;
  Date erled_bis_datum = NoDate;
  std::string erled_bis_zeit;
  Date wieder_datum = NoDate;
  std::string wieder_zeit;
  bool erledigt = false;
  Date erledigt_datum = NoDate;
  std::string erledigt_zeit;
  uint8_t auftragstyp = 0;
  int32_t obj_aufgabe_id = 0;
  int32_t obj_historie_id = 0;
  int32_t meldung_id = 0;
  uint8_t herkunft = hetUndefined;
  std::string nr_vorsatz;
  std::string bearbeiter;
  std::string tel_bearbeiter;
  std::string auftrag_geber;
  int32_t auf_geb_fa_id = 0;
  std::string auf_geb_kst;
  std::string ort;
  std::string objekt;
  std::string kostenstelle;
  std::string rechn_empf;
  bool gesperrt = false;
  std::string bemerkung;
  std::string auftragstyp_text;
  Currency kosten;
  int32_t so_id = 0;
  std::string leistungsart;
  std::string verantwortlicher;
};

using F = AuftragFields;

const std::vector<ColumnBinding<F>>& LoadOrder() {
  static const std::vector<ColumnBinding<F>> columns = {
      {"lId", &F::id},
      {"stUId", &F::uid},
      {"lNr", &F::nr},
      {"lAuftragNehmerId", &F::auftrag_nehmer_id},
      {"AuftragsDatum", &F::auftrags_datum},
      {"stAuftragsZeit", &F::auftrags_zeit, NullRule::kDefault},
      {"lObjId", &F::obj_id},
      {"byObjTyp", &F::obj_typ},
      {"stAuftrag", &F::auftrag, NullRule::kKeep},
      {"ErledBisDatum", &F::erled_bis_datum},
      {"stErledBisZeit", &F::erled_bis_zeit, NullRule::kDefault},
      {"WiederDatum", &F::wieder_datum},
      {"stWiederZeit", &F::wieder_zeit, NullRule::kDefault},
      {"bErledigt", &F::erledigt},
      {"bGesperrt", &F::gesperrt},
      {"ErledigtDatum", &F::erledigt_datum},
      {"stErledigtZeit", &F::erledigt_zeit, NullRule::kDefault},
      {"lTechObjTerminId", &F::obj_aufgabe_id},
      {"lTageFrist", &F::obj_historie_id},
      {"byAuftragstyp", &F::auftragstyp, NullRule::kDefault},
      {"lAnsprechId", &F::ansprech_id, NullRule::kDefault},
      {"byGebTyp", &F::geb_typ, NullRule::kDefault},
      {"lGebId", &F::geb_id, NullRule::kDefault},
      {"lSoId", &F::so_id, NullRule::kDefault},
      {"byHerkunft", &F::herkunft, NullRule::kDefault},
      {"stNrVorsatz", &F::nr_vorsatz, NullRule::kDefault},
      {"stBearbeiter", &F::bearbeiter, NullRule::kDefault},
      {"stTelBearbeiter", &F::tel_bearbeiter, NullRule::kDefault},
      {"stAuftragGeber", &F::auftrag_geber, NullRule::kDefault},
      {"lAufGebFaId", &F::auf_geb_fa_id},
      {"stAufGebKst", &F::auf_geb_kst, NullRule::kDefault},
      {"stOrt", &F::ort, NullRule::kDefault},
      {"stObjekt", &F::objekt, NullRule::kDefault},
      {"stKostenstelle", &F::kostenstelle, NullRule::kDefault},
      {"stRechnEmpf", &F::rechn_empf, NullRule::kDefault},
      {"stBemerkung", &F::bemerkung, NullRule::kDefault},
      {"stAuftragstyp", &F::auftragstyp_text, NullRule::kDefault},
      {"cuKosten", &F::kosten},
      {"stLeistungsart", &F::leistungsart, NullRule::kDefault},
      {"stVerantwortlicher", &F::verantwortlicher, NullRule::kDefault},
      {"lMeldungId", &F::meldung_id, NullRule::kOptional},
  };
  return columns;
}

// The value placeholders of the INSERT and the UPDATE, in filling order: the
// flags after the due and resubmission dates, before ErledigtDatum.
const std::vector<ValueSlot<F>>& RowValues() {
  static const std::vector<ValueSlot<F>> slots = {
      {"#lNr#", &F::nr},
      {"#lAuftragNehmerId#", &F::auftrag_nehmer_id},
      {"#AuftragsDatum#", &F::auftrags_datum},
      {"#stAuftragsZeit#", &F::auftrags_zeit},
      {"#lObjId#", &F::obj_id},
      {"#byObjTyp#", &F::obj_typ},
      {"#stAuftrag#", &F::auftrag},
      {"#ErledBisDatum#", &F::erled_bis_datum},
      {"#stErledBisZeit#", &F::erled_bis_zeit},
      {"#WiederDatum#", &F::wieder_datum},
      {"#stWiederZeit#", &F::wieder_zeit},
      {"#bErledigt#", &F::erledigt},
      {"#bGesperrt#", &F::gesperrt},
      {"#ErledigtDatum#", &F::erledigt_datum},
      {"#stErledigtZeit#", &F::erledigt_zeit},
      {"#lTechObjTerminId#", &F::obj_aufgabe_id},
      {"#lTageFrist#", &F::obj_historie_id},
      {"#byAuftragstyp#", &F::auftragstyp},
      {"#lAnsprechId#", &F::ansprech_id},
      {"#byGebTyp#", &F::geb_typ},
      {"#lGebId#", &F::geb_id},
      {"#lSoId#", &F::so_id},
      {"#byHerkunft#", &F::herkunft},
      {"#stNrVorsatz#", &F::nr_vorsatz},
      {"#stBearbeiter#", &F::bearbeiter},
      {"#stTelBearbeiter#", &F::tel_bearbeiter},
      {"#stAuftragGeber#", &F::auftrag_geber},
      {"#lAufGebFaId#", &F::auf_geb_fa_id},
      {"#stAufGebKst#", &F::auf_geb_kst},
      {"#stOrt#", &F::ort},
      {"#stObjekt#", &F::objekt},
      {"#stKostenstelle#", &F::kostenstelle},
      {"#stRechnEmpf#", &F::rechn_empf},
      {"#stBemerkung#", &F::bemerkung},
      {"#stAuftragstyp#", &F::auftragstyp_text},
      {"#cuKosten#", &F::kosten},
      {"#stLeistungsart#", &F::leistungsart},
      {"#stVerantwortlicher#", &F::verantwortlicher},
  };
  return slots;
}

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

struct CAuftrag::Impl {
  detail::TableRecord<F> record{kStatements, LoadOrder(), RowValues()};

  // A read by key of the order's own: the first matching row, or a cleared
  // record.
  template <typename Values>
  void ReadBy(const char* member, const char* text, Values&& values) {
    Statement sql = record.Begin(member, text);
    values(sql);
    record.core.ReadBy(member, record.Finish(sql));
  }
};

ZTKDB_RECORD_MEMBERS(CAuftrag)

ZTKDB_VALUE_PROPERTY(CAuftrag, Nr, int32_t, nr)
ZTKDB_VALUE_PROPERTY(CAuftrag, AnsprechId, int32_t, ansprech_id)
ZTKDB_VALUE_PROPERTY(CAuftrag, GebTyp, uint8_t, geb_typ)
ZTKDB_VALUE_PROPERTY(CAuftrag, GebId, int32_t, geb_id)
ZTKDB_VALUE_PROPERTY(CAuftrag, AuftragNehmerId, int32_t, auftrag_nehmer_id)
ZTKDB_VALUE_PROPERTY(CAuftrag, AuftragsDatum, Date, auftrags_datum)
ZTKDB_TEXT_PROPERTY(CAuftrag, AuftragsZeit, auftrags_zeit)
ZTKDB_VALUE_PROPERTY(CAuftrag, ObjId, int32_t, obj_id)
TkObjTypes CAuftrag::ObjTyp() const {
  return static_cast<TkObjTypes>(impl_->record.core.F().obj_typ);
}
void CAuftrag::ObjTyp(TkObjTypes value) { impl_->record.core.F().obj_typ = value; }
ZTKDB_TEXT_PROPERTY(CAuftrag, Auftrag, auftrag)
ZTKDB_VALUE_PROPERTY(CAuftrag, ErledBisDatum, Date, erled_bis_datum)
ZTKDB_TEXT_PROPERTY(CAuftrag, ErledBisZeit, erled_bis_zeit)
ZTKDB_VALUE_PROPERTY(CAuftrag, WiederDatum, Date, wieder_datum)
ZTKDB_TEXT_PROPERTY(CAuftrag, WiederZeit, wieder_zeit)
ZTKDB_VALUE_PROPERTY(CAuftrag, Erledigt, bool, erledigt)
ZTKDB_VALUE_PROPERTY(CAuftrag, ErledigtDatum, Date, erledigt_datum)
ZTKDB_TEXT_PROPERTY(CAuftrag, ErledigtZeit, erledigt_zeit)
ZTKDB_VALUE_PROPERTY(CAuftrag, Auftragstyp, uint8_t, auftragstyp)
ZTKDB_VALUE_PROPERTY(CAuftrag, ObjAufgabeId, int32_t, obj_aufgabe_id)
ZTKDB_VALUE_PROPERTY(CAuftrag, ObjHistorieId, int32_t, obj_historie_id)
ZTKDB_VALUE_PROPERTY(CAuftrag, MeldungId, int32_t, meldung_id)
ZTKDB_VALUE_PROPERTY(CAuftrag, Herkunft, uint8_t, herkunft)
ZTKDB_TEXT_PROPERTY(CAuftrag, NrVorsatz, nr_vorsatz)
ZTKDB_TEXT_PROPERTY(CAuftrag, Bearbeiter, bearbeiter)
ZTKDB_TEXT_PROPERTY(CAuftrag, TelBearbeiter, tel_bearbeiter)
ZTKDB_TEXT_PROPERTY(CAuftrag, AuftragGeber, auftrag_geber)
ZTKDB_VALUE_PROPERTY(CAuftrag, AufGebFaId, int32_t, auf_geb_fa_id)
ZTKDB_TEXT_PROPERTY(CAuftrag, AufGebKst, auf_geb_kst)
ZTKDB_TEXT_PROPERTY(CAuftrag, Ort, ort)
ZTKDB_TEXT_PROPERTY(CAuftrag, Objekt, objekt)
ZTKDB_TEXT_PROPERTY(CAuftrag, Kostenstelle, kostenstelle)
ZTKDB_TEXT_PROPERTY(CAuftrag, RechnEmpf, rechn_empf)
ZTKDB_VALUE_PROPERTY(CAuftrag, Gesperrt, bool, gesperrt)
ZTKDB_TEXT_PROPERTY(CAuftrag, Bemerkung, bemerkung)
ZTKDB_TEXT_PROPERTY(CAuftrag, AuftragstypText, auftragstyp_text)
ZTKDB_VALUE_PROPERTY(CAuftrag, Kosten, Currency, kosten)
ZTKDB_VALUE_PROPERTY(CAuftrag, SoId, int32_t, so_id)
ZTKDB_TEXT_PROPERTY(CAuftrag, Leistungsart, leistungsart)
ZTKDB_TEXT_PROPERTY(CAuftrag, Verantwortlicher, verantwortlicher)

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
    AuftragFields row;
    row.nr = lNr;
    row.ansprech_id = lAnsprechId;
    row.geb_typ = byGebTyp;
    row.geb_id = lGebId;
    row.auftrag_nehmer_id = lAuftragNehmerId;
    row.auftrags_datum = AuftragsDatum;
    row.auftrags_zeit = stAuftragsZeit;
    row.obj_id = lObjId;
    row.obj_typ = eObjTyp;
    row.auftrag = stAuftrag;
    row.erled_bis_datum = ErledBisDatum;
    row.erled_bis_zeit = stErledBisZeit;
    row.wieder_datum = WiederDatum;
    row.wieder_zeit = stWiederZeit;
    row.erledigt = bErledigt;
    row.erledigt_datum = ErledigtDatum;
    row.erledigt_zeit = stErledigtZeit;
    row.auftragstyp = byAuftragstyp;
    row.obj_aufgabe_id = lOvObjAufgabeId;
    row.obj_historie_id = lOvObjHistorieId;
    row.herkunft = byHerkunft;
    row.nr_vorsatz = stNrVorsatz;
    row.bearbeiter = stBearbeiter;
    row.tel_bearbeiter = stTelBearbeiter;
    row.auftrag_geber = stAufGeber;
    row.auf_geb_fa_id = lAufGebFaId;
    row.auf_geb_kst = stAufGebKst;
    row.ort = stOrt;
    row.objekt = stObjekt;
    row.kostenstelle = stKostenstelle;
    row.rechn_empf = stRechnEmpf;
    row.gesperrt = bGesperrt;
    row.bemerkung = stBemerkung;
    row.auftragstyp_text = stAuftragstyp;
    row.kosten = cuKosten;
    row.so_id = lSoId;
    row.leistungsart = stLeistungsart;
    row.verantwortlicher = stVerantwortlicher;
    impl_->record.Create(kMember, row);
  });
}

void CAuftrag::Connect2Msg(int32_t lMsgId) {
  constexpr const char* kMember = "CAuftrag.Connect2Msg";
  detail::Guard(kMember, [&] {
    auto& core = impl_->record.core;
    Statement sql(kLink, core.DbKind(kMember));
    sql.Name("#DetailTabelle#", kLinkTable)
        .Long("#lAuftragId#", core.F().id)
        .Long("#lMeldungId#", lMsgId);
    core.ExecutePlain(kMember, std::move(sql));
    core.F().meldung_id = lMsgId;
    core.Storage(kMember).CloseRecordset();
  });
}

void CAuftrag::DisConnectFromMsg() {
  constexpr const char* kMember = "CAuftrag.DisConnectFromMsg";
  detail::Guard(kMember, [&] {
    auto& core = impl_->record.core;
    Statement sql(kUnlink, core.DbKind(kMember));
    sql.Name("#DetailTabelle#", kLinkTable)
        .Long("#lAuftragId#", core.F().id)
        .Long("#lMeldungId#", core.F().meldung_id);
    core.ExecutePlain(kMember, std::move(sql));
    core.F().meldung_id = 0;
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
