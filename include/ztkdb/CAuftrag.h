/// \file
/// The work-order record, CAuftrag.
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

/// A work order: one row of T_Auftrag, plus the id of the report it is linked
/// to through T_AuftragMeldung (MeldungId, read by the joined reads, never
/// written by Update). Members stand in the order hosts bind to; later
/// additions follow the first methods.
///
/// Setting a property changes only the object; Update writes every field at
/// once under the row's UId, and shows the critical box "CAuftrag.Update
/// fehlgeschlagen. Bitte an TORQ melden!" (title "Zanto", MessageBoxCall::number
/// 3197) when somebody else changed or deleted the row since it was read.
/// Dates not set hold NoDate. ObjAufgabeId is stored in lTechObjTerminId,
/// ObjHistorieId in lTageFrist, AuftragstypText in stAuftragstyp.
///
/// Members other than the properties, ConnectStorage and the retired creation
/// methods raise 91 while the object is unconnected; every error reaches the
/// caller unchanged (number, source and description). A record belongs to
/// one thread at a time, as its client does.
class ZTKDB_API CAuftrag {
 public:
  /// An empty, unconnected order: Id 0, empty texts, every date NoDate.
  CAuftrag();
  /// Releases the object's storage; the row stays as it is.
  ~CAuftrag();
  /// Not copyable: each record owns its own storage.
  CAuftrag(const CAuftrag&) = delete;
  /// Not copyable: each record owns its own storage.
  CAuftrag& operator=(const CAuftrag&) = delete;

  /// Row id (lId), assigned by the database; 0 while no row is loaded.
  int32_t Id() const;
  /// Row token (stUId): replaced by every write; Update matches the row by it.
  const std::string& UId() const;
  /// Order number (lNr); with NrVorsatz it forms the number users see.
  int32_t Nr() const;
  /// Sets Nr; nothing is written until Update.
  void Nr(int32_t value);
  /// Id of the contact person (lAnsprechId).
  int32_t AnsprechId() const;
  /// Sets AnsprechId; nothing is written until Update.
  void AnsprechId(int32_t value);
  /// Building type (byGebTyp).
  uint8_t GebTyp() const;
  /// Sets GebTyp; nothing is written until Update.
  void GebTyp(uint8_t value);
  /// Building id (lGebId).
  int32_t GebId() const;
  /// Sets GebId; nothing is written until Update.
  void GebId(int32_t value);
  /// Id of the contractor (lAuftragNehmerId).
  int32_t AuftragNehmerId() const;
  /// Sets AuftragNehmerId; nothing is written until Update.
  void AuftragNehmerId(int32_t value);
  /// Date of the order (AuftragsDatum); NoDate when none is set.
  Date AuftragsDatum() const;
  /// Sets AuftragsDatum; nothing is written until Update.
  void AuftragsDatum(Date value);
  /// Time of the order, as free text (stAuftragsZeit).
  const std::string& AuftragsZeit() const;
  /// Sets AuftragsZeit; nothing is written until Update.
  void AuftragsZeit(const std::string& value);
  /// Id of the object the order concerns (lObjId).
  int32_t ObjId() const;
  /// Sets ObjId; nothing is written until Update.
  void ObjId(int32_t value);
  /// Kind of that object (byObjTyp).
  TkObjTypes ObjTyp() const;
  /// Sets ObjTyp; nothing is written until Update.
  void ObjTyp(TkObjTypes value);
  /// Text of the order (stAuftrag). A Null column leaves the text the object held.
  const std::string& Auftrag() const;
  /// Sets Auftrag; nothing is written until Update.
  void Auftrag(const std::string& value);
  /// Due date, to be done by (ErledBisDatum); NoDate when none is set.
  Date ErledBisDatum() const;
  /// Sets ErledBisDatum; nothing is written until Update.
  void ErledBisDatum(Date value);
  /// Due time, as free text (stErledBisZeit).
  const std::string& ErledBisZeit() const;
  /// Sets ErledBisZeit; nothing is written until Update.
  void ErledBisZeit(const std::string& value);
  /// Resubmission date (WiederDatum); NoDate when none is set.
  Date WiederDatum() const;
  /// Sets WiederDatum; nothing is written until Update.
  void WiederDatum(Date value);
  /// Resubmission time, as free text (stWiederZeit).
  const std::string& WiederZeit() const;
  /// Sets WiederZeit; nothing is written until Update.
  void WiederZeit(const std::string& value);
  /// Whether the order is done (bErledigt). Nothing couples it to ErledigtDatum.
  bool Erledigt() const;
  /// Sets Erledigt; nothing is written until Update.
  void Erledigt(bool value);
  /// Date the order was done (ErledigtDatum); NoDate while it is open, which the done
  /// lists rely on.
  Date ErledigtDatum() const;
  /// Sets ErledigtDatum; nothing is written until Update.
  void ErledigtDatum(Date value);
  /// Time the order was done, as free text (stErledigtZeit).
  const std::string& ErledigtZeit() const;
  /// Sets ErledigtZeit; nothing is written until Update.
  void ErledigtZeit(const std::string& value);
  /// Order type code (byAuftragstyp).
  uint8_t Auftragstyp() const;
  /// Sets Auftragstyp; nothing is written until Update.
  void Auftragstyp(uint8_t value);
  /// Id of the object task (maintenance appointment) that raised the order, stored in
  /// lTechObjTerminId.
  int32_t ObjAufgabeId() const;
  /// Sets ObjAufgabeId; nothing is written until Update.
  void ObjAufgabeId(int32_t value);
  /// Id of the object history entry that belongs to the order, stored in lTageFrist.
  int32_t ObjHistorieId() const;
  /// Sets ObjHistorieId; nothing is written until Update.
  void ObjHistorieId(int32_t value);
  /// Id of the linked report (lMeldungId of T_AuftragMeldung), set by the reads that join
  /// the link table; 0 when the order has no link.
  int32_t MeldungId() const;
  /// Sets MeldungId in the object only: Update never writes it (Connect2Msg and
  /// DisConnectFromMsg change links).
  void MeldungId(int32_t value);
  /// Origin (byHerkunft): a HerkunftTypes value held as a byte, so other values pass.
  uint8_t Herkunft() const;
  /// Sets Herkunft, unchecked; nothing is written until Update.
  void Herkunft(uint8_t value);
  /// Number prefix (stNrVorsatz).
  const std::string& NrVorsatz() const;
  /// Sets NrVorsatz; nothing is written until Update.
  void NrVorsatz(const std::string& value);
  /// Clerk handling the order (stBearbeiter).
  const std::string& Bearbeiter() const;
  /// Sets Bearbeiter; nothing is written until Update.
  void Bearbeiter(const std::string& value);
  /// The clerk's telephone (stTelBearbeiter).
  const std::string& TelBearbeiter() const;
  /// Sets TelBearbeiter; nothing is written until Update.
  void TelBearbeiter(const std::string& value);
  /// Client who placed the order (stAuftragGeber).
  const std::string& AuftragGeber() const;
  /// Sets AuftragGeber; nothing is written until Update.
  void AuftragGeber(const std::string& value);
  /// Company id of the client (lAufGebFaId).
  int32_t AufGebFaId() const;
  /// Sets AufGebFaId; nothing is written until Update.
  void AufGebFaId(int32_t value);
  /// The client's cost centre (stAufGebKst).
  const std::string& AufGebKst() const;
  /// Sets AufGebKst; nothing is written until Update.
  void AufGebKst(const std::string& value);
  /// Place (stOrt).
  const std::string& Ort() const;
  /// Sets Ort; nothing is written until Update.
  void Ort(const std::string& value);
  /// The object, as text (stObjekt).
  const std::string& Objekt() const;
  /// Sets Objekt; nothing is written until Update.
  void Objekt(const std::string& value);
  /// Cost centre (stKostenstelle).
  const std::string& Kostenstelle() const;
  /// Sets Kostenstelle; nothing is written until Update.
  void Kostenstelle(const std::string& value);
  /// Invoice recipient (stRechnEmpf).
  const std::string& RechnEmpf() const;
  /// Sets RechnEmpf; nothing is written until Update.
  void RechnEmpf(const std::string& value);
  /// Whether the order is locked (bGesperrt).
  bool Gesperrt() const;
  /// Sets Gesperrt; nothing is written until Update.
  void Gesperrt(bool value);

  /// Binds the object to the client's open database; nothing happens for an
  /// empty name or a client that is not open (the object keeps the storage it
  /// had, or stays unconnected and raises 91 on its next call).
  /// \param stClientName The name the client's database was opened under (CTkDb).
  void ConnectStorage(const std::string& stClientName);
  /// Retired: only shows the box "CreateNew2 benutzen." (default title, number 0) and
  /// touches neither the database nor the object. CreateNew7 is current. Never raises.
  /// \param lNr Not used.
  /// \param lAuftragNehmerId Not used.
  /// \param AuftragsDatum Not used.
  /// \param stAuftragsZeit Not used.
  /// \param lObjId Not used.
  /// \param eObjTyp Not used.
  /// \param stAuftrag Not used.
  /// \param ErledBisDatum Not used.
  /// \param stErledBisZeit Not used.
  /// \param WiederDatum Not used.
  /// \param stWiederZeit Not used.
  /// \param bErledigt Not used.
  /// \param ErledigtDatum Not used.
  /// \param stErledigtZeit Not used.
  /// \param lOvObjAufgabeId Not used.
  /// \param lOvObjHistorieId Not used.
  /// \param byAuftragstyp Not used.
  /// \param lAnsprechId Not used.
  /// \param byGebTyp Not used.
  /// \param lGebId Not used.
  /// \param byHerkunft Not used.
  /// \param stNrVorsatz Not used.
  /// \param stBearbeiter Not used.
  /// \param stAufGeber Not used.
  /// \param lAufGebFaId Not used.
  /// \param stAufGebKst Not used.
  /// \param stOrt Not used.
  /// \param stObjekt Not used.
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
  /// Retired: only shows the box "CreateNew2 benutzen." (default title, number 0) and
  /// touches neither the database nor the object. CreateNew7 is current. Never raises.
  /// \param lNr Not used.
  /// \param lAuftragNehmerId Not used.
  /// \param AuftragsDatum Not used.
  /// \param stAuftragsZeit Not used.
  /// \param lObjId Not used.
  /// \param eObjTyp Not used.
  /// \param stAuftrag Not used.
  /// \param ErledBisDatum Not used.
  /// \param stErledBisZeit Not used.
  /// \param WiederDatum Not used.
  /// \param stWiederZeit Not used.
  /// \param bErledigt Not used.
  /// \param ErledigtDatum Not used.
  /// \param stErledigtZeit Not used.
  /// \param lOvObjAufgabeId Not used.
  /// \param lOvObjHistorieId Not used.
  /// \param byAuftragstyp Not used.
  /// \param lAnsprechId Not used.
  /// \param byGebTyp Not used.
  /// \param lGebId Not used.
  /// \param byHerkunft Not used.
  /// \param stNrVorsatz Not used.
  /// \param stBearbeiter Not used.
  /// \param stAufGeber Not used.
  /// \param lAufGebFaId Not used.
  /// \param stAufGebKst Not used.
  /// \param stOrt Not used.
  /// \param stObjekt Not used.
  /// \param stKostenstelle Not used.
  /// \param stRechnEmpf Not used.
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
  /// Retired: only shows the box "CreateNew3 benutzen!" (default title, number 0) and
  /// touches neither the database nor the object. CreateNew7 is current. Never raises.
  /// \param lNr Not used.
  /// \param lAuftragNehmerId Not used.
  /// \param AuftragsDatum Not used.
  /// \param stAuftragsZeit Not used.
  /// \param lObjId Not used.
  /// \param eObjTyp Not used.
  /// \param stAuftrag Not used.
  /// \param ErledBisDatum Not used.
  /// \param stErledBisZeit Not used.
  /// \param WiederDatum Not used.
  /// \param stWiederZeit Not used.
  /// \param bErledigt Not used.
  /// \param ErledigtDatum Not used.
  /// \param stErledigtZeit Not used.
  /// \param lOvObjAufgabeId Not used.
  /// \param lOvObjHistorieId Not used.
  /// \param byAuftragstyp Not used.
  /// \param lAnsprechId Not used.
  /// \param byGebTyp Not used.
  /// \param lGebId Not used.
  /// \param byHerkunft Not used.
  /// \param stNrVorsatz Not used.
  /// \param stBearbeiter Not used.
  /// \param stTelBearbeiter Not used.
  /// \param stAufGeber Not used.
  /// \param lAufGebFaId Not used.
  /// \param stAufGebKst Not used.
  /// \param stOrt Not used.
  /// \param stObjekt Not used.
  /// \param stKostenstelle Not used.
  /// \param stRechnEmpf Not used.
  /// \param bGesperrt Not used.
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
  /// Links this order (its Id) to report lMsgId by inserting a row into T_AuftragMeldung,
  /// and sets MeldungId. Neither the order nor the report is checked, and a second call
  /// adds a second link.
  /// \param lMsgId Id of the report (T_Meldung.lId).
  /// \throws ZTkDb::Error 91 while unconnected; 3027 on a read-only open; 3260 when the
  ///   lock stays held past the wait; 3420 once the database is closed; other engine
  ///   errors unchanged.
  void Connect2Msg(int32_t lMsgId);
  /// Removes the link between this order and the report in MeldungId and sets MeldungId
  /// to 0. Removing a link that does not exist is no error.
  /// \throws ZTkDb::Error 91 while unconnected; 3027 on a read-only open; 3260 when the
  ///   lock stays held past the wait; 3420 once the database is closed; other engine
  ///   errors unchanged.
  void DisConnectFromMsg();
  /// Loads the order with that id, with its linked report in MeldungId. The reads load
  /// the first matching row without clearing the object first; when nothing matches the
  /// object is cleared (Id 0) and nothing is raised.
  /// \param lId Row id (lId) of the order.
  /// \throws ZTkDb::Error 91 while unconnected; 94 when a column that takes no Null holds
  ///   Null (the columns before it are loaded); 3420 once the database is closed; other
  ///   engine errors unchanged.
  void ReadById(int32_t lId);
  /// Loads the open technical-equipment order (object type 6, origin 3) of object
  /// lObjId for history entry lHistId, as ReadById loads. Reads no link: MeldungId stays.
  /// \param lObjId Id of the technical object (lObjId).
  /// \param lHistId History entry, matched against lTageFrist (ObjHistorieId).
  /// \throws ZTkDb::Error as ReadById.
  void ReadByObjHist(int32_t lObjId, int32_t lHistId);
  /// Loads the order with that number and prefix, as ReadById loads; of several matches
  /// the first in the engine's order.
  /// \param lNr Order number (lNr).
  /// \param stVorsatz Number prefix. It goes into the statement as given, unescaped: a
  ///   quote there changes the statement, so pass only trusted text. A text that would
  ///   make a second statement raises 3129, one that cannot be read with certainty 3075.
  /// \throws ZTkDb::Error as ReadById, and 3129 or 3075 for such a prefix.
  void ReadByNr(int32_t lNr, const std::string& stVorsatz);
  /// Loads an order with that number, whatever its prefix (of several, the first in the
  /// engine's order), as ReadById loads.
  /// \param lNr Order number (lNr).
  /// \throws ZTkDb::Error as ReadById.
  void ReadByNrOhneVorsatz(int32_t lNr);
  /// Writes every field but MeldungId to the object's row in one statement, with a fresh
  /// UId, provided the row still carries the UId the object holds. The object takes the
  /// fresh UId whether or not the row was written, so after a conflict every further
  /// Update fails too until the order is read again.
  /// \par Message box
  /// "CAuftrag.Update fehlgeschlagen. Bitte an TORQ melden!": critical, titled "Zanto",
  /// MessageBoxCall::number 3197 (errWriteConflict), when no row was written because
  /// another writer changed or deleted it since it was read (or Id is 0). Nothing is
  /// raised then.
  /// \throws ZTkDb::Error 91 while unconnected; 6 for a date outside 01.01.0100 to
  ///   31.12.9999 or an amount the database cannot store exactly; 3163 for a text longer
  ///   than its column; 3027 on a read-only open; 3260 when the lock stays held past the
  ///   wait; 3420 once the database is closed; other engine errors unchanged.
  void Update();
  /// Deletes the row whatever its version, then clears the object (Id 0). Its report
  /// links stay. No box: a row that was gone already is no error.
  /// \throws ZTkDb::Error 91 while unconnected; 3027 on a read-only open; 3260 when the
  ///   lock stays held past the wait; 3420 once the database is closed; other engine
  ///   errors unchanged.
  void Delete();
  /// The highest order number over all prefixes; the object's fields do not change.
  /// \return The largest lNr in T_Auftrag; 0 for an empty table.
  /// \throws ZTkDb::Error 91 while unconnected; 3420 once the database is closed; other
  ///   engine errors unchanged.
  int32_t GetLastNr();
  /// Remark (stBemerkung).
  const std::string& Bemerkung() const;
  /// Sets Bemerkung; nothing is written until Update.
  void Bemerkung(const std::string& value);
  /// Retired: only shows the box "CreateNew4 benutzen!" (default title, number 0) and
  /// touches neither the database nor the object. CreateNew7 is current. Never raises.
  /// \param lNr Not used.
  /// \param lAuftragNehmerId Not used.
  /// \param AuftragsDatum Not used.
  /// \param stAuftragsZeit Not used.
  /// \param lObjId Not used.
  /// \param eObjTyp Not used.
  /// \param stAuftrag Not used.
  /// \param ErledBisDatum Not used.
  /// \param stErledBisZeit Not used.
  /// \param WiederDatum Not used.
  /// \param stWiederZeit Not used.
  /// \param bErledigt Not used.
  /// \param ErledigtDatum Not used.
  /// \param stErledigtZeit Not used.
  /// \param lOvObjAufgabeId Not used.
  /// \param lOvObjHistorieId Not used.
  /// \param byAuftragstyp Not used.
  /// \param lAnsprechId Not used.
  /// \param byGebTyp Not used.
  /// \param lGebId Not used.
  /// \param byHerkunft Not used.
  /// \param stNrVorsatz Not used.
  /// \param stBearbeiter Not used.
  /// \param stTelBearbeiter Not used.
  /// \param stAufGeber Not used.
  /// \param lAufGebFaId Not used.
  /// \param stAufGebKst Not used.
  /// \param stOrt Not used.
  /// \param stObjekt Not used.
  /// \param stKostenstelle Not used.
  /// \param stRechnEmpf Not used.
  /// \param bGesperrt Not used.
  /// \param stBemerkung Not used.
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
  /// Order type as text, stored in stAuftragstyp.
  const std::string& AuftragstypText() const;
  /// Sets AuftragstypText; nothing is written until Update.
  void AuftragstypText(const std::string& value);
  /// Retired: only shows the box "Createnew5 benutzen!" (title "Zanto", number 0) and
  /// touches neither the database nor the object. CreateNew7 is current. Never raises.
  /// \param lNr Not used.
  /// \param lAuftragNehmerId Not used.
  /// \param AuftragsDatum Not used.
  /// \param stAuftragsZeit Not used.
  /// \param lObjId Not used.
  /// \param eObjTyp Not used.
  /// \param stAuftrag Not used.
  /// \param ErledBisDatum Not used.
  /// \param stErledBisZeit Not used.
  /// \param WiederDatum Not used.
  /// \param stWiederZeit Not used.
  /// \param bErledigt Not used.
  /// \param ErledigtDatum Not used.
  /// \param stErledigtZeit Not used.
  /// \param lOvObjAufgabeId Not used.
  /// \param lOvObjHistorieId Not used.
  /// \param byAuftragstyp Not used.
  /// \param lAnsprechId Not used.
  /// \param byGebTyp Not used.
  /// \param lGebId Not used.
  /// \param byHerkunft Not used.
  /// \param stNrVorsatz Not used.
  /// \param stBearbeiter Not used.
  /// \param stTelBearbeiter Not used.
  /// \param stAufGeber Not used.
  /// \param lAufGebFaId Not used.
  /// \param stAufGebKst Not used.
  /// \param stOrt Not used.
  /// \param stObjekt Not used.
  /// \param stKostenstelle Not used.
  /// \param stRechnEmpf Not used.
  /// \param bGesperrt Not used.
  /// \param stBemerkung Not used.
  /// \param stAuftragstyp Not used.
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
  /// Costs (cuKosten).
  Currency Kosten() const;
  /// Sets Kosten; nothing is written until Update.
  void Kosten(Currency value);
  /// Retired: only shows the box "Createnew6 benutzen!" (title "Zanto", number 0) and
  /// touches neither the database nor the object. CreateNew7 is current. Never raises.
  /// \param lNr Not used.
  /// \param lAuftragNehmerId Not used.
  /// \param AuftragsDatum Not used.
  /// \param stAuftragsZeit Not used.
  /// \param lObjId Not used.
  /// \param eObjTyp Not used.
  /// \param stAuftrag Not used.
  /// \param ErledBisDatum Not used.
  /// \param stErledBisZeit Not used.
  /// \param WiederDatum Not used.
  /// \param stWiederZeit Not used.
  /// \param bErledigt Not used.
  /// \param ErledigtDatum Not used.
  /// \param stErledigtZeit Not used.
  /// \param lOvObjAufgabeId Not used.
  /// \param lOvObjHistorieId Not used.
  /// \param byAuftragstyp Not used.
  /// \param lAnsprechId Not used.
  /// \param byGebTyp Not used.
  /// \param lGebId Not used.
  /// \param byHerkunft Not used.
  /// \param stNrVorsatz Not used.
  /// \param stBearbeiter Not used.
  /// \param stTelBearbeiter Not used.
  /// \param stAufGeber Not used.
  /// \param lAufGebFaId Not used.
  /// \param stAufGebKst Not used.
  /// \param stOrt Not used.
  /// \param stObjekt Not used.
  /// \param stKostenstelle Not used.
  /// \param stRechnEmpf Not used.
  /// \param bGesperrt Not used.
  /// \param stBemerkung Not used.
  /// \param stAuftragstyp Not used.
  /// \param cuKosten Not used.
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
  /// Site id (lSoId); 0 means valid for every site, which the site filters of the lists
  /// always admit.
  int32_t SoId() const;
  /// Sets SoId; nothing is written until Update.
  void SoId(int32_t value);
  /// Retired: only shows the box "Createnew7 benutzen!" (title "Zanto", number 0) and
  /// touches neither the database nor the object. CreateNew7 is current. Never raises.
  /// \param lNr Not used.
  /// \param lAuftragNehmerId Not used.
  /// \param AuftragsDatum Not used.
  /// \param stAuftragsZeit Not used.
  /// \param lObjId Not used.
  /// \param eObjTyp Not used.
  /// \param stAuftrag Not used.
  /// \param ErledBisDatum Not used.
  /// \param stErledBisZeit Not used.
  /// \param WiederDatum Not used.
  /// \param stWiederZeit Not used.
  /// \param bErledigt Not used.
  /// \param ErledigtDatum Not used.
  /// \param stErledigtZeit Not used.
  /// \param lOvObjAufgabeId Not used.
  /// \param lOvObjHistorieId Not used.
  /// \param byAuftragstyp Not used.
  /// \param lAnsprechId Not used.
  /// \param byGebTyp Not used.
  /// \param lGebId Not used.
  /// \param lSoId Not used.
  /// \param byHerkunft Not used.
  /// \param stNrVorsatz Not used.
  /// \param stBearbeiter Not used.
  /// \param stTelBearbeiter Not used.
  /// \param stAufGeber Not used.
  /// \param lAufGebFaId Not used.
  /// \param stAufGebKst Not used.
  /// \param stOrt Not used.
  /// \param stObjekt Not used.
  /// \param stKostenstelle Not used.
  /// \param stRechnEmpf Not used.
  /// \param bGesperrt Not used.
  /// \param stBemerkung Not used.
  /// \param stAuftragstyp Not used.
  /// \param cuKosten Not used.
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
  /// Kind of service (stLeistungsart).
  const std::string& Leistungsart() const;
  /// Sets Leistungsart; nothing is written until Update.
  void Leistungsart(const std::string& value);
  /// Person responsible (stVerantwortlicher).
  const std::string& Verantwortlicher() const;
  /// Sets Verantwortlicher; nothing is written until Update.
  void Verantwortlicher(const std::string& value);
  /// Inserts an order with a fresh UId and loads it back by that UId, which gives the
  /// object the id the database assigned (Id) and every stored value. The object is
  /// cleared first. lNr and stNrVorsatz are written as given: nothing checks or assigns
  /// the number (GetLastNr + 1 gives the next one).
  /// \par Message box
  /// "CAuftrag.Create fehlgeschlagen. Bitte an TORQ melden!": critical, titled "Zanto",
  /// MessageBoxCall::number 3155 (errInsertFailed), when the insert wrote no row; the
  /// object is then left cleared (Id 0) and nothing is raised.
  /// \param lNr Order number (lNr).
  /// \param lAuftragNehmerId Id of the contractor (lAuftragNehmerId).
  /// \param AuftragsDatum Date of the order (AuftragsDatum).
  /// \param stAuftragsZeit Time of the order, as text (stAuftragsZeit).
  /// \param lObjId Id of the object the order concerns (lObjId).
  /// \param eObjTyp Kind of that object (byObjTyp).
  /// \param stAuftrag Text of the order (stAuftrag).
  /// \param ErledBisDatum Due date (ErledBisDatum); NoDate for none.
  /// \param stErledBisZeit Due time, as text (stErledBisZeit).
  /// \param WiederDatum Resubmission date (WiederDatum); NoDate for none.
  /// \param stWiederZeit Resubmission time, as text (stWiederZeit).
  /// \param bErledigt Whether the order is done (bErledigt).
  /// \param ErledigtDatum Date it was done (ErledigtDatum); NoDate while it is open.
  /// \param stErledigtZeit Time it was done, as text (stErledigtZeit).
  /// \param lOvObjAufgabeId Object task id, stored in lTechObjTerminId (ObjAufgabeId).
  /// \param lOvObjHistorieId Object history id, stored in lTageFrist (ObjHistorieId).
  /// \param byAuftragstyp Order type code (byAuftragstyp).
  /// \param lAnsprechId Id of the contact person (lAnsprechId).
  /// \param byGebTyp Building type (byGebTyp).
  /// \param lGebId Building id (lGebId).
  /// \param lSoId Site id (lSoId); 0 for every site.
  /// \param byHerkunft Origin, a HerkunftTypes value (byHerkunft).
  /// \param stNrVorsatz Number prefix (stNrVorsatz).
  /// \param stBearbeiter Clerk handling the order (stBearbeiter).
  /// \param stTelBearbeiter The clerk's telephone (stTelBearbeiter).
  /// \param stAufGeber Client who placed the order (stAuftragGeber).
  /// \param lAufGebFaId Company id of the client (lAufGebFaId).
  /// \param stAufGebKst The client's cost centre (stAufGebKst).
  /// \param stOrt Place (stOrt).
  /// \param stObjekt The object, as text (stObjekt).
  /// \param stKostenstelle Cost centre (stKostenstelle).
  /// \param stRechnEmpf Invoice recipient (stRechnEmpf).
  /// \param bGesperrt Whether the order is locked (bGesperrt).
  /// \param stBemerkung Remark (stBemerkung).
  /// \param stAuftragstyp Order type as text (stAuftragstyp, AuftragstypText).
  /// \param cuKosten Costs (cuKosten).
  /// \param stLeistungsart Kind of service (stLeistungsart).
  /// \param stVerantwortlicher Person responsible (stVerantwortlicher).
  /// \throws ZTkDb::Error 91 while unconnected; 6 for a date outside 01.01.0100 to
  ///   31.12.9999 or an amount the database cannot store exactly (nothing is sent); 3163
  ///   for a text longer than its column; 3027 on a read-only open; 3260 when the lock
  ///   stays held past the wait; 3420 once the database is closed; other engine errors
  ///   unchanged.
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
