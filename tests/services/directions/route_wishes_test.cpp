#include "services/directions/route_wishes.h"

#include <gtest/gtest.h>

#include "services/directions/route_options.h"
#include "services/directions/route_words.h"
#include "services/service_table.h"
#include "tests/services/directions/router_asked.h"

namespace {

using Words = std::vector<std::string_view>;

// Settings that nobody has changed.
class RouteWishesTest : public testing::Test {
 protected:
  RouteRequest Request(int32_t provider, const RouteWishes& wishes = {}) const {
    return RequestFor(wishes, settings, *RouterOf(provider));
  }
  Words Missing(int32_t provider, const RouteWishes& wishes) const {
    return NotOffered(wishes, settings, *RouterOf(provider));
  }
  static RouteWishes Avoiding(bool AvoidedRoads::*kind) {
    RouteWishes wishes;
    wishes.avoided.emplace().*kind = true;
    return wishes;
  }

  CSettings settings{[] { return storage::Storage(); }};
};

TEST_F(RouteWishesTest, AreTakenFromTheSettingsWhereNothingIsSaid) {
  settings.vehicleType = kBicycle;
  settings.itineraryType = kShortest;
  settings.avoidTolls = true;
  const RouteRequest request = Request(provider::kTomTom);
  EXPECT_EQ(request.travelMode, 4u);
  EXPECT_EQ(request.options->mode, 2u);
  EXPECT_EQ(request.options->Capabilities(), 10u);
  EXPECT_FALSE(AvoidancesOf(*request.options)->tolls);
  EXPECT_TRUE(AvoidancesOf(*request.options)->motorways);
  EXPECT_EQ(CharacterOf(*request.options)->hilliness, 1u);
}

TEST_F(RouteWishesTest, BecomeTheFirstVehicleWhereThatOfTheSettingsIsNotKnown) {
  settings.vehicleType = kTruckMode;
  EXPECT_EQ(Request(provider::kGoogle).travelMode, 1u);
  EXPECT_EQ(Request(provider::kWazeUs).travelMode, 0u);
  EXPECT_EQ(Request(provider::kHere).travelMode, 2u);
  settings.vehicleType = 0;
  EXPECT_EQ(Request(provider::kHere).travelMode, 1u);
}

TEST_F(RouteWishesTest, TakeTheTruckOfTheSettings) {
  settings.truckHeight = 41;
  settings.truckWidth = 26;
  settings.truckLength = 166;
  settings.truckTrailersCount = 2;
  settings.truckLimitedWeight = 406;
  settings.truckWeightAxle = 116;
  settings.truckCategory = 5;
  RouteWishes wishes;
  wishes.mode = kTruckMode;
  wishes.tractor = true;
  const RouteRequest request = Request(provider::kHere, wishes);
  const TruckOptions* const truck = TruckOf(*request.options);
  ASSERT_NE(truck, nullptr);
  EXPECT_EQ(truck->height, 41u);
  EXPECT_EQ(truck->width, 26u);
  EXPECT_EQ(truck->length, 166u);
  EXPECT_EQ(truck->trailers, 2u);
  EXPECT_EQ(truck->limitedWeight, 406u);
  EXPECT_EQ(truck->weightPerAxle, 116u);
  EXPECT_EQ(truck->hazardCategory, 5u);
  EXPECT_TRUE(truck->tractor);
  EXPECT_TRUE(Missing(provider::kHere, wishes).empty());
}

TEST_F(RouteWishesTest, StandAboveTheSettings) {
  settings.avoidHighway = true;
  settings.itineraryType = kShortest;
  RouteWishes wishes = Avoiding(&AvoidedRoads::dirtRoads);
  wishes.type = kThrilling;
  wishes.hilliness = kHigh;
  wishes.windingness = kLow;
  const RouteRequest request = Request(provider::kTomTom, wishes);
  EXPECT_EQ(request.options->mode, 5u);
  EXPECT_TRUE(AvoidancesOf(*request.options)->motorways);
  EXPECT_FALSE(AvoidancesOf(*request.options)->dirtRoads);
  EXPECT_TRUE(CharacterOf(*request.options)->avoidUsedRoads);
  EXPECT_EQ(CharacterOf(*request.options)->hilliness, 0u);
  EXPECT_EQ(CharacterOf(*request.options)->windingness, 2u);
}

TEST_F(RouteWishesTest, SayEachKindOfRoads) {
  const std::pair<bool AvoidedRoads::*, bool AvoidanceOptions::*> kKinds[] = {
      {&AvoidedRoads::motorways, &AvoidanceOptions::motorways},
      {&AvoidedRoads::tolls, &AvoidanceOptions::tolls},
      {&AvoidedRoads::boatFerries, &AvoidanceOptions::boatFerries},
      {&AvoidedRoads::railFerries, &AvoidanceOptions::railFerries},
      {&AvoidedRoads::tunnels, &AvoidanceOptions::tunnels},
      {&AvoidedRoads::dirtRoads, &AvoidanceOptions::dirtRoads}};
  for (const auto& [wish, option] : kKinds) {
    const RouteRequest request = Request(provider::kHere, Avoiding(wish));
    const AvoidanceOptions& options = *AvoidancesOf(*request.options);
    for (const auto& row : kKinds) EXPECT_EQ(options.*row.second, row.second != option);
  }
}

// What the table does not offer goes out all the same, if the requests have words for it.
TEST_F(RouteWishesTest, GoOutEvenWhereTheyAreNotOffered) {
  RouteWishes onFoot = Avoiding(&AvoidedRoads::tolls);
  onFoot.mode = kPedestrian;
  EXPECT_EQ(Request(provider::kGoogle).options->Capabilities(), 2u);
  EXPECT_EQ(Request(provider::kGoogle, onFoot).options->Capabilities(), 2u);
  EXPECT_EQ(Missing(provider::kGoogle, onFoot), (Words{"tolls"}));
  RouteWishes truck;
  truck.mode = kTruckMode;
  EXPECT_EQ(Request(provider::kTomTom, truck).travelMode, 2u);
  EXPECT_EQ(Request(provider::kTomTom, truck).options->Capabilities(), 10u);
  EXPECT_EQ(Missing(provider::kTomTom, truck), (Words{"truck"}));
}

TEST_F(RouteWishesTest, AreNotOfferedByAll) {
  RouteWishes wishes;
  wishes.mode = kCar;
  wishes.type = kThrilling;
  wishes.avoided.emplace();
  for (const RoadsWord& roads : RoadsWords()) (*wishes.avoided).*roads.avoided = true;
  wishes.hilliness = kNormal;
  wishes.windingness = kNormal;
  wishes.tractor = true;
  EXPECT_EQ(Missing(provider::kIgn, wishes),
            (Words{"thrilling", "motorways", "boat-ferries", "rail-ferries", "dirt-roads",
                   "used-roads", "hilliness", "windingness", "tractor"}));
  EXPECT_EQ(Missing(provider::kTomTom, wishes), (Words{"rail-ferries", "tunnels", "tractor"}));
  settings.avoidTolls = true;
  EXPECT_EQ(Missing(provider::kOsrm, {}), (Words{"tolls"}));
}

TEST(RouteWords, NameModesTypesAndDegrees) {
  EXPECT_EQ(WordOf(TravelModeWords(), 1), "car");
  EXPECT_EQ(WordOf(TravelModeWords(), 7), "bus");
  EXPECT_EQ(WordOf(TravelModeWords(), 0), "");
  EXPECT_EQ(WordOf(RouteTypeWords(), 0), "recommended");
  EXPECT_EQ(WordOf(RouteTypeWords(), 3), "sightseeing");
  EXPECT_EQ(WordOf(RouteTypeWords(), 5), "thrilling");
  EXPECT_EQ(WordOf(RouteDegreeWords(), 0), "high");
  EXPECT_EQ(WordOf(RouteDegreeWords(), 2), "low");
}

}  // namespace
