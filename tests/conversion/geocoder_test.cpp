#include "conversion/geocoder.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace {

// Knows every place.
class OnePlaceGeocoder : public CGeocoder {
 public:
  uint32_t Search(const std::string& query) override {
    CGpsNamedPoint place;
    place.name = query;
    m_results.assign(1, place);
    return m_status = kServiceSuccess;
  }
  int32_t GetId() const override { return kProviderGoogle; }
};

TEST(Geocoder, IsIdleAndEmptyBeforeTheFirstSearch) {
  OnePlaceGeocoder geocoder;
  EXPECT_EQ(geocoder.GetStatus(), 4u);
  EXPECT_TRUE(geocoder.GetResults().empty());
  EXPECT_EQ(geocoder.Search("Paris"), kServiceSuccess);
  EXPECT_EQ(geocoder.GetStatus(), kServiceSuccess);
  ASSERT_EQ(geocoder.GetResults().size(), 1u);
  EXPECT_EQ(geocoder.GetResults()[0].name, "Paris");
}

}  // namespace
