/// \file
/// The material booking record, CMaterial.
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

/// One material booking on a work order: one row of T_AMaterial. The class
/// computes no amounts; it stores what it is given.
///
/// Setting a property changes only the object (Einheit not even that); Update
/// writes every field at once under the row's UId, and shows the critical box
/// "CMaterial.Update fehlgeschlagen. Bitte an TORQ melden!" (title "Zanto",
/// MessageBoxCall::number 3197) when somebody else changed or deleted the row
/// since it was read. Members other than the properties, ConnectStorage and
/// the retired creation methods raise 91 while the object is unconnected;
/// every error reaches the caller unchanged.
class ZTKDB_API CMaterial {
 public:
  /// An empty, unconnected booking: Id 0, empty texts.
  CMaterial();
  /// Releases the object's storage; the row stays as it is.
  ~CMaterial();
  /// Not copyable: each record owns its own storage.
  CMaterial(const CMaterial&) = delete;
  /// Not copyable: each record owns its own storage.
  CMaterial& operator=(const CMaterial&) = delete;

  /// Row id (lId), assigned by the database; 0 while no row is loaded.
  int32_t Id() const;
  /// Row token (stUId): replaced by every write; Update matches the row by it.
  const std::string& UId() const;
  /// The work order the material is booked on (lAuftragId, an order's Id).
  int32_t AuftragId() const;
  /// Sets AuftragId; nothing is written until Update.
  void AuftragId(int32_t value);
  /// Description of the material (stBezeichnung).
  const std::string& Bezeichnung() const;
  /// Sets Bezeichnung; nothing is written until Update.
  void Bezeichnung(const std::string& value);
  /// Quantity, in Einheit (dMenge).
  double Menge() const;
  /// Sets Menge; nothing is written until Update.
  void Menge(double value);
  /// Price per unit (cuPreisProEinheit).
  Currency PreisProEinheit() const;
  /// Sets PreisProEinheit; nothing is written until Update.
  void PreisProEinheit(Currency value);
  /// Factor applied to the booking (dFaktor).
  double Faktor() const;
  /// Sets Faktor; nothing is written until Update.
  void Faktor(double value);
  /// Id of the invoice recipient (lRechnEmpfId).
  int32_t RechnEmpfId() const;
  /// Sets RechnEmpfId; nothing is written until Update.
  void RechnEmpfId(int32_t value);
  /// Cost type (stKostenart).
  const std::string& Kostenart() const;
  /// Sets Kostenart; nothing is written until Update.
  void Kostenart(const std::string& value);
  /// Cost centre (stKostenstelle).
  const std::string& Kostenstelle() const;
  /// Sets Kostenstelle; nothing is written until Update.
  void Kostenstelle(const std::string& value);
  /// The invoice recipient, as display text (stRechnEmpf).
  const std::string& RechnEmpf() const;
  /// Sets RechnEmpf; nothing is written until Update.
  void RechnEmpf(const std::string& value);
  /// Unit of the quantity (stEinheit), as CreateNew3 or the last load left it.
  const std::string& Einheit() const;
  /// Keeps the current unit whatever it is given: the unit is set only by
  /// CreateNew3 and by loading a row, so Update writes the loaded unit.
  void Einheit(const std::string& value);
  /// Whether the material came with outside work (bFremdleistung).
  bool Fremdleistung() const;
  /// Sets Fremdleistung; nothing is written until Update.
  void Fremdleistung(bool value);

  /// Binds the object to the client's open database; nothing happens for an
  /// empty name or a client that is not open (the object keeps the storage it
  /// had, or stays unconnected and raises 91 on its next call).
  /// \param stClientName The name the client's database was opened under (CTkDb).
  void ConnectStorage(const std::string& stClientName);
  /// Retired creation methods (this, CreateNew1 and CreateNew2): each only shows its box
  /// ("CreateNew1 benutzen!", "CreateNew2 verwenden.", "CreateNew3 verwenden." in turn;
  /// title "Zanto", number 0) and touches nothing. CreateNew3 is current. Never raises.
  /// \param lAuftragId Not used.
  /// \param stBezeichnung Not used.
  /// \param dMenge Not used.
  /// \param cuPreisProEinheit Not used.
  /// \param dFaktor Not used.
  /// \param lRechnEmpfId Not used.
  /// \param stKostenart Not used.
  /// \param stKST Not used.
  /// \param stEinheit Not used.
  void CreateNew(int32_t lAuftragId, const std::string& stBezeichnung, double dMenge,
                 Currency cuPreisProEinheit, double dFaktor, int32_t lRechnEmpfId,
                 const std::string& stKostenart, const std::string& stKST,
                 const std::string& stEinheit);
  /// Retired: only shows "CreateNew2 verwenden." (title "Zanto", number 0) and touches
  /// nothing. CreateNew3 is current. Never raises.
  /// \param lAuftragId Not used.
  /// \param stBezeichnung Not used.
  /// \param dMenge Not used.
  /// \param cuPreisProEinheit Not used.
  /// \param dFaktor Not used.
  /// \param lRechnEmpfId Not used.
  /// \param stKostenart Not used.
  /// \param stKST Not used.
  /// \param stEinheit Not used.
  /// \param stRechnEmpf Not used.
  void CreateNew1(int32_t lAuftragId, const std::string& stBezeichnung, double dMenge,
                  Currency cuPreisProEinheit, double dFaktor, int32_t lRechnEmpfId,
                  const std::string& stKostenart, const std::string& stKST,
                  const std::string& stEinheit, const std::string& stRechnEmpf);
  /// Retired: only shows "CreateNew3 verwenden." (title "Zanto", number 0) and touches
  /// nothing. CreateNew3 is current. Never raises.
  /// \param lAuftragId Not used.
  /// \param stBezeichnung Not used.
  /// \param dMenge Not used.
  /// \param cuPreisProEinheit Not used.
  /// \param dFaktor Not used.
  /// \param lRechnEmpfId Not used.
  /// \param stKostenart Not used.
  /// \param stKST Not used.
  /// \param stEinheit Not used.
  /// \param stRechnEmpf Not used.
  /// \param bFremdleistung Not used.
  void CreateNew2(int32_t lAuftragId, const std::string& stBezeichnung, double dMenge,
                  Currency cuPreisProEinheit, double dFaktor, int32_t lRechnEmpfId,
                  const std::string& stKostenart, const std::string& stKST,
                  const std::string& stEinheit, const std::string& stRechnEmpf,
                  bool bFremdleistung);
  /// Loads the row without clearing first; a missing id clears the object
  /// (Id 0) without an error.
  /// \param lId Row id (lId) of the booking.
  /// \throws ZTkDb::Error 91 while unconnected; 94 when a column that takes no Null holds
  ///   Null (the columns before it are loaded, the others keep their values); 3420 once
  ///   the database is closed; other engine errors unchanged.
  void ReadById(int32_t lId);
  /// Writes every field to the object's row in one statement, with a fresh UId, provided
  /// the row still carries the UId the object holds; the unit written is the one loaded.
  /// The object takes the fresh UId whether or not the row was written, so after a
  /// conflict every further Update fails too until the booking is read again.
  /// \par Message box
  /// "CMaterial.Update fehlgeschlagen. Bitte an TORQ melden!": critical, titled "Zanto",
  /// MessageBoxCall::number 3197 (errWriteConflict), when no row was written because
  /// another writer changed or deleted it since it was read (or Id is 0). Nothing is
  /// raised then.
  /// \throws ZTkDb::Error as CreateNew3.
  void Update();
  /// Deletes the row whatever its version and clears the object. No box: a row
  /// that was gone already is no error.
  /// \throws ZTkDb::Error 91 while unconnected; 3027 on a read-only open; 3260 when the
  ///   lock stays held past the wait; 3420 once the database is closed; other engine
  ///   errors unchanged.
  void Delete();
  /// Material class (stMatKlasse).
  const std::string& MatKlasse() const;
  /// Sets MatKlasse; nothing is written until Update.
  void MatKlasse(const std::string& value);
  /// Inserts a booking with a fresh UId and loads it back by that UId; stKST
  /// is the cost centre. The object is cleared first; the read-back gives it the id
  /// the database assigned and every stored value, Einheit included.
  /// \par Message box
  /// "CMaterial.Create fehlgeschlagen. Bitte an TORQ melden!": critical, titled "Zanto",
  /// MessageBoxCall::number 3155 (errInsertFailed), when the insert wrote no row; the
  /// object is then left cleared (Id 0) and nothing is raised.
  /// \param lAuftragId The work order the material is booked on (lAuftragId).
  /// \param stMatKlasse Material class (stMatKlasse).
  /// \param stBezeichnung Description of the material (stBezeichnung).
  /// \param dMenge Quantity (dMenge).
  /// \param cuPreisProEinheit Price per unit (cuPreisProEinheit).
  /// \param dFaktor Factor applied to the booking (dFaktor).
  /// \param lRechnEmpfId Id of the invoice recipient (lRechnEmpfId).
  /// \param stKostenart Cost type (stKostenart).
  /// \param stKST Cost centre (stKostenstelle).
  /// \param stEinheit Unit of the quantity (stEinheit).
  /// \param stRechnEmpf The invoice recipient, as display text (stRechnEmpf).
  /// \param bFremdleistung Whether the material came with outside work (bFremdleistung).
  /// \throws ZTkDb::Error 91 while unconnected; 6 for an amount the database cannot store
  ///   exactly or a double that is not finite (nothing is sent); 3163 for a text longer
  ///   than its column; 3027 on a read-only open; 3260 when the lock stays held past the
  ///   wait; 3420 once the database is closed; other engine errors unchanged.
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
