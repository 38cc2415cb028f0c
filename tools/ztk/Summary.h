#pragma once

#include <CLI/CLI.hpp>
#include <functional>

#include "Output.h"
#include "Session.h"

namespace ztk {

// `ztk summary`: per site, for a period, the orders opened and done, those
// overdue now, and the hours and costs booked.
void AddSummaryCommand(CLI::App& app, DbOptions& db, const OutputOptions& out,
                       std::function<void()>& action);

}  // namespace ztk
