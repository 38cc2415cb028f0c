#pragma once

#include <cstdint>
#include <string>

#include "ztkdb/CMsgOrderDokument.h"
#include "ztkdb/Export.h"
#include "ztkdb/RecordList.h"

namespace ZTkDb {

extern template class RecordList<CMsgOrderDokument>;

// The document links of the whole table, of one order or of one report,
// walked with the cursor members of RecordList.
class ZTKDB_API CMsgOrderDokumentListe : public RecordList<CMsgOrderDokument> {
 public:
  CMsgOrderDokumentListe();

  void ReadAll();
  void ReadByOrderId(int32_t lOrderId);
  void ReadByMsgId(int32_t lMsgId);
};

}  // namespace ZTkDb
