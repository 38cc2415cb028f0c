#pragma once

#include <cstdint>

#include "engine/RowSet.h"
#include "ztkdb/Recordset.h"

namespace ZTkDb::detail {

// What the record procedures read of a recordset directly: its rows and the
// current position, so that a row is copied into a record without a
// Variant per value.
struct RecordsetAccess {
  static const RowSet& Rows(const Recordset& rs) { return *rs.rows_; }
  // The current row; raises 3021 at BOF/EOF, as a field read would.
  static int64_t CurrentRow(const Recordset& rs) {
    rs.CheckCurrent();
    return rs.position_;
  }
};

}  // namespace ZTkDb::detail
