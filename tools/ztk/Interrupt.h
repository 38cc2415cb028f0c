#pragma once

#include "Session.h"

namespace ztk {

// Ctrl-C or a TERM while a command builds something (demo, copy, import):
// the work in progress stops at its next row, so that what it made is
// removed or rolled back on the way out. A second signal ends the process
// at once.
struct Interrupted : Failure {
  using Failure::Failure;
};

void CatchInterrupts();
// Throws Interrupted once a signal came.
void ThrowIfInterrupted();

}  // namespace ztk
