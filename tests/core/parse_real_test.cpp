#include <cstdlib>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "core/numbers.h"

namespace {

TEST(ParseReal, ReadsShortDecimals) {
  EXPECT_EQ(ParseReal("0"), 0.0);
  EXPECT_EQ(ParseReal("48.856614"), 48.856614);
  EXPECT_EQ(ParseReal("-0.000001"), -0.000001);
  EXPECT_EQ(ParseReal("+7."), 7.0);
  EXPECT_EQ(ParseReal(".5"), 0.5);
  EXPECT_EQ(ParseReal("007.50"), 7.5);
  EXPECT_EQ(ParseReal(" 12.5 m"), 12.5);
  EXPECT_EQ(ParseReal("1.2.3"), 1.2);
  EXPECT_EQ(ParseReal("0x12.5"), 12.5);
}

TEST(ParseReal, ReadsNumbersAroundFifteenDigits) {
  EXPECT_EQ(ParseReal("999999999999999"), 999999999999999.0);
  EXPECT_EQ(ParseReal("9999999999999999"), 9999999999999999.0);
  EXPECT_EQ(ParseReal("0.00000000000001"), 0.00000000000001);
  EXPECT_EQ(ParseReal("0.000000000000001"), 0.000000000000001);
  EXPECT_EQ(ParseReal("123456789.123456"), 123456789.123456);
  EXPECT_EQ(ParseReal("123456789.1234567"), 123456789.1234567);
  EXPECT_EQ(ParseReal("12345678901234567890.5"), 12345678901234567890.5);
}

TEST(ParseReal, ReadsExponents) {
  EXPECT_EQ(ParseReal("1e3"), 1000.0);
  EXPECT_EQ(ParseReal("2.5E-2"), 0.025);
  EXPECT_EQ(ParseReal("123456789012345e1"), 1234567890123450.0);
  EXPECT_EQ(ParseReal("1e"), 1.0);
}

TEST(ParseReal, GivesTheNearestDouble) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 100000; ++i) {
    const int decimals = static_cast<int>(random() % 18);
    std::string digits = std::to_string(random() >> (random() % 60));
    if (static_cast<size_t>(decimals) < digits.size())
      digits.insert(digits.size() - static_cast<size_t>(decimals), ".");
    ASSERT_EQ(ParseReal(digits), std::strtod(digits.c_str(), nullptr)) << digits;
  }
}

}  // namespace
