#include "engine/OpenOdbc.h"

#include "runtime/Raise.h"

namespace ZTkDb::detail {

// The ODBC engine is not built into this version of the library; opening a
// data source fails with the ODBC error number so hosts take their usual path.
std::shared_ptr<Database> OpenOdbcDatabase(const std::string& connect, const std::string&,
                                           const std::string&, bool, bool) {
  Raise(errOdbcCallFailed, "ZTkDb.ODBC",
        "ODBC--call failed. [IM001] ODBC data sources are not supported by this build of ZTkDb "
        "(connection string: " +
            connect + ")");
}

}  // namespace ZTkDb::detail
