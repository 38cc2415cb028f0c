#pragma once

#include <string>

#include "Output.h"
#include "Session.h"

namespace ztk {

// `ztk tables`: each table with its row count.
void Tables(Session& session, const OutputOptions& out);
// `ztk query`: one statement of a support engineer's, read-only, through
// the library (so adapted as the library adapts its own statements).
void Query(Session& session, const std::string& sql, const OutputOptions& out);

}  // namespace ztk
