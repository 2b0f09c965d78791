// The towns on this machine: what a text finds, and what lies where.

#include "services/offline/offline_places.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/sphere_vector.h"

namespace {

class OfflinePlacesTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(places.IsOpen()); }

  std::string First(std::string_view text) {
    const std::vector<OfflinePlace> found = places.Find(text, 5);
    return found.empty() ? "" : found.front().Label();
  }

  std::string Nearest(double latitude, double longitude) {
    CGpsCoordinate position;
    position.latitude = latitude;
    position.longitude = longitude;
    const std::optional<OfflinePlace> place = places.Nearest(position);
    return place ? place->name : "";
  }

  OfflinePlaces places;
};

TEST_F(OfflinePlacesTest, KnowsNamesWithTheirPositions) {
  const std::vector<OfflinePlace> found = places.Find("Colmar", 5);
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found[0].name, "Colmar");
  EXPECT_EQ(found[0].region, "Grand Est");
  EXPECT_EQ(found[0].country, "France");
  EXPECT_EQ(found[0].countryCode, "FR");
  EXPECT_GT(found[0].population, 60000u);
  EXPECT_NEAR(found[0].position.latitude, 48.08, 0.01);
  EXPECT_NEAR(found[0].position.longitude, 7.36, 0.01);
  EXPECT_EQ(found[0].ToPoint().name, "Colmar, Grand Est, France");
}

TEST_F(OfflinePlacesTest, TheLargestOfEqualNamesComesFirst) {
  EXPECT_EQ(First("Paris"), "Paris, Île-de-France, France");
  EXPECT_EQ(First("paris"), "Paris, Île-de-France, France");
}

TEST_F(OfflinePlacesTest, AWholeNameStandsInFrontOfLargerTownsThatBeginLikeIt) {
  // Romeoville and Romano di Lombardia begin like it; Barr is small beside Barra Mansa.
  EXPECT_EQ(First("Rome"), "Rome, Lazio, Italy");
  EXPECT_EQ(First("Barr"), "Barr, Grand Est, France");
}

TEST_F(OfflinePlacesTest, TheBeginningOfANameIsEnough) {
  EXPECT_EQ(First("Guebwi"), "Guebwiller, Grand Est, France");
  EXPECT_EQ(First("Saint-Dié-des-V"), "Saint-Dié-des-Vosges, Grand Est, France");
  const std::vector<OfflinePlace> found = places.Find("stras", 3);
  ASSERT_EQ(found.size(), 3u);
  for (const OfflinePlace& place : found) EXPECT_EQ(place.name.substr(0, 3), "Str");
}

TEST_F(OfflinePlacesTest, AccentsCaseAndHyphensDoNotCount) {
  for (const char* text : {"Sélestat", "selestat", "SELESTAT", "SÉLESTAT", "Se\xCC\x81lestat"})
    EXPECT_EQ(First(text), "Sélestat, Grand Est, France") << text;
  for (const char* text : {"Łódź", "Lodz", "łódź", "Łodz"})
    EXPECT_EQ(First(text).substr(0, 8), "Łódź,") << text;
  EXPECT_EQ(First("saint die des vosges"), "Saint-Dié-des-Vosges, Grand Est, France");
}

TEST_F(OfflinePlacesTest, RegionOrCountryMayStandBehind) {
  EXPECT_EQ(First("Paris, Texas"), "Paris, Texas, United States");
  EXPECT_EQ(First("Paris, Texas, US"), "Paris, Texas, United States");
  EXPECT_EQ(First("Paris Texas"), "Paris, Texas, United States");
  EXPECT_EQ(First("Colmar, France"), "Colmar, Grand Est, France");
  EXPECT_EQ(First("Colmar, Fr"), "Colmar, Grand Est, France");
  // The region's former name is none that the file knows.
  EXPECT_EQ(First("Colmar, Haute Alsace"), "Colmar, Grand Est, France");
}

TEST_F(OfflinePlacesTest, OfAnAddressTheTownIsFound) {
  EXPECT_EQ(First("12 rue des Clefs, 68000 Colmar"), "Colmar, Grand Est, France");
  EXPECT_EQ(First("rue des Clefs, 68000 Colmar, France"), "Colmar, Grand Est, France");
  EXPECT_EQ(First("rue des Clefs 12 68000 Colmar"), "Colmar, Grand Est, France");
}

TEST_F(OfflinePlacesTest, NothingIsFoundWithoutAName) {
  for (const char* text : {"", " ", ",", "68000", "\"", "*", "...", "^", "Xyzzyqwert", "NOT NEAR(",
                           "\xFF\xFE", ")(", "-"})
    EXPECT_EQ(First(text), "") << text;
  EXPECT_EQ(First(std::string(100000, '"')), "");
  EXPECT_EQ(First(std::string(100000, ',') + "Colmar"), "");
  EXPECT_EQ(First(std::string(900, ',') + "Colmar"), "Colmar, Grand Est, France");
  EXPECT_TRUE(places.Find("Colmar", 0).empty());
}

TEST_F(OfflinePlacesTest, FindsWhatBeginsLikeATextNearAPosition) {
  CGpsCoordinate colmar;
  colmar.latitude = 48.08078;
  colmar.longitude = 7.35584;
  const std::vector<OfflinePlace> all = places.FindNear("", colmar, 10000, 50);
  ASSERT_GT(all.size(), 3u);
  EXPECT_EQ(all[0].name, "Colmar");
  for (size_t i = 0; i < all.size(); ++i) {
    EXPECT_LE(all[i].position.DistanceTo(colmar), 10000u);
    if (i > 0) {
      EXPECT_LE(all[i - 1].position.DistanceTo(colmar), all[i].position.DistanceTo(colmar));
    }
  }
  const std::vector<OfflinePlace> some = places.FindNear("eguis", colmar, 10000, 50);
  ASSERT_EQ(some.size(), 1u);
  EXPECT_EQ(some[0].name, "Eguisheim");
  EXPECT_TRUE(places.FindNear("strasbourg", colmar, 10000, 50).empty());
  EXPECT_EQ(places.FindNear("", colmar, 10000, 2).size(), 2u);
}

TEST_F(OfflinePlacesTest, KnowsTheNearest) {
  EXPECT_EQ(Nearest(48.08, 7.36), "Colmar");
  EXPECT_EQ(Nearest(48.0431, 7.3064), "Eguisheim");
  EXPECT_EQ(Nearest(91, 0), "");
  EXPECT_EQ(Nearest(0, 181), "");
}

// Of every town of the file none may be nearer: at the poles, at the date line, at sea, anywhere.
TEST_F(OfflinePlacesTest, TheNearestIsTheNearestOfAll) {
  SqliteDatabase database;
  ASSERT_EQ(database.Open(CORVANE_BINARY_FOLDER "/bin/places.db", SqliteDatabase::Mode::kReadOnly),
            0);
  std::vector<SphereVector> all;
  SqliteStatement query(database, "SELECT latitude, longitude FROM place");
  while (query.Step() == 100) {  // SQLITE_ROW
    CGpsCoordinate position;
    position.latitude = static_cast<double>(query.Number(0)) / 1e5;
    position.longitude = static_cast<double>(query.Number(1)) / 1e5;
    all.emplace_back(position);
  }
  EXPECT_GT(all.size(), 100000u);

  std::vector<std::pair<double, double>> positions = {
      {90, 0},          {-90, 0},    {-90, 180}, {89.9, -179.9},  {-17.8, 179.99},
      {-17.8, -179.99}, {66, 179.9}, {0, -150},  {-48.9, -123.4}, {30, -40},
      {0, 0},           {71, -40},   {-80, 20}};
  std::mt19937 random(1);
  std::uniform_real_distribution<double> latitude(-90, 90);
  std::uniform_real_distribution<double> longitude(-180, 180);
  for (int i = 0; i < 200; ++i) positions.emplace_back(latitude(random), longitude(random));
  for (const auto& [north, east] : positions) {
    CGpsCoordinate position;
    position.latitude = north;
    position.longitude = east;
    const SphereVector here(position);
    uint32_t least = 0xFFFFFFFF;
    for (const SphereVector& place : all) least = std::min(least, here.ChordTo(place));
    const std::optional<OfflinePlace> nearest = places.Nearest(position);
    ASSERT_TRUE(nearest);
    EXPECT_EQ(here.ChordTo(SphereVector(nearest->position)), least) << north << ", " << east;
  }
}

}  // namespace
