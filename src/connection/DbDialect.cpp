#include "connection/DbDialect.h"

namespace ZTkDb::detail {

bool DbDialect::jet = false;
bool DbDialect::oracle = false;

std::string WorkspaceName(const std::string& clientName) {
  return clientName + (DbDialect::jet ? "_ZTk" : "_Zanto");
}

}  // namespace ZTkDb::detail
