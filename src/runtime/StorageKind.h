#pragma once
#include <cstdint>

namespace ZTkDb::detail {

// The connection kind a storage reports (DbKind), which picks template
// variants and literal forms. The numbers are the ones hosts have always
// seen. An engine registered for tests may report any other number: every
// choice that names Jet treats it as "not Jet", and the DELETE form of some
// records as "no statement".
enum class StorageKind : int16_t { Jet = 1, Odbc = 2 };

}  // namespace ZTkDb::detail
