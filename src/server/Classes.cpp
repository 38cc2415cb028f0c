#include "server/Classes.h"

#include "ztkdb/ITestFixture.h"
#include "ztkdb/ZTkDb.h"

// The dispatch tables of the public classes, in the order of their
// interfaces. Each entry names a C++ member by pointer, so the tables
// cannot name what the classes do not have; a test compares them with the
// public headers the other way round.
namespace ZTkDb::server {
namespace {

// Creatable classes are made through the class factory.
template <typename T>
std::function<std::unique_ptr<Object>()> Factory() {
  return [] { return Box(std::make_unique<T>()); };
}

// The cursor members every list shares.
template <typename O>
std::vector<Member> CursorMembers() {
  return {Get<O>("AbsolutePosition", &O::AbsolutePosition),
          Put<O>("AbsolutePosition", &O::AbsolutePosition),
          Get<O>("Count", &O::Count),
          Method<O>("ItemByRsPos", &O::ItemByRsPos, {Variant()}, Kind::kGet),
          Method<O>("ItemByRecId", &O::ItemByRecId, {}, Kind::kGet),
          Get<O>("BOF", &O::Bof),
          Get<O>("EOF", &O::Eof),
          Get<O>("RsClone", &O::RsClone),
          Method<O>("ConnectStorage", &O::ConnectStorage),
          Method<O>("Requery", &O::Requery),
          Method<O>("MoveFirst", &O::MoveFirst),
          Method<O>("MoveLast", &O::MoveLast),
          Method<O>("MoveNext", &O::MoveNext),
          Method<O>("MovePrevious", &O::MovePrevious)};
}

// Members of a list: the cursor members, then its own.
std::vector<Member> Join(std::vector<Member> a, std::vector<Member> b) {
  a.insert(a.end(), std::make_move_iterator(b.begin()), std::make_move_iterator(b.end()));
  return a;
}

}  // namespace

template <>
const ClassInfo& ClassOf<CTkDb>() {
  static const ClassInfo info{
      "CTkDb",
      true,
      Factory<CTkDb>(),
      {Get<CTkDb>("Ws", &CTkDb::Ws), Get<CTkDb>("DbPath", &CTkDb::DbPath),
       Method<CTkDb>("OpenOdbcDb", &CTkDb::OpenOdbcDb),
       Method<CTkDb>("OpenJetDb", &CTkDb::OpenJetDb), Method<CTkDb>("CloseDb", &CTkDb::CloseDb)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CMsgOrderDokument>() {
  static const ClassInfo info{
      "CMsgOrderDokument",
      true,
      Factory<CMsgOrderDokument>(),
      {Get<CMsgOrderDokument>("Id", &CMsgOrderDokument::Id),
       Get<CMsgOrderDokument>("UId", &CMsgOrderDokument::UId),
       Get<CMsgOrderDokument>("MsgId", &CMsgOrderDokument::MsgId),
       Put<CMsgOrderDokument>("MsgId", &CMsgOrderDokument::MsgId),
       Get<CMsgOrderDokument>("OrderId", &CMsgOrderDokument::OrderId),
       Put<CMsgOrderDokument>("OrderId", &CMsgOrderDokument::OrderId),
       Get<CMsgOrderDokument>("Pfad", &CMsgOrderDokument::Pfad),
       Put<CMsgOrderDokument>("Pfad", &CMsgOrderDokument::Pfad),
       Get<CMsgOrderDokument>("Datei", &CMsgOrderDokument::Datei),
       Put<CMsgOrderDokument>("Datei", &CMsgOrderDokument::Datei),
       Method<CMsgOrderDokument>("ConnectStorage", &CMsgOrderDokument::ConnectStorage),
       Method<CMsgOrderDokument>("CreateNew", &CMsgOrderDokument::CreateNew),
       Method<CMsgOrderDokument>("ReadById", &CMsgOrderDokument::ReadById),
       Method<CMsgOrderDokument>("Update", &CMsgOrderDokument::Update),
       Method<CMsgOrderDokument>("Delete", &CMsgOrderDokument::Delete)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CAuftrag>() {
  static const ClassInfo info{
      "CAuftrag",
      true,
      Factory<CAuftrag>(),
      {Get<CAuftrag>("Id", &CAuftrag::Id),
       Get<CAuftrag>("UId", &CAuftrag::UId),
       Get<CAuftrag>("Nr", &CAuftrag::Nr),
       Put<CAuftrag>("Nr", &CAuftrag::Nr),
       Get<CAuftrag>("AnsprechId", &CAuftrag::AnsprechId),
       Put<CAuftrag>("AnsprechId", &CAuftrag::AnsprechId),
       Get<CAuftrag>("GebTyp", &CAuftrag::GebTyp),
       Put<CAuftrag>("GebTyp", &CAuftrag::GebTyp),
       Get<CAuftrag>("GebId", &CAuftrag::GebId),
       Put<CAuftrag>("GebId", &CAuftrag::GebId),
       Get<CAuftrag>("AuftragNehmerId", &CAuftrag::AuftragNehmerId),
       Put<CAuftrag>("AuftragNehmerId", &CAuftrag::AuftragNehmerId),
       Get<CAuftrag>("AuftragsDatum", &CAuftrag::AuftragsDatum),
       Put<CAuftrag>("AuftragsDatum", &CAuftrag::AuftragsDatum),
       Get<CAuftrag>("AuftragsZeit", &CAuftrag::AuftragsZeit),
       Put<CAuftrag>("AuftragsZeit", &CAuftrag::AuftragsZeit),
       Get<CAuftrag>("ObjId", &CAuftrag::ObjId),
       Put<CAuftrag>("ObjId", &CAuftrag::ObjId),
       Get<CAuftrag>("ObjTyp", &CAuftrag::ObjTyp),
       Put<CAuftrag>("ObjTyp", &CAuftrag::ObjTyp),
       Get<CAuftrag>("Auftrag", &CAuftrag::Auftrag),
       Put<CAuftrag>("Auftrag", &CAuftrag::Auftrag),
       Get<CAuftrag>("ErledBisDatum", &CAuftrag::ErledBisDatum),
       Put<CAuftrag>("ErledBisDatum", &CAuftrag::ErledBisDatum),
       Get<CAuftrag>("ErledBisZeit", &CAuftrag::ErledBisZeit),
       Put<CAuftrag>("ErledBisZeit", &CAuftrag::ErledBisZeit),
       Get<CAuftrag>("WiederDatum", &CAuftrag::WiederDatum),
       Put<CAuftrag>("WiederDatum", &CAuftrag::WiederDatum),
       Get<CAuftrag>("WiederZeit", &CAuftrag::WiederZeit),
       Put<CAuftrag>("WiederZeit", &CAuftrag::WiederZeit),
       Get<CAuftrag>("Erledigt", &CAuftrag::Erledigt),
       Put<CAuftrag>("Erledigt", &CAuftrag::Erledigt),
       Get<CAuftrag>("ErledigtDatum", &CAuftrag::ErledigtDatum),
       Put<CAuftrag>("ErledigtDatum", &CAuftrag::ErledigtDatum),
       Get<CAuftrag>("ErledigtZeit", &CAuftrag::ErledigtZeit),
       Put<CAuftrag>("ErledigtZeit", &CAuftrag::ErledigtZeit),
       Get<CAuftrag>("Auftragstyp", &CAuftrag::Auftragstyp),
       Put<CAuftrag>("Auftragstyp", &CAuftrag::Auftragstyp),
       Get<CAuftrag>("ObjAufgabeId", &CAuftrag::ObjAufgabeId),
       Put<CAuftrag>("ObjAufgabeId", &CAuftrag::ObjAufgabeId),
       Get<CAuftrag>("ObjHistorieId", &CAuftrag::ObjHistorieId),
       Put<CAuftrag>("ObjHistorieId", &CAuftrag::ObjHistorieId),
       Get<CAuftrag>("MeldungId", &CAuftrag::MeldungId),
       Put<CAuftrag>("MeldungId", &CAuftrag::MeldungId),
       Get<CAuftrag>("Herkunft", &CAuftrag::Herkunft),
       Put<CAuftrag>("Herkunft", &CAuftrag::Herkunft),
       Get<CAuftrag>("NrVorsatz", &CAuftrag::NrVorsatz),
       Put<CAuftrag>("NrVorsatz", &CAuftrag::NrVorsatz),
       Get<CAuftrag>("Bearbeiter", &CAuftrag::Bearbeiter),
       Put<CAuftrag>("Bearbeiter", &CAuftrag::Bearbeiter),
       Get<CAuftrag>("TelBearbeiter", &CAuftrag::TelBearbeiter),
       Put<CAuftrag>("TelBearbeiter", &CAuftrag::TelBearbeiter),
       Get<CAuftrag>("AuftragGeber", &CAuftrag::AuftragGeber),
       Put<CAuftrag>("AuftragGeber", &CAuftrag::AuftragGeber),
       Get<CAuftrag>("AufGebFaId", &CAuftrag::AufGebFaId),
       Put<CAuftrag>("AufGebFaId", &CAuftrag::AufGebFaId),
       Get<CAuftrag>("AufGebKst", &CAuftrag::AufGebKst),
       Put<CAuftrag>("AufGebKst", &CAuftrag::AufGebKst),
       Get<CAuftrag>("Ort", &CAuftrag::Ort),
       Put<CAuftrag>("Ort", &CAuftrag::Ort),
       Get<CAuftrag>("Objekt", &CAuftrag::Objekt),
       Put<CAuftrag>("Objekt", &CAuftrag::Objekt),
       Get<CAuftrag>("Kostenstelle", &CAuftrag::Kostenstelle),
       Put<CAuftrag>("Kostenstelle", &CAuftrag::Kostenstelle),
       Get<CAuftrag>("RechnEmpf", &CAuftrag::RechnEmpf),
       Put<CAuftrag>("RechnEmpf", &CAuftrag::RechnEmpf),
       Get<CAuftrag>("Gesperrt", &CAuftrag::Gesperrt),
       Put<CAuftrag>("Gesperrt", &CAuftrag::Gesperrt),
       Method<CAuftrag>("ConnectStorage", &CAuftrag::ConnectStorage),
       Method<CAuftrag>("CreateNew", &CAuftrag::CreateNew),
       Method<CAuftrag>("CreateNew1", &CAuftrag::CreateNew1),
       Method<CAuftrag>("CreateNew2", &CAuftrag::CreateNew2),
       Method<CAuftrag>("Connect2Msg", &CAuftrag::Connect2Msg),
       Method<CAuftrag>("DisConnectFromMsg", &CAuftrag::DisConnectFromMsg),
       Method<CAuftrag>("ReadById", &CAuftrag::ReadById),
       Method<CAuftrag>("ReadByObjHist", &CAuftrag::ReadByObjHist),
       Method<CAuftrag>("ReadByNr", &CAuftrag::ReadByNr),
       Method<CAuftrag>("ReadByNrOhneVorsatz", &CAuftrag::ReadByNrOhneVorsatz),
       Method<CAuftrag>("Update", &CAuftrag::Update),
       Method<CAuftrag>("Delete", &CAuftrag::Delete),
       Method<CAuftrag>("GetLastNr", &CAuftrag::GetLastNr),
       Get<CAuftrag>("Bemerkung", &CAuftrag::Bemerkung),
       Put<CAuftrag>("Bemerkung", &CAuftrag::Bemerkung),
       Method<CAuftrag>("CreateNew3", &CAuftrag::CreateNew3),
       Get<CAuftrag>("AuftragstypText", &CAuftrag::AuftragstypText),
       Put<CAuftrag>("AuftragstypText", &CAuftrag::AuftragstypText),
       Method<CAuftrag>("CreateNew4", &CAuftrag::CreateNew4),
       Get<CAuftrag>("Kosten", &CAuftrag::Kosten),
       Put<CAuftrag>("Kosten", &CAuftrag::Kosten),
       Method<CAuftrag>("CreateNew5", &CAuftrag::CreateNew5),
       Get<CAuftrag>("SoId", &CAuftrag::SoId),
       Put<CAuftrag>("SoId", &CAuftrag::SoId),
       Method<CAuftrag>("CreateNew6", &CAuftrag::CreateNew6),
       Get<CAuftrag>("Leistungsart", &CAuftrag::Leistungsart),
       Put<CAuftrag>("Leistungsart", &CAuftrag::Leistungsart),
       Get<CAuftrag>("Verantwortlicher", &CAuftrag::Verantwortlicher),
       Put<CAuftrag>("Verantwortlicher", &CAuftrag::Verantwortlicher),
       Method<CAuftrag>("CreateNew7", &CAuftrag::CreateNew7)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CMeldung>() {
  static const ClassInfo info{"CMeldung",
                              true,
                              Factory<CMeldung>(),
                              {Get<CMeldung>("Id", &CMeldung::Id),
                               Get<CMeldung>("UId", &CMeldung::UId),
                               Get<CMeldung>("Nr", &CMeldung::Nr),
                               Put<CMeldung>("Nr", &CMeldung::Nr),
                               Get<CMeldung>("Melder", &CMeldung::Melder),
                               Put<CMeldung>("Melder", &CMeldung::Melder),
                               Get<CMeldung>("MelderFaId", &CMeldung::MelderFaId),
                               Put<CMeldung>("MelderFaId", &CMeldung::MelderFaId),
                               Get<CMeldung>("MelderTel", &CMeldung::MelderTel),
                               Put<CMeldung>("MelderTel", &CMeldung::MelderTel),
                               Get<CMeldung>("MeldeDatum", &CMeldung::MeldeDatum),
                               Put<CMeldung>("MeldeDatum", &CMeldung::MeldeDatum),
                               Get<CMeldung>("MeldeZeit", &CMeldung::MeldeZeit),
                               Put<CMeldung>("MeldeZeit", &CMeldung::MeldeZeit),
                               Get<CMeldung>("ObjId", &CMeldung::ObjId),
                               Put<CMeldung>("ObjId", &CMeldung::ObjId),
                               Get<CMeldung>("ObjTyp", &CMeldung::ObjTyp),
                               Put<CMeldung>("ObjTyp", &CMeldung::ObjTyp),
                               Get<CMeldung>("Meldung", &CMeldung::Meldung),
                               Put<CMeldung>("Meldung", &CMeldung::Meldung),
                               Get<CMeldung>("ErledBisDatum", &CMeldung::ErledBisDatum),
                               Put<CMeldung>("ErledBisDatum", &CMeldung::ErledBisDatum),
                               Get<CMeldung>("ErledBisZeit", &CMeldung::ErledBisZeit),
                               Put<CMeldung>("ErledBisZeit", &CMeldung::ErledBisZeit),
                               Get<CMeldung>("WiederDatum", &CMeldung::WiederDatum),
                               Put<CMeldung>("WiederDatum", &CMeldung::WiederDatum),
                               Get<CMeldung>("WiederZeit", &CMeldung::WiederZeit),
                               Put<CMeldung>("WiederZeit", &CMeldung::WiederZeit),
                               Get<CMeldung>("ErledigtDatum", &CMeldung::ErledigtDatum),
                               Get<CMeldung>("Erledigt", &CMeldung::Erledigt),
                               Put<CMeldung>("Erledigt", &CMeldung::Erledigt),
                               Put<CMeldung>("ErledigtDatum", &CMeldung::ErledigtDatum),
                               Get<CMeldung>("ErledigtZeit", &CMeldung::ErledigtZeit),
                               Put<CMeldung>("ErledigtZeit", &CMeldung::ErledigtZeit),
                               Get<CMeldung>("GebTyp", &CMeldung::GebTyp),
                               Put<CMeldung>("GebTyp", &CMeldung::GebTyp),
                               Get<CMeldung>("GebId", &CMeldung::GebId),
                               Put<CMeldung>("GebId", &CMeldung::GebId),
                               Get<CMeldung>("Herkunft", &CMeldung::Herkunft),
                               Put<CMeldung>("Herkunft", &CMeldung::Herkunft),
                               Get<CMeldung>("NrVorsatz", &CMeldung::NrVorsatz),
                               Put<CMeldung>("NrVorsatz", &CMeldung::NrVorsatz),
                               Get<CMeldung>("Bearbeiter", &CMeldung::Bearbeiter),
                               Put<CMeldung>("Bearbeiter", &CMeldung::Bearbeiter),
                               Get<CMeldung>("TelBearbeiter", &CMeldung::TelBearbeiter),
                               Put<CMeldung>("TelBearbeiter", &CMeldung::TelBearbeiter),
                               Get<CMeldung>("Ort", &CMeldung::Ort),
                               Put<CMeldung>("Ort", &CMeldung::Ort),
                               Get<CMeldung>("Objekt", &CMeldung::Objekt),
                               Put<CMeldung>("Objekt", &CMeldung::Objekt),
                               Method<CMeldung>("ConnectStorage", &CMeldung::ConnectStorage),
                               Method<CMeldung>("CreateNew", &CMeldung::CreateNew),
                               Method<CMeldung>("ReadById", &CMeldung::ReadById),
                               Method<CMeldung>("ReadByNr", &CMeldung::ReadByNr),
                               Method<CMeldung>("Update", &CMeldung::Update),
                               Method<CMeldung>("Delete", &CMeldung::Delete),
                               Method<CMeldung>("GetLastNr", &CMeldung::GetLastNr),
                               Get<CMeldung>("Bemerkung", &CMeldung::Bemerkung),
                               Put<CMeldung>("Bemerkung", &CMeldung::Bemerkung),
                               Method<CMeldung>("CreateNew1", &CMeldung::CreateNew1),
                               Get<CMeldung>("Email", &CMeldung::Email),
                               Put<CMeldung>("Email", &CMeldung::Email),
                               Method<CMeldung>("CreateNew2", &CMeldung::CreateNew2),
                               Method<CMeldung>("GetLastNrVorsatz", &CMeldung::GetLastNrVorsatz),
                               Get<CMeldung>("SoId", &CMeldung::SoId),
                               Put<CMeldung>("SoId", &CMeldung::SoId),
                               Method<CMeldung>("CreateNew3", &CMeldung::CreateNew3),
                               Get<CMeldung>("Leistungsart", &CMeldung::Leistungsart),
                               Put<CMeldung>("Leistungsart", &CMeldung::Leistungsart),
                               Get<CMeldung>("Verantwortlicher", &CMeldung::Verantwortlicher),
                               Put<CMeldung>("Verantwortlicher", &CMeldung::Verantwortlicher),
                               Method<CMeldung>("CreateNew4", &CMeldung::CreateNew4)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CLeistung>() {
  static const ClassInfo info{"CLeistung",
                              true,
                              Factory<CLeistung>(),
                              {Get<CLeistung>("Id", &CLeistung::Id),
                               Get<CLeistung>("UId", &CLeistung::UId),
                               Get<CLeistung>("AuftragId", &CLeistung::AuftragId),
                               Put<CLeistung>("AuftragId", &CLeistung::AuftragId),
                               Get<CLeistung>("AuftragNehmerId", &CLeistung::AuftragNehmerId),
                               Put<CLeistung>("AuftragNehmerId", &CLeistung::AuftragNehmerId),
                               Get<CLeistung>("AusfDatum", &CLeistung::AusfDatum),
                               Put<CLeistung>("AusfDatum", &CLeistung::AusfDatum),
                               Get<CLeistung>("AusfZeit", &CLeistung::AusfZeit),
                               Put<CLeistung>("AusfZeit", &CLeistung::AusfZeit),
                               Get<CLeistung>("LeistArtId", &CLeistung::LeistArtId),
                               Put<CLeistung>("LeistArtId", &CLeistung::LeistArtId),
                               Get<CLeistung>("Stunden", &CLeistung::Stunden),
                               Put<CLeistung>("Stunden", &CLeistung::Stunden),
                               Get<CLeistung>("PreisProStd", &CLeistung::PreisProStd),
                               Put<CLeistung>("PreisProStd", &CLeistung::PreisProStd),
                               Get<CLeistung>("Faktor", &CLeistung::Faktor),
                               Put<CLeistung>("Faktor", &CLeistung::Faktor),
                               Get<CLeistung>("Weg", &CLeistung::Weg),
                               Put<CLeistung>("Weg", &CLeistung::Weg),
                               Get<CLeistung>("PreisProKm", &CLeistung::PreisProKm),
                               Put<CLeistung>("PreisProKm", &CLeistung::PreisProKm),
                               Get<CLeistung>("Bemerkung", &CLeistung::Bemerkung),
                               Put<CLeistung>("Bemerkung", &CLeistung::Bemerkung),
                               Get<CLeistung>("RechnEmpfId", &CLeistung::RechnEmpfId),
                               Put<CLeistung>("RechnEmpfId", &CLeistung::RechnEmpfId),
                               Get<CLeistung>("Kostenart", &CLeistung::Kostenart),
                               Put<CLeistung>("Kostenart", &CLeistung::Kostenart),
                               Get<CLeistung>("Kostenstelle", &CLeistung::Kostenstelle),
                               Put<CLeistung>("Kostenstelle", &CLeistung::Kostenstelle),
                               Get<CLeistung>("Auftragnehmer", &CLeistung::Auftragnehmer),
                               Put<CLeistung>("Auftragnehmer", &CLeistung::Auftragnehmer),
                               Get<CLeistung>("Ansprech", &CLeistung::Ansprech),
                               Put<CLeistung>("Ansprech", &CLeistung::Ansprech),
                               Get<CLeistung>("Leistart", &CLeistung::Leistart),
                               Put<CLeistung>("Leistart", &CLeistung::Leistart),
                               Get<CLeistung>("RechnEmpf", &CLeistung::RechnEmpf),
                               Put<CLeistung>("RechnEmpf", &CLeistung::RechnEmpf),
                               Get<CLeistung>("AnsprechId", &CLeistung::AnsprechId),
                               Put<CLeistung>("AnsprechId", &CLeistung::AnsprechId),
                               Get<CLeistung>("Fremdleistung", &CLeistung::Fremdleistung),
                               Put<CLeistung>("Fremdleistung", &CLeistung::Fremdleistung),
                               Method<CLeistung>("ConnectStorage", &CLeistung::ConnectStorage),
                               Method<CLeistung>("CreateNew", &CLeistung::CreateNew),
                               Method<CLeistung>("CreateNew1", &CLeistung::CreateNew1),
                               Method<CLeistung>("ReadById", &CLeistung::ReadById),
                               Method<CLeistung>("Update", &CLeistung::Update),
                               Method<CLeistung>("Delete", &CLeistung::Delete)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CMaterial>() {
  static const ClassInfo info{"CMaterial",
                              true,
                              Factory<CMaterial>(),
                              {Get<CMaterial>("Id", &CMaterial::Id),
                               Get<CMaterial>("UId", &CMaterial::UId),
                               Get<CMaterial>("AuftragId", &CMaterial::AuftragId),
                               Put<CMaterial>("AuftragId", &CMaterial::AuftragId),
                               Get<CMaterial>("Bezeichnung", &CMaterial::Bezeichnung),
                               Put<CMaterial>("Bezeichnung", &CMaterial::Bezeichnung),
                               Get<CMaterial>("Menge", &CMaterial::Menge),
                               Put<CMaterial>("Menge", &CMaterial::Menge),
                               Get<CMaterial>("PreisProEinheit", &CMaterial::PreisProEinheit),
                               Put<CMaterial>("PreisProEinheit", &CMaterial::PreisProEinheit),
                               Get<CMaterial>("Faktor", &CMaterial::Faktor),
                               Put<CMaterial>("Faktor", &CMaterial::Faktor),
                               Get<CMaterial>("RechnEmpfId", &CMaterial::RechnEmpfId),
                               Put<CMaterial>("RechnEmpfId", &CMaterial::RechnEmpfId),
                               Get<CMaterial>("Kostenart", &CMaterial::Kostenart),
                               Put<CMaterial>("Kostenart", &CMaterial::Kostenart),
                               Get<CMaterial>("Kostenstelle", &CMaterial::Kostenstelle),
                               Put<CMaterial>("Kostenstelle", &CMaterial::Kostenstelle),
                               Get<CMaterial>("RechnEmpf", &CMaterial::RechnEmpf),
                               Put<CMaterial>("RechnEmpf", &CMaterial::RechnEmpf),
                               Get<CMaterial>("Einheit", &CMaterial::Einheit),
                               Put<CMaterial>("Einheit", &CMaterial::Einheit),
                               Get<CMaterial>("Fremdleistung", &CMaterial::Fremdleistung),
                               Put<CMaterial>("Fremdleistung", &CMaterial::Fremdleistung),
                               Method<CMaterial>("ConnectStorage", &CMaterial::ConnectStorage),
                               Method<CMaterial>("CreateNew", &CMaterial::CreateNew),
                               Method<CMaterial>("CreateNew1", &CMaterial::CreateNew1),
                               Method<CMaterial>("CreateNew2", &CMaterial::CreateNew2),
                               Method<CMaterial>("ReadById", &CMaterial::ReadById),
                               Method<CMaterial>("Update", &CMaterial::Update),
                               Method<CMaterial>("Delete", &CMaterial::Delete),
                               Get<CMaterial>("MatKlasse", &CMaterial::MatKlasse),
                               Put<CMaterial>("MatKlasse", &CMaterial::MatKlasse),
                               Method<CMaterial>("CreateNew3", &CMaterial::CreateNew3)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CAuftragListe>() {
  static const ClassInfo info{
      "CAuftragListe", true, Factory<CAuftragListe>(),
      Join(
          CursorMembers<CAuftragListe>(),
          {Get<CAuftragListe>("SortOrder", &CAuftragListe::SortOrder),
           Method<CAuftragListe>("ReadAll", &CAuftragListe::ReadAll, {Variant(int32_t(0))}),
           Method<CAuftragListe>("ReadAllWithAuftragstyp", &CAuftragListe::ReadAllWithAuftragstyp),
           Method<CAuftragListe>("ReadAllInZeitraum", &CAuftragListe::ReadAllInZeitraum),
           Method<CAuftragListe>("ReadAllInZeitNoMsg", &CAuftragListe::ReadAllInZeitNoMsg),
           Method<CAuftragListe>("ReadByMsgId", &CAuftragListe::ReadByMsgId, {Variant(int32_t(0))}),
           Method<CAuftragListe>("ReadByMsgIdStatus", &CAuftragListe::ReadByMsgIdStatus),
           Method<CAuftragListe>("ReadByDone", &CAuftragListe::ReadByDone,
                                 {Variant(int32_t(0)), Variant(int16_t(30))}),
           Method<CAuftragListe>("ReadWithMsgConn", &CAuftragListe::ReadWithMsgConn,
                                 {Variant(true), Variant(int32_t(0))}),
           Method<CAuftragListe>("ReadByObj", &CAuftragListe::ReadByObj),
           Method<CAuftragListe>("ReadByNr", &CAuftragListe::ReadByNr),
           Method<CAuftragListe>("ReadByDoneAndSo", &CAuftragListe::ReadByDoneAndSo,
                                 {Variant(int32_t(0)), Variant(int16_t(30))}),
           Method<CAuftragListe>("ReadAllBySo", &CAuftragListe::ReadAllBySo),
           Method<CAuftragListe>("ReadByDoneAndSoListe", &CAuftragListe::ReadByDoneAndSoListe,
                                 {Variant(int32_t(0)), Variant(int16_t(30))}),
           Method<CAuftragListe>("ReadByObjAndAufg", &CAuftragListe::ReadByObjAndAufg),
           Method<CAuftragListe>("ReadByDoneAndVorsatz", &CAuftragListe::ReadByDoneAndVorsatz,
                                 {Variant(int32_t(0)), Variant(int16_t(30))}),
           Method<CAuftragListe>("ReadByDoneAndSoAndVorsatz",
                                 &CAuftragListe::ReadByDoneAndSoAndVorsatz,
                                 {Variant(int32_t(0)), Variant(int16_t(30))}),
           Method<CAuftragListe>("ReadByDoneAndSoListeAndVorsatz",
                                 &CAuftragListe::ReadByDoneAndSoListeAndVorsatz,
                                 {Variant(int32_t(0)), Variant(int16_t(30))})})};
  return info;
}

template <>
const ClassInfo& ClassOf<CMeldungListe>() {
  static const ClassInfo info{
      "CMeldungListe", true, Factory<CMeldungListe>(),
      Join(CursorMembers<CMeldungListe>(),
           {Get<CMeldungListe>("SortOrder", &CMeldungListe::SortOrder),
            Method<CMeldungListe>("ReadAll", &CMeldungListe::ReadAll, {Variant(int32_t(0))}),
            Method<CMeldungListe>("ReadAllInZeitraum", &CMeldungListe::ReadAllInZeitraum),
            Method<CMeldungListe>("ReadAllInZeitAndOpen", &CMeldungListe::ReadAllInZeitAndOpen),
            Method<CMeldungListe>("ReadByDone", &CMeldungListe::ReadByDone,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadByObj", &CMeldungListe::ReadByObj),
            Method<CMeldungListe>("ReadByDoneAndSo", &CMeldungListe::ReadByDoneAndSo,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadAllBySo", &CMeldungListe::ReadAllBySo),
            Method<CMeldungListe>("ReadByDoneAndSoListe", &CMeldungListe::ReadByDoneAndSoListe,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadByDoneAndVorsatz", &CMeldungListe::ReadByDoneAndVorsatz,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadByDoneAndSoAndVorsatz",
                                  &CMeldungListe::ReadByDoneAndSoAndVorsatz,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadByDoneAndSoListeAndVorsatz",
                                  &CMeldungListe::ReadByDoneAndSoListeAndVorsatz,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadAllInZeitraumDatumZeit",
                                  &CMeldungListe::ReadAllInZeitraumDatumZeit)})};
  return info;
}

template <>
const ClassInfo& ClassOf<CLeistungListe>() {
  static const ClassInfo info{
      "CLeistungListe", true, Factory<CLeistungListe>(),
      Join(CursorMembers<CLeistungListe>(),
           {Method<CLeistungListe>("ReadAll", &CLeistungListe::ReadAll),
            Method<CLeistungListe>("ReadByOrderId", &CLeistungListe::ReadByOrderId),
            Method<CLeistungListe>("ReadAllRechEmpfNotEmpty",
                                   &CLeistungListe::ReadAllRechEmpfNotEmpty)})};
  return info;
}

template <>
const ClassInfo& ClassOf<CMaterialListe>() {
  static const ClassInfo info{
      "CMaterialListe", true, Factory<CMaterialListe>(),
      Join(CursorMembers<CMaterialListe>(),
           {Method<CMaterialListe>("ReadAll", &CMaterialListe::ReadAll),
            Method<CMaterialListe>("ReadByOrderId", &CMaterialListe::ReadByOrderId),
            Method<CMaterialListe>("ReadMaterialByOrderId", &CMaterialListe::ReadMaterialByOrderId),
            Method<CMaterialListe>("ReadFremdByOrderId", &CMaterialListe::ReadFremdByOrderId)})};
  return info;
}

template <>
const ClassInfo& ClassOf<CMsgOrderDokumentListe>() {
  static const ClassInfo info{
      "CMsgOrderDokumentListe", true, Factory<CMsgOrderDokumentListe>(),
      Join(CursorMembers<CMsgOrderDokumentListe>(),
           {Method<CMsgOrderDokumentListe>("ReadAll", &CMsgOrderDokumentListe::ReadAll),
            Method<CMsgOrderDokumentListe>("ReadByOrderId", &CMsgOrderDokumentListe::ReadByOrderId),
            Method<CMsgOrderDokumentListe>("ReadByMsgId", &CMsgOrderDokumentListe::ReadByMsgId)})};
  return info;
}

template <>
const ClassInfo& ClassOf<ITestFixture>() {
  static const ClassInfo info{"ITestFixture", true, Factory<ITestFixture>(), {}};
  return info;
}

// Handed out, never created by name.
template <>
const ClassInfo& ClassOf<Workspace>() {
  static const ClassInfo info{"Workspace",
                              false,
                              nullptr,
                              {Get<Workspace>("Name", &Workspace::Name),
                               Method<Workspace>("BeginTrans", &Workspace::BeginTrans),
                               Method<Workspace>("CommitTrans", &Workspace::CommitTrans),
                               Method<Workspace>("Rollback", &Workspace::Rollback)}};
  return info;
}

template <>
const ClassInfo& ClassOf<Recordset>() {
  using O = Recordset;
  static const ClassInfo info{
      "Recordset",
      false,
      nullptr,
      {Get<O>("RecordCount", &O::RecordCount), Get<O>("AbsolutePosition", &O::AbsolutePosition),
       Put<O>("AbsolutePosition", &O::AbsolutePosition), Get<O>("BOF", &O::Bof),
       Get<O>("EOF", &O::Eof), Method<O>("MoveFirst", &O::MoveFirst),
       Method<O>("MoveLast", &O::MoveLast), Method<O>("MoveNext", &O::MoveNext),
       Method<O>("MovePrevious", &O::MovePrevious), Method<O>("Move", &O::Move),
       Get<O>("Clone", &O::Clone), Get<O>("Restartable", &O::Restartable),
       Method<O>("Requery", &O::Requery),
       // Fields(index) or Fields("name"): the argument's type decides.
       Member{"Fields", Kind::kGet, 1, 1,
              [](void* self, const Args& args) {
                const O& rs = *static_cast<O*>(self);
                const Variant& key = args.at(0);
                Out out;
                out.value =
                    key.Type() == vtString ? rs.Fields(key.ToString()) : rs.Fields(key.ToLong());
                return out;
              }},
       Get<O>("FieldCount", &O::FieldCount),
       Method<O>("FieldName", &O::FieldName, {}, Kind::kGet)}};
  return info;
}

const std::vector<const ClassInfo*>& CreatableClasses() {
  static const std::vector<const ClassInfo*> classes = {&ClassOf<CTkDb>(),
                                                        &ClassOf<CMsgOrderDokument>(),
                                                        &ClassOf<CAuftrag>(),
                                                        &ClassOf<CMeldung>(),
                                                        &ClassOf<CLeistung>(),
                                                        &ClassOf<CMaterial>(),
                                                        &ClassOf<CAuftragListe>(),
                                                        &ClassOf<CMeldungListe>(),
                                                        &ClassOf<CLeistungListe>(),
                                                        &ClassOf<CMaterialListe>(),
                                                        &ClassOf<CMsgOrderDokumentListe>(),
                                                        &ClassOf<ITestFixture>()};
  return classes;
}

const ClassInfo* FindClass(const std::string& name) {
  for (const ClassInfo* c : CreatableClasses()) {
    if (strcasecmp(c->name.c_str(), name.c_str()) == 0) return c;
  }
  for (const ClassInfo* c : {&ClassOf<Recordset>(), &ClassOf<Workspace>()}) {
    if (strcasecmp(c->name.c_str(), name.c_str()) == 0) return c;
  }
  return nullptr;
}

}  // namespace ZTkDb::server
