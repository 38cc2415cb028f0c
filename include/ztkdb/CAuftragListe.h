/// \file
/// The list of work orders, CAuftragListe.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ztkdb/CAuftrag.h"
#include "ztkdb/Date.h"
#include "ztkdb/Enums.h"
#include "ztkdb/Export.h"
#include "ztkdb/RecordList.h"

namespace ZTkDb {

extern template class RecordList<CAuftrag>;

/// The orders one query selects, walked with the cursor members of
/// RecordList. Most queries join T_AuftragMeldung, so the orders handed out
/// carry MeldungId; an order linked to two reports then appears twice and the
/// query ends with error 457 on the second row (the rows before it stay
/// usable). Queries that select no link column hand out orders with MeldungId 0.
///
/// Every read first drops the previous result and sets SortOrder to 0, even
/// when its own statement then fails. A sort order outside 0..6 leaves the
/// statement empty and the engine's error (3129) reaches the caller.
///
/// The done family (ReadByDone…) lists orders with bErledigt = bDone whose
/// ErledigtDatum is on or after today minus iShowingDays: open orders carry
/// NoDate there and so always pass. iShowingDays is a 16-bit count
/// taken wide: outside -32768..32767 it raises 6 instead of wrapping.
/// Site filters also admit site 0 (orders
/// valid for every site); stSoIdListe elements go into IN(…) as they stand.
///
/// Every read raises 91 while the list is unconnected, 3420 once the database
/// is closed, and passes other engine errors on unchanged.
class ZTKDB_API CAuftragListe : public RecordList<CAuftrag> {
 public:
  /// An unconnected list without a result.
  CAuftragListe();

  /// The sort order of the last read; 0 for reads without one.
  /// \return The eSortOrder the last read was given, once its result was open; 0 after a
  ///   read without a sort order or a read that failed.
  OrderSortOrderConstants SortOrder() const;

  /// Every order with its linked report.
  /// \param eSortOrder The column to sort by, ascending; osUnsorted for the engine's order.
  /// \throws ZTkDb::Error 457 for an order linked to two reports; 3129 for a sort order
  ///   outside 0..6; 91, 3420 and engine errors as for every read.
  void ReadAll(OrderSortOrderConstants eSortOrder = osUnsorted);
  /// Orders of origin 1, 2, 6, 7 or 8 without a type text; no link column.
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadAllWithAuftragstyp();
  /// Orders dated from datVon to datBis (dates without time), by number. An order whose
  /// stored date on datBis carries a time of day falls outside.
  /// \param datVon First day of the period.
  /// \param datBis Last day of the period.
  /// \throws ZTkDb::Error 6 for a date outside 01.01.0100 to 31.12.9999; 457 for an order
  ///   linked to two reports; 91, 3420 and engine errors as for every read.
  void ReadAllInZeitraum(Date datVon, Date datBis);
  /// Orders without a linked report. On an embedded database: raised up to
  /// datBis and not done before datVon. Over ODBC: raised in the period, or
  /// still open and raised before it. No link column.
  /// \param datVon First day of the period.
  /// \param datBis Last day of the period.
  /// \throws ZTkDb::Error 6 for a date outside 01.01.0100 to 31.12.9999; 91, 3420 and
  ///   engine errors as for every read.
  void ReadAllInZeitNoMsg(Date datVon, Date datBis);
  /// The orders linked to one report.
  /// \param lMsgId Id of the report (lMeldungId of the link).
  /// \param eSortOrder The column to sort by, ascending; osUnsorted for the engine's order.
  /// \throws ZTkDb::Error 457 for an order linked to that report twice; 3129 for a sort
  ///   order outside 0..6; 91, 3420 and engine errors as for every read.
  void ReadByMsgId(int32_t lMsgId, OrderSortOrderConstants eSortOrder = osUnsorted);
  /// The orders linked to one report that are done (or open), unsorted.
  /// \param lMsgId Id of the report (lMeldungId of the link).
  /// \param bErledigt True for the done orders, false for the open ones.
  /// \throws ZTkDb::Error 457 for an order linked to that report twice; 91, 3420 and
  ///   engine errors as for every read.
  void ReadByMsgIdStatus(int32_t lMsgId, bool bErledigt);
  /// Done (or open) orders; done ones only when done within the last iShowingDays days.
  /// Unsorted, they come by linked report.
  /// \param bDone True for the done orders, false for the open ones (all of them).
  /// \param eSortOrder The column to sort by, ascending.
  /// \param iShowingDays How many days back a done order may have been done; negative
  ///   moves the limit into the future.
  /// \throws ZTkDb::Error 6 for iShowingDays outside -32768..32767; 457 for an order
  ///   linked to two reports; 3129 for a sort order outside 0..6; 91, 3420 and engine
  ///   errors as for every read.
  void ReadByDone(bool bDone, OrderSortOrderConstants eSortOrder = osUnsorted,
                  int32_t iShowingDays = 30);
  /// bWithMsgConn true (or sort order 0) lists the orders without a linked
  /// report; false with a sort order lists those with one.
  /// \param bWithMsgConn See above: the name says the opposite of what hosts rely on.
  /// \param eSortOrder The column to sort by, ascending; with osUnsorted the flag has no
  ///   effect.
  /// \throws ZTkDb::Error 457 for an order linked to two reports; 3129 for a sort order
  ///   outside 0..6; 91, 3420 and engine errors as for every read.
  void ReadWithMsgConn(bool bWithMsgConn = true, OrderSortOrderConstants eSortOrder = osUnsorted);
  /// The orders of one object, with their linked reports; unsorted.
  /// \param lObjId Id of the object (lObjId).
  /// \param eTyp Kind of the object (byObjTyp).
  /// \throws ZTkDb::Error 457 for an order linked to two reports; 91, 3420 and engine
  ///   errors as for every read.
  void ReadByObj(int32_t lObjId, TkObjTypes eTyp);
  /// Every order with that number, whatever its prefix.
  /// \param lNr Order number (lNr).
  /// \throws ZTkDb::Error 457 for an order linked to two reports; 91, 3420 and engine
  ///   errors as for every read.
  void ReadByNr(int32_t lNr);
  /// As ReadByDone, for one site and the site-0 orders. Unsorted, they come by linked
  /// report on an embedded database and in the engine's order over ODBC.
  /// \param lSoId Site id (lSoId).
  /// \param bDone True for the done orders, false for the open ones.
  /// \param eSortOrder The column to sort by, ascending.
  /// \param iShowingDays How many days back a done order may have been done.
  /// \throws ZTkDb::Error as ReadByDone.
  void ReadByDoneAndSo(int32_t lSoId, bool bDone, OrderSortOrderConstants eSortOrder = osUnsorted,
                       int32_t iShowingDays = 30);
  /// Exactly the site given, without the site-0 orders; no link column.
  /// \param lSoId Site id (lSoId).
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadAllBySo(int32_t lSoId);
  /// As ReadByDoneAndSo, for several sites and the site-0 orders.
  /// \param stSoIdListe The site ids, each put into IN(…) as it stands, unquoted: pass only
  ///   number texts from a trusted source. An empty list makes the statement invalid
  ///   (3075 from the engine); a text that would make a second statement raises 3129.
  /// \param bDone True for the done orders, false for the open ones.
  /// \param eSortOrder The column to sort by, ascending.
  /// \param iShowingDays How many days back a done order may have been done.
  /// \throws ZTkDb::Error as ReadByDone, and the engine's error for a list it cannot read.
  void ReadByDoneAndSoListe(const std::vector<std::string>& stSoIdListe, bool bDone,
                            OrderSortOrderConstants eSortOrder = osUnsorted,
                            int32_t iShowingDays = 30);
  /// Technical-equipment orders (object type 6, origin 3) of one object raised
  /// for one object task, done or not; no link column.
  /// \param lObjId Id of the technical object (lObjId).
  /// \param lAufgId Id of the object task, matched against lTechObjTerminId (ObjAufgabeId).
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadByObjAndAufg(int32_t lObjId, int32_t lAufgId);
  /// As ReadByDone, for one number prefix.
  /// \param bDone True for the done orders, false for the open ones.
  /// \param stNrVorsatz Number prefix (stNrVorsatz), compared as a quoted text.
  /// \param eSortOrder The column to sort by, ascending.
  /// \param iShowingDays How many days back a done order may have been done.
  /// \throws ZTkDb::Error as ReadByDone.
  void ReadByDoneAndVorsatz(bool bDone, const std::string& stNrVorsatz,
                            OrderSortOrderConstants eSortOrder = osUnsorted,
                            int32_t iShowingDays = 30);
  /// As ReadByDoneAndSo, for one number prefix.
  /// \param lSoId Site id (lSoId).
  /// \param bDone True for the done orders, false for the open ones.
  /// \param stNrVorsatz Number prefix (stNrVorsatz), compared as a quoted text.
  /// \param eSortOrder The column to sort by, ascending.
  /// \param iShowingDays How many days back a done order may have been done.
  /// \throws ZTkDb::Error as ReadByDone.
  void ReadByDoneAndSoAndVorsatz(int32_t lSoId, bool bDone, const std::string& stNrVorsatz,
                                 OrderSortOrderConstants eSortOrder = osUnsorted,
                                 int32_t iShowingDays = 30);
  /// As ReadByDoneAndSoListe, for one number prefix.
  /// \param stSoIdListe The site ids, each put into IN(…) as it stands (see
  ///   ReadByDoneAndSoListe).
  /// \param bDone True for the done orders, false for the open ones.
  /// \param stNrVorsatz Number prefix (stNrVorsatz), compared as a quoted text.
  /// \param eSortOrder The column to sort by, ascending.
  /// \param iShowingDays How many days back a done order may have been done.
  /// \throws ZTkDb::Error as ReadByDoneAndSoListe.
  void ReadByDoneAndSoListeAndVorsatz(const std::vector<std::string>& stSoIdListe, bool bDone,
                                      const std::string& stNrVorsatz,
                                      OrderSortOrderConstants eSortOrder = osUnsorted,
                                      int32_t iShowingDays = 30);

 private:
  OrderSortOrderConstants sort_order_ = osUnsorted;
};

}  // namespace ZTkDb
