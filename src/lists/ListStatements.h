#pragma once

#include <cstdint>
#include <string>

#include "sql/Literals.h"
#include "sql/SqlTemplate.h"

namespace ZTkDb::detail {

// `text` with its table and, when given, one id placeholder filled: the
// statements of the lists whose reads take at most one id.
inline std::string FillTableAndId(const char* text, const char* table,
                                  const char* idPlaceholder = nullptr, int32_t id = 0) {
  SqlTemplate sql(text);
  sql.Replace("#Tabelle#", table);
  if (idPlaceholder) sql.Replace(idPlaceholder, LongLiteral(id));
  return std::move(sql).Text();
}

}  // namespace ZTkDb::detail
