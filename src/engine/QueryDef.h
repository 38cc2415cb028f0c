#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "engine/Database.h"
#include "sql/Statement.h"
#include "ztkdb/Recordset.h"

namespace ZTkDb::detail {

// A temporary statement on one database: run it with Execute, or open it as
// a snapshot recordset.
class QueryDef {
 public:
  QueryDef(std::shared_ptr<Database> db, Statement sql);
  QueryDef(const QueryDef&) = delete;
  QueryDef& operator=(const QueryDef&) = delete;
  ~QueryDef() = default;

  const Statement& SQL() const { return *sql_; }
  // A new statement in place of the old (whose recordsets keep theirs).
  void SQL(Statement sql);
  void Execute();
  // Rows affected by the last Execute (0 before the first).
  int64_t RecordsAffected() const { return records_affected_; }
  std::unique_ptr<Recordset> OpenRecordset(ResultSize size = ResultSize::kFew) const;

 private:
  std::shared_ptr<Database> db_;
  // Shared with the recordsets it opens, which run it again on Requery.
  std::shared_ptr<const Statement> sql_;
  int64_t records_affected_ = 0;
};

}  // namespace ZTkDb::detail
