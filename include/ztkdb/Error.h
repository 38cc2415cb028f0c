#pragma once

#include <stdexcept>
#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

// The one exception type every public member lets escape. Number, source and
// description are passed on unchanged by every member that did not raise it,
// so a host sees the engine's or the conversion's error as it was raised.
class ZTKDB_API Error : public std::runtime_error {
 public:
  Error(long number, std::string source, std::string description);

  long Number() const noexcept { return number_; }
  const std::string& Source() const noexcept { return source_; }
  const std::string& Description() const noexcept { return description_; }

 private:
  long number_;
  std::string source_;
  std::string description_;
};

// Error numbers hosts may rely on.
enum ErrorNumbers : long {
  errOverflow = 6,
  errSubscriptOutOfRange = 9,
  errTypeMismatch = 13,
  errObjectNotSet = 91,
  errInvalidUseOfNull = 94,
  errDuplicateKeyInCollection = 457,
  errEngine = 3000,
  errInvalidArgument = 3001,
  errDuplicateValue = 3022,
  errFileNotFound = 3024,
  errReadOnly = 3027,
  errNoCurrentRecord = 3021,
  errCannotOpenFile = 3051,
  errTooFewParameters = 3061,
  errSyntax = 3075,
  errTableNotFound = 3078,
  errInvalidStatement = 3129,
  errOdbcCallFailed = 3146,
  errLocked = 3260,
  errItemNotFound = 3265,
};

}  // namespace ZTkDb
