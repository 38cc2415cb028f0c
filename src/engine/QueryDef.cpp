#include "engine/QueryDef.h"

#include "runtime/SpareText.h"

namespace ZTkDb::detail {

namespace {
// The text's buffer serves the next statement built on this thread (see
// SpareText.h); the string was made non-const, so it may be emptied.
struct GiveTextBack {
  void operator()(const std::string* text) const noexcept {
    GiveBackText(std::move(*const_cast<std::string*>(text)));
    delete text;
  }
};
}  // namespace

QueryDef::QueryDef(std::shared_ptr<Database> db, std::string sql)
    : db_(std::move(db)), sql_(new std::string(std::move(sql)), GiveTextBack{}) {}

void QueryDef::Execute() {
  records_affected_ = 0;
  records_affected_ = db_->Execute(*sql_);
}

std::unique_ptr<Recordset> QueryDef::OpenRecordset(ResultSize size) const {
  auto rows = db_->Query(*sql_, size);
  return std::make_unique<Recordset>(db_, sql_, std::move(rows));
}

}  // namespace ZTkDb::detail
