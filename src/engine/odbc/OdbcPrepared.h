#pragma once

#include <memory>
#include <vector>

#include "engine/RowSet.h"
#include "engine/StatementCache.h"
#include "engine/odbc/OdbcDatabase.h"
#include "engine/odbc/OdbcFetch.h"

namespace ZTkDb::detail {

// One shape's prepared statement, and what its result looks like once it
// has run: the columns are described once per shape, not once per call.
struct OdbcDatabase::Prepared {
  OdbcStmt stmt;
  std::shared_ptr<const RowSet::Columns> columns;
  std::vector<Fetch> fetches;
};

class OdbcDatabase::Statements : public StatementCache<Prepared> {};

}  // namespace ZTkDb::detail
