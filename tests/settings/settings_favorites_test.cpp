#include <limits>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/status.h"
#include "settings/favorites.h"
#include "settings/map_sources.h"
#include "tests/list_builder.h"
#include "tests/settings/stored_settings.h"

namespace {

using std::string_literals::operator""s;

// Favourites

storage::SFolder FavoritesFolder() {
  return storage::OpenUserStorage().CreateFolder("Software\\CorvaneMap\\Favorites");
}

// Longitude 2.5, latitude 48.75 and altitude -1 as 32-bit floats.
constexpr std::string_view kPosition("\0\0\x20\x40\0\0\x43\x42\0\0\x80\xBF", 12);

TEST_F(Settings, FavoritesAreStoredAsFloatsAndName) {
  const auto list = MakeList("x", MakePoint(48.75, 2.5, "Z\u00fcrich", "lost", -1.0),
                             MakePoint(48.75, 2.5, "", "", -1.0));
  ASSERT_EQ(SaveFavorites(storage::OpenUserStorage(), list), kStatusSuccess);
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
  EXPECT_EQ(LoadFavorites(storage::OpenUserStorage(), list), kStatusSuccess);
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
  ASSERT_EQ(
      SaveFavorites(storage::OpenUserStorage(), MakeList("", MakePoint(48.123456789, 1e300, "a"))),
      kStatusSuccess);
  CGpsRoute list;
  ASSERT_EQ(LoadFavorites(storage::OpenUserStorage(), list), kStatusSuccess);
  ASSERT_EQ(list.Count(), 1u);
  EXPECT_EQ(list.points[0].latitude, static_cast<double>(48.123456789F));
  EXPECT_EQ(list.points[0].longitude, static_cast<double>(std::numeric_limits<float>::max()));
}

TEST_F(Settings, DamagedFavoritesDoNoHarm) {
  // A quiet NaN and infinity as 32-bit floats.
  constexpr std::string_view kNaN("\0\0\xC0\x7F", 4);
  constexpr std::string_view kInfinity("\0\0\x80\x7F", 4);
  const std::string position(kPosition);
  FavoritesFolder().CreateValue("Number").WriteNumber(4);
  FavoritesFolder().CreateValue("0").WriteBytes(std::string(kNaN) + position.substr(4) + "a");
  FavoritesFolder().CreateValue("1").WriteBytes(position.substr(0, 4) + std::string(kInfinity) +
                                                position.substr(8) + "b");
  FavoritesFolder().CreateValue("2").WriteBytes(position.substr(0, 8) + std::string(kNaN) + "c");
  FavoritesFolder().CreateValue("3").WriteBytes(position + "d\xFF");
  CGpsRoute list;
  EXPECT_EQ(LoadFavorites(storage::OpenUserStorage(), list), kStatusSuccess);
  ASSERT_EQ(list.Count(), 2u);
  EXPECT_EQ(list.points[0].name, "c");
  EXPECT_EQ(list.points[0].altitude, 0.0);
  EXPECT_EQ(list.points[1].name, "d\xEF\xBF\xBD");
}

TEST_F(Settings, AFolderWithoutNumberIsEmpty) {
  FavoritesFolder().CreateValue("0").WriteBytes(std::string(kPosition) + "a");
  auto list = MakeList("", MakePoint(1, 1, "gone"));
  EXPECT_EQ(LoadFavorites(storage::OpenUserStorage(), list), kStatusSuccess);
  EXPECT_EQ(list.Count(), 0u);
  MapSources maps{{"gone", 1}};
  EXPECT_EQ(LoadMaps(storage::OpenUserStorage(), maps), kStatusSuccess);
  EXPECT_TRUE(maps.empty());
}

TEST_F(Settings, TheCountDecidesAndSurplusValuesStay) {
  ASSERT_EQ(
      SaveFavorites(storage::OpenUserStorage(),
                    MakeList("", MakePoint(1, 1, "a"), MakePoint(2, 2, "b"), MakePoint(3, 3, "c"))),
      kStatusSuccess);
  ASSERT_EQ(SaveFavorites(storage::OpenUserStorage(), MakeList("", MakePoint(4, 4, "d"))),
            kStatusSuccess);
  EXPECT_THAT(FavoritesFolder().ValueNames(),
              testing::UnorderedElementsAre("Number", "0", "1", "2"));
  CGpsRoute list;
  ASSERT_EQ(LoadFavorites(storage::OpenUserStorage(), list), kStatusSuccess);
  ASSERT_EQ(list.Count(), 1u);
  EXPECT_EQ(list.points[0].name, "d");
}

TEST_F(Settings, AHugeCountIsNoWork) {
  FavoritesFolder().CreateValue("Number").WriteNumber(0xFFFFFFFF);
  FavoritesFolder().CreateValue("4294967294").WriteBytes(std::string(kPosition) + "last");
  CGpsRoute list;
  EXPECT_EQ(LoadFavorites(storage::OpenUserStorage(), list), kStatusSuccess);
  ASSERT_EQ(list.Count(), 1u);
  EXPECT_EQ(list.points[0].name, "last");
}

TEST_F(Settings, ManyFavoritesTakeOneSave) {
  CGpsRoute many;
  for (int i = 0; i < 3000; ++i) many.points.push_back(MakePoint(1, 1, std::to_string(i + 10000)));
  ASSERT_EQ(SaveFavorites(storage::OpenUserStorage(), many), kStatusSuccess);
  CGpsRoute list;
  ASSERT_EQ(LoadFavorites(storage::OpenUserStorage(), list), kStatusSuccess);
  ASSERT_EQ(list.Count(), 3000u);
  EXPECT_EQ(list.points[2999].name, "12999");
}

// Maps

TEST_F(Settings, MapsAreStoredAsNumberAndName) {
  const MapSources maps{{"Caf\u00e9", 7}, {"", 9}, {"Alps", 0x01020304}};
  ASSERT_EQ(SaveMaps(storage::OpenUserStorage(), maps), kStatusSuccess);
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
  ASSERT_EQ(LoadMaps(storage::OpenUserStorage(), loaded), kStatusSuccess);
  EXPECT_EQ(loaded, (MapSources{{"Caf\u00e9", 7}, {"Alps", 0x01020304}}));
}

}  // namespace
