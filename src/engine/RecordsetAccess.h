#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "engine/Database.h"
#include "engine/RowSet.h"
#include "runtime/ToolExport.h"
#include "sql/Statement.h"
#include "ztkdb/Recordset.h"

namespace ZTkDb::detail {

// Where recordsets are made (the engine's results), and what the record
// procedures read of one directly: its rows and the current position, so
// that a row is copied into a record without a Variant per value.
struct RecordsetAccess {
  static std::unique_ptr<Recordset> Make(std::shared_ptr<Database> db,
                                         std::shared_ptr<const Statement> sql, ResultSize size,
                                         std::shared_ptr<const RowSet> rows) {
    return std::unique_ptr<Recordset>(
        new Recordset(std::move(db), std::move(sql), size, std::move(rows)));
  }
  // The result of a finished text (a tool's or a test's query): Requery
  // runs the text again.
  ZTKDB_TOOL static std::unique_ptr<Recordset> Make(std::shared_ptr<Database> db, std::string text,
                                                    std::shared_ptr<const RowSet> rows);
  static const RowSet& Rows(const Recordset& rs) { return *rs.rows_; }
  // The current row; raises 3021 at BOF/EOF, as a field read would.
  static int64_t CurrentRow(const Recordset& rs) {
    rs.CheckCurrent();
    return rs.position_;
  }
};

}  // namespace ZTkDb::detail
