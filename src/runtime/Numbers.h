#pragma once

#include <cstdint>
#include <string>

namespace ZTkDb::detail {

// The invariant literal text of a double: '.' as decimal point, no
// separators, the shortest digits that read back as the same double, and one
// leading blank when the value is not negative (" 1.5", "-2.25"). A value
// that is not finite has no literal and raises error 6.
std::string InvariantNumberText(double value);

// The same digits without the leading blank, as a text conversion shows them.
std::string PlainNumberText(double value);

// Rounds half to even, as the runtime's integer conversions do.
double RoundHalfEven(double value);

// Parses a whole invariant number text ("  -12.5e3 "); false when it is not one.
bool TryParseNumber(const std::string& text, double& out);

}  // namespace ZTkDb::detail
