#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "runtime/StorageKind.h"
#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"
#include "ztkdb/Variant.h"

namespace ZTkDb::detail {

// The dates every engine stores and gives back: 01.01.0100 00:00:00 to
// 31.12.9999 23:59:59. Anything else (or not a number) raises 6, so that no
// statement is ever sent with a date it would store differently.
void CheckStorableDate(const Date& value);
// Whether an OLE value names such a date once rounded to the second. Before
// 30.12.1899 the fraction counts the time of day away from zero, so the
// first day runs from -657434.0 down to just above -657435.0.
constexpr bool IsStorableDateValue(double v) {
  constexpr double kLastSecond = 86399.5 / 86400.0;  // rounds to 23:59:59
  return v > -(657434.0 + kLastSecond) && v < 2958465.0 + kLastSecond;
}

// Raises 6 for an amount the storage cannot give back exactly: on the
// embedded engine (kind 1) beyond ±2^39 (its REAL storage), elsewhere
// beyond ±`largest` (scaled; a data source that says how far it reaches
// exactly). Refused before any statement.
void CheckStorableCurrency(const Currency& value, StorageKind kind,
                           int64_t largest = std::numeric_limits<int64_t>::max());

// The largest amount (scaled by 10,000) the embedded engine's REAL
// storage gives back exactly.
constexpr int64_t kLargestJetAmount = (int64_t{1} << 39) * 10000;
// The largest amount a driver that reads REAL through its 15-digit text
// gives back exactly: 99,999,999,999.9999.
constexpr int64_t kLargestFifteenDigitAmount = 999999999999999;

// Every value of `rows` checked as above (and doubles for being finite,
// amounts for lying within ±`largestAmount`, scaled), and each row for
// holding `width` values (3001 otherwise): whole tables are refused before
// their first row is sent.
void CheckStorableRows(const std::vector<std::vector<Variant>>& rows, size_t width,
                       int64_t largestAmount);

}  // namespace ZTkDb::detail
