/// \file
/// Dates: ZTkDb::Date and ZTkDb::NoDate.
#pragma once

#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

/// An OLE date: days since 30.12.1899, the fraction being the time of day.
/// Negative values count back from that day with the fraction still meaning
/// the time of day, as the OLE date type defines it. Dates that reach a
/// database must lie between 01.01.0100 and 31.12.9999; NoDate, the last of
/// them, stands for "no date" in every date field.
class ZTKDB_API Date {
 public:
  /// 30.12.1899 00:00 (value 0), not NoDate.
  constexpr Date() noexcept = default;
  /// The date with that OLE value, unchecked.
  /// \param ole Days since 30.12.1899, the fraction the time of day.
  constexpr explicit Date(double ole) noexcept : value_(ole) {}

  /// An impossible calendar date (31.02., month 13, year 0) raises error 13.
  /// \param year The year, 100 to 9999.
  /// \param month The month, 1 to 12.
  /// \param day The day of the month.
  /// \param hour The hour, 0 to 23.
  /// \param minute The minute, 0 to 59.
  /// \param second The second, 0 to 59.
  /// \return That date and time.
  /// \throws ZTkDb::Error 13 for a part out of its range.
  static Date FromYmd(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
  /// Today's local date without a time part.
  /// \return Today, midnight.
  static Date Today();
  /// The local date and time, to the second.
  /// \return Now.
  static Date Now();

  /// The OLE value.
  /// \return Days since 30.12.1899, the fraction the time of day.
  constexpr double Value() const noexcept { return value_; }

  /// The calendar year.
  /// \return The year.
  int Year() const;
  /// The month.
  /// \return 1 to 12.
  int Month() const;
  /// The day of the month.
  /// \return 1 to 31.
  int Day() const;
  /// The hour of the time of day (the time rounded to the second).
  /// \return 0 to 23.
  int Hour() const;
  /// The minute.
  /// \return 0 to 59.
  int Minute() const;
  /// The second.
  /// \return 0 to 59.
  int Second() const;
  /// Whether the date carries a time of day.
  /// \return False at midnight (to the second), true otherwise.
  bool HasTime() const;
  /// The date without its time part.
  /// \return The same day at midnight.
  Date DatePart() const;
  /// The same time of day, `days` calendar days later (earlier when negative).
  /// \param days The number of days to add.
  /// \return The new date.
  /// \throws ZTkDb::Error 13 when the result lies outside the years 100 to 9999.
  Date AddDays(int days) const;

  /// "dd.mm.yyyy", plus " hh:nn:ss" when the time is not midnight.
  /// \return The German short form, as the records have always written dates.
  std::string ShortText() const;
  /// "yyyy-mm-dd hh:nn:ss", the form dates are stored in.
  /// \return The stored form, with the time always.
  std::string IsoText() const;

  /// Reads "dd.mm.yyyy[ hh:nn[:ss]]" or "yyyy-mm-dd[ hh:nn[:ss]]" (also with a
  /// 'T'); returns false and leaves `out` alone for anything else.
  /// \param text The text; blanks around it are ignored, fractions of a second dropped.
  /// \param out Receives the date when the text is one.
  /// \return True when `text` was a valid date.
  static bool TryParse(const std::string& text, Date& out);

  // Spelled out rather than <=>: the public headers compile as C++17 too,
  // the default of the compilers hosts are built with.
  /// True when both values are equal.
  friend constexpr bool operator==(Date a, Date b) noexcept { return a.value_ == b.value_; }
  /// True when the values differ.
  friend constexpr bool operator!=(Date a, Date b) noexcept { return a.value_ != b.value_; }
  /// True when `a` has the smaller value (is earlier, for dates from 30.12.1899 on).
  friend constexpr bool operator<(Date a, Date b) noexcept { return a.value_ < b.value_; }
  /// True when `a` has the smaller or the same value.
  friend constexpr bool operator<=(Date a, Date b) noexcept { return a.value_ <= b.value_; }
  /// True when `a` has the larger value.
  friend constexpr bool operator>(Date a, Date b) noexcept { return a.value_ > b.value_; }
  /// True when `a` has the larger or the same value.
  friend constexpr bool operator>=(Date a, Date b) noexcept { return a.value_ >= b.value_; }

 private:
  double value_ = 0.0;
};

/// 31.12.9999: the value every date field holds while no date is set.
inline constexpr Date NoDate{2958465.0};

}  // namespace ZTkDb
