#pragma once

#include "Fields.h"
#include "Records.h"
#include "Session.h"

namespace ztk {

// A realistic help-desk data set around today: `reports` reports from four
// sites, the orders raised from them and linked, their labour and material
// bookings, document links, some done and some open, plus planned
// maintenance orders without a report. All in one transaction, with a
// progress bar on a terminal. The same every run for the same day.
void BuildDemoData(Session& session, int reports);

// The typical request: the open orders by order date, each with its report.
void PrintTypicalRequest(Session& session, const OutputOptions& out);

}  // namespace ztk
