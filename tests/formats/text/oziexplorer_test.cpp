#include "formats/text/oziexplorer.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/formats/text/oziexplorer_samples.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using namespace oziexplorer;
using std::string_literals::operator""s;

TEST(OziWriters, NeverCutNames) {
  const std::string fifty = "12345678901234567890123456789012345678901234567890";
  const auto list = MakeList("", MakePoint(1, 2, fifty));
  EXPECT_EQ(BytesOf(WriteOziRouteCeBody, list),
            Joined(kRt2Head, "H3,,,0\r\nW," + fifty + ",1.0000000,2.0000000,0\r\n"));
  EXPECT_EQ(BytesOf(WriteOziWaypointsBody, list),
            Joined(kWptHead, "1, " + fifty +
                                 ", +01.0000000, +002.0000000,, 18, 1, 3, 0, 65535, , 0, 0, 0, "
                                 "0.00000\r\n"));
}

TEST(OziTrackAndWaypoints, SurviveACutAtEveryByte) {
  const std::string track = Joined(kPltHead, "0, 2\r\n 1\r\n+48.5, +007.5, 0, 1.5, , ,\r\n");
  const size_t fourthComma = track.find(", , ,\r\n");
  for (size_t length = 0; length <= track.size(); ++length) {
    const Parsed parsed(ParseOziTrack, track.substr(0, length));
    EXPECT_EQ(parsed.status, kStatusSuccess) << length;
    ASSERT_EQ(parsed.lists.size(), 1u) << length;
    EXPECT_EQ(parsed.lists[0]->Count(), length > fourthComma ? 1u : 0u) << length;
  }

  const std::string waypoints = Joined(kWptHead, "1, a, 48.5, 7.5,, 18, 1, 3, 0, 9, c, 0, 0, 0, 1");
  const size_t fourthCommaOfWaypoint = waypoints.find(",, 18");
  for (size_t length = 0; length <= waypoints.size(); ++length) {
    const Parsed parsed(ParseOziWaypoints, waypoints.substr(0, length));
    EXPECT_EQ(parsed.status, kStatusSuccess) << length;
    ASSERT_EQ(parsed.lists.size(), 1u) << length;
    EXPECT_EQ(parsed.lists[0]->Count(), length > fourthCommaOfWaypoint ? 1u : 0u) << length;
  }
}

TEST(OziReaders, TakeZeroBytesAsText) {
  const Parsed route(ParseOziRoute, Joined(kRteHead, "R,1,A\0B,\nW,1,1,1,\0,1\0,2,\n"s));
  ASSERT_EQ(route.lists.size(), 1u);
  EXPECT_EQ(route.lists[0]->name, "A\0B"s);
  ASSERT_EQ(route.lists[0]->Count(), 1u);
  EXPECT_EQ(route.lists[0]->points[0].name, "\0"s);
  EXPECT_EQ(route.lists[0]->points[0].latitude, 1.0);

  const std::string zeros(1000, '\0');
  for (const FormatParseFn parse : {ParseOziRoute, ParseOziRouteCe}) {
    const Parsed parsed(parse, zeros);
    EXPECT_EQ(parsed.status, kStatusFailure);
    EXPECT_TRUE(parsed.lists.empty());
  }
  for (const FormatParseFn parse : {ParseOziTrack, ParseOziWaypoints}) {
    const Parsed parsed(parse, zeros);
    EXPECT_EQ(parsed.status, kStatusSuccess);
    EXPECT_EQ(parsed.lists[0]->Count(), 0u);
  }
}

TEST(OziReaders, TakeLongLines) {
  const std::string megabyte(1 << 20, 'n');
  const std::string commas(1 << 20, ',');
  const Parsed route(ParseOziRoute, Joined(kRteHead, "R,1," + megabyte + ",\nW,1,1,1," + megabyte +
                                                         ",1,2" + commas + "\n" + commas));
  ASSERT_EQ(route.lists[0]->Count(), 1u);
  EXPECT_EQ(route.lists[0]->points[0].name, megabyte);

  const Parsed waypoints(ParseOziWaypoints, "\n\n\n" + commas + "\n" + std::string(1 << 20, ' '));
  ASSERT_EQ(waypoints.lists[0]->Count(), 1u);
  EXPECT_TRUE(waypoints.lists[0]->points[0].IsNull());
}

TEST(OziReaders, RoutesWithoutPointsCannotFillTheMemory) {
  std::string routes(kRteHead);
  std::string ceRoutes(kRt2Head);
  for (int i = 0; i < 100000; ++i) {
    routes += "R,1,x,\n";
    ceRoutes += "H3,x,\n";
  }
  const Parsed empty(ParseOziRoute, routes);
  EXPECT_EQ(empty.status, kStatusSuccess);
  EXPECT_EQ(empty.lists.size(), 1000u);

  // The number and the name of the line that comes last are those that count.
  const Parsed route(ParseOziRoute, routes + "R,2,y,\nW,2,1,1,a,1,2,\nR\nW,-1,1,1,b,1,2,\n");
  ASSERT_EQ(route.lists.size(), 1001u);
  EXPECT_EQ(route.lists[999]->name, "y");
  ASSERT_EQ(route.lists[999]->Count(), 1u);
  EXPECT_EQ(route.lists[1000]->name, "");
  EXPECT_EQ(route.lists[1000]->points.at(0).name, "b");

  const Parsed ceRoute(ParseOziRouteCe, ceRoutes + "H3\nW,a,1,2,0\n");
  ASSERT_EQ(ceRoute.lists.size(), 1000u);
  EXPECT_EQ(ceRoute.lists[998]->name, "x");
  EXPECT_EQ(ceRoute.lists[999]->name, "");
  EXPECT_EQ(ceRoute.lists[999]->Count(), 1u);
}

using ReadFn = uint32_t (*)(const WideString&, PointLists&, bool);

TEST(OziReaders, TellEmptyTinyAndMissingFiles) {
  const TemporaryFolder folder;
  for (const ReadFn read : {ReadOziRoute, ReadOziRouteCe}) {
    PointLists lists;
    EXPECT_EQ(read(folder.Put("empty", ""), lists, true), kStatusFailure);
    EXPECT_EQ(read(folder.Put("tiny", "H"), lists, true), kStatusFailure);
    EXPECT_EQ(read(folder.WidePathTo("missing"), lists, true), kStatusFailure);
    EXPECT_TRUE(lists.empty());
  }
  for (const ReadFn read : {ReadOziTrack, ReadOziWaypoints}) {
    PointLists lists;
    EXPECT_EQ(read(folder.Put("empty", ""), lists, true), kStatusSuccess);
    EXPECT_EQ(read(folder.Put("tiny", "1"), lists, true), kStatusSuccess);
    ASSERT_EQ(lists.size(), 2u);
    EXPECT_EQ(lists[0]->Count() + lists[1]->Count(), 0u);
    EXPECT_EQ(read(folder.WidePathTo("missing"), lists, true), kStatusFailure);
    EXPECT_EQ(lists.size(), 2u);
  }
}

using WriteFn = uint32_t (*)(const WideString&, const CGpsPointArray&, uint32_t, bool);
using BodyFn = void (*)(ByteSink&, const CGpsPointArray&);

TEST(OziWriters, WriteOneFileWhateverTheLimit) {
  const TemporaryFolder folder;
  const auto list = MakeList("A", MakePoint(1, 2, "a"), MakePoint(3, 4, "b"), MakePoint(5, 6));
  const std::pair<WriteFn, BodyFn> formats[] = {{WriteOziRoute, WriteOziRouteBody},
                                                {WriteOziRouteCe, WriteOziRouteCeBody},
                                                {WriteOziTrack, WriteOziTrackBody},
                                                {WriteOziWaypoints, WriteOziWaypointsBody}};
  for (const auto& [write, writeBody] : formats) {
    EXPECT_EQ(write(folder.WidePathTo("a.txt"), list, 2, true), kStatusSuccess);
    EXPECT_EQ(folder.Get("a.txt"), BytesOf(writeBody, list));
    EXPECT_FALSE(folder.Has("a_1.txt"));
    EXPECT_EQ(write(folder.WidePathTo("missing/a.txt"), list, 0, true), kStatusFailure);
  }
}

TEST(OziReaders, ReadFilesOfTheWriters) {
  const TemporaryFolder folder;
  const auto list = MakeList("A", MakePoint(1, 2, "a"), MakePoint(3, 4, "b"));
  const std::pair<WriteFn, ReadFn> formats[] = {{WriteOziRoute, ReadOziRoute},
                                                {WriteOziRouteCe, ReadOziRouteCe},
                                                {WriteOziTrack, ReadOziTrack},
                                                {WriteOziWaypoints, ReadOziWaypoints}};
  for (const auto& [write, read] : formats) {
    PointLists lists;
    EXPECT_EQ(write(folder.WidePathTo("a.txt"), list, 0, true), kStatusSuccess);
    EXPECT_EQ(read(folder.WidePathTo("a.txt"), lists, true), kStatusSuccess);
    ASSERT_EQ(lists.size(), 1u);
    ASSERT_EQ(lists[0]->Count(), 2u);
    EXPECT_EQ(lists[0]->points[1].longitude, 4.0);
  }
}

}  // namespace
