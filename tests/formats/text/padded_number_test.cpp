#include "formats/text/padded_number.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string Padded(double value, int decimals, size_t width) {
  std::string text = "x";
  AppendPaddedFixed(text, value, decimals, width);
  return text;
}

std::string Signed(double value, int decimals, size_t width) {
  std::string text = "x";
  AppendSignedFixed(text, value, decimals, width);
  return text;
}

TEST(PaddedNumber, FillsUpWithZerosBehindTheSign) {
  EXPECT_EQ(Padded(4830.0, 3, 9), "x04830.000");
  EXPECT_EQ(Padded(4830.0, 3, 8), "x4830.000");
  EXPECT_EQ(Padded(123456.5, 1, 4), "x123456.5");
  EXPECT_EQ(Padded(-5.0, 0, 5), "x-0005");
  EXPECT_EQ(Padded(0.0, 0, 7), "x0000000");
  EXPECT_EQ(Padded(-0.0, 0, 7), "x-000000");
}

TEST(PaddedNumber, RoundsAsPrintfDoes) {
  EXPECT_EQ(Padded(2.5, 0, 5), "x00002") << "ties to even";
  EXPECT_EQ(Padded(3.5, 0, 5), "x00004");
  EXPECT_EQ(Padded(9.9996, 3, 7), "x010.000");
}

TEST(PaddedNumber, SignsPositiveNumbersToo) {
  EXPECT_EQ(Signed(48.856614, 7, 11), "x+48.8566140");
  EXPECT_EQ(Signed(2.3522219, 7, 12), "x+002.3522219");
  EXPECT_EQ(Signed(-33.8567844, 7, 11), "x-33.8567844");
  EXPECT_EQ(Signed(0.0, 7, 11), "x+00.0000000");
  EXPECT_EQ(Signed(-0.0, 7, 11), "x-00.0000000");
  EXPECT_EQ(Signed(12345.0, 7, 11), "x+12345.0000000");
}

TEST(PaddedNumber, FillsUpWithBlanksWhatIsNoFiniteNumber) {
  EXPECT_EQ(Padded(kInfinity, 3, 8), "x     inf");
  EXPECT_EQ(Padded(-kInfinity, 3, 8), "x    -inf");
  EXPECT_EQ(Signed(kInfinity, 7, 11), "x       +inf");
  EXPECT_EQ(Signed(std::numeric_limits<double>::quiet_NaN(), 7, 11), "x       +nan");
}

}  // namespace
