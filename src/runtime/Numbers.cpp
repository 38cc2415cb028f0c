#include "runtime/Numbers.h"

#include <charconv>
#include <cmath>
#include <system_error>

#include "runtime/Raise.h"

namespace ZTkDb::detail {

std::string PlainNumberText(double value) {
  if (!std::isfinite(value)) RaiseStandard(errOverflow, "ZTkDb.Number");
  if (value == 0.0) return "0";  // also -0, which has no sign of its own in a literal
  char buf[64];
  const auto result = std::to_chars(buf, buf + sizeof buf, value);
  return std::string(buf, result.ptr);
}

std::string InvariantNumberText(double value) {
  std::string digits = PlainNumberText(value);
  return digits[0] == '-' ? digits : " " + digits;
}

double RoundHalfEven(double value) {
  const double floor = std::floor(value);
  const double diff = value - floor;
  if (diff > 0.5) return floor + 1.0;
  if (diff < 0.5) return floor;
  return std::fmod(floor, 2.0) == 0.0 ? floor : floor + 1.0;
}

bool TryParseNumber(const std::string& text, double& out) {
  size_t begin = text.find_first_not_of(" \t");
  size_t end = text.find_last_not_of(" \t");
  if (begin == std::string::npos) return false;
  const char* first = text.data() + begin;
  const char* last = text.data() + end + 1;
  if (*first == '+') ++first;
  double value = 0;
  const auto result = std::from_chars(first, last, value);
  if (result.ec != std::errc() || result.ptr != last) return false;
  out = value;
  return true;
}

}  // namespace ZTkDb::detail
