#include "conversion/geocoder.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace {

// Knows one place, and the id under which it was registered.
class OnePlaceGeocoder : public CGeocoder {
 public:
  explicit OnePlaceGeocoder(int32_t id) : m_id(id) {}

  uint32_t Search(const std::string& query) override {
    CGpsNamedPoint place;
    place.name = query;
    m_results.assign(1, place);
    return m_status = kServiceSuccess;
  }
  int32_t GetId() const override { return m_id; }

 private:
  int32_t m_id;
};

GeocoderRegistration::Maker MakerFor(int32_t id) {
  return [id] { return std::make_unique<OnePlaceGeocoder>(id); };
}

TEST(GeocoderFactory, HasNoGeocoderUntilOneIsRegistered) {
  for (int32_t id = -1; id <= 25; ++id) EXPECT_EQ(CreateGeocoder(id), nullptr) << id;
}

TEST(GeocoderFactory, MakesANewGeocoderEachTime) {
  const GeocoderRegistration registration(kProviderGoogle, MakerFor(kProviderGoogle));
  const auto first = CreateGeocoder(kProviderGoogle);
  const auto second = CreateGeocoder(kProviderGoogle);
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(first, second);
  EXPECT_EQ(first->GetId(), 2);
  EXPECT_EQ(CreateGeocoder(3), nullptr);
}

TEST(GeocoderFactory, TheLatestRegistrationCountsUntilItEnds) {
  const GeocoderRegistration first(kProviderGoogle, MakerFor(100));
  auto second = std::make_unique<GeocoderRegistration>(kProviderGoogle, MakerFor(200));
  const GeocoderRegistration other(7, MakerFor(300));
  EXPECT_EQ(CreateGeocoder(kProviderGoogle)->GetId(), 200);
  second.reset();
  EXPECT_EQ(CreateGeocoder(kProviderGoogle)->GetId(), 100);
  EXPECT_EQ(CreateGeocoder(7)->GetId(), 300);
}

TEST(GeocoderFactory, ForgetsAnEndedRegistration) {
  { const GeocoderRegistration registration(kProviderGoogle, MakerFor(kProviderGoogle)); }
  EXPECT_EQ(CreateGeocoder(kProviderGoogle), nullptr);
}

TEST(Geocoder, IsIdleAndEmptyBeforeTheFirstSearch) {
  OnePlaceGeocoder geocoder(kProviderGoogle);
  EXPECT_EQ(geocoder.GetStatus(), 4u);
  EXPECT_TRUE(geocoder.GetResults().empty());
  EXPECT_EQ(geocoder.Search("Paris"), kServiceSuccess);
  EXPECT_EQ(geocoder.GetStatus(), kServiceSuccess);
  ASSERT_EQ(geocoder.GetResults().size(), 1u);
  EXPECT_EQ(geocoder.GetResults()[0].name, "Paris");
}

}  // namespace
