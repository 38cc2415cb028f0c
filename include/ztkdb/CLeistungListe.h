/// \file
/// The list of labour bookings, CLeistungListe.
#pragma once

#include <cstdint>

#include "ztkdb/CLeistung.h"
#include "ztkdb/Export.h"
#include "ztkdb/RecordList.h"

namespace ZTkDb {

extern template class RecordList<CLeistung>;

/// Labour bookings, walked with the cursor members of RecordList.
///
/// Every read first drops the previous result, raises 91 while the list is
/// unconnected and 3420 once the database is closed, and passes other engine
/// errors on unchanged.
class ZTKDB_API CLeistungListe : public RecordList<CLeistung> {
 public:
  /// An unconnected list without a result.
  CLeistungListe();

  /// Every booking, in the engine's order.
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadAll();
  /// The bookings of one order in the order they were entered (by lId).
  /// \param lOrderId Id of the work order (lAuftragId).
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadByOrderId(int32_t lOrderId);
  /// Bookings with an invoice recipient. While an Oracle connection was ever
  /// opened in this process that means "not Null" (Oracle stores '' as Null);
  /// otherwise "not ''", which leaves out Null recipients as well.
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadAllRechEmpfNotEmpty();
};

}  // namespace ZTkDb
