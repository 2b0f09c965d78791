#include "formats/text/marco_polo.h"

#include <cmath>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/formats/text/reading.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

std::string BcrBytes(const CGpsPointArray& list) { return BytesOf(WriteBcrBody, list); }

Reading Parse(std::string_view bytes) { return ReadBytes(ParseBcr, bytes); }

// On the sphere of 6371 km, Paris lies at 261554.93, 6243571.79, Sydney at 16814374.19,
// -4005100.61, and Greenwich at -164.57, 6698749.61.
CGpsRoute SampleRoute() {
  return MakeList("Weltreise", MakePoint(48.85661, 2.35222, "Paris", "lost", 35.0),
                  MakePoint(-33.85678, 151.2153, "Sydney"), MakePoint(51.47782, -0.00148, ""));
}

const std::string kSampleFile =
    "[CLIENT]\r\nREQUEST=TRUE\r\nROUTENAME=Weltreise\r\n"
    "STATION1=Standort,999999999\r\nSTATION2=Standort,999999999\r\n"
    "STATION3=Standort,999999999\r\n"
    "[COORDINATES]\r\nSTATION1=261555,6243572\r\nSTATION2=16814374,-4005101\r\n"
    "STATION3=-165,6698750\r\n"
    "[DESCRIPTION]\r\nSTATION1=Paris\r\nSTATION2=Sydney\r\nSTATION3=\r\n";

TEST(BcrWriter, WritesThreeSections) { EXPECT_EQ(BcrBytes(SampleRoute()), kSampleFile); }

TEST(BcrWriter, WritesOneSectionForAnEmptyList) {
  EXPECT_EQ(BcrBytes(CGpsRoute()), "[CLIENT]\r\nREQUEST=TRUE\r\nROUTENAME=\r\n");
}

TEST(BcrWriter, NarrowsTextAndCleansNothing) {
  const auto route =
      MakeList("Stra\u00dfe \u0141", MakePoint(0, 0, "a=b, \"c\"|d; \U0001F600 \u00e9"));
  EXPECT_EQ(BcrBytes(route),
            "[CLIENT]\r\nREQUEST=TRUE\r\nROUTENAME=Stra\xDF"
            "e ?\r\nSTATION1=Standort,999999999\r\n"
            "[COORDINATES]\r\nSTATION1=0,0\r\n"
            "[DESCRIPTION]\r\nSTATION1=a=b, \"c\"|d; ?? \xE9\r\n");
}

TEST(BcrWriter, ReplacesAnOldFileWhateverTheLimit) {
  const TemporaryFolder folder;
  folder.Put("a.bcr", "[CLIENT]\r\nSTATION99=old\r\n[OTHER]\r\nk=v\r\n");
  EXPECT_EQ(WriteBcr(folder.WidePathTo("a.bcr"), SampleRoute(), 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.bcr"), kSampleFile);
}

TEST(BcrWriter, GivesThePlatformsError) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteBcr(folder.WidePathTo("missing/a.bcr"), SampleRoute(), 0, true),
            kStatusFileNotFound);
  std::filesystem::create_directory(folder.PathTo("a.bcr"));
  EXPECT_EQ(WriteBcr(folder.WidePathTo("a.bcr"), SampleRoute(), 0, true), kStatusAccessDenied);
}

TEST(BcrReader, ReadsStations) {
  const Reading reading = Parse(kSampleFile);
  EXPECT_EQ(reading.status, kStatusSuccess);
  ASSERT_EQ(reading.lists.size(), 1u);
  EXPECT_EQ(reading.lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(reading.lists[0]->name, "Weltreise");
  ASSERT_EQ(reading.Count(), 3u);
  EXPECT_EQ(reading[0].name, "Paris");
  EXPECT_EQ(reading[0].altitude, 0.0);
  EXPECT_EQ(reading[0].comment, "");
  EXPECT_EQ(reading[1].name, "Sydney");
  EXPECT_EQ(reading[2].name, "");
  EXPECT_EQ(reading.passedOver, 0u);
}

TEST(BcrReader, UnprojectsFromTheSphereOf6371Kilometres) {
  const Reading reading = Parse(
      "[CLIENT]\nREQUEST=1\n[COORDINATES]\nSTATION1=1000000,-2000000\nSTATION2=0,0\n"
      "STATION3=2147483647,2147483647\n");
  ASSERT_EQ(reading.Count(), 3u);
  EXPECT_NEAR(reading[0].longitude, 8.993216059187306, 1e-12);
  EXPECT_NEAR(reading[0].latitude, -17.69808914616073, 1e-12);
  EXPECT_TRUE(reading[1].IsNull());
  EXPECT_EQ(reading[2].longitude, 180.0);
  EXPECT_NEAR(reading[2].latitude, 90.0, 1e-9);
}

TEST(BcrReader, RoundTripsWithinAMetre) {
  const TemporaryFolder folder;
  const CGpsRoute route = SampleRoute();
  EXPECT_EQ(WriteBcr(folder.WidePathTo("a.bcr"), route, 0, true), kStatusSuccess);
  PointLists lists;
  EXPECT_EQ(ReadBcr(folder.WidePathTo("a.bcr"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "Weltreise");
  ASSERT_EQ(lists[0]->Count(), 3u);
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(lists[0]->points[i].name, route.points[i].name);
    EXPECT_NE(lists[0]->points[i].latitude, route.points[i].latitude);
    EXPECT_LE(lists[0]->points[i].DistanceTo(route.points[i]), 1u);
  }
}

TEST(BcrReader, RefusesAFileWithoutARequest) {
  for (const std::string& other :
       {""s, "[CLIENT]\nROUTENAME=x\n[COORDINATES]\nSTATION1=1,1\n"s, "REQUEST=TRUE\n"s,
        "[OTHER]\nREQUEST=TRUE\n"s, "[CLIENT]\nREQUEST=R_ERROR\n"s}) {
    const Reading reading = Parse(other);
    EXPECT_EQ(reading.status, kStatusFileNotFound) << other;
    EXPECT_TRUE(reading.lists.empty());
  }
}

TEST(BcrReader, TakesAnyRequest) {
  const Reading reading = Parse("[client]\nrequest =\n[Coordinates]\nStation1 = 1 , 2 \n");
  EXPECT_EQ(reading.status, kStatusSuccess);
  ASSERT_EQ(reading.Count(), 1u);
  EXPECT_EQ(reading[0].name, "");
  EXPECT_EQ(reading.passedOver, 0u);
}

TEST(BcrReader, LeavesNamesEmptyThatAreMissing) {
  const Reading reading = Parse(
      "[CLIENT]\nREQUEST=TRUE\n[COORDINATES]\nSTATION1=1,1\nSTATION2=2,2\n"
      "[DESCRIPTION]\nSTATION2=\"B\"\n");
  ASSERT_EQ(reading.Count(), 2u);
  EXPECT_EQ(reading.lists[0]->name, "");
  EXPECT_EQ(reading[0].name, "");
  EXPECT_EQ(reading[1].name, "B");
}

TEST(BcrReader, EndsAtTheFirstMissingStation) {
  const Reading reading = Parse(
      "[CLIENT]\nREQUEST=TRUE\n[COORDINATES]\nSTATION0=9,9\nSTATION1=1,1\nSTATION3=3,3\n"
      "station4=4,4\nUNIT=metre\n");
  EXPECT_EQ(reading.Count(), 1u);
  EXPECT_EQ(reading.passedOver, 3u);
}

TEST(BcrReader, KeepsStationsWhosePlaceIsNoNumber) {
  const Reading reading =
      Parse("[CLIENT]\nREQUEST=TRUE\n[COORDINATES]\nSTATION1=here\nSTATION2=\nSTATION3=1000000\n");
  ASSERT_EQ(reading.Count(), 3u);
  EXPECT_TRUE(reading[0].IsNull());
  EXPECT_TRUE(reading[1].IsNull());
  EXPECT_NEAR(reading[2].longitude, 8.993216059187306, 1e-12);
  EXPECT_EQ(reading[2].latitude, 0.0);
}

TEST(BcrReader, ScansPlacesUpToTheFirstThingThatDoesNotFit) {
  const Reading reading = Parse(
      "[CLIENT]\nREQUEST=TRUE\n[COORDINATES]\n"
      "STATION1=+1000000,\t-2000000,7\n"
      "STATION2=1000000 ,-2000000\n"
      "STATION3=1000000.5,-2000000\n"
      "STATION4=1000000;-2000000\n"
      "STATION5=1000000,x\n"
      "STATION6=0xF4240,-2000000\n"
      "STATION7=,-2000000\n"
      "STATION8=-,-2000000\n"
      "STATION9=99999999999,-99999999999\n");
  ASSERT_EQ(reading.Count(), 9u);
  EXPECT_NEAR(reading[0].longitude, 8.993216059187306, 1e-12);
  EXPECT_NEAR(reading[0].latitude, -17.69808914616073, 1e-12);
  for (size_t i = 1; i < 5; ++i) {
    EXPECT_NEAR(reading[i].longitude, 8.993216059187306, 1e-12) << i;
    EXPECT_EQ(reading[i].latitude, 0.0) << i;
  }
  for (size_t i = 5; i < 8; ++i) EXPECT_TRUE(reading[i].IsNull()) << i;
  EXPECT_EQ(reading[8].longitude, 180.0);
  EXPECT_NEAR(reading[8].latitude, -90.0, 1e-9);
}

TEST(BcrReader, ReadsEightBitAndMarkedText) {
  const std::string file =
      "[CLIENT]\nREQUEST=TRUE\nROUTENAME=Stra\xDF"
      "e\n[COORDINATES]\nSTATION1=1,1\n[DESCRIPTION]\nSTATION1=K\xF6ln\n";
  const Reading narrow = Parse(file);
  EXPECT_EQ(narrow.lists[0]->name, "Stra\u00dfe");
  EXPECT_EQ(narrow[0].name, "K\u00f6ln");
  std::string wide = "\xFF\xFE";
  for (const char byte : file) wide.append({byte, '\0'});
  const Reading marked = Parse(wide);
  EXPECT_EQ(marked.lists[0]->name, "Stra\u00dfe");
  EXPECT_EQ(marked[0].name, "K\u00f6ln");
}

TEST(BcrReader, GivesTheStatusOfAMissingFile) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadBcr(folder.WidePathTo("none.bcr"), lists, true), kStatusFileNotFound);
  std::filesystem::create_directory(folder.PathTo("folder.bcr"));
  EXPECT_EQ(ReadBcr(folder.WidePathTo("folder.bcr"), lists, true), kStatusAccessDenied);
  EXPECT_EQ(ReadBcr(folder.Put("a.bcr", ""), lists, true), kStatusFileNotFound);
  EXPECT_TRUE(lists.empty());
}

TEST(BcrReader, ReadsDamagedFiles) {
  size_t before = 0;
  for (size_t length = 0; length <= kSampleFile.size(); ++length) {
    const Reading reading = Parse(kSampleFile.substr(0, length));
    // The request counts from its equals sign on.
    EXPECT_EQ(reading.status, length < 18 ? kStatusFileNotFound : kStatusSuccess) << length;
    EXPECT_GE(reading.Count(), before) << length;
    before = reading.Count();
  }
  EXPECT_EQ(before, 3u);
  EXPECT_EQ(Parse("[").status, kStatusFileNotFound);
  const Reading reading = Parse("[CLIENT]\nREQUEST=\0\n[COORDINATES]\nSTATION1=1000000\0,1\n"s);
  ASSERT_EQ(reading.Count(), 1u);
  EXPECT_NEAR(reading[0].longitude, 8.993216059187306, 1e-12);
  EXPECT_EQ(Parse("[CLIENT]\nREQUEST=" + std::string(1 << 20, 'x')).status, kStatusSuccess);
}

TEST(BcrReader, ReadsManyStationsInAnyOrder) {
  constexpr int kStations = 20000;
  std::string places = "[COORDINATES]\n";
  std::string names = "[DESCRIPTION]\n";
  for (int i = kStations; i > 0; --i) {
    const std::string key = "STATION" + std::to_string(i) + "=";
    places += key + "1000000,0\nUNIT" + key + "\n";
    names += key + "n" + std::to_string(i) + "\n" + key + "again\n";
  }
  const Reading reading = Parse(names + "[CLIENT]\nREQUEST=TRUE\n" + places);
  ASSERT_EQ(reading.Count(), size_t{kStations});
  EXPECT_EQ(reading[0].name, "n1");
  EXPECT_EQ(reading[99].name, "n100");
  EXPECT_EQ(reading[kStations - 1].name, "n20000");
  EXPECT_NEAR(reading[kStations - 1].longitude, 8.993216059187306, 1e-12);
  EXPECT_EQ(reading.passedOver, 0u);
}

TEST(BcrReader, ReadsTheExample) {
  PointLists lists;
  const WideString path = WidePath(CORVANE_SOURCE_FOLDER "/examples/romantic-road.bcr");
  EXPECT_EQ(ReadBcr(path, lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "Romantische Stra\u00dfe");
  ASSERT_EQ(lists[0]->Count(), 8u);
  EXPECT_EQ(lists[0]->points[0].name, "W\u00fcrzburg, Residenz");
  EXPECT_LE(lists[0]->points[0].DistanceTo(MakePoint(49.79278, 9.93889)), 1u);
  EXPECT_EQ(lists[0]->points[7].name, "Schloss Neuschwanstein");
}

}  // namespace
