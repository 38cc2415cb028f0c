#include "ztkdb/CMsgOrderDokumentListe.h"

#include "lists/ListCursor.h"
#include "runtime/Guard.h"
#include "sql/Literals.h"
#include "sql/SqlTemplate.h"

namespace ZTkDb {
namespace {

constexpr const char* kTable = "T_MsgOrderDokument";

std::string Fill(const char* text, const char* placeholder = nullptr, int32_t id = 0) {
  detail::SqlTemplate sql(text);
  sql.Replace("#Tabelle#", kTable);
  if (placeholder) sql.Replace(placeholder, detail::LongLiteral(id));
  return std::move(sql).Text();
}

}  // namespace

CMsgOrderDokumentListe::CMsgOrderDokumentListe() : RecordList("CMsgOrderDokumentListe") {}

void CMsgOrderDokumentListe::ReadAll() {
  constexpr const char* kMember = "CMsgOrderDokumentListe.ReadAll";
  detail::Guard(kMember, [&] { Cursor().RunQuery(kMember, Fill("SELECT #Tabelle#.* FROM #Tabelle#;")); });
}

void CMsgOrderDokumentListe::ReadByOrderId(int32_t lOrderId) {
  constexpr const char* kMember = "CMsgOrderDokumentListe.ReadByOrderId";
  detail::Guard(kMember, [&] {
    Cursor().RunQuery(kMember, Fill("SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lOrderId = #lOrderId#",
                                    "#lOrderId#", lOrderId));
  });
}

void CMsgOrderDokumentListe::ReadByMsgId(int32_t lMsgId) {
  constexpr const char* kMember = "CMsgOrderDokumentListe.ReadByMsgId";
  detail::Guard(kMember, [&] {
    Cursor().RunQuery(kMember, Fill("SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lMsgId = #lMsgId#",
                                    "#lMsgId#", lMsgId));
  });
}

}  // namespace ZTkDb
