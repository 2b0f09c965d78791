#include "services/directions/polyline.h"

#include <gtest/gtest.h>

#include "tests/services/directions/points_of.h"

namespace {

using Positions = std::vector<std::pair<double, double>>;

Positions Decoded(std::string_view text, PolylinePrecision precision = PolylinePrecision::kFive) {
  CGpsPointList points;
  PointAllowance allowance;
  DecodePolyline(text, precision, points, allowance);
  return PositionsOf(points);
}

Positions DecodedFlexible(std::string_view text) {
  CGpsPointList points;
  PointAllowance allowance;
  DecodeFlexiblePolyline(text, points, allowance);
  return PositionsOf(points);
}

// The line of the public description of the algorithm.
TEST(Polyline, DecodesDifferences) {
  EXPECT_EQ(Decoded("_p~iF~ps|U_ulLnnqC_mqNvxq`@"),
            (Positions{{38.5, -120.2}, {40.7, -120.95}, {43.252, -126.453}}));
  EXPECT_EQ(Decoded(""), Positions{});
  EXPECT_EQ(Decoded("??"), (Positions{{0.0, 0.0}}));
  // -179.9832104 of the same description is rounded to -17998321: "`~oia@".
  EXPECT_EQ(Decoded("?`~oia@"), (Positions{{0.0, -179.98321}}));
}

TEST(Polyline, HasAPrecisionOfSixToo) {
  EXPECT_EQ(Decoded("_p~iF~ps|U", PolylinePrecision::kSix), (Positions{{3.85, -12.02}}));
}

TEST(Polyline, MakesPointsWithoutAltitude) {
  CGpsPointList points;
  PointAllowance allowance;
  DecodePolyline("_p~iF~ps|U", PolylinePrecision::kFive, points, allowance);
  EXPECT_DOUBLE_EQ(points.points.front()->altitude, 0.0);
  EXPECT_DOUBLE_EQ(points.points.front()->tolerance, 0.0001);
  DecodePolyline("_p~iF~ps|U", PolylinePrecision::kFive, points, allowance);
  EXPECT_EQ(points.points.size(), 2u);
}

TEST(Polyline, GivesWhatCouldBeDecoded) {
  const std::string whole = "_p~iF~ps|U_ulLnnqC";
  EXPECT_EQ(Decoded(whole.substr(0, 4)), Positions{});
  EXPECT_EQ(Decoded(whole.substr(0, 5)), Positions{});
  EXPECT_EQ(Decoded(whole.substr(0, 10)), (Positions{{38.5, -120.2}}));
  EXPECT_EQ(Decoded(whole.substr(0, 17)), (Positions{{38.5, -120.2}}));
  EXPECT_EQ(Decoded("_p~iF~ps|U !"), (Positions{{38.5, -120.2}}));
  EXPECT_EQ(Decoded("\x80\xFF"), Positions{});
  EXPECT_EQ(Decoded(std::string(100000, '~')), Positions{});
}

TEST(Polyline, EndsNumbersAfterSoManyBitsWhereThatIsAskedFor) {
  // "~" is 31 with more to follow; six of them are 30 bits of ones.
  PolylineNumbers numbers("~~~~~~?", 30);
  int64_t number = 0;
  ASSERT_TRUE(numbers.Next(number));
  EXPECT_EQ(number, -536870912);
  ASSERT_TRUE(numbers.Next(number));
  EXPECT_EQ(number, 0);
  EXPECT_FALSE(numbers.Next(number));
}

// The line of the public description of flexible polylines.
TEST(FlexiblePolyline, DecodesDifferences) {
  EXPECT_EQ(
      DecodedFlexible("BFoz5xJ67i1B1B7PzIhaxL7Y"),
      (Positions{
          {50.10228, 8.69821}, {50.10201, 8.69567}, {50.10063, 8.6915}, {50.09878, 8.68752}}));
}

// Header 5 + 2 * 16 + 0 * 128 = 37: precision 5, altitudes in whole metres. 37 is "lB".
TEST(FlexiblePolyline, TakesAltitudes) {
  CGpsPointList points;
  PointAllowance allowance;
  DecodeFlexiblePolyline("BlBoz5xJ67i1BU", points, allowance);  // "U" is 20: altitude 10
  ASSERT_EQ(points.points.size(), 1u);
  EXPECT_DOUBLE_EQ(points.points.front()->latitude, 50.10228);
  EXPECT_DOUBLE_EQ(points.points.front()->altitude, 10.0);
}

TEST(FlexiblePolyline, GivesWhatCouldBeDecoded) {
  EXPECT_EQ(DecodedFlexible(""), Positions{});
  EXPECT_EQ(DecodedFlexible("B"), Positions{});
  EXPECT_EQ(DecodedFlexible("CFoz5xJ67i1B"), Positions{});  // version 2
  EXPECT_EQ(DecodedFlexible("BFoz5xJ"), Positions{});
  EXPECT_EQ(DecodedFlexible("BFoz5xJ67i1B1B"), (Positions{{50.10228, 8.69821}}));
  EXPECT_EQ(DecodedFlexible("BFoz5xJ67i1B1B!"), (Positions{{50.10228, 8.69821}}));
  EXPECT_EQ(DecodedFlexible("BF" + std::string(100000, '_')), Positions{});
}

}  // namespace
