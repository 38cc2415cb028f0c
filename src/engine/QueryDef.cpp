#include "engine/QueryDef.h"

#include "runtime/SpareText.h"

namespace ZTkDb::detail {

QueryDef::QueryDef(std::shared_ptr<Database> db, std::string sql)
    : db_(std::move(db)), sql_(std::make_shared<std::string>(std::move(sql))) {}

QueryDef::~QueryDef() {
  if (sql_.use_count() == 1) GiveBackText(std::move(*sql_));
}

void QueryDef::SQL(std::string sql) {
  records_affected_ = 0;
  if (sql_.use_count() == 1) {
    GiveBackText(std::move(*sql_));
    *sql_ = std::move(sql);
  } else {
    sql_ = std::make_shared<std::string>(std::move(sql));
  }
}

void QueryDef::Execute() {
  records_affected_ = 0;
  records_affected_ = db_->Execute(*sql_);
}

std::unique_ptr<Recordset> QueryDef::OpenRecordset(ResultSize size) const {
  auto rows = db_->Query(*sql_, size);
  return std::make_unique<Recordset>(db_, sql_, std::move(rows));
}

}  // namespace ZTkDb::detail
