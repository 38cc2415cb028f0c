/// \file
/// The labour booking record, CLeistung.
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

/// One labour or service booking on a work order: one row of T_Leistung.
/// The class computes nothing (no hours times price, no travel cost); it
/// stores what it is given. Leistart is stored in stLeistArt.
///
/// Setting a property changes only the object; Update writes every field at
/// once under the row's UId, and shows the critical box "CLeistung.Update
/// fehlgeschlagen. Bitte an TORQ melden!" (title "Zanto", MessageBoxCall::number
/// 3197) when somebody else changed or deleted the row since it was read.
/// Dates not set hold NoDate. Members other than the properties, ConnectStorage
/// and the retired CreateNew raise 91 while the object is unconnected; every
/// error reaches the caller unchanged.
class ZTKDB_API CLeistung {
 public:
  /// An empty, unconnected booking: Id 0, empty texts, AusfDatum NoDate.
  CLeistung();
  /// Releases the object's storage; the row stays as it is.
  ~CLeistung();
  /// Not copyable: each record owns its own storage.
  CLeistung(const CLeistung&) = delete;
  /// Not copyable: each record owns its own storage.
  CLeistung& operator=(const CLeistung&) = delete;

  /// Row id (lId), assigned by the database; 0 while no row is loaded.
  int32_t Id() const;
  /// Row token (stUId): replaced by every write; Update matches the row by it.
  const std::string& UId() const;
  /// The work order the booking belongs to (lAuftragId, an order's Id).
  int32_t AuftragId() const;
  /// Sets AuftragId; nothing is written until Update.
  void AuftragId(int32_t value);
  /// Id of the contractor who did the work (lAuftragNehmerId).
  int32_t AuftragNehmerId() const;
  /// Sets AuftragNehmerId; nothing is written until Update.
  void AuftragNehmerId(int32_t value);
  /// Date of execution (AusfDatum); NoDate when none is set.
  Date AusfDatum() const;
  /// Sets AusfDatum; nothing is written until Update.
  void AusfDatum(Date value);
  /// Time of execution, as free text (stAusfZeit).
  const std::string& AusfZeit() const;
  /// Sets AusfZeit; nothing is written until Update.
  void AusfZeit(const std::string& value);
  /// Id of the kind of service (lLeistArtId).
  int32_t LeistArtId() const;
  /// Sets LeistArtId; nothing is written until Update.
  void LeistArtId(int32_t value);
  /// Hours worked (dStunden).
  double Stunden() const;
  /// Sets Stunden; nothing is written until Update.
  void Stunden(double value);
  /// Price per hour (cuPreisProStd).
  Currency PreisProStd() const;
  /// Sets PreisProStd; nothing is written until Update.
  void PreisProStd(Currency value);
  /// Factor applied to the booking, a surcharge or discount (dFaktor).
  double Faktor() const;
  /// Sets Faktor; nothing is written until Update.
  void Faktor(double value);
  /// Travel distance (dWeg).
  double Weg() const;
  /// Sets Weg; nothing is written until Update.
  void Weg(double value);
  /// Price per kilometre (cuPreisProKm).
  Currency PreisProKm() const;
  /// Sets PreisProKm; nothing is written until Update.
  void PreisProKm(Currency value);
  /// Remark (stBemerkung).
  const std::string& Bemerkung() const;
  /// Sets Bemerkung; nothing is written until Update.
  void Bemerkung(const std::string& value);
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
  /// The contractor, as display text (stAuftragnehmer).
  const std::string& Auftragnehmer() const;
  /// Sets Auftragnehmer; nothing is written until Update.
  void Auftragnehmer(const std::string& value);
  /// The contact person, as display text (stAnsprech).
  const std::string& Ansprech() const;
  /// Sets Ansprech; nothing is written until Update.
  void Ansprech(const std::string& value);
  /// Kind of service, as display text (stored in stLeistArt).
  const std::string& Leistart() const;
  /// Sets Leistart; nothing is written until Update.
  void Leistart(const std::string& value);
  /// The invoice recipient, as display text (stRechnEmpf).
  const std::string& RechnEmpf() const;
  /// Sets RechnEmpf; nothing is written until Update.
  void RechnEmpf(const std::string& value);
  /// Id of the contact person (lAnsprechId).
  int32_t AnsprechId() const;
  /// Sets AnsprechId; nothing is written until Update.
  void AnsprechId(int32_t value);
  /// Whether an outside firm did the work (bFremdleistung).
  bool Fremdleistung() const;
  /// Sets Fremdleistung; nothing is written until Update.
  void Fremdleistung(bool value);

  /// Binds the object to the client's open database; nothing happens for an
  /// empty name or a client that is not open (the object keeps the storage it
  /// had, or stays unconnected and raises 91 on its next call).
  /// \param stClientName The name the client's database was opened under (CTkDb).
  void ConnectStorage(const std::string& stClientName);
  /// Retired: only shows "CreateNew1 benutzen!" (title "Zanto", number 0) and touches
  /// nothing. CreateNew1 is current. Never raises.
  /// \param lAuftragId Not used.
  /// \param lAuftragNehmerId Not used.
  /// \param AusfDatum Not used.
  /// \param stAusfZeit Not used.
  /// \param lLeistArtId Not used.
  /// \param dStunden Not used.
  /// \param cuPreisProStd Not used.
  /// \param dFaktor Not used.
  /// \param dWeg Not used.
  /// \param cuPreisProKm Not used.
  /// \param stBemerkung Not used.
  /// \param lRechnEmpfId Not used.
  /// \param stKostenart Not used.
  /// \param lAnsprechId Not used.
  /// \param stKST Not used.
  void CreateNew(int32_t lAuftragId, int32_t lAuftragNehmerId, Date AusfDatum,
                 const std::string& stAusfZeit, int32_t lLeistArtId, double dStunden,
                 Currency cuPreisProStd, double dFaktor, double dWeg, Currency cuPreisProKm,
                 const std::string& stBemerkung, int32_t lRechnEmpfId,
                 const std::string& stKostenart, int32_t lAnsprechId, const std::string& stKST);
  /// Inserts a booking with a fresh UId and loads it back by that UId; stKST
  /// is the cost centre. The object is cleared first; the read-back gives it the id
  /// the database assigned and every stored value.
  /// \par Message box
  /// "CLeistung.Create fehlgeschlagen. Bitte an TORQ melden!": critical, titled "Zanto",
  /// MessageBoxCall::number 3155 (errInsertFailed), when the insert wrote no row; the
  /// object is then left cleared (Id 0) and nothing is raised.
  /// \param lAuftragId The work order the booking belongs to (lAuftragId).
  /// \param lAuftragNehmerId Id of the contractor (lAuftragNehmerId).
  /// \param AusfDatum Date of execution (AusfDatum).
  /// \param stAusfZeit Time of execution, as text (stAusfZeit).
  /// \param lLeistArtId Id of the kind of service (lLeistArtId).
  /// \param dStunden Hours worked (dStunden).
  /// \param cuPreisProStd Price per hour (cuPreisProStd).
  /// \param dFaktor Factor applied to the booking (dFaktor).
  /// \param dWeg Travel distance (dWeg).
  /// \param cuPreisProKm Price per kilometre (cuPreisProKm).
  /// \param stBemerkung Remark (stBemerkung).
  /// \param lRechnEmpfId Id of the invoice recipient (lRechnEmpfId).
  /// \param stKostenart Cost type (stKostenart).
  /// \param lAnsprechId Id of the contact person (lAnsprechId).
  /// \param stKST Cost centre (stKostenstelle).
  /// \param stAuftragnehmer The contractor, as display text (stAuftragnehmer).
  /// \param stAnsprech The contact person, as display text (stAnsprech).
  /// \param stLeistArt Kind of service, as display text (stLeistArt).
  /// \param stRechnEmpf The invoice recipient, as display text (stRechnEmpf).
  /// \param bFremdleistung Whether an outside firm did the work (bFremdleistung).
  /// \throws ZTkDb::Error 91 while unconnected; 6 for a date outside 01.01.0100 to
  ///   31.12.9999, an amount the database cannot store exactly or a double that is not
  ///   finite (nothing is sent); 3163 for a text longer than its column; 3027 on a
  ///   read-only open; 3260 when the lock stays held past the wait; 3420 once the
  ///   database is closed; other engine errors unchanged.
  void CreateNew1(int32_t lAuftragId, int32_t lAuftragNehmerId, Date AusfDatum,
                  const std::string& stAusfZeit, int32_t lLeistArtId, double dStunden,
                  Currency cuPreisProStd, double dFaktor, double dWeg, Currency cuPreisProKm,
                  const std::string& stBemerkung, int32_t lRechnEmpfId,
                  const std::string& stKostenart, int32_t lAnsprechId, const std::string& stKST,
                  const std::string& stAuftragnehmer, const std::string& stAnsprech,
                  const std::string& stLeistArt, const std::string& stRechnEmpf,
                  bool bFremdleistung);
  /// Loads the row without clearing first; a missing id clears the object
  /// (Id 0) without an error.
  /// \param lId Row id (lId) of the booking.
  /// \throws ZTkDb::Error 91 while unconnected; 94 when a column that takes no Null holds
  ///   Null (the columns before it are loaded, the others keep their values); 3420 once
  ///   the database is closed; other engine errors unchanged.
  void ReadById(int32_t lId);
  /// Writes every field to the object's row in one statement, with a fresh UId, provided
  /// the row still carries the UId the object holds. The object takes the fresh UId
  /// whether or not the row was written, so after a conflict every further Update fails
  /// too until the booking is read again.
  /// \par Message box
  /// "CLeistung.Update fehlgeschlagen. Bitte an TORQ melden!": critical, titled "Zanto",
  /// MessageBoxCall::number 3197 (errWriteConflict), when no row was written because
  /// another writer changed or deleted it since it was read (or Id is 0). Nothing is
  /// raised then.
  /// \throws ZTkDb::Error as CreateNew1.
  void Update();
  /// Deletes the row whatever its version and clears the object. No box: a row
  /// that was gone already is no error.
  /// \throws ZTkDb::Error 91 while unconnected; 3027 on a read-only open; 3260 when the
  ///   lock stays held past the wait; 3420 once the database is closed; other engine
  ///   errors unchanged.
  void Delete();

 private:
  template <typename>
  friend class detail::ListCursor;
  void LoadFromRecordset(Recordset& rs);

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace ZTkDb
