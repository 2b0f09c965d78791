#include "core/settings.h"

#include <cmath>
#include <limits>
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "core/setting_table.h"
#include "core/status.h"
#include "tests/list_builder.h"
#include "tests/settings_home.h"

namespace {

using std::string_literals::operator""s;

// Directions providers 3 (vehicles 1 and 3) and 19 (vehicles 1 and 2); 19 is the default.
class TwoProviders : public IRouteProviders {
 public:
  int32_t DefaultProvider() const override { return 19; }
  std::vector<int32_t> Providers() const override { return {3, 19}; }
  std::optional<std::set<int32_t>> VehiclesOf(int32_t provider) const override {
    if (provider == 3) return std::set<int32_t>{1, 3};
    if (provider == 19) return std::set<int32_t>{1, 2};
    return std::nullopt;
  }
};

class Settings : public testing::Test {
 protected:
  static storage::SFolder Root() {
    return storage::OpenUserStorage().CreateFolder("Software\\CorvaneMap");
  }
  static storage::SValue Value(std::string_view key) { return Root().CreateValue(key); }
  static bool HasValue(std::string_view key) {
    try {
      Value(key).ReadBytes();
      return true;
    } catch (const storage::Exception&) {
      return false;
    }
  }

  SettingsHome m_home;
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
                        "TruckWeightAxle", "TruckCategory", "UserID", "DefaultMap"));
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

TEST_F(Settings, ChangesAreSavedAtTheEndOfTheObject) {
  {
    CSettings settings;
    settings.Load();
    settings.distMiles = true;
  }
  EXPECT_EQ(Value("DIST_MILES").ReadBytes(), "\1");
}

TEST_F(Settings, WithoutChangesNothingIsWrittenAtTheEnd) {
  {
    CSettings settings;
    settings.Load();
  }
  EXPECT_FALSE(m_home.HasFile());
  {
    CSettings settings;
    settings.Load();
    settings.distMiles = true;
    settings.Save();
    Value("DIST_MILES").WriteBytes("\0"s);
  }
  EXPECT_EQ(Value("DIST_MILES").ReadBytes(), "\0"s);
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

// Takes everything up to one key.
class FailingBackend : public ISettingsBackend {
 public:
  FailingBackend(std::string key, uint32_t status) : m_key(std::move(key)), m_status(status) {}
  uint32_t CreateFolder(std::string_view) override { return 0; }
  uint32_t Read(std::string_view, std::string_view name, SettingsValue&) override {
    return name == m_key ? m_status : uint32_t{kStatusFileNotFound};
  }
  uint32_t Write(std::string_view, std::string_view name, const SettingsValue&) override {
    if (name == m_key) return m_status;
    written.emplace_back(name);
    return 0;
  }
  uint32_t ListValues(std::string_view, std::vector<std::string>&) override { return 0; }
  uint32_t BeginSave() override { return 0; }
  uint32_t CommitSave() override {
    ++commits;
    return commitStatus;
  }
  void AbandonSave() override {}

  std::vector<std::string> written;
  int commits = 0;
  uint32_t commitStatus = 0;

 private:
  std::string m_key;
  uint32_t m_status;
};

TEST_F(Settings, AWriteThatFailsEndsTheSaveAtItsKey) {
  const auto backend = std::make_shared<FailingBackend>("DIST_MILES", kStatusDiskFull);
  CSettings settings([&backend] { return storage::Storage(backend); });
  settings.editorPosition.emplace();
  EXPECT_EQ(settings.Save(), kStatusDiskFull);
  EXPECT_THAT(backend->written, testing::ElementsAre("EditorPosition", "AUTO_CALC"));
  EXPECT_EQ(backend->commits, 1);
}

TEST_F(Settings, AFailedSaveTellsWhatFailedFirst) {
  constexpr uint32_t kNoSaveUnderWay = 1359;
  const auto backend = std::make_shared<FailingBackend>("DIST_MILES", kStatusDiskFull);
  backend->commitStatus = kNoSaveUnderWay;
  CSettings settings([&backend] { return storage::Storage(backend); });
  EXPECT_EQ(settings.Save(), kStatusDiskFull);
  EXPECT_EQ(backend->commits, 1);
  const auto other = std::make_shared<FailingBackend>("none", kStatusDiskFull);
  other->commitStatus = kNoSaveUnderWay;
  CSettings whole([&other] { return storage::Storage(other); });
  EXPECT_EQ(whole.Save(), kNoSaveUnderWay);
}

TEST_F(Settings, AStoreThatCannotBeReadIsToldAndGivesDefaults) {
  const auto backend = std::make_shared<FailingBackend>("Coordinates", kStatusAccessDenied);
  CSettings settings([&backend] { return storage::Storage(backend); });
  EXPECT_EQ(settings.Load(), kStatusAccessDenied);
  EXPECT_EQ(settings.coordinates, 0);
}

TEST_F(Settings, ListsThatCannotBeReadStayAsTheyAre) {
  const auto backend = std::make_shared<FailingBackend>("Number", kStatusAccessDenied);
  const CSettings settings([&backend] { return storage::Storage(backend); });
  CGpsRoute favorites = MakeList("", MakePoint(1, 2, "kept"));
  EXPECT_EQ(settings.LoadFavorites(favorites), kStatusAccessDenied);
  ASSERT_EQ(favorites.Count(), 1u);
  EXPECT_EQ(favorites.At(0).name, "kept");
  MapSources maps{{"kept", 3}};
  EXPECT_EQ(settings.LoadMaps(maps), kStatusAccessDenied);
  EXPECT_EQ(maps, (MapSources{{"kept", 3}}));
  // A store without them is no failure: they are empty.
  const auto fresh = std::make_shared<FailingBackend>("none", kStatusAccessDenied);
  const CSettings first([&fresh] { return storage::Storage(fresh); });
  EXPECT_EQ(first.LoadFavorites(favorites), kStatusSuccess);
  EXPECT_EQ(favorites.Count(), 0u);
  EXPECT_EQ(first.LoadMaps(maps), kStatusSuccess);
  EXPECT_TRUE(maps.empty());
}

TEST_F(Settings, WithoutAStoreThereAreDefaultsAndNoSave) {
  CSettings settings([] { return storage::Storage(); });
  EXPECT_EQ(settings.Load(), kStatusSuccess);
  EXPECT_TRUE(settings.displayNumber);
  EXPECT_NE(settings.Save(), kStatusSuccess);
  CGpsRoute favorites;
  EXPECT_NE(settings.LoadFavorites(favorites), kStatusSuccess);
  EXPECT_NE(settings.SaveFavorites(favorites), kStatusSuccess);
}

TEST_F(Settings, ADamagedFileGivesDefaultsAndIsReplacedByASave) {
  std::filesystem::create_directory(m_home.Folder().PathTo("CorvaneMap"));
  m_home.Folder().Put("CorvaneMap/settings.db", "damaged");
  CSettings settings;
  EXPECT_EQ(settings.Load(), kStatusSuccess);
  EXPECT_EQ(TakeDamagedSettingsFile(),
            m_home.Folder().WidePathTo("CorvaneMap/settings.db.damaged"));
  EXPECT_TRUE(settings.displayNumber);
  settings.coordinates = 2;
  EXPECT_EQ(settings.Save(), kStatusSuccess);
  EXPECT_EQ(Value("Coordinates").ReadNumber(), 2u);
}

TEST_F(Settings, OneObjectIsTheProcesssOwn) {
  EXPECT_EQ(&CSettings::Instance(), &CSettings::Instance());
}

// Favourites

storage::SFolder FavoritesFolder() {
  return storage::OpenUserStorage().CreateFolder("Software\\CorvaneMap\\Favorites");
}

// Longitude 2.5, latitude 48.75 and altitude -1 as 32-bit floats.
constexpr std::string_view kPosition("\0\0\x20\x40\0\0\x43\x42\0\0\x80\xBF", 12);

TEST_F(Settings, FavoritesAreStoredAsFloatsAndName) {
  const CSettings settings;
  const auto list = MakeList("x", MakePoint(48.75, 2.5, "Z\u00fcrich", "lost", -1.0),
                             MakePoint(48.75, 2.5, "", "", -1.0));
  ASSERT_EQ(settings.SaveFavorites(list), kStatusSuccess);
  EXPECT_EQ(FavoritesFolder().OpenValue("Number").ReadNumber(), 2u);
  EXPECT_EQ(FavoritesFolder().OpenValue("0").ReadBytes(), std::string(kPosition) + "Z\xC3\xBCrich");
  EXPECT_EQ(FavoritesFolder().OpenValue("1").ReadBytes(), std::string(kPosition));
}

TEST_F(Settings, FavoritesAreReadSortedWithoutTheNameless) {
  FavoritesFolder().CreateValue("Number").WriteNumber(5);
  FavoritesFolder().CreateValue("0").WriteBytes(std::string(kPosition) + "b");
  FavoritesFolder().CreateValue("1").WriteBytes(kPosition);
  FavoritesFolder().CreateValue("2").WriteBytes(std::string(kPosition) + "B");
  FavoritesFolder().CreateValue("3").WriteText(u"no bytes at all, but long");
  FavoritesFolder().CreateValue("4").WriteBytes(std::string(kPosition) + "a");
  FavoritesFolder().CreateValue("5").WriteBytes(std::string(kPosition) + "beyond the count");
  FavoritesFolder().CreateValue("04").WriteBytes(std::string(kPosition) + "no index");
  auto list = MakeList("kept", MakePoint(1, 1, "gone"));
  EXPECT_EQ(CSettings().LoadFavorites(list), kStatusSuccess);
  EXPECT_EQ(list.name, "kept");
  ASSERT_EQ(list.Count(), 3u);
  EXPECT_EQ(list.points[0].name, "B");
  EXPECT_EQ(list.points[1].name, "a");
  EXPECT_EQ(list.points[2].name, "b");
  EXPECT_EQ(list.points[0].latitude, 48.75);
  EXPECT_EQ(list.points[0].longitude, 2.5);
  EXPECT_EQ(list.points[0].altitude, -1.0);
  EXPECT_EQ(list.points[0].comment, "");
}

TEST_F(Settings, FavoritesLosePrecision) {
  const CSettings settings;
  ASSERT_EQ(settings.SaveFavorites(MakeList("", MakePoint(48.123456789, 1e300, "a"))),
            kStatusSuccess);
  CGpsRoute list;
  ASSERT_EQ(settings.LoadFavorites(list), kStatusSuccess);
  ASSERT_EQ(list.Count(), 1u);
  EXPECT_EQ(list.points[0].latitude, static_cast<double>(48.123456789F));
  EXPECT_EQ(list.points[0].longitude, static_cast<double>(std::numeric_limits<float>::max()));
}

TEST_F(Settings, AFolderWithoutNumberIsEmpty) {
  FavoritesFolder().CreateValue("0").WriteBytes(std::string(kPosition) + "a");
  auto list = MakeList("", MakePoint(1, 1, "gone"));
  EXPECT_EQ(CSettings().LoadFavorites(list), kStatusSuccess);
  EXPECT_EQ(list.Count(), 0u);
  MapSources maps{{"gone", 1}};
  EXPECT_EQ(CSettings().LoadMaps(maps), kStatusSuccess);
  EXPECT_TRUE(maps.empty());
}

TEST_F(Settings, TheCountDecidesAndSurplusValuesStay) {
  const CSettings settings;
  ASSERT_EQ(settings.SaveFavorites(
                MakeList("", MakePoint(1, 1, "a"), MakePoint(2, 2, "b"), MakePoint(3, 3, "c"))),
            kStatusSuccess);
  ASSERT_EQ(settings.SaveFavorites(MakeList("", MakePoint(4, 4, "d"))), kStatusSuccess);
  EXPECT_THAT(FavoritesFolder().ValueNames(),
              testing::UnorderedElementsAre("Number", "0", "1", "2"));
  CGpsRoute list;
  ASSERT_EQ(settings.LoadFavorites(list), kStatusSuccess);
  ASSERT_EQ(list.Count(), 1u);
  EXPECT_EQ(list.points[0].name, "d");
}

TEST_F(Settings, AHugeCountIsNoWork) {
  FavoritesFolder().CreateValue("Number").WriteNumber(0xFFFFFFFF);
  FavoritesFolder().CreateValue("4294967294").WriteBytes(std::string(kPosition) + "last");
  CGpsRoute list;
  EXPECT_EQ(CSettings().LoadFavorites(list), kStatusSuccess);
  ASSERT_EQ(list.Count(), 1u);
  EXPECT_EQ(list.points[0].name, "last");
}

TEST_F(Settings, ManyFavoritesTakeOneSave) {
  const CSettings settings;
  CGpsRoute many;
  for (int i = 0; i < 3000; ++i) many.points.push_back(MakePoint(1, 1, std::to_string(i + 10000)));
  ASSERT_EQ(settings.SaveFavorites(many), kStatusSuccess);
  CGpsRoute list;
  ASSERT_EQ(settings.LoadFavorites(list), kStatusSuccess);
  ASSERT_EQ(list.Count(), 3000u);
  EXPECT_EQ(list.points[2999].name, "12999");
}

// Maps

TEST_F(Settings, MapsAreStoredAsNumberAndName) {
  const CSettings settings;
  const MapSources maps{{"Caf\u00e9", 7}, {"", 9}, {"Alps", 0x01020304}};
  ASSERT_EQ(settings.SaveMaps(maps), kStatusSuccess);
  const storage::SFolder folder =
      storage::OpenUserStorage().OpenFolder("Software\\CorvaneMap\\Maps");
  EXPECT_EQ(folder.OpenValue("Number").ReadNumber(), 3u);
  EXPECT_EQ(folder.OpenValue("0").ReadBytes(), "\x09\0\0\0"s);
  EXPECT_EQ(folder.OpenValue("1").ReadBytes(),
            "\4\3\2\1"
            "Alps");
  EXPECT_EQ(folder.OpenValue("2").ReadBytes(),
            "\7\0\0\0"
            "Caf\xC3\xA9"s);
  MapSources loaded{{"gone", 1}};
  ASSERT_EQ(settings.LoadMaps(loaded), kStatusSuccess);
  EXPECT_EQ(loaded, (MapSources{{"Caf\u00e9", 7}, {"Alps", 0x01020304}}));
}

}  // namespace
