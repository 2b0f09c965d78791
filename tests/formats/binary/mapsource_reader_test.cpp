#include "formats/binary/mapsource_reader.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/binary/mapsource_gdb.h"
#include "tests/formats/binary/mapsource_bytes.h"
#include "tests/formats/points_in.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

// The frame of records, on files that are cut, damaged or made to do harm. Read as `.gdb`; what the
// formats have apart plays no part here.

namespace {

using namespace mapsource;
using namespace mapsource::gdb;

uint32_t Parse(const std::string& bytes, PointLists& lists) {
  return ParseGdbBuffer(bytes.data(), bytes.size(), lists);
}

TEST(MapSourceReader, ReadsARecordThatLeadsPastTheEndAndEnds) {
  const std::string body =
      Text("A") + Int32(0) + Text("") + Repeat(22, 0) + Place(kNorth45, kEast90) + Text("note");
  PointLists lists;
  EXPECT_EQ(Parse(HeadOfVersion('l') + RecordOfLength(0x7FFFFFFF, 'W', body) +
                      Waypoint("B", 0, Place(kNorth45, kEast90)),
                  lists),
            kStatusSuccess);
  EXPECT_EQ(NamesOf(*lists[0]), "A;");
  EXPECT_EQ(lists[0]->points[0].comment, "note");
}

TEST(MapSourceReader, NegativeLengthEndsTheWalkAtOnce) {
  const std::string body =
      Text("B") + Int32(0) + Text("") + Repeat(22, 0) + Place(kNorth45, kEast90) + Text("");
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Parse(HeadOfVersion('l') + Waypoint("A", 0, Place(kNorth45, kEast90)) +
                      RecordOfLength(-1, 'W', body) + Waypoint("C", 0, Place(kNorth45, kEast90)),
                  lists),
            kStatusSuccess);
  EXPECT_EQ(NamesOf(*lists[0]), "A;");
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 1u);
}

TEST(MapSourceReader, FieldsCountAndNotTheLength) {
  // The walk goes on inside the body, where another record begins.
  const std::string inner = Waypoint("In", 0, Place(kNorth11, kEast90));
  const std::string body =
      Text("Out") + Int32(0) + Text("") + Repeat(22, 0) + Place(kNorth45, kEast90) + inner;
  const int32_t start = 4 + 4 + 1 + 22 + 9;
  PointLists lists;
  EXPECT_EQ(Parse(HeadOfVersion('l') + RecordOfLength(start, 'W', body), lists), kStatusSuccess);
  EXPECT_EQ(NamesOf(*lists[0]), "Out;In;");
}

TEST(MapSourceReader, KeepsWhatIsWholeOfAFileCutAnywhere) {
  const std::string place = Place(kNorth45, kEast90);
  const std::string head = HeadOfVersion('l');
  const std::string free = Waypoint("Free", 0, place, "note");
  const std::string pool = Waypoint("A", 8, place);
  const std::string routeHead = RouteHead("Tour", 2);
  const std::string stop = LastStop("A", 2);
  const std::string trackHead = Text("Ride") + Repeat(5, 0) + Int32(2);
  const std::string trackPoint = place + Hex("00 00 00");
  const std::string bytes = head + free + pool + Record('R', routeHead + stop + stop) +
                            Record('T', trackHead + trackPoint + trackPoint);

  // A free waypoint is there with its position, a stop with its name, a track point with its
  // position.
  const size_t freeAt = head.size() + free.size() - Text("note").size() - 4;
  const size_t routeAt = head.size() + free.size() + pool.size() + 5;
  const size_t firstStopAt = routeAt + routeHead.size() + Text("A").size();
  const size_t trackAt = routeAt + routeHead.size() + 2 * stop.size() + 5;
  const size_t firstTrackPointAt = trackAt + trackHead.size() + place.size();
  for (size_t size = 6; size <= bytes.size(); ++size) {
    PointLists lists;
    ASSERT_EQ(Parse(bytes.substr(0, size), lists), kStatusSuccess) << size;
    ASSERT_EQ(lists.size(), 1u + (size >= routeAt ? 1 : 0) + (size >= trackAt ? 1 : 0)) << size;
    EXPECT_EQ(lists[0]->Count(), size >= freeAt ? 1u : 0u) << size;
    if (size >= routeAt) {
      const size_t stops =
          (size >= firstStopAt ? 1 : 0) + (size >= firstStopAt + stop.size() ? 1 : 0);
      EXPECT_EQ(lists[1]->Count(), stops) << size;
    }
    if (size >= trackAt) {
      const size_t points = (size >= firstTrackPointAt ? 1 : 0) +
                            (size >= firstTrackPointAt + trackPoint.size() ? 1 : 0);
      EXPECT_EQ(lists[2]->Count(), points) << size;
    }
  }
}

TEST(MapSourceReader, CutRecordsAreNoted) {
  const std::string bytes = HeadOfVersion('l') + Waypoint("A", 0, Place(kNorth45, kEast90));
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Parse(bytes.substr(0, bytes.size() - 20), lists), kStatusSuccess);
  EXPECT_EQ(lists[0]->Count(), 0u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 1u);
}

TEST(MapSourceReader, HostileCountsEndWithTheFile) {
  const std::string head = HeadOfVersion('l') + Waypoint("A", 8, Place(kNorth45, kEast90));
  constexpr int32_t kMost = 0x7FFFFFFF;
  const std::string stop = Text("A") + Int32(0) + Text("") + Repeat(22, 0) + Repeat(19, 0);
  for (const std::string& record :
       {Record('R', RouteHead("", kMost)), Record('R', RouteHead("", kMost) + stop + Int32(kMost)),
        Record('R', RouteHead("", kMost) + LastStop("A", 2)),
        Record('T', Text("") + Repeat(5, 0) + Int32(kMost))}) {
    PointLists lists;
    EXPECT_EQ(Parse(head + record, lists), kStatusSuccess);
    ASSERT_EQ(lists.size(), 2u);
    EXPECT_LE(lists[1]->Count(), 1u);
  }
  PointLists lists;
  EXPECT_EQ(Parse(head + Record('R', RouteHead("", -1) + LastStop("A", 2)) +
                      Record('T', Text("") + Repeat(5, 0) + Int32(-1) + Place(kNorth45, kEast90)),
                  lists),
            kStatusSuccess);
  EXPECT_EQ(lists[1]->Count(), 0u);
  EXPECT_EQ(lists[2]->Count(), 0u);
}

TEST(MapSourceReader, RecordsThatAllLeadThroughTheWholeFileComeToAnEnd) {
  // Each of these claims no length at all and has a thousand million track points: taken at their
  // word, they would make hundreds of millions of points of 100 KB.
  std::string bytes = HeadOfVersion('l');
  for (int i = 0; i < 20000; ++i) bytes += RecordOfLength(0, 'T', "");
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
  // What may be read twice: 4 * 100 KB + 1 MB, at 12 bytes a point.
  EXPECT_LT(PointsIn(lists), 150000u);
  // Every track has been cut, and the walk itself.
  const size_t tracks = lists.size() - 1;
  EXPECT_LT(tracks, 20u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), tracks + 1);
}

TEST(MapSourceReader, CommentsAreNotCopiedWithoutEnd) {
  // A comment of 1 MB, and 20,000 stops that would all take it.
  std::string stops;
  for (int i = 0; i < 20000; ++i) stops += LastStop("", 1);
  PointLists lists;
  EXPECT_EQ(Parse(HeadOfVersion('k') +
                      Waypoint("", 8, Place(kNorth45, kEast90), std::string(1 << 20, 'x')) +
                      Record('R', RouteHead("", 20000) + stops),
                  lists),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_GE(lists[1]->Count(), 4u);
  EXPECT_LT(lists[1]->Count(), 40u);
}

TEST(MapSourceReader, ListsWithoutPointsAreNotMadeWithoutEnd) {
  // 12 and 15 bytes a record, and no point in any of them.
  const std::string route = Record('R', RouteHead("", 0));
  const std::string track = Record('T', Text("") + Repeat(5, 0) + Int32(0));
  ASSERT_EQ(route.size() + track.size(), 27u);
  std::string bytes = HeadOfVersion('l');
  for (int i = 0; i < 50000; ++i) bytes += route + track;
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
  // 4 * (50000 * 27 + 30) + 2^20 bytes at 1024 a list are 6297.6 lists; the waypoints come before.
  EXPECT_EQ(lists.size(), 6298u + 1u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 1u);

  // A thousand of them are no harm, and what follows is read.
  bytes = HeadOfVersion('l');
  for (int i = 0; i < 500; ++i) bytes += route + track;
  lists.clear();
  EXPECT_EQ(Parse(bytes + Waypoint("A", 0, Place(kNorth45, kEast90)), lists), kStatusSuccess);
  EXPECT_EQ(lists.size(), 1001u);
  EXPECT_EQ(NamesOf(*lists[0]), "A;");
}

TEST(MapSourceReader, FindsStopsAmongVeryManyNames) {
  CGpsRoute route;
  for (int i = 0; i < 200000; ++i)
    route.points.push_back(MakePoint(i * 0.0005 - 50, i % 360 - 180, "Stop " + std::to_string(i)));
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Parse(BytesOf(WriteGdbBody, route), lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  ASSERT_EQ(lists[1]->Count(), route.Count());
  EXPECT_EQ(lists[1]->points[0].name, "Stop 0");
  EXPECT_EQ(lists[1]->points[199999].name, "Stop 199999");
  EXPECT_EQ(context.notes.Count(ConversionNote::kStopWithoutWaypoint), 0u);
}

TEST(MapSourceReader, TakesALongRecordOfBytesThatMeanNothing) {
  for (const char type : {'W', 'R', 'T', 'D', 'A', 'Q'}) {
    for (const char byte : {'\0', 'A', '\xFF'}) {
      PointLists lists;
      EXPECT_EQ(Parse(HeadOfVersion('l') + Record(type, std::string(100000, byte)), lists),
                kStatusSuccess);
    }
  }
}

}  // namespace
