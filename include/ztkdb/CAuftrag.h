#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"
#include "ztkdb/Enums.h"
#include "ztkdb/Export.h"

namespace ZTkDb {

class Recordset;
namespace detail {
template <typename>
class ListCursor;
}

// A work order: one row of T_Auftrag, plus the id of the report it is linked
// to through T_AuftragMeldung (MeldungId, read by the joined reads, never
// written by Update). Members stand in the order hosts bind to; later
// additions follow the first methods.
//
// Setting a property changes only the object; Update writes every field at
// once under the row's UId, and shows "CAuftrag.Update fehlgeschlagen. Bitte
// an TORQ melden!" when somebody else changed or deleted the row since it was
// read. Dates not set hold NoDate. ObjAufgabeId is stored in lTechObjTerminId,
// ObjHistorieId in lTageFrist, AuftragstypText in stAuftragstyp.
// Members other than the properties, ConnectStorage and the retired creation
// methods raise 91 while the object is unconnected; every error reaches the
// caller unchanged.
class ZTKDB_API CAuftrag {
 public:
  CAuftrag();
  ~CAuftrag();
  CAuftrag(const CAuftrag&) = delete;
  CAuftrag& operator=(const CAuftrag&) = delete;

  int32_t Id() const;
  const std::string& UId() const;
  int32_t Nr() const;
  void Nr(int32_t value);
  int32_t AnsprechId() const;
  void AnsprechId(int32_t value);
  uint8_t GebTyp() const;
  void GebTyp(uint8_t value);
  int32_t GebId() const;
  void GebId(int32_t value);
  int32_t AuftragNehmerId() const;
  void AuftragNehmerId(int32_t value);
  Date AuftragsDatum() const;
  void AuftragsDatum(Date value);
  const std::string& AuftragsZeit() const;
  void AuftragsZeit(const std::string& value);
  int32_t ObjId() const;
  void ObjId(int32_t value);
  TkObjTypes ObjTyp() const;
  void ObjTyp(TkObjTypes value);
  const std::string& Auftrag() const;
  void Auftrag(const std::string& value);
  Date ErledBisDatum() const;
  void ErledBisDatum(Date value);
  const std::string& ErledBisZeit() const;
  void ErledBisZeit(const std::string& value);
  Date WiederDatum() const;
  void WiederDatum(Date value);
  const std::string& WiederZeit() const;
  void WiederZeit(const std::string& value);
  bool Erledigt() const;
  void Erledigt(bool value);
  Date ErledigtDatum() const;
  void ErledigtDatum(Date value);
  const std::string& ErledigtZeit() const;
  void ErledigtZeit(const std::string& value);
  uint8_t Auftragstyp() const;
  void Auftragstyp(uint8_t value);
  int32_t ObjAufgabeId() const;
  void ObjAufgabeId(int32_t value);
  int32_t ObjHistorieId() const;
  void ObjHistorieId(int32_t value);
  int32_t MeldungId() const;
  void MeldungId(int32_t value);
  uint8_t Herkunft() const;
  void Herkunft(uint8_t value);
  const std::string& NrVorsatz() const;
  void NrVorsatz(const std::string& value);
  const std::string& Bearbeiter() const;
  void Bearbeiter(const std::string& value);
  const std::string& TelBearbeiter() const;
  void TelBearbeiter(const std::string& value);
  const std::string& AuftragGeber() const;
  void AuftragGeber(const std::string& value);
  int32_t AufGebFaId() const;
  void AufGebFaId(int32_t value);
  const std::string& AufGebKst() const;
  void AufGebKst(const std::string& value);
  const std::string& Ort() const;
  void Ort(const std::string& value);
  const std::string& Objekt() const;
  void Objekt(const std::string& value);
  const std::string& Kostenstelle() const;
  void Kostenstelle(const std::string& value);
  const std::string& RechnEmpf() const;
  void RechnEmpf(const std::string& value);
  bool Gesperrt() const;
  void Gesperrt(bool value);

  // Binds the object to the client's open database; nothing happens for an
  // empty name or a client that is not open.
  void ConnectStorage(const std::string& stClientName);
  // Retired creation methods: each only shows a box naming its successor and
  // touches neither the database nor the object. CreateNew7 is current.
  void CreateNew(int32_t lNr, int32_t lAuftragNehmerId, Date AuftragsDatum,
                 const std::string& stAuftragsZeit, int32_t lObjId, TkObjTypes eObjTyp,
                 const std::string& stAuftrag, Date ErledBisDatum,
                 const std::string& stErledBisZeit, Date WiederDatum,
                 const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                 const std::string& stErledigtZeit, int32_t lOvObjAufgabeId,
                 int32_t lOvObjHistorieId, uint8_t byAuftragstyp, int32_t lAnsprechId,
                 uint8_t byGebTyp, int32_t lGebId, uint8_t byHerkunft,
                 const std::string& stNrVorsatz, const std::string& stBearbeiter,
                 const std::string& stAufGeber, int32_t lAufGebFaId, const std::string& stAufGebKst,
                 const std::string& stOrt, const std::string& stObjekt);
  void CreateNew1(
      int32_t lNr, int32_t lAuftragNehmerId, Date AuftragsDatum, const std::string& stAuftragsZeit,
      int32_t lObjId, TkObjTypes eObjTyp, const std::string& stAuftrag, Date ErledBisDatum,
      const std::string& stErledBisZeit, Date WiederDatum, const std::string& stWiederZeit,
      bool bErledigt, Date ErledigtDatum, const std::string& stErledigtZeit,
      int32_t lOvObjAufgabeId, int32_t lOvObjHistorieId, uint8_t byAuftragstyp, int32_t lAnsprechId,
      uint8_t byGebTyp, int32_t lGebId, uint8_t byHerkunft, const std::string& stNrVorsatz,
      const std::string& stBearbeiter, const std::string& stAufGeber, int32_t lAufGebFaId,
      const std::string& stAufGebKst, const std::string& stOrt, const std::string& stObjekt,
      const std::string& stKostenstelle, const std::string& stRechnEmpf);
  void CreateNew2(int32_t lNr, int32_t lAuftragNehmerId, Date AuftragsDatum,
                  const std::string& stAuftragsZeit, int32_t lObjId, TkObjTypes eObjTyp,
                  const std::string& stAuftrag, Date ErledBisDatum,
                  const std::string& stErledBisZeit, Date WiederDatum,
                  const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                  const std::string& stErledigtZeit, int32_t lOvObjAufgabeId,
                  int32_t lOvObjHistorieId, uint8_t byAuftragstyp, int32_t lAnsprechId,
                  uint8_t byGebTyp, int32_t lGebId, uint8_t byHerkunft,
                  const std::string& stNrVorsatz, const std::string& stBearbeiter,
                  const std::string& stTelBearbeiter, const std::string& stAufGeber,
                  int32_t lAufGebFaId, const std::string& stAufGebKst, const std::string& stOrt,
                  const std::string& stObjekt, const std::string& stKostenstelle,
                  const std::string& stRechnEmpf, bool bGesperrt);
  // Links this order to report lMsgId (a second call adds a second link) and
  // sets MeldungId.
  void Connect2Msg(int32_t lMsgId);
  // Removes the link to the report in MeldungId and sets MeldungId to 0.
  void DisConnectFromMsg();
  // The reads load the first matching row without clearing the object first;
  // when nothing matches the object is cleared (Id 0) and nothing is raised.
  void ReadById(int32_t lId);
  // The open technical-equipment order (object type 6, origin 3) of object
  // lObjId for history entry lHistId. Reads no link: MeldungId stays.
  void ReadByObjHist(int32_t lObjId, int32_t lHistId);
  // stVorsatz goes into the statement as given.
  void ReadByNr(int32_t lNr, const std::string& stVorsatz);
  void ReadByNrOhneVorsatz(int32_t lNr);
  void Update();
  // Deletes the row whatever its version; its report links stay.
  void Delete();
  // The highest order number over all prefixes; 0 for an empty table.
  int32_t GetLastNr();
  const std::string& Bemerkung() const;
  void Bemerkung(const std::string& value);
  void CreateNew3(int32_t lNr, int32_t lAuftragNehmerId, Date AuftragsDatum,
                  const std::string& stAuftragsZeit, int32_t lObjId, TkObjTypes eObjTyp,
                  const std::string& stAuftrag, Date ErledBisDatum,
                  const std::string& stErledBisZeit, Date WiederDatum,
                  const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                  const std::string& stErledigtZeit, int32_t lOvObjAufgabeId,
                  int32_t lOvObjHistorieId, uint8_t byAuftragstyp, int32_t lAnsprechId,
                  uint8_t byGebTyp, int32_t lGebId, uint8_t byHerkunft,
                  const std::string& stNrVorsatz, const std::string& stBearbeiter,
                  const std::string& stTelBearbeiter, const std::string& stAufGeber,
                  int32_t lAufGebFaId, const std::string& stAufGebKst, const std::string& stOrt,
                  const std::string& stObjekt, const std::string& stKostenstelle,
                  const std::string& stRechnEmpf, bool bGesperrt, const std::string& stBemerkung);
  const std::string& AuftragstypText() const;
  void AuftragstypText(const std::string& value);
  void CreateNew4(int32_t lNr, int32_t lAuftragNehmerId, Date AuftragsDatum,
                  const std::string& stAuftragsZeit, int32_t lObjId, TkObjTypes eObjTyp,
                  const std::string& stAuftrag, Date ErledBisDatum,
                  const std::string& stErledBisZeit, Date WiederDatum,
                  const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                  const std::string& stErledigtZeit, int32_t lOvObjAufgabeId,
                  int32_t lOvObjHistorieId, uint8_t byAuftragstyp, int32_t lAnsprechId,
                  uint8_t byGebTyp, int32_t lGebId, uint8_t byHerkunft,
                  const std::string& stNrVorsatz, const std::string& stBearbeiter,
                  const std::string& stTelBearbeiter, const std::string& stAufGeber,
                  int32_t lAufGebFaId, const std::string& stAufGebKst, const std::string& stOrt,
                  const std::string& stObjekt, const std::string& stKostenstelle,
                  const std::string& stRechnEmpf, bool bGesperrt, const std::string& stBemerkung,
                  const std::string& stAuftragstyp);
  Currency Kosten() const;
  void Kosten(Currency value);
  void CreateNew5(int32_t lNr, int32_t lAuftragNehmerId, Date AuftragsDatum,
                  const std::string& stAuftragsZeit, int32_t lObjId, TkObjTypes eObjTyp,
                  const std::string& stAuftrag, Date ErledBisDatum,
                  const std::string& stErledBisZeit, Date WiederDatum,
                  const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                  const std::string& stErledigtZeit, int32_t lOvObjAufgabeId,
                  int32_t lOvObjHistorieId, uint8_t byAuftragstyp, int32_t lAnsprechId,
                  uint8_t byGebTyp, int32_t lGebId, uint8_t byHerkunft,
                  const std::string& stNrVorsatz, const std::string& stBearbeiter,
                  const std::string& stTelBearbeiter, const std::string& stAufGeber,
                  int32_t lAufGebFaId, const std::string& stAufGebKst, const std::string& stOrt,
                  const std::string& stObjekt, const std::string& stKostenstelle,
                  const std::string& stRechnEmpf, bool bGesperrt, const std::string& stBemerkung,
                  const std::string& stAuftragstyp, Currency cuKosten);
  int32_t SoId() const;
  void SoId(int32_t value);
  void CreateNew6(int32_t lNr, int32_t lAuftragNehmerId, Date AuftragsDatum,
                  const std::string& stAuftragsZeit, int32_t lObjId, TkObjTypes eObjTyp,
                  const std::string& stAuftrag, Date ErledBisDatum,
                  const std::string& stErledBisZeit, Date WiederDatum,
                  const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                  const std::string& stErledigtZeit, int32_t lOvObjAufgabeId,
                  int32_t lOvObjHistorieId, uint8_t byAuftragstyp, int32_t lAnsprechId,
                  uint8_t byGebTyp, int32_t lGebId, int32_t lSoId, uint8_t byHerkunft,
                  const std::string& stNrVorsatz, const std::string& stBearbeiter,
                  const std::string& stTelBearbeiter, const std::string& stAufGeber,
                  int32_t lAufGebFaId, const std::string& stAufGebKst, const std::string& stOrt,
                  const std::string& stObjekt, const std::string& stKostenstelle,
                  const std::string& stRechnEmpf, bool bGesperrt, const std::string& stBemerkung,
                  const std::string& stAuftragstyp, Currency cuKosten);
  const std::string& Leistungsart() const;
  void Leistungsart(const std::string& value);
  const std::string& Verantwortlicher() const;
  void Verantwortlicher(const std::string& value);
  // Inserts an order with a fresh UId and loads it back by that UId. lNr and
  // stNrVorsatz are written as given (GetLastNr + 1 gives the next number).
  // An insert that affects no row shows "CAuftrag.Create fehlgeschlagen.
  // Bitte an TORQ melden!" and leaves the object cleared.
  void CreateNew7(int32_t lNr, int32_t lAuftragNehmerId, Date AuftragsDatum,
                  const std::string& stAuftragsZeit, int32_t lObjId, TkObjTypes eObjTyp,
                  const std::string& stAuftrag, Date ErledBisDatum,
                  const std::string& stErledBisZeit, Date WiederDatum,
                  const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                  const std::string& stErledigtZeit, int32_t lOvObjAufgabeId,
                  int32_t lOvObjHistorieId, uint8_t byAuftragstyp, int32_t lAnsprechId,
                  uint8_t byGebTyp, int32_t lGebId, int32_t lSoId, uint8_t byHerkunft,
                  const std::string& stNrVorsatz, const std::string& stBearbeiter,
                  const std::string& stTelBearbeiter, const std::string& stAufGeber,
                  int32_t lAufGebFaId, const std::string& stAufGebKst, const std::string& stOrt,
                  const std::string& stObjekt, const std::string& stKostenstelle,
                  const std::string& stRechnEmpf, bool bGesperrt, const std::string& stBemerkung,
                  const std::string& stAuftragstyp, Currency cuKosten,
                  const std::string& stLeistungsart, const std::string& stVerantwortlicher);

 private:
  template <typename>
  friend class detail::ListCursor;
  void LoadFromRecordset(Recordset& rs);

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace ZTkDb
