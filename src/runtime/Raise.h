#pragma once

#include <string>

#include "ztkdb/Error.h"

namespace ZTkDb::detail {

// The description hosts know for the runtime's own error numbers.
std::string StandardDescription(long number);

[[noreturn]] void Raise(long number, std::string source, std::string description);
// Raises `number` with its standard description.
[[noreturn]] void RaiseStandard(long number, std::string source);

}  // namespace ZTkDb::detail
