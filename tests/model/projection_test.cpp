#include "model/projection.h"

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "tests/list_builder.h"

namespace {

constexpr int32_t kSmallest = std::numeric_limits<int32_t>::min();

CGridCoordinate Grid(int32_t x, int32_t y) { return {x, y}; }

TEST(GridCoordinate, ComparesAndResets) {
  EXPECT_TRUE(CGridCoordinate().IsNull());
  EXPECT_FALSE(CGridCoordinate().IsValid());
  EXPECT_TRUE(Grid(0, 1).IsValid());
  EXPECT_TRUE(Grid(1, 2) == Grid(1, 2));
  EXPECT_TRUE(Grid(1, 2) != Grid(2, 1));
  CGridCoordinate grid = Grid(3, 4);
  grid.Reset();
  EXPECT_TRUE(grid.IsNull());
}

TEST(GridCoordinate, ReckonsWithScalarsAndPairs) {
  CGridCoordinate grid = Grid(7, -7);
  grid += 3;
  EXPECT_EQ(grid, Grid(10, -4));
  grid -= 2;
  EXPECT_EQ(grid, Grid(8, -6));
  grid += Grid(1, 2);
  EXPECT_EQ(grid, Grid(9, -4));
  grid -= Grid(2, 3);
  EXPECT_EQ(grid, Grid(7, -7));
  grid *= 3;
  EXPECT_EQ(grid, Grid(21, -21));
  grid /= 2;
  EXPECT_EQ(grid, Grid(10, -10));
  grid %= 4;
  EXPECT_EQ(grid, Grid(2, -2));
  EXPECT_EQ(Grid(1, 2) + Grid(3, 5), Grid(4, 7));
  EXPECT_EQ(Grid(1, 2) - Grid(3, 5), Grid(-2, -3));
  EXPECT_EQ(-Grid(1, -2), Grid(-1, 2));
  EXPECT_EQ(Grid(std::numeric_limits<int32_t>::max(), 0) + Grid(1, 0), Grid(kSmallest, 0));
}

TEST(MercatorProjection, ProjectsRoundedMetres) {
  const CMercatorProjection projection;
  EXPECT_EQ(projection.Project(MakePoint(0, 0)), Grid(0, 0));
  // One degree of longitude is 6378137 * pi / 180 = 111319.49 m.
  EXPECT_EQ(projection.Project(MakePoint(0, 1)), Grid(111319, 0));
  EXPECT_EQ(projection.Project(MakePoint(0, -180)), Grid(-20037508, 0));
  // ln(tan(67.5 degrees)) = 0.881373587, times the radius.
  EXPECT_EQ(projection.Project(MakePoint(45, 0)), Grid(0, 5621521));
  EXPECT_EQ(projection.Project(MakePoint(-45, 0)), Grid(0, -5621521));
}

TEST(MercatorProjection, HasALimitWhereThePlaneHasNone) {
  const CMercatorProjection projection;
  EXPECT_EQ(projection.Project(MakePoint(-90, 0)).y, kSmallest);
  EXPECT_EQ(projection.Project(MakePoint(100, 0)).y, kSmallest);
  EXPECT_EQ(projection.Project(MakePoint(0, 1e9)).x, kSmallest);
}

TEST(MercatorProjection, UnprojectsAndClamps) {
  const CMercatorProjection projection;
  const CGpsCoordinate position = projection.Unproject(Grid(111319, 5621521));
  EXPECT_NEAR(position.longitude, 1.0, 0.00001);
  EXPECT_NEAR(position.latitude, 45.0, 0.00001);
  EXPECT_EQ(projection.Unproject(Grid(2147483647, 0)).longitude, 180.0);
  EXPECT_EQ(projection.Unproject(Grid(-2147483647, 0)).longitude, -180.0);
}

TEST(MercatorProjection6371, HasItsOwnRadius) {
  const CMercatorProjection6371 projection;
  // 6371000 * pi / 180 = 111194.93 m; 6371000 * 0.881373587 = 5615231.1 m.
  EXPECT_EQ(projection.Project(MakePoint(45, 1)), Grid(111195, 5615231));
  EXPECT_NEAR(projection.Unproject(Grid(111195, 5615231)).latitude, 45.0, 0.00001);
}

TEST(GridSegment, HoldsItsExtent) {
  const CGridSegment segment(MakePoint(0, 1), MakePoint(45, 0));
  EXPECT_EQ(segment.x, 111319);
  EXPECT_EQ(segment.y, 0);
  EXPECT_EQ(segment.dx, -111319.0);
  EXPECT_EQ(segment.dy, 5621521.0);
  // The root of 111319^2 + 5621521^2.
  EXPECT_NEAR(segment.length, 5622623.08, 0.01);
}

}  // namespace
