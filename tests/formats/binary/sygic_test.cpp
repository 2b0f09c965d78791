#include "formats/binary/sygic.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "platform/path_text.h"
#include "tests/formats/written_bytes.h"
#include "tests/hex_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

// In 1/100000 degree.
constexpr std::string_view k48AndAHalf = "50 01 4A 00";    // 4850000 = 0x4A0150
constexpr std::string_view k2AndAQuarter = "E8 6E 03 00";  // 225000 = 0x36EE8
constexpr std::string_view kMinusAHalf = "B0 3C FF FF";    // -50000 = -0xC350
constexpr std::string_view kOne = "A0 86 01 00";           // 100000 = 0x186A0

std::string McGuider(const CGpsPointArray& list) { return BytesOf(WriteSygicMcGuiderBody, list); }

CGpsRoute ThreeStops() {
  return MakeList("Tour", MakePoint(48.5, 2.25, "A"), MakePoint(1, -0.5, "B"),
                  MakePoint(-0.5, 1, "C"));
}

// "@v7" with its length, and a list name of four characters with its own.
std::string WaysHead() {
  return Hex("03 00 40 00 76 00 37 00") + Hex("04 00 54 00 6F 00 75 00 72 00");
}

// The length of "car", and it.
constexpr std::string_view kCar = "03 00 63 00 61 00 72 00";

// The part of the settings that is not zero: 60 bytes.
std::string Settings() {
  return Hex(
      "83 73 5F 50 3C 28 14 08 00 00 80 3F 8F C2 75 3F C3 F5 68 3F AE 47 61 3F CD CC 4C 3F "
      "33 33 33 3F 00 00 80 3F 77 BE 7F 3F EE 7C 7F 3F EE 7C 7F 3F 64 3B 7F 3F 64 3B 7F 3F "
      "02 00 01 01");
}

// ---- McGuider: writer ----

TEST(SygicMcGuiderWriter, WritesHeadAndStops) {
  EXPECT_EQ(McGuider(ThreeStops()), Hex("55 2B C3 03  03 00 00 00 FF FF 03 00") +
                                        Hex(k2AndAQuarter) + Hex(k48AndAHalf) +
                                        Hex("03 00 04 00 41 00 00 00") + Hex(kMinusAHalf) +
                                        Hex(kOne) + Hex("01 00 04 00 42 00 00 00") + Hex(kOne) +
                                        Hex(kMinusAHalf) + Hex("02 00 04 00 43 00 00 00"));
}

TEST(SygicMcGuiderWriter, SingleStopIsTheLast) {
  EXPECT_EQ(McGuider(MakeList("", MakePoint(48.5, 2.25, "A"))),
            Hex("55 2B C3 03  01 00 00 00 FF FF 01 00") + Hex(k2AndAQuarter) + Hex(k48AndAHalf) +
                Hex("02 00 04 00 41 00 00 00"));
}

TEST(SygicMcGuiderWriter, TwoStopsAreFirstAndLast) {
  const std::string bytes = McGuider(MakeList("", MakePoint(1, 1), MakePoint(2, 2)));
  ASSERT_EQ(bytes.size(), 12u + 2 * 14u);
  EXPECT_EQ(bytes.substr(12 + 8, 6), Hex("03 00 02 00 00 00"));
  EXPECT_EQ(bytes.substr(12 + 14 + 8, 6), Hex("02 00 02 00 00 00"));
}

TEST(SygicMcGuiderWriter, EmptyListIsTheHeadAlone) {
  EXPECT_EQ(McGuider(CGpsRoute()), Hex("55 2B C3 03  00 00 00 00 FF FF 00 00"));
}

TEST(SygicMcGuiderWriter, CutsCoordinatesTowardZero) {
  // 123456.7 up and down: 0x1E240
  EXPECT_EQ(McGuider(MakeList("", MakePoint(1.234567, -1.234567))).substr(12, 8),
            Hex("C0 1D FE FF 40 E2 01 00"));
}

TEST(SygicMcGuiderWriter, CountsTheBytesOfWideNames) {
  // Four units and the zero one.
  EXPECT_EQ(McGuider(MakeList("", MakePoint(1, 1, "\u0141\u00e9\U0001F600"))).substr(12 + 8),
            Hex("02 00 0A 00 41 01 E9 00 3D D8 00 DE 00 00"));
}

TEST(SygicMcGuiderWriter, CutsNamesThatItsSizeCannotTell) {
  // 32766 units and the zero one are 65534 bytes.
  const std::string letters = McGuider(MakeList("", MakePoint(1, 1, std::string(40000, 'x'))));
  EXPECT_EQ(letters.size(), 12u + 12u + 65534u);
  EXPECT_EQ(letters.substr(12 + 10, 2), Hex("FE FF"));
  EXPECT_EQ(letters.substr(letters.size() - 4), Hex("78 00 00 00"));
  // Not in the middle of a character of two units.
  const std::string pairs =
      McGuider(MakeList("", MakePoint(1, 1, std::string(32765, 'x') + "\U0001F600")));
  EXPECT_EQ(pairs.size(), 12u + 12u + 65532u);
  EXPECT_EQ(pairs.substr(pairs.size() - 4), Hex("78 00 00 00"));
}

TEST(SygicMcGuiderWriter, RefusesMorePointsThanItsCountCanTell) {
  const TemporaryFolder folder;
  CGpsRoute route;
  route.points.resize(65535);
  EXPECT_EQ(WriteSygicMcGuider(folder.WidePathTo("most.itf"), route, 0, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("most.itf").substr(0, 12), Hex("55 2B C3 03  FF FF 00 00 FF FF FF FF"));
  route.points.resize(65536);
  EXPECT_EQ(WriteSygicMcGuider(folder.WidePathTo("more.itf"), route, 0, true),
            kStatusInvalidParameter);
  EXPECT_FALSE(folder.Has("more.itf"));
}

// ---- McGuider: reader ----

TEST(SygicReader, ReadsWhatTheWriterWrites) {
  PointLists lists;
  EXPECT_EQ(ParseSygic(McGuider(ThreeStops()), lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "");
  ASSERT_EQ(lists[0]->Count(), 3u);
  EXPECT_EQ(lists[0]->points[0].name, "A");
  EXPECT_EQ(lists[0]->points[0].latitude, 48.5);
  EXPECT_EQ(lists[0]->points[0].longitude, 2.25);
  EXPECT_EQ(lists[0]->points[1].longitude, -0.5);
  EXPECT_EQ(lists[0]->points[2].latitude, -0.5);
}

TEST(SygicReader, ReadsFilesOfAnotherTimeWhenTheyFit) {
  const std::string bytes = Hex("01 02 03 04  02 00 00 00 FF FF 02 00") + Hex(k2AndAQuarter) +
                            Hex(k48AndAHalf) + Hex("09 00 0A 00 41 01 E9 00 3D D8 00 DE 00 00") +
                            Hex(kOne) + Hex(kOne) + Hex("02 00 02 00 00 00");
  PointLists lists;
  EXPECT_EQ(ParseSygic(bytes, lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].name, "\u0141\u00e9\U0001F600");
  EXPECT_EQ(lists[0]->points[1].name, "");

  EXPECT_EQ(ParseSygic(bytes + "x", lists, ContextInPlace()), kStatusBadFormat);
  for (size_t size = 0; size < bytes.size(); ++size)
    EXPECT_EQ(ParseSygic(bytes.substr(0, size), lists, ContextInPlace()), kStatusBadFormat) << size;
  EXPECT_EQ(lists.size(), 1u);
}

TEST(SygicReader, KeepsWholeRecordsOfAFileOfOurs) {
  const std::string bytes = McGuider(ThreeStops());
  for (size_t size = 0; size <= bytes.size(); ++size) {
    PointLists lists;
    ConversionContext context;
    const ConversionScope scope(context);
    const uint32_t status = ParseSygic(bytes.substr(0, size), lists, ContextInPlace());
    if (size < 12) {
      EXPECT_EQ(status, kStatusBadFormat) << size;
      EXPECT_TRUE(lists.empty()) << size;
      continue;
    }
    EXPECT_EQ(status, kStatusSuccess) << size;
    ASSERT_EQ(lists.size(), 1u) << size;
    EXPECT_EQ(lists[0]->Count(), (size - 12) / 16) << size;
    EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), size < bytes.size() ? 1u : 0u);
  }
  PointLists lists;
  EXPECT_EQ(ParseSygic(bytes + "more", lists, ContextInPlace()), kStatusSuccess);
  EXPECT_EQ(lists[0]->Count(), 3u);
}

TEST(SygicReader, NamesEndAtTheirSizeOrTheirZeroUnit) {
  const std::string position = Hex(kOne) + Hex(kOne) + Hex("01 00");
  PointLists lists;
  EXPECT_EQ(ParseSygic(Hex("55 2B C3 03  04 00 00 00 FF FF 04 00") +          //
                           position + Hex("04 00 41 00 42 00") +              // no zero unit
                           position + Hex("08 00 41 00 00 00 42 00 00 00") +  // one too early
                           position + Hex("03 00 41 00 42") +                 // an odd size
                           position + Hex("00 00"),                           // nothing
                       lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 4u);
  EXPECT_EQ(lists[0]->points[0].name, "AB");
  EXPECT_EQ(lists[0]->points[1].name, "A");
  EXPECT_EQ(lists[0]->points[2].name, "A");
  EXPECT_EQ(lists[0]->points[3].name, "");
}

TEST(SygicReader, RefusesTheLaterGenerations) {
  PointLists lists;
  for (const CGpsRoute& route : {CGpsRoute(), MakeList("", MakePoint(1, 1, "A")), ThreeStops()}) {
    EXPECT_EQ(ParseSygic(BytesOf(WriteSygic11Body, route), lists, ContextInPlace()),
              kStatusBadFormat);
    EXPECT_EQ(ParseSygic(BytesOf(WriteSygic13Body, route), lists, ContextInPlace()),
              kStatusBadFormat);
  }
  EXPECT_TRUE(lists.empty());
}

TEST(SygicReader, GivesOneForAMissingFileAndBadFormatForAnEmptyOne) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadSygic(folder.WidePathTo("none.itf"), lists, true), kStatusFailure);
  EXPECT_EQ(ReadSygic(folder.Put("a.itf", ""), lists, true), kStatusBadFormat);
  EXPECT_TRUE(lists.empty());
}

TEST(SygicReader, TakesBytesThatMeanNothing) {
  PointLists lists;
  for (const char byte : {'A', '\xFF'})
    EXPECT_EQ(ParseSygic(std::string(100000, byte), lists, ContextInPlace()), kStatusBadFormat);
  EXPECT_EQ(ParseSygic(Hex("55 2B C3 03") + Repeat(1000, 0xFF), lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

// ---- 11 and later ----

TEST(Sygic11Writer, WritesAWayForEachPairOfNeighbours) {
  const std::string settings = Settings() + Repeat(35, 0);
  EXPECT_EQ(BytesOf(WriteSygic11Body, ThreeStops()),
            WaysHead() + Hex(kCar) + Hex(k2AndAQuarter) + Hex(k48AndAHalf) + Hex(kMinusAHalf) +
                Hex(kOne) + settings + Hex(kCar) + Hex(kMinusAHalf) + Hex(kOne) + Hex(kOne) +
                Hex(kMinusAHalf) + settings);
}

TEST(Sygic11Writer, SinglePointIsAWayToItself) {
  EXPECT_EQ(BytesOf(WriteSygic11Body, MakeList("Tour", MakePoint(48.5, 2.25, "A"))),
            WaysHead() + Hex(kCar) + Hex(k2AndAQuarter) + Hex(k48AndAHalf) + Hex(k2AndAQuarter) +
                Hex(k48AndAHalf) + Settings() + Repeat(35, 0));
}

TEST(Sygic11Writer, EmptyListHasNoWay) {
  EXPECT_EQ(BytesOf(WriteSygic11Body, MakeList("Tour")), WaysHead());
  EXPECT_EQ(BytesOf(WriteSygic11Body, CGpsRoute()), Hex("03 00 40 00 76 00 37 00 00 00"));
}

TEST(Sygic11Writer, CountsTheUnitsOfTheListsName) {
  EXPECT_EQ(BytesOf(WriteSygic11Body, MakeList("\u0141\U0001F600")).substr(8),
            Hex("03 00 41 01 3D D8 00 DE"));
  const std::string cut = BytesOf(WriteSygic11Body, MakeList(std::string(70000, 'x')));
  EXPECT_EQ(cut.size(), 8u + 2u + 2 * 65535u);
  EXPECT_EQ(cut.substr(8, 2), Hex("FF FF"));
}

TEST(Sygic13Writer, WritesTaggedBlocksForEachPairOfNeighbours) {
  const std::string rest = "2TSR" + Settings() + Repeat(11, 0) + "2OVA" + Repeat(28, 0);
  EXPECT_EQ(BytesOf(WriteSygic13Body, ThreeStops()),
            WaysHead() + Hex(kCar) + "3FTI" + Hex(k2AndAQuarter) + Hex(k48AndAHalf) + Repeat(8, 0) +
                Hex(kMinusAHalf) + Hex(kOne) + Repeat(8, 0) + rest + Hex(kCar) + "3FTI" +
                Hex(kMinusAHalf) + Hex(kOne) + Repeat(8, 0) + Hex(kOne) + Hex(kMinusAHalf) +
                Repeat(8, 0) + rest);
}

TEST(Sygic13Writer, NeighbouringWaysShareThePointBetweenThem) {
  const std::string bytes = BytesOf(WriteSygic13Body, ThreeStops());
  constexpr size_t kHead = 18;
  constexpr size_t kWay = 8 + 4 + 32 + 4 + 71 + 4 + 28;
  ASSERT_EQ(bytes.size(), kHead + 2 * kWay);
  EXPECT_EQ(bytes.substr(kHead + 12 + 16, 8), bytes.substr(kHead + kWay + 12, 8));
}

TEST(Sygic13Writer, SinglePointIsAWayToItselfAndNoneIsNone) {
  const std::string bytes = BytesOf(WriteSygic13Body, MakeList("Tour", MakePoint(48.5, 2.25, "A")));
  EXPECT_EQ(bytes.substr(0, 18 + 12 + 32),
            WaysHead() + Hex(kCar) + "3FTI" + Hex(k2AndAQuarter) + Hex(k48AndAHalf) + Repeat(8, 0) +
                Hex(k2AndAQuarter) + Hex(k48AndAHalf) + Repeat(8, 0));
  EXPECT_EQ(bytes.size(), 18u + 151u);
  EXPECT_EQ(BytesOf(WriteSygic13Body, MakeList("Tour")), WaysHead());
}

TEST(SygicWriters, WriteFilesAndIgnoreTheSplitLimit) {
  const TemporaryFolder folder;
  const CGpsRoute route = ThreeStops();
  EXPECT_EQ(WriteSygicMcGuider(folder.WidePathTo("a.itf"), route, 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.itf"), McGuider(route));
  EXPECT_EQ(WriteSygic11(folder.WidePathTo("a.itf"), route, 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.itf"), BytesOf(WriteSygic11Body, route));
  EXPECT_EQ(WriteSygic13(folder.WidePathTo("a.itf"), route, 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.itf"), BytesOf(WriteSygic13Body, route));
}

TEST(SygicWriters, GiveOneForAFileThatCannotBeCreated) {
  const TemporaryFolder folder;
  const WideString path = folder.WidePathTo("missing/a.itf");
  EXPECT_EQ(WriteSygicMcGuider(path, ThreeStops(), 0, true), kStatusFailure);
  EXPECT_EQ(WriteSygic11(path, ThreeStops(), 0, true), kStatusFailure);
  EXPECT_EQ(WriteSygic13(path, ThreeStops(), 0, true), kStatusFailure);
}

TEST(Sygic, ReadsTheExample) {
  PointLists lists;
  EXPECT_EQ(ReadSygic(WidePath(CORVANE_SOURCE_FOLDER "/examples/flanders-coast.itf"), lists, true),
            kStatusSuccess);
  const CGpsPointArray& route = *lists.back();
  EXPECT_EQ(route.GetKind(), kKindRoute);
  ASSERT_EQ(route.Count(), 7u);
  EXPECT_EQ(route.points.front().name, "Brussels, Grand-Place");
  EXPECT_EQ(route.points.back().name, "Ypres");
  EXPECT_TRUE(route.points[6].IsNear(MakePoint(50.8511, 2.8857)));
}

}  // namespace
