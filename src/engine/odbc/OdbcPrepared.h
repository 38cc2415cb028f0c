#pragma once

#include <cstdint>
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
  // Names the statement to the block fetcher, which keeps it bound between
  // runs; never reused, even after the statement is freed.
  uint64_t serial = 0;
};

class OdbcDatabase::Statements : public StatementCache<Prepared> {};

}  // namespace ZTkDb::detail
