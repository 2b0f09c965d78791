#include "services/registered_providers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "services/directions/route_providers.h"
#include "tests/settings_home.h"

namespace {

using testing::ElementsAre;
using testing::IsSupersetOf;

class RegisteredProvidersTest : public testing::Test {
 protected:
  RegisteredProvidersTest() {
    FillServiceRegistry(m_registry);
    RegisterOwnRouteProviders(m_registry);
  }
  static void Store(const char* key, uint32_t number) {
    storage::OpenUserStorage().CreateFolder(kSettingsRoot).CreateValue(key).WriteNumber(number);
  }

  SettingsHome m_home;
  CServiceRegistry m_registry;
  RegisteredProviders m_providers{m_registry};
};

TEST_F(RegisteredProvidersTest, AreThoseThatTheProgramBrings) {
  EXPECT_EQ(m_providers.DefaultProvider(), 3);
  EXPECT_THAT(m_providers.Providers(), IsSupersetOf({0, 2, 3, 5, 9, 10, 19, 100, 103}));
  EXPECT_EQ(m_providers.VehiclesOf(999), std::nullopt);
  // On foot or by car.
  EXPECT_THAT(*m_providers.VehiclesOf(3), ElementsAre(1, 3));
}

TEST_F(RegisteredProvidersTest, TakeThePlaceOfOneThatIsStoredAndUnknown) {
  Store("RouteProvider", 999);
  Store("VehicleType", 1);
  CSettings settings;
  settings.Load();
  settings.CheckProvider(m_providers);
  EXPECT_EQ(settings.routeProvider, 3);
  EXPECT_EQ(settings.vehicleType, 0);
}

TEST_F(RegisteredProvidersTest, KeepOnlyTheVehiclesThatTheyHave) {
  Store("RouteProvider", 3);
  Store("VehicleType", 2);
  CSettings settings;
  settings.Load();
  settings.CheckProvider(m_providers);
  EXPECT_EQ(settings.routeProvider, 3);
  EXPECT_EQ(settings.vehicleType, 0);
  Store("RouteProvider", 19);
  settings.Load();
  settings.CheckProvider(m_providers);
  EXPECT_EQ(settings.vehicleType, 2);
}

}  // namespace
