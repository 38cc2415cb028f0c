#include "connection/WorkspaceNames.h"

namespace ZTkDb::detail {

std::atomic<bool> ProcessFlags::jet_workspace_names{false};
std::atomic<bool> ProcessFlags::oracle{false};

std::string WorkspaceName(const std::string& clientName) {
  return clientName + (ProcessFlags::jet_workspace_names ? "_ZTk" : "_Zanto");
}

}  // namespace ZTkDb::detail
