// What of the settings reaches the directions provider that is asked for a leg.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "planner/service_directions.h"
#include "services/service_access.h"
#include "services/service_registry.h"
#include "services/service_table.h"
#include "tests/loopback_server.h"
#include "tests/planner/played_window.h"

namespace {

using testing::HasSubstr;
using testing::Not;

class AskedWishes : public testing::Test {
 protected:
  AskedWishes() {
    CServiceRegistry::Instance().Clear();
    FillServiceRegistry(CServiceRegistry::Instance());
    ServiceValuesByName values;
    values["google"].url = server.Url();
    values["google"].key = "KEY";
    SetServiceValues(values);
    settings.routeProvider = provider::kGoogle;
  }
  ~AskedWishes() override { SetServiceValues({}); }

  /// The first line of the request for the way from 1, 2 to 3, 4.
  std::string Ask() {
    const size_t asked = server.Requests().size();
    const DirectionsAnswer answer =
        directions.Ask({MakePoint(1, 2, "A"), MakePoint(3, 4, "B")}, [] { return true; });
    EXPECT_EQ(answer.status, 1u);
    EXPECT_EQ(answer.provider, 2);
    const std::string request = server.Requests().at(asked);
    return request.substr(0, request.find('\r'));
  }

  const SettingsHome home;
  CSettings settings;
  PostBox posts;
  LoopbackServer server{
      [](const std::string&) { return HttpReply(R"({"status": "ZERO_RESULTS", "routes": []})"); }};
  ServiceDirections directions{settings, posts};
};

TEST_F(AskedWishes, AvoidedRoadsAreAvoided) {
  settings.vehicleType = 1;
  EXPECT_THAT(Ask(), HasSubstr("&mode=driving&origin=1.000000,2.000000"
                               "&destination=3.000000,4.000000 HTTP"));
  settings.avoidTolls = true;
  EXPECT_THAT(Ask(), HasSubstr("&mode=driving&avoid=tolls&origin=1.000000,2.000000"));
  settings.avoidTolls = false;
  settings.avoidHighway = true;
  EXPECT_THAT(Ask(), HasSubstr("&mode=driving&avoid=highways&origin=1.000000,2.000000"));
}

TEST_F(AskedWishes, TheVehicleIsThatOfTheSettings) {
  settings.avoidTolls = true;
  settings.vehicleType = 4;
  const std::string request = Ask();
  EXPECT_THAT(request, HasSubstr("&mode=bicycling&origin="));
  EXPECT_THAT(request, Not(HasSubstr("avoid")));
}

}  // namespace
