#include "settings/settings_list.h"

#include <algorithm>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "settings/setting_table.h"
#include "tests/settings_home.h"

namespace {

class TwoProviders : public RouteProviders {
 public:
  int32_t DefaultProvider() const override { return 3; }
  std::vector<int32_t> Providers() const override { return {3, 19}; }
  std::optional<std::set<int32_t>> VehiclesOf(int32_t provider) const override {
    if (provider == 3 || provider == 19) return std::set<int32_t>{1};
    return std::nullopt;
  }
};

SettingListing Listed(const CSettings& settings, std::string_view key) {
  for (const SettingListing& listing : ListSettings(settings)) {
    if (listing.key == key) return listing;
  }
  return {};
}

TEST(SettingsList, ListsEverySettingWithAMeaning) {
  const CSettings settings;
  const auto listings = ListSettings(settings);
  ASSERT_EQ(listings.size(), SettingTable().size());
  for (size_t i = 0; i < listings.size(); ++i) {
    EXPECT_EQ(listings[i].key, SettingTable()[i].key);
    EXPECT_NE(listings[i].meaning, "") << listings[i].key;
    EXPECT_EQ(listings[i].value, listings[i].defaultValue) << listings[i].key;
  }
}

TEST(SettingsList, TellsKindValueAndDefault) {
  CSettings settings;
  settings.autoCalc = true;
  settings.exportIndex = 7;
  settings.userId = u"zo\u00eb";
  settings.defaultMap = MapChoice{3, "Alps"};
  settings.editorPosition.emplace().fill(0xAB);

  EXPECT_EQ(Listed(settings, "AUTO_CALC").kind, "yes or no");
  EXPECT_EQ(Listed(settings, "AUTO_CALC").value, "1");
  EXPECT_EQ(Listed(settings, "AUTO_CALC").defaultValue, "0");
  EXPECT_EQ(Listed(settings, "AUTO_CALC").meaning, "Recalculate the itinerary automatically");
  EXPECT_EQ(Listed(settings, "Export").kind, "number");
  EXPECT_EQ(Listed(settings, "Export").value, "7");
  EXPECT_EQ(Listed(settings, "Export").defaultValue, "-1");
  EXPECT_EQ(Listed(settings, "UserID").kind, "text");
  EXPECT_EQ(Listed(settings, "UserID").value, "zo\u00eb");
  EXPECT_EQ(Listed(settings, "UserID").defaultValue, "");
  EXPECT_EQ(Listed(settings, "DefaultMap").kind, "bytes");
  EXPECT_EQ(Listed(settings, "DefaultMap").value, "3:Alps");
  std::string placement;
  for (int i = 0; i < 44; ++i) placement += "ab";
  EXPECT_EQ(Listed(settings, "EditorPosition").value, placement);
  EXPECT_EQ(Listed(settings, "ConverterPosition").value, "");
}

TEST(SettingsList, TextsAreUtf8WhateverIsStored) {
  CSettings settings;
  settings.defaultMap = MapChoice{3, "Alps\xFF"};
  EXPECT_EQ(Listed(settings, "DefaultMap").value, "3:Alps\xEF\xBF\xBD");
}

TEST(SettingsList, MeaningsFollowTheLanguage) {
  SetLanguage(Language::kGerman);
  const std::string meaning = Listed(CSettings(), "DIST_MILES").meaning;
  SetLanguage(Language::kEnglish);
  EXPECT_EQ(meaning, "Entfernungen in Meilen anzeigen");
}

TEST(SetSetting, ChangesEachKind) {
  CSettings settings;
  for (const char* const assignment :
       {"AUTO_CALC=1", "DisplayNumber=0", "truckheight=500", "EXPORT=-1", "UserID=a=b \xC3\xA9",
        "DefaultMap=4294967295:a:b", "Coordinates=2"}) {
    const SettingResult result = SetSetting(settings, assignment);
    EXPECT_EQ(result.outcome, SettingOutcome::kChanged) << assignment;
    EXPECT_EQ(DescribeRefusal(result), "");
  }
  EXPECT_TRUE(settings.autoCalc);
  EXPECT_FALSE(settings.displayNumber);
  EXPECT_EQ(settings.truckHeight, 500);
  EXPECT_EQ(settings.exportIndex, -1);
  EXPECT_EQ(settings.userId, u"a=b \u00e9");
  EXPECT_EQ(settings.defaultMap, (MapChoice{0xFFFFFFFF, "a:b"}));
  EXPECT_EQ(settings.coordinates, 2);
  EXPECT_EQ(SetSetting(settings, "UserID=").outcome, SettingOutcome::kChanged);
  EXPECT_EQ(settings.userId, u"");
}

TEST(SetSetting, RefusesUnknownKeysWithTheListOfKeys) {
  CSettings settings;
  const SettingResult result = SetSetting(settings, "Truck=1");
  EXPECT_EQ(result.outcome, SettingOutcome::kUnknownKey);
  EXPECT_EQ(result.key, "Truck");
  EXPECT_EQ(result.value, "1");
  EXPECT_EQ(result.allowed.substr(0, 44), "ConverterPosition, EditorPosition, AUTO_CALC");
  EXPECT_EQ(DescribeRefusal(result).substr(0, 57),
            "The setting \"Truck\" does not exist. Settings: ConverterPo");
}

TEST(SetSetting, RefusesWrongValuesWithWhatIsAllowed) {
  struct Wrong {
    const char* assignment;
    const char* allowed;
  };
  const Wrong wrongs[] = {
      {"AUTO_CALC=yes", "0, 1"},
      {"AUTO_CALC=", "0, 1"},
      {"AUTO_CALC=2", "0, 1"},
      {"Coordinates=3", "0 to 2"},
      {"Coordinates=-1", "0 to 2"},
      {"Coordinates= 1", "0 to 2"},
      {"Coordinates=1x", "0 to 2"},
      {"Coordinates=", "0 to 2"},
      {"VehicleType=8", "0 to 7"},
      {"ItineraryType=6", "0 to 5"},
      {"TruckHeight=19", "20 to 500"},
      {"TruckWidth=501", "30 to 500"},
      {"TruckLength=79", "80 to 3000"},
      {"TruckTrailersCount=5", "0 to 4"},
      {"TruckLimitedWeight=10001", "30 to 10000"},
      {"TruckWeightAxle=49", "50 to 10000"},
      {"TruckCategory=15", "0 to 14"},
      {"Export=-2", "-1 or more"},
      {"Export=2147483648", "-1 or more"},
      {"RouteProvider=-1", "0 or more"},
      {"UserID=\xFF", "any text"},
      {"DefaultMap=Alps", "a number, a colon and the name of the map"},
      {"DefaultMap=3:", "a number, a colon and the name of the map"},
      {"DefaultMap=-3:Alps", "a number, a colon and the name of the map"},
      {"DefaultMap=3:\xFF", "a number, a colon and the name of the map"},
  };
  CSettings settings;
  for (const Wrong& wrong : wrongs) {
    const SettingResult result = SetSetting(settings, wrong.assignment);
    EXPECT_EQ(result.outcome, SettingOutcome::kWrongValue) << wrong.assignment;
    EXPECT_EQ(result.allowed, wrong.allowed) << wrong.assignment;
  }
  EXPECT_EQ(DescribeRefusal(SetSetting(settings, "Coordinates=3")),
            "The value \"3\" of Coordinates is not allowed. Allowed: 0 to 2");
  const CSettings defaults;
  for (const SettingRow& row : SettingTable())
    EXPECT_EQ(EncodeSetting(settings, row), EncodeSetting(defaults, row)) << row.key;
}

TEST(SetSetting, TakesTheProvidersThatThereAre) {
  CSettings settings;
  const TwoProviders providers;
  EXPECT_EQ(SetSetting(settings, "RouteProvider=19", &providers).outcome, SettingOutcome::kChanged);
  EXPECT_EQ(settings.routeProvider, 19);
  const SettingResult refused = SetSetting(settings, "RouteProvider=7", &providers);
  EXPECT_EQ(refused.outcome, SettingOutcome::kWrongValue);
  EXPECT_EQ(refused.allowed, "3, 19");
  EXPECT_EQ(SetSetting(settings, "RouteProvider=7").outcome, SettingOutcome::kChanged);
}

TEST(SetSetting, RefusesWhatOnlyWindowsOrNobodyWrites) {
  CSettings settings;
  for (const char* const assignment : {"Language=7", "EditorPosition=00", "ConverterPosition="})
    EXPECT_EQ(SetSetting(settings, assignment).outcome, SettingOutcome::kReadOnly) << assignment;
  EXPECT_EQ(settings.language, 0);
  EXPECT_EQ(DescribeRefusal(SetSetting(settings, "Language=7")),
            "The setting Language cannot be changed from the command line.");
}

TEST(SetSetting, NeedsAnEqualsSign) {
  CSettings settings;
  const SettingResult result = SetSetting(settings, "AUTO_CALC");
  EXPECT_EQ(result.outcome, SettingOutcome::kNoAssignment);
  EXPECT_EQ(DescribeRefusal(result), "Give a setting as KEY=VALUE, not as \"AUTO_CALC\".");
  EXPECT_EQ(SetSetting(settings, "").outcome, SettingOutcome::kNoAssignment);
  EXPECT_EQ(SetSetting(settings, "=1").outcome, SettingOutcome::kUnknownKey);
}

TEST(SettingsMessages, NameTheFileThatWasPutAsideOnce) {
  const SettingsHome home;
  TakeSettingsNews();
  EXPECT_THAT(TakeSettingsMessages(), testing::IsEmpty());
  std::filesystem::create_directory(home.Folder().PathTo("CorvaneMap"));
  home.Folder().Put("CorvaneMap/settings.db", "damaged");
  CSettings().Load();
  EXPECT_THAT(TakeSettingsMessages(),
              testing::ElementsAre("The settings file was damaged and has been put aside as " +
                                   home.File() + ".damaged. The defaults are used."));
  EXPECT_THAT(TakeSettingsMessages(), testing::IsEmpty());
}

}  // namespace
