/// \file
/// Money: ZTkDb::Currency.
#pragma once

#include <cstdint>
#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

/// A 64-bit integer scaled by 10,000: exact to four decimals. Amount properties
/// (Kosten, PreisProStd, …) hold it. A write of an amount the database cannot
/// give back exactly raises 6 before anything is sent: the embedded engine
/// keeps amounts up to ±549,755,813,888, a server's DECIMAL(19,4) column more.
class ZTKDB_API Currency {
 public:
  /// Zero.
  constexpr Currency() noexcept = default;

  /// The amount whose value times 10,000 is `scaled`.
  /// \param scaled The amount in ten-thousandths (12.5 is 125000).
  /// \return That amount.
  static constexpr Currency FromScaled(int64_t scaled) noexcept {
    Currency c;
    c.scaled_ = scaled;
    return c;
  }
  /// Rounds half to even at the fourth decimal; raises error 6 when the value
  /// does not fit.
  /// \param value The amount.
  /// \return The amount rounded to four decimals.
  /// \throws ZTkDb::Error 6 when the value lies beyond the 64-bit range or is not finite.
  static Currency FromDouble(double value);

  /// The amount in ten-thousandths, exactly.
  /// \return The amount times 10,000.
  constexpr int64_t Scaled() const noexcept { return scaled_; }
  /// The amount as a double.
  /// \return The double nearest to the amount, which not every double holds exactly.
  double ToDouble() const noexcept { return static_cast<double>(scaled_) / 10000.0; }

  /// The invariant literal text: '.' as decimal point, no separators, no
  /// trailing zeros, one leading blank when not negative (" 12.5", "-3").
  /// \return The text, the same under every locale.
  std::string Text() const;

  // Spelled out rather than <=>: the public headers compile as C++17 too,
  // the default of the compilers hosts are built with.
  /// True when both amounts are equal.
  friend constexpr bool operator==(Currency a, Currency b) noexcept {
    return a.scaled_ == b.scaled_;
  }
  /// True when the amounts differ.
  friend constexpr bool operator!=(Currency a, Currency b) noexcept {
    return a.scaled_ != b.scaled_;
  }
  /// True when `a` is the smaller amount.
  friend constexpr bool operator<(Currency a, Currency b) noexcept { return a.scaled_ < b.scaled_; }
  /// True when `a` is not larger than `b`.
  friend constexpr bool operator<=(Currency a, Currency b) noexcept {
    return a.scaled_ <= b.scaled_;
  }
  /// True when `a` is the larger amount.
  friend constexpr bool operator>(Currency a, Currency b) noexcept { return a.scaled_ > b.scaled_; }
  /// True when `a` is not smaller than `b`.
  friend constexpr bool operator>=(Currency a, Currency b) noexcept {
    return a.scaled_ >= b.scaled_;
  }

 private:
  int64_t scaled_ = 0;
};

}  // namespace ZTkDb
