#pragma once

#include <cstdint>
#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

// A 64-bit integer scaled by 10,000: exact to four decimals.
class ZTKDB_API Currency {
 public:
  constexpr Currency() noexcept = default;

  static constexpr Currency FromScaled(int64_t scaled) noexcept {
    Currency c;
    c.scaled_ = scaled;
    return c;
  }
  // Rounds half to even at the fourth decimal; raises error 6 when the value
  // does not fit.
  static Currency FromDouble(double value);

  constexpr int64_t Scaled() const noexcept { return scaled_; }
  double ToDouble() const noexcept { return static_cast<double>(scaled_) / 10000.0; }

  // The invariant literal text: '.' as decimal point, no separators, no
  // trailing zeros, one leading blank when not negative (" 12.5", "-3").
  std::string Text() const;

  // Spelled out rather than <=>: the public headers compile as C++17 too,
  // the default of the compilers hosts are built with.
  friend constexpr bool operator==(Currency a, Currency b) noexcept { return a.scaled_ == b.scaled_; }
  friend constexpr bool operator!=(Currency a, Currency b) noexcept { return a.scaled_ != b.scaled_; }
  friend constexpr bool operator<(Currency a, Currency b) noexcept { return a.scaled_ < b.scaled_; }
  friend constexpr bool operator<=(Currency a, Currency b) noexcept { return a.scaled_ <= b.scaled_; }
  friend constexpr bool operator>(Currency a, Currency b) noexcept { return a.scaled_ > b.scaled_; }
  friend constexpr bool operator>=(Currency a, Currency b) noexcept { return a.scaled_ >= b.scaled_; }

 private:
  int64_t scaled_ = 0;
};

}  // namespace ZTkDb
