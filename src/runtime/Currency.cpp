#include "ztkdb/Currency.h"

#include <cmath>
#include <cstdlib>

#include "runtime/Numbers.h"
#include "runtime/Raise.h"

namespace ZTkDb {

Currency Currency::FromDouble(double value) {
  const double scaled = detail::RoundHalfEven(value * 10000.0);
  // 2^63 is exactly representable; anything at or beyond it does not fit.
  if (!(scaled >= -9223372036854775808.0 && scaled < 9223372036854775808.0)) {
    detail::RaiseStandard(errOverflow, "ZTkDb.Currency");
  }
  return FromScaled(static_cast<int64_t>(scaled));
}

std::string Currency::Text() const {
  const bool negative = scaled_ < 0;
  // Work in unsigned so that the most negative value has a magnitude too.
  const uint64_t magnitude =
      negative ? uint64_t{0} - static_cast<uint64_t>(scaled_) : static_cast<uint64_t>(scaled_);
  std::string text = negative ? "-" : " ";
  text += std::to_string(magnitude / 10000);
  uint64_t fraction = magnitude % 10000;
  if (fraction != 0) {
    std::string digits = std::to_string(fraction);
    digits.insert(0, 4 - digits.size(), '0');
    while (digits.back() == '0') digits.pop_back();
    text += '.' + digits;
  }
  return text;
}

}  // namespace ZTkDb
