#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "engine/Database.h"
#include "engine/QueryDef.h"
#include "sql/Statement.h"
#include "ztkdb/Recordset.h"

namespace ZTkDb::detail {

// One record or list object's private access to its client's database: at
// most one prepared statement and at most one open recordset.
class RecordStorage {
 public:
  explicit RecordStorage(std::shared_ptr<Database> db) : db_(std::move(db)) {}

  // The open recordset, or nullptr (Nothing) before any query.
  Recordset* GetRecordset() const { return recordset_.get(); }
  // The prepared statement; raises 91 when none is prepared.
  QueryDef& GetQueryDef();
  // 1 = Jet (the embedded engine), 2 = ODBC.
  StorageKind DbKind() const { return db_->Kind(); }
  // The largest amount (scaled) the engine gives back exactly.
  int64_t LargestAmount() const { return db_->LargestAmount(); }
  // Prepares a temporary statement; the query name is always empty.
  void SetSql(const std::string& queryName, Statement sql);
  // Runs the prepared SELECT and holds its result.
  void OpenRecordset(ResultSize size = ResultSize::kFew);
  // Harmless when nothing is open.
  void CloseRecordset() noexcept { recordset_.reset(); }
  void ReleaseQuery() noexcept { query_.reset(); }

 private:
  std::shared_ptr<Database> db_;
  std::unique_ptr<QueryDef> query_;
  std::unique_ptr<Recordset> recordset_;
};

}  // namespace ZTkDb::detail
