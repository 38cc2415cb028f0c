#pragma once

#include <string>

namespace ZTkDb::detail {

// Whether a statement other than SELECT may run on a file opened read-only:
// EXPLAIN, WITH, and the PRAGMAs that only ask (no '=', and brackets only
// around what a question names: table_info(T), integrity_check(N) …; a
// value in brackets sets a pragma as '=' does). SQLite still has to read
// the statement as read-only before it runs.
bool MayRunReadOnly(const std::string& text);

}  // namespace ZTkDb::detail
