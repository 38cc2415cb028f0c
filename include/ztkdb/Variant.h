/// \file
/// Field values: ZTkDb::Variant.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"
#include "ztkdb/Export.h"

namespace ZTkDb {

/// The kind of value a Variant holds, numbered as automation variants are.
enum VariantType {
  vtEmpty = 0,     ///< no value at all
  vtNull = 1,      ///< the database's Null
  vtInteger = 2,   ///< 16-bit
  vtLong = 3,      ///< 32-bit
  vtDouble = 5,    ///< a double
  vtCurrency = 6,  ///< a Currency
  vtDate = 7,      ///< a Date
  vtString = 8,    ///< a UTF-8 text
  vtBoolean = 11,  ///< a flag
  vtByte = 17,     ///< an unsigned byte
};

/// The value of a field as the records read it. Conversions follow the rules
/// hosts know from automation variants: Null raises 94, a value out of the
/// target's range raises 6, a value of no convertible kind raises 13.
/// Empty converts to 0, "" and false.
class ZTKDB_API Variant {
 public:
  /// The tag that selects the Null constructor.
  struct NullTag {};

  /// Empty.
  Variant() noexcept = default;  // Empty
  /// Null, the database's "no value".
  /// \return A Variant of type vtNull.
  static Variant Null() { return Variant(NullTag{}); }
  /// Null; Variant::Null() reads better.
  explicit Variant(NullTag) : value_(NullTag{}) {}
  /// A flag (vtBoolean).
  /// \param v The flag.
  Variant(bool v) : value_(v) {}
  /// A byte (vtByte).
  /// \param v The byte.
  Variant(uint8_t v) : value_(v) {}
  /// A 16-bit integer (vtInteger).
  /// \param v The integer.
  Variant(int16_t v) : value_(v) {}
  /// A 32-bit integer (vtLong).
  /// \param v The integer.
  Variant(int32_t v) : value_(v) {}
  /// A double (vtDouble).
  /// \param v The number.
  Variant(double v) : value_(v) {}
  /// An amount (vtCurrency).
  /// \param v The amount.
  Variant(Currency v) : value_(v) {}
  /// A date (vtDate).
  /// \param v The date.
  Variant(Date v) : value_(v) {}
  /// A text (vtString).
  /// \param v The text, UTF-8.
  Variant(std::string v) : value_(std::move(v)) {}
  /// A text (vtString).
  /// \param v The text, UTF-8 and NUL-terminated.
  Variant(const char* v) : value_(std::string(v)) {}

  /// The kind of value held.
  /// \return Its VariantType.
  VariantType Type() const noexcept;
  /// Whether the value is Null.
  /// \return True for vtNull.
  bool IsNull() const noexcept { return std::holds_alternative<NullTag>(value_); }
  /// Whether there is no value at all.
  /// \return True for vtEmpty.
  bool IsEmpty() const noexcept { return std::holds_alternative<std::monostate>(value_); }

  /// The value as a 32-bit integer, rounded half to even.
  /// \return The integer.
  /// \throws ZTkDb::Error 94 for Null; 6 out of range; 13 for a text that is no number.
  int32_t ToLong() const;
  /// The value as a 16-bit integer, rounded half to even.
  /// \return The integer.
  /// \throws ZTkDb::Error 94 for Null; 6 out of range; 13 for a text that is no number.
  int16_t ToInteger() const;
  /// The value as a byte, rounded half to even.
  /// \return The byte.
  /// \throws ZTkDb::Error 94 for Null; 6 outside 0..255; 13 for a text that is no number.
  uint8_t ToByte() const;
  /// The value as a double; a flag gives -1 or 0, a date its OLE value.
  /// \return The number.
  /// \throws ZTkDb::Error 94 for Null; 13 for a text that is no number, True or False.
  double ToDouble() const;
  /// The value as an amount, rounded half to even at the fourth decimal.
  /// \return The amount.
  /// \throws ZTkDb::Error 94 for Null; 6 out of range; 13 for a text that is no number.
  Currency ToCurrency() const;
  /// The value as a date: a number as an OLE value, a text in a form Date::TryParse
  /// reads.
  /// \return The date.
  /// \throws ZTkDb::Error 94 for Null; 6 for a number outside 01.01.0100 to 31.12.9999;
  ///   13 for a text that is no date.
  Date ToDate() const;
  /// The value as a flag: true for every number but 0, and for the text "True".
  /// \return The flag.
  /// \throws ZTkDb::Error 94 for Null; 13 for a text that is no number, True or False.
  bool ToBool() const;
  /// The value as text: "True"/"False" for flags, Date::ShortText for dates, numbers
  /// and amounts without a leading blank; "" for Empty.
  /// \return The text.
  /// \throws ZTkDb::Error 94 for Null.
  std::string ToString() const;

  /// True when both hold the same kind and the same value (Null equals Null).
  friend bool operator==(const Variant& a, const Variant& b) { return a.value_ == b.value_; }

 private:
  friend bool operator==(NullTag, NullTag) noexcept { return true; }
  std::variant<std::monostate, NullTag, bool, uint8_t, int16_t, int32_t, double, Currency, Date,
               std::string>
      value_;
};

}  // namespace ZTkDb
