#pragma once

#include <cstdint>

#include "ztkdb/CLeistung.h"
#include "ztkdb/Export.h"
#include "ztkdb/RecordList.h"

namespace ZTkDb {

extern template class RecordList<CLeistung>;

// Labour bookings, walked with the cursor members of RecordList.
class ZTKDB_API CLeistungListe : public RecordList<CLeistung> {
 public:
  CLeistungListe();

  // Every booking, in the engine's order.
  void ReadAll();
  // The bookings of one order in the order they were entered (by lId).
  void ReadByOrderId(int32_t lOrderId);
  // Bookings with an invoice recipient. While an Oracle connection was ever
  // opened in this process that means "not Null" (Oracle stores '' as Null);
  // otherwise "not ''", which leaves out Null recipients as well.
  void ReadAllRechEmpfNotEmpty();
};

}  // namespace ZTkDb
