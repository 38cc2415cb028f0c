#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "TestSupport.h"
#include "runtime/Numbers.h"
#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"
#include "ztkdb/Error.h"
#include "ztkdb/Variant.h"

using namespace ZTkDb;
using ztktest::ErrorNumberOf;

// OLE dates: days since 30.12.1899, the fraction the time of day (before
// the epoch too), shown rounded to the second; NoDate is 31.12.9999.
TEST(Date, OleValuesAndTheirParts) {
  EXPECT_EQ(NoDate.Value(), 2958465.0);
  EXPECT_EQ(NoDate, Date::FromYmd(9999, 12, 31));
  EXPECT_EQ(NoDate.ShortText(), "31.12.9999");
  EXPECT_EQ(Date::FromYmd(1899, 12, 30).Value(), 0.0);
  EXPECT_EQ(Date::FromYmd(2026, 11, 15).Value(), 46341.0);
  const Date d = Date::FromYmd(2026, 11, 15, 14, 30, 5);
  EXPECT_EQ(d.Year(), 2026);
  EXPECT_EQ(d.Month(), 11);
  EXPECT_EQ(d.Day(), 15);
  EXPECT_EQ(d.Hour(), 14);
  EXPECT_EQ(d.Minute(), 30);
  EXPECT_EQ(d.Second(), 5);
  EXPECT_EQ(d.ShortText(), "15.11.2026 14:30:05");
  EXPECT_EQ(d.DatePart().ShortText(), "15.11.2026");
  EXPECT_EQ(d.IsoText(), "2026-11-15 14:30:05");
  const Date before = Date::FromYmd(1899, 12, 29, 6, 0, 0);
  EXPECT_DOUBLE_EQ(before.Value(), -1.25);
  EXPECT_EQ(before.Day(), 29);
  EXPECT_EQ(before.Hour(), 6);
  EXPECT_EQ(Date(46341.0 + 86399.9999 / 86400.0).ShortText(), "16.11.2026");
  EXPECT_EQ(Date::FromYmd(2026, 1, 10).AddDays(-30), Date::FromYmd(2025, 12, 11));
  EXPECT_EQ(Date::FromYmd(2024, 2, 28).AddDays(1), Date::FromYmd(2024, 2, 29));
}

TEST(Date, ParsesGermanAndIsoTextsOnly) {
  Date d;
  ASSERT_TRUE(Date::TryParse("05.03.2026", d));
  EXPECT_EQ(d, Date::FromYmd(2026, 3, 5));
  ASSERT_TRUE(Date::TryParse("2026-03-05 07:08:09", d));
  EXPECT_EQ(d, Date::FromYmd(2026, 3, 5, 7, 8, 9));
  ASSERT_TRUE(Date::TryParse("2026-03-05T07:08", d));
  EXPECT_EQ(d, Date::FromYmd(2026, 3, 5, 7, 8, 0));
  for (const char* bad :
       {"", "31.02.2026", "5.3.26", "2026/03/05", "05.03.2026 25:00", "abc", "05.03.2026x"}) {
    EXPECT_FALSE(Date::TryParse(bad, d)) << bad;
  }
  EXPECT_EQ(ErrorNumberOf([] { Date::FromYmd(2026, 2, 29); }), errTypeMismatch);
}

TEST(Currency, ExactToFourDecimalsWithHalfEvenRounding) {
  EXPECT_EQ(Currency::FromDouble(0.1).Scaled(), 1000);
  EXPECT_EQ(Currency::FromDouble(123456789.1234).Scaled(), 1234567891234);
  EXPECT_EQ(Currency::FromDouble(0.00005).Scaled(), 0);  // half to even
  EXPECT_EQ(Currency::FromDouble(-0.00005).Scaled(), 0);
  EXPECT_EQ(Currency::FromDouble(-2.25).Scaled(), -22500);
  EXPECT_EQ(ErrorNumberOf([] { Currency::FromDouble(1e16); }), errOverflow);
}

TEST(Currency, InvariantTextHasLeadingBlankWhenNotNegative) {
  EXPECT_EQ(Currency::FromDouble(12.5).Text(), " 12.5");
  EXPECT_EQ(Currency::FromDouble(-3).Text(), "-3");
  EXPECT_EQ(Currency::FromDouble(0).Text(), " 0");
  EXPECT_EQ(Currency::FromDouble(-0.0001).Text(), "-0.0001");
  EXPECT_EQ(Currency::FromScaled(std::numeric_limits<int64_t>::min()).Text(),
            "-922337203685477.5808");
}

TEST(Numbers, DoubleTextRoundTripsAndIgnoresLocale) {
  EXPECT_EQ(detail::InvariantNumberText(1.5), " 1.5");
  EXPECT_EQ(detail::InvariantNumberText(-2.25), "-2.25");
  EXPECT_EQ(detail::InvariantNumberText(0.0), " 0");
  EXPECT_EQ(detail::InvariantNumberText(-0.0), " 0");
  EXPECT_EQ(detail::InvariantNumberText(1234567.0), " 1234567");
  const double awkward = 0.1 + 0.2;
  double back = 0;
  ASSERT_TRUE(detail::TryParseNumber(detail::InvariantNumberText(awkward), back));
  EXPECT_EQ(back, awkward);
  EXPECT_EQ(ErrorNumberOf([] { detail::InvariantNumberText(std::nan("")); }), errOverflow);
}

TEST(Variant, NullRaises94InEveryConversion) {
  const Variant null = Variant::Null();
  EXPECT_EQ(ErrorNumberOf([&] { null.ToLong(); }), errInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([&] { null.ToByte(); }), errInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([&] { null.ToDouble(); }), errInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([&] { null.ToCurrency(); }), errInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([&] { null.ToDate(); }), errInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([&] { null.ToBool(); }), errInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([&] { null.ToString(); }), errInvalidUseOfNull);
}

TEST(Variant, RangeAndTypeErrors) {
  EXPECT_EQ(ErrorNumberOf([] { Variant(int32_t{256}).ToByte(); }), errOverflow);
  EXPECT_EQ(ErrorNumberOf([] { Variant(-1.0).ToByte(); }), errOverflow);
  EXPECT_EQ(ErrorNumberOf([] { Variant(3e9).ToLong(); }), errOverflow);
  EXPECT_EQ(ErrorNumberOf([] { Variant(int32_t{40000}).ToInteger(); }), errOverflow);
  EXPECT_EQ(ErrorNumberOf([] { Variant("zwölf").ToLong(); }), errTypeMismatch);
  EXPECT_EQ(ErrorNumberOf([] { Variant("gestern").ToDate(); }), errTypeMismatch);
}

TEST(Variant, ConversionsRecordsRelyOn) {
  EXPECT_EQ(Variant(2.5).ToLong(), 2);  // half to even
  EXPECT_EQ(Variant(3.5).ToLong(), 4);
  EXPECT_EQ(Variant(" 42 ").ToLong(), 42);
  EXPECT_EQ(Variant(true).ToLong(), -1);
  EXPECT_TRUE(Variant(int32_t{-1}).ToBool());
  EXPECT_FALSE(Variant(uint8_t{0}).ToBool());
  EXPECT_EQ(Variant("15.11.2026").ToDate(), Date::FromYmd(2026, 11, 15));
  EXPECT_EQ(Variant(46341.5).ToDate(), Date::FromYmd(2026, 11, 15, 12, 0, 0));
  EXPECT_EQ(Variant(Currency::FromDouble(7.25)).ToString(), "7.25");
  EXPECT_EQ(Variant(1.5).ToString(), "1.5");
  EXPECT_EQ(Variant(false).ToString(), "False");
  EXPECT_EQ(Variant().ToLong(), 0);
  EXPECT_EQ(Variant().ToString(), "");
  EXPECT_EQ(Variant("1.2345").ToCurrency().Scaled(), 12345);
}
