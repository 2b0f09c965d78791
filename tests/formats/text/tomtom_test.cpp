#include "formats/text/tomtom.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

std::string ItnBytes(const CGpsPointArray& list) { return BytesOf(WriteItnBody, list); }

std::string Ov2Bytes(const CGpsPointArray& list) { return BytesOf(WriteOv2Body, list); }

CGpsRoute NumberedRoute(int count) {
  CGpsRoute route;
  for (int i = 1; i <= count; ++i)
    route.points.push_back(MakePoint(i, 2 * i, "P" + std::to_string(i)));
  return route;
}

TEST(ItnWriter, WritesFlagsPaddingAndLineEnds) {
  const auto route =
      MakeList("ignored", MakePoint(48.56614, 2.352227, "Paris", "lost", 35.0),
               MakePoint(0.001235, 0.001235, "Mid"), MakePoint(50.85045, 4.348785, "Bruxelles"));
  EXPECT_EQ(ItnBytes(route),
            "235222|4856614|Paris|4|\r\n"
            "000123|0000123|Mid|0|\r\n"
            "434878|5085045|Bruxelles|2|\r\n");
}

TEST(ItnWriter, CutsPositiveAndLiftsNegativeCoordinates) {
  // -0.12778 is the whole product -12778: its floor plus one half truncates to -12777.
  const auto route =
      MakeList("", MakePoint(2.3522269, -0.1277831, "a"), MakePoint(-0.5, -0.00123, "b"));
  EXPECT_EQ(ItnBytes(route),
            "-12778|0235222|a|4|\r\n"
            "-00122|-049999|b|2|\r\n");
}

TEST(ItnWriter, OneStopIsTheLast) {
  EXPECT_EQ(ItnBytes(MakeList("", MakePoint(1, 2, "only"))), "200000|0100000|only|2|\r\n");
  EXPECT_EQ(ItnBytes(CGpsRoute()), "");
}

TEST(ItnWriter, NarrowsNamesAndLeavesBarsAlone) {
  const auto route = MakeList("", MakePoint(1, 1, "Caf\u00e9|\u0141\u00f3d\u017a \U0001F600"));
  EXPECT_EQ(ItnBytes(route),
            "100000|0100000|Caf\xE9|?\xF3"
            "d? ??|2|\r\n");
}

TEST(ItnWriter, SplitsWithOneStopOfOverlap) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteItn(folder.WidePathTo("name.itn"), NumberedRoute(10), 4, true), kStatusSuccess);
  EXPECT_FALSE(folder.Has("name.itn"));
  EXPECT_EQ(folder.Get("name_1.itn"),
            "200000|0100000|P1|4|\r\n400000|0200000|P2|0|\r\n"
            "600000|0300000|P3|0|\r\n800000|0400000|P4|2|\r\n");
  EXPECT_EQ(folder.Get("name_2.itn"),
            "800000|0400000|P4|4|\r\n1000000|0500000|P5|0|\r\n"
            "1200000|0600000|P6|0|\r\n1400000|0700000|P7|2|\r\n");
  EXPECT_EQ(folder.Get("name_3.itn"),
            "1400000|0700000|P7|4|\r\n1600000|0800000|P8|0|\r\n"
            "1800000|0900000|P9|0|\r\n2000000|1000000|P10|2|\r\n");
  EXPECT_FALSE(folder.Has("name_4.itn"));
}

TEST(ItnWriter, LimitOfThePointCountDoesNotSplit) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteItn(folder.WidePathTo("a.itn"), NumberedRoute(4), 4, true), kStatusSuccess);
  EXPECT_TRUE(folder.Has("a.itn"));
  EXPECT_FALSE(folder.Has("a_1.itn"));
}

TEST(ItnWriter, RefusesPartsOfOnePoint) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteItn(folder.WidePathTo("a.itn"), NumberedRoute(3), 1, true),
            kStatusInvalidParameter);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(ItnWriter, NumberGoesToTheFrontOfAPathWithoutADot) {
  const TemporaryFolder folder;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  const uint32_t status = WriteItn(u"route", NumberedRoute(3), 2, true);
  std::filesystem::current_path(before);
  EXPECT_EQ(status, kStatusSuccess);
  EXPECT_TRUE(folder.Has("_1route"));
  EXPECT_TRUE(folder.Has("_2route"));
}

TEST(ItnWriter, SplitPassesOverPartsThatCannotBeWritten) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.PathTo("a_1.itn"));
  EXPECT_EQ(WriteItn(folder.WidePathTo("a.itn"), NumberedRoute(3), 2, true), kStatusSuccess);
  EXPECT_TRUE(folder.Has("a_2.itn"));
}

TEST(ItnWriter, ReportsAFileThatCannotBeWritten) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteItn(folder.WidePathTo("missing/a.itn"), NumberedRoute(1), 0, true),
            kStatusFailure);
}

TEST(ItnReader, TakesLinesOfFourTokensOnly) {
  PointLists lists;
  EXPECT_EQ(ParseItn("123456|4876543|Home\n123456|4876543|Home|\r\n\n1|2|A|4|x|y\n", lists,
                     ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "");
  ASSERT_EQ(lists[0]->Count(), 2u);
  const CGpsPoint& home = lists[0]->points[0];
  EXPECT_EQ(home.longitude, 1.23456);
  EXPECT_EQ(home.latitude, 48.76543);
  EXPECT_EQ(home.name, "Home");
  EXPECT_EQ(home.comment, "");
  EXPECT_EQ(home.altitude, 0.0);
  EXPECT_EQ(home.tolerance, kDefaultTolerance);
  EXPECT_EQ(lists[0]->points[1].name, "A");
}

TEST(ItnReader, ReadsHexadecimalBehindItsMark) {
  PointLists lists;
  ParseItn("0x1E240|0x4A7A47|A||", lists, ContextInPlace());
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].longitude, 1.23456);
  EXPECT_EQ(lists[0]->points[0].latitude, 48.80967);
}

TEST(ItnReader, KeepsStopsWhoseCoordinatesAreNoNumbers) {
  PointLists lists;
  ParseItn("east|-500000x|A|0|\n|||", lists, ContextInPlace());
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].longitude, 0.0);
  EXPECT_EQ(lists[0]->points[0].latitude, -5.0);
  EXPECT_TRUE(lists[0]->points[1].IsNull());
}

TEST(ItnReader, WidensNamesWithoutAMarkAndKeepsThemBehindOne) {
  PointLists lists;
  ParseItn("1|2|Caf\xE9|0|\n", lists, ContextInPlace());
  ParseItn(
      "\xEF\xBB\xBF"
      "1|2|Caf\xC3\xA9|0|\n",
      lists, ContextInPlace());
  ParseItn("1|2|Caf\xC3\xA9|0|\n", lists, ContextInPlace());
  EXPECT_EQ(lists[0]->points[0].name, "Caf\u00e9");
  EXPECT_EQ(lists[1]->points[0].name, "Caf\u00e9");
  EXPECT_EQ(lists[1]->points[0].longitude, 0.00001);
  EXPECT_EQ(lists[2]->points[0].name, "Caf\u00c3\u00a9");
}

TEST(ItnReader, ReadsOtherEncodingsAsBytesBehindTheirMark) {
  PointLists lists;
  EXPECT_EQ(ParseItn("\xFF\xFE"
                     "1|2|\xC3\xA9|4|\r\n",
                     lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].longitude, 0.00001);
  EXPECT_EQ(lists[0]->points[0].name, "\u00c3\u00a9");
}

TEST(ItnReader, ClampsNumbersThatAreTooLarge) {
  PointLists lists;
  EXPECT_EQ(ParseItn("99999999999|-99999999999|A|0|\n", lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].longitude, 21474.83647);
  EXPECT_EQ(lists[0]->points[0].latitude, -21474.83648);
}

TEST(ItnReader, TakesCutFilesAndLongLines) {
  const std::string whole = "1|2|A|4|\r\n3|4|B|2|\r\n";
  // A stop counts from the bar behind its name on, at the 6th and at the 16th byte.
  for (size_t length = 0; length <= whole.size(); ++length) {
    PointLists lists;
    EXPECT_EQ(ParseItn(whole.substr(0, length), lists, ContextInPlace()), kStatusSuccess);
    EXPECT_EQ(lists[0]->Count(), length >= 16 ? 2u : length >= 6 ? 1u : 0u) << length;
  }
  PointLists lists;
  EXPECT_EQ(ParseItn("1|2|" + std::string(1000000, 'x') + "|4|" + std::string(1000000, '|'), lists,
                     ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name.size(), 1000000u);
}

TEST(ItnReader, GivesAnEmptyRouteForAnEmptyFileAndOneForNone) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadItn(folder.Put("a.itn", ""), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
  EXPECT_EQ(ReadItn(folder.WidePathTo("none.itn"), lists, true), kStatusFailure);
  EXPECT_EQ(lists.size(), 1u);
}

// Sees points, and lets none be kept.
class Seeing final : public PointWatcher {
 public:
  bool Takes(const CGpsPointArray&, const CGpsPoint& point) override {
    names += point.name + ";";
    return true;
  }

  std::string names;
};

TEST(ItnReader, HandsOnTheStopsOfAFileThatArrivesPieceByPiece) {
  std::string_view rest =
      "\xEF\xBB\xBF"
      "700000|4810000|A\u010d|4|\r\n\r\nbroken\n1|2|B|0|\n1|3|C";
  Seeing seeing;
  ConversionContext context;
  context.watcher = &seeing;
  context.incoming = [&rest](char* data, size_t size) -> std::optional<size_t> {
    const size_t count = rest.copy(data, std::min<size_t>(size, 2));
    rest.remove_prefix(count);
    return count;
  };
  PointLists lists;
  {
    const ConversionScope scope(context);
    EXPECT_EQ(ReadItn(WideString(), lists, true), kStatusSuccess);
  }
  EXPECT_EQ(seeing.names, "A\u010d;B;");
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 2u);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, "A\u010d");
}

TEST(Ov2Writer, WritesRecordsOfTypeTwo) {
  const auto list = MakeList("", MakePoint(48.56614, 2.352227, "A\u0141\u00e9", "lost", 5),
                             MakePoint(-1.0, 0, ""));
  // 235222 = 0x396D6, 4856614 = 0x4A1B26, -99999 = 0xFFFE7961
  EXPECT_EQ(Ov2Bytes(list),
            "\x02\x11\x00\x00\x00\xD6\x96\x03\x00\x26\x1B\x4A\x00"
            "A?\xE9\x00"
            "\x02\x0E\x00\x00\x00\x00\x00\x00\x00\x61\x79\xFE\xFF\x00"s);
}

TEST(Ov2Writer, CountsTheNarrowedName) {
  const auto list = MakeList("", MakePoint(-0.00001, 0, "\u0141\u00e9\U0001F600"));
  // A whole number below zero comes out one higher: -1 as 0.
  EXPECT_EQ(Ov2Bytes(list), "\x02\x12\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00?\xE9??\x00"s);
}

TEST(Ov2Reader, ReadsPoiRecordsAndSkipsTheOthers) {
  const std::string bytes = "\x01" + std::string(20, 'x') + "\x00\x07\x00\x00\x00zz"s +
                            "\x02\x0F\x00\x00\x00\x01\x00\x00\x00\x02\x00\x00\x00\xE9\x00"s +
                            "\x03\x13\x00\x00\x00\xFF\xFF\xFF\xFF\x04\x00\x00\x00"
                            "B\x00more"s;
  PointLists lists;
  EXPECT_EQ(ParseOv2(bytes, lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindPois);
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].name, "\u00e9");
  EXPECT_EQ(lists[0]->points[0].longitude, 0.00001);
  EXPECT_EQ(lists[0]->points[0].latitude, 0.00002);
  EXPECT_EQ(lists[0]->points[1].name, "B");
  EXPECT_EQ(lists[0]->points[1].longitude, -0.00001);
}

TEST(Ov2Reader, StopsAtAnUnknownTypeWithThePointsSoFar) {
  PointLists lists;
  EXPECT_EQ(ParseOv2("\x02\x0F\x00\x00\x00\x01\x00\x00\x00\x02\x00\x00\x00"
                     "A\x00\x09"s,
                     lists, ContextInPlace()),
            kStatusFailure);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 1u);
}

TEST(Ov2Reader, AreasOnlyGiveAnEmptyList) {
  PointLists lists;
  EXPECT_EQ(ParseOv2("\x01" + std::string(20, 'x') + "\x01" + std::string(20, 'y'), lists,
                     ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(Ov2Reader, EndsAtARecordThatLeadsNowhere) {
  PointLists lists;
  EXPECT_EQ(ParseOv2("\x00\x00\x00\x00\x00\x02"s, lists, ContextInPlace()), kStatusSuccess);
  EXPECT_EQ(ParseOv2("\x00\xFB\xFF\xFF\xFF\x02"s, lists, ContextInPlace()), kStatusSuccess);
  EXPECT_EQ(lists[0]->Count() + lists[1]->Count(), 0u);
}

TEST(Ov2Reader, KeepsAPointWhoseRecordLeadsNowhereOrPastTheEnd) {
  for (const std::string& length :
       {"\x00\x00\x00\x00"s, "\xFF\xFF\xFF\xFF"s, "\xFF\xFF\xFF\x7F"s}) {
    PointLists lists;
    EXPECT_EQ(ParseOv2("\x02" + length +
                           "\x01\x00\x00\x00\x02\x00\x00\x00"
                           "A\x00\x09"s,
                       lists, ContextInPlace()),
              kStatusSuccess);
    ASSERT_EQ(lists[0]->Count(), 1u);
    EXPECT_EQ(lists[0]->points[0].name, "A");
  }
}

TEST(Ov2Reader, DropsARecordWhoseNameIsCutByTheEnd) {
  const std::string whole =
      "\x02\x10\x00\x00\x00\x01\x00\x00\x00\x02\x00\x00\x00"
      "AB\x00"s;
  for (size_t length = 0; length <= whole.size(); ++length) {
    PointLists lists;
    EXPECT_EQ(ParseOv2(whole.substr(0, length), lists, ContextInPlace()), kStatusSuccess);
    EXPECT_EQ(lists[0]->Count(), length == whole.size() ? 1u : 0u) << length;
  }
}

TEST(Ov2Reader, GivesOneForAMissingFileAndAnEmptyListForAnEmptyOne) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadOv2(folder.WidePathTo("none.ov2"), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(ReadOv2(folder.Put("a.ov2", ""), lists, true), kStatusSuccess);
  EXPECT_EQ(lists.size(), 1u);
}

TEST(TomTom, RoundTripsThroughFiles) {
  const TemporaryFolder folder;
  const CGpsRoute route = NumberedRoute(3);
  EXPECT_EQ(WriteOv2(folder.WidePathTo("a.ov2"), route, 0, true), kStatusSuccess);
  EXPECT_EQ(WriteItn(folder.WidePathTo("a.itn"), route, 0, true), kStatusSuccess);
  PointLists lists;
  EXPECT_EQ(ReadOv2(folder.WidePathTo("a.ov2"), lists, true), kStatusSuccess);
  EXPECT_EQ(ReadItn(folder.WidePathTo("a.itn"), lists, true), kStatusSuccess);
  for (const auto& list : lists) {
    ASSERT_EQ(list->Count(), 3u);
    for (size_t i = 0; i < 3; ++i) EXPECT_EQ(list->points[i], route.points[i]);
  }
}

}  // namespace
