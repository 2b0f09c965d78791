// What is known of the services by their numbers.

#include "services/service_table.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/localized_text.h"

namespace {

struct Row {
  int32_t id;
  bool hasDirections;
  bool hasGeocoding;  // in both directions
  uint32_t labelTextId;
  std::string_view label;
};

// Zero where the service has no name of its own in the lists of providers.
constexpr Row kRows[] = {
    {0, true, false, 235, "Straight lines"},
    {2, true, true, 279, "Google Maps"},
    {3, true, true, 280, "Microsoft Bing Maps"},
    {5, true, true, 329, "TomTom Maps"},
    {6, true, false, 329, "TomTom Maps"},
    {7, false, true, 0, ""},
    {8, false, false, 0, ""},
    {9, true, true, 281, "ViaMichelin"},
    {10, true, false, 292, "OpenStreetMap"},
    {11, true, false, 0, ""},
    {17, true, true, 181, "Waze USA"},
    {18, true, true, 182, "Waze World"},
    {19, true, true, 327, "HERE"},
    {20, true, false, 0, ""},
    {21, true, false, 297, "Tripy RoadTracer Web"},
};

TEST(ServicesByNumber, CanDoWhatTheirRowsSay) {
  for (const Row& row : kRows) {
    const Service* const service = FindService(row.id);
    ASSERT_NE(service, nullptr) << row.id;
    EXPECT_EQ((service->abilities & kCanDirections) != 0, row.hasDirections) << row.id;
    EXPECT_EQ((service->abilities & kCanGeocode) != 0, row.hasGeocoding) << row.id;
    EXPECT_EQ((service->abilities & kCanReverse) != 0, row.hasGeocoding) << row.id;
  }
}

TEST(ServicesByNumber, HaveTheirNamesForTheUser) {
  for (const Row& row : kRows) {
    if (row.labelTextId == 0) continue;
    EXPECT_EQ(FindService(row.id)->labelTextId, row.labelTextId) << row.id;
    EXPECT_EQ(LoadTextUtf8(row.labelTextId), row.label);
  }
}

TEST(ServicesByNumber, AreNoneBetweenThem) {
  for (const int32_t id : {-2, 1, 4, 12, 13, 14, 15, 16, 22, 99, 1000})
    EXPECT_EQ(FindService(id), nullptr) << id;
}

// Work that is done under an address of its own.
TEST(ServicesByNumber, HaveTheirFindersWhereTheyAnswer) {
  const struct {
    const char* provider;
    ServiceAbility ability;
    const char* service;
  } kExpected[] = {{"tomtom", kCanGeocode, "tomtom-search"},
                   {"tomtom", kCanReverse, "tomtom-search"},
                   {"tomtom", kCanDirections, "tomtom"},
                   {"tomtom-search", kCanGeocode, "tomtom-search"},
                   {"here", kCanGeocode, "here-geocoder"},
                   {"here", kCanReverse, "here-reverse"},
                   {"here", kCanSearch, "here-places"},
                   {"waze-us", kCanGeocode, "waze-us-search"},
                   {"waze-world", kCanReverse, "waze-world-reverse"},
                   {"google", kCanPanorama, "google-panorama"},
                   {"google", kCanElevation, "google"}};
  for (const auto& row : kExpected)
    EXPECT_EQ(ServiceFor(ServiceNamed(row.provider), row.ability).name, row.service)
        << row.provider;
}

}  // namespace
