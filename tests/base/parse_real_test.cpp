#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/numbers.h"

namespace {

// The same for text of known length and for text up to a zero byte.
void ExpectReal(const std::string& text, double expected) {
  EXPECT_EQ(ParseReal(std::string_view(text)), expected) << text;
  EXPECT_EQ(ParseReal(text.c_str()), expected) << text;
}

TEST(ParseReal, ReadsShortDecimals) {
  ExpectReal("0", 0.0);
  ExpectReal("48.856614", 48.856614);
  ExpectReal("-0.000001", -0.000001);
  ExpectReal("+7.", 7.0);
  ExpectReal(".5", 0.5);
  ExpectReal("-.5", -0.5);
  ExpectReal("007.50", 7.5);
  ExpectReal(" 12.5 m", 12.5);
  ExpectReal("\t-12.5", -12.5);
  ExpectReal("1.2.3", 1.2);
  ExpectReal("0x12.5", 12.5);
  ExpectReal("0x-12.5", -12.5);
}

TEST(ParseReal, GivesZeroForWhatIsNoNumber) {
  for (const char* const text : {"", "-", "+", ".", "-x", "--1", "nan", "inf", "0x"})
    ExpectReal(text, 0.0);
  EXPECT_TRUE(std::signbit(ParseReal("-0")));
  EXPECT_TRUE(std::signbit(ParseReal(std::string_view("-0"))));
}

TEST(ParseReal, EndsWithItsText) {
  EXPECT_EQ(ParseReal(std::string_view("12.75", 1)), 1.0);
  EXPECT_EQ(ParseReal(std::string_view("12.75", 3)), 12.0);
  EXPECT_EQ(ParseReal(std::string_view("12.75", 4)), 12.7);
  EXPECT_EQ(ParseReal("12.75\0"
                      "8"),
            12.75);
}

TEST(ParseReal, ReadsNumbersAroundFifteenDigits) {
  ExpectReal("999999999999999", 999999999999999.0);
  ExpectReal("9999999999999999", 9999999999999999.0);
  ExpectReal("0.00000000000001", 0.00000000000001);
  ExpectReal("0.000000000000001", 0.000000000000001);
  ExpectReal("123456789.123456", 123456789.123456);
  ExpectReal("123456789.1234567", 123456789.1234567);
  ExpectReal("12345678901234567890.5", 12345678901234567890.5);
}

TEST(ParseReal, ReadsExponents) {
  ExpectReal("1e3", 1000.0);
  ExpectReal("2.5E-2", 0.025);
  ExpectReal("123456789012345e1", 1234567890123450.0);
  ExpectReal("1e", 1.0);
}

TEST(ParseReal, GivesTheNearestDouble) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 100000; ++i) {
    const int decimals = static_cast<int>(random() % 18);
    std::string digits = std::to_string(random() >> (random() % 60));
    if (static_cast<size_t>(decimals) < digits.size())
      digits.insert(digits.size() - static_cast<size_t>(decimals), ".");
    const double expected = std::strtod(digits.c_str(), nullptr);
    ASSERT_EQ(ParseReal(digits), expected) << digits;
    ASSERT_EQ(ParseReal(digits.c_str()), expected) << digits;
  }
}

}  // namespace
