#include "settings/settings.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/status.h"
#include "settings/setting_table.h"
#include "tests/settings/stored_settings.h"

namespace {

using std::string_literals::operator""s;

// Directions providers 3 (vehicles 1 and 3) and 19 (vehicles 1 and 2); 19 is the default.
class TwoProviders : public RouteProviders {
 public:
  int32_t DefaultProvider() const override { return 19; }
  std::vector<int32_t> Providers() const override { return {3, 19}; }
  std::optional<std::set<int32_t>> VehiclesOf(int32_t provider) const override {
    if (provider == 3) return std::set<int32_t>{1, 3};
    if (provider == 19) return std::set<int32_t>{1, 2};
    return std::nullopt;
  }
};

TEST_F(Settings, AFirstStartGivesTheDefaults) {
  CSettings settings;
  EXPECT_EQ(settings.Load(), kStatusSuccess);
  EXPECT_FALSE(settings.converterPosition.has_value());
  EXPECT_FALSE(settings.editorPosition.has_value());
  EXPECT_FALSE(settings.autoCalc);
  EXPECT_FALSE(settings.distMiles);
  EXPECT_FALSE(settings.optimizeUseDirection);
  EXPECT_FALSE(settings.avoidHighway);
  EXPECT_FALSE(settings.avoidTolls);
  EXPECT_EQ(settings.vehicleType, 0);
  EXPECT_EQ(settings.itineraryType, 1);
  EXPECT_EQ(settings.routeProvider, 3);
  EXPECT_FALSE(settings.forceRoad);
  EXPECT_FALSE(settings.autoAddStep);
  EXPECT_TRUE(settings.displayNumber);
  EXPECT_EQ(settings.exportIndex, -1);
  EXPECT_EQ(settings.language, 0);
  EXPECT_EQ(settings.coordinates, 0);
  EXPECT_EQ(settings.truckHeight, 20);
  EXPECT_EQ(settings.truckWidth, 30);
  EXPECT_EQ(settings.truckLength, 80);
  EXPECT_EQ(settings.truckTrailersCount, 1);
  EXPECT_EQ(settings.truckLimitedWeight, 30);
  EXPECT_EQ(settings.truckWeightAxle, 50);
  EXPECT_EQ(settings.truckCategory, 0);
  EXPECT_EQ(settings.userId, u"");
  EXPECT_FALSE(settings.defaultMap.has_value());
  EXPECT_EQ(settings.findProvider, 101);
  EXPECT_FALSE(settings.calculateAsked);
  EXPECT_EQ(settings.plannerPage, u"");
  EXPECT_FALSE(m_home.HasFile());
}

TEST_F(Settings, TheTableHasTheKeysInTheirOrder) {
  std::vector<std::string_view> keys;
  for (const SettingRow& row : SettingTable()) keys.push_back(row.key);
  EXPECT_THAT(keys, testing::ElementsAre(
                        "ConverterPosition", "EditorPosition", "AUTO_CALC", "DIST_MILES",
                        "OPTIMIZE_USE_DIRECTION", "AVOID_HIGHWAY", "AVOID_TOLLS", "VehicleType",
                        "ItineraryType", "RouteProvider", "ForceRoad", "AutoAddStep",
                        "DisplayNumber", "Export", "Language", "Coordinates", "TruckHeight",
                        "TruckWidth", "TruckLength", "TruckTrailersCount", "TruckLimitedWeight",
                        "TruckWeightAxle", "TruckCategory", "UserID", "DefaultMap", "FindProvider",
                        "CalculateAsked", "PlannerPage", "ProgramLanguage"));
}

TEST_F(Settings, EachFieldHasItsKeyAndKind) {
  CSettings settings;
  settings.converterPosition.emplace().fill(1);
  settings.editorPosition.emplace().fill(2);
  settings.autoCalc = settings.optimizeUseDirection = settings.avoidTolls = true;
  settings.autoAddStep = true;
  settings.displayNumber = false;
  settings.vehicleType = 2;
  settings.itineraryType = 4;
  settings.routeProvider = 19;
  settings.exportIndex = 15;
  settings.coordinates = 1;
  settings.truckHeight = 41;
  settings.truckWidth = 42;
  settings.truckLength = 43;
  settings.truckTrailersCount = 3;
  settings.truckLimitedWeight = 44;
  settings.truckWeightAxle = 45;
  settings.truckCategory = 12;
  settings.userId = u"zo\u00eb";
  settings.defaultMap = MapChoice{0x01020304, "caf\u00e9"};
  ASSERT_EQ(settings.Save(), kStatusSuccess);

  EXPECT_EQ(Value("ConverterPosition").ReadBytes(), std::string(44, '\1'));
  EXPECT_EQ(Value("EditorPosition").ReadBytes(), std::string(44, '\2'));
  EXPECT_EQ(Value("AUTO_CALC").ReadBytes(), "\1");
  EXPECT_EQ(Value("DIST_MILES").ReadBytes(), "\0"s);
  EXPECT_EQ(Value("OPTIMIZE_USE_DIRECTION").ReadBytes(), "\1");
  EXPECT_EQ(Value("AVOID_HIGHWAY").ReadBytes(), "\0"s);
  EXPECT_EQ(Value("AVOID_TOLLS").ReadBytes(), "\1");
  EXPECT_EQ(Value("VehicleType").ReadBytes(), "\2\0\0\0"s);
  EXPECT_EQ(Value("ItineraryType").ReadBytes(), "\4\0\0\0"s);
  EXPECT_EQ(Value("RouteProvider").ReadNumber(), 19u);
  EXPECT_EQ(Value("ForceRoad").ReadBytes(), "\0"s);
  EXPECT_EQ(Value("AutoAddStep").ReadBytes(), "\1");
  EXPECT_EQ(Value("DisplayNumber").ReadBytes(), "\0"s);
  EXPECT_EQ(Value("Export").ReadNumber(), 15u);
  EXPECT_FALSE(HasValue("Language"));
  EXPECT_EQ(Value("Coordinates").ReadNumber(), 1u);
  EXPECT_EQ(Value("TruckHeight").ReadNumber(), 41u);
  EXPECT_EQ(Value("TruckWidth").ReadNumber(), 42u);
  EXPECT_EQ(Value("TruckLength").ReadNumber(), 43u);
  EXPECT_EQ(Value("TruckTrailersCount").ReadNumber(), 3u);
  EXPECT_EQ(Value("TruckLimitedWeight").ReadNumber(), 44u);
  EXPECT_EQ(Value("TruckWeightAxle").ReadNumber(), 45u);
  EXPECT_EQ(Value("TruckCategory").ReadNumber(), 12u);
  EXPECT_EQ(Value("UserID").ReadText(), u"zo\u00eb");
  EXPECT_EQ(Value("DefaultMap").ReadBytes(),
            "\x04\x03\x02\x01"
            "caf\xC3\xA9");

  CSettings loaded;
  EXPECT_EQ(loaded.Load(), kStatusSuccess);
  for (const SettingRow& row : SettingTable())
    EXPECT_EQ(EncodeSetting(loaded, row), EncodeSetting(settings, row)) << row.key;
}

TEST_F(Settings, WhatDoesNotExistIsNotStored) {
  CSettings settings;
  ASSERT_EQ(settings.Save(), kStatusSuccess);
  EXPECT_FALSE(HasValue("ConverterPosition"));
  EXPECT_FALSE(HasValue("EditorPosition"));
  EXPECT_FALSE(HasValue("DefaultMap"));
  EXPECT_EQ(Value("Export").ReadBytes(), "\xFF\xFF\xFF\xFF");
  EXPECT_EQ(Value("UserID").ReadText(), u"");
}

TEST_F(Settings, LanguageIsReadAndNeverWritten) {
  Value("Language").WriteNumber(12);
  CSettings settings;
  settings.Load();
  EXPECT_EQ(settings.language, 12);
  settings.language = 7;
  settings.autoCalc = true;
  ASSERT_EQ(settings.Save(), kStatusSuccess);
  EXPECT_EQ(Value("Language").ReadNumber(), 12u);
}

TEST_F(Settings, BytesOfAnotherSizeAreCopiedUpToTheExpectedOne) {
  Value("AUTO_CALC").WriteBytes("\1\0\0\0"s);
  Value("AVOID_TOLLS").WriteNumber(1);
  Value("DisplayNumber").WriteBytes("");
  Value("EditorPosition").WriteBytes(std::string(50, '\3'));
  Value("ConverterPosition").WriteBytes("\4\4");
  Value("TruckHeight").WriteBytes("\x2C\x01"s);
  Value("TruckWidth").WriteBytes("\x2C\x01\0\0\xFF\xFF"s);
  CSettings settings;
  EXPECT_EQ(settings.Load(), kStatusSuccess);
  EXPECT_TRUE(settings.autoCalc);
  EXPECT_TRUE(settings.avoidTolls);
  EXPECT_TRUE(settings.displayNumber);
  WindowPlacement expected;
  expected.fill(3);
  EXPECT_EQ(settings.editorPosition, expected);
  expected.fill(0);
  expected[0] = expected[1] = 4;
  EXPECT_EQ(settings.converterPosition, expected);
  EXPECT_EQ(settings.truckHeight, 300);
  EXPECT_EQ(settings.truckWidth, 300);
}

TEST_F(Settings, AValueOfAnotherKindLeavesTheDefault) {
  Value("ItineraryType").WriteText(u"2");
  Value("DisplayNumber").WriteText(u"");
  Value("TruckLength").WriteBytes("");
  Value("UserID").WriteNumber(5);
  Value("DefaultMap").WriteText(u"map of text");
  Value("Export").WriteNumber(3);
  CSettings settings;
  EXPECT_EQ(settings.Load(), kStatusSuccess);
  EXPECT_EQ(settings.itineraryType, 1);
  EXPECT_TRUE(settings.displayNumber);
  EXPECT_EQ(settings.truckLength, 80);
  EXPECT_EQ(settings.userId, u"");
  EXPECT_FALSE(settings.defaultMap.has_value());
  EXPECT_EQ(settings.exportIndex, 3);
}

TEST_F(Settings, ADefaultMapNeedsAName) {
  Value("DefaultMap").WriteBytes("\5\0\0\0"s);
  CSettings settings;
  settings.Load();
  EXPECT_FALSE(settings.defaultMap.has_value());
  Value("DefaultMap").WriteBytes("\5\0\0\0x"s);
  settings.Load();
  EXPECT_EQ(settings.defaultMap, (MapChoice{5, "x"}));
}

TEST_F(Settings, LoadingAgainForgetsWhatWasThereBefore) {
  CSettings settings;
  settings.coordinates = 2;
  settings.userId = u"x";
  settings.Load();
  EXPECT_EQ(settings.coordinates, 0);
  EXPECT_EQ(settings.userId, u"");
}

TEST_F(Settings, AnUnknownProviderBecomesTheDefault) {
  Value("RouteProvider").WriteNumber(7);
  Value("VehicleType").WriteNumber(1);
  CSettings settings;
  settings.Load(kSettingsRoot, nullptr);
  EXPECT_EQ(settings.routeProvider, 7);
  EXPECT_EQ(settings.vehicleType, 1);
  const TwoProviders providers;
  settings.Load(kSettingsRoot, &providers);
  EXPECT_EQ(settings.routeProvider, 19);
  EXPECT_EQ(settings.vehicleType, 0);
}

TEST_F(Settings, AVehicleThatTheProviderLacksBecomesNone) {
  const TwoProviders providers;
  Value("RouteProvider").WriteNumber(3);
  Value("VehicleType").WriteNumber(2);
  CSettings settings;
  settings.Load(kSettingsRoot, &providers);
  EXPECT_EQ(settings.routeProvider, 3);
  EXPECT_EQ(settings.vehicleType, 0);
  Value("VehicleType").WriteNumber(3);
  settings.Load(kSettingsRoot, &providers);
  EXPECT_EQ(settings.vehicleType, 3);
}

TEST_F(Settings, AFreshInstallationTakesTheProvidersDefault) {
  const TwoProviders providers;
  CSettings settings;
  settings.Load(kSettingsRoot, &providers);
  EXPECT_EQ(settings.routeProvider, 19);
}

TEST_F(Settings, TheRootCanBeAnother) {
  CSettings settings;
  EXPECT_EQ(settings.Load("Software\\Other"), kStatusSuccess);
  settings.coordinates = 2;
  EXPECT_EQ(settings.Save(), kStatusSuccess);
  EXPECT_FALSE(HasValue("Coordinates"));
  EXPECT_EQ(storage::OpenUserStorage()
                .OpenFolder("Software\\Other")
                .OpenValue("Coordinates")
                .ReadNumber(),
            2u);
}

TEST_F(Settings, ChangesAreSavedAtTheEndOfTheProgram) {
  CSettings settings;
  EXPECT_FALSE(settings.IsLoaded());
  settings.Load();
  EXPECT_TRUE(settings.IsLoaded());
  settings.distMiles = true;
  EXPECT_EQ(settings.SaveChanges(), kStatusSuccess);
  EXPECT_EQ(Value("DIST_MILES").ReadBytes(), "\1");
}

TEST_F(Settings, WithoutChangesNothingIsWrittenAtTheEnd) {
  CSettings settings;
  settings.Load();
  EXPECT_EQ(settings.SaveChanges(), kStatusSuccess);
  EXPECT_FALSE(m_home.HasFile());
  settings.distMiles = true;
  settings.Save();
  Value("DIST_MILES").WriteBytes("\0"s);
  EXPECT_EQ(settings.SaveChanges(), kStatusSuccess);
  EXPECT_EQ(Value("DIST_MILES").ReadBytes(), "\0"s);
}

TEST_F(Settings, AnObjectThatGoesWritesNothing) {
  {
    CSettings settings;
    settings.Load();
    settings.distMiles = true;
  }
  EXPECT_FALSE(m_home.HasFile());
}

TEST_F(Settings, ASaveKeepsWhatAnotherProgramHasChanged) {
  CSettings window;
  window.Load();
  CSettings commandLine;
  commandLine.Load();
  commandLine.coordinates = 1;
  commandLine.truckHeight = 25;
  ASSERT_EQ(commandLine.Save(), kStatusSuccess);
  window.distMiles = true;
  window.truckHeight = 40;
  ASSERT_EQ(window.Save(), kStatusSuccess);

  CSettings settings;
  settings.Load();
  EXPECT_EQ(settings.coordinates, 1);
  EXPECT_TRUE(settings.distMiles);
  EXPECT_EQ(settings.truckHeight, 40);
}

TEST_F(Settings, TwoProgramsThatSaveAtOnceLoseNothing) {
  const auto run = [](int32_t CSettings::*field) {
    const pid_t child = fork();
    if (child != 0) return child;
    for (int32_t i = 1; i <= 20; ++i) {
      CSettings settings;
      settings.Load();
      settings.*field = i;
      if (settings.Save() != kStatusSuccess) _exit(1);
    }
    _exit(0);
  };
  for (const pid_t child : {run(&CSettings::truckHeight), run(&CSettings::truckLength)}) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }
  CSettings settings;
  settings.Load();
  EXPECT_EQ(settings.truckHeight, 20);
  EXPECT_EQ(settings.truckLength, 20);
}

TEST_F(Settings, OneObjectIsTheProcesssOwn) {
  EXPECT_EQ(&CSettings::Instance(), &CSettings::Instance());
}

}  // namespace
