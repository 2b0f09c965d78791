#include "services/directions/travel_modes.h"

#include <gtest/gtest.h>

#include "services/directions/route_options.h"
#include "services/service_table.h"

namespace {

using Numbers = std::set<uint32_t>;

Numbers ModesOf(int32_t provider) {
  Numbers modes;
  for (const auto& [mode, info] : TravelModesOf(provider)) modes.insert(mode);
  return modes;
}

TEST(TravelModes, AreThoseOfTheServices) {
  EXPECT_EQ(ModesOf(provider::kGoogle), (Numbers{1, 3, 4}));
  EXPECT_EQ(ModesOf(provider::kBing), (Numbers{1, 3}));
  EXPECT_EQ(ModesOf(provider::kOpenRouteService), (Numbers{1, 3, 4}));
  EXPECT_EQ(ModesOf(provider::kHere), (Numbers{1, 2, 3, 4}));
  EXPECT_EQ(ModesOf(provider::kTomTom), (Numbers{1, 3, 4, 5, 6, 7}));
  EXPECT_EQ(ModesOf(provider::kTomTom6), (Numbers{1, 3, 4, 5, 6, 7}));
  EXPECT_EQ(ModesOf(provider::kViaMichelin), (Numbers{1, 2, 3, 4}));
  EXPECT_EQ(ModesOf(provider::kOsrm), (Numbers{1}));
  EXPECT_EQ(ModesOf(provider::kIgn), (Numbers{1, 3}));
  EXPECT_EQ(ModesOf(provider::kWazeUs), (Numbers{0}));
  EXPECT_EQ(ModesOf(provider::kWazeWorld), (Numbers{0}));
  EXPECT_EQ(ModesOf(provider::kStraight), (Numbers{0}));
  EXPECT_EQ(ModesOf(provider::kOfflineRoads), (Numbers{1, 2, 3, 4, 5}));
  EXPECT_EQ(ModesOf(provider::kGeonames), Numbers{});
}

TEST(TravelModes, SayWhatAModeOffers) {
  struct Expected {
    int32_t provider;
    uint32_t mode;
    uint32_t capabilities;
    Numbers types;
    std::string avoidances;  // a letter for each kind in the table's order
  };
  const Expected kExpected[] = {
      {provider::kGoogle, 1, 2, {}, "MTB"},
      {provider::kGoogle, 3, 1, {}, ""},
      {provider::kBing, 1, 2, {1, 2}, "MT"},
      {provider::kOpenRouteService, 1, 2, {1, 2}, "MT"},
      {provider::kOpenRouteService, 4, 1, {}, ""},
      {provider::kHere, 1, 2, {1, 2}, "MTBRUD"},
      {provider::kHere, 2, 6, {1, 2}, "MTBRUD"},
      {provider::kHere, 4, 1, {}, ""},
      {provider::kTomTom, 6, 10, {1, 2, 4, 5}, "MTBD"},
      {provider::kTomTom, 7, 2, {1, 2, 4}, "MTBD"},
      {provider::kViaMichelin, 2, 2, {0, 1, 2, 3, 4}, "T"},
      {provider::kViaMichelin, 4, 1, {}, ""},
      {provider::kOsrm, 1, 1, {}, ""},
      {provider::kIgn, 1, 2, {1, 2}, "TU"},
      {provider::kIgn, 3, 1, {}, ""},
      {provider::kWazeWorld, 0, 1, {}, ""},
  };
  for (const Expected& row : kExpected) {
    const TravelModes modes = TravelModesOf(row.provider);
    ASSERT_EQ(modes.count(row.mode), 1u);
    const CTravelModeInfo& info = *modes.at(row.mode);
    EXPECT_EQ(info.Capabilities(), row.capabilities);
    EXPECT_EQ(info.RouteTypes(), row.types);
    std::string avoidances;
    const std::pair<char, OfferedAndDefault> kKinds[] = {
        {'M', info.Motorways()},   {'T', info.Tolls()},   {'B', info.BoatFerries()},
        {'R', info.RailFerries()}, {'U', info.Tunnels()}, {'D', info.DirtRoads()}};
    for (const auto& [letter, kind] : kKinds) {
      if (kind.first) avoidances += letter;
      EXPECT_TRUE(kind.second);
    }
    EXPECT_EQ(avoidances, row.avoidances) << row.provider << ' ' << row.mode;
    EXPECT_EQ(info.HasRouteChoice(), row.types.size() > 1);
    EXPECT_EQ(MakeRouteOptions(info.Capabilities())->Capabilities(), row.capabilities);
  }
}

TEST(TravelModes, TellTheRangesOfTrucks) {
  const TravelModes modes = TravelModesOf(provider::kHere);
  const auto* const truck = dynamic_cast<const TruckModeInfo*>(modes.at(2).get());
  ASSERT_NE(truck, nullptr);
  EXPECT_EQ(truck->Tractor(), OfferedAndDefault(true, false));
  EXPECT_EQ(truck->Trailers(), MaximumAndMinimum(4, 0));
  EXPECT_EQ(truck->Reserved(), MaximumAndMinimum(0, 0));
  EXPECT_EQ(truck->HazardCategories(), (Numbers{0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}));
  EXPECT_EQ(truck->LimitedWeight(), MaximumAndMinimum(10000, 30));
  EXPECT_EQ(truck->WeightPerAxle(), MaximumAndMinimum(10000, 50));
  EXPECT_EQ(truck->Height(), MaximumAndMinimum(500, 20));
  EXPECT_EQ(truck->Width(), MaximumAndMinimum(500, 30));
  EXPECT_EQ(truck->Length(), MaximumAndMinimum(3000, 80));
  EXPECT_EQ(dynamic_cast<const TruckModeInfo*>(modes.at(1).get()), nullptr);
}

TEST(TravelModes, TellTheCharactersOfWays) {
  const TravelModes modes = TravelModesOf(provider::kTomTom);
  const auto* const info = dynamic_cast<const RouteCharacterModeInfo*>(modes.at(5).get());
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(info->Hilliness(), (Numbers{0, 1, 2}));
  EXPECT_EQ(info->Windingness(), (Numbers{0, 1, 2}));
  EXPECT_EQ(info->AvoidUsedRoads(), OfferedAndDefault(true, true));
  EXPECT_EQ(dynamic_cast<const RouteCharacterModeInfo*>(modes.at(7).get()), nullptr);
}

TEST(TravelModes, AreFoundByProviderAndMode) {
  EXPECT_EQ(FindTravelMode(provider::kGoogle, 2), nullptr);
  EXPECT_EQ(FindTravelMode(provider::kGoogle, 77), nullptr);
  const TravelModeRow* const row = FindTravelMode(provider::kIgn, 1);
  ASSERT_NE(row, nullptr);
  EXPECT_TRUE(row->HasType(2));
  EXPECT_FALSE(row->HasType(4));
  EXPECT_EQ(FirstTravelMode(provider::kGoogle), 1u);
  EXPECT_EQ(FirstTravelMode(provider::kWazeUs), 0u);
  EXPECT_EQ(FirstTravelMode(provider::kGeonames), 0u);
}

// Every service that gives directions has modes, and only those.
TEST(TravelModes, CoverAllServicesWithDirections) {
  for (const Service& service : Services()) {
    if (service.id == kNoProviderId) continue;
    EXPECT_EQ(!TravelModesOf(service.id).empty(), (service.abilities & kCanDirections) != 0)
        << service.name;
  }
}

}  // namespace
