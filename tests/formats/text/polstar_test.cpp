#include "formats/text/polstar.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/formats/text/reading.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

// 235221 = 0x000396D5, 4885661 = 0x004A8C9D; 35.0 is 0x4041800000000000.
const std::string kParis =
    "\x00\x00\x00\x00\xD5\x96\x03\x00\x9D\x8C\x4A\x00\x00\x00\x00\x00\x00\x00\x00\x00"
    "\x40\x41\x80\x00\x00\x00\x00\x00"s;

// -12778 = 0xFFFFCE16, -1 = 0xFFFFFFFF; -12.5 is 0xC029000000000000.
const std::string kSouthWest =
    "\x00\x00\x00\x00\x16\xCE\xFF\xFF\xFF\xFF\xFF\xFF\x00\x00\x00\x00\x00\x00\x00\x00"
    "\xC0\x29\x00\x00\x00\x00\x00\x00"s;

std::string PolstarBytes(const CGpsPointArray& list) { return BytesOf(WritePolstarBody, list); }

Reading Parse(std::string_view bytes) { return ReadBytes(ParsePolstar, bytes); }

TEST(PolstarWriter, CutsCoordinatesTowardZero) {
  // 2.352219 is 235221.9 units, and -0.12778999 is -12778.999.
  const auto route = MakeList("lost", MakePoint(48.85661, 2.352219, "lost", "lost", 35.0),
                              MakePoint(-0.000019, -0.12778999, "", "", -12.5));
  EXPECT_EQ(PolstarBytes(route), kParis + kSouthWest);
}

TEST(PolstarWriter, WritesAltitudeZeroAsZeros) {
  EXPECT_EQ(PolstarBytes(MakeList("", MakePoint(0, 0))), std::string(28, '\0'));
  EXPECT_EQ(PolstarBytes(CGpsRoute()), "");
}

TEST(PolstarWriter, WritesTheLeastNumberForPositionsOutOfRange) {
  const double infinity = std::numeric_limits<double>::infinity();
  const std::string bytes = PolstarBytes(MakeList("", MakePoint(infinity, 30000.0)));
  EXPECT_EQ(bytes.substr(4, 8), "\x00\x00\x00\x80\x00\x00\x00\x80"s);
}

TEST(PolstarWriter, WritesFilesWhateverTheLimit) {
  const TemporaryFolder folder;
  const auto route = MakeList("", MakePoint(48.85661, 2.352219, "", "", 35.0));
  EXPECT_EQ(WritePolstar(folder.WidePathTo("a.trl"), route, 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.trl"), kParis);
  EXPECT_EQ(WritePolstar(folder.WidePathTo("missing/a.trl"), route, 0, true), kStatusFailure);
}

TEST(PolstarReader, ReadsRecords) {
  const Reading reading = Parse(kParis + kSouthWest);
  EXPECT_EQ(reading.status, kStatusSuccess);
  ASSERT_EQ(reading.lists.size(), 1u);
  EXPECT_EQ(reading.lists[0]->GetKind(), kKindRoute);
  ASSERT_EQ(reading.Count(), 2u);
  EXPECT_EQ(reading[0].longitude, 2.35221);
  EXPECT_EQ(reading[0].latitude, 48.85661);
  EXPECT_EQ(reading[0].altitude, 35.0);
  EXPECT_EQ(reading[0].name, "");
  EXPECT_EQ(reading[1].longitude, -0.12778);
  EXPECT_EQ(reading[1].latitude, -0.00001);
  EXPECT_EQ(reading[1].altitude, -12.5);
  EXPECT_EQ(reading.passedOver, 0u);
}

TEST(PolstarReader, LooksOnlyAtPositionAndAltitude) {
  std::string record = kParis;
  record.replace(0, 4, "abcd").replace(12, 8, "efghijkl");
  const Reading reading = Parse(record);
  ASSERT_EQ(reading.Count(), 1u);
  EXPECT_EQ(reading[0].longitude, 2.35221);
  EXPECT_EQ(reading[0].altitude, 35.0);
}

TEST(PolstarReader, LosesOnlyACutTail) {
  for (size_t length = 0; length <= 28; ++length) {
    const Reading reading = Parse(kParis + kSouthWest.substr(0, length));
    EXPECT_EQ(reading.status, kStatusSuccess);
    EXPECT_EQ(reading.Count(), length == 28 ? 2u : 1u) << length;
    EXPECT_EQ(reading.passedOver, length % 28 == 0 ? 0u : 1u) << length;
  }
}

TEST(PolstarReader, GivesOneForAMissingFileAndAnEmptyRouteForAnEmptyOne) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadPolstar(folder.WidePathTo("none.trl"), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(ReadPolstar(folder.Put("a.trl", ""), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(PolstarReader, ReadsWhatTheWriterWrites) {
  const TemporaryFolder folder;
  const auto route = MakeList("", MakePoint(45.5, 7.25, "", "", 4808.73),
                              MakePoint(-33.75, -70.5, "", "", 0.1), MakePoint(0.5, 0, "", "", 1));
  EXPECT_EQ(WritePolstar(folder.WidePathTo("a.trl"), route, 0, true), kStatusSuccess);
  PointLists lists;
  EXPECT_EQ(ReadPolstar(folder.WidePathTo("a.trl"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 3u);
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(lists[0]->points[i].latitude, route.points[i].latitude);
    EXPECT_EQ(lists[0]->points[i].longitude, route.points[i].longitude);
    EXPECT_EQ(lists[0]->points[i].altitude, route.points[i].altitude);
  }
}

TEST(PolstarReader, ReadsTheExample) {
  PointLists lists;
  const WideString path = WidePath(CORVANE_SOURCE_FOLDER "/examples/high-tatras.trl");
  EXPECT_EQ(ReadPolstar(path, lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 7u);
  EXPECT_EQ(lists[0]->points[0].latitude, 49.29899);
  EXPECT_EQ(lists[0]->points[0].longitude, 19.94885);
  EXPECT_EQ(lists[0]->points[0].altitude, 838.0);
}

}  // namespace
