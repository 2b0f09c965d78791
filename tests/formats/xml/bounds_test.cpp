#include "formats/xml/bounds.h"

#include <gtest/gtest.h>

#include "tests/list_builder.h"

namespace {

void ExpectBounds(const CGpsPointArray& list, double minLatitude, double minLongitude,
                  double maxLatitude, double maxLongitude) {
  const Bounds bounds(list);
  EXPECT_EQ(bounds.minLatitude, minLatitude);
  EXPECT_EQ(bounds.minLongitude, minLongitude);
  EXPECT_EQ(bounds.maxLatitude, maxLatitude);
  EXPECT_EQ(bounds.maxLongitude, maxLongitude);
}

TEST(Bounds, OfNoPointsAreZero) { ExpectBounds(CGpsRoute(), 0, 0, 0, 0); }

TEST(Bounds, OfOnePointAreThatPoint) {
  ExpectBounds(MakeList("", MakePoint(48.5, -2.25)), 48.5, -2.25, 48.5, -2.25);
}

// Neither 0 nor the first point takes part where it is no extreme.
TEST(Bounds, EachExtremeMayBeOfAnotherPoint) {
  ExpectBounds(MakeList("", MakePoint(5, -5), MakePoint(3, -6), MakePoint(4, -3), MakePoint(9, -4)),
               3, -6, 9, -3);
  ExpectBounds(MakeList("", MakePoint(-5, 5), MakePoint(-9, 6), MakePoint(-3, 7), MakePoint(-4, 3)),
               -9, 3, -3, 7);
}

TEST(Bounds, CountNullPositionsToo) {
  ExpectBounds(MakeList("", MakePoint(10, 20), MakePoint(0, 0), MakePoint(-1, 30)), -1, 0, 10, 30);
}

}  // namespace
