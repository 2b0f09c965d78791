#include "model/itinerary_optimizer.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <map>
#include <numeric>
#include <random>
#include <stdexcept>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "model/route_leg.h"
#include "tests/list_builder.h"

namespace {

using Order = std::vector<size_t>;
using Questions = std::vector<std::pair<size_t, size_t>>;

/// The search in plain words: every candidate is made and its way is added up from the start.
class PlainSearch {
 public:
  PlainSearch(size_t count, RoadDistance pairCost)
      : m_count(count), m_pairCost(std::move(pairCost)), m_costs(count * count) {}

  Order Optimise() {
    Order order(m_count);
    std::iota(order.begin(), order.end(), size_t{0});
    if (m_count <= 3) return order;
    Order work = order;
    uint32_t best = PathCost(order);
    const size_t last = m_count - 1;
    bool improved = true;
    while (improved) {
      improved = false;
      for (size_t i = 1; i < last; ++i) {
        for (size_t j = i + 1; j < last; ++j) {
          for (size_t a = i, b = j; a < b; ++a, --b) std::swap(work[a], work[b]);
          const uint32_t cost = PathCost(work);
          if (cost < best) {
            order = work;
            best = cost;
            improved = true;
          } else {
            work = order;
          }
        }
      }
    }
    return order;
  }

  uint32_t PathCost(const Order& order) {
    if (order.size() == 1) return 0;
    uint32_t sum = 0;
    for (size_t i = 0; i + 1 < order.size(); ++i) {
      const size_t a = order[i];
      const size_t b = order[i + 1];
      if (m_costs[b * m_count + a] == 0)
        m_costs[a * m_count + b] = m_costs[b * m_count + a] = m_pairCost(a, b);
      sum += m_costs[b * m_count + a];
    }
    return sum;
  }

 private:
  const size_t m_count;
  const RoadDistance m_pairCost;
  std::vector<uint32_t> m_costs;
};

CGpsRoute RandomRoute(std::mt19937& random, size_t count, int places) {
  std::uniform_int_distribution<int> place(0, places - 1);
  CGpsRoute route;
  for (size_t i = 0; i < count; ++i) {
    route.points.push_back(MakePoint(40.0 + place(random) * 10.0 / places,
                                     5.0 + place(random) * 10.0 / places, std::to_string(i)));
  }
  return route;
}

RoadDistance StraightDistances(const CGpsPointArray& list) {
  return [&list](size_t a, size_t b) { return list.At(a).DistanceTo(list.At(b)); };
}

/// Answers out of a table, and writes down what it was asked.
struct RoadTable {
  RoadDistance Asker() {
    return [this](size_t from, size_t to) {
      questions.emplace_back(from, to);
      const auto found = lengths.find({from, to});
      return found == lengths.end() ? 0u : found->second;
    };
  }

  std::map<std::pair<size_t, size_t>, uint32_t> lengths;
  Questions questions;
};

// A number of points; their positions do not matter by road.
CGpsRoute Points(size_t count) {
  CGpsRoute route;
  route.points.resize(count);
  return route;
}

// Points on the equator at these degrees of longitude: distances grow with the difference.
CGpsRoute OnEquator(const std::vector<double>& longitudes) {
  CGpsRoute route;
  for (const double longitude : longitudes)
    route.points.push_back(MakePoint(0, longitude, std::to_string(route.Count())));
  return route;
}

TEST(ItineraryOptimizer, ThreeStopsStayWithoutALook) {
  for (size_t count = 0; count <= 3; ++count) {
    RoadTable roads;
    const CGpsRoute route = Points(count);
    CItineraryOptimizer optimizer(route, roads.Asker());
    Order inOrder(count);
    std::iota(inOrder.begin(), inOrder.end(), size_t{0});
    EXPECT_EQ(optimizer.Optimise(true), inOrder);
    EXPECT_TRUE(roads.questions.empty());
  }
}

TEST(ItineraryOptimizer, FourStopsHaveOneCandidate) {
  RoadTable roads;
  roads.lengths = {{{0, 1}, 9}, {{1, 2}, 1}, {{2, 3}, 9}, {{0, 2}, 5}, {{1, 3}, 5}};
  const CGpsRoute route = Points(4);
  CItineraryOptimizer optimizer(route, roads.Asker());
  EXPECT_EQ(optimizer.Optimise(true), (Order{0, 2, 1, 3}));
  // The way as it stands, then what turning 1 and 2 round brings: 0 to 2 and 1 to 3. The second
  // pass turns them back and knows all pairs.
  EXPECT_EQ(roads.questions, (Questions{{0, 1}, {1, 2}, {2, 3}, {0, 2}, {1, 3}}));
}

TEST(ItineraryOptimizer, FiveStopsHaveThreeCandidates) {
  RoadTable roads;
  for (size_t a = 0; a < 5; ++a) {
    for (size_t b = 0; b < 5; ++b) roads.lengths[{a, b}] = 10;
  }
  const CGpsRoute route = Points(5);
  CItineraryOptimizer optimizer(route, roads.Asker());
  EXPECT_EQ(optimizer.Optimise(true), (Order{0, 1, 2, 3, 4}));
  // 1 to 2: 0-2 and 1-3; 1 to 3: 0-3 and 1-4; 2 to 3: 1-3 is known, 2-4.
  EXPECT_EQ(roads.questions,
            (Questions{{0, 1}, {1, 2}, {2, 3}, {3, 4}, {0, 2}, {1, 3}, {0, 3}, {1, 4}, {2, 4}}));
}

TEST(ItineraryOptimizer, ACandidateOfTheSameLengthIsNotTaken) {
  // 0, 1 and 2 degrees twice: turning round equal stops changes nothing.
  const CGpsRoute route = OnEquator({0, 1, 1, 2});
  CItineraryOptimizer optimizer(route);
  EXPECT_EQ(optimizer.Optimise(false), (Order{0, 1, 2, 3}));
}

TEST(ItineraryOptimizer, FindsTheWayAlongALine) {
  const CGpsRoute route = OnEquator({0, 3, 1, 2, 4});
  CItineraryOptimizer optimizer(route);
  EXPECT_EQ(optimizer.Optimise(false), (Order{0, 2, 3, 1, 4}));
}

TEST(ItineraryOptimizer, LaterCandidatesStartFromWhatWasTaken) {
  // Turning places 1 and 2 round helps, and so do 3 and 4 behind them.
  const CGpsRoute route = OnEquator({0, 2, 1, 4, 3, 5});
  CItineraryOptimizer optimizer(route);
  EXPECT_EQ(optimizer.Optimise(false), (Order{0, 2, 1, 4, 3, 5}));
}

TEST(ItineraryOptimizer, PathCost) {
  // One degree on the equator is a chord of 2 sin(0.5 degrees) times 6378137 m = 111318.08 m.
  const CGpsRoute route = OnEquator({0, 1, 2});
  CItineraryOptimizer optimizer(route);
  EXPECT_EQ(optimizer.PathCost({0, 1, 2}, false), 222636u);
  EXPECT_EQ(optimizer.PathCost({1}, false), 0u);
  EXPECT_EQ(optimizer.PathCost({}, false), 0u);
}

TEST(ItineraryOptimizer, PairCost) {
  RoadTable roads;
  roads.lengths = {{{0, 1}, 7}, {{1, 0}, 8}};
  const CGpsRoute route = OnEquator({0, 1});
  const CItineraryOptimizer optimizer(route, roads.Asker());
  EXPECT_EQ(optimizer.PairCost(0, 1, false), 111318u);
  EXPECT_EQ(optimizer.PairCost(1, 1, true), 0u);
  EXPECT_EQ(optimizer.PairCost(0, 1, true), 7u);
  EXPECT_EQ(optimizer.PairCost(1, 0, true), 8u);
  EXPECT_EQ(optimizer.PairCost(0, 1, true), 7u);
  EXPECT_EQ(roads.questions.size(), 3u);
}

TEST(ItineraryOptimizer, NobodyToAskIsAFailure) {
  const CGpsRoute route = OnEquator({0, 1, 2, 3});
  CItineraryOptimizer optimizer(route);
  try {
    optimizer.Optimise(true);
    FAIL() << "no exception";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "Bad type");
  }
}

TEST(ItineraryOptimizer, APairIsKnownInBothDirections) {
  RoadTable roads;
  roads.lengths = {{{0, 1}, 7}, {{1, 0}, 8}};
  const CGpsRoute route = Points(2);
  CItineraryOptimizer optimizer(route, roads.Asker());
  EXPECT_EQ(optimizer.PathCost({0, 1}, true), 7u);
  EXPECT_EQ(optimizer.PathCost({1, 0, 1}, true), 14u);
  EXPECT_EQ(roads.questions, (Questions{{0, 1}}));
}

TEST(ItineraryOptimizer, APairThatCostsNothingIsAskedAgain) {
  RoadTable roads;
  const CGpsRoute route = Points(2);
  CItineraryOptimizer optimizer(route, roads.Asker());
  EXPECT_EQ(optimizer.PathCost({0, 1}, true), 0u);
  EXPECT_EQ(optimizer.PathCost({1, 0, 1}, true), 0u);
  EXPECT_EQ(roads.questions, (Questions{{0, 1}, {1, 0}, {0, 1}}));
}

TEST(ItineraryOptimizer, SumsWrap) {
  RoadTable roads;
  roads.lengths = {{{0, 1}, 0xFFFFFFFF}, {{1, 2}, 3}};
  const CGpsRoute route = Points(3);
  CItineraryOptimizer optimizer(route, roads.Asker());
  EXPECT_EQ(optimizer.PathCost({0, 1, 2}, true), 2u);
}

TEST(ItineraryOptimizer, TheTargetIsRebuiltWithCopies) {
  CGpsRoute route = OnEquator({0, 3, 1, 4});
  route.name = "Tour";
  route.At(1).SetRouteLeg(CRouteLeg());
  CGpsWaypointList target = MakeList<CGpsWaypointList>("old", MakePoint(1, 1));
  CItineraryOptimizer(route).OptimizeInto(target, false);
  EXPECT_EQ(target.name, "Tour");
  ASSERT_EQ(target.Count(), 4u);
  EXPECT_EQ(target.At(1).name, "2");
  EXPECT_EQ(target.At(2).name, "1");
  EXPECT_NE(target.At(2).GetRouteLeg(), nullptr);
  EXPECT_NE(target.At(2).GetRouteLeg(), route.At(1).GetRouteLeg());
  EXPECT_EQ(target.At(3).GetRouteLeg(), nullptr);
}

// What a caller may bring, against the plain search.

TEST(ItineraryOptimizer, EqualsThePlainSearchByDistance) {
  std::mt19937 random(1);
  for (int round = 0; round < 5000; ++round) {
    const size_t count = random() % 41;
    // Few places make equal stops, and many a tie.
    const CGpsRoute route = RandomRoute(random, count, round % 2 == 0 ? 1000000 : 5);
    ASSERT_EQ(CItineraryOptimizer(route).Optimise(false),
              PlainSearch(count, StraightDistances(route)).Optimise())
        << "round " << round;
  }
}

// Tables of costs: plain, with free pairs, other costs (also none) in the other direction, and so
// large that sums wrap. The questions must be the same too.
TEST(ItineraryOptimizer, EqualsThePlainSearchByRoad) {
  std::mt19937 random(2);
  for (int round = 0; round < 5000; ++round) {
    const size_t count = random() % (round % 50 == 0 ? 41 : 16);
    const bool hasFreePairs = round % 2 == 1;
    const bool hasDirections = round % 3 == 1;
    const uint32_t largest = round % 5 == 1 ? 0xFFFFFFFF : 1000;
    RoadTable roads;
    for (size_t a = 0; a < count; ++a) {
      for (size_t b = 0; b < a; ++b) {
        const auto draw = [&] {
          if (hasFreePairs && random() % 8 == 0) return 0u;
          return 1 + static_cast<uint32_t>(random()) % largest;
        };
        roads.lengths[{a, b}] = draw();
        roads.lengths[{b, a}] = hasDirections ? draw() : roads.lengths[{a, b}];
      }
    }
    RoadTable plainRoads = roads;
    const CGpsRoute route = Points(count);
    ASSERT_EQ(CItineraryOptimizer(route, roads.Asker()).Optimise(true),
              PlainSearch(count, plainRoads.Asker()).Optimise())
        << "round " << round;
    ASSERT_EQ(roads.questions, plainRoads.questions) << "round " << round;
  }
}

// Stopping.

TEST(ItineraryOptimizer, AStopKeepsTheBestOrderSoFar) {
  // The first candidate helps (10 + 1 + 10 becomes 5 + 1 + 5 up to the fourth stop); the stop comes
  // with the answer for its successor.
  RoadTable roads;
  roads.lengths = {{{0, 1}, 10}, {{1, 2}, 1}, {{2, 3}, 10}, {{3, 4}, 1},
                   {{0, 2}, 5},  {{1, 3}, 5}, {{0, 3}, 1}};
  std::stop_source stop;
  const CGpsRoute route = Points(5);
  const auto ask = roads.Asker();
  CItineraryOptimizer optimizer(
      route,
      [&](size_t from, size_t to) {
        if (roads.questions.size() == 6) stop.request_stop();
        return ask(from, to);
      },
      stop.get_token());
  EXPECT_EQ(optimizer.Optimise(true), (Order{0, 2, 1, 3, 4}));
  EXPECT_EQ(roads.questions.size(), 7u);
}

TEST(ItineraryOptimizer, AStopBeforeTheStartAsksNothing) {
  RoadTable roads;
  std::stop_source stop;
  stop.request_stop();
  const CGpsRoute route = OnEquator({0, 2, 1, 3});
  CItineraryOptimizer optimizer(route, roads.Asker(), stop.get_token());
  EXPECT_EQ(optimizer.Optimise(true), (Order{0, 1, 2, 3}));
  EXPECT_EQ(optimizer.Optimise(false), (Order{0, 1, 2, 3}));
  EXPECT_TRUE(roads.questions.empty());
}

// Going on.

bool IsOrderOfAll(Order order, size_t count) {
  if (order.size() != count || order.front() != 0 || order.back() != count - 1) return false;
  std::sort(order.begin(), order.end());
  for (size_t i = 0; i < count; ++i) {
    if (order[i] != i) return false;
  }
  return true;
}

constexpr std::chrono::milliseconds kShort{20};

TEST(OrderImprovement, FewStopsGetTheBestOrder) {
  std::mt19937 random(3);
  for (size_t count = 4; count <= 8; ++count) {
    const CGpsRoute route = RandomRoute(random, count, 1000000);
    const CItineraryOptimizer optimizer(route);
    Order order(count);
    std::iota(order.begin(), order.end(), size_t{0});
    const Order improved = optimizer.Improve(order, false, kShort);
    ASSERT_TRUE(IsOrderOfAll(improved, count));
    uint64_t least = optimizer.Length(order, false);
    while (std::next_permutation(order.begin() + 1, order.end() - 1))
      least = std::min(least, optimizer.Length(order, false));
    EXPECT_EQ(optimizer.Length(improved, false), least);
  }
}

TEST(OrderImprovement, IsNeverWorseAndKeepsTheEnds) {
  std::mt19937 random(4);
  for (const int places : {1000000, 5}) {
    for (const size_t count : {15u, 16u, 40u, 200u}) {
      const CGpsRoute route = RandomRoute(random, count, places);
      CItineraryOptimizer optimizer(route);
      const Order order = optimizer.Optimise(false);
      const Order improved = optimizer.Improve(order, false, kShort);
      ASSERT_TRUE(IsOrderOfAll(improved, count));
      EXPECT_LE(optimizer.Length(improved, false), optimizer.Length(order, false));
    }
  }
}

TEST(OrderImprovement, FindsTheWayRoundACircle) {
  // Every third stop of a circle in turn: the best way leads once round.
  constexpr size_t kCount = 32;
  CGpsRoute route;
  for (size_t i = 0; i < kCount; ++i) {
    const double angle =
        static_cast<double>(i * 3 % (kCount - 1)) * 2.0 * 3.14159265 / (kCount - 1);
    route.points.push_back(MakePoint(std::sin(angle), std::cos(angle)));
  }
  const CItineraryOptimizer optimizer(route);
  Order order(kCount);
  std::iota(order.begin(), order.end(), size_t{0});
  const Order improved = optimizer.Improve(order, false, std::chrono::milliseconds(300));
  // 31 edges of 2 sin(pi / 31) degrees, 22.5 km each.
  EXPECT_NEAR(static_cast<double>(optimizer.Length(improved, false)), 31 * 22524.0, 3000.0);
}

TEST(OrderImprovement, MeasuresByRoadWhatIsKnown) {
  // By road the two stops in the middle lie the other way round than on the map.
  RoadTable roads;
  roads.lengths = {{{0, 1}, 10}, {{1, 2}, 30}, {{2, 3}, 20}, {{0, 2}, 40}, {{1, 3}, 50}};
  const CGpsRoute route = OnEquator({0, 2, 1, 3});
  CItineraryOptimizer optimizer(route, roads.Asker());
  const Order order = optimizer.Optimise(true);
  EXPECT_EQ(order, (Order{0, 1, 2, 3}));
  EXPECT_EQ(optimizer.Length(order, true), 60u);
  EXPECT_EQ(optimizer.Improve(order, true, kShort), order);
  EXPECT_EQ(optimizer.Improve(order, false, kShort), (Order{0, 2, 1, 3}));
  EXPECT_EQ(roads.questions.size(), 5u);
}

TEST(OrderImprovement, AStopEndsItAtOnce) {
  std::mt19937 random(5);
  const CGpsRoute route = RandomRoute(random, 100, 1000000);
  std::stop_source stop;
  const CItineraryOptimizer optimizer(route, {}, stop.get_token());
  Order order(100);
  std::iota(order.begin(), order.end(), size_t{0});
  stop.request_stop();
  EXPECT_EQ(optimizer.Improve(order, false, std::chrono::hours(1)), order);
}

}  // namespace
