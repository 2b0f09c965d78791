#include "services/offline/offline_finders.h"

#include <memory>

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

}  // namespace
