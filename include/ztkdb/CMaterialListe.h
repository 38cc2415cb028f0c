/// \file
/// The list of material bookings, CMaterialListe.
#pragma once

#include <cstdint>

#include "ztkdb/CMaterial.h"
#include "ztkdb/Export.h"
#include "ztkdb/RecordList.h"

namespace ZTkDb {

extern template class RecordList<CMaterial>;

/// Material bookings, walked with the cursor members of RecordList. None of
/// the reads sorts: rows come in the engine's order.
///
/// Every read first drops the previous result, raises 91 while the list is
/// unconnected and 3420 once the database is closed, and passes other engine
/// errors on unchanged.
class ZTKDB_API CMaterialListe : public RecordList<CMaterial> {
 public:
  /// An unconnected list without a result.
  CMaterialListe();

  /// Every material booking.
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadAll();
  /// The material bookings of one order, own and outside alike.
  /// \param lOrderId Id of the work order (lAuftragId).
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadByOrderId(int32_t lOrderId);
  /// The order's own material (not supplied with outside work).
  /// \param lOrderId Id of the work order (lAuftragId).
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadMaterialByOrderId(int32_t lOrderId);
  /// The order's material supplied with outside work.
  /// \param lOrderId Id of the work order (lAuftragId).
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadFremdByOrderId(int32_t lOrderId);
};

}  // namespace ZTkDb
