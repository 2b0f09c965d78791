#include "base/numbers.h"

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;

constexpr int32_t kSmallest32 = std::numeric_limits<int32_t>::min();
constexpr int32_t kLargest32 = std::numeric_limits<int32_t>::max();
constexpr double kLargestReal = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

TEST(ParseWhole, TakesTheLongestPrefixThatIsANumber) {
  EXPECT_EQ(ParseWhole("123456"), 123456);
  EXPECT_EQ(ParseWhole("7 8"), 7);
  EXPECT_EQ(ParseWhole("12.9"), 12);
  EXPECT_EQ(ParseWhole("-500000x"), -500000);
  EXPECT_EQ(ParseWhole("1e3"), 1);
  EXPECT_EQ(ParseWhole("007"), 7);
  EXPECT_EQ(ParseWhole("5\0006"sv), 5);
}

TEST(ParseWhole, GivesZeroWhereNoNumberStands) {
  for (const auto text : {"", " ", "-", "+", "--1", "+-1", "- 1", "east", ",5",
                          "\xC2\xA0"
                          "5"})
    EXPECT_EQ(ParseWhole(text), 0) << text;
}

TEST(ParseWhole, SkipsWhiteSpaceInFrontAndTakesOneSign) {
  EXPECT_EQ(ParseWhole(" 7"), 7);
  EXPECT_EQ(ParseWhole("\t\n\v\f\r -7"), -7);
  EXPECT_EQ(ParseWhole("+7"), 7);
  EXPECT_EQ(ParseWhole("-0"), 0);
}

TEST(ParseWhole, ReadsHexadecimalBehindItsMarkOnly) {
  EXPECT_EQ(ParseWhole("0x1E240"), 123456);
  EXPECT_EQ(ParseWhole("0xffG"), 255);
  EXPECT_EQ(ParseWhole("0x-10"), -16);
  EXPECT_EQ(ParseWhole("0x 10"), 16);
  EXPECT_EQ(ParseWhole("0x0x10"), 16);
  EXPECT_EQ(ParseWhole("0x0X1f"), 31);
  EXPECT_EQ(ParseWhole("0x"), 0);
  EXPECT_EQ(ParseWhole("0xg"), 0);
  EXPECT_EQ(ParseWhole("0X10"), 0);
  EXPECT_EQ(ParseWhole(" 0x10"), 0);
  EXPECT_EQ(ParseWhole("-0x10"), 0);
  EXPECT_EQ(ParseWhole("ff"), 0);
}

TEST(ParseWhole, ClampsToItsRange) {
  EXPECT_EQ(ParseWhole("2147483647"), kLargest32);
  EXPECT_EQ(ParseWhole("2147483648"), kLargest32);
  EXPECT_EQ(ParseWhole("-2147483648"), kSmallest32);
  EXPECT_EQ(ParseWhole("-2147483649"), kSmallest32);
  EXPECT_EQ(ParseWhole("18446744073709551616"), kLargest32);
  EXPECT_EQ(ParseWhole("-99999999999999999999999999"), kSmallest32);
  EXPECT_EQ(ParseWhole("0xFFFFFFFF"), kLargest32);
}

TEST(ParseWhole, ReadsWideTextUpToTheFirstCharacterBeyondAscii) {
  EXPECT_EQ(ParseWhole(u" -42,5"), -42);
  EXPECT_EQ(ParseWhole(u"12\u06634"), 12);
  EXPECT_EQ(ParseWhole(u"\uFF17"), 0);
  EXPECT_EQ(ParseWhole(u"0x1F"), 31);
  EXPECT_EQ(ParseWhole(u""), 0);
}

TEST(ParseWhole64, ClampsToItsRange) {
  EXPECT_EQ(ParseWhole64("-12 km"), -12);
  EXPECT_EQ(ParseWhole64("9223372036854775807"), INT64_MAX);
  EXPECT_EQ(ParseWhole64("9223372036854775808"), INT64_MAX);
  EXPECT_EQ(ParseWhole64("-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(ParseWhole64("-9223372036854775809"), INT64_MIN);
  EXPECT_EQ(ParseWhole64("99999999999999999999999"), INT64_MAX);
  EXPECT_EQ(ParseWhole64("node"), 0);
}

TEST(ParseId, WrapsNegativeNumbers) {
  EXPECT_EQ(ParseId("240109189"), 240109189u);
  EXPECT_EQ(ParseId("-1"), UINT64_MAX);
  EXPECT_EQ(ParseId("18446744073709551615"), UINT64_MAX);
  EXPECT_EQ(ParseId("-9223372036854775808"), uint64_t{1} << 63);
  EXPECT_EQ(ParseId("18446744073709551616"), UINT64_MAX);
  EXPECT_EQ(ParseId(""), 0u);
}

TEST(ParseReal, TakesTheLongestPrefixThatIsANumber) {
  EXPECT_EQ(ParseReal("48.85661"), 48.85661);
  EXPECT_EQ(ParseReal("-2.35222E0"), -2.35222);
  EXPECT_EQ(ParseReal("1,5"), 1.0);
  EXPECT_EQ(ParseReal("1.5.2"), 1.5);
  EXPECT_EQ(ParseReal("1.5-2"), 1.5);
  EXPECT_EQ(ParseReal("3km"), 3.0);
  EXPECT_EQ(ParseReal("1e2x"), 100.0);
  EXPECT_EQ(ParseReal("1e+2"), 100.0);
  EXPECT_EQ(ParseReal("1e"), 1.0);
  EXPECT_EQ(ParseReal("1e+"), 1.0);
  EXPECT_EQ(ParseReal("1\0002"sv), 1.0);
}

TEST(ParseReal, AcceptsAPointWithDigitsOnOneSideOnly) {
  EXPECT_EQ(ParseReal(".5"), 0.5);
  EXPECT_EQ(ParseReal("-.5e1"), -5.0);
  EXPECT_EQ(ParseReal("5."), 5.0);
  EXPECT_EQ(ParseReal("5.e1"), 50.0);
}

TEST(ParseReal, SkipsWhiteSpaceInFrontAndTakesOneSign) {
  EXPECT_EQ(ParseReal(" 7"), 7.0);
  EXPECT_EQ(ParseReal("\t\n\v\f\r 7.5"), 7.5);
  EXPECT_EQ(ParseReal("+1"), 1.0);
  EXPECT_TRUE(std::signbit(ParseReal("-0")));
}

TEST(ParseReal, GivesZeroWhereNoNumberStands) {
  for (const auto text : {"", " ", "-", ".", "-.", ".e5", "e5", "--1", "+-1", "-+1", "- 1", "inf",
                          "-inf", "nan", "Infinity", "north"}) {
    EXPECT_EQ(ParseReal(text), 0.0) << text;
    EXPECT_FALSE(std::signbit(ParseReal(text))) << text;
  }
}

TEST(ParseReal, SkipsAHexadecimalMarkAndReadsDecimal) {
  EXPECT_EQ(ParseReal("0x12"), 12.0);
  EXPECT_EQ(ParseReal("0x-1.5"), -1.5);
  EXPECT_EQ(ParseReal("0x 3"), 3.0);
  EXPECT_EQ(ParseReal("0x1F"), 1.0);
  EXPECT_EQ(ParseReal("0x"), 0.0);
  EXPECT_EQ(ParseReal("0X12"), 0.0);
  EXPECT_EQ(ParseReal(" 0x12"), 0.0);
  EXPECT_EQ(ParseReal("-0x12"), 0.0);
}

TEST(ParseReal, ClampsWhatIsTooLarge) {
  EXPECT_EQ(ParseReal("1e999"), kLargestReal);
  EXPECT_EQ(ParseReal("-1e999"), -kLargestReal);
  EXPECT_EQ(ParseReal("1e99999999999999999999"), kLargestReal);
  EXPECT_EQ(ParseReal("1.7976931348623157e308"), kLargestReal);
  EXPECT_EQ(ParseReal("1.7976931348623159e308"), kLargestReal);
  const std::string zeros(400, '0');
  EXPECT_EQ(ParseReal("1" + zeros), kLargestReal);
  EXPECT_EQ(ParseReal("-1" + zeros + ".5"), -kLargestReal);
  EXPECT_EQ(ParseReal("1" + zeros + "e-5"), kLargestReal);
  EXPECT_EQ(ParseReal("1" + zeros + "e-395"), 1e5);
  EXPECT_EQ(ParseReal("0." + zeros + "1e999"), kLargestReal);
}

TEST(ParseReal, GivesZeroForWhatIsTooSmall) {
  EXPECT_EQ(ParseReal("1e-999"), 0.0);
  EXPECT_EQ(ParseReal("-1e-999"), 0.0);
  EXPECT_EQ(ParseReal("1e-99999999999999999999"), 0.0);
  EXPECT_EQ(ParseReal("4.9e-324"), std::numeric_limits<double>::denorm_min());
  const std::string zeros(400, '0');
  EXPECT_EQ(ParseReal("0." + zeros + "1"), 0.0);
  EXPECT_EQ(ParseReal("0." + zeros + "1e5"), 0.0);
  EXPECT_EQ(ParseReal("." + zeros + "1e401"), 1.0);
  EXPECT_EQ(ParseReal("0e99999999999999999999"), 0.0);
  EXPECT_EQ(ParseReal("0.0e-99999999999999999999"), 0.0);
}

TEST(ParseReal, ReadsWideText) {
  EXPECT_EQ(ParseReal(u" -2.5\u00B0"), -2.5);
  EXPECT_EQ(ParseReal(u"\u22122.5"), 0.0);
  EXPECT_EQ(ParseReal(u""), 0.0);
}

TEST(ParseReal, ReadsBackWhatWasWrittenWithAllDigits) {
  std::mt19937_64 generator(3);
  char text[64];
  for (int i = 0; i < 100'000; ++i) {
    const auto value = std::bit_cast<double>(generator());
    if (!std::isfinite(value)) continue;
    std::snprintf(text, sizeof text, "%.17g", value);
    ASSERT_EQ(ParseReal(text), value) << text;
  }
}

TEST(TryParseReal, LeavesTheValueAloneWhereNoNumberStands) {
  double value = 8.0;
  for (const auto text : {"", "  ", "-", "x1", "0x", "0xg", "nan", "."}) {
    EXPECT_FALSE(TryParseReal(text, value)) << text;
    EXPECT_EQ(value, 8.0) << text;
  }
  EXPECT_TRUE(TryParseReal("0", value));
  EXPECT_EQ(value, 0.0);
  EXPECT_TRUE(TryParseReal("-3.25 W", value));
  EXPECT_EQ(value, -3.25);
}

TEST(TruncateToInt32, DropsTheFraction) {
  EXPECT_EQ(TruncateToInt32(1.9), 1);
  EXPECT_EQ(TruncateToInt32(-1.9), -1);
  EXPECT_EQ(TruncateToInt32(-0.0), 0);
  EXPECT_EQ(TruncateToInt32(2147483647.9), kLargest32);
  EXPECT_EQ(TruncateToInt32(-2147483648.9), kSmallest32);
}

TEST(TruncateToInt32, GivesTheSmallestForWhatDoesNotFit) {
  for (const double value :
       {2147483648.0, -2147483649.0, 1e300, -1e300, kInfinity, -kInfinity, kNoNumber})
    EXPECT_EQ(TruncateToInt32(value), kSmallest32) << value;
}

TEST(TruncateToUint32, GivesZeroForWhatDoesNotFit) {
  EXPECT_EQ(TruncateToUint32(1.9), 1u);
  EXPECT_EQ(TruncateToUint32(-0.9), 0u);
  EXPECT_EQ(TruncateToUint32(4294967295.9), UINT32_MAX);
  for (const double value : {4294967296.0, -1.0, -5.0, kInfinity, -kInfinity, kNoNumber})
    EXPECT_EQ(TruncateToUint32(value), 0u) << value;
}

TEST(ToFixedPoint, CutsAboveZeroAndComesOutOneUnitHigherBelow) {
  EXPECT_EQ(ToFixedPoint(2.352227), 235222);
  EXPECT_EQ(ToFixedPoint(2.5), 250000);
  EXPECT_EQ(ToFixedPoint(0.0), 0);
  EXPECT_EQ(ToFixedPoint(-0.127783), -12778);
  EXPECT_EQ(ToFixedPoint(-2.5), -249999);
  EXPECT_EQ(ToFixedPoint(180.0), 18000000);
}

TEST(ToFixedPoint, GivesTheSmallestForWhatDoesNotFit) {
  for (const double degrees : {21474.83648, 1e300, -1e300, kInfinity, kNoNumber})
    EXPECT_EQ(ToFixedPoint(degrees), kSmallest32) << degrees;
  EXPECT_EQ(ToFixedPoint(21474.0), 2147400000);
}

TEST(AppendFixed, WritesAFixedNumberOfDecimals) {
  EXPECT_EQ(ToFixedString(2.3522, 6), "2.352200");
  EXPECT_EQ(ToFixedString(48.85661, 5), "48.85661");
  EXPECT_EQ(ToFixedString(-0.127765, 7), "-0.1277650");
  EXPECT_EQ(ToFixedString(0.0, 2), "0.00");
  EXPECT_EQ(ToFixedString(99.995, 1), "100.0");
  EXPECT_EQ(ToFixedString(1234.0, 0), "1234");
  EXPECT_EQ(ToFixedString(1.0 / 3.0, 14), "0.33333333333333");
  std::string text = "<";
  AppendFixed(text, 1.5, 3);
  EXPECT_EQ(text, "<1.500");
}

TEST(AppendFixed, RoundsTheExactValueAndTiesToEven) {
  EXPECT_EQ(ToFixedString(0.5, 0), "0");
  EXPECT_EQ(ToFixedString(1.5, 0), "2");
  EXPECT_EQ(ToFixedString(2.5, 0), "2");
  EXPECT_EQ(ToFixedString(0.125, 2), "0.12");
  EXPECT_EQ(ToFixedString(0.375, 2), "0.38");
  // 2.675 lies a little below, 1.005 too; 0.15 a little below, 0.25 on the tie, 0.35 below.
  EXPECT_EQ(ToFixedString(2.675, 2), "2.67");
  EXPECT_EQ(ToFixedString(1.005, 2), "1.00");
  EXPECT_EQ(ToFixedString(0.25, 1), "0.2");
  EXPECT_EQ(ToFixedString(0.35, 1), "0.3");
}

TEST(AppendFixed, KeepsTheSignOfZero) {
  EXPECT_EQ(ToFixedString(-0.0, 1), "-0.0");
  EXPECT_EQ(ToFixedString(-0.0000001, 6), "-0.000000");
}

TEST(AppendFixed, NeverWritesAnExponent) {
  EXPECT_EQ(ToFixedString(1e22, 1), "10000000000000000000000.0");
  EXPECT_EQ(ToFixedString(-4503599627370496.0, 2), "-4503599627370496.00");
  EXPECT_EQ(ToFixedString(5e-324, 3), "0.000");
  EXPECT_EQ(ToFixedString(kLargestReal, 0).size(), 309u);
}

TEST(AppendFixed, SpellsWhatIsNoFiniteNumberAsPrintfDoes) {
  EXPECT_EQ(ToFixedString(kInfinity, 6), "inf");
  EXPECT_EQ(ToFixedString(-kInfinity, 6), "-inf");
  EXPECT_EQ(ToFixedString(kNoNumber, 6), "nan");
  EXPECT_EQ(ToFixedString(std::copysign(kNoNumber, -1.0), 6), "-nan");
}

// Numbers of usual magnitudes, and on purpose many that lie on or right beside a tie.
class DrawnReals {
 public:
  double Next(int decimals) {
    const double magnitude = Magnitude(std::pow(10.0, decimals));
    return m_generator() % 2 != 0 ? -magnitude : magnitude;
  }

  uint64_t Below(uint64_t bound) { return m_generator() % bound; }

 private:
  double Magnitude(double scale) {
    switch (Below(4)) {
      case 0:
        return static_cast<double>(Below(uint64_t{1} << 53)) * 0x1p-53 * 360.0;
      case 1:
        return std::ldexp(static_cast<double>(Below(100'000)), -static_cast<int>(Below(12)));
      case 2:
        return (static_cast<double>(Below(1'000'000'000'000)) + 0.5) / scale;
      default:
        return std::nextafter((static_cast<double>(Below(100'000'000)) + 0.5) / scale,
                              Below(2) != 0 ? 1e300 : 0.0);
    }
  }

  std::mt19937_64 m_generator{5};
};

void ExpectPrintfsText(double value, int decimals) {
  char expected[400];
  std::snprintf(expected, sizeof expected, "%.*f", decimals, value);
  ASSERT_EQ(ToFixedString(value, decimals), expected);
}

TEST(AppendFixed, WritesWhatPrintfWrites) {
  DrawnReals reals;
  for (int i = 0; i < 200'000 && !HasFatalFailure(); ++i) {
    const auto decimals = static_cast<int>(reals.Below(12));
    ExpectPrintfsText(reals.Next(decimals), decimals);
  }
}

TEST(AppendFixed, WritesWhatPrintfWritesForAnyBits) {
  std::mt19937_64 generator(6);
  for (int i = 0; i < 3000 && !HasFatalFailure(); ++i)
    ExpectPrintfsText(std::bit_cast<double>(generator()), static_cast<int>(generator() % 12));
}

TEST(AppendWhole, PadsWithZerosBehindTheSign) {
  const auto whole = [](int64_t value, size_t width) {
    std::string text = "<";
    AppendWhole(text, value, width);
    return text;
  };
  EXPECT_EQ(whole(0, 0), "<0");
  EXPECT_EQ(whole(7, 0), "<7");
  EXPECT_EQ(whole(10, 0), "<10");
  EXPECT_EQ(whole(-123, 6), "<-00123");
  EXPECT_EQ(whole(123, 6), "<000123");
  EXPECT_EQ(whole(-123456, 6), "<-123456");
  EXPECT_EQ(whole(1234567, 6), "<1234567");
  EXPECT_EQ(whole(0, 3), "<000");
  EXPECT_EQ(whole(5, 40), "<" + std::string(39, '0') + "5");
  EXPECT_EQ(whole(INT64_MAX, 0), "<9223372036854775807");
  EXPECT_EQ(whole(INT64_MIN, 21), "<-09223372036854775808");
}

}  // namespace
