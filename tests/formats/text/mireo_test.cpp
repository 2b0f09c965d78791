#include "formats/text/mireo.h"

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

Reading Parse(std::string_view bytes) { return ReadBytes(ParseMireo, bytes); }

const std::string kSampleLines =
    "STREET=\"Zagreb\" PT=\"15.97798 45.81318\"\n"
    "STREET=\"\" PT=\"-0.50000 -1.25000\"\n";

CGpsRoute SampleRoute() {
  return MakeList("Jadran", MakePoint(45.81318, 15.977979, "Zagreb", "lost", 122.0),
                  MakePoint(-1.25, -0.5, ""));
}

TEST(MireoWriter, WritesTheNameOnlyInRt) {
  EXPECT_EQ(BytesOf(WriteMireoTxtBody, SampleRoute()), kSampleLines);
  EXPECT_EQ(BytesOf(WriteMireoRtBody, SampleRoute()), "#NAME=\"Jadran\"\n" + kSampleLines);
}

TEST(MireoWriter, WritesEmptyLists) {
  EXPECT_EQ(BytesOf(WriteMireoTxtBody, CGpsRoute()), "");
  EXPECT_EQ(BytesOf(WriteMireoRtBody, CGpsRoute()), "#NAME=\"\"\n");
}

TEST(MireoWriter, NarrowsTextAndCleansNothing) {
  const auto route =
      MakeList("\u0160ibenik \u00e9", MakePoint(1, 2, "\"A\", b=c|d \U0001F600 \u00fc"));
  EXPECT_EQ(BytesOf(WriteMireoRtBody, route),
            "#NAME=\"?ibenik \xE9\"\n"
            "STREET=\"\"A\", b=c|d ?? \xFC\" PT=\"2.00000 1.00000\"\n");
}

TEST(MireoWriter, PutsRouteInFrontOfTheNameOfATxtFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteMireoTxt(folder.WidePathTo("trip.txt"), SampleRoute(), 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("Route trip.txt"), kSampleLines);
  EXPECT_FALSE(folder.Has("trip.txt"));
}

TEST(MireoWriter, LeavesAFileNameThatBeginsWithRoute) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteMireoTxt(folder.WidePathTo("Route 66.txt"), SampleRoute(), 0, true),
            kStatusSuccess);
  EXPECT_TRUE(folder.Has("Route 66.txt"));
  EXPECT_FALSE(folder.Has("Route Route 66.txt"));
  // Without the blank it is another word.
  EXPECT_EQ(WriteMireoTxt(folder.WidePathTo("Routes.txt"), SampleRoute(), 0, true), kStatusSuccess);
  EXPECT_TRUE(folder.Has("Route Routes.txt"));
  EXPECT_EQ(WriteMireoTxt(folder.WidePathTo("route b.txt"), SampleRoute(), 0, true),
            kStatusSuccess);
  EXPECT_TRUE(folder.Has("Route route b.txt"));
}

TEST(MireoWriter, LooksOnlyAtTheFileNameOfThePath) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.PathTo("Route x"));
  EXPECT_EQ(WriteMireoTxt(folder.WidePathTo("Route x/trip.txt"), SampleRoute(), 0, true),
            kStatusSuccess);
  EXPECT_TRUE(folder.Has("Route x/Route trip.txt"));
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  const uint32_t status = WriteMireoTxt(u"bare.txt", SampleRoute(), 0, true);
  std::filesystem::current_path(before);
  EXPECT_EQ(status, kStatusSuccess);
  EXPECT_TRUE(folder.Has("Route bare.txt"));
}

TEST(MireoWriter, LeavesTheNameOfAnRtFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteMireoRt(folder.WidePathTo("trip.rt"), SampleRoute(), 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("trip.rt"), "#NAME=\"Jadran\"\n" + kSampleLines);
}

TEST(MireoWriter, ReportsAFileThatCannotBeWritten) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteMireoTxt(folder.WidePathTo("missing/a.txt"), SampleRoute(), 0, true),
            kStatusFailure);
  EXPECT_EQ(WriteMireoRt(folder.WidePathTo("missing/a.rt"), SampleRoute(), 0, true),
            kStatusFailure);
}

TEST(MireoReader, ReadsBothKinds) {
  const Reading rt = Parse("#NAME=\"Jadranska magistrala\"\n" + kSampleLines);
  EXPECT_EQ(rt.status, kStatusSuccess);
  ASSERT_EQ(rt.lists.size(), 1u);
  EXPECT_EQ(rt.lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(rt.lists[0]->name, "Jadranska magistrala");
  ASSERT_EQ(rt.Count(), 2u);
  EXPECT_EQ(rt[0].name, "Zagreb");
  EXPECT_EQ(rt[0].longitude, 15.97798);
  EXPECT_EQ(rt[0].latitude, 45.81318);
  EXPECT_EQ(rt[0].altitude, 0.0);
  EXPECT_EQ(rt[1].name, "");
  EXPECT_EQ(rt[1].longitude, -0.5);
  EXPECT_EQ(rt[1].latitude, -1.25);

  const Reading txt = Parse(kSampleLines);
  EXPECT_EQ(txt.lists[0]->name, "");
  EXPECT_EQ(txt.Count(), 2u);
}

TEST(MireoReader, TakesWordsInAnyOrder) {
  const Reading reading = Parse(
      "  PT=\"1.5 2.5\"   CITY=\"Split\" STREET=\"Riva\"\r\n"
      "PT=\" 3.5   4.5 \"\r\n"
      "STREET=Plain PT=\"5.5 6.5\"\n");
  ASSERT_EQ(reading.Count(), 3u);
  EXPECT_EQ(reading[0].name, "Riva");
  EXPECT_EQ(reading[0].longitude, 1.5);
  EXPECT_EQ(reading[0].latitude, 2.5);
  EXPECT_EQ(reading[1].name, "");
  EXPECT_EQ(reading[1].longitude, 3.5);
  EXPECT_EQ(reading[1].latitude, 4.5);
  EXPECT_EQ(reading[2].name, "Plain");
}

TEST(MireoReader, CutsOnlyTheOuterQuotes) {
  const Reading reading = Parse(
      "#NAME=\"The \"big\" one\"\n"
      "STREET=\"Hotel \"Lav\" Split\" PT=\"1.5 2.5\"\n"
      "STREET=\"\"Lav\"\" PT=\"3.5 4.5\"\n"
      "STREET=\" blanks \" PT=\"5.5 6.5\"\n");
  EXPECT_EQ(reading.lists[0]->name, "The \"big\" one");
  ASSERT_EQ(reading.Count(), 3u);
  EXPECT_EQ(reading[0].name, "Hotel \"Lav\" Split");
  EXPECT_EQ(reading[1].name, "\"Lav\"");
  EXPECT_EQ(reading[2].name, " blanks ");
}

TEST(MireoReader, MakesAPointOfEveryPositionAndOfNothingElse) {
  const Reading reading = Parse(
      "STREET=\"nowhere\"\n"
      "hello world\n"
      "\n"
      "   \n"
      "# PT=\"9 9\" of a comment\n"
      "STREET=\"half\" PT=\"7.5\"\n"
      "STREET=\"null\" PT=\"\"\n"
      "XPT=\"1 2\"\n");
  ASSERT_EQ(reading.Count(), 2u);
  EXPECT_EQ(reading[0].name, "half");
  EXPECT_EQ(reading[0].longitude, 7.5);
  EXPECT_EQ(reading[0].latitude, 0.0);
  EXPECT_EQ(reading[1].name, "null");
  EXPECT_TRUE(reading[1].IsNull());
  EXPECT_EQ(reading.passedOver, 3u);
}

TEST(MireoReader, WidensEightBitTextAndKeepsUtf8BehindAMark) {
  const Reading narrow = Parse("#NAME=\"\xC5\"\nSTREET=\"Caf\xE9\" PT=\"1 2\"\n");
  EXPECT_EQ(narrow.lists[0]->name, "\u00c5");
  EXPECT_EQ(narrow[0].name, "Caf\u00e9");
  const Reading marked =
      Parse("\xEF\xBB\xBF#NAME=\"\u010cakovec\"\nSTREET=\"\u0160ibenik\" PT=\"1 2\"\n");
  EXPECT_EQ(marked.lists[0]->name, "\u010cakovec");
  EXPECT_EQ(marked[0].name, "\u0160ibenik");
}

TEST(MireoReader, ReadsWhatTheWritersWrite) {
  const TemporaryFolder folder;
  auto route = SampleRoute();
  route.points[0].name = "M\u00fcnchen, \"Alter Hof\" 1=2|3";
  route.points[0].longitude = 15.97798;
  EXPECT_EQ(WriteMireoRt(folder.WidePathTo("a.rt"), route, 0, true), kStatusSuccess);
  PointLists lists;
  EXPECT_EQ(ReadMireo(folder.WidePathTo("a.rt"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "Jadran");
  ASSERT_EQ(lists[0]->Count(), 2u);
  // The blank inside the inner quotes stands outside the outer ones, and cuts the name there.
  EXPECT_EQ(lists[0]->points[0].name, "M\u00fcnchen, \"Alter");
  EXPECT_EQ(lists[0]->points[0].longitude, 15.97798);
  EXPECT_EQ(lists[0]->points[0].latitude, 45.81318);
  EXPECT_EQ(lists[0]->points[1].latitude, -1.25);
}

TEST(MireoReader, GivesOneForAMissingFileAndAnEmptyRouteForAnEmptyOne) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadMireo(folder.WidePathTo("none.rt"), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(ReadMireo(folder.Put("a.rt", ""), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(MireoReader, ReadsDamagedFiles) {
  ExpectCutsToBeRead(ParseMireo, "#NAME=\"Jadran\"\n" + kSampleLines);
  EXPECT_EQ(Parse("S").Count(), 0u);
  EXPECT_EQ(Parse("\"").Count(), 0u);
  EXPECT_EQ(Parse("STREET=\" PT=\"1 2").Count(), 0u);
  EXPECT_EQ(Parse("STREET=\"a\0b\" PT=\"1 2\""s)[0].name, "a\0b"s);
  const std::string longName(1 << 20, '"');
  EXPECT_EQ(Parse("STREET=" + longName + " PT=\"1 2\"")[0].name, longName.substr(2));
  EXPECT_EQ(Parse(std::string(1 << 20, ' ')).passedOver, 0u);
}

TEST(MireoReader, ReadsTheExamples) {
  PointLists lists;
  EXPECT_EQ(ReadMireo(WidePath(CORVANE_SOURCE_FOLDER "/examples/istria.rt"), lists, true),
            kStatusSuccess);
  EXPECT_EQ(
      ReadMireo(WidePath(CORVANE_SOURCE_FOLDER "/examples/Route brittany-coast.txt"), lists, true),
      kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->name, "Istra, tri dana");
  ASSERT_EQ(lists[0]->Count(), 7u);
  EXPECT_EQ(lists[0]->points[0].name, "Pula, Arena");
  EXPECT_EQ(lists[0]->points[0].latitude, 44.87323);
  EXPECT_EQ(lists[0]->points[0].longitude, 13.85021);
  EXPECT_EQ(lists[1]->name, "");
  ASSERT_EQ(lists[1]->Count(), 6u);
  EXPECT_EQ(lists[1]->points[0].name, "Rennes, parlement de Bretagne");
  EXPECT_EQ(lists[1]->points[2].name, "Ploumanac'h, phare de Mean Ruz");
  EXPECT_EQ(lists[1]->points[0].latitude, 48.11255);
}

}  // namespace
