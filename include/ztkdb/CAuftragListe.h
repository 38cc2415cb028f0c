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

// The orders one query selects, walked with the cursor members of
// RecordList. Most queries join T_AuftragMeldung, so the orders handed out
// carry MeldungId; an order linked to two reports then appears twice and the
// query ends with error 457 on the second row (the rows before it stay
// usable).
//
// Every read first drops the previous result and sets SortOrder to 0, even
// when its own statement then fails. A sort order outside 0..6 leaves the
// statement empty and the engine's error reaches the caller.
//
// The done family (ReadByDone…) lists orders with bErledigt = bDone whose
// ErledigtDatum is on or after today minus iShowingDays: open orders carry
// NoDate there and so always pass. iShowingDays is a 16-bit count
// taken wide: outside -32768..32767 it raises 6 instead of wrapping.
// Site filters also admit site 0 (orders
// valid for every site); stSoIdListe elements go into IN(…) as they stand.
class ZTKDB_API CAuftragListe : public RecordList<CAuftrag> {
 public:
  CAuftragListe();

  // The sort order of the last read; 0 for reads without one.
  OrderSortOrderConstants SortOrder() const;

  void ReadAll(OrderSortOrderConstants eSortOrder = osUnsorted);
  // Orders of origin 1, 2, 6, 7 or 8 without a type text; no link column.
  void ReadAllWithAuftragstyp();
  // Orders dated from datVon to datBis (dates without time), by number.
  void ReadAllInZeitraum(Date datVon, Date datBis);
  // Orders without a linked report. On an embedded database: raised up to
  // datBis and not done before datVon. Over ODBC: raised in the period, or
  // still open and raised before it. No link column.
  void ReadAllInZeitNoMsg(Date datVon, Date datBis);
  void ReadByMsgId(int32_t lMsgId, OrderSortOrderConstants eSortOrder = osUnsorted);
  void ReadByMsgIdStatus(int32_t lMsgId, bool bErledigt);
  void ReadByDone(bool bDone, OrderSortOrderConstants eSortOrder = osUnsorted,
                  int32_t iShowingDays = 30);
  // bWithMsgConn true (or sort order 0) lists the orders without a linked
  // report; false with a sort order lists those with one.
  void ReadWithMsgConn(bool bWithMsgConn = true, OrderSortOrderConstants eSortOrder = osUnsorted);
  void ReadByObj(int32_t lObjId, TkObjTypes eTyp);
  // Every order with that number, whatever its prefix.
  void ReadByNr(int32_t lNr);
  void ReadByDoneAndSo(int32_t lSoId, bool bDone, OrderSortOrderConstants eSortOrder = osUnsorted,
                       int32_t iShowingDays = 30);
  // Exactly the site given, without the site-0 orders; no link column.
  void ReadAllBySo(int32_t lSoId);
  void ReadByDoneAndSoListe(const std::vector<std::string>& stSoIdListe, bool bDone,
                            OrderSortOrderConstants eSortOrder = osUnsorted,
                            int32_t iShowingDays = 30);
  // Technical-equipment orders (object type 6, origin 3) of one object raised
  // for one object task, done or not; no link column.
  void ReadByObjAndAufg(int32_t lObjId, int32_t lAufgId);
  void ReadByDoneAndVorsatz(bool bDone, const std::string& stNrVorsatz,
                            OrderSortOrderConstants eSortOrder = osUnsorted,
                            int32_t iShowingDays = 30);
  void ReadByDoneAndSoAndVorsatz(int32_t lSoId, bool bDone, const std::string& stNrVorsatz,
                                 OrderSortOrderConstants eSortOrder = osUnsorted,
                                 int32_t iShowingDays = 30);
  void ReadByDoneAndSoListeAndVorsatz(const std::vector<std::string>& stSoIdListe, bool bDone,
                                      const std::string& stNrVorsatz,
                                      OrderSortOrderConstants eSortOrder = osUnsorted,
                                      int32_t iShowingDays = 30);

 private:
  OrderSortOrderConstants sort_order_ = osUnsorted;
};

}  // namespace ZTkDb
