#pragma once

#include <memory>
#include <string>

#include "engine/Database.h"

namespace ZTkDb::detail {

// Opens an ODBC data source (DSN or DSN-less connection string) as a kind-2
// database. Raises 3146 with the driver's SQLSTATE and text on failure.
std::shared_ptr<Database> OpenOdbcDatabase(const std::string& connect, const std::string& user,
                                           const std::string& password, bool exclusive,
                                           bool readOnly);

}  // namespace ZTkDb::detail
