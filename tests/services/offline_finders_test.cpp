#include "services/offline/offline_finders.h"

#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "services/service_registry.h"
#include "services/service_table.h"

namespace {

TEST(OfflineGeocoder, FindsTownsByTheRegistry) {
  CServiceRegistry registry;
  EXPECT_EQ(registry.CreateGeocoder(provider::kOfflinePlaces), nullptr);
  RegisterOfflinePlaces(registry);
  const std::unique_ptr<CGeocoder> geocoder = registry.CreateGeocoder(provider::kOfflinePlaces);
  ASSERT_NE(geocoder, nullptr);
  EXPECT_EQ(geocoder->GetId(), 101);
  EXPECT_EQ(geocoder->GetStatus(), kServiceInvalid);
  EXPECT_EQ(geocoder->Search("Obernai"), kServiceSuccess);
  ASSERT_FALSE(geocoder->GetResults().empty());
  EXPECT_EQ(geocoder->GetResults()[0].name, "Obernai, Grand Est, France");
  EXPECT_NEAR(geocoder->GetResults()[0].latitude, 48.46, 0.01);
  EXPECT_NEAR(geocoder->GetResults()[0].longitude, 7.48, 0.01);
  EXPECT_LE(geocoder->GetResults().size(), kOfflineAnswers);
  EXPECT_EQ(geocoder->Search("Xyzzyqwert"), kServiceNoResults);
  EXPECT_TRUE(geocoder->GetResults().empty());
}

TEST(OfflineReverseGeocoder, NamesTheNearestTown) {
  CServiceRegistry registry;
  RegisterOfflinePlaces(registry);
  const auto geocoder = registry.CreateReverseGeocoder(provider::kOfflinePlaces);
  ASSERT_NE(geocoder, nullptr);
  EXPECT_EQ(geocoder->GetId(), 101);
  CGpsCoordinate position;
  position.latitude = 48.46;
  position.longitude = 7.49;
  EXPECT_EQ(geocoder->Search(position), kServiceSuccess);
  ASSERT_EQ(geocoder->GetResults().size(), 1u);
  EXPECT_EQ(geocoder->GetResults()[0].name, "Obernai, Grand Est, France");
  position.latitude = 91;
  EXPECT_EQ(geocoder->Search(position), kServiceNoResults);
  EXPECT_TRUE(geocoder->GetResults().empty());
}

TEST(OfflinePlaceSearch, FindsTownsAround) {
  CServiceRegistry registry;
  RegisterOfflinePlaces(registry);
  const auto search = CreatePlaceSearch(provider::kOfflinePlaces);
  ASSERT_NE(search, nullptr);
  EXPECT_EQ(search->GetId(), 101);
  std::vector<uint32_t> told;
  search->SetCompletion([&told](uint32_t status, const PlaceList& places) {
    told.push_back(status);
    EXPECT_EQ(places.empty(), status != kServiceSuccess);
  });
  CGpsCoordinate strasbourg;
  strasbourg.latitude = 48.58;
  strasbourg.longitude = 7.75;
  search->Search("obern", strasbourg, 30'000);
  EXPECT_EQ(search->Wait(-1), kServiceSuccess);
  ASSERT_EQ(search->GetResults().size(), 1u);
  EXPECT_EQ(search->GetResults()[0].name, "Obernai, Grand Est, France");
  search->Search("obern", strasbourg, 1'000);
  EXPECT_EQ(search->Wait(0), kServiceNoResults);
  EXPECT_TRUE(search->GetResults().empty());
  search->SearchNear("Obernai", strasbourg);
  EXPECT_EQ(search->Wait(0), kServiceSuccess);
  EXPECT_EQ(told, (std::vector<uint32_t>{kServiceSuccess, kServiceNoResults, kServiceSuccess}));
}

}  // namespace
