#include "settings/service_values.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/settings_home.h"

namespace {

class ServiceValuesStore : public testing::Test {
 protected:
  static storage::SFolder Folder(const std::string& service) {
    return storage::OpenUserStorage().CreateFolder("Software\\CorvaneMap\\Services\\" + service);
  }
  static ServiceValuesByName Loaded() {
    ServiceValuesByName values{{"gone", {}}};
    EXPECT_EQ(LoadServiceValues(storage::OpenUserStorage(), values), kStatusSuccess);
    return values;
  }

  SettingsHome m_home;
};

TEST_F(ServiceValuesStore, IsEmptyAtFirstAndMakesNoFile) {
  EXPECT_THAT(Loaded(), testing::IsEmpty());
  EXPECT_FALSE(m_home.HasFile());
}

TEST_F(ServiceValuesStore, KeepsTextsInAFolderAService) {
  const ServiceValues values{"http://127.0.0.1:8080/v1", "s\u00E9same", "app", "fr", "http://me"};
  ASSERT_EQ(SaveServiceValues(storage::OpenUserStorage(), {{"here", values}}), kStatusSuccess);
  EXPECT_EQ(Folder("here").OpenValue("Url").ReadText(), u"http://127.0.0.1:8080/v1");
  EXPECT_EQ(Folder("here").OpenValue("Key").ReadText(), u"s\u00E9same");
  EXPECT_EQ(Folder("here").OpenValue("AppId").ReadText(), u"app");
  EXPECT_EQ(Folder("here").OpenValue("Language").ReadText(), u"fr");
  EXPECT_EQ(Folder("here").OpenValue("Referrer").ReadText(), u"http://me");
  EXPECT_EQ(Loaded(), (ServiceValuesByName{{"here", values}}));
}

TEST_F(ServiceValuesStore, TellsAnEmptyTextFromNone) {
  ServiceValues values;
  values.language = "";
  ASSERT_EQ(SaveServiceValues(storage::OpenUserStorage(), {{"google", values}}), kStatusSuccess);
  const ServiceValuesByName loaded = Loaded();
  EXPECT_EQ(loaded.at("google").language, "");
  EXPECT_FALSE(loaded.at("google").url.has_value());
}

TEST_F(ServiceValuesStore, WhatIsAbsentIsRemoved) {
  ServiceValues values;
  values.key = "secret";
  values.url = "http://a";
  ASSERT_EQ(SaveServiceValues(storage::OpenUserStorage(), {{"osrm", values}}), kStatusSuccess);
  values.key.reset();
  ASSERT_EQ(SaveServiceValues(storage::OpenUserStorage(), {{"osrm", values}}), kStatusSuccess);
  EXPECT_THAT(Folder("osrm").ValueNames(), testing::ElementsAre("Url"));
  ASSERT_EQ(SaveServiceValues(storage::OpenUserStorage(), {{"osrm", {}}}), kStatusSuccess);
  EXPECT_THAT(Loaded(), testing::IsEmpty());
  EXPECT_THAT(storage::OpenUserStorage().OpenFolder("Software\\CorvaneMap\\Services").FolderNames(),
              testing::IsEmpty());
}

TEST_F(ServiceValuesStore, ServicesDoNotDisturbEachOther) {
  ServiceValues values;
  values.key = "1";
  ASSERT_EQ(SaveServiceValues(storage::OpenUserStorage(), {{"here", values}}), kStatusSuccess);
  values.key = "2";
  ASSERT_EQ(SaveServiceValues(storage::OpenUserStorage(), {{"here-v8", values}}), kStatusSuccess);
  ASSERT_EQ(SaveServiceValues(storage::OpenUserStorage(), {{"here", {}}}), kStatusSuccess);
  const ServiceValuesByName loaded = Loaded();
  ASSERT_EQ(loaded.size(), 1u);
  EXPECT_EQ(loaded.at("here-v8").key, "2");
}

TEST_F(ServiceValuesStore, NamesAreGivenInSmallLettersAndOtherKindsPassedOver) {
  Folder("Bing").CreateValue("key").WriteText(u"k");
  Folder("Bing").CreateValue("Url").WriteNumber(7);
  const ServiceValuesByName loaded = Loaded();
  ASSERT_EQ(loaded.size(), 1u);
  EXPECT_EQ(loaded.at("bing").key, "k");
  EXPECT_FALSE(loaded.at("bing").url.has_value());
}

TEST_F(ServiceValuesStore, WithoutAStoreNothingChanges) {
  ServiceValuesByName values{{"kept", {}}};
  EXPECT_EQ(LoadServiceValues(storage::Storage(), values), kStatusInvalidHandle);
  EXPECT_TRUE(values.contains("kept"));
  EXPECT_EQ(SaveServiceValues(storage::Storage(), {{"here", {}}}), kStatusInvalidHandle);
}

}  // namespace
