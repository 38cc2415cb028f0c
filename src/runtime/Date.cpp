#include "ztkdb/Date.h"

#include <cmath>
#include <cstdio>
#include <ctime>

#include "runtime/Raise.h"

namespace ZTkDb {
namespace {

// Days from 1970-01-01 in the proleptic Gregorian calendar (H. Hinnant's
// algorithm); exact for every year the OLE date type holds.
long long DaysFromCivil(long long y, unsigned m, unsigned d) {
  y -= m <= 2;
  const long long era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<long long>(doe) - 719468;
}

struct Civil {
  int year, month, day;
};

Civil CivilFromDays(long long z) {
  z += 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long y = static_cast<long long>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  const unsigned d = doy - (153 * mp + 2) / 5 + 1;
  const unsigned m = mp < 10 ? mp + 3 : mp - 9;
  return {static_cast<int>(y + (m <= 2)), static_cast<int>(m), static_cast<int>(d)};
}

constexpr long long kOleEpochFromUnix = -25569;  // 30.12.1899 counted from 1.1.1970

bool IsLeap(int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

int DaysInMonth(int y, int m) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return m == 2 && IsLeap(y) ? 29 : kDays[m - 1];
}

bool ValidParts(int y, int mo, int d, int h, int mi, int s) {
  return y >= 100 && y <= 9999 && mo >= 1 && mo <= 12 && d >= 1 && d <= DaysInMonth(y, mo) &&
         h >= 0 && h <= 23 && mi >= 0 && mi <= 59 && s >= 0 && s <= 59;
}

double Compose(int y, int mo, int d, int h, int mi, int s) {
  const double days = static_cast<double>(DaysFromCivil(y, mo, d) - kOleEpochFromUnix);
  const double frac = (h * 3600.0 + mi * 60.0 + s) / 86400.0;
  // Before the epoch the fraction still means the time of day, so it is
  // subtracted from the negative day number.
  return days >= 0 ? days + frac : days - frac;
}

struct Parts {
  int year, month, day, hour, minute, second;
};

Parts Split(double value) {
  double whole = std::trunc(value);
  long long seconds = std::llround(std::fabs(value - whole) * 86400.0);
  if (seconds >= 86400) {
    seconds -= 86400;
    whole += 1;
  }
  const Civil c = CivilFromDays(static_cast<long long>(whole) + kOleEpochFromUnix);
  const int secs = static_cast<int>(seconds);
  return {c.year, c.month, c.day, secs / 3600, (secs / 60) % 60, secs % 60};
}

// Reads up to `maxDigits` digits at `p`; false when there is none.
bool ReadNumber(const char*& p, int maxDigits, int& out) {
  int n = 0, digits = 0;
  while (digits < maxDigits && *p >= '0' && *p <= '9') {
    n = n * 10 + (*p - '0');
    ++p;
    ++digits;
  }
  out = n;
  return digits > 0;
}

bool ReadTime(const char*& p, int& h, int& mi, int& s) {
  if (!ReadNumber(p, 2, h) || *p != ':') return false;
  ++p;
  if (!ReadNumber(p, 2, mi)) return false;
  if (*p == ':') {
    ++p;
    if (!ReadNumber(p, 2, s)) return false;
    if (*p == '.') {  // fractions of a second are dropped
      ++p;
      int ignored;
      if (!ReadNumber(p, 9, ignored)) return false;
    }
  }
  return true;
}

}  // namespace

Date Date::FromYmd(int year, int month, int day, int hour, int minute, int second) {
  if (!ValidParts(year, month, day, hour, minute, second)) {
    detail::RaiseStandard(errTypeMismatch, "ZTkDb.Date");
  }
  return Date(Compose(year, month, day, hour, minute, second));
}

Date Date::Now() {
  const std::time_t t = std::time(nullptr);
  std::tm local{};
  localtime_r(&t, &local);
  return FromYmd(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                 local.tm_sec);
}

Date Date::Today() { return Now().DatePart(); }

int Date::Year() const { return Split(value_).year; }
int Date::Month() const { return Split(value_).month; }
int Date::Day() const { return Split(value_).day; }
int Date::Hour() const { return Split(value_).hour; }
int Date::Minute() const { return Split(value_).minute; }
int Date::Second() const { return Split(value_).second; }

bool Date::HasTime() const {
  const Parts p = Split(value_);
  return p.hour != 0 || p.minute != 0 || p.second != 0;
}

Date Date::DatePart() const {
  const Parts p = Split(value_);
  return Date(Compose(p.year, p.month, p.day, 0, 0, 0));
}

Date Date::AddDays(int days) const {
  const Parts p = Split(value_);
  const long long d = DaysFromCivil(p.year, p.month, p.day) + days;
  const Civil c = CivilFromDays(d);
  return FromYmd(c.year, c.month, c.day, p.hour, p.minute, p.second);
}

namespace {

// Fixed-width digits written from the right into a buffer: these texts are
// written for every date of every statement, so neither format parsing nor
// a string's growth checks stand in the way.
void PutDigits(char* at, int value, int width) {
  for (int i = width - 1; i >= 0; --i) {
    at[i] = static_cast<char>('0' + value % 10);
    value /= 10;
  }
}

// "a<sep>b<sep>c" at `at`, with two-digit parts but for the widths given
// for the first and the last.
void PutTriple(char* at, int a, int wa, int b, int c, int wc, char sep) {
  PutDigits(at, a, wa);
  at[wa] = sep;
  PutDigits(at + wa + 1, b, 2);
  at[wa + 3] = sep;
  PutDigits(at + wa + 4, c, wc);
}

}  // namespace

std::string Date::ShortText() const {
  const Parts p = Split(value_);
  char text[19];  // "dd.mm.yyyy hh:nn:ss"
  PutTriple(text, p.day, 2, p.month, p.year, 4, '.');
  if (!(p.hour || p.minute || p.second)) return std::string(text, 10);
  text[10] = ' ';
  PutTriple(text + 11, p.hour, 2, p.minute, p.second, 2, ':');
  return std::string(text, 19);
}

std::string Date::IsoText() const {
  const Parts p = Split(value_);
  char text[19];  // "yyyy-mm-dd hh:nn:ss"
  PutTriple(text, p.year, 4, p.month, p.day, 2, '-');
  text[10] = ' ';
  PutTriple(text + 11, p.hour, 2, p.minute, p.second, 2, ':');
  return std::string(text, 19);
}

bool Date::TryParse(const std::string& text, Date& out) {
  const char* p = text.c_str();
  while (*p == ' ') ++p;
  int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0;
  int first = 0;
  if (!ReadNumber(p, 4, first)) return false;
  if (*p == '.') {  // dd.mm.yyyy
    d = first;
    ++p;
    if (!ReadNumber(p, 2, mo) || *p != '.') return false;
    ++p;
    const char* yearStart = p;
    if (!ReadNumber(p, 4, y) || p - yearStart != 4) return false;
  } else if (*p == '-') {  // yyyy-mm-dd
    y = first;
    ++p;
    if (!ReadNumber(p, 2, mo) || *p != '-') return false;
    ++p;
    if (!ReadNumber(p, 2, d)) return false;
  } else {
    return false;
  }
  if (*p == ' ' || *p == 'T') {
    while (*p == ' ') ++p;
    if (*p == 'T') ++p;
    if (*p != '\0' && !ReadTime(p, h, mi, s)) return false;
  }
  while (*p == ' ') ++p;
  if (*p != '\0' || !ValidParts(y, mo, d, h, mi, s)) return false;
  out = Date(Compose(y, mo, d, h, mi, s));
  return true;
}

}  // namespace ZTkDb
