#include "ztkdb/CMsgOrderDokumentListe.h"

#include "lists/ListCursor.h"
#include "runtime/Guard.h"
#include "sql/Literals.h"
#include "sql/SqlTemplate.h"

namespace ZTkDb {
namespace {

constexpr const char* kTable = "T_MsgOrderDokument";
constexpr const char* kClass = "CMsgOrderDokumentListe";

std::string Fill(const char* text, const char* placeholder = nullptr, int32_t id = 0) {
  detail::SqlTemplate sql(text);
  sql.Replace("#Tabelle#", kTable);
  if (placeholder) sql.Replace(placeholder, detail::LongLiteral(id));
  return std::move(sql).Text();
}

}  // namespace

struct CMsgOrderDokumentListe::Impl {
  detail::ListCursor<CMsgOrderDokument> cursor{kClass};
};

CMsgOrderDokumentListe::CMsgOrderDokumentListe() : impl_(std::make_unique<Impl>()) {}
CMsgOrderDokumentListe::~CMsgOrderDokumentListe() = default;

int32_t CMsgOrderDokumentListe::AbsolutePosition() const {
  return detail::Guard("CMsgOrderDokumentListe.AbsolutePosition", [&] { return impl_->cursor.AbsolutePosition(); });
}
void CMsgOrderDokumentListe::AbsolutePosition(int32_t value) {
  detail::Guard("CMsgOrderDokumentListe.AbsolutePosition", [&] { impl_->cursor.AbsolutePosition(value); });
}
int32_t CMsgOrderDokumentListe::Count() const { return impl_->cursor.Count(); }
std::unique_ptr<CMsgOrderDokument> CMsgOrderDokumentListe::ItemByRsPos(std::optional<int32_t> vPos) {
  return detail::Guard("CMsgOrderDokumentListe.ItemByRsPos", [&] { return impl_->cursor.ItemByRsPos(vPos); });
}
std::unique_ptr<CMsgOrderDokument> CMsgOrderDokumentListe::ItemByRecId(int32_t lRecId) {
  return detail::Guard("CMsgOrderDokumentListe.ItemByRecId", [&] { return impl_->cursor.ItemByRecId(lRecId); });
}
bool CMsgOrderDokumentListe::Bof() const { return impl_->cursor.Bof(); }
bool CMsgOrderDokumentListe::Eof() const { return impl_->cursor.Eof(); }
std::unique_ptr<Recordset> CMsgOrderDokumentListe::RsClone() const { return impl_->cursor.RsClone(); }

void CMsgOrderDokumentListe::ConnectStorage(const std::string& stClientName) {
  detail::Guard("CMsgOrderDokumentListe.ConnectStorage", [&] { impl_->cursor.ConnectStorage(stClientName); });
}
void CMsgOrderDokumentListe::ReadAll() {
  detail::Guard("CMsgOrderDokumentListe.ReadAll", [&] {
    impl_->cursor.RunQuery("CMsgOrderDokumentListe.ReadAll", Fill("SELECT #Tabelle#.* FROM #Tabelle#;"));
  });
}
void CMsgOrderDokumentListe::ReadByOrderId(int32_t lOrderId) {
  detail::Guard("CMsgOrderDokumentListe.ReadByOrderId", [&] {
    impl_->cursor.RunQuery("CMsgOrderDokumentListe.ReadByOrderId",
                           Fill("SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lOrderId = #lOrderId#",
                                "#lOrderId#", lOrderId));
  });
}
void CMsgOrderDokumentListe::ReadByMsgId(int32_t lMsgId) {
  detail::Guard("CMsgOrderDokumentListe.ReadByMsgId", [&] {
    impl_->cursor.RunQuery("CMsgOrderDokumentListe.ReadByMsgId",
                           Fill("SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lMsgId = #lMsgId#",
                                "#lMsgId#", lMsgId));
  });
}
void CMsgOrderDokumentListe::Requery() {
  detail::Guard("CMsgOrderDokumentListe.Requery", [&] { impl_->cursor.Requery(); });
}
std::unique_ptr<CMsgOrderDokument> CMsgOrderDokumentListe::MoveFirst() {
  return detail::Guard("CMsgOrderDokumentListe.MoveFirst", [&] { return impl_->cursor.MoveFirst(); });
}
std::unique_ptr<CMsgOrderDokument> CMsgOrderDokumentListe::MoveLast() {
  return detail::Guard("CMsgOrderDokumentListe.MoveLast", [&] { return impl_->cursor.MoveLast(); });
}
std::unique_ptr<CMsgOrderDokument> CMsgOrderDokumentListe::MoveNext() {
  return detail::Guard("CMsgOrderDokumentListe.MoveNext", [&] { return impl_->cursor.MoveNext(); });
}
std::unique_ptr<CMsgOrderDokument> CMsgOrderDokumentListe::MovePrevious() {
  return detail::Guard("CMsgOrderDokumentListe.MovePrevious", [&] { return impl_->cursor.MovePrevious(); });
}

}  // namespace ZTkDb
