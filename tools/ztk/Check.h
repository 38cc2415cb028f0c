#pragma once

#include "Copy.h"

namespace ztk {

// Finds stored values the engine's own statements cannot match: a flag of
// the module's tables holding anything but its kind's true or 0 (a file the
// library opens as Jet compares with -1, a server with 1), as a copy made
// by an older ztk left them. Prints one line per column; with `repair`
// rewrites them as their kind's true, in one transaction, and otherwise
// raises a Failure when it found any.
void Check(const Endpoint& where, bool repair);

}  // namespace ztk
