#pragma once

#include <string>

namespace ZTkDb::detail {

// The two process-wide dialect flags. Not guarded by locks: the library runs
// on its caller's thread.
struct DbDialect {
  // Set by OpenJetDb, cleared by OpenOdbcDb; selects the workspace-name form.
  static bool jet;
  // Set by OpenOdbcDb when the connection string names the Oracle marker;
  // never cleared for the life of the process.
  static bool oracle;
};

// The registry key for a client: "<client>_ZTk" while the Jet flag is set,
// "<client>_Zanto" otherwise. Computed afresh on every lookup.
std::string WorkspaceName(const std::string& clientName);

}  // namespace ZTkDb::detail
