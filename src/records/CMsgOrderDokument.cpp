#include "ztkdb/CMsgOrderDokument.h"

#include "records/RecordProperties.h"
#include "records/TableRecord.h"
#include "runtime/Guard.h"
#include "sql/Literals.h"
#include "sql/Statement.h"

namespace ZTkDb {
namespace {

ZTKDB_RECORD_FIELDS(CMsgOrderDokument, ZTKDB_DOKUMENT_COLUMNS)

// The document link's texts end with a semicolon, and its delete knows only
// kinds 1 and 2.
const detail::RecordStatements kStatements{
    .class_name = "CMsgOrderDokument",
    .table = "T_MsgOrderDokument",
    .detail_table = nullptr,
    .insert =
        "INSERT INTO #Tabelle# (stUId, lMsgId, lOrderId, stPfad, stDatei) VALUES ('#stUId#', "
        "#lMsgId#, #lOrderId#, '#stPfad#', '#stDatei#');",
    .update =
        "UPDATE #Tabelle# SET #Tabelle#.stUId = '#stNewUId#', #Tabelle#.lMsgId = #lMsgId#, "
        "#Tabelle#.lOrderId = #lOrderId#, #Tabelle#.stPfad = '#stPfad#', #Tabelle#.stDatei = "
        "'#stDatei#' WHERE ((#Tabelle#.lId=#lId#) AND (#Tabelle#.stUId='#stUId#'));",
    .select_by_id = "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lId = #lId#;",
    .select_by_uid = "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.stUId = '#stUId#';",
    .delete_jet = "DELETE #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lId = #lId#;",
    .delete_other = "DELETE #Tabelle# WHERE #Tabelle#.lId = #lId#;",
    .delete_needs_known_kind = true,
};

}  // namespace

template <>
const detail::RecordStatements& detail::StatementsOf<CMsgOrderDokument>() {
  return kStatements;
}

struct CMsgOrderDokument::Impl {
  detail::TableRecord<Fields> record{kStatements, Layout()};
};

ZTKDB_RECORD_MEMBERS(CMsgOrderDokument, ZTKDB_DOKUMENT_COLUMNS)

void CMsgOrderDokument::CreateNew(int32_t lMsgId, int32_t lOrderId, const std::string& stPfad,
                                  const std::string& stDatei) {
  detail::Guard("CMsgOrderDokument.CreateNew", [&] {
    Fields row;
    row.MsgId = lMsgId;
    row.OrderId = lOrderId;
    row.Pfad = stPfad;
    row.Datei = stDatei;
    impl_->record.Create("CMsgOrderDokument.CreateNew", row);
  });
}

}  // namespace ZTkDb
