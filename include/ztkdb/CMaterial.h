#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ztkdb/Currency.h"
#include "ztkdb/Export.h"

namespace ZTkDb {

class Recordset;
namespace detail {
template <typename>
class ListCursor;
}

// One material booking on a work order: one row of T_AMaterial. The class
// computes no amounts; it stores what it is given.
//
// Setting a property changes only the object (Einheit not even that); Update
// writes every field at once under the row's UId, and shows
// "CMaterial.Update fehlgeschlagen. Bitte an TORQ melden!" when somebody else
// changed or deleted the row since it was read. Members other than the
// properties, ConnectStorage and the retired creation methods raise 91 while
// the object is unconnected; every error reaches the caller unchanged.
class ZTKDB_API CMaterial {
 public:
  CMaterial();
  ~CMaterial();
  CMaterial(const CMaterial&) = delete;
  CMaterial& operator=(const CMaterial&) = delete;

  int32_t Id() const;
  const std::string& UId() const;
  int32_t AuftragId() const;
  void AuftragId(int32_t value);
  const std::string& Bezeichnung() const;
  void Bezeichnung(const std::string& value);
  double Menge() const;
  void Menge(double value);
  Currency PreisProEinheit() const;
  void PreisProEinheit(Currency value);
  double Faktor() const;
  void Faktor(double value);
  int32_t RechnEmpfId() const;
  void RechnEmpfId(int32_t value);
  const std::string& Kostenart() const;
  void Kostenart(const std::string& value);
  const std::string& Kostenstelle() const;
  void Kostenstelle(const std::string& value);
  const std::string& RechnEmpf() const;
  void RechnEmpf(const std::string& value);
  const std::string& Einheit() const;
  // Keeps the current unit whatever it is given: the unit is set only by
  // CreateNew3 and by loading a row, so Update writes the loaded unit.
  void Einheit(const std::string& value);
  bool Fremdleistung() const;
  void Fremdleistung(bool value);

  // Binds the object to the client's open database; nothing happens for an
  // empty name or a client that is not open.
  void ConnectStorage(const std::string& stClientName);
  // Retired creation methods: each only shows its box ("CreateNew1
  // benutzen!", "CreateNew2 verwenden.", "CreateNew3 verwenden.") and
  // touches nothing.
  void CreateNew(int32_t lAuftragId, const std::string& stBezeichnung, double dMenge,
                 Currency cuPreisProEinheit, double dFaktor, int32_t lRechnEmpfId,
                 const std::string& stKostenart, const std::string& stKST,
                 const std::string& stEinheit);
  void CreateNew1(int32_t lAuftragId, const std::string& stBezeichnung, double dMenge,
                  Currency cuPreisProEinheit, double dFaktor, int32_t lRechnEmpfId,
                  const std::string& stKostenart, const std::string& stKST,
                  const std::string& stEinheit, const std::string& stRechnEmpf);
  void CreateNew2(int32_t lAuftragId, const std::string& stBezeichnung, double dMenge,
                  Currency cuPreisProEinheit, double dFaktor, int32_t lRechnEmpfId,
                  const std::string& stKostenart, const std::string& stKST,
                  const std::string& stEinheit, const std::string& stRechnEmpf,
                  bool bFremdleistung);
  // Loads the row without clearing first; a missing id clears the object
  // (Id 0) without an error.
  void ReadById(int32_t lId);
  void Update();
  // Deletes the row whatever its version and clears the object.
  void Delete();
  const std::string& MatKlasse() const;
  void MatKlasse(const std::string& value);
  // Inserts a booking with a fresh UId and loads it back by that UId; stKST
  // is the cost centre. An insert that affects no row shows
  // "CMaterial.Create fehlgeschlagen. Bitte an TORQ melden!" and leaves the
  // object cleared.
  void CreateNew3(int32_t lAuftragId, const std::string& stMatKlasse,
                  const std::string& stBezeichnung, double dMenge, Currency cuPreisProEinheit,
                  double dFaktor, int32_t lRechnEmpfId, const std::string& stKostenart,
                  const std::string& stKST, const std::string& stEinheit,
                  const std::string& stRechnEmpf, bool bFremdleistung);

 private:
  template <typename>
  friend class detail::ListCursor;
  void LoadFromRecordset(Recordset& rs);

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace ZTkDb
