#include <initializer_list>
#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/binary/autoroute.h"
#include "resources/compound_file_builder.h"
#include "resources/route_templates.h"
#include "tests/compound_file_reader.h"
#include "tests/formats/binary/autoroute_bytes.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using namespace autoroute;
using std::string_literals::operator""s;

std::string RecordBytes(const CGpsPointArray& list, int32_t version) {
  return BytesOf(WriteStopRecords, list, version);
}

TEST(AutoRouteTemplates, AreSoundFilesWithTheirStreams) {
  const std::string journey = CompoundFileReader(RouteTemplate(129)).Streams().at("Journey");
  EXPECT_EQ(journey.size(), 428u);
  EXPECT_EQ(journey.substr(0, 32), Words({600}) + "MASM" + Words({800, 0, 0, 0, 0, 48}));
  EXPECT_EQ(journey.substr(416), "\0\0\0\0\x65\0\0\0\0\0\0\0"s);
  for (const uint32_t number : {129u, 130u, 131u}) {
    auto streams = CompoundFileReader(RouteTemplate(number)).Streams();
    for (const char* name : {"Journey", "Contents", "Annotations", "Highlights", kMapProperties})
      EXPECT_EQ(streams.count(name), 1u) << name << number;
    EXPECT_EQ(ReadMapVersion(streams.at(kMapProperties)), number == 130 ? 9 : 12);
    EXPECT_EQ(streams.at("Journey").size(), 428u);
    const std::string& properties = streams.at(kMapProperties);
    std::string build;
    for (const char c : "12.00.07.1200"s) build += {c, '\0'};
    EXPECT_NE(properties.find(build), std::string::npos);
    // The language is the last property: an id without a sign and its value.
    EXPECT_EQ(properties.substr(properties.size() - 8), Words({19, number == 129 ? 1036 : 1033}));
    EXPECT_EQ(streams.count("UserData"), number == 129 ? 1u : 0u);
    EXPECT_EQ(streams.count("\005SummaryInformation"), number == 129 ? 1u : 0u);
    EXPECT_EQ(streams.count("\005DocumentSummaryInformation"), number == 129 ? 1u : 0u);
  }
  EXPECT_EQ(RouteTemplate(128), "");
}

TEST(AutoRouteTemplates, DifferInTheirSettings) {
  std::string expected = CompoundFileReader(RouteTemplate(129)).Streams().at("Journey");
  const std::string mapPoint = CompoundFileReader(RouteTemplate(130)).Streams().at("Journey");
  EXPECT_EQ(expected[90], '\x9A');
  EXPECT_EQ(expected[97], '\x3F');
  EXPECT_EQ(expected[148], '\x1A');
  EXPECT_EQ(expected[164], '\x1A');
  EXPECT_EQ(expected[180], '\x5C');
  EXPECT_EQ(expected[211], '\x40');
  EXPECT_EQ(expected[244], '\x3E');
  EXPECT_EQ(expected[362], '\0');
  expected.replace(12, 4, "\x19\x25\x02\xA1");
  expected.replace(90, 8, "\0\0\0\0\0\0\0\0"s);
  expected[148] = '\x2C';
  expected[164] = '\x22';
  expected[180] = '\x5E';
  expected[211] = '\0';
  expected[244] = '\x3F';
  expected[362] = '\1';
  EXPECT_EQ(mapPoint, expected);
}

TEST(AutoRouteTemplates, AreRoutesWithoutStops) {
  for (const uint32_t number : {129u, 130u, 131u}) {
    PointLists lists;
    EXPECT_EQ(ParseAutoRoute(RouteTemplate(number), lists, ContextInPlace()), kStatusSuccess);
    ASSERT_EQ(lists.size(), 1u);
    EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
    EXPECT_EQ(lists[0]->name, "");
    EXPECT_EQ(lists[0]->Count(), 0u);
  }
}

TEST(AutoRouteWriter, WritesRecordsOfOldPrograms) {
  const auto route = MakeList("", MakePoint(45, -90, "K\u00f6ln", "lost", 53));
  const std::string expected = std::string(32, '\0') + "\x00\x00\x00\xC0\x00\x00\x00\x20\x04"s +
                               "K\xF6ln" + "\xFF\xFE\xFF\x04" + "K\0\xF6\0l\0n\0"s +
                               Words({0, 1, 4, 0, 1, 0, 0, 0, 0x20000000, 0xC0000000, 0x20000000,
                                      0xC0000000, 0, 0, 0, 0, 6, 0, 0});
  EXPECT_EQ(RecordBytes(route, 12), expected);
  EXPECT_EQ(RecordBytes(route, 13), expected);
  EXPECT_EQ(RecordBytes(route, 0), expected);
}

TEST(AutoRouteWriter, WritesLongerHeadsForNewerPrograms) {
  const auto route = MakeList("", MakePoint(45, -90, "K\u00f6ln"));
  const std::string expected = std::string(32, '\0') + Words({0xC0000000, 0x20000000}) + "\x04" +
                               std::string(7, '\0') + "\x04" + "K\xF6ln" + "\xFF\xFE\xFF\x04" +
                               "K\0\xF6\0l\0n\0"s +
                               Words({0, 1, 4, 0, 1, 0, 0, 0, 0x20000000, 0xC0000000, 0x20000000,
                                      0xC0000000, 0, 0, 0, 0, 6, 0, 0});
  EXPECT_EQ(RecordBytes(route, 14), expected);
  EXPECT_EQ(RecordBytes(route, 15), expected);
  EXPECT_EQ(RecordBytes(route, 99), expected);
}

TEST(AutoRouteWriter, CutsCoordinatesTowardZero) {
  // 0.1 degree is 1193046.47 units, 1193046 = 0x123456.
  const std::string bytes = RecordBytes(MakeList("", MakePoint(0.1, -0.1)), 12);
  EXPECT_EQ(bytes.substr(32, 8), Words({-1193046, 0x123456}));
  // Half a circle does not fit in either direction; the lowest number is the same meridian.
  const std::string edge = RecordBytes(MakeList("", MakePoint(-90, 180), MakePoint(0, -180)), 12);
  EXPECT_EQ(edge.substr(32, 8), Words({-0x80000000LL, -0x40000000}));
  EXPECT_EQ(edge.substr(121 + 32, 8), Words({-0x80000000LL, 0}));
}

TEST(AutoRouteWriter, CutsLongNamesToTheirLengthModulo256) {
  const std::string name = std::string(44, 'a') + std::string(256, 'b');
  const std::string bytes = RecordBytes(MakeList("", MakePoint(1, 2, name)), 12);
  EXPECT_EQ(bytes.size(), 41u + 44 + 4 + 88 + 76);
  EXPECT_EQ(bytes[40], 44);
  EXPECT_EQ(bytes.substr(41, 48), std::string(44, 'a') + "\xFF\xFE\xFF\x2C");
  std::string wide;
  for (int i = 0; i < 44; ++i) wide += "a\0"s;
  EXPECT_EQ(bytes.substr(89, 88), wide);
  // 256 characters leave none, 255 all.
  EXPECT_EQ(RecordBytes(MakeList("", MakePoint(1, 2, std::string(256, 'x'))), 12),
            RecordBytes(MakeList("", MakePoint(1, 2, "")), 12));
  EXPECT_EQ(RecordBytes(MakeList("", MakePoint(1, 2, std::string(255, 'x'))), 12).size(),
            41u + 255 + 4 + 510 + 76);
}

TEST(AutoRouteWriter, CountsTheUnitsOfTheWideName) {
  // An emoji is two units; this name is cut in the middle of one.
  std::string name = "x";
  for (int i = 0; i < 128; ++i) name += "\U0001F600";
  const std::string bytes = RecordBytes(MakeList("", MakePoint(1, 2, name)), 12);
  EXPECT_EQ(bytes.substr(40, 9), "\x01x\xFF\xFE\xFF\x01x\0\0"s);
  const std::string half = RecordBytes(MakeList("", MakePoint(1, 2, name + "xx")), 12);
  EXPECT_EQ(half.substr(40, 14), "\x03x??\xFF\xFE\xFF\x03x\0\x3D\xD8\x00\xDE"s);
  const std::string cut = RecordBytes(MakeList("", MakePoint(1, 2, name + "x")), 12);
  EXPECT_EQ(cut.substr(40, 11), "\x02x?\xFF\xFE\xFF\x02x\0\x3D\xD8"s);
  PointLists lists;
  ASSERT_EQ(ParseAutoRoute(MapFile(12, JourneyOf(1, cut)), lists, ContextInPlace()),
            kStatusSuccess);
  EXPECT_EQ(lists[0]->At(0).name, "x\uFFFD");
}

TEST(AutoRouteWriter, KeepsNonLatinNamesInTheirWideForm) {
  const std::string name = "Caf\u00e9 \u0416, \u6771|=\"\xFF";
  const std::string bytes = RecordBytes(MakeList("", MakePoint(1, 2, name)), 12);
  EXPECT_EQ(bytes.substr(40, 18), "\x0D" + "Caf\xE9 ?, ?|=\"?"s + "\xFF\xFE\xFF\x0D");
  EXPECT_EQ(bytes.substr(58, 26), "C\0a\0f\0\xE9\0 \0\x16\x04,\0 \0\x71\x67|\0=\0\"\0\xFD\xFF"s);
}

TEST(AutoRouteWriter, FillsTheTemplateAndNothingElse) {
  const auto route = MakeList("Trip", MakePoint(45, -90, "A"), MakePoint(-45, 90, "B"));
  const std::string records = RecordBytes(route, 12);
  ASSERT_EQ(records.size(), 2u * (41 + 1 + 4 + 2 + 76));
  for (const uint32_t number : {129u, 130u, 131u}) {
    std::string file;
    ASSERT_EQ(FillRouteTemplate(RouteTemplate(number), route, file), kStatusSuccess);
    auto expected = CompoundFileReader(RouteTemplate(number)).Streams();
    std::string& journey = expected["Journey"];
    journey = journey.substr(0, 12) + Words({0, 2, 6}) + journey.substr(24, 8) + records +
              journey.substr(32);
    EXPECT_EQ(CompoundFileReader(file).Streams(), expected);
  }
}

TEST(AutoRouteWriter, TakesTheHeadFromTheTemplatesVersion) {
  const auto route = MakeList("", MakePoint(45, -90, "A"));
  std::string file;
  ASSERT_EQ(FillRouteTemplate(MapFile(14, JourneyOf(0, "")), route, file), kStatusSuccess);
  EXPECT_EQ(CompoundFileReader(file).Streams().at("Journey"), JourneyOf(1, RecordBytes(route, 14)));
  EXPECT_EQ(CompoundFileReader(file).Streams().at("Contents"), "map");
}

TEST(AutoRouteWriter, ReportsTemplatesThatCannotBeFilled) {
  const CGpsRoute route = MakeList("", MakePoint(1, 2));
  std::string file = "kept";
  EXPECT_EQ(FillRouteTemplate("no file", route, file), kStatusNotAStorage);
  EXPECT_EQ(FillRouteTemplate(RouteTemplate(129).substr(0, 1000), route, file),
            kStatusStorageCorrupt);
  EXPECT_EQ(FillRouteTemplate(MapFile(12, "short"), route, file), kStatusStorageCorrupt);
  CompoundFileBuilder withoutJourney;
  withoutJourney.AddStream(kMapProperties, Properties(0x60002, 3, 12));
  EXPECT_EQ(FillRouteTemplate(withoutJourney.Build(), route, file), kStatusStreamNotFound);
  CompoundFileBuilder withoutProperties;
  withoutProperties.AddStream("Journey", JourneyOf(0, ""));
  EXPECT_EQ(FillRouteTemplate(withoutProperties.Build(), route, file), kStatusStreamNotFound);
  EXPECT_EQ(file, "kept");

  const TemporaryFolder folder;
  EXPECT_EQ(WriteCompoundRoute(128, folder.Put("a.axe", "old"), route), kStatusNotAStorage);
  EXPECT_EQ(folder.Get("a.axe"), "old");
}

TEST(AutoRouteWriter, WritesOneFileForEachProgram) {
  const TemporaryFolder folder;
  const auto route = MakeList("", MakePoint(48.8566, 2.3522, "Paris"),
                              MakePoint(40.6401, 22.9444, "\u0398\u03b5\u03c3"),
                              MakePoint(-33.4489, -70.6693, ""));
  ASSERT_EQ(WriteAutoRoute(folder.Put("a.axe", "old"), route, 2, true), kStatusSuccess);
  ASSERT_EQ(WriteMapPoint(folder.WidePathTo("a.ptm"), route, 0, true), kStatusSuccess);
  ASSERT_EQ(WriteStreetsTrips(folder.WidePathTo("a.est"), route, 0, false), kStatusSuccess);
  const auto version = [&folder](const char* name) {
    const std::string file = folder.Get(name);
    return ReadMapVersion(CompoundFileReader(file).Streams().at(kMapProperties));
  };
  EXPECT_EQ(version("a.axe"), 12);
  EXPECT_EQ(version("a.ptm"), 9);
  EXPECT_EQ(version("a.est"), 12);
  for (const char* name : {"a.axe", "a.ptm", "a.est"}) {
    PointLists lists;
    ASSERT_EQ(ReadAutoRoute(folder.WidePathTo(name), lists, true), kStatusSuccess);
    ASSERT_EQ(lists.size(), 1u);
    ASSERT_EQ(lists[0]->Count(), 3u);
    EXPECT_EQ(lists[0]->At(0).name, "Paris");
    EXPECT_EQ(lists[0]->At(1).name, "\u0398\u03b5\u03c3");
    EXPECT_EQ(lists[0]->At(2).name, "");
    // 582881942 and 28062839 units, in single precision.
    EXPECT_EQ(lists[0]->At(0).latitude, 48.85660171508789);
    EXPECT_EQ(lists[0]->At(0).longitude, 2.3522000312805176);
    EXPECT_EQ(lists[0]->At(2).latitude, -33.44889831542969);
    EXPECT_EQ(lists[0]->At(2).longitude, -70.66929626464844);
  }
}

TEST(AutoRouteWriter, KeepsManyStopsInOrder) {
  CGpsRoute route;
  for (int i = 0; i < 1000; ++i)
    route.points.push_back(MakePoint(i % 90, -i % 180, std::to_string(i)));
  std::string file;
  ASSERT_EQ(FillRouteTemplate(RouteTemplate(129), route, file), kStatusSuccess);
  EXPECT_EQ(CompoundFileReader(file).Streams().size(), 8u);
  PointLists lists;
  ASSERT_EQ(ParseAutoRoute(file, lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1000u);
  for (size_t i = 0; i < 1000; ++i) EXPECT_EQ(lists[0]->At(i).name, std::to_string(i));
}

TEST(AutoRouteWriter, WritesAnEmptyList) {
  std::string file;
  ASSERT_EQ(FillRouteTemplate(RouteTemplate(131), CGpsRoute(), file), kStatusSuccess);
  PointLists lists;
  EXPECT_EQ(ParseAutoRoute(file, lists, ContextInPlace()), kStatusSuccess);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(AutoRouteWriter, ReportsAFileThatCannotBeWritten) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.PathTo("folder.axe"));
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(WriteAutoRoute(folder.WidePathTo("none/a.axe"), CGpsRoute(), 0, true), 0x80030002u);
  EXPECT_EQ(context.failure.platformError, uint32_t{kStatusFileNotFound});
  EXPECT_EQ(WriteAutoRoute(folder.WidePathTo("folder.axe"), CGpsRoute(), 0, true), 0x80030005u);
  EXPECT_EQ(context.failure.platformError, uint32_t{kStatusAccessDenied});
}

}  // namespace
