#include "formats/text/kompass.h"

#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/formats/text/reading.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

std::string KompassBytes(const CGpsPointArray& list) { return BytesOf(WriteKompassBody, list); }

Reading Parse(std::string_view bytes) { return ReadBytes(ParseKompass, bytes); }

TEST(KompassWriter, WritesPositionsAndAltitudes) {
  const auto route = MakeList("lost", MakePoint(47.4211001, 10.9853122, "lost", "lost", 2962.06),
                              MakePoint(-0.5, -70.25, "", "", -3.456), MakePoint(0, 0));
  EXPECT_EQ(KompassBytes(route),
            "47.421100,10.985312,2962.06\r\n"
            "-0.500000,-70.250000,-3.46\r\n"
            "0.000000,0.000000,0.00\r\n");
  EXPECT_EQ(KompassBytes(CGpsRoute()), "");
}

TEST(KompassWriter, WritesFilesWhateverTheLimit) {
  const TemporaryFolder folder;
  const auto route = MakeList("", MakePoint(1, 2), MakePoint(3, 4));
  EXPECT_EQ(WriteKompass(folder.WidePathTo("a.tk"), route, 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.tk"), "1.000000,2.000000,0.00\r\n3.000000,4.000000,0.00\r\n");
  EXPECT_EQ(WriteKompass(folder.WidePathTo("missing/a.tk"), route, 0, true), kStatusFailure);
}

TEST(KompassReader, ReadsLinesWithAndWithoutAltitude) {
  const Reading reading = Parse("47.4211,10.985312,2962.06\r\n-0.5, -70.25\n1e1,2,3,4,5");
  EXPECT_EQ(reading.status, kStatusSuccess);
  ASSERT_EQ(reading.lists.size(), 1u);
  EXPECT_EQ(reading.lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(reading.lists[0]->name, "");
  ASSERT_EQ(reading.Count(), 3u);
  EXPECT_EQ(reading[0].latitude, 47.4211);
  EXPECT_EQ(reading[0].longitude, 10.985312);
  EXPECT_EQ(reading[0].altitude, 2962.06);
  EXPECT_EQ(reading[0].name, "");
  EXPECT_EQ(reading[1].latitude, -0.5);
  EXPECT_EQ(reading[1].longitude, -70.25);
  EXPECT_EQ(reading[1].altitude, 0.0);
  EXPECT_EQ(reading[2].latitude, 10.0);
  EXPECT_EQ(reading[2].longitude, 2.0);
  EXPECT_EQ(reading[2].altitude, 3.0);
  EXPECT_EQ(reading.passedOver, 0u);
}

TEST(KompassReader, KeepsNullPositions) {
  const Reading reading = Parse("0,0,0\n0,x\n");
  ASSERT_EQ(reading.Count(), 2u);
  EXPECT_TRUE(reading[0].IsNull());
  EXPECT_TRUE(reading[1].IsNull());
}

TEST(KompassReader, PassesOverLinesThatDoNotBeginWithANumber) {
  const Reading reading = Parse("latitude,longitude\n\n12.5\n,1\n-,1\nnan,1\n12.5,1.5\n");
  ASSERT_EQ(reading.Count(), 1u);
  EXPECT_EQ(reading[0].latitude, 12.5);
  EXPECT_EQ(reading.passedOver, 5u);
}

TEST(KompassReader, IgnoresAMarkOfUtf8) {
  const Reading reading = Parse(
      "\xEF\xBB\xBF"
      "47.5,11.5,700\n");
  ASSERT_EQ(reading.Count(), 1u);
  EXPECT_EQ(reading[0].latitude, 47.5);
}

TEST(KompassReader, GivesOneForAMissingFileAndAnEmptyRouteForAnEmptyOne) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadKompass(folder.WidePathTo("none.tk"), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(ReadKompass(folder.Put("a.tk", ""), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(KompassReader, ReadsWhatTheWriterWrites) {
  const auto route = MakeList("", MakePoint(47.421066, 10.985312, "", "", 2962.06),
                              MakePoint(-12.000001, -77.5, "", "", -0.25));
  const Reading reading = Parse(KompassBytes(route));
  ASSERT_EQ(reading.Count(), 2u);
  for (size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(reading[i].latitude, route.points[i].latitude);
    EXPECT_EQ(reading[i].longitude, route.points[i].longitude);
    EXPECT_EQ(reading[i].altitude, route.points[i].altitude);
  }
}

TEST(KompassReader, ReadsDamagedFiles) {
  ExpectCutsToBeRead(ParseKompass, "47.421066,10.985312,2962.06\r\n-12.000001,-77.5,-0.25\r\n");
  EXPECT_EQ(Parse("4").Count(), 0u);
  EXPECT_EQ(Parse(","s).Count(), 0u);
  EXPECT_EQ(Parse("1.5\0,2.5,3"s)[0].longitude, 2.5);
  EXPECT_EQ(Parse("1" + std::string(1 << 20, ',')).Count(), 1u);
  EXPECT_EQ(Parse(std::string(1 << 20, '9') + ",1").Count(), 1u);
}

TEST(KompassReader, ReadsTheExample) {
  PointLists lists;
  EXPECT_EQ(ReadKompass(WidePath(CORVANE_SOURCE_FOLDER "/examples/zugspitze.tk"), lists, true),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 6u);
  EXPECT_EQ(lists[0]->points[5].latitude, 47.421066);
  EXPECT_EQ(lists[0]->points[5].longitude, 10.985365);
  EXPECT_EQ(lists[0]->points[5].altitude, 2962.06);
}

}  // namespace
