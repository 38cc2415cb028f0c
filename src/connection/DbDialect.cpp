#include "connection/DbDialect.h"

namespace ZTkDb::detail {

std::atomic<bool> DbDialect::jet{false};
std::atomic<bool> DbDialect::oracle{false};

std::string WorkspaceName(const std::string& clientName) {
  return clientName + (DbDialect::jet ? "_ZTk" : "_Zanto");
}

}  // namespace ZTkDb::detail
