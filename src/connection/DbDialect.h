#pragma once

#include <atomic>
#include <string>

#include "runtime/ToolExport.h"

namespace ZTkDb::detail {

// The two process-wide dialect flags. Atomic, since clients may work in
// different threads; what one thread's open does to the other's workspace
// names is the flags' meaning, not a race.
struct DbDialect {
  // Set by OpenJetDb, cleared by OpenOdbcDb; selects the workspace-name form.
  static std::atomic<bool> jet;
  // Set by OpenOdbcDb when the connection string names the Oracle marker;
  // never cleared for the life of the process.
  static std::atomic<bool> oracle;
};

// The registry key for a client: "<client>_ZTk" while the Jet flag is set,
// "<client>_Zanto" otherwise. Computed afresh on every lookup.
ZTKDB_TOOL std::string WorkspaceName(const std::string& clientName);

}  // namespace ZTkDb::detail
