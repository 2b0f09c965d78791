#include "formats/binary/navigon_route.h"

#include <bit>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/stopped_clock.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

// 14 November 2023, 22:13:20 UTC: 0x6553F100 seconds, and half of them 0x32A9F880.
constexpr const char* kNow = "1700000000";
const std::string kIdA = "\x00\xF1\x53\x65"s;
const std::string kIdB = "\x80\xF8\xA9\x32"s;

// Knows the country of some latitudes, and tells what it was asked.
class Countries final : public CountryService {
 public:
  uint32_t GetCountryCode(double latitude, double longitude, std::string& countryCode) override {
    asked.push_back(std::to_string(static_cast<int>(latitude)) + "," +
                    std::to_string(static_cast<int>(longitude)));
    if (onAsked) onAsked();
    if (latitude < 0) return kStatusFailure;
    countryCode = latitude < 45 ? "RS" : latitude < 50 ? "FR" : latitude < 60 ? "XX" : "YY";
    return kStatusSuccess;
  }
  uint32_t GetCountryInfo(const std::string& countryCode, CCountryInfo& info) override {
    asked.push_back(countryCode);
    if (countryCode == "YY") return kStatusFailure;
    info.isoAlpha3 = countryCode == "RS" ? "SRB" : countryCode == "FR" ? "FRA" : "LONG";
    return kStatusSuccess;
  }

  std::vector<std::string> asked;
  std::function<void()> onAsked;
};

std::string Bytes(const CGpsPointArray& list) {
  return BytesOf(WriteNavigonRouteBody, list, ContextInPlace());
}

std::string Int32(int64_t value) {
  StringSink sink;
  sink.Uint32(static_cast<uint32_t>(value));
  return sink.Bytes();
}

std::string Int64(uint64_t value) {
  StringSink sink;
  sink.Uint64(value);
  return sink.Bytes();
}

const std::string kMagic = "\xFF\xFF\0\0\1\0\0\0\0\0\0\0"s;

std::string File(uint64_t count, const std::string& records, const std::string& id = "R1") {
  return kMagic + Int32(static_cast<int64_t>(20 + id.size() + records.size())) + Int32(0) +
         Int32(static_cast<int64_t>(id.size())) + id + Int64(count) + records;
}

std::string SubRecord(int32_t type, const std::string& body) {
  return Int32(type) + Int32(4) + Int32(static_cast<int64_t>(body.size())) + body;
}

std::string Position(const std::string& name, double latitude, double longitude,
                     int32_t type = 0x28) {
  const auto length = static_cast<int64_t>(name.size());
  return SubRecord(type, Int32(0) + Int32(length) + name + std::string(7, '\0') +
                             Int64(PackCoordinate(longitude)) + Int64(PackCoordinate(latitude)) +
                             "\0"s + Int32(8) + Int32(length) + Int32(0) + Int32(77));
}

// A record of these sub-records, with a name of its own.
std::string Record(const std::vector<std::string>& subRecords, const std::string& name = "") {
  std::string rest = std::string(8, '\0') + Int32(static_cast<int64_t>(name.size())) + name +
                     Int32(1) + Int32(static_cast<int64_t>(subRecords.size())) + Int32(5);
  for (const std::string& subRecord : subRecords) rest += subRecord;
  rest += std::string(24, '\0');
  return Int32(static_cast<int64_t>(rest.size())) + rest;
}

CGpsRoute Parsed(const std::string& bytes) {
  PointLists lists;
  EXPECT_EQ(ParseNavigonRoute(bytes, lists, ContextInPlace()), kStatusSuccess);
  EXPECT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "");
  return CGpsRoute(*lists[0]);
}

TEST(NavigonRouteWriter, WritesHeadAndRecords) {
  const StoppedClock clock(kNow);
  Countries countries;
  ConversionContext context;
  context.lookups.countries = &countries;
  const ConversionScope scope(context);
  const auto route = MakeList("Trip", MakePoint(48.8566, 2.3522, "Orl\u00e9ans", "lost", 116));
  // The name has 8 bytes. The record: 12 + 12 + 12 + 56 + 12 + 15 + 8 + 16.
  EXPECT_EQ(Bytes(route),
            "\xFF\xFF\x00\x00\x01\x00\x00\x00\x00\x00\x00\x00"
            "\xB9\x00\x00\x00\x00\x00\x00\x00\x12\x00\x00\x00"
            "R20231114-22:13:20"
            "\x01\x00\x00\x00\x00\x00\x00\x00"
            "\x8F\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00"
            "\x01\x00\x00\x00\x02\x00\x00\x00"s +
                kIdB +
                "\x28\x00\x00\x00\x04\x00\x00\x00\x38\x00\x00\x00"
                "\x00\x00\x00\x00\x08\x00\x00\x00Orl\xC3\xA9"
                "ans\x00\x00\x00\x00\x00\x00\x00"
                "\x3B\x4E\xD1\x02\x40\x00\x00\x00\x11\xA5\x6D\x48\x40\x00\x00\x00"
                "\x00\x08\x00\x00\x00\x08\x00\x00\x00\x00\x00\x00\x00"s +
                kIdA +
                "\x0A\x00\x00\x00\x04\x00\x00\x00\x0F\x00\x00\x00"
                "\x00\x00\x00\x00\x03\x00\x00\x00"
                "FRA"s +
                kIdB + kIdA + std::string(20, '\0'));
}

TEST(NavigonRouteWriter, WritesEmptyCountriesWithoutAService) {
  const StoppedClock clock(kNow);
  ConversionContext context;
  const ConversionScope scope(context);
  const auto route = MakeList("", MakePoint(1, 2, "a"), MakePoint(-3, -4, ""));
  const std::string bytes = Bytes(route);
  EXPECT_EQ(context.notes.Count(ConversionNote::kCountryNotFound), 2u);
  // 12 + 4 + 4 + 4 + 18 + 8 bytes of head, then records of 4 + 133 and 4 + 132.
  ASSERT_EQ(bytes.size(), 50u + 137 + 136);
  EXPECT_EQ(bytes.substr(12, 4), Int32(static_cast<int64_t>(bytes.size()) - 12));
  EXPECT_EQ(bytes.substr(50, 4), Int32(133));
  EXPECT_EQ(bytes.substr(50 + 137, 4), Int32(132));
  const std::string country = Int32(10) + Int32(4) + Int32(15) + Int32(0) + Int32(3) + kIdB;
  EXPECT_EQ(bytes.substr(50 + 137 - 24 - 24, 24), country);
  EXPECT_EQ(bytes.substr(bytes.size() - 24 - 24, 24), country);
  const CGpsRoute read = Parsed(bytes);
  ASSERT_EQ(read.Count(), 2u);
  EXPECT_EQ(read.At(0).name, "a");
  EXPECT_EQ(read.At(1).name, "");
  EXPECT_EQ(read.At(1).latitude, -3.0);
}

TEST(NavigonRouteWriter, AsksForEachStopInOrderAndForEachCountryOnce) {
  Countries countries;
  ConversionContext context;
  context.lookups.countries = &countries;
  const ConversionScope scope(context);
  const auto route = MakeList("", MakePoint(48, 2, "Paris"), MakePoint(46, 3, "Vichy"),
                              MakePoint(44, 20, "Beograd"), MakePoint(-1, 5, "sea"),
                              MakePoint(55, 6, "four letters"), MakePoint(65, 7, "no details"),
                              MakePoint(44, 21, "Ni\u0161"));
  const std::string bytes = Bytes(route);
  EXPECT_EQ(countries.asked, (std::vector<std::string>{"48,2", "FR", "46,3", "44,20", "RS", "-1,5",
                                                       "55,6", "XX", "65,7", "YY", "44,21"}));
  EXPECT_EQ(context.notes.Count(ConversionNote::kCountryNotFound), 3u);
  size_t position = 0;
  for (const char* country : {"FRA", "FRA", "SRB", "SRB"}) {
    position = bytes.find(Int32(0) + Int32(3) + country, position + 1);
    EXPECT_NE(position, std::string::npos) << country;
  }
  EXPECT_EQ(bytes.find("LONG"), std::string::npos);
  EXPECT_EQ(Parsed(bytes).Count(), 7u);
}

TEST(NavigonRouteWriter, AsksBeforeItOpensTheFile) {
  const TemporaryFolder folder;
  folder.Put("a.route", "old");
  Countries countries;
  countries.onAsked = [&folder] {
    EXPECT_EQ(folder.Get("a.route"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
  };
  ConversionContext context;
  context.lookups.countries = &countries;
  const ConversionScope scope(context);
  const auto route = MakeList("", MakePoint(48, 2, "Paris"));
  EXPECT_EQ(WriteNavigonRoute(folder.WidePathTo("a.route"), route, 1, true), kStatusSuccess);
  EXPECT_EQ(countries.asked.size(), 2u);
  EXPECT_EQ(Parsed(folder.Get("a.route")).Count(), 1u);
}

TEST(NavigonRouteWriter, KeepsNamesAsTheyAre) {
  const std::string name = "Caf\u00e9, \u0398\u03b5\u03c3\u03c3 | = \"\U0001F600\" \xFF\0x"s;
  const auto route = MakeList("", MakePoint(1, 2, name), MakePoint(1, 2, std::string(70000, 'n')));
  const std::string bytes = Bytes(route);
  EXPECT_NE(bytes.find(Int32(static_cast<int64_t>(name.size())) + name), std::string::npos);
  const CGpsRoute read = Parsed(bytes);
  ASSERT_EQ(read.Count(), 2u);
  EXPECT_EQ(read.At(0).name, name);
  EXPECT_EQ(read.At(1).name, std::string(70000, 'n'));
}

TEST(NavigonRouteWriter, WritesAnEmptyList) {
  const StoppedClock clock(kNow);
  EXPECT_EQ(Bytes(CGpsRoute()),
            kMagic + Int32(38) + Int32(0) + Int32(18) + "R20231114-22:13:20" + Int64(0));
}

TEST(NavigonRouteWriter, ReportsAFileThatCannotBeWritten) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteNavigonRoute(folder.WidePathTo("none/a.route"), CGpsRoute(), 0, true),
            kStatusFailure);
}

TEST(NavigonRoute, KeepsEightDigitsOfACoordinate) {
  const auto route = MakeList("", MakePoint(48.8566, -123.45678, "a"), MakePoint(-90, 180, "b"));
  const TemporaryFolder folder;
  ASSERT_EQ(WriteNavigonRoute(folder.WidePathTo("a.route"), route, 0, true), kStatusSuccess);
  PointLists lists;
  ASSERT_EQ(ReadNavigonRoute(folder.WidePathTo("a.route"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 2u);
  // 2 to the power of -28 below 64 degrees is 1.2e-7 degrees.
  EXPECT_NEAR(lists[0]->At(0).latitude, 48.8566, 1.2e-7);
  EXPECT_NE(lists[0]->At(0).latitude, 48.8566);
  EXPECT_NEAR(lists[0]->At(0).longitude, -123.45678, 2.4e-7);
  EXPECT_EQ(lists[0]->At(1).latitude, -90.0);
  EXPECT_EQ(lists[0]->At(1).longitude, 180.0);
  EXPECT_EQ(lists[0]->At(1).name, "b");
}

TEST(PackedCoordinate, FollowsTheRule) {
  // 488566000 = 320000000 + 8 × 20000000 + 109 × 78125 + 165 × 305.18 + 17 × 1.19 + 0.73
  EXPECT_EQ(PackCoordinate(48.8566), 0x40486DA511u);
  EXPECT_EQ(PackCoordinate(-48.8566), 0xC0486DA511u);
  EXPECT_EQ(PackCoordinate(256.0), 0x4070000000u);
  EXPECT_EQ(PackCoordinate(180.0), 0x4066800000u);
  EXPECT_EQ(PackCoordinate(1.0), 0x3FF0000000u);
  EXPECT_EQ(PackCoordinate(-0.5), 0xBFE0000000u);
  EXPECT_EQ(PackCoordinate(1024.5), 0x4090020000u);
}

TEST(PackedCoordinate, IsZeroForNoNumber) {
  EXPECT_EQ(PackCoordinate(0.0), 0u);
  EXPECT_EQ(PackCoordinate(-0.0), 0u);
  EXPECT_EQ(PackCoordinate(std::numeric_limits<double>::quiet_NaN()), 0u);
  EXPECT_EQ(PackCoordinate(-std::numeric_limits<double>::infinity()), 0u);
  EXPECT_EQ(PackCoordinate(std::numeric_limits<double>::max()), 0u);
  EXPECT_EQ(PackCoordinate(std::numeric_limits<double>::denorm_min()), 0u);
  EXPECT_EQ(UnpackCoordinate(0), 0.0);
  EXPECT_EQ(UnpackCoordinate(0x8000000000), 0.0);
}

TEST(PackedCoordinate, IsABitPatternWithoutItsLowestBits) {
  const auto check = [](double degrees) {
    const uint64_t expected = std::bit_cast<uint64_t>(degrees) >> 24;
    ASSERT_EQ(PackCoordinate(degrees), expected) << degrees;
    ASSERT_EQ(UnpackCoordinate(expected), std::bit_cast<double>(expected << 24)) << degrees;
  };
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> anywhere(-360, 360);
  std::uniform_real_distribution<double> magnitude(-40, 8.9);
  for (int i = 0; i < 200000; ++i) check(anywhere(random));
  for (int i = 0; i < 200000; ++i) check(std::exp2(magnitude(random)));
  for (int i = -180; i <= 180; ++i)
    if (i != 0) check(i);
  for (int i = 1; i < 1800000; i += 7) check(i / 10000.0);
  // Right above, on and right below a step of the 28 bits.
  for (double step = 1.0; step < 180.0; step += 0x1p-10) {
    check(std::nextafter(step, 0.0));
    check(step);
    check(std::nextafter(step, 360.0));
  }
  for (double power = 0x1p-300; power < 0x1p300; power *= 2) check(power);
}

TEST(PackedCoordinate, IgnoresItsUpperBytes) {
  EXPECT_EQ(UnpackCoordinate(0xFFFFFF4046800000), 45.0);
  EXPECT_EQ(UnpackCoordinate(0xFFFFFF0000000000), 0.0);
  EXPECT_EQ(UnpackCoordinate(0xC046800000), -45.0);
}

TEST(NavigonRouteReader, ReadsPositionsOfThreeTypes) {
  const CGpsRoute route = Parsed(
      File(3, Record({Position("one", 45, -90), SubRecord(10, "country")}) +
                  Record({SubRecord(10, ""), Position("two", 1, 2, 0x3C)}) +
                  Record({SubRecord(0x29, Position("no", 7, 8)), Position("three", 3, 4, 0x8C)})));
  ASSERT_EQ(route.Count(), 3u);
  EXPECT_EQ(route.At(0).name, "one");
  EXPECT_EQ(route.At(0).latitude, 45.0);
  EXPECT_EQ(route.At(0).longitude, -90.0);
  EXPECT_EQ(route.At(0).altitude, 0.0);
  EXPECT_EQ(route.At(0).comment, "");
  EXPECT_EQ(route.At(1).name, "two");
  EXPECT_EQ(route.At(1).latitude, 1.0);
  EXPECT_EQ(route.At(2).name, "three");
  EXPECT_EQ(route.At(2).longitude, 4.0);
}

TEST(NavigonRouteReader, TakesTheFirstNameAndTheFirstPosition) {
  const CGpsRoute route = Parsed(
      File(5, Record({Position("sub", 1, 2)}, "own") +
                  Record({Position("", 1, 2), Position("later", 3, 4), Position("last", 5, 6)}) +
                  Record({Position("first", 0, 0), Position("second", 3, 4)}) +
                  Record({Position("", 0, 7)}) + Record({Position("lone", 1, 1)}, "")));
  ASSERT_EQ(route.Count(), 5u);
  EXPECT_EQ(route.At(0).name, "own");
  EXPECT_EQ(route.At(0).latitude, 1.0);
  EXPECT_EQ(route.At(1).name, "later");
  EXPECT_EQ(route.At(1).latitude, 1.0);
  EXPECT_EQ(route.At(2).name, "first");
  EXPECT_EQ(route.At(2).latitude, 3.0);
  EXPECT_EQ(route.At(3).name, "");
  EXPECT_EQ(route.At(3).longitude, 7.0);
  EXPECT_EQ(route.At(4).name, "lone");
}

TEST(NavigonRouteReader, DropsPointsWithoutAPosition) {
  ConversionContext context;
  const ConversionScope scope(context);
  const CGpsRoute route =
      Parsed(File(4, Record({Position("zero", 0, 0)}) + Record({}, "bare") +
                         Record({SubRecord(10, "x")}) + Record({Position("kept", 1, 2)})));
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.At(0).name, "kept");
  EXPECT_EQ(context.notes.Count(ConversionNote::kPointWithoutPosition), 3u);
}

TEST(NavigonRouteReader, PassesOverTheIdText) {
  EXPECT_EQ(Parsed(File(1, Record({Position("a", 1, 2)}), "")).Count(), 1u);
  EXPECT_EQ(Parsed(File(1, Record({Position("a", 1, 2)}), std::string(5000, 'R'))).Count(), 1u);
}

TEST(NavigonRouteReader, ReadsAsManyRecordsAsTheCountSays) {
  const std::string two = Record({Position("a", 1, 2)}) + Record({Position("b", 3, 4)});
  EXPECT_EQ(Parsed(File(0, two)).Count(), 0u);
  EXPECT_EQ(Parsed(File(1, two)).Count(), 1u);
  EXPECT_EQ(Parsed(File(3, two)).Count(), 2u);
  EXPECT_EQ(Parsed(File(std::numeric_limits<uint64_t>::max(), two)).Count(), 2u);
}

TEST(NavigonRouteReader, ComparesTheMagicAndTheSize) {
  const std::string file = File(1, Record({Position("a", 1, 2)}));
  for (size_t i = 0; i < 16; ++i) {
    std::string damaged = file;
    damaged[i] = static_cast<char>(damaged[i] + 1);
    PointLists lists;
    EXPECT_EQ(ParseNavigonRoute(damaged, lists, ContextInPlace()), kStatusFailure) << i;
    EXPECT_TRUE(lists.empty());
  }
  for (size_t size = 0; size < file.size(); ++size) {
    PointLists lists;
    EXPECT_EQ(ParseNavigonRoute(file.substr(0, size), lists, ContextInPlace()), kStatusFailure)
        << size;
  }
  PointLists lists;
  EXPECT_EQ(ParseNavigonRoute(file + "x", lists, ContextInPlace()), kStatusFailure);
  EXPECT_EQ(ParseNavigonRoute(kMagic + Int32(-12), lists, ContextInPlace()), kStatusFailure);
}

TEST(NavigonRouteReader, ReportsAFileThatCannotBeOpened) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadNavigonRoute(folder.WidePathTo("none.route"), lists, true), kStatusFailure);
  EXPECT_EQ(ReadNavigonRoute(folder.Put("empty.store", ""), lists, true), kStatusFailure);
  EXPECT_EQ(ReadNavigonRoute(folder.Put("text.store", "|||\r\n"), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
}

// Cuts the records, and sets the size in the head to what is left.
TEST(NavigonRouteReader, EndsWithTheLastRecordThatIsThere) {
  const std::string first = Record({Position("a", 1, 2), SubRecord(10, "country")});
  const std::string second = Record({Position("b", 3, 4)}, "own");
  const std::string records = first + second;
  // A position is complete with the second of its coordinates.
  const size_t firstEnd = 4 + 24 + 12 + 8 + 1 + 7 + 16;
  const size_t secondEnd = first.size() + 4 + 24 + 3 + 12 + 8 + 1 + 7 + 16;
  for (size_t size = 0; size <= records.size(); ++size) {
    const CGpsRoute route = Parsed(File(2, records.substr(0, size)));
    EXPECT_EQ(route.Count(), size < firstEnd ? 0u : size < secondEnd ? 1u : 2u) << size;
  }
  for (size_t size = 16; size < 34; ++size) {
    std::string head = File(2, records).substr(0, size);
    head.replace(12, 4, Int32(static_cast<int64_t>(size) - 12));
    EXPECT_EQ(Parsed(head).Count(), 0u);
  }
}

TEST(NavigonRouteReader, EndsAtOnceForImpossibleLengths) {
  const std::string good = Record({Position("a", 1, 2)});
  for (const int32_t wrong : {-1, -4, INT32_MIN}) {
    ConversionContext context;
    const ConversionScope scope(context);
    std::string bad = good;
    bad.replace(0, 4, Int32(wrong));
    EXPECT_EQ(Parsed(File(3, good + bad + good)).Count(), 1u) << wrong;
    EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 1u);
    // The record's own name, the count of sub-records, the length of one, the name in one.
    for (const size_t field : {12u, 20u, 36u, 44u}) {
      bad = good;
      bad.replace(field, 4, Int32(wrong));
      const CGpsRoute route = Parsed(File(2, bad + good));
      ASSERT_EQ(route.Count(), 1u) << field;
      EXPECT_EQ(route.At(0).name, "a");
    }
    std::string badHead = File(1, good);
    badHead.replace(20, 4, Int32(wrong));
    EXPECT_EQ(Parsed(badHead).Count(), 0u);
  }
  std::string large = good;
  large.replace(0, 4, Int32(INT32_MAX));
  large.replace(20, 4, Int32(INT32_MAX));
  EXPECT_EQ(Parsed(File(2, large + good)).Count(), 1u);
}

TEST(NavigonRouteReader, ReadsNothingBeyondTheEndOfARecord) {
  // The first record ends in front of its sub-records, which so belong to nobody.
  std::string record = Record({Position("a", 1, 2)});
  record.replace(0, 4, Int32(24));
  const CGpsRoute route = Parsed(File(1, record));
  EXPECT_EQ(route.Count(), 0u);
}

TEST(NavigonRouteReader, IsLinearForRecordsInsideEachOther) {
  // Each record is 12 bytes long and claims two thousand million sub-records of 12 bytes.
  const std::string record = Int32(8) + Int32(INT32_MAX) + Int32(0);
  std::string records;
  for (int i = 0; i < 1000000; ++i) records += record;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Parsed(File(1000000, records)).Count(), 0u);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(NavigonRouteReader, ReadsTheExample) {
  PointLists lists;
  ASSERT_EQ(
      ReadNavigonRoute(WidePath(CORVANE_SOURCE_FOLDER "/examples/trieste_to_thessaloniki.route"),
                       lists, true),
      kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 7u);
  EXPECT_EQ(lists[0]->At(4).name, "Ni\u0161, Tvr\u0111ava");
  EXPECT_NEAR(lists[0]->At(4).latitude, 43.3253, 1.2e-7);
  EXPECT_NEAR(lists[0]->At(4).longitude, 21.8955, 1.2e-7);
}

}  // namespace
