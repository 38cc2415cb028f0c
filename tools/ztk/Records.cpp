#include "Records.h"

#include <cctype>

#include "Text.h"

namespace ztk {

std::string ClockText(ZTkDb::Date when) {
  char time[8];
  std::snprintf(time, sizeof time, "%02d:%02d", when.Hour(), when.Minute());
  return time;
}

using ZTkDb::CAuftrag;
using ZTkDb::CLeistung;
using ZTkDb::CMaterial;
using ZTkDb::CMeldung;
using ZTkDb::CMsgOrderDokument;
using ZTkDb::Date;

// A new order is raised today, by the help desk itself, for a room.
void RecordKind<CAuftrag>::Prepare(CAuftrag& d) {
  d.NrVorsatz("A");
  d.AuftragsDatum(Date::Today());
  d.ObjTyp(ZTkDb::sotRoom);
  d.Herkunft(ZTkDb::hetTikora);
}

void RecordKind<CAuftrag>::Number(CAuftrag& draft, const std::string& client) {
  CAuftrag probe;
  probe.ConnectStorage(client);
  draft.Nr(probe.GetLastNr() + 1);
}

void RecordKind<CAuftrag>::Create(CAuftrag& t, const CAuftrag& d) {
  t.CreateNew7(d.Nr(), d.AuftragNehmerId(), d.AuftragsDatum(), d.AuftragsZeit(), d.ObjId(),
               d.ObjTyp(), d.Auftrag(), d.ErledBisDatum(), d.ErledBisZeit(), d.WiederDatum(),
               d.WiederZeit(), d.Erledigt(), d.ErledigtDatum(), d.ErledigtZeit(), d.ObjAufgabeId(),
               d.ObjHistorieId(), d.Auftragstyp(), d.AnsprechId(), d.GebTyp(), d.GebId(), d.SoId(),
               d.Herkunft(), d.NrVorsatz(), d.Bearbeiter(), d.TelBearbeiter(), d.AuftragGeber(),
               d.AufGebFaId(), d.AufGebKst(), d.Ort(), d.Objekt(), d.Kostenstelle(), d.RechnEmpf(),
               d.Gesperrt(), d.Bemerkung(), d.AuftragstypText(), d.Kosten(), d.Leistungsart(),
               d.Verantwortlicher());
  // The link is a row of its own; a report given on the command line is
  // linked in the same transaction.
  if (d.MeldungId() != 0 && t.Id() != 0) t.Connect2Msg(d.MeldungId());
}

void RecordKind<CMeldung>::Prepare(CMeldung& d) {
  const Date now = Date::Now();
  char time[8];
  std::snprintf(time, sizeof time, "%02d:%02d", now.Hour(), now.Minute());
  d.NrVorsatz("M");
  d.MeldeDatum(now.DatePart());
  d.MeldeZeit(time);
  d.ObjTyp(ZTkDb::sotRoom);
  d.Herkunft(ZTkDb::hetTikora);
}

void RecordKind<CMeldung>::Number(CMeldung& draft, const std::string& client) {
  CMeldung probe;
  probe.ConnectStorage(client);
  draft.Nr(probe.GetLastNrVorsatz(draft.NrVorsatz()) + 1);
}

void RecordKind<CMeldung>::Create(CMeldung& t, const CMeldung& d) {
  t.CreateNew4(d.Nr(), d.Melder(), d.MelderFaId(), d.MelderTel(), d.MeldeDatum(), d.MeldeZeit(),
               d.ObjId(), d.ObjTyp(), d.Meldung(), d.ErledBisDatum(), d.ErledBisZeit(),
               d.WiederDatum(), d.WiederZeit(), d.Erledigt(), d.ErledigtDatum(), d.ErledigtZeit(),
               d.GebTyp(), d.GebId(), d.SoId(), d.Herkunft(), d.NrVorsatz(), d.Bearbeiter(),
               d.TelBearbeiter(), d.Ort(), d.Objekt(), d.Bemerkung(), d.Email(), d.Leistungsart(),
               d.Verantwortlicher());
}

void RecordKind<CLeistung>::Prepare(CLeistung& d) {
  d.AusfDatum(Date::Today());
  d.Faktor(1.0);
}

void RecordKind<CLeistung>::Create(CLeistung& t, const CLeistung& d) {
  if (d.AuftragId() == 0) throw UsageError(_("a labour booking needs AuftragId=ID"));
  t.CreateNew1(d.AuftragId(), d.AuftragNehmerId(), d.AusfDatum(), d.AusfZeit(), d.LeistArtId(),
               d.Stunden(), d.PreisProStd(), d.Faktor(), d.Weg(), d.PreisProKm(), d.Bemerkung(),
               d.RechnEmpfId(), d.Kostenart(), d.AnsprechId(), d.Kostenstelle(), d.Auftragnehmer(),
               d.Ansprech(), d.Leistart(), d.RechnEmpf(), d.Fremdleistung());
}

std::vector<std::string> RecordKind<CMaterial>::Extract(const std::vector<std::string>& a) {
  unit.clear();
  std::vector<std::string> rest;
  for (const auto& s : a) {
    std::string head = s.substr(0, s.find('='));
    for (char& c : head) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (head == "einheit" && s.find('=') != std::string::npos)
      unit = s.substr(s.find('=') + 1);
    else
      rest.push_back(s);
  }
  return rest;
}

void RecordKind<CMaterial>::Create(CMaterial& t, const CMaterial& d) {
  if (d.AuftragId() == 0) throw UsageError(_("a material booking needs AuftragId=ID"));
  t.CreateNew3(d.AuftragId(), d.MatKlasse(), d.Bezeichnung(), d.Menge(), d.PreisProEinheit(),
               d.Faktor(), d.RechnEmpfId(), d.Kostenart(), d.Kostenstelle(), unit, d.RechnEmpf(),
               d.Fremdleistung());
}

void RecordKind<CMsgOrderDokument>::Create(CMsgOrderDokument& t, const CMsgOrderDokument& d) {
  if (d.Datei().empty()) throw UsageError(_("a document link needs Datei=NAME"));
  t.CreateNew(d.MsgId(), d.OrderId(), d.Pfad(), d.Datei());
}

ExtraRows BookedOn(Session& session, int32_t orderId) {
  double hours = 0;
  double labour = 0, material = 0;  // in currency units; rounded once at the end
  ZTkDb::CLeistungListe bookings;
  bookings.ConnectStorage(session.Client());
  bookings.ReadByOrderId(orderId);
  for (auto b = bookings.MoveFirst(); b; b = bookings.MoveNext()) {
    hours += b->Stunden();
    labour += b->Stunden() * static_cast<double>(b->PreisProStd().Scaled()) / 10000.0;
  }
  ZTkDb::CMaterialListe items;
  items.ConnectStorage(session.Client());
  items.ReadByOrderId(orderId);
  for (auto m = items.MoveFirst(); m; m = items.MoveNext()) {
    material += m->Menge() * static_cast<double>(m->PreisProEinheit().Scaled()) / 10000.0;
  }
  return {{"StundenGebucht", hours},
          {"KostenLeistung", ZTkDb::Currency::FromDouble(labour)},
          {"KostenMaterial", ZTkDb::Currency::FromDouble(material)}};
}

}  // namespace ztk
