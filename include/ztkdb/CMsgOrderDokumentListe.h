/// \file
/// The list of document links, CMsgOrderDokumentListe.
#pragma once

#include <cstdint>
#include <string>

#include "ztkdb/CMsgOrderDokument.h"
#include "ztkdb/Export.h"
#include "ztkdb/RecordList.h"

namespace ZTkDb {

extern template class RecordList<CMsgOrderDokument>;

/// The document links of the whole table, of one order or of one report,
/// walked with the cursor members of RecordList. None of the reads sorts:
/// rows come in the engine's order.
///
/// Every read first drops the previous result, raises 91 while the list is
/// unconnected and 3420 once the database is closed, and passes other engine
/// errors on unchanged.
class ZTKDB_API CMsgOrderDokumentListe : public RecordList<CMsgOrderDokument> {
 public:
  /// An unconnected list without a result.
  CMsgOrderDokumentListe();

  /// Every document link.
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadAll();
  /// The links of one order; ReadByOrderId(0) gives those that belong to no order.
  /// \param lOrderId Id of the order (lOrderId).
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadByOrderId(int32_t lOrderId);
  /// The links of one report.
  /// \param lMsgId Id of the report (lMsgId).
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadByMsgId(int32_t lMsgId);
};

}  // namespace ZTkDb
