#include "services/service_access.h"

#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "services/service_registry.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The registry as it is at start, and nothing of the user's.
class ServiceAccessTest : public testing::Test {
 public:
  ServiceAccessTest() { FillServiceRegistry(CServiceRegistry::Instance()); }
  ~ServiceAccessTest() override {
    CServiceRegistry::Instance().Clear();
    SetServiceValues({});
  }
};

TEST(ServiceTable, HasEachNameAndNumberOnce) {
  std::set<std::string_view> names;
  std::set<int32_t> ids;
  for (const Service& service : Services()) {
    EXPECT_TRUE(names.insert(service.name).second) << service.name;
    if (service.id != kNoProviderId) {
      EXPECT_TRUE(ids.insert(service.id).second) << service.name;
    }
    EXPECT_NE(FindService(service.account), nullptr) << service.name;
    EXPECT_NE(LoadTextUtf8(service.labelTextId), "") << service.name;
    EXPECT_FALSE(service.address.ends_with('/')) << service.name;
  }
  const std::set<int32_t> kAll = {0,  2,  3,   5,   6,   7,   8,   9,   10,  11,  17,  18, 19,
                                  20, 21, 100, 101, 102, 103, 104, 105, 106, 107, 108, 109};
  EXPECT_EQ(ids, kAll);
}

TEST(ServiceTable, FindsByNameAndNumber) {
  ASSERT_NE(FindService("Google"), nullptr);
  EXPECT_EQ(FindService("Google")->id, 2);
  EXPECT_EQ(FindService(18)->name, "waze-world");
  EXPECT_EQ(FindService("gogle"), nullptr);
  EXPECT_EQ(FindService(4), nullptr);
  EXPECT_EQ(FindService(kNoProviderId), nullptr);
}

TEST(ServiceTable, TellsWhatEachCanDo) {
  EXPECT_EQ(FindService("google")->abilities, 1u + 2 + 4 + 8 + 16);
  EXPECT_EQ(FindService("tomtom-6")->abilities, 1u);
  EXPECT_EQ(FindService("tomtom-search")->abilities, 2u + 4);
  EXPECT_EQ(FindService("geonames")->abilities, 64u);
  EXPECT_EQ(FindService("google-panorama")->abilities, 32u);
  EXPECT_EQ(FindService("osrm")->abilities, 1u);
}

TEST_F(ServiceAccessTest, IsTheAccountAtTheDefaultAddress) {
  const ServiceAccess bing = AccessTo("bing");
  EXPECT_EQ(bing.url, "https://dev.virtualearth.net");
  EXPECT_EQ(bing.key, "");
  EXPECT_EQ(bing.language, "en-US");
}

TEST_F(ServiceAccessTest, IsEmptyWithoutAnAccount) {
  const ServiceAccess google = AccessTo("google");
  EXPECT_EQ(google.url, "https://maps.googleapis.com");
  EXPECT_EQ(google.key + google.language + google.referrer, "");
}

TEST_F(ServiceAccessTest, PutsTheUsersValuesAboveThoseOfThePage) {
  CServiceAccount account(3);
  account.key = "key of the page";
  account.language = "it";
  account.referrer = "https://page.example/";
  CServiceRegistry::Instance().Put(account);
  ServiceValues values;
  values.key = "key of the user";
  values.language = "";
  values.url = "http://127.0.0.1:8080/prefix";
  SetServiceValues({{"bing", values}});

  const ServiceAccess bing = AccessTo("bing");
  EXPECT_EQ(bing.url, "http://127.0.0.1:8080/prefix");
  EXPECT_EQ(bing.key, "key of the user");
  EXPECT_EQ(bing.language, "");
  EXPECT_EQ(bing.referrer, "https://page.example/");
  EXPECT_TRUE(HasAddressOfUser(ServiceNamed("bing")));
  EXPECT_FALSE(HasAddressOfUser(ServiceNamed("google")));
}

TEST_F(ServiceAccessTest, SharesAnAccountButNotAnAddress) {
  ServiceValues here;
  here.key = "code";
  here.appId = "application";
  here.url = "http://127.0.0.1:1";
  ServiceValues geocoder;
  geocoder.url = "http://127.0.0.1:2";
  SetServiceValues({{"here", here}, {"here-geocoder", geocoder}});

  EXPECT_EQ(AccessTo("here-geocoder").url, "http://127.0.0.1:2");
  EXPECT_EQ(AccessTo("here-reverse").url, "https://reverse.geocoder.api.here.com");
  EXPECT_EQ(AccessTo("here-reverse").key, "code");
  EXPECT_EQ(AccessTo("here-places").appId, "application");
  EXPECT_EQ(AccessTo("here-places").language, "en-US");
}

TEST_F(ServiceAccessTest, TellsWhatIsMissing) {
  EXPECT_THAT(MissingSettings(ServiceNamed("straight")), IsEmpty());
  EXPECT_THAT(MissingSettings(ServiceNamed("osrm")), IsEmpty());
  EXPECT_THAT(MissingSettings(ServiceNamed("google-panorama")), IsEmpty());
  EXPECT_THAT(MissingSettings(ServiceNamed("waze-us")), IsEmpty());
  EXPECT_THAT(MissingSettings(ServiceNamed("nominatim")), ElementsAre("url"));
  EXPECT_THAT(MissingSettings(ServiceNamed("tripy")), ElementsAre("url"));
  for (const char* const name :
       {"google", "bing", "tomtom", "tomtom-6", "tomtom-search", "geonames", "viamichelin", "ign",
        "ors", "here-v8", "google-routes"})
    EXPECT_THAT(MissingSettings(ServiceNamed(name)), ElementsAre("key")) << name;
  EXPECT_THAT(MissingSettings(ServiceNamed("here")), ElementsAre("key", "app-id"));
  EXPECT_FALSE(IsUsable(ServiceNamed("here-geocoder")));

  ServiceValues here;
  here.key = "code";
  SetServiceValues({{"here", here}});
  EXPECT_THAT(MissingSettings(ServiceNamed("here-geocoder")), ElementsAre("app-id"));
  here.appId = "application";
  SetServiceValues({{"here", here}});
  EXPECT_TRUE(IsUsable(ServiceNamed("here-geocoder")));
}

}  // namespace
