#pragma once

#include <string>

#include "Text.h"

namespace ztk {

// One end of a copy: a SQLite file or an ODBC connection string.
struct Endpoint {
  std::string db;
  std::string odbc;
  bool Empty() const { return db.empty() && odbc.empty(); }
  // Raises `message` as a usage error unless exactly one of the two is
  // given: the command's own sentence names its options.
  void RequireOne(const std::string& message) const;
  std::string Name() const { return db.empty() ? _("the ODBC data source") : db; }
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
