#include "formats/binary/mapsource_writer.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/binary/mapsource_gdb.h"
#include "tests/formats/binary/mapsource_bytes.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

// What both formats write alike, seen in `.gdb`.

namespace {

using namespace mapsource;
using namespace mapsource::gdb;

std::string Bytes(const CGpsPointArray& list) { return BytesOf(WriteGdbBody, list); }

uint32_t Parse(const std::string& bytes, PointLists& lists) {
  return ParseGdbBuffer(bytes.data(), bytes.size(), lists);
}

TEST(MapSourceWriter, BoxTakesEveryNumberByItself) {
  // Highest latitude, longitude and altitude are those of three different points.
  const std::string bytes =
      Bytes(MakeList("", MakePoint(45, -22.5, "a", "", 1), MakePoint(-45, 90, "b", "", -2),
                     MakePoint(11.25, 0, "c", "", 100)));
  EXPECT_NE(bytes.find("R" + Text("") + Hex("00 00") + Hex(kNorth45) + Hex(kEast90) + Hex("01") +
                       Hex(kAltitude100) + Hex(kSouth45) + Hex(kWest22) + Hex("01") +
                       Hex("00 00 00 00 00 00 00 C0") + Hex("03 00 00 00")),
            std::string::npos);
}

TEST(MapSourceWriter, BoxOfPointsInTheSouthWestDoesNotReachZero) {
  const std::string bytes = Bytes(MakeList("", MakePoint(-45, -22.5, "a", "", -2)));
  const std::string corner =
      Hex(kSouth45) + Hex(kWest22) + Hex("01") + Hex("00 00 00 00 00 00 00 C0");
  EXPECT_NE(bytes.find("R" + Text("") + Hex("00 00") + corner + corner), std::string::npos);
}

TEST(MapSourceWriter, CutsCoordinatesTowardZero) {
  // 11930464.71 units, up and down.
  const std::string bytes = Bytes(MakeList("", MakePoint(1, -1, "a")));
  EXPECT_NE(bytes.find(Hex("60 0B B6 00 A0 F4 49 FF 00")), std::string::npos);
}

TEST(MapSourceWriter, DoesNotOverflowBeyondTheRange) {
  // 180 degrees do not fit; a number that is none does not either.
  const std::string bytes =
      Bytes(MakeList("", MakePoint(std::numeric_limits<double>::quiet_NaN(), 180, "a")));
  EXPECT_NE(bytes.find(Hex("00 00 00 80 00 00 00 80 00 00 00 01")), std::string::npos);
}

TEST(MapSourceWriter, NarrowsNamesAndCountsTheirBytes) {
  // "Café" has 4 bytes here, "Łódź" too, and the emoji is "??": 4 + 68, 4 + 68 and 2 + 68.
  const std::string bytes =
      Bytes(MakeList("Tour d\u2019\u00e9t\u00e9", MakePoint(1, 1, "Caf\u00e9"),
                     MakePoint(2, 2, "\u0141\u00f3d\u017a"), MakePoint(3, 3, "\U0001F600"),
                     MakePoint(4, 4, "a,b|c\"d=e"), MakePoint(5, 5, "")));
  EXPECT_NE(bytes.find(Hex("48 00 00 00") + "W" + Text("Caf\xE9") + Int32(8)), std::string::npos);
  EXPECT_NE(bytes.find(Hex("48 00 00 00") + "W" +
                       Text("?\xF3"
                            "d?") +
                       Int32(8)),
            std::string::npos);
  EXPECT_NE(bytes.find(Hex("46 00 00 00") + "W" + Text("??") + Int32(8)), std::string::npos);
  EXPECT_NE(bytes.find(Hex("4D 00 00 00") + "W" + Text("a,b|c\"d=e") + Int32(8)),
            std::string::npos);
  EXPECT_NE(bytes.find(Hex("44 00 00 00") + "W" + Text("") + Int32(8)), std::string::npos);
  // "Tour d?été" has 10 bytes: 10 + 42 + 60 + 4 * 112 + 4 + 4 + 2 + 9 + 0 = 579.
  EXPECT_NE(bytes.find(Hex("43 02 00 00") + "R" + Text("Tour d?\xE9t\xE9")), std::string::npos);
}

TEST(MapSourceWriter, CutsNamesAtAZeroByteOfTheirOwn) {
  using std::string_literals::operator""s;
  const auto route = MakeList("N\0x"s, MakePoint(1, 1, "A\0b"s), MakePoint(2, 2, "C"));
  PointLists lists;
  EXPECT_EQ(Parse(Bytes(route), lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[1]->name, "N");
  EXPECT_EQ(NamesOf(*lists[1]), "A;C;");
}

TEST(MapSourceWriter, WritesNearPointsOnce) {
  const auto route = MakeList("", MakePoint(2, 2, "B"), MakePoint(1, 1, "A"), MakePoint(2, 2, "B"));
  const std::string bytes = Bytes(route);
  const std::string waypointB = Hex("45 00 00 00") + "W" + Text("B");
  const size_t first = bytes.find(waypointB);
  ASSERT_NE(first, std::string::npos);
  EXPECT_EQ(bytes.find(waypointB, first + 1), std::string::npos);
  EXPECT_LT(bytes.find(Hex("45 00 00 00") + "W" + Text("A")), first);

  PointLists lists;
  EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
  EXPECT_EQ(NamesOf(*lists[1]), "B;A;B;");
  EXPECT_EQ(route.points.size(), 3u);
}

TEST(MapSourceWriter, NearStopsOfOtherNamesHaveOneWaypoint) {
  // Half the tolerance apart. The route names both, and only the first is there to be found.
  const std::string bytes =
      Bytes(MakeList("", MakePoint(1, 1, "Platform 1"), MakePoint(1.00005, 1, "Platform 2"),
                     MakePoint(2, 2, "C")));
  // 10 + 68 = 78 and 1 + 68 = 69, with nothing between them.
  const std::string tail = Hex("00 00 01") + Repeat(7, 0) + Hex("12") + Repeat(20, 0);
  EXPECT_NE(bytes.find(Text("MapSource") + Hex("4E 00 00 00") + "W" + Text("Platform 1") +
                       Int32(8) + Subclass() + Hex("60 0B B6 00 60 0B B6 00 00") + tail +
                       Hex("45 00 00 00") + "W" + Text("C")),
            std::string::npos);
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(NamesOf(*lists[1]), "Platform 1;C;");
  EXPECT_EQ(context.notes.Count(ConversionNote::kStopWithoutWaypoint), 1u);
}

}  // namespace
