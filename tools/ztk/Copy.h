#pragma once

#include <string>

namespace ztk {

// One end of a copy: a SQLite file or an ODBC connection string.
struct Endpoint {
  std::string db;
  std::string odbc;
  bool Empty() const { return db.empty() && odbc.empty(); }
  // Raises a usage error naming `what` ("copy's source") unless exactly one
  // of the two is given.
  void RequireOne(const std::string& what) const;
  std::string Name() const { return db.empty() ? "the ODBC data source" : db; }
};

struct CopyOptions {
  Endpoint from;
  Endpoint to;
  bool init = false;    // create the module tables on the target first
  bool append = false;  // the target may hold rows already (no id may clash)
};

// Copies the module's six tables with every id and row token as it stands,
// in one transaction on the target, verified (rows per table and a checksum
// of every value read back) before it commits; then advances the target's
// id sequences past the copied ids. Prints one line per table.
void Copy(const CopyOptions& options);

}  // namespace ztk
