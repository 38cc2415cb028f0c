#pragma once

#include <cstdint>
#include <string>
#include <string_view>

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

// The stored date form 'YYYY-MM-DD HH:MM:SS' split into its six numbers,
// without the general date parser (no calendar check); false for any other
// text.
inline bool SplitIsoTimestamp(std::string_view t, int (&parts)[6]) {
  if (t.size() != 19 || t[4] != '-' || t[7] != '-' || t[10] != ' ' || t[13] != ':' ||
      t[16] != ':') {
    return false;
  }
  constexpr size_t kAt[6] = {0, 5, 8, 11, 14, 17};
  constexpr size_t kLength[6] = {4, 2, 2, 2, 2, 2};
  for (int k = 0; k < 6; ++k) {
    int n = 0;
    for (size_t j = kAt[k]; j < kAt[k] + kLength[k]; ++j) {
      if (t[j] < '0' || t[j] > '9') return false;
      n = n * 10 + (t[j] - '0');
    }
    parts[k] = n;
  }
  return true;
}

}  // namespace ZTkDb::detail
