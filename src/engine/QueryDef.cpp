#include "engine/QueryDef.h"

#include "engine/RecordsetAccess.h"

namespace ZTkDb::detail {

QueryDef::QueryDef(std::shared_ptr<Database> db, Statement sql)
    : db_(std::move(db)), sql_(std::make_shared<const Statement>(std::move(sql))) {}

void QueryDef::SQL(Statement sql) {
  records_affected_ = 0;
  sql_ = std::make_shared<const Statement>(std::move(sql));
}

void QueryDef::Execute() {
  records_affected_ = 0;
  records_affected_ = db_->Execute(*sql_);
}

std::unique_ptr<Recordset> QueryDef::OpenRecordset(ResultSize size) const {
  auto rows = db_->Query(*sql_, size);
  return RecordsetAccess::Make(db_, sql_, size, std::move(rows));
}

}  // namespace ZTkDb::detail
