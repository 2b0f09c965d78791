#include "conversion/itinerary_hand_off.h"

#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/list_builder.h"

namespace {

TEST(ItineraryHandOff, IsNotThereWithoutARegistration) {
  EXPECT_EQ(HandOverItinerary(CGpsRoute()), kStatusNotImplemented);
}

TEST(ItineraryHandOff, LatestRegistrationCountsAsLongAsItLives) {
  const CGpsRoute list = MakeList("trip", MakePoint(1, 2, "a"));
  const CGpsPointArray* taken = nullptr;
  const ItineraryHandOffRegistration outer([](const CGpsPointArray&) { return 5u; });
  {
    const ItineraryHandOffRegistration inner([&taken](const CGpsPointArray& given) {
      taken = &given;
      return 0u;
    });
    EXPECT_EQ(HandOverItinerary(list), 0u);
    EXPECT_EQ(taken, &list);
  }
  EXPECT_EQ(HandOverItinerary(list), 5u);
}

}  // namespace
