#include "settings/map_layers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/settings/empty_backend.h"
#include "tests/settings_home.h"

namespace {

class MapLayersStore : public testing::Test {
 protected:
  static storage::SFolder Folder(const std::string& index) {
    return storage::OpenUserStorage().CreateFolder("Software\\CorvaneMap\\MapLayers\\" + index);
  }
  static MapLayers Loaded() {
    MapLayers layers{{.name = "gone"}};
    EXPECT_EQ(LoadMapLayers(storage::OpenUserStorage(), layers), kStatusSuccess);
    return layers;
  }
  static void Save(const MapLayers& layers) {
    ASSERT_EQ(SaveMapLayers(storage::OpenUserStorage(), layers, {}), kStatusSuccess);
  }

  SettingsHome m_home;
};

const MapLayer kCycling{"Cyclisme é", "https://{s}.tiles.example/{z}/{x}/{y}.png", "© us", 3, 17};
const MapLayer kStreets{"Streets", "http://localhost:81/{z}/{x}/{y}", "", 0, 19};

TEST_F(MapLayersStore, IsEmptyAtFirstAndMakesNoFile) {
  EXPECT_THAT(Loaded(), testing::IsEmpty());
  EXPECT_FALSE(m_home.HasFile());
}

TEST_F(MapLayersStore, KeepsLayersInTheirOrder) {
  Save({kStreets, kCycling});
  EXPECT_EQ(Loaded(), (MapLayers{kStreets, kCycling}));
  EXPECT_EQ(Folder("1").OpenValue("Name").ReadText(), u"Cyclisme \u00E9");
  EXPECT_EQ(Folder("1").OpenValue("Address").ReadText(),
            u"https://{s}.tiles.example/{z}/{x}/{y}.png");
  EXPECT_EQ(Folder("1").OpenValue("Credit").ReadText(), u"\u00A9 us");
  EXPECT_EQ(Folder("1").OpenValue("LeastZoom").ReadNumber(), 3u);
  EXPECT_EQ(Folder("1").OpenValue("GreatestZoom").ReadNumber(), 17u);
}

// A settings file that takes layers, and nothing of what says which of them are allowed.
class FullBackend : public EmptyBackend {
 public:
  uint32_t Write(std::string_view folder, std::string_view, const SettingsValue&) override {
    return folder.ends_with("Maps") ? kStatusDiskFull : kStatusSuccess;
  }
  uint32_t CommitSave() override {
    hasCommitted = true;
    return kStatusSuccess;
  }
  bool hasCommitted = false;
};

TEST(MapLayersTransaction, LayersAndWhatIsAllowedAreStoredTogetherOrNotAtAll) {
  const auto backend = std::make_shared<FullBackend>();
  EXPECT_EQ(SaveMapLayers(storage::Storage(backend), {kStreets}, {{"Streets", 0x11}}),
            kStatusDiskFull);
  EXPECT_FALSE(backend->hasCommitted);
  const SettingsHome home;
  ASSERT_EQ(SaveMapLayers(storage::OpenUserStorage(), {kStreets}, {{"Streets", 0x11}}),
            kStatusSuccess);
  MapSources maps;
  EXPECT_EQ(LoadMaps(storage::OpenUserStorage(), maps), kStatusSuccess);
  EXPECT_EQ(maps, (MapSources{{"Streets", 0x11}}));
}

TEST_F(MapLayersStore, AShorterListLeavesNothingBehind) {
  Save({kStreets, kCycling});
  Save({kCycling});
  EXPECT_EQ(Loaded(), (MapLayers{kCycling}));
  Save({});
  EXPECT_THAT(Loaded(), testing::IsEmpty());
}

TEST_F(MapLayersStore, WhatIsMissingOrOfAnotherKindIsAsInANewLayer) {
  Folder("0").CreateValue("Name").WriteText(u"Bare");
  Folder("0").CreateValue("Credit").WriteNumber(7);
  Folder("1").CreateValue("Address").WriteText(u"https://nameless.example/{z}/{x}/{y}");
  Folder("2").CreateValue("Name").WriteText(u"Last");
  EXPECT_EQ(Loaded(), (MapLayers{{"Bare", "", "", 0, 19}, {"Last", "", "", 0, 19}}));
}

TEST_F(MapLayersStore, WithoutAStoreTheyStayAsTheyWere) {
  MapLayers layers{kStreets};
  EXPECT_NE(LoadMapLayers(storage::Storage(), layers), kStatusSuccess);
  EXPECT_EQ(layers, (MapLayers{kStreets}));
  EXPECT_NE(SaveMapLayers(storage::Storage(), layers, {}), kStatusSuccess);
}

}  // namespace
