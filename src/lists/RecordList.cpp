#include "ztkdb/RecordList.h"

#include "lists/ListCursor.h"
#include "runtime/Guard.h"
#include "ztkdb/CAuftrag.h"
#include "ztkdb/CLeistung.h"
#include "ztkdb/CMaterial.h"
#include "ztkdb/CMeldung.h"
#include "ztkdb/CMsgOrderDokument.h"

namespace ZTkDb {

template <typename Record>
RecordList<Record>::RecordList(const char* className)
    : class_name_(className), cursor_(std::make_unique<detail::ListCursor<Record>>(className)) {}

template <typename Record>
RecordList<Record>::~RecordList() = default;

template <typename Record>
int32_t RecordList<Record>::AbsolutePosition() const {
  return detail::Guard(class_name_, "AbsolutePosition",
                       [&] { return cursor_->AbsolutePosition(); });
}
template <typename Record>
void RecordList<Record>::AbsolutePosition(int32_t value) {
  detail::Guard(class_name_, "AbsolutePosition", [&] { cursor_->AbsolutePosition(value); });
}
template <typename Record>
int32_t RecordList<Record>::Count() const {
  return detail::Guard(class_name_, "Count", [&] { return cursor_->Count(); });
}
template <typename Record>
std::unique_ptr<Record> RecordList<Record>::ItemByRsPos(std::optional<int32_t> vPos) {
  return detail::Guard(class_name_, "ItemByRsPos", [&] { return cursor_->ItemByRsPos(vPos); });
}
template <typename Record>
std::unique_ptr<Record> RecordList<Record>::ItemByRecId(int32_t lRecId) {
  return detail::Guard(class_name_, "ItemByRecId", [&] { return cursor_->ItemByRecId(lRecId); });
}
template <typename Record>
bool RecordList<Record>::Bof() const {
  return detail::Guard(class_name_, "BOF", [&] { return cursor_->Bof(); });
}
template <typename Record>
bool RecordList<Record>::Eof() const {
  return detail::Guard(class_name_, "EOF", [&] { return cursor_->Eof(); });
}
template <typename Record>
std::unique_ptr<Recordset> RecordList<Record>::RsClone() const {
  return detail::Guard(class_name_, "RsClone", [&] { return cursor_->RsClone(); });
}
template <typename Record>
void RecordList<Record>::ConnectStorage(const std::string& stClientName) {
  detail::Guard(class_name_, "ConnectStorage", [&] { cursor_->ConnectStorage(stClientName); });
}
template <typename Record>
void RecordList<Record>::Requery() {
  detail::Guard(class_name_, "Requery", [&] { cursor_->Requery(); });
}
template <typename Record>
std::unique_ptr<Record> RecordList<Record>::MoveFirst() {
  return detail::Guard(class_name_, "MoveFirst", [&] { return cursor_->MoveFirst(); });
}
template <typename Record>
std::unique_ptr<Record> RecordList<Record>::MoveLast() {
  return detail::Guard(class_name_, "MoveLast", [&] { return cursor_->MoveLast(); });
}
template <typename Record>
std::unique_ptr<Record> RecordList<Record>::MoveNext() {
  return detail::Guard(class_name_, "MoveNext", [&] { return cursor_->MoveNext(); });
}
template <typename Record>
std::unique_ptr<Record> RecordList<Record>::MovePrevious() {
  return detail::Guard(class_name_, "MovePrevious", [&] { return cursor_->MovePrevious(); });
}

// Every record class with a list; the headers declare these extern.
template class RecordList<CAuftrag>;
template class RecordList<CMeldung>;
template class RecordList<CMsgOrderDokument>;
template class RecordList<CLeistung>;
template class RecordList<CMaterial>;

}  // namespace ZTkDb
