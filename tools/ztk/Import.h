#pragma once

#include <string>

#include "Copy.h"

namespace ztk {

struct ImportOptions {
  std::string file;  // a Jet 3, Jet 4 or ACE file (.mdb, .accdb)
  Endpoint to;
  bool all_tables = false;  // the file's other tables too, into tables of their own
};

// Reads an Access file with mdbtools' library, never changing it, and writes
// its module tables (found by name, columns matched without regard to case)
// into the target's, with --all-tables every other table into a new table
// of the same name, in one transaction, verified before it commits. Values
// come from their stored forms: amounts from the stored 64-bit integer,
// dates from the stored OLE double. Prints rows read and written per table.
void Import(const ImportOptions& options);

}  // namespace ztk
