#include "ztkdb/Variant.h"

#include <strings.h>

#include <cmath>
#include <limits>

#include "runtime/Numbers.h"
#include "runtime/Raise.h"
#include "runtime/Storable.h"

namespace ZTkDb {
namespace {

constexpr const char* kSource = "ZTkDb.Variant";

[[noreturn]] void Fail(long number) { detail::RaiseStandard(number, kSource); }

template <typename T>
T CheckedInteger(double value) {
  const double rounded = detail::RoundHalfEven(value);
  if (!(rounded >= static_cast<double>(std::numeric_limits<T>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<T>::max()))) {
    Fail(errOverflow);
  }
  return static_cast<T>(rounded);
}

bool ParseBoolText(const std::string& s, bool& out) {
  if (strcasecmp(s.c_str(), "True") == 0) return out = true, true;
  if (strcasecmp(s.c_str(), "False") == 0) return out = false, true;
  return false;
}

}  // namespace

VariantType Variant::Type() const noexcept {
  static constexpr VariantType kTypes[] = {vtEmpty, vtNull,   vtBoolean,  vtByte, vtInteger,
                                           vtLong,  vtDouble, vtCurrency, vtDate, vtString};
  return kTypes[value_.index()];
}

double Variant::ToDouble() const {
  return std::visit(
      [](const auto& v) -> double {
        using T = std::decay_t<decltype(v)>;
        if constexpr (std::is_same_v<T, std::monostate>)
          return 0.0;
        else if constexpr (std::is_same_v<T, NullTag>)
          Fail(errInvalidUseOfNull);
        else if constexpr (std::is_same_v<T, bool>)
          return v ? -1.0 : 0.0;
        else if constexpr (std::is_same_v<T, Currency>)
          return v.ToDouble();
        else if constexpr (std::is_same_v<T, Date>)
          return v.Value();
        else if constexpr (std::is_same_v<T, std::string>) {
          double d = 0;
          bool b = false;
          if (detail::TryParseNumber(v, d)) return d;
          if (ParseBoolText(v, b)) return b ? -1.0 : 0.0;
          Fail(errTypeMismatch);
        } else {
          return static_cast<double>(v);
        }
      },
      value_);
}

int32_t Variant::ToLong() const {
  if (auto* l = std::get_if<int32_t>(&value_)) return *l;  // the common case, no rounding
  return CheckedInteger<int32_t>(ToDouble());
}

int16_t Variant::ToInteger() const { return CheckedInteger<int16_t>(ToDouble()); }

uint8_t Variant::ToByte() const { return CheckedInteger<uint8_t>(ToDouble()); }

Currency Variant::ToCurrency() const {
  if (auto* c = std::get_if<Currency>(&value_)) return *c;
  if (auto* s = std::get_if<std::string>(&value_)) {
    double d = 0;
    if (!detail::TryParseNumber(*s, d)) Fail(errTypeMismatch);
    return Currency::FromDouble(d);
  }
  return Currency::FromDouble(ToDouble());
}

Date Variant::ToDate() const {
  if (auto* d = std::get_if<Date>(&value_)) return *d;
  if (auto* s = std::get_if<std::string>(&value_)) {
    Date parsed;
    if (Date::TryParse(*s, parsed)) return parsed;
    Fail(errTypeMismatch);
  }
  const double value = ToDouble();
  // The date type ends with 31.12.9999 and begins with 1.1.100.
  if (!detail::IsStorableDateValue(value)) Fail(errOverflow);
  return Date(value);
}

bool Variant::ToBool() const {
  if (auto* b = std::get_if<bool>(&value_)) return *b;
  return ToDouble() != 0.0;
}

std::string Variant::ToString() const {
  return std::visit(
      [](const auto& v) -> std::string {
        using T = std::decay_t<decltype(v)>;
        if constexpr (std::is_same_v<T, std::monostate>)
          return {};
        else if constexpr (std::is_same_v<T, NullTag>)
          Fail(errInvalidUseOfNull);
        else if constexpr (std::is_same_v<T, bool>)
          return v ? "True" : "False";
        else if constexpr (std::is_same_v<T, std::string>)
          return v;
        else if constexpr (std::is_same_v<T, Date>)
          return v.ShortText();
        else if constexpr (std::is_same_v<T, Currency>) {
          std::string text = v.Text();
          return text[0] == ' ' ? text.substr(1) : text;
        } else if constexpr (std::is_same_v<T, double>) {
          return detail::PlainNumberText(v);
        } else {
          return std::to_string(static_cast<int>(v));
        }
      },
      value_);
}

}  // namespace ZTkDb
