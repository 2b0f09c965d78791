#include "services/directions/route_options.h"

#include <gtest/gtest.h>

#include "services/directions/list_directions.h"
#include "services/directions/route_providers.h"

namespace {

TEST(RouteOptions, EveryGroupTellsWhatItHolds) {
  EXPECT_EQ(MakeRouteOptions(1)->Capabilities(), 1u);
  EXPECT_EQ(MakeRouteOptions(2)->Capabilities(), 2u);
  EXPECT_EQ(MakeRouteOptions(6)->Capabilities(), 6u);
  EXPECT_EQ(MakeRouteOptions(10)->Capabilities(), 10u);
  EXPECT_EQ(AvoidancesOf(*MakeRouteOptions(1)), nullptr);
  EXPECT_EQ(TruckOf(*MakeRouteOptions(10)), nullptr);
  EXPECT_EQ(CharacterOf(*MakeRouteOptions(6)), nullptr);
  EXPECT_NE(AvoidancesOf(*MakeRouteOptions(6)), nullptr);
  EXPECT_NE(AvoidancesOf(*MakeRouteOptions(10)), nullptr);
}

TEST(RouteOptions, BeginWithAllRoadsAndNoTruck) {
  const TruckOptions truck;
  EXPECT_TRUE(truck.motorways && truck.tolls && truck.boatFerries && truck.railFerries &&
              truck.tunnels && truck.dirtRoads);
  EXPECT_EQ(truck.mode, 0u);
  EXPECT_EQ(truck.flags, 1);
  EXPECT_EQ(truck.hazardCategory, 0u);
  EXPECT_FALSE(truck.tractor);
  EXPECT_EQ(truck.trailers + truck.limitedWeight + truck.weightPerAxle + truck.height +
                truck.width + truck.length,
            0u);
  const RouteCharacterOptions character;
  EXPECT_TRUE(character.avoidUsedRoads);
  EXPECT_EQ(character.hilliness, 1u);
  EXPECT_EQ(character.windingness, 1u);
}

TEST(RouteOptions, ClonesKeepTheirClassAndAllValues) {
  TruckOptions truck;
  truck.mode = 2;
  truck.tolls = false;
  truck.hazardCategory = 5;
  truck.tractor = true;
  truck.length = 165;
  const std::unique_ptr<CRouteOptions> clone = truck.Clone();
  EXPECT_EQ(clone->mode, 2u);
  const TruckOptions* const cloned = TruckOf(*clone);
  ASSERT_NE(cloned, nullptr);
  EXPECT_FALSE(cloned->tolls);
  EXPECT_EQ(cloned->hazardCategory, 5u);
  EXPECT_TRUE(cloned->tractor);
  EXPECT_EQ(cloned->length, 165u);

  RouteCharacterOptions character;
  character.windingness = kLow;
  const std::unique_ptr<CRouteOptions> other = character.Clone();
  ASSERT_NE(CharacterOf(*other), nullptr);
  EXPECT_EQ(CharacterOf(*other)->windingness, 2u);
}

TEST(RouteOptions, MergingAddsWhatTheOtherAvoids) {
  AvoidanceOptions options;
  options.motorways = false;
  AvoidanceOptions other;
  other.mode = 2;
  other.flags = 4;
  other.tunnels = false;
  options.Merge(other);
  EXPECT_EQ(options.mode, 2u);
  EXPECT_EQ(options.flags, 5);
  EXPECT_FALSE(options.motorways);
  EXPECT_FALSE(options.tunnels);
  EXPECT_TRUE(options.tolls);
}

TEST(RouteOptions, MergingKeepsTheOwnTruckAndCharacter) {
  TruckOptions truck;
  truck.height = 40;
  TruckOptions otherTruck;
  otherTruck.height = 30;
  otherTruck.width = 25;
  otherTruck.tractor = true;
  truck.Merge(otherTruck);
  EXPECT_EQ(truck.height, 40u);
  EXPECT_EQ(truck.width, 25u);
  EXPECT_TRUE(truck.tractor);

  RouteCharacterOptions character;
  character.hilliness = kLow;
  RouteCharacterOptions otherCharacter;
  otherCharacter.hilliness = kHigh;
  otherCharacter.windingness = kHigh;
  otherCharacter.avoidUsedRoads = false;
  character.Merge(otherCharacter);
  EXPECT_EQ(character.hilliness, 2u);
  EXPECT_EQ(character.windingness, 0u);
  EXPECT_FALSE(character.avoidUsedRoads);
}

TEST(RouteOptions, MergingWithAnotherGroupTakesOnlyWhatBothHold) {
  TruckOptions truck;
  RouteCharacterOptions character;
  character.dirtRoads = false;
  character.hilliness = kHigh;
  truck.Merge(character);
  EXPECT_FALSE(truck.dirtRoads);
  EXPECT_EQ(truck.height, 0u);
  CRouteOptions plain;
  plain.mode = 1;
  truck.Merge(plain);
  EXPECT_EQ(truck.mode, 1u);
  EXPECT_FALSE(truck.dirtRoads);
}

}  // namespace
