#pragma once

#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

// An OLE date: days since 30.12.1899, the fraction being the time of day.
// Negative values count back from that day with the fraction still meaning
// the time of day, as the OLE date type defines it.
class ZTKDB_API Date {
 public:
  constexpr Date() noexcept = default;
  constexpr explicit Date(double ole) noexcept : value_(ole) {}

  // An impossible calendar date (31.02., month 13, year 0) raises error 13.
  static Date FromYmd(int year, int month, int day, int hour = 0, int minute = 0,
                      int second = 0);
  // Today's local date without a time part.
  static Date Today();
  // The local date and time, to the second.
  static Date Now();

  constexpr double Value() const noexcept { return value_; }

  int Year() const;
  int Month() const;
  int Day() const;
  int Hour() const;
  int Minute() const;
  int Second() const;
  bool HasTime() const;
  // The date without its time part.
  Date DatePart() const;
  Date AddDays(int days) const;

  // "dd.mm.yyyy", plus " hh:nn:ss" when the time is not midnight.
  std::string ShortText() const;
  // "yyyy-mm-dd hh:nn:ss", the form dates are stored in.
  std::string IsoText() const;

  // Reads "dd.mm.yyyy[ hh:nn[:ss]]" or "yyyy-mm-dd[ hh:nn[:ss]]" (also with a
  // 'T'); returns false and leaves `out` alone for anything else.
  static bool TryParse(const std::string& text, Date& out);

  // Spelled out rather than <=>: the public headers compile as C++17 too,
  // the default of the compilers hosts are built with.
  friend constexpr bool operator==(Date a, Date b) noexcept { return a.value_ == b.value_; }
  friend constexpr bool operator!=(Date a, Date b) noexcept { return a.value_ != b.value_; }
  friend constexpr bool operator<(Date a, Date b) noexcept { return a.value_ < b.value_; }
  friend constexpr bool operator<=(Date a, Date b) noexcept { return a.value_ <= b.value_; }
  friend constexpr bool operator>(Date a, Date b) noexcept { return a.value_ > b.value_; }
  friend constexpr bool operator>=(Date a, Date b) noexcept { return a.value_ >= b.value_; }

 private:
  double value_ = 0.0;
};

// 31.12.9999: the value every date field holds while no date is set.
inline constexpr Date NoDate{2958465.0};

}  // namespace ZTkDb
