#pragma once

#include <cstdint>

#include "ztkdb/CMaterial.h"
#include "ztkdb/Export.h"
#include "ztkdb/RecordList.h"

namespace ZTkDb {

extern template class RecordList<CMaterial>;

// Material bookings, walked with the cursor members of RecordList. None of
// the reads sorts: rows come in the engine's order.
class ZTKDB_API CMaterialListe : public RecordList<CMaterial> {
 public:
  CMaterialListe();

  void ReadAll();
  void ReadByOrderId(int32_t lOrderId);
  // The order's own material (not supplied with outside work).
  void ReadMaterialByOrderId(int32_t lOrderId);
  // The order's material supplied with outside work.
  void ReadFremdByOrderId(int32_t lOrderId);
};

}  // namespace ZTkDb
