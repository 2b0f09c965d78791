#include "formats/binary/autoroute.h"

#include <initializer_list>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "core/byte_cursor.h"
#include "core/conversion_notes.h"
#include "core/status.h"
#include "platform/compound_file.h"
#include "platform/last_error.h"
#include "resources/compound_file_builder.h"
#include "resources/route_templates.h"
#include "tests/compound_file_reader.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

constexpr char kMapProperties[] = "\005Olhud5yvVwudb10uAaq5ezn4Ac";

std::string Words(std::initializer_list<int64_t> words) {
  StringSink sink;
  for (const int64_t word : words) sink.Uint32(static_cast<uint32_t>(word));
  return sink.Bytes();
}

// Map properties with one property besides the code page.
std::string Properties(int64_t id, int64_t type, int64_t value) {
  return std::string(44, '\0') + Words({48, 40, 2, 1, 24, id, 32, 2, 1200, type, value});
}

std::string JourneyOf(int32_t count, const std::string& records) {
  return Words({600}) + "MASM" + Words({800, 0, count, 6, 0, 48}) + records + "the rest";
}

// A record as a map program writes it. Both positions are longitude, latitude.
struct Stop {
  std::string narrow;
  std::string wide;
  int32_t head[2];
  int32_t tail[2];

  std::string Bytes(size_t headSize) const {
    std::string bytes(32, '\0');
    bytes += Words({head[0], head[1]});
    bytes.resize(headSize - 1, '\x7F');  // what is unknown
    bytes += static_cast<char>(narrow.size());
    return bytes + narrow + "\xFF\xFE\xFF" + static_cast<char>(wide.size() / 2) + wide +
           Words({0, 1, 4, 0, 1, 0, 0, 0, 99, tail[0], tail[1], 99, 0, 0, 0, 0, 6, 0, 0});
  }
};

// 0x20000000 is an eighth of the circle, 45 degrees.
const Stop kFirst{"A?", "A\0\x41\x01"s, {0x20000000, 0x10000000}, {0x20000000, 0x10000000}};
const Stop kSecond{"B", "B\0"s, {-0x40000000, -0x20000000}, {-0x40000000, -0x20000000}};

std::string MapFile(int64_t version, const std::string& journey) {
  CompoundFileBuilder builder;
  builder.AddStream("Contents", "map");
  builder.AddStream("Journey", journey);
  builder.AddStream(kMapProperties, Properties(0x60002, 3, version));
  return builder.Build();
}

CGpsRoute ParsedJourney(const std::string& journey, int32_t version) {
  CGpsRoute route;
  ParseJourney(journey, version, route);
  return route;
}

CGpsRoute ParsedStop(const Stop& stop) { return ParsedJourney(JourneyOf(1, stop.Bytes(41)), 12); }

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
    EXPECT_EQ(ParseAutoRoute(RouteTemplate(number), lists), kStatusSuccess);
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
  ASSERT_EQ(ParseAutoRoute(MapFile(12, JourneyOf(1, cut)), lists), kStatusSuccess);
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
  ASSERT_EQ(ParseAutoRoute(file, lists), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1000u);
  for (size_t i = 0; i < 1000; ++i) EXPECT_EQ(lists[0]->At(i).name, std::to_string(i));
}

TEST(AutoRouteWriter, WritesAnEmptyList) {
  std::string file;
  ASSERT_EQ(FillRouteTemplate(RouteTemplate(131), CGpsRoute(), file), kStatusSuccess);
  PointLists lists;
  EXPECT_EQ(ParseAutoRoute(file, lists), kStatusSuccess);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(AutoRouteWriter, ReportsAFileThatCannotBeWritten) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.PathTo("folder.axe"));
  SetLastError(0);
  EXPECT_EQ(WriteAutoRoute(folder.WidePathTo("none/a.axe"), CGpsRoute(), 0, true), 0x80030002u);
  EXPECT_EQ(LastError(), uint32_t{kStatusFileNotFound});
  EXPECT_EQ(WriteAutoRoute(folder.WidePathTo("folder.axe"), CGpsRoute(), 0, true), 0x80030005u);
  EXPECT_EQ(LastError(), uint32_t{kStatusAccessDenied});
}

TEST(AutoRouteReader, ReadsTheHeadsOfAllVersions) {
  for (const auto& [version, headSize] :
       {std::pair(-1, 41), std::pair(0, 41), std::pair(13, 41), std::pair(14, 49),
        std::pair(15, 49), std::pair(16, 65), std::pair(19, 65)}) {
    const auto size = static_cast<size_t>(headSize);
    const std::string journey = JourneyOf(2, kFirst.Bytes(size) + kSecond.Bytes(size));
    PointLists lists;
    ASSERT_EQ(ParseAutoRoute(MapFile(version, journey), lists), kStatusSuccess);
    ASSERT_EQ(lists.size(), 1u);
    EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
    EXPECT_EQ(lists[0]->name, "");
    ASSERT_EQ(lists[0]->Count(), 2u) << version;
    EXPECT_EQ(lists[0]->At(0).name, "A\u0141");
    EXPECT_EQ(lists[0]->At(0).latitude, 22.5);
    EXPECT_EQ(lists[0]->At(0).longitude, 45.0);
    EXPECT_EQ(lists[0]->At(1).name, "B");
    EXPECT_EQ(lists[0]->At(1).latitude, -45.0);
    EXPECT_EQ(lists[0]->At(1).longitude, -90.0);
    EXPECT_EQ(lists[0]->At(1).altitude, 0.0);
    EXPECT_EQ(lists[0]->At(1).comment, "");
  }
}

TEST(AutoRouteReader, RoundsCoordinatesToSinglePrecision) {
  // 1193046 units are 0.09999996051192284 degrees.
  const auto route = ParsedStop({"", "", {-1193046, 1193046}, {-1193046, 1193046}});
  EXPECT_EQ(route.At(0).latitude, 0.09999996423721313);
  EXPECT_EQ(route.At(0).longitude, -0.09999996423721313);
  const auto edge = ParsedStop({"", "", {INT32_MIN, INT32_MAX}, {INT32_MIN, INT32_MAX}});
  EXPECT_EQ(edge.At(0).longitude, -180.0);
  EXPECT_EQ(edge.At(0).latitude, 180.0);
}

TEST(AutoRouteReader, TakesTheTailWhenThePositionsLieApart) {
  constexpr int32_t kEighth = 0x20000000;
  constexpr int32_t kSixteenth = 0x10000000;
  // 2048 units are 0.000171661376953125 degrees, which survive single precision below 32 degrees.
  const auto apart = ParsedStop({"", "", {kSixteenth, kSixteenth}, {kSixteenth, 0x10000800}});
  EXPECT_EQ(apart.At(0).latitude, 22.500171661376953);
  EXPECT_EQ(apart.At(0).longitude, 22.5);
  // One axis is enough, and both coordinates are taken from the tail.
  const auto byLatitude = ParsedStop({"", "", {1000, kEighth}, {0, kEighth + 1001}});
  EXPECT_EQ(byLatitude.At(0).longitude, 0.0);
  const auto byLongitude = ParsedStop({"", "", {kEighth - 1001, 1000}, {kEighth, 0}});
  EXPECT_EQ(byLongitude.At(0).latitude, 0.0);
  EXPECT_EQ(byLongitude.At(0).longitude, 45.0);
  // 1000 units apart on both axes is still the same place.
  const auto close = ParsedStop({"", "", {1000, -1000}, {0, 0}});
  EXPECT_EQ(close.At(0).longitude, static_cast<float>(1000 * 360.0 / 4294967296.0));
  EXPECT_EQ(close.At(0).latitude, -close.At(0).longitude);
  // The two ends of the number line are far apart.
  const auto ends = ParsedStop({"", "", {INT32_MAX, kEighth}, {INT32_MIN, 0}});
  EXPECT_EQ(ends.At(0).longitude, -180.0);
  EXPECT_EQ(ends.At(0).latitude, 0.0);
}

TEST(AutoRouteReader, TakesTheLengthOfTheNameFromTheHeadAndTheTailFromTheMark) {
  // The head counts one character, the mark three: the tail stands behind all three.
  const Stop stop{"x", "a\0b\0c\0"s, {0, 0}, {0x20000000, 0x20000000}};
  const CGpsRoute route = ParsedJourney(JourneyOf(2, stop.Bytes(41) + kSecond.Bytes(41)), 12);
  ASSERT_EQ(route.Count(), 2u);
  EXPECT_EQ(route.At(0).name, "a");
  EXPECT_EQ(route.At(0).latitude, 45.0);
  EXPECT_EQ(route.At(1).name, "B");
  // The head counts three, the mark one: the name goes on into the tail's first words, 0 and 1.
  const Stop longer{"xyz", "a\0"s, {0, 0}, {0x20000000, 0x20000000}};
  const CGpsRoute other = ParsedJourney(JourneyOf(2, longer.Bytes(41) + kSecond.Bytes(41)), 12);
  ASSERT_EQ(other.Count(), 2u);
  EXPECT_EQ(other.At(0).name, "a\0\0"s);
  EXPECT_EQ(other.At(0).latitude, 45.0);
  EXPECT_EQ(other.At(1).name, "B");
}

TEST(AutoRouteReader, ReplacesHalvesOfCharacters) {
  EXPECT_EQ(ParsedStop({"??", "\x3D\xD8x\0"s, {}, {}}).At(0).name, "\uFFFDx");
  EXPECT_EQ(ParsedStop({"??", "\x3D\xD8\x00\xDE"s, {}, {}}).At(0).name, "\U0001F600");
}

TEST(AutoRouteReader, KeepsStopsWithoutAPosition) {
  const CGpsRoute route = ParsedStop({"x", "x\0"s, {0, 0}, {0, 0}});
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_TRUE(route.At(0).IsNull());
}

TEST(AutoRouteReader, EndsWithTheLastStopThatIsThere) {
  const std::string one = JourneyOf(2, kFirst.Bytes(41));
  const std::string two = one.substr(0, one.size() - 8) + kSecond.Bytes(41);
  // The last two of the words that are needed end 44 bytes into the tail.
  const size_t firstEnd = 32 + 41 + 2 + 4 + 4 + 44;
  const size_t secondEnd = two.size() - 76 + 44;
  for (size_t size = 0; size <= two.size(); ++size) {
    const ConversionNotes notes;
    const CGpsRoute route = ParsedJourney(two.substr(0, size), 12);
    EXPECT_EQ(route.Count(), size < firstEnd ? 0u : size < secondEnd ? 1u : 2u) << size;
    EXPECT_EQ(notes.Count(EConversionNote::kLinePassedOver),
              size >= 20 && size < secondEnd ? 1u : 0u);
  }
}

TEST(AutoRouteReader, EndsAtOnceForImpossibleCounts) {
  EXPECT_EQ(ParsedJourney(JourneyOf(-1, kFirst.Bytes(41)), 12).Count(), 0u);
  EXPECT_EQ(ParsedJourney(JourneyOf(INT32_MIN, kFirst.Bytes(41)), 12).Count(), 0u);
  EXPECT_EQ(ParsedJourney(JourneyOf(INT32_MAX, kFirst.Bytes(41)), 12).Count(), 1u);
  EXPECT_EQ(ParsedJourney(JourneyOf(0, kFirst.Bytes(41)), 12).Count(), 0u);
}

TEST(AutoRouteReader, SurvivesACutAtEveryByte) {
  const std::string file = MapFile(12, JourneyOf(2, kFirst.Bytes(41) + kSecond.Bytes(41)));
  for (size_t size = 0; size < file.size(); ++size) {
    PointLists lists;
    const uint32_t status = ParseAutoRoute(file.substr(0, size), lists);
    ASSERT_EQ(lists.size(), 1u);
    if (status == kStatusSuccess) {
      EXPECT_EQ(lists[0]->Count(), 2u);
    } else {
      EXPECT_EQ(lists[0]->Count(), 0u);
      EXPECT_EQ(status, size < 8 ? kStatusFailure : kStatusStorageCorrupt);
    }
  }
}

TEST(AutoRouteReader, ReportsWhatCannotBeRead) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.PathTo("folder.axe"));
  PointLists lists;
  EXPECT_EQ(ReadAutoRoute(folder.WidePathTo("none.axe"), lists, true), 0x80030002u);
  EXPECT_EQ(ReadAutoRoute(folder.WidePathTo("folder.axe"), lists, true), 0x80030005u);
  EXPECT_EQ(ReadAutoRoute(folder.Put("empty.axe", ""), lists, true), kStatusFailure);
  EXPECT_EQ(ReadAutoRoute(folder.Put("byte.axe", "\xD0"), lists, true), kStatusFailure);
  EXPECT_EQ(ReadAutoRoute(folder.Put("text.axe", std::string(999, '\0')), lists, true),
            kStatusFailure);
  CompoundFileBuilder other;
  other.AddStream("WordDocument", "text");
  EXPECT_EQ(ReadAutoRoute(folder.Put("other.axe", other.Build()), lists, true),
            kStatusStreamNotFound);
  CompoundFileBuilder withoutJourney;
  withoutJourney.AddStream(kMapProperties, Properties(0x60002, 3, 12));
  EXPECT_EQ(ReadAutoRoute(folder.Put("map.axe", withoutJourney.Build()), lists, true),
            kStatusStreamNotFound);
  // Each attempt has left its route.
  ASSERT_EQ(lists.size(), 7u);
  for (const auto& list : lists) EXPECT_EQ(list->Count(), 0u);
}

TEST(AutoRouteReader, TakesFilesWithShortStreams) {
  PointLists lists;
  EXPECT_EQ(ParseAutoRoute(MapFile(12, ""), lists), kStatusSuccess);
  EXPECT_EQ(ParseAutoRoute(MapFile(12, "MASM"), lists), kStatusSuccess);
  CompoundFileBuilder withoutVersion;
  withoutVersion.AddStream("Journey", JourneyOf(1, kFirst.Bytes(41)));
  withoutVersion.AddStream(kMapProperties, "");
  EXPECT_EQ(ParseAutoRoute(withoutVersion.Build(), lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 3u);
  EXPECT_EQ(lists[0]->Count(), 0u);
  EXPECT_EQ(lists[1]->Count(), 0u);
  EXPECT_EQ(lists[2]->Count(), 1u);
}

TEST(MapVersion, IsAnIntegerProperty) {
  EXPECT_EQ(ReadMapVersion(Properties(0x60002, 3, 12)), 12);
  EXPECT_EQ(ReadMapVersion(Properties(0x60002, 3, -5)), -5);
  EXPECT_EQ(ReadMapVersion(Properties(0x60002, 19, 12)), 0);
  EXPECT_EQ(ReadMapVersion(Properties(0x60002, 0x10003, 12)), 0);
  EXPECT_EQ(ReadMapVersion(Properties(0x60003, 3, 12)), 0);
  // The first of equal ids decides.
  const std::string twice =
      std::string(44, '\0') + Words({48, 40, 2, 0x60002, 24, 0x60002, 32, 2, 7, 3, 12});
  EXPECT_EQ(ReadMapVersion(twice), 0);
}

TEST(MapVersion, IsZeroWhereTheStreamEnds) {
  const std::string properties = Properties(0x60002, 3, 12);
  for (size_t size = 0; size < properties.size(); ++size)
    EXPECT_EQ(ReadMapVersion(properties.substr(0, size)), 0) << size;
  const std::string head(44, '\0');
  EXPECT_EQ(ReadMapVersion(head + Words({48, 0, INT32_MAX, 1, 2})), 0);
  EXPECT_EQ(ReadMapVersion(head + Words({48, 0, -1, 0x60002, 16, 3, 12})), 0);
  EXPECT_EQ(ReadMapVersion(head + Words({-1, 0, 1, 0x60002, 16, 3, 12})), 0);
  EXPECT_EQ(ReadMapVersion(head + Words({48, 0, 1, 0x60002, -8, 3, 12})), 0);
  EXPECT_EQ(ReadMapVersion(head + Words({INT32_MAX, 0, 1})), 0);
}

// A stop of a plain file, with the coordinates longitude, latitude.
std::string PlainStop(int32_t longitude, int32_t latitude, const std::string& name,
                      const std::string& wide) {
  return std::string(32, '\0') + Words({longitude, latitude}) + static_cast<char>(name.size()) +
         name + "\xFF\xFE\xFF" + static_cast<char>(wide.size() / 2) + wide + std::string(20, 't');
}

std::string PlainFile(int32_t count, const std::string& stops) {
  return "hereMASM" + std::string(10, '\0') + Words({count}) + std::string(12, '\0') + stops;
}

TEST(PlainJourney, IsReadWhereThereIsNoCompoundFile) {
  const TemporaryFolder folder;
  const std::string bytes =
      PlainFile(2, PlainStop(0x20000000, -0x10000000, "K\xF6ln", "K\0.\0l\0n\0"s) +
                       PlainStop(1193046, 0x20000000, "", ""));
  PointLists lists;
  ASSERT_EQ(ReadAutoRoute(folder.Put("old.axe", bytes), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 2u);
  // The name keeps its bytes.
  EXPECT_EQ(lists[0]->At(0).name, "K\xF6ln");
  EXPECT_EQ(lists[0]->At(0).longitude, 45.0);
  EXPECT_EQ(lists[0]->At(0).latitude, -22.5);
  EXPECT_EQ(lists[0]->At(1).name, "");
  EXPECT_EQ(lists[0]->At(1).longitude, 0.09999996423721313);
  EXPECT_EQ(lists[0]->At(1).latitude, 45.0);
}

TEST(PlainJourney, IsRefusedWithoutStopsOrMark) {
  PointLists lists;
  EXPECT_EQ(ParseAutoRoute(PlainFile(0, PlainStop(1, 2, "a", "a\0"s)), lists), kStatusFailure);
  std::string unmarked = PlainFile(1, PlainStop(1, 2, "a", "a\0"s));
  unmarked[7] = 'm';
  EXPECT_EQ(ParseAutoRoute(unmarked, lists), kStatusFailure);
  EXPECT_EQ(ParseAutoRoute("hereMASM", lists), kStatusFailure);
  EXPECT_EQ(ParseAutoRoute("hereMASM" + std::string(10, '\0') + "\x01\x01\x01", lists),
            kStatusFailure);
  ASSERT_EQ(lists.size(), 4u);
  for (const auto& list : lists) EXPECT_EQ(list->Count(), 0u);
}

TEST(PlainJourney, EndsWithTheLastStopThatIsThere) {
  const std::string bytes =
      PlainFile(2, PlainStop(1, 2, "one", "o\0n\0e\0"s) + PlainStop(3, 4, "two", "t\0w\0o\0"s));
  const size_t stopSize = 41 + 3 + 4 + 6 + 20;
  ASSERT_EQ(bytes.size(), 34 + 2 * stopSize);
  for (size_t size = 22; size <= bytes.size(); ++size) {
    const ConversionNotes notes;
    CGpsRoute route;
    EXPECT_EQ(ParsePlainJourney(bytes.substr(0, size), route), kStatusSuccess);
    const size_t expected = size < 34 + 44 ? 0 : size < 34 + stopSize + 44 ? 1 : 2;
    EXPECT_EQ(route.Count(), expected) << size;
    EXPECT_EQ(notes.Count(EConversionNote::kLinePassedOver), expected == 2 ? 0u : 1u);
  }
  CGpsRoute route;
  EXPECT_EQ(ParsePlainJourney(PlainFile(INT32_MAX, PlainStop(1, 2, "a", "")), route),
            kStatusSuccess);
  EXPECT_EQ(route.Count(), 1u);
  EXPECT_EQ(ParsePlainJourney(PlainFile(-1, PlainStop(1, 2, "a", "")), route), kStatusSuccess);
  EXPECT_EQ(route.Count(), 1u);
}

TEST(AutoRouteReader, ReadsTheExample) {
  PointLists lists;
  ASSERT_EQ(ReadAutoRoute(WidePath(CORVANE_SOURCE_FOLDER "/examples/trieste_to_thessaloniki.axe"),
                          lists, true),
            kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 7u);
  EXPECT_EQ(lists[0]->At(0).name, "Trieste, Piazza Unit\u00e0 d'Italia");
  EXPECT_NEAR(lists[0]->At(0).latitude, 45.6496, 4e-6);
  EXPECT_NEAR(lists[0]->At(0).longitude, 13.7681, 1e-6);
  EXPECT_EQ(lists[0]->At(5).name,
            "\u0421\u043a\u043e\u043f\u0458\u0435, \u041a\u0430\u043c\u0435\u043d "
            "\u043c\u043e\u0441\u0442");
  EXPECT_NEAR(lists[0]->At(6).latitude, 40.6264, 4e-6);
}

}  // namespace
