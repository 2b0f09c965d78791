// What the page asks of the network, answered by servers of ours.

#include "planner/online_services.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/text.h"
#include "net/internet_exception.h"
#include "services/service_access.h"
#include "services/service_registry.h"
#include "services/service_table.h"
#include "tests/loopback_server.h"
#include "tests/planner/played_window.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Online : public testing::Test {
 protected:
  Online() {
    CServiceRegistry::Instance().Clear();
    FillServiceRegistry(CServiceRegistry::Instance());
    setenv("XDG_CACHE_HOME", home.Folder().PathTo("cache").c_str(), 1);
  }
  ~Online() override {
    SetServiceValues({});
    unsetenv("XDG_CACHE_HOME");
  }

  /// Sends what goes to these services to the test's server.
  void Reach(std::initializer_list<const char*> names) {
    ServiceValuesByName all;
    for (const char* const name : names) {
      all[name].url = server.Url();
      all[name].key = "KEY";
    }
    SetServiceValues(all);
  }
  std::string FirstLine() const {
    const std::string request = server.Requests().at(0);
    return request.substr(0, request.find('\r'));
  }
  static CGpsCoordinate Colmar() { return MakePoint(48.0777, 7.358); }

  const SettingsHome home;
  CSettings settings;
  CallLog log;
  PostBox posts;
  std::string body;
  LoopbackServer server{[this](const std::string&) { return HttpReply(body); }};
  OnlineServices services{settings, posts};
};

TEST_F(Online, NothingIsAskedOfServicesThatAreNotSetUp) {
  Reach({});
  settings.findProvider = provider::kGoogle;
  EXPECT_FALSE(services.FindAddress(Colmar()));
  settings.findProvider = 12345;
  EXPECT_FALSE(services.FindAddress(Colmar()));
  EXPECT_FALSE(services.FindElevation(Colmar()));
  EXPECT_FALSE(services.FindCountry());
  EXPECT_TRUE(server.Requests().empty());
}

TEST_F(Online, AddressesComeFromTheFinderInUse) {
  Reach({"google", "nominatim"});
  settings.findProvider = provider::kGoogle;
  body = R"({"status": "OK", "results": [{"formatted_address": "Rue des Clefs, Colmar",
             "geometry": {"location": {"lat": 48.0778, "lng": 7.3581}}}]})";
  const std::optional<CGpsNamedPoint> found = services.FindAddress(Colmar());
  ASSERT_TRUE(found);
  EXPECT_EQ(found->name, "Rue des Clefs, Colmar");
  EXPECT_EQ(found->latitude, 48.0778);
  EXPECT_THAT(FirstLine(), HasSubstr("latlng=48.077700,7.358000"));
  body = R"({"status": "ZERO_RESULTS", "results": []})";
  EXPECT_FALSE(services.FindAddress(Colmar()));
  settings.findProvider = provider::kNominatim;
  services.FindAddress(Colmar());
  EXPECT_THAT(server.Requests().at(2), StartsWith("GET /reverse?"));
}

TEST_F(Online, ElevationIsThatOfTheAnswer) {
  Reach({"google"});
  body = R"({"status": "OK", "results": [{"elevation": 190.5,
             "location": {"lat": 48.0777, "lng": 7.358}}]})";
  const std::optional<CGpsNamedPoint> found = services.FindElevation(Colmar());
  ASSERT_TRUE(found);
  EXPECT_EQ(found->altitude, 190.5);
  body = "no JSON";
  EXPECT_FALSE(services.FindElevation(Colmar()));
}

TEST_F(Online, PanoramasComeFromTheirOwnAddress) {
  Reach({"google-panorama"});
  body = R"({"Location": {"lat": "48.07", "lng": "7.35", "description": "Rue des Clefs",
             "region": "Alsace"}})";
  const std::optional<CGpsNamedPoint> found = services.FindPanorama(Colmar());
  ASSERT_TRUE(found);
  EXPECT_EQ(found->name, "Rue des Clefs");
  EXPECT_THAT(FirstLine(), StartsWith("GET /cbk?"));
  body = "{}";
  EXPECT_FALSE(services.FindPanorama(Colmar()));
}

TEST_F(Online, TheCountryIsThatOfThisMachine) {
  Reach({"geoip"});
  body = R"({"code": "FR", "name": "France", "lat": 46.2, "lng": 2.2})";
  const std::optional<UserCountry> country = services.FindCountry();
  ASSERT_TRUE(country);
  EXPECT_EQ(country->code, "FR");
  EXPECT_EQ(country->latitude, 46.2);
  EXPECT_EQ(country->longitude, 2.2);
}

TEST_F(Online, BodiesAndFilesAreFetched) {
  body = "a body";
  EXPECT_EQ(services.Get(server.Url("/a"), "https://page.example/", "other.example"), "a body");
  EXPECT_THAT(server.Requests().at(0), StartsWith("GET /a HTTP/1.1\r\n"));
  EXPECT_THAT(server.Requests().at(0), HasSubstr("\r\nReferer: https://page.example/\r\n"));
  EXPECT_THAT(server.Requests().at(0), HasSubstr("\r\nHost: other.example\r\n"));
  const std::string path = home.Folder().PathTo("file");
  EXPECT_EQ(services.Download(server.Url("/b"), "", Utf8ToWideLossy(path)), Utf8ToWideLossy(path));
  EXPECT_EQ(home.Folder().Get("file"), "a body");
  EXPECT_THROW(services.Get("http://127.0.0.1:1/", "", ""), CInternetException);
}

// The window stands still meanwhile.
TEST_F(Online, NoAnswerIsWaitedForWithoutLimit) {
  LoopbackServer silent(
      LoopbackServer::Talk([](LoopbackConnection& connection) { connection.WaitForEnd(); }));
  ServiceValuesByName all;
  for (const char* const name : {"google", "google-panorama", "geoip"}) {
    all[name].url = silent.Url();
    all[name].key = "KEY";
  }
  SetServiceValues(all);
  EXPECT_EQ(services.WaitMs(), 10000);
  services.waitMs = 300;
  settings.findProvider = provider::kGoogle;
  EXPECT_FALSE(services.FindAddress(Colmar()));
  EXPECT_FALSE(services.FindPanorama(Colmar()));
  EXPECT_FALSE(services.FindElevation(Colmar()));
  EXPECT_FALSE(services.FindCountry());
  try {
    services.Get(silent.Url("/"), "", "");
    FAIL();
  } catch (const CInternetException& failure) {
    EXPECT_EQ(failure.code, 12002u);
  }
  for (int i = 0; i < 2000 && silent.Connections() < 5; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  EXPECT_EQ(silent.Connections(), 5);
}

TEST_F(Online, QueuedRequestsCallThePageByTheBox) {
  body = "later";
  const auto function = std::make_shared<PlayedFunction>(log);
  services.Enqueue(0, server.Url("/a"), "", "", function);
  for (int i = 0; i < 2000 && log.empty(); ++i) {
    if (posts.Pump() == 0) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0], "callback(0, later)");
}

TEST_F(Online, ThePageMayTakeAProviderAway) {
  settings.routeProvider = provider::kOsrm;
  services.UpdateProviders(R"([{"id": 10, "available": false}])");
  // The lowest of those that are left.
  EXPECT_EQ(settings.routeProvider, provider::kBing);
  settings.routeProvider = provider::kTomTom;
  services.UpdateProviders("[]");
  EXPECT_EQ(settings.routeProvider, provider::kTomTom);
}

TEST_F(Online, AProviderWithoutAnAccountStaysSelected) {
  for (const int32_t id : {provider::kStraight, provider::kValhalla, provider::kOfflineRoads}) {
    settings.routeProvider = id;
    services.UpdateProviders("[]");
    EXPECT_EQ(settings.routeProvider, id);
    services.UpdateProviders("no JSON");
    EXPECT_EQ(settings.routeProvider, id);
  }
}

TEST_F(Online, DirectionsAreThoseOfTheSettings) {
  settings.routeProvider = provider::kOsrm;
  EXPECT_EQ(services.Directions()->Provider(), provider::kOsrm);
}

}  // namespace
