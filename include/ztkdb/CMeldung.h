/// \file
/// The report record, CMeldung.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ztkdb/Date.h"
#include "ztkdb/Enums.h"
#include "ztkdb/Export.h"

namespace ZTkDb {

class Recordset;
namespace detail {
template <typename>
class ListCursor;
}

/// A report (Meldung): one row of T_Meldung — who reported what, when, about
/// which object, by when it is to be done, whether and when it was done.
/// Members stand in the order hosts bind to, so later additions are
/// interleaved with the methods and the ErledigtDatum getter stands apart from
/// its setter.
///
/// Setting a property changes only the object; Update writes every field at
/// once under the row's UId, and shows the critical box "CMeldung.Update
/// fehlgeschlagen. Bitte an TORQ melden!" (title "Zanto", MessageBoxCall::number
/// 3197) when somebody else changed or deleted the row since it was read.
/// Dates not set hold NoDate. Members other than the properties,
/// ConnectStorage and the retired creation methods raise 91 while the object
/// is unconnected; every error reaches the caller unchanged.
class ZTKDB_API CMeldung {
 public:
  /// An empty, unconnected report: Id 0, empty texts, every date NoDate.
  CMeldung();
  /// Releases the object's storage; the row stays as it is.
  ~CMeldung();
  /// Not copyable: each record owns its own storage.
  CMeldung(const CMeldung&) = delete;
  /// Not copyable: each record owns its own storage.
  CMeldung& operator=(const CMeldung&) = delete;

  /// Row id (lId), assigned by the database; 0 while no row is loaded.
  int32_t Id() const;
  /// Row token (stUId): replaced by every write; Update matches the row by it.
  const std::string& UId() const;
  /// Report number (lNr), counted per number prefix (NrVorsatz).
  int32_t Nr() const;
  /// Sets Nr; nothing is written until Update.
  void Nr(int32_t value);
  /// The reporter's name (stMelder).
  const std::string& Melder() const;
  /// Sets Melder; nothing is written until Update.
  void Melder(const std::string& value);
  /// The reporter's company id (lMelderFaId).
  int32_t MelderFaId() const;
  /// Sets MelderFaId; nothing is written until Update.
  void MelderFaId(int32_t value);
  /// The reporter's telephone (stMelderTel).
  const std::string& MelderTel() const;
  /// Sets MelderTel; nothing is written until Update.
  void MelderTel(const std::string& value);
  /// Report date (MeldeDatum); NoDate when none is set.
  Date MeldeDatum() const;
  /// Sets MeldeDatum; nothing is written until Update.
  void MeldeDatum(Date value);
  /// Report time, as free text (stMeldeZeit).
  const std::string& MeldeZeit() const;
  /// Sets MeldeZeit; nothing is written until Update.
  void MeldeZeit(const std::string& value);
  /// Id of the object the report concerns (lObjId).
  int32_t ObjId() const;
  /// Sets ObjId; nothing is written until Update.
  void ObjId(int32_t value);
  /// Kind of that object (byObjTyp).
  TkObjTypes ObjTyp() const;
  /// Sets ObjTyp; nothing is written until Update.
  void ObjTyp(TkObjTypes value);
  /// The report text (stMeldung, a long text). A Null column leaves the text the object
  /// held.
  const std::string& Meldung() const;
  /// Sets Meldung; nothing is written until Update.
  void Meldung(const std::string& value);
  /// To be done by, date (ErledBisDatum); NoDate when none is set.
  Date ErledBisDatum() const;
  /// Sets ErledBisDatum; nothing is written until Update.
  void ErledBisDatum(Date value);
  /// To be done by, time as free text (stErledBisZeit).
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
  /// Date the report was done (ErledigtDatum); NoDate while it is open, which the done
  /// lists rely on. Nothing couples it to Erledigt.
  Date ErledigtDatum() const;
  /// Whether the report is done (bErledigt).
  bool Erledigt() const;
  /// Sets Erledigt (ErledigtDatum stays as it is); nothing is written until Update.
  void Erledigt(bool value);
  /// Sets ErledigtDatum (Erledigt stays as it is); nothing is written until Update.
  void ErledigtDatum(Date value);
  /// Time the report was done, as free text (stErledigtZeit).
  const std::string& ErledigtZeit() const;
  /// Sets ErledigtZeit; nothing is written until Update.
  void ErledigtZeit(const std::string& value);
  /// Kind of building or location reference (byGebTyp).
  uint8_t GebTyp() const;
  /// Sets GebTyp; nothing is written until Update.
  void GebTyp(uint8_t value);
  /// Id of that building or location (lGebId).
  int32_t GebId() const;
  /// Sets GebId; nothing is written until Update.
  void GebId(int32_t value);
  /// Origin (byHerkunft): a HerkunftTypes value held as a byte, so other values pass.
  uint8_t Herkunft() const;
  /// Sets Herkunft, unchecked; nothing is written until Update.
  void Herkunft(uint8_t value);
  /// Number prefix (stNrVorsatz); with Nr it forms the number users see.
  const std::string& NrVorsatz() const;
  /// Sets NrVorsatz; nothing is written until Update.
  void NrVorsatz(const std::string& value);
  /// Clerk who took the report (stBearbeiter).
  const std::string& Bearbeiter() const;
  /// Sets Bearbeiter; nothing is written until Update.
  void Bearbeiter(const std::string& value);
  /// The clerk's telephone (stTelBearbeiter).
  const std::string& TelBearbeiter() const;
  /// Sets TelBearbeiter; nothing is written until Update.
  void TelBearbeiter(const std::string& value);
  /// Place (stOrt).
  const std::string& Ort() const;
  /// Sets Ort; nothing is written until Update.
  void Ort(const std::string& value);
  /// The object, as text (stObjekt).
  const std::string& Objekt() const;
  /// Sets Objekt; nothing is written until Update.
  void Objekt(const std::string& value);

  /// Binds the object to the client's open database; nothing happens for an
  /// empty name or a client that is not open (the object keeps the storage it
  /// had, or stays unconnected and raises 91 on its next call).
  /// \param stClientName The name the client's database was opened under (CTkDb).
  void ConnectStorage(const std::string& stClientName);
  /// Retired creation methods: each only shows a box naming the next version
  /// and touches neither the database nor the object. CreateNew4 is current.
  /// This one shows "CreateNew1 benutzen!" (default title, number 0). Never raises.
  /// \param lNr Not used.
  /// \param stMelder Not used.
  /// \param lMelderFaId Not used.
  /// \param stMelderTel Not used.
  /// \param MeldeDatum Not used.
  /// \param stMeldeZeit Not used.
  /// \param lObjId Not used.
  /// \param eObjTyp Not used.
  /// \param stMeldung Not used.
  /// \param ErledBisDatum Not used.
  /// \param stErledBisZeit Not used.
  /// \param WiederDatum Not used.
  /// \param stWiederZeit Not used.
  /// \param bErledigt Not used.
  /// \param ErledigtDatum Not used.
  /// \param stErledigtZeit Not used.
  /// \param byGebTyp Not used.
  /// \param lGebId Not used.
  /// \param byHerkunft Not used.
  /// \param stNrVorsatz Not used.
  /// \param stBearbeiter Not used.
  /// \param stTelBearbeiter Not used.
  /// \param stOrt Not used.
  /// \param stObjekt Not used.
  void CreateNew(int32_t lNr, const std::string& stMelder, int32_t lMelderFaId,
                 const std::string& stMelderTel, Date MeldeDatum, const std::string& stMeldeZeit,
                 int32_t lObjId, TkObjTypes eObjTyp, const std::string& stMeldung,
                 Date ErledBisDatum, const std::string& stErledBisZeit, Date WiederDatum,
                 const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                 const std::string& stErledigtZeit, uint8_t byGebTyp, int32_t lGebId,
                 uint8_t byHerkunft, const std::string& stNrVorsatz,
                 const std::string& stBearbeiter, const std::string& stTelBearbeiter,
                 const std::string& stOrt, const std::string& stObjekt);
  /// Loads the report with that id. The reads load the first matching row without
  /// clearing the object first (a Null report text keeps the text held); when nothing
  /// matches the object is cleared (Id 0) and nothing is raised.
  /// \param lId Row id (lId) of the report.
  /// \throws ZTkDb::Error 91 while unconnected; 94 when a column that takes no Null holds
  ///   Null (the columns before it are loaded, the others keep their values); 3420 once
  ///   the database is closed; other engine errors unchanged.
  void ReadById(int32_t lId);
  /// Loads the report with that number and prefix, as ReadById loads; of several matches
  /// the first delivered.
  /// \param lNr Report number (lNr).
  /// \param stVorsatz Number prefix. It goes into the statement as given, unescaped: a
  ///   quote there changes the statement, so pass only trusted text. A text that would
  ///   make a second statement raises 3129, one that cannot be read with certainty 3075.
  /// \throws ZTkDb::Error as ReadById, and 3129 or 3075 for such a prefix.
  void ReadByNr(int32_t lNr, const std::string& stVorsatz);
  /// Writes every field to the object's row in one statement, with a fresh UId, provided
  /// the row still carries the UId the object holds. The object takes the fresh UId
  /// whether or not the row was written, so after a conflict every further Update fails
  /// too until the report is read again.
  /// \par Message box
  /// "CMeldung.Update fehlgeschlagen. Bitte an TORQ melden!": critical, titled "Zanto",
  /// MessageBoxCall::number 3197 (errWriteConflict), when no row was written because
  /// another writer changed or deleted it since it was read (or Id is 0). Nothing is
  /// raised then.
  /// \throws ZTkDb::Error 91 while unconnected; 6 for a date outside 01.01.0100 to
  ///   31.12.9999 (nothing is sent); 3163 for a text longer than its column; 3027 on a
  ///   read-only open; 3260 when the lock stays held past the wait; 3420 once the
  ///   database is closed; other engine errors unchanged.
  void Update();
  /// Deletes the row whatever its version and clears the object. No box: a row
  /// that was gone already is no error.
  /// \throws ZTkDb::Error 91 while unconnected; 3027 on a read-only open; 3260 when the
  ///   lock stays held past the wait; 3420 once the database is closed; other engine
  ///   errors unchanged.
  void Delete();
  /// The highest report number over all prefixes; the object's fields do not change.
  /// \return The largest lNr in T_Meldung; 0 for an empty table.
  /// \throws ZTkDb::Error 91 while unconnected; 3420 once the database is closed; other
  ///   engine errors unchanged.
  int32_t GetLastNr();
  /// Remark (stBemerkung).
  const std::string& Bemerkung() const;
  /// Sets Bemerkung; nothing is written until Update.
  void Bemerkung(const std::string& value);
  /// Retired: only shows "CreateNew2 benutzen!" (default title, number 0) and touches
  /// neither the database nor the object. CreateNew4 is current. Never raises.
  /// \param lNr Not used.
  /// \param stMelder Not used.
  /// \param lMelderFaId Not used.
  /// \param stMelderTel Not used.
  /// \param MeldeDatum Not used.
  /// \param stMeldeZeit Not used.
  /// \param lObjId Not used.
  /// \param eObjTyp Not used.
  /// \param stMeldung Not used.
  /// \param ErledBisDatum Not used.
  /// \param stErledBisZeit Not used.
  /// \param WiederDatum Not used.
  /// \param stWiederZeit Not used.
  /// \param bErledigt Not used.
  /// \param ErledigtDatum Not used.
  /// \param stErledigtZeit Not used.
  /// \param byGebTyp Not used.
  /// \param lGebId Not used.
  /// \param byHerkunft Not used.
  /// \param stNrVorsatz Not used.
  /// \param stBearbeiter Not used.
  /// \param stTelBearbeiter Not used.
  /// \param stOrt Not used.
  /// \param stObjekt Not used.
  /// \param stBemerkung Not used.
  void CreateNew1(int32_t lNr, const std::string& stMelder, int32_t lMelderFaId,
                  const std::string& stMelderTel, Date MeldeDatum, const std::string& stMeldeZeit,
                  int32_t lObjId, TkObjTypes eObjTyp, const std::string& stMeldung,
                  Date ErledBisDatum, const std::string& stErledBisZeit, Date WiederDatum,
                  const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                  const std::string& stErledigtZeit, uint8_t byGebTyp, int32_t lGebId,
                  uint8_t byHerkunft, const std::string& stNrVorsatz,
                  const std::string& stBearbeiter, const std::string& stTelBearbeiter,
                  const std::string& stOrt, const std::string& stObjekt,
                  const std::string& stBemerkung);
  /// The reporter's e-mail address (stEmail).
  const std::string& Email() const;
  /// Sets Email; nothing is written until Update.
  void Email(const std::string& value);
  /// Retired: only shows "CreateNew3 benutzen!" (default title, number 0) and touches
  /// neither the database nor the object. CreateNew4 is current. Never raises.
  /// \param lNr Not used.
  /// \param stMelder Not used.
  /// \param lMelderFaId Not used.
  /// \param stMelderTel Not used.
  /// \param MeldeDatum Not used.
  /// \param stMeldeZeit Not used.
  /// \param lObjId Not used.
  /// \param eObjTyp Not used.
  /// \param stMeldung Not used.
  /// \param ErledBisDatum Not used.
  /// \param stErledBisZeit Not used.
  /// \param WiederDatum Not used.
  /// \param stWiederZeit Not used.
  /// \param bErledigt Not used.
  /// \param ErledigtDatum Not used.
  /// \param stErledigtZeit Not used.
  /// \param byGebTyp Not used.
  /// \param lGebId Not used.
  /// \param byHerkunft Not used.
  /// \param stNrVorsatz Not used.
  /// \param stBearbeiter Not used.
  /// \param stTelBearbeiter Not used.
  /// \param stOrt Not used.
  /// \param stObjekt Not used.
  /// \param stBemerkung Not used.
  /// \param stEmail Not used.
  void CreateNew2(int32_t lNr, const std::string& stMelder, int32_t lMelderFaId,
                  const std::string& stMelderTel, Date MeldeDatum, const std::string& stMeldeZeit,
                  int32_t lObjId, TkObjTypes eObjTyp, const std::string& stMeldung,
                  Date ErledBisDatum, const std::string& stErledBisZeit, Date WiederDatum,
                  const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                  const std::string& stErledigtZeit, uint8_t byGebTyp, int32_t lGebId,
                  uint8_t byHerkunft, const std::string& stNrVorsatz,
                  const std::string& stBearbeiter, const std::string& stTelBearbeiter,
                  const std::string& stOrt, const std::string& stObjekt,
                  const std::string& stBemerkung, const std::string& stEmail);
  /// The highest report number under one prefix; the object's fields do not change.
  /// \param stNrVorsatz Number prefix. It goes into the statement as given, unescaped (see
  ///   ReadByNr).
  /// \return The largest lNr under that prefix; 0 when the prefix has none.
  /// \throws ZTkDb::Error as GetLastNr, and 3129 or 3075 for a prefix that would make a
  ///   second statement or cannot be read with certainty.
  int32_t GetLastNrVorsatz(const std::string& stNrVorsatz);
  /// Site id (lSoId); 0 means valid for every site, which the site filters of the lists
  /// always admit.
  int32_t SoId() const;
  /// Sets SoId; nothing is written until Update.
  void SoId(int32_t value);
  /// Retired: only shows "CreateNew4 benutzen!" (default title, number 0) and touches
  /// neither the database nor the object. CreateNew4 is current. Never raises.
  /// \param lNr Not used.
  /// \param stMelder Not used.
  /// \param lMelderFaId Not used.
  /// \param stMelderTel Not used.
  /// \param MeldeDatum Not used.
  /// \param stMeldeZeit Not used.
  /// \param lObjId Not used.
  /// \param eObjTyp Not used.
  /// \param stMeldung Not used.
  /// \param ErledBisDatum Not used.
  /// \param stErledBisZeit Not used.
  /// \param WiederDatum Not used.
  /// \param stWiederZeit Not used.
  /// \param bErledigt Not used.
  /// \param ErledigtDatum Not used.
  /// \param stErledigtZeit Not used.
  /// \param byGebTyp Not used.
  /// \param lGebId Not used.
  /// \param lSoId Not used.
  /// \param byHerkunft Not used.
  /// \param stNrVorsatz Not used.
  /// \param stBearbeiter Not used.
  /// \param stTelBearbeiter Not used.
  /// \param stOrt Not used.
  /// \param stObjekt Not used.
  /// \param stBemerkung Not used.
  /// \param stEmail Not used.
  void CreateNew3(int32_t lNr, const std::string& stMelder, int32_t lMelderFaId,
                  const std::string& stMelderTel, Date MeldeDatum, const std::string& stMeldeZeit,
                  int32_t lObjId, TkObjTypes eObjTyp, const std::string& stMeldung,
                  Date ErledBisDatum, const std::string& stErledBisZeit, Date WiederDatum,
                  const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                  const std::string& stErledigtZeit, uint8_t byGebTyp, int32_t lGebId,
                  int32_t lSoId, uint8_t byHerkunft, const std::string& stNrVorsatz,
                  const std::string& stBearbeiter, const std::string& stTelBearbeiter,
                  const std::string& stOrt, const std::string& stObjekt,
                  const std::string& stBemerkung, const std::string& stEmail);
  /// Kind of service requested (stLeistungsart).
  const std::string& Leistungsart() const;
  /// Sets Leistungsart; nothing is written until Update.
  void Leistungsart(const std::string& value);
  /// Person responsible (stVerantwortlicher).
  const std::string& Verantwortlicher() const;
  /// Sets Verantwortlicher; nothing is written until Update.
  void Verantwortlicher(const std::string& value);
  /// Inserts a report with a fresh UId and loads it back by that UId, which gives the
  /// object the id the database assigned (Id) and every stored value. The object is
  /// cleared first. lNr and stNrVorsatz are written as given (GetLastNrVorsatz + 1 gives
  /// the next number).
  /// \par Message box
  /// "CMeldung.Create fehlgeschlagen. Bitte an TORQ melden!": critical, titled "Zanto",
  /// MessageBoxCall::number 3155 (errInsertFailed), when the insert wrote no row; the
  /// object is then left cleared (Id 0) and nothing is raised.
  /// \param lNr Report number (lNr).
  /// \param stMelder The reporter's name (stMelder).
  /// \param lMelderFaId The reporter's company id (lMelderFaId).
  /// \param stMelderTel The reporter's telephone (stMelderTel).
  /// \param MeldeDatum Report date (MeldeDatum).
  /// \param stMeldeZeit Report time, as text (stMeldeZeit).
  /// \param lObjId Id of the object the report concerns (lObjId).
  /// \param eObjTyp Kind of that object (byObjTyp).
  /// \param stMeldung The report text (stMeldung).
  /// \param ErledBisDatum To be done by, date (ErledBisDatum); NoDate for none.
  /// \param stErledBisZeit To be done by, time as text (stErledBisZeit).
  /// \param WiederDatum Resubmission date (WiederDatum); NoDate for none.
  /// \param stWiederZeit Resubmission time, as text (stWiederZeit).
  /// \param bErledigt Whether the report is done (bErledigt).
  /// \param ErledigtDatum Date it was done (ErledigtDatum); NoDate while it is open.
  /// \param stErledigtZeit Time it was done, as text (stErledigtZeit).
  /// \param byGebTyp Kind of building or location reference (byGebTyp).
  /// \param lGebId Id of that building or location (lGebId).
  /// \param lSoId Site id (lSoId); 0 for every site.
  /// \param byHerkunft Origin, a HerkunftTypes value (byHerkunft).
  /// \param stNrVorsatz Number prefix (stNrVorsatz).
  /// \param stBearbeiter Clerk who took the report (stBearbeiter).
  /// \param stTelBearbeiter The clerk's telephone (stTelBearbeiter).
  /// \param stOrt Place (stOrt).
  /// \param stObjekt The object, as text (stObjekt).
  /// \param stBemerkung Remark (stBemerkung).
  /// \param stEmail The reporter's e-mail address (stEmail).
  /// \param stLeistungsart Kind of service requested (stLeistungsart).
  /// \param stVerantwortlicher Person responsible (stVerantwortlicher).
  /// \throws ZTkDb::Error 91 while unconnected; 6 for a date outside 01.01.0100 to
  ///   31.12.9999 (nothing is sent); 3163 for a text longer than its column; 3027 on a
  ///   read-only open; 3260 when the lock stays held past the wait; 3420 once the
  ///   database is closed; other engine errors unchanged.
  void CreateNew4(int32_t lNr, const std::string& stMelder, int32_t lMelderFaId,
                  const std::string& stMelderTel, Date MeldeDatum, const std::string& stMeldeZeit,
                  int32_t lObjId, TkObjTypes eObjTyp, const std::string& stMeldung,
                  Date ErledBisDatum, const std::string& stErledBisZeit, Date WiederDatum,
                  const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                  const std::string& stErledigtZeit, uint8_t byGebTyp, int32_t lGebId,
                  int32_t lSoId, uint8_t byHerkunft, const std::string& stNrVorsatz,
                  const std::string& stBearbeiter, const std::string& stTelBearbeiter,
                  const std::string& stOrt, const std::string& stObjekt,
                  const std::string& stBemerkung, const std::string& stEmail,
                  const std::string& stLeistungsart, const std::string& stVerantwortlicher);

 private:
  template <typename>
  friend class detail::ListCursor;
  void LoadFromRecordset(Recordset& rs);

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace ZTkDb
