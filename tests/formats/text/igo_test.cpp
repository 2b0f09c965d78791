#include "formats/text/igo.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "base/text.h"
#include "tests/formats/text/reading.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

Reading Parse(std::string_view bytes) { return ReadBytes(ParseUpoi, bytes); }

// The bytes of a wide text, little-endian, with its mark.
std::string Utf16File(std::u16string_view text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  return bytes;
}

CGpsRoute SampleRoute() {
  return MakeList("lost", MakePoint(47.4979124, 19.0402, "Budapest", "F\u0151v\u00e1ros", 96.0),
                  MakePoint(-33.5, -70.25, "", ""));
}

TEST(IgoWriter, WritesVersion80) {
  EXPECT_EQ(BytesOf(WriteUpoi80Body, SampleRoute()),
            Utf16File(u"1|Corvane Map|Budapest||47.497912|19.040200||||||||F\u0151v\u00e1ros|\r\n"
                      u"2|Corvane Map|||-33.500000|-70.250000|||||||||\r\n"));
}

TEST(IgoWriter, WritesVersion83) {
  EXPECT_EQ(BytesOf(WriteUpoi83Body, SampleRoute()),
            Utf16File(u"1|Corvane Map|Budapest||47.497912|19.040200|||||||||F\u0151v\u00e1ros||\r\n"
                      u"2|Corvane Map|||-33.500000|-70.250000|||||||||||\r\n"));
}

TEST(IgoWriter, WritesUtf16LittleEndianBehindItsMark) {
  const std::string bytes =
      BytesOf(WriteUpoi80Body, MakeList("", MakePoint(1, 2, "\u0141\U0001F600")));
  EXPECT_EQ(bytes.substr(0, 6), "\xFF\xFE\x31\x00\x7C\x00"s);
  // U+0141, then U+1F600 as D83D DE00.
  EXPECT_EQ(bytes.substr(2 + 2 * 14, 8), "\x41\x01\x3D\xD8\x00\xDE\x7C\x00"s);
}

TEST(IgoWriter, LeavesTextAlone) {
  const auto route = MakeList("", MakePoint(1, 2, "a|b, \"c\"=d", std::string(5000, 'x')));
  EXPECT_EQ(BytesOf(WriteUpoi80Body, route),
            Utf16File(u"1|Corvane Map|a|b, \"c\"=d||1.000000|2.000000||||||||" +
                      std::u16string(5000, u'x') + u"|\r\n"));
}

TEST(IgoWriter, WritesTheMarkAloneForAnEmptyList) {
  EXPECT_EQ(BytesOf(WriteUpoi80Body, CGpsRoute()), "\xFF\xFE");
  EXPECT_EQ(BytesOf(WriteUpoi83Body, CGpsRoute()), "\xFF\xFE");
}

TEST(IgoWriter, WritesFilesWhateverTheLimit) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteUpoi80(folder.WidePathTo("0.upoi"), SampleRoute(), 1, true), kStatusSuccess);
  EXPECT_EQ(WriteUpoi83(folder.WidePathTo("3.upoi"), SampleRoute(), 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("0.upoi"), BytesOf(WriteUpoi80Body, SampleRoute()));
  EXPECT_EQ(folder.Get("3.upoi"), BytesOf(WriteUpoi83Body, SampleRoute()));
  const WideString missing = folder.WidePathTo("missing/a.upoi");
  EXPECT_EQ(WriteUpoi80(missing, SampleRoute(), 0, true), kStatusFailure);
  EXPECT_EQ(WriteUpoi83(missing, SampleRoute(), 0, true), kStatusFailure);
}

TEST(IgoReader, ReadsBothVersions) {
  const Reading reading =
      Parse(Utf16File(u"1|Corvane Map|Gy\u0151r||47.6875|17.6504||||||||nyolc|\r\n"
                      u"2|Corvane Map|\u6771\u4eac||35.6762|139.6503|||||||||h\u00e1rom||\r\n"));
  EXPECT_EQ(reading.status, kStatusSuccess);
  ASSERT_EQ(reading.lists.size(), 1u);
  EXPECT_EQ(reading.lists[0]->GetKind(), kKindRoute);
  ASSERT_EQ(reading.Count(), 2u);
  EXPECT_EQ(reading[0].name, "Gy\u0151r");
  EXPECT_EQ(reading[0].latitude, 47.6875);
  EXPECT_EQ(reading[0].longitude, 17.6504);
  EXPECT_EQ(reading[0].comment, "nyolc");
  EXPECT_EQ(reading[1].name, "\u6771\u4eac");
  EXPECT_EQ(reading[1].latitude, 35.6762);
  EXPECT_EQ(reading[1].longitude, 139.6503);
  EXPECT_EQ(reading[1].comment, "h\u00e1rom");
}

TEST(IgoReader, SeventeenFieldsMoveTheComment) {
  const Reading reading = Parse(
      "0|1|n|3|4|5|6|7|8|9|10|11|12|c13|c14|15\n"
      "0|1|n|3|4|5|6|7|8|9|10|11|12|c13|c14|15|16\n"
      "0|1|n|3|4|5|6|7|8|9|10|11|12|c13|c14|15|16|17\n"
      "0|1|n|3|4|5|6|7|8|9|10|11|12\n"
      "0|1|n|3|4|5\n");
  ASSERT_EQ(reading.Count(), 5u);
  EXPECT_EQ(reading[0].comment, "c13");
  EXPECT_EQ(reading[1].comment, "c14");
  EXPECT_EQ(reading[2].comment, "c14");
  EXPECT_EQ(reading[3].comment, "");
  EXPECT_EQ(reading[4].latitude, 4.0);
  EXPECT_EQ(reading[4].longitude, 5.0);
}

TEST(IgoReader, PassesOverLinesWithoutAPosition) {
  const Reading reading = Parse("1|g|name||4.5\n\nx\n1|g|name||x|\n");
  ASSERT_EQ(reading.Count(), 1u);
  EXPECT_TRUE(reading[0].IsNull());
  EXPECT_EQ(reading.passedOver, 2u);
}

TEST(IgoReader, TellsTheEncodingOfTheFile) {
  EXPECT_EQ(Parse("1|g|Caf\xE9||1|2||||||||x|\n")[0].name, "Caf\u00e9");
  EXPECT_EQ(Parse("\xEF\xBB\xBF"
                  "1|g|Caf\xC3\xA9||1|2||||||||x|\n")[0]
                .name,
            "Caf\u00e9");
  const std::string bigEndian =
      "\xFE\xFF\0"
      "1\0|\0g\0|\x01\x51\0|\0|\0"
      "3\0|\0"
      "4\0\n"s;
  EXPECT_EQ(Parse(bigEndian)[0].name, "\u0151");
  EXPECT_EQ(Parse(bigEndian)[0].latitude, 3.0);
  // Without a mark the guess takes two bytes away, here the running number.
  const Reading guessed = Parse(Utf16File(u"1|g|\u0151||3|4\n").substr(2));
  ASSERT_EQ(guessed.Count(), 1u);
  EXPECT_EQ(guessed[0].name, "\u0151");
  EXPECT_EQ(guessed[0].longitude, 4.0);
}

TEST(IgoReader, ReadsWhatTheWritersWrite) {
  const TemporaryFolder folder;
  const auto route = MakeList("", MakePoint(47.497913, 19.0402, "\u0141 \U0001F600", "c, \"q\"=1"),
                              MakePoint(-0.000001, -179.5, ""));
  WriteUpoi80(folder.WidePathTo("0.upoi"), route, 0, true);
  WriteUpoi83(folder.WidePathTo("3.upoi"), route, 0, true);
  for (const char* const name : {"0.upoi", "3.upoi"}) {
    PointLists lists;
    EXPECT_EQ(ReadUpoi(folder.WidePathTo(name), lists, true), kStatusSuccess);
    ASSERT_EQ(lists.size(), 1u);
    ASSERT_EQ(lists[0]->Count(), 2u);
    for (size_t i = 0; i < 2; ++i) {
      EXPECT_EQ(lists[0]->points[i].name, route.points[i].name) << name;
      EXPECT_EQ(lists[0]->points[i].comment, route.points[i].comment) << name;
      EXPECT_EQ(lists[0]->points[i].latitude, route.points[i].latitude) << name;
      EXPECT_EQ(lists[0]->points[i].longitude, route.points[i].longitude) << name;
    }
  }
}

TEST(IgoReader, GivesOneForAMissingFileAndAnEmptyRouteForAnEmptyOne) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadUpoi(folder.WidePathTo("none.upoi"), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(ReadUpoi(folder.Put("a.upoi", ""), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(IgoReader, ReadsDamagedFiles) {
  ExpectCutsToBeRead(ParseUpoi, BytesOf(WriteUpoi83Body, SampleRoute()));
  EXPECT_EQ(Parse("\xFF").Count(), 0u);
  EXPECT_EQ(Parse(Utf16File(u"1|g|\xD83D||3|4\n"))[0].name, "\uFFFD");
  EXPECT_EQ(Parse(Utf16File(u"1|g|a\0b||3|4\n"s))[0].name, "a\0b"s);
  EXPECT_EQ(Parse(Utf16File(std::u16string(1 << 20, u'|'))).Count(), 1u);
}

TEST(IgoReader, ReadsTheExample) {
  PointLists lists;
  EXPECT_EQ(ReadUpoi(WidePath(CORVANE_SOURCE_FOLDER "/examples/budapest-sights.upoi"), lists, true),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 8u);
  EXPECT_EQ(lists[0]->points[0].name, "Orsz\u00e1gh\u00e1z");
  EXPECT_EQ(lists[0]->points[0].latitude, 47.507056);
  EXPECT_EQ(lists[0]->points[0].longitude, 19.045639);
  EXPECT_EQ(lists[0]->points[0].comment, "Kossuth Lajos t\u00e9r 1-3, Budapest V.");
}

}  // namespace
