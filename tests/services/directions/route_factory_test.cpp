// Which class answers for which number.

#include <cstdint>
#include <map>
#include <memory>

#include <gtest/gtest.h>

#include "services/directions/bing_router.h"
#include "services/directions/google_router.h"
#include "services/directions/here_router.h"
#include "services/directions/ign_router.h"
#include "services/directions/openroute_router.h"
#include "services/directions/osrm_router.h"
#include "services/directions/route_providers.h"
#include "services/directions/straight_line_router.h"
#include "services/directions/tomtom_router.h"
#include "services/directions/tripy_router.h"
#include "services/directions/viamichelin_router.h"
#include "services/directions/waze_router.h"
#include "services/service_registry.h"

namespace {

template <typename Router>
bool Is(const CRouteProvider* provider) {
  return dynamic_cast<const Router*>(provider) != nullptr;
}

TEST(RouteFactory, KnowsTheClassOfEachNumber) {
  const std::map<int32_t, bool (*)(const CRouteProvider*)> kClasses = {
      {0, Is<CStraightLineRouter>}, {2, Is<CGoogleRouter>}, {3, Is<CBingRouter>},
      {5, Is<CTomTomRouter>},       {6, Is<CTomTomRouter>}, {9, Is<CViaMichelinRouter>},
      {10, Is<COsrmRouter>},        {11, Is<CIgnRouter>},   {17, Is<CWazeRouter>},
      {18, Is<CWazeRouter>},        {19, Is<CHereRouter>},  {20, Is<COpenRouteRouter>},
      {21, Is<CTripyRouter>},
  };
  const CServiceRegistry registry;
  for (int32_t id = -1; id < 120; ++id) {
    const std::unique_ptr<CRouteProvider> made = registry.CreateRouteProvider(id);
    const auto expected = kClasses.find(id);
    ASSERT_EQ(made != nullptr, expected != kClasses.end()) << id;
    if (!made) continue;
    EXPECT_TRUE(expected->second(made.get())) << id;
    EXPECT_EQ(made->GetId(), id);
  }
}

TEST(RouteFactory, AsksTheTableOfMakersFirst) {
  CServiceRegistry registry;
  registry.RegisterRouteProvider(2, [] { return MakeRouteProvider(10); });
  registry.RegisterRouteProvider(4, [] { return MakeRouteProvider(0); });
  EXPECT_TRUE(Is<COsrmRouter>(registry.CreateRouteProvider(2).get()));
  EXPECT_TRUE(Is<CStraightLineRouter>(registry.CreateRouteProvider(4).get()));
  registry.RegisterRouteProvider(2, nullptr);
  registry.RegisterRouteProvider(4, nullptr);
  EXPECT_TRUE(Is<CGoogleRouter>(registry.CreateRouteProvider(2).get()));
  EXPECT_EQ(registry.CreateRouteProvider(4), nullptr);
}

// A number that a maker stands for can get an account from the page.
TEST(RouteFactory, DecidesWhichAccountsThePageMayMake) {
  CServiceRegistry registry;
  UpdateServiceRegistry(registry, R"([{"id":4,"key":"K"},{"id":103,"key":"K"}])");
  EXPECT_FALSE(registry.Has(4));
  EXPECT_FALSE(registry.Has(103));
  RegisterOwnRouteProviders(registry);
  UpdateServiceRegistry(registry, R"([{"id":4,"key":"K"},{"id":103,"key":"K"}])");
  EXPECT_FALSE(registry.Has(4));
  EXPECT_EQ(registry.Get(103)->key, "K");
}

TEST(RouteFactory, KnowsOurOwnOnceTheyAreRegistered) {
  CServiceRegistry registry;
  RegisterOwnRouteProviders(registry);
  for (const int32_t id : {100, 103, 104, 105, 106, 107, 108}) {
    const std::unique_ptr<CRouteProvider> made = registry.CreateRouteProvider(id);
    ASSERT_NE(made, nullptr) << id;
    EXPECT_EQ(made->GetId(), id);
  }
  for (const int32_t id : {101, 102, 109}) EXPECT_EQ(registry.CreateRouteProvider(id), nullptr);
}

}  // namespace
