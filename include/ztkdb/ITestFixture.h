/// \file
/// ZTkDb::ITestFixture, kept for hosts that create it by name.
#pragma once

#include "ztkdb/Export.h"

namespace ZTkDb {

/// A public class without members, kept so that hosts which create it by
/// name ("ZTkDb.ITestFixture") still find it.
class ZTKDB_API ITestFixture {
 public:
  /// Does nothing.
  ITestFixture();
  /// Does nothing.
  // Defined in the library, as it always was: hosts linked against it
  // call the exported destructor.
  ~ITestFixture();  // NOLINT(performance-trivially-destructible)
};

}  // namespace ZTkDb
