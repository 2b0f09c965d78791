#include "model/route_leg.h"

#include <gtest/gtest.h>

#include "tests/list_builder.h"

namespace {

/// Options of a class of their own, to see that copies keep it.
class TruckOptions : public CRouteOptions {
 public:
  std::unique_ptr<CRouteOptions> Clone() const override {
    return std::make_unique<TruckOptions>(*this);
  }
  uint32_t Capabilities() const override { return 3; }
};

TEST(RouteOptions, MergeTakesAMissingModeAndAddsFlags) {
  CRouteOptions options;
  EXPECT_EQ(options.mode, 0u);
  EXPECT_EQ(options.flags, 1);
  EXPECT_EQ(options.Capabilities(), 1u);
  CRouteOptions other;
  other.mode = 5;
  other.flags = 6;
  options.Merge(other);
  EXPECT_EQ(options.mode, 5u);
  EXPECT_EQ(options.flags, 7);
  other.mode = 9;
  options.Merge(other);
  EXPECT_EQ(options.mode, 5u);
}

TEST(RouteData, StartsAndResetsEmpty) {
  CRouteData data;
  EXPECT_EQ(data.color, 255u);
  ASSERT_NE(data.options, nullptr);
  data.steps.emplace_back();
  data.travelMode = 3;
  data.path.points.push_back(std::make_unique<CGpsNamedPoint>());
  data.shape.points.points.push_back(std::make_unique<CGpsNamedPoint>());
  data.measure.distance = 4;
  data.color = 1;
  data.options = std::make_unique<TruckOptions>();
  data.Reset();
  EXPECT_TRUE(data.steps.empty());
  EXPECT_EQ(data.travelMode, 0u);
  EXPECT_TRUE(data.path.points.empty());
  EXPECT_TRUE(data.shape.points.points.empty());
  EXPECT_EQ(data.measure.distance, 0u);
  EXPECT_EQ(data.measure.duration, 0u);
  EXPECT_EQ(data.measure.flag, 0);
  EXPECT_EQ(data.color, 255u);
  EXPECT_EQ(data.options->Capabilities(), 1u);
}

TEST(RouteData, CopiesDeeply) {
  CRouteData data;
  data.options = std::make_unique<TruckOptions>();
  data.path.points.push_back(std::make_unique<CGpsPoint>(MakePoint(1, 2, "first")));
  const CRouteData copy = data;
  data.path.points.front()->name = "changed";
  data.options->mode = 9;
  EXPECT_EQ(copy.path.points.front()->name, "first");
  EXPECT_EQ(copy.options->mode, 0u);
  EXPECT_EQ(copy.options->Capabilities(), 3u);
  data = copy;
  EXPECT_EQ(data.path.points.front()->name, "first");
}

TEST(RouteLeg, GivesAccessToItsParts) {
  CRouteLeg leg;
  leg.TotalDistance() = 10;
  leg.TotalDuration() = 20;
  leg.Measure().distance = 30;
  leg.Shape().points.points.push_back(std::make_unique<CGpsNamedPoint>());
  leg.Route().color = 40;
  const CRouteLeg copy = leg;
  EXPECT_EQ(copy.GetTotalDistance(), 10u);
  EXPECT_EQ(copy.GetTotalDuration(), 20u);
  EXPECT_EQ(copy.Measure().distance, 30u);
  EXPECT_EQ(copy.Shape().points.points.size(), 1u);
  EXPECT_EQ(copy.Route().color, 40u);
}

TEST(RouteStep, ResetsEverything) {
  CGpsRouteStep step;
  step.name = "A9";
  step.instruction = "turn left";
  step.measure.distance = 100;
  step.latitude = 1;
  step.Reset();
  EXPECT_EQ(step.name, "");
  EXPECT_EQ(step.instruction, "");
  EXPECT_EQ(step.measure.distance, 0u);
  EXPECT_TRUE(step.IsNull());
}

}  // namespace
