#include "engine/OpenOdbc.h"

#include "engine/odbc/OdbcDatabase.h"

namespace ZTkDb::detail {

std::shared_ptr<Database> OpenOdbcDatabase(const std::string& connect, const std::string& user,
                                           const std::string& password, bool /*exclusive*/,
                                           bool readOnly) {
  // A server has no file to lock: an exclusive open means nothing there.
  std::string full = connect;
  if (!user.empty()) full += ";UID=" + user;
  if (!password.empty()) full += ";PWD=" + password;
  return OdbcDatabase::Open(full, readOnly);
}

}  // namespace ZTkDb::detail
