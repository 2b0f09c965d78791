#include "model/point_list.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/route_leg.h"
#include "tests/list_builder.h"

namespace {

// A route of points "0", "1", ... that all have a leg.
CGpsRoute RouteWithLegs(int count) {
  CGpsRoute route;
  for (int i = 0; i < count; ++i) {
    CGpsPoint& point = route.points.emplace_back(MakePoint(i + 1, i + 1, std::to_string(i)));
    point.SetRouteLeg(CRouteLeg());
  }
  return route;
}

std::string Names(const CGpsPointArray& list) {
  std::string names;
  for (const CGpsPoint& point : list.points) names += point.name;
  return names;
}

// "+" for a point with a leg, "-" for one without.
std::string Legs(const CGpsPointArray& list) {
  std::string legs;
  for (const CGpsPoint& point : list.points) legs += point.GetRouteLeg() ? '+' : '-';
  return legs;
}

CGpsPointList PolylineOf(const CGpsPointArray& list) {
  CGpsPointList polyline;
  for (const CGpsPoint& point : list.points)
    polyline.points.push_back(std::make_unique<CGpsPoint>(point));
  return polyline;
}

TEST(PointArray, KindsAreNumbered) {
  EXPECT_EQ(CGpsRoute().GetKind(), 0u);
  EXPECT_EQ(CGpsTrack().GetKind(), 1u);
  EXPECT_EQ(CGpsWaypointList().GetKind(), 2u);
  EXPECT_EQ(CGpsPoiList().GetKind(), 3u);
}

TEST(PointArray, LastIndexIsZeroForNoneAndOne) {
  EXPECT_EQ(CGpsRoute().LastIndex(), 0u);
  EXPECT_EQ(RouteWithLegs(1).LastIndex(), 0u);
  EXPECT_EQ(RouteWithLegs(3).LastIndex(), 2u);
}

TEST(PointArray, IndexBeyondTheLastIsOutOfRange) {
  CGpsRoute route = RouteWithLegs(2);
  EXPECT_EQ(route.At(1).name, "1");
  for (const auto& access : std::vector<void (*)(CGpsRoute&)>{
           [](CGpsRoute& r) { r.At(2); }, [](CGpsRoute& r) { r.RemoveAt(2); },
           [](CGpsRoute& r) { r.InsertAt(3, CGpsPoint()); }, [](CGpsRoute& r) { r.MoveTo(2, 0); },
           [](CGpsRoute& r) { r.MoveTo(0, 3); }}) {
    try {
      access(route);
      FAIL() << "no exception";
    } catch (const std::out_of_range& failure) {
      EXPECT_STREQ(failure.what(), "invalid deque<T> subscript");
    }
  }
  EXPECT_EQ(Names(route), "01");
}

TEST(PointArray, AppendsCopiesWithLegsAndKeepsItsName) {
  CGpsRoute route = MakeList("mine", MakePoint(9, 9, "x"));
  CGpsRoute other = RouteWithLegs(2);
  other.name = "other";
  route.Append(other);
  EXPECT_EQ(Names(route), "x01");
  EXPECT_EQ(Legs(route), "-++");
  EXPECT_EQ(route.GetName(), "mine");
  route.Append(route);
  EXPECT_EQ(Names(route), "x01");
  route.AppendPoints(PolylineOf(other));
  EXPECT_EQ(Names(route), "x0101");
  EXPECT_EQ(Legs(route), "-++++");
}

TEST(PointArray, AssignsPointsAndName) {
  CGpsRoute route = RouteWithLegs(3);
  CGpsTrack track = MakeList<CGpsTrack>("track", MakePoint(1, 2, "t"));
  route.Assign(track);
  EXPECT_EQ(Names(route), "t");
  EXPECT_EQ(route.name, "track");
  route.Assign(route);
  EXPECT_EQ(Names(route), "t");
}

TEST(PointArray, AssignPointsOverwritesSlotsWithoutLegsAndKeepsTheName) {
  for (const int before : {1, 3, 5}) {
    CGpsRoute route = RouteWithLegs(before);
    route.name = "stays";
    route.AssignPoints(PolylineOf(RouteWithLegs(3)));
    EXPECT_EQ(Names(route), "012");
    EXPECT_EQ(Legs(route), "---");
    EXPECT_EQ(route.name, "stays");
  }
}

TEST(PointArray, ReferencesStayValidWhilePointsAreAddedAtTheEnds) {
  CGpsRoute route = RouteWithLegs(1);
  const CGpsPoint& first = route.points[0];
  for (int i = 0; i < 1000; ++i) {
    route.points.push_back(MakePoint(1, 1));
    route.points.push_front(MakePoint(1, 1));
  }
  EXPECT_EQ(first.name, "0");
}

TEST(PointArray, InsertingClearsTheLegOfTheFollower) {
  CGpsRoute route = RouteWithLegs(3);
  CGpsPoint inserted = MakePoint(5, 5, "x");
  inserted.SetRouteLeg(CRouteLeg());
  route.InsertAt(0, inserted);
  EXPECT_EQ(Names(route), "x012");
  EXPECT_EQ(Legs(route), "+-++");
  route.InsertAt(4, inserted);
  EXPECT_EQ(Names(route), "x012x");
  EXPECT_EQ(Legs(route), "+-+++");
}

TEST(PointArray, RemovingClearsTheLegOfTheFollower) {
  CGpsRoute route = RouteWithLegs(3);
  route.RemoveAt(1);
  EXPECT_EQ(Names(route), "02");
  EXPECT_EQ(Legs(route), "+-");
  route.RemoveAt(1);
  EXPECT_EQ(Names(route), "0");
  EXPECT_EQ(Legs(route), "+");
}

TEST(PointArray, MovesForwardAndClearsTheLegsBetween) {
  CGpsRoute route = RouteWithLegs(6);
  route.MoveTo(2, 5);
  EXPECT_EQ(Names(route), "013425");
  // The point now behind the moved one has lost its leg to the insertion.
  EXPECT_EQ(Legs(route), "++----");
}

TEST(PointArray, MovesBackAndClearsTheLegsBetween) {
  CGpsRoute route = RouteWithLegs(6);
  route.MoveTo(5, 2);
  EXPECT_EQ(Names(route), "015234");
  EXPECT_EQ(Legs(route), "++----");
  CGpsRoute still = RouteWithLegs(3);
  still.MoveTo(1, 1);
  EXPECT_EQ(Legs(still), "+++");
  still.MoveTo(0, 3);
  EXPECT_EQ(Names(still), "120");
  EXPECT_EQ(Legs(still), "---");
}

TEST(PointArray, ReversesWithoutLegs) {
  CGpsRoute route = RouteWithLegs(3);
  route.Reverse();
  EXPECT_EQ(Names(route), "210");
  EXPECT_EQ(Legs(route), "---");
}

TEST(PointArray, RemovesNullPointsInOrder) {
  CGpsRoute route = MakeList("", MakePoint(1, 1, "a"), MakePoint(0, 0, "b"), MakePoint(0, 1, "c"),
                             MakePoint(0, 0, "d"));
  route.RemoveNullPoints();
  EXPECT_EQ(Names(route), "ac");
}

TEST(PointArray, SortsByTheBytesOfNamesAndKeepsTheOrderOfEquals) {
  CGpsRoute route = MakeList("", MakePoint(1, 1, "b"), MakePoint(2, 2, "\u00e9"),
                             MakePoint(3, 3, "ab"), MakePoint(4, 4, "a"), MakePoint(5, 5, "b"),
                             MakePoint(6, 6, "Z"), MakePoint(7, 7, ""));
  route.points[0].SetRouteLeg(CRouteLeg());
  route.SortByName();
  EXPECT_EQ(Names(route), "Zaabbb\u00e9");
  EXPECT_EQ(route.points[4].latitude, 1.0);
  EXPECT_EQ(route.points[5].latitude, 5.0);
  EXPECT_EQ(Legs(route), "----+--");
}

TEST(PointArray, SortsLongListsStably) {
  for (const int count : {31, 32, 33, 64, 65, 1000}) {
    CGpsRoute route;
    for (int i = 0; i < count; ++i)
      route.points.push_back(MakePoint(i, 0, std::string(1, static_cast<char>('a' + i * 7 % 5))));
    route.SortByName();
    ASSERT_EQ(route.Count(), static_cast<size_t>(count));
    for (size_t i = 1; i < route.Count(); ++i) {
      const CGpsPoint& before = route.points[i - 1];
      const CGpsPoint& after = route.points[i];
      EXPECT_TRUE(before.name < after.name ||
                  (before.name == after.name && before.latitude < after.latitude));
    }
  }
}

TEST(PointArray, SortsByPlaceAndKeepsTheFirstOfNeighbours) {
  CGpsRoute route =
      MakeList("", MakePoint(2, 1, "d"), MakePoint(1, 2, "c"), MakePoint(1.00005, 1, "a"),
               MakePoint(1, 1.00005, "b"), MakePoint(2.00009, 1.00009, "e"));
  route.SortAndUnique();
  EXPECT_EQ(Names(route), "acd");
}

TEST(PointArray, ComparesEachLaterPointWithTheKeptOne) {
  // Each point is near its neighbour, but the third is far from the first.
  CGpsRoute route =
      MakeList("", MakePoint(1, 1, "a"), MakePoint(1, 1.00008, "b"), MakePoint(1, 1.00016, "c"));
  route.SortAndUnique();
  EXPECT_EQ(Names(route), "ac");
}

TEST(PointArray, SortsPointsThatNoOrderFits) {
  // Latitudes in steps below the tolerance with falling longitudes: the comparison runs in circles.
  CGpsRoute route;
  for (int i = 0; i < 5000; ++i)
    route.points.push_back(MakePoint(10 + i % 97 * 0.00007, 50 - i % 89 * 0.5));
  route.SortAndUnique();
  EXPECT_LE(route.Count(), 5000u);
  EXPECT_GT(route.Count(), 0u);
}

TEST(PointArray, SimplifiesToTheShape) {
  // A corner at index 2 of an otherwise straight way.
  CGpsRoute route =
      MakeList("", MakePoint(0, 0.1, "0"), MakePoint(0, 0.2, "1"), MakePoint(0, 0.3, "2"),
               MakePoint(0.1, 0.3, "3"), MakePoint(0.2, 0.3, "4"));
  route.Simplify(10);
  // The survivors are 0, 2 and 4. Point 1 goes first; the place of 3 is then that of 4.
  EXPECT_EQ(Names(route), "023");
}

TEST(PointArray, SimplifyErasesByTheOldIndicesAndStopsAtTheEnd) {
  CGpsRoute route;
  for (int i = 0; i < 10; ++i) {
    const double latitude = i == 5 ? 1.0 : 0.0;
    route.points.push_back(MakePoint(latitude, 1 + 0.1 * i, std::to_string(i)));
  }
  route.Simplify(1000000);
  // Nothing deviates by 1000 km: 0 and 9 survive.
  EXPECT_EQ(Names(route), "09");

  CGpsRoute peak;
  for (int i = 0; i < 9; ++i) {
    const double latitude = 0.1 * (i <= 4 ? i : 8 - i);
    peak.points.push_back(MakePoint(latitude, 1 + 0.1 * i, std::to_string(i)));
  }
  peak.Simplify(100);
  // 0, 4 and 8 survive. Erasing 1 to 3 leaves six points; of 5 to 7 only the place 5 is left.
  EXPECT_EQ(Names(peak), "04567");
}

TEST(PointArray, SimplifyLeavesShortListsAlone) {
  CGpsRoute route = RouteWithLegs(2);
  route.Simplify(100000);
  EXPECT_EQ(Names(route), "01");
  CGpsRoute one = RouteWithLegs(1);
  one.Simplify(1);
  EXPECT_EQ(Names(one), "0");
}

TEST(PointArray, SimplifyWithoutToleranceKeepsStraightPoints) {
  CGpsRoute route = MakeList("", MakePoint(0, 1, "0"), MakePoint(0, 2, "1"), MakePoint(0, 3, "2"));
  route.Simplify(0);
  EXPECT_EQ(Names(route), "012");
  route.Simplify(1);
  EXPECT_EQ(Names(route), "02");
}

TEST(PointArray, SimplifyDoesNotNestAsDeepAsTheListIsLong) {
  CGpsTrack track;
  for (int i = 0; i < 3000; ++i)
    track.points.push_back(MakePoint(i % 2 == 0 ? 0 : 1 + 0.001 * i, 0.01 * i));
  track.Simplify(1);
  EXPECT_EQ(track.Count(), 3000u);
}

TEST(PointArray, TakesPointsOfAnotherList) {
  CGpsRoute route;
  CGpsRoute other = RouteWithLegs(2);
  route.TakePoints(other);
  EXPECT_EQ(Legs(route), "++");
  EXPECT_TRUE(other.points.empty());
  CGpsRoute more = RouteWithLegs(1);
  route.TakePoints(more);
  EXPECT_EQ(Names(route), "010");
  EXPECT_TRUE(more.points.empty());
  route.TakePoints(route);
  EXPECT_EQ(Names(route), "010");
}

TEST(Route, RangeConstructorCopiesNameRangeAndSnapshot) {
  CGpsRoute source = RouteWithLegs(5);
  source.name = "trip";
  const CGpsRoute part(source, 1, 3);
  EXPECT_EQ(Names(part), "123");
  EXPECT_EQ(part.name, "trip");
  EXPECT_EQ(Names(part.snapshot), "123");
  EXPECT_EQ(part.snapshot.name, "trip");
  EXPECT_EQ(Names(CGpsRoute(static_cast<const CGpsPointArray&>(source), 3, kAllPoints)), "34");
  EXPECT_EQ(Names(CGpsTrack(source, 9, 1)), "");
}

TEST(Route, ClearEmptiesTheSnapshotToo) {
  CGpsRoute route = RouteWithLegs(2);
  route.name = "trip";
  route.snapshot.Assign(route);
  route.Clear();
  EXPECT_EQ(route.Count(), 0u);
  EXPECT_EQ(route.name, "");
  EXPECT_EQ(route.snapshot.Count(), 0u);
  EXPECT_EQ(route.snapshot.name, "");
}

TEST(Route, TypedAssignmentTakesPointsAndNameOnly) {
  CGpsRoute source = RouteWithLegs(2);
  source.name = "trip";
  source.snapshot.Assign(source);
  CGpsRoute target;
  target = source;
  EXPECT_EQ(Names(target), "01");
  EXPECT_EQ(target.name, "trip");
  EXPECT_EQ(target.snapshot.Count(), 0u);
}

TEST(PointList, LastIndexAndNullPoints) {
  CGpsPointList polyline;
  EXPECT_EQ(polyline.LastIndex(), 0u);
  polyline = PolylineOf(MakeList("", MakePoint(1, 1), MakePoint(0, 0), MakePoint(2, 2)));
  EXPECT_EQ(polyline.LastIndex(), 2u);
  polyline.RemoveNullPoints();
  EXPECT_EQ(polyline.LastIndex(), 1u);
}

TEST(PointList, SortsAndKeepsTheFirstOfNeighbours) {
  CGpsPointList polyline = PolylineOf(
      MakeList("", MakePoint(2, 1, "c"), MakePoint(1, 1, "a"), MakePoint(1.00005, 1.00005, "b")));
  polyline.SortAndUnique();
  ASSERT_EQ(polyline.points.size(), 2u);
  EXPECT_EQ(polyline.points.front()->name, "a");
  EXPECT_EQ(polyline.points.back()->name, "c");
}

TEST(PointList, SimplifyReducesTheGivenIndices) {
  const CGpsPointList polyline =
      PolylineOf(MakeList("", MakePoint(0, 0.1), MakePoint(0, 0.2), MakePoint(0, 0.3),
                          MakePoint(0.1, 0.3), MakePoint(0.2, 0.3)));
  std::vector<size_t> indices{0, 1, 2, 3, 4};
  polyline.Simplify(indices, 10);
  EXPECT_EQ(indices, (std::vector<size_t>{0, 2, 4}));
  std::vector<size_t> part{0, 1};
  polyline.Simplify(part, 10);
  EXPECT_EQ(part, (std::vector<size_t>{0, 1}));
}

}  // namespace
