#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Storable.h"
#include "runtime/StorageKind.h"
#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"

namespace ZTkDb::detail {

// The literal forms of values in statements. `kind` is the storage's DbKind:
// 1 = Jet, anything else = ODBC.

// Decimal digits, '-' when negative: "4711", "-1".
std::string LongLiteral(int64_t value);
// A flag in a comparison or a written column: "-1"/"0" on Jet, "1"/"0" otherwise.
std::string FlagLiteral(bool value, StorageKind kind);
// What #TRUE# becomes.
inline std::string TrueLiteral(StorageKind kind) { return FlagLiteral(true, kind); }
// " 2.5", "-3": invariant, with a leading blank when not negative.
std::string NumberLiteral(double value);
// Raises 6 for an amount the storage cannot give back exactly (see
// CheckStorableCurrency): refused before any statement.
std::string CurrencyLiteral(const Currency& value, StorageKind kind,
                            int64_t largest = std::numeric_limits<int64_t>::max());
// A date in a filter: DateLiteral (unquoted slot) on Jet, "dd.mm.yyyy"
// (quoted slot) otherwise. Raises 6 for a date outside the storable range.
std::string FilterDateLiteral(const Date& value, StorageKind kind);
// A date written by a record into a quoted slot: the short date text.
// Raises 6 for a date outside the storable range.
std::string RecordDateText(const Date& value);
// A text for a quoted slot, through the formatter's TextLiteral.
std::string TextValue(const std::string& value);
// The same appended to `out`.
void AppendTextValue(std::string& out, std::string_view value);
// Whether the engine's date rewrite could read `text` as a German date
// (dd.mm.yyyy and its shorter forms): its first '.' comes after one or two
// characters. Only such texts are rewritten, so only they cannot be bound
// as plain text.
inline bool MayBeGermanDate(std::string_view text) {
  const size_t dot = text.find('.');
  return dot == 1 || dot == 2;
}
// "IN(" + the elements as they stand, comma-separated + ")". An empty list
// gives "IN)": the removed last character is then the opening bracket.
std::string IdListLiteral(const std::vector<std::string>& ids);

}  // namespace ZTkDb::detail
