#include "model/point.h"

#include <memory>

#include <gtest/gtest.h>

#include "model/projection.h"
#include "model/route_leg.h"
#include "tests/list_builder.h"

namespace {

CRouteLeg LegOf(uint32_t distance) {
  CRouteLeg leg;
  leg.totalDistance = distance;
  return leg;
}

TEST(Coordinate, HasTheDefaults) {
  const CGpsCoordinate position;
  EXPECT_EQ(position.tolerance, 0.0001);
  EXPECT_EQ(position.latitude, 0.0);
  EXPECT_EQ(position.longitude, 0.0);
  EXPECT_EQ(position.altitude, 0.0);
}

TEST(Coordinate, IsNullOnlyAtExactlyZeroZero) {
  EXPECT_TRUE(MakePoint(0, 0, "named", "", 100).IsNull());
  EXPECT_FALSE(MakePoint(0, 0, "named", "", 100).IsValid());
  EXPECT_TRUE(MakePoint(-0.0, 0).IsNull());
  EXPECT_FALSE(MakePoint(0, 1e-12).IsNull());
  EXPECT_TRUE(MakePoint(1e-12, 0).IsValid());
}

TEST(Coordinate, IsNearStrictlyInsideTheTolerance) {
  const CGpsPoint here = MakePoint(0, 2);
  EXPECT_TRUE(here.IsNear(MakePoint(0.00009, 2)));
  EXPECT_FALSE(here.IsNear(MakePoint(0.0001, 2)));
  EXPECT_TRUE(here.IsFar(MakePoint(0.0001, 2)));
  EXPECT_TRUE(here.IsNear(MakePoint(0, 1.99991)));
  EXPECT_FALSE(here.IsNear(MakePoint(0, 1.9998)));
  EXPECT_TRUE(here.IsNear(MakePoint(0, 2, "", "", 8000)));
}

TEST(Coordinate, TakesTheLargerToleranceFromEitherSide) {
  CGpsPoint coarse = MakePoint(10, 20);
  coarse.tolerance = 0.01;
  const CGpsPoint fine = MakePoint(10.005, 20.005);
  EXPECT_TRUE(coarse.IsNear(fine));
  EXPECT_TRUE(fine.IsNear(coarse));
  EXPECT_FALSE(MakePoint(10, 20).IsNear(fine));
}

TEST(Coordinate, ClampsWithoutWrapping) {
  CGpsPoint point = MakePoint(91, -200);
  point.Clamp();
  EXPECT_EQ(point.latitude, 90.0);
  EXPECT_EQ(point.longitude, -180.0);
  point = MakePoint(-90.5, 180.5);
  point.Clamp();
  EXPECT_EQ(point.latitude, -90.0);
  EXPECT_EQ(point.longitude, 180.0);
  point = MakePoint(90, -180);
  point.Clamp();
  EXPECT_EQ(point.latitude, 90.0);
  EXPECT_EQ(point.longitude, -180.0);
}

TEST(Coordinate, MeasuresTheChord) {
  EXPECT_EQ(MakePoint(0, 0).DistanceTo(MakePoint(0, 180)), 12756274u);
  // A quarter of the sphere: radius times the root of two, 9020047.8 m.
  EXPECT_EQ(MakePoint(0, 0).DistanceTo(MakePoint(90, 0)), 9020047u);
  EXPECT_EQ(MakePoint(48, 2).DistanceTo(MakePoint(48, 2)), 0u);
}

TEST(Coordinate, MeasuresToTheEndlessLine) {
  // Along the equator, one degree is 111319.49 m on the plane.
  const CGridSegment equator(MakePoint(0, 0), MakePoint(0, 1));
  EXPECT_EQ(MakePoint(0, 5).DistanceToSegment(equator), 0u);
  const CGridSegment meridian(MakePoint(0, 0), MakePoint(1, 0));
  EXPECT_EQ(MakePoint(0.5, 1).DistanceToSegment(meridian), 111319u);
  EXPECT_EQ(MakePoint(40, -1).DistanceToSegment(meridian), 111319u);
  const CGridSegment none(MakePoint(3, 3), MakePoint(3, 3));
  EXPECT_EQ(MakePoint(50, 50).DistanceToSegment(none), 0u);
}

TEST(Coordinate, ResetsToTheDefaults) {
  CGpsPoint point = MakePoint(1, 2, "name", "comment", 3);
  point.tolerance = 0.5;
  point.SetRouteLeg(LegOf(7));
  point.Reset();
  EXPECT_EQ(point.tolerance, 0.0001);
  EXPECT_TRUE(point.IsNull());
  EXPECT_EQ(point.altitude, 0.0);
  EXPECT_EQ(point.name, "");
  EXPECT_EQ(point.comment, "");
  EXPECT_EQ(point.GetRouteLeg(), nullptr);
}

TEST(NamedPoint, IsEqualByPlaceNameAndComment) {
  const CGpsPoint point = MakePoint(1, 2, "name", "comment", 3);
  EXPECT_TRUE(point == MakePoint(1.00005, 2, "name", "comment", 4));
  EXPECT_FALSE(point == MakePoint(1.001, 2, "name", "comment"));
  EXPECT_TRUE(point != MakePoint(1, 2, "Name", "comment"));
  EXPECT_TRUE(point != MakePoint(1, 2, "name", ""));
  CGpsPoint withLeg = point;
  withLeg.SetRouteLeg(LegOf(1));
  EXPECT_TRUE(withLeg == point);
}

TEST(NamedPoint, IsOrderedByLatitudeThenByLongitudeWithinTheTolerance) {
  EXPECT_TRUE(MakePoint(1, 9) < MakePoint(2, 0));
  EXPECT_FALSE(MakePoint(2, 0) < MakePoint(1, 9));
  EXPECT_TRUE(MakePoint(1.00005, 1) < MakePoint(1, 2));
  EXPECT_FALSE(MakePoint(1, 2) < MakePoint(1.00005, 1));
}

TEST(Point, CopiesOwnTheirLeg) {
  CGpsPoint point = MakePoint(1, 2, "name");
  point.SetRouteLeg(LegOf(7));
  const CGpsPoint copy = point;
  CGpsPoint assigned;
  assigned.SetRouteLeg(LegOf(9));
  assigned = point;
  point.GetRouteLeg()->totalDistance = 8;
  ASSERT_NE(copy.GetRouteLeg(), nullptr);
  EXPECT_EQ(copy.GetRouteLeg()->totalDistance, 7u);
  EXPECT_EQ(assigned.GetRouteLeg()->totalDistance, 7u);
  assigned = CGpsPoint();
  EXPECT_EQ(assigned.GetRouteLeg(), nullptr);
}

TEST(Point, ClonesWithoutItsLeg) {
  CGpsPoint point = MakePoint(1, 2, "name", "comment", 3);
  point.SetRouteLeg(LegOf(7));
  const std::unique_ptr<CGpsCoordinate> clone = point.Clone();
  const auto* named = dynamic_cast<CGpsNamedPoint*>(clone.get());
  ASSERT_NE(named, nullptr);
  EXPECT_EQ(dynamic_cast<CGpsPoint*>(clone.get()), nullptr);
  EXPECT_EQ(named->name, "name");
  EXPECT_EQ(named->comment, "comment");
  EXPECT_EQ(named->altitude, 3.0);
  EXPECT_EQ(dynamic_cast<CGpsNamedPoint*>(CGpsCoordinate().Clone().get()), nullptr);
}

TEST(Point, ReplacesAndClearsItsLeg) {
  CGpsPoint point;
  EXPECT_EQ(point.GetRouteLeg(), nullptr);
  point.SetRouteLeg(LegOf(7));
  point.SetRouteLeg(LegOf(8));
  EXPECT_EQ(point.GetRouteLeg()->totalDistance, 8u);
  point.ClearRouteLeg();
  EXPECT_EQ(point.GetRouteLeg(), nullptr);
}

}  // namespace
