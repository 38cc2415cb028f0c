#include "connection/RecordStorage.h"

#include "runtime/Raise.h"

namespace ZTkDb::detail {

QueryDef& RecordStorage::GetQueryDef() {
  if (!query_) RaiseStandard(errObjectNotSet, "RecordStorage.QueryDef");
  return *query_;
}

void RecordStorage::SetSql(const std::string& /*queryName*/, Statement sql) {
  recordset_.reset();
  if (query_)
    query_->SQL(std::move(sql));
  else
    query_ = std::make_unique<QueryDef>(db_, std::move(sql));
}

void RecordStorage::OpenRecordset(ResultSize size) {
  recordset_.reset();
  recordset_ = GetQueryDef().OpenRecordset(size);
}

}  // namespace ZTkDb::detail
