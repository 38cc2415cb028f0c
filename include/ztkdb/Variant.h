#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"
#include "ztkdb/Export.h"

namespace ZTkDb {

enum VariantType {
  vtEmpty = 0,
  vtNull = 1,
  vtInteger = 2,   // 16-bit
  vtLong = 3,      // 32-bit
  vtDouble = 5,
  vtCurrency = 6,
  vtDate = 7,
  vtString = 8,
  vtBoolean = 11,
  vtByte = 17,
};

// The value of a field as the records read it. Conversions follow the rules
// hosts know from automation variants: Null raises 94, a value out of the
// target's range raises 6, a value of no convertible kind raises 13.
class ZTKDB_API Variant {
 public:
  struct NullTag {};

  Variant() noexcept = default;  // Empty
  static Variant Null() { return Variant(NullTag{}); }
  explicit Variant(NullTag) : value_(NullTag{}) {}
  Variant(bool v) : value_(v) {}
  Variant(uint8_t v) : value_(v) {}
  Variant(int16_t v) : value_(v) {}
  Variant(int32_t v) : value_(v) {}
  Variant(double v) : value_(v) {}
  Variant(Currency v) : value_(v) {}
  Variant(Date v) : value_(v) {}
  Variant(std::string v) : value_(std::move(v)) {}
  Variant(const char* v) : value_(std::string(v)) {}

  VariantType Type() const noexcept;
  bool IsNull() const noexcept { return std::holds_alternative<NullTag>(value_); }
  bool IsEmpty() const noexcept { return std::holds_alternative<std::monostate>(value_); }

  int32_t ToLong() const;
  int16_t ToInteger() const;
  uint8_t ToByte() const;
  double ToDouble() const;
  Currency ToCurrency() const;
  Date ToDate() const;
  bool ToBool() const;
  std::string ToString() const;

  friend bool operator==(const Variant& a, const Variant& b) { return a.value_ == b.value_; }

 private:
  friend bool operator==(NullTag, NullTag) noexcept { return true; }
  std::variant<std::monostate, NullTag, bool, uint8_t, int16_t, int32_t, double, Currency, Date,
               std::string>
      value_;
};

}  // namespace ZTkDb
