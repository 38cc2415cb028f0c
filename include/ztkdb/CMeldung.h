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

// A report (Meldung): one row of T_Meldung — who reported what, when, about
// which object, by when it is to be done, whether and when it was done.
// Members stand in the order hosts bind to, so later additions are
// interleaved with the methods and the ErledigtDatum getter stands apart from
// its setter.
//
// Setting a property changes only the object; Update writes every field at
// once under the row's UId, and shows "CMeldung.Update fehlgeschlagen. Bitte
// an TORQ melden!" when somebody else changed or deleted the row since it was
// read. Dates not set hold NoDate. Members other than the properties,
// ConnectStorage and the retired creation methods raise 91 while the object
// is unconnected; every error reaches the caller unchanged.
class ZTKDB_API CMeldung {
 public:
  CMeldung();
  ~CMeldung();
  CMeldung(const CMeldung&) = delete;
  CMeldung& operator=(const CMeldung&) = delete;

  int32_t Id() const;
  const std::string& UId() const;
  int32_t Nr() const;
  void Nr(int32_t value);
  const std::string& Melder() const;
  void Melder(const std::string& value);
  int32_t MelderFaId() const;
  void MelderFaId(int32_t value);
  const std::string& MelderTel() const;
  void MelderTel(const std::string& value);
  Date MeldeDatum() const;
  void MeldeDatum(Date value);
  const std::string& MeldeZeit() const;
  void MeldeZeit(const std::string& value);
  int32_t ObjId() const;
  void ObjId(int32_t value);
  TkObjTypes ObjTyp() const;
  void ObjTyp(TkObjTypes value);
  const std::string& Meldung() const;
  void Meldung(const std::string& value);
  Date ErledBisDatum() const;
  void ErledBisDatum(Date value);
  const std::string& ErledBisZeit() const;
  void ErledBisZeit(const std::string& value);
  Date WiederDatum() const;
  void WiederDatum(Date value);
  const std::string& WiederZeit() const;
  void WiederZeit(const std::string& value);
  Date ErledigtDatum() const;
  bool Erledigt() const;
  void Erledigt(bool value);
  void ErledigtDatum(Date value);
  const std::string& ErledigtZeit() const;
  void ErledigtZeit(const std::string& value);
  uint8_t GebTyp() const;
  void GebTyp(uint8_t value);
  int32_t GebId() const;
  void GebId(int32_t value);
  uint8_t Herkunft() const;
  void Herkunft(uint8_t value);
  const std::string& NrVorsatz() const;
  void NrVorsatz(const std::string& value);
  const std::string& Bearbeiter() const;
  void Bearbeiter(const std::string& value);
  const std::string& TelBearbeiter() const;
  void TelBearbeiter(const std::string& value);
  const std::string& Ort() const;
  void Ort(const std::string& value);
  const std::string& Objekt() const;
  void Objekt(const std::string& value);

  // Binds the object to the client's open database; nothing happens for an
  // empty name or a client that is not open.
  void ConnectStorage(const std::string& stClientName);
  // Retired creation methods: each only shows a box naming the next version
  // and touches neither the database nor the object. CreateNew4 is current.
  void CreateNew(int32_t lNr, const std::string& stMelder, int32_t lMelderFaId,
                 const std::string& stMelderTel, Date MeldeDatum, const std::string& stMeldeZeit,
                 int32_t lObjId, TkObjTypes eObjTyp, const std::string& stMeldung,
                 Date ErledBisDatum, const std::string& stErledBisZeit, Date WiederDatum,
                 const std::string& stWiederZeit, bool bErledigt, Date ErledigtDatum,
                 const std::string& stErledigtZeit, uint8_t byGebTyp, int32_t lGebId,
                 uint8_t byHerkunft, const std::string& stNrVorsatz,
                 const std::string& stBearbeiter, const std::string& stTelBearbeiter,
                 const std::string& stOrt, const std::string& stObjekt);
  // The reads load the first matching row without clearing the object first
  // (a Null report text keeps the text held); when nothing matches the object
  // is cleared (Id 0) and nothing is raised.
  void ReadById(int32_t lId);
  // stVorsatz goes into the statement as given.
  void ReadByNr(int32_t lNr, const std::string& stVorsatz);
  void Update();
  // Deletes the row whatever its version and clears the object.
  void Delete();
  // The highest report number over all prefixes; 0 for an empty table.
  int32_t GetLastNr();
  const std::string& Bemerkung() const;
  void Bemerkung(const std::string& value);
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
  const std::string& Email() const;
  void Email(const std::string& value);
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
  // The highest report number under one prefix (given as is); 0 when the
  // prefix has none.
  int32_t GetLastNrVorsatz(const std::string& stNrVorsatz);
  int32_t SoId() const;
  void SoId(int32_t value);
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
  const std::string& Leistungsart() const;
  void Leistungsart(const std::string& value);
  const std::string& Verantwortlicher() const;
  void Verantwortlicher(const std::string& value);
  // Inserts a report with a fresh UId and loads it back by that UId. lNr and
  // stNrVorsatz are written as given (GetLastNrVorsatz + 1 gives the next
  // number). An insert that affects no row shows "CMeldung.Create
  // fehlgeschlagen. Bitte an TORQ melden!" and leaves the object cleared.
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
