#pragma once

#include <atomic>
#include <string>

#include "runtime/ToolExport.h"

namespace ZTkDb::detail {

// The two process-wide flags the opens set. They say nothing about the
// server a connection talks to (that is the engine's dialect): one picks the
// form of workspace names, the other one list's statement. Atomic, since
// clients may work in different threads; what one thread's open does to the
// other's workspace names is the flags' meaning, not a race.
struct ProcessFlags {
  // Set by OpenJetDb, cleared by OpenOdbcDb.
  static std::atomic<bool> jet_workspace_names;
  // Set by OpenOdbcDb when the connection string names the Oracle marker;
  // never cleared for the life of the process.
  static std::atomic<bool> oracle;
};

// The registry key for a client: "<client>_ZTk" while the Jet flag is set,
// "<client>_Zanto" otherwise. Computed afresh on every lookup.
ZTKDB_TOOL std::string WorkspaceName(const std::string& clientName);

}  // namespace ZTkDb::detail
