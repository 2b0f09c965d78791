#include <string>

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "services/service_registry.h"
#include "services/service_table.h"
#include "tests/services/directions/router_asked.h"

namespace {

class AccountUpdate : public testing::Test {
 protected:
  AccountUpdate() {
    FillServiceRegistry(m_registry);
    currentProvider = 3;
  }
  ~AccountUpdate() override { currentProvider = 3; }
  CServiceRegistry m_registry;
};

TEST_F(AccountUpdate, TakesWhatThePageSays) {
  UpdateServiceRegistry(m_registry,
                        R"([{"id":5.9,"key":"K","lang":"it","referer":"https://p.example/"},)"
                        R"({"id":2,"key":"G"}])");
  EXPECT_EQ(m_registry.Get(5)->key, "K");
  EXPECT_EQ(m_registry.Get(5)->language, "it");
  EXPECT_EQ(m_registry.Get(5)->referrer, "https://p.example/");
  EXPECT_EQ(m_registry.Get(2)->key, "G");
  // The lowest number counts only when the selected one has gone.
  EXPECT_EQ(currentProvider, 3);
}

TEST_F(AccountUpdate, EmptiesWhatThePageLeavesOut) {
  ASSERT_EQ(m_registry.Get(11)->language, "en");
  UpdateServiceRegistry(m_registry, R"([{"id":11,"key":"K"}])");
  EXPECT_EQ(m_registry.Get(11)->language, "");
  EXPECT_EQ(m_registry.Get(11)->referrer, "");
}

TEST_F(AccountUpdate, ServicesAreToldNoLanguageThatThePageLeavesOut) {
  CServiceRegistry& registry = CServiceRegistry::Instance();
  registry.Clear();
  FillServiceRegistry(registry);
  const CGpsPointList points = PointsOf({{48.5, 7.25}, {49, -1}});
  const auto asked = [&points] {
    CHttpRequestSpec spec;
    EXPECT_EQ(RouterOf(provider::kTomTom)->BuildRequest(points, kCar, {}, spec), 0u);
    return spec.url;
  };
  EXPECT_NE(asked().find("&language=en&"), std::string::npos);
  UpdateServiceRegistry(registry, R"([{"id":5,"key":"K"}])");
  EXPECT_TRUE(asked().ends_with("/json?key=K&traffic=false&travelMode=car")) << asked();
  registry.Clear();
}

TEST_F(AccountUpdate, RemovesTheSelectedProviderAndTakesTheLowest) {
  UpdateServiceRegistry(m_registry, R"([{"id":3,"available":false}])");
  EXPECT_FALSE(m_registry.Has(3));
  EXPECT_EQ(currentProvider, 5);
}

TEST_F(AccountUpdate, PassesOverNumbersWithoutDirections) {
  UpdateServiceRegistry(m_registry, R"([{"id":4,"key":"K"},{"id":8,"key":"K"},)"
                                    R"({"id":7,"available":false}])");
  EXPECT_FALSE(m_registry.Has(4));
  EXPECT_EQ(m_registry.Get(8)->key, "");
  EXPECT_TRUE(m_registry.Has(7));
}

TEST_F(AccountUpdate, KeepsTheApplicationIdOfHere) {
  CHereAccount here(19);
  here.appId = "application";
  m_registry.Put(here);
  UpdateServiceRegistry(m_registry, R"([{"id":19,"key":"code"}])");
  const auto account = m_registry.Get(19);
  const auto* const kept = dynamic_cast<const CHereAccount*>(account.get());
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(kept->appId, "application");
  EXPECT_EQ(kept->key, "code");
}

TEST_F(AccountUpdate, LeavesEverythingForTextThatCannotBeRead) {
  for (const char* const text :
       {"", "null", "{}", "[", "{\"id\":5}", "[5,null,{},{\"key\":\"K\"},{\"id\":\"5\"}]",
        "[{\"id\":5,\"key\":7}]", "[{\"id\":5,\"available\":\"false\"}]"}) {
    UpdateServiceRegistry(m_registry, text);
    EXPECT_TRUE(m_registry.Has(5)) << text;
    EXPECT_EQ(m_registry.Get(5)->language, "en") << text;
    EXPECT_EQ(currentProvider, 3) << text;
  }
}

}  // namespace
