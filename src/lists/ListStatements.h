#pragma once

#include <cstdint>

#include "sql/Statement.h"

namespace ZTkDb::detail {

// `text` with its table and, when given, one id filled: the statements of
// the lists whose reads take at most one id.
inline Statement FillTableAndId(const char* text, StorageKind kind, const char* table) {
  Statement sql(text, kind);
  sql.Name("#Tabelle#", table);
  return sql;
}
inline Statement FillTableAndId(const char* text, StorageKind kind, const char* table,
                                Placeholder idPlaceholder, int32_t id) {
  Statement sql = FillTableAndId(text, kind, table);
  sql.Long(idPlaceholder, id);
  return sql;
}

}  // namespace ZTkDb::detail
