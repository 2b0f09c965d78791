#include "services/directions/list_directions.h"

#include <atomic>
#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "services/directions/route_options.h"
#include "services/directions/route_reply.h"
#include "services/directions/straight_line_router.h"
#include "services/service_table.h"
#include "tests/list_builder.h"

namespace {

// From 48, 7 a hundredth of a degree to the north each time: a chord of 6378137 * 2 * sin(0.005
// degrees) = 1113.19 metres.
CGpsRoute Northwards(size_t count) {
  CGpsRoute list;
  for (size_t i = 0; i < count; ++i) {
    CGpsPoint point;
    point.latitude = 48.0 + static_cast<double>(i) * 0.01;
    point.longitude = 7.0;
    list.points.push_back(point);
  }
  return list;
}

/// Fails for the way to one of the points, and gives two legs for each other way.
class MoodyRouter final : public CRouteProvider {
 public:
  explicit MoodyRouter(double refusedLatitude) : m_refused(refusedLatitude) {}
  ~MoodyRouter() override { Stop(); }

  using CRouteProvider::Calculate;
  void Calculate(std::unique_ptr<CGpsPointList> points, uint32_t travelMode,
                 const CRouteOptions& options) override {
    Begin();
    ++asked;
    if (points->points.back()->latitude == m_refused) {
      Finish(kRouteNotFound);
      return;
    }
    for (const uint32_t distance : {100u, 20u}) {
      CRouteData& leg = GetLegs().emplace_back(MakeLeg(travelMode, options));
      leg.measure = MakeMeasure(distance, distance / 10);
      AppendPoint(leg.shape.points, *points->points.front());
      leg.steps.emplace_back();
    }
    Finish(kRouteSuccess);
  }
  uint32_t Wait(int32_t) override { return Status(); }
  int32_t GetId() const override { return provider::kStraight; }
  size_t GetMaxPoints() const override { return 2; }
  uint32_t BuildRequest(const CGpsPointList&, uint32_t, const CRouteOptions&,
                        CHttpRequestSpec&) override {
    return kRouteInvalidRequest;
  }
  uint32_t ParseResponse(std::string_view, uint32_t, const CRouteOptions&, Legs&) override {
    return kRouteInvalidRequest;
  }
  std::string FailureText() const override { return "no road"; }

  size_t asked = 0;

 private:
  double m_refused;
};

TEST(ListDirections, GiveEveryStopTheLegThatLeadsToIt) {
  CGpsRoute list = Northwards(3);
  CStraightLineRouter router;
  std::vector<size_t> told;
  const LegsResult result = CalculateLegs(router, list, kAnyMode, {}, [&](size_t to) {
    told.push_back(to);
    return true;
  });
  EXPECT_EQ(result.calculated, 2u);
  EXPECT_TRUE(result.failures.empty());
  EXPECT_FALSE(result.cancelled);
  EXPECT_EQ(told, (std::vector<size_t>{1, 2}));
  EXPECT_EQ(list.At(0).GetRouteLeg(), nullptr);
  ASSERT_NE(list.At(1).GetRouteLeg(), nullptr);
  EXPECT_EQ(list.At(1).GetRouteLeg()->Measure().distance, 1113u);
  EXPECT_EQ(list.At(1).GetRouteLeg()->totalDistance, 1113u);
  EXPECT_EQ(list.At(2).GetRouteLeg()->totalDistance, 2226u);
}

TEST(ListDirections, PassOverFailedLegs) {
  CGpsRoute list = Northwards(4);
  list.At(2).SetRouteLeg(CRouteLeg());
  MoodyRouter router(list.At(2).latitude);
  const LegsResult result = CalculateLegs(router, list, kCar, {});
  EXPECT_EQ(router.asked, 3u);
  EXPECT_EQ(result.calculated, 2u);
  ASSERT_EQ(result.failures.size(), 1u);
  EXPECT_EQ(result.failures[0].to, 2u);
  EXPECT_EQ(result.failures[0].status, 5u);
  EXPECT_EQ(result.failures[0].text, "no road");
  EXPECT_EQ(list.At(2).GetRouteLeg(), nullptr);
  // Two legs of the service are one of the list; behind the gap no totals are known.
  const CRouteLeg& first = *list.At(1).GetRouteLeg();
  EXPECT_EQ(first.Measure().distance, 120u);
  EXPECT_EQ(first.Measure().duration, 12u);
  EXPECT_EQ(first.route.steps.size(), 2u);
  EXPECT_EQ(first.Shape().points.points.size(), 2u);
  EXPECT_EQ(first.totalDuration, 12u);
  EXPECT_EQ(list.At(3).GetRouteLeg()->totalDistance, 0u);
  const LegTotals totals = UpdateLegTotals(list);
  EXPECT_EQ(totals.distance, 120u);
  EXPECT_FALSE(totals.complete);
}

TEST(ListDirections, CanBeCancelledBetweenLegs) {
  CGpsRoute list = Northwards(5);
  MoodyRouter router(0.0);
  const LegsResult result = CalculateLegs(router, list, kCar, {}, [](size_t to) { return to < 3; });
  EXPECT_TRUE(result.cancelled);
  EXPECT_EQ(router.asked, 2u);
  EXPECT_NE(list.At(2).GetRouteLeg(), nullptr);
  EXPECT_EQ(list.At(3).GetRouteLeg(), nullptr);
}

TEST(ListDirections, AskNothingForOnePoint) {
  CGpsRoute list = Northwards(1);
  MoodyRouter router(0.0);
  EXPECT_EQ(CalculateLegs(router, list, kCar, {}).calculated, 0u);
  EXPECT_EQ(router.asked, 0u);
  EXPECT_TRUE(UpdateLegTotals(list).complete);
}

TEST(ListDirections, KnowNoTotalsWithoutMeasures) {
  CGpsRoute list = Northwards(2);
  CRouteLeg leg;
  leg.totalDistance = 7;
  list.At(1).SetRouteLeg(leg);
  EXPECT_FALSE(UpdateLegTotals(list).complete);
  EXPECT_EQ(list.At(1).GetRouteLeg()->totalDistance, 0u);
}

/// Runs until it is cancelled.
class EndlessRouter final : public CRouteProvider {
 public:
  ~EndlessRouter() override { Stop(); }

  using CRouteProvider::Calculate;
  void Calculate(std::unique_ptr<CGpsPointList>, uint32_t, const CRouteOptions&) override {
    Begin();
    ++asked;
  }
  uint32_t Wait(int32_t) override {
    while (!IsCancelled()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    Finish(kCancelled);
    return Status();
  }
  int32_t GetId() const override { return provider::kStraight; }
  size_t GetMaxPoints() const override { return 2; }
  uint32_t BuildRequest(const CGpsPointList&, uint32_t, const CRouteOptions&,
                        CHttpRequestSpec&) override {
    return kRouteInvalidRequest;
  }
  uint32_t ParseResponse(std::string_view, uint32_t, const CRouteOptions&, Legs&) override {
    return kRouteInvalidRequest;
  }

  static constexpr uint32_t kCancelled = 100 + 12017;
  std::atomic<size_t> asked = 0;
};

TEST(ListDirections, CanBeStoppedWithinALegFromAnotherThread) {
  CGpsRoute list = Northwards(5);
  EndlessRouter router;
  std::stop_source source;
  std::thread stopping([&] {
    while (router.asked == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    source.request_stop();
  });
  const LegsResult result = CalculateLegs(router, list, kCar, {}, {}, source.get_token());
  stopping.join();
  EXPECT_TRUE(result.cancelled);
  EXPECT_TRUE(result.failures.empty());
  EXPECT_EQ(router.asked, 1u);
  // Nothing is asked any more.
  EXPECT_TRUE(CalculateLegs(router, list, kCar, {}, {}, source.get_token()).cancelled);
  EXPECT_EQ(router.asked, 1u);
}

TEST(ListDirections, NoteWhoGaveALeg) {
  CGpsRoute list = Northwards(2);
  list.At(1).SetRouteLeg(CRouteLeg());
  list.At(1).GetRouteLeg()->provider = 77;
  CStraightLineRouter router;
  CalculateLegs(router, list, kAnyMode, {});
  EXPECT_EQ(list.At(1).GetRouteLeg()->provider, 0);
}

TEST(ListDirections, BecomeTheWayItself) {
  CGpsRoute list = Northwards(4);
  list.name = "Trip";
  MoodyRouter router(list.At(2).latitude);
  CalculateLegs(router, list, kCar, {});
  ReplaceStopsByWay(list);
  // Two legs of two points each, and none to the third stop.
  ASSERT_EQ(list.Count(), 4u);
  EXPECT_DOUBLE_EQ(list.At(0).latitude, 48.0);
  EXPECT_DOUBLE_EQ(list.At(1).latitude, 48.0);
  EXPECT_DOUBLE_EQ(list.At(2).latitude, 48.02);
  EXPECT_EQ(list.At(1).GetRouteLeg(), nullptr);
  EXPECT_EQ(list.name, "Trip");
}

}  // namespace
