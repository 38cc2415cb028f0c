#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"
#include "ztkdb/Export.h"

namespace ZTkDb {

class Recordset;
namespace detail {
template <typename>
class ListCursor;
}

// One labour or service booking on a work order: one row of T_Leistung.
// The class computes nothing (no hours times price, no travel cost); it
// stores what it is given. Leistart is stored in stLeistArt.
//
// Setting a property changes only the object; Update writes every field at
// once under the row's UId, and shows "CLeistung.Update fehlgeschlagen. Bitte
// an TORQ melden!" when somebody else changed or deleted the row since it was
// read. Members other than the properties, ConnectStorage and the retired
// CreateNew raise 91 while the object is unconnected; every error reaches
// the caller unchanged.
class ZTKDB_API CLeistung {
 public:
  CLeistung();
  ~CLeistung();
  CLeistung(const CLeistung&) = delete;
  CLeistung& operator=(const CLeistung&) = delete;

  int32_t Id() const;
  const std::string& UId() const;
  int32_t AuftragId() const;
  void AuftragId(int32_t value);
  int32_t AuftragNehmerId() const;
  void AuftragNehmerId(int32_t value);
  Date AusfDatum() const;
  void AusfDatum(Date value);
  const std::string& AusfZeit() const;
  void AusfZeit(const std::string& value);
  int32_t LeistArtId() const;
  void LeistArtId(int32_t value);
  double Stunden() const;
  void Stunden(double value);
  Currency PreisProStd() const;
  void PreisProStd(Currency value);
  double Faktor() const;
  void Faktor(double value);
  double Weg() const;
  void Weg(double value);
  Currency PreisProKm() const;
  void PreisProKm(Currency value);
  const std::string& Bemerkung() const;
  void Bemerkung(const std::string& value);
  int32_t RechnEmpfId() const;
  void RechnEmpfId(int32_t value);
  const std::string& Kostenart() const;
  void Kostenart(const std::string& value);
  const std::string& Kostenstelle() const;
  void Kostenstelle(const std::string& value);
  const std::string& Auftragnehmer() const;
  void Auftragnehmer(const std::string& value);
  const std::string& Ansprech() const;
  void Ansprech(const std::string& value);
  const std::string& Leistart() const;
  void Leistart(const std::string& value);
  const std::string& RechnEmpf() const;
  void RechnEmpf(const std::string& value);
  int32_t AnsprechId() const;
  void AnsprechId(int32_t value);
  bool Fremdleistung() const;
  void Fremdleistung(bool value);

  // Binds the object to the client's open database; nothing happens for an
  // empty name or a client that is not open.
  void ConnectStorage(const std::string& stClientName);
  // Retired: only shows "CreateNew1 benutzen!" and touches nothing.
  void CreateNew(int32_t lAuftragId, int32_t lAuftragNehmerId, Date AusfDatum,
                 const std::string& stAusfZeit, int32_t lLeistArtId, double dStunden,
                 Currency cuPreisProStd, double dFaktor, double dWeg, Currency cuPreisProKm,
                 const std::string& stBemerkung, int32_t lRechnEmpfId,
                 const std::string& stKostenart, int32_t lAnsprechId, const std::string& stKST);
  // Inserts a booking with a fresh UId and loads it back by that UId; stKST
  // is the cost centre. An insert that affects no row shows
  // "CLeistung.Create fehlgeschlagen. Bitte an TORQ melden!" and leaves the
  // object cleared.
  void CreateNew1(int32_t lAuftragId, int32_t lAuftragNehmerId, Date AusfDatum,
                  const std::string& stAusfZeit, int32_t lLeistArtId, double dStunden,
                  Currency cuPreisProStd, double dFaktor, double dWeg, Currency cuPreisProKm,
                  const std::string& stBemerkung, int32_t lRechnEmpfId,
                  const std::string& stKostenart, int32_t lAnsprechId, const std::string& stKST,
                  const std::string& stAuftragnehmer, const std::string& stAnsprech,
                  const std::string& stLeistArt, const std::string& stRechnEmpf,
                  bool bFremdleistung);
  // Loads the row without clearing first; a missing id clears the object
  // (Id 0) without an error.
  void ReadById(int32_t lId);
  void Update();
  // Deletes the row whatever its version and clears the object.
  void Delete();

 private:
  template <typename>
  friend class detail::ListCursor;
  void LoadFromRecordset(Recordset& rs);

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace ZTkDb
