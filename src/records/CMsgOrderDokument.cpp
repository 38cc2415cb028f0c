#include "ztkdb/CMsgOrderDokument.h"

#include "records/RecordProperties.h"
#include "records/TableRecord.h"
#include "runtime/Guard.h"
#include "sql/Literals.h"
#include "sql/Statement.h"

namespace ZTkDb {
namespace {

using detail::ColumnBinding;
using detail::NullRule;
using detail::ValueSlot;

struct DokumentFields {
  int32_t id = 0;
  std::string uid;
  int32_t msg_id = 0;
  int32_t order_id = 0;
  std::string pfad;
  std::string datei;
};

const std::vector<ColumnBinding<DokumentFields>>& LoadOrder() {
  static const std::vector<ColumnBinding<DokumentFields>> columns = {
      {"lId", &DokumentFields::id, NullRule::kError},
      {"stUId", &DokumentFields::uid, NullRule::kDefault},
      {"lMsgId", &DokumentFields::msg_id, NullRule::kError},
      {"lOrderId", &DokumentFields::order_id, NullRule::kError},
      {"stPfad", &DokumentFields::pfad, NullRule::kDefault},
      {"stDatei", &DokumentFields::datei, NullRule::kDefault},
  };
  return columns;
}

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

const std::vector<ValueSlot<DokumentFields>>& RowValues() {
  static const std::vector<ValueSlot<DokumentFields>> slots = {
      {"#lMsgId#", &DokumentFields::msg_id},
      {"#lOrderId#", &DokumentFields::order_id},
      {"#stPfad#", &DokumentFields::pfad},
      {"#stDatei#", &DokumentFields::datei},
  };
  return slots;
}

}  // namespace

struct CMsgOrderDokument::Impl {
  detail::TableRecord<DokumentFields> record{kStatements, LoadOrder(), RowValues()};
};

ZTKDB_RECORD_MEMBERS(CMsgOrderDokument)

ZTKDB_VALUE_PROPERTY(CMsgOrderDokument, MsgId, int32_t, msg_id)
ZTKDB_VALUE_PROPERTY(CMsgOrderDokument, OrderId, int32_t, order_id)
ZTKDB_TEXT_PROPERTY(CMsgOrderDokument, Pfad, pfad)
ZTKDB_TEXT_PROPERTY(CMsgOrderDokument, Datei, datei)

void CMsgOrderDokument::CreateNew(int32_t lMsgId, int32_t lOrderId, const std::string& stPfad,
                                  const std::string& stDatei) {
  detail::Guard("CMsgOrderDokument.CreateNew", [&] {
    DokumentFields row;
    row.msg_id = lMsgId;
    row.order_id = lOrderId;
    row.pfad = stPfad;
    row.datei = stDatei;
    impl_->record.Create("CMsgOrderDokument.CreateNew", row);
  });
}

}  // namespace ZTkDb
