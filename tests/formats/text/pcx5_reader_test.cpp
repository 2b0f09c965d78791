#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/text/pcx5.h"
#include "tests/formats/text/pcx5_samples.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using namespace pcx5;
using std::string_literals::operator""s;

struct Parsed {
  explicit Parsed(std::string_view bytes) : status(ParsePcx5(bytes, lists, context)) {}

  const CGpsPointArray& Route() const { return *lists.at(0); }

  PointLists lists;
  ConversionContext context;
  uint32_t status;
};

CGpsPoint WaypointOf(std::string_view line, const Pcx5Columns& columns, Pcx5Form form) {
  CGpsRoute route;
  ParsePcx5Waypoint(line, columns, form, route);
  return route.At(0);
}

double Latitude(std::string_view text, Pcx5Form form) {
  Pcx5Columns columns;
  columns[kPcx5Latitude] = {0, text.size()};
  return WaypointOf(text, columns, form).latitude;
}

double Longitude(std::string_view text, Pcx5Form form) {
  Pcx5Columns columns;
  columns[kPcx5Longitude] = {0, text.size()};
  return WaypointOf(text, columns, form).longitude;
}

// What is left of a number in 32 bits.
double Float(double value) { return static_cast<float>(value); }

TEST(Pcx5Reader, ReadsPositionsAltitudesAndNames) {
  const Parsed parsed(Head("Vins d'Alsace") +
                      "W  WPT00001 N48.5734053 E007.7521113 09-SEP-23 08:05:07 00143 "
                      "Stra\xDF"
                      "burg                                0.00000e+000  00018\r\n"
                      "W  WPT00002 S33.8567844 W151.2152967 09-SEP-23 08:05:07 -9999 "
                      "                                         0.00000e+000  00018\r\n");
  EXPECT_EQ(parsed.status, kStatusSuccess);
  ASSERT_EQ(parsed.lists.size(), 1u);
  EXPECT_EQ(parsed.Route().GetKind(), kKindRoute);
  EXPECT_EQ(parsed.Route().name, "Vins d'Alsace");
  ASSERT_EQ(parsed.Route().Count(), 2u);
  const CGpsPoint& first = parsed.Route().points[0];
  EXPECT_EQ(first.latitude, Float(48.5734053));
  EXPECT_EQ(first.longitude, Float(7.7521113));
  EXPECT_EQ(first.altitude, 143.0);
  EXPECT_EQ(first.name, "Stra\u00dfburg");
  EXPECT_EQ(first.comment, "");
  EXPECT_EQ(first.tolerance, kDefaultTolerance);
  const CGpsPoint& second = parsed.Route().points[1];
  EXPECT_EQ(second.latitude, -Float(33.8567844));
  EXPECT_EQ(second.longitude, -Float(151.2152967));
  EXPECT_EQ(second.altitude, 0.0);
  EXPECT_EQ(second.name, "WPT00002") << "the identifier stands in for an empty description";
}

TEST(Pcx5Reader, DoesNothingBeforeTheSoftwareLine) {
  const std::string rest = std::string(kTitles) +
                           "R  01 Name\r\nU  UTM\r\n"
                           "W  WPT00001 N48.5734053 E007.7521113 09-SEP-23 08:05:07 00143 A\r\n";
  const Parsed never(rest);
  EXPECT_EQ(never.status, kStatusFailure);
  ASSERT_EQ(never.lists.size(), 1u);
  EXPECT_EQ(never.Route().Count(), 0u);
  EXPECT_EQ(never.Route().name, "");

  const Parsed late(rest + std::string(kSoftware) +
                    "W  WPT00001 N48.5734053 E007.7521113 09-SEP-23 08:05:07 00143 A\r\n");
  EXPECT_EQ(late.status, kStatusSuccess);
  ASSERT_EQ(late.Route().Count(), 1u);
  EXPECT_TRUE(late.Route().points[0].IsNull()) << "titles before the software line don't count";
  EXPECT_EQ(late.Route().points[0].name, "");
}

TEST(Pcx5Reader, SoftwareLineIsNoTitleLine) {
  const Parsed parsed(
      "H  SOFTWARE NAME & VERSION IDNT LATITUDE LONGITUDE\r\n"
      "W  A  48.5\r\n");
  EXPECT_EQ(parsed.status, kStatusSuccess);
  EXPECT_EQ(parsed.Route().At(0).name, "");
}

TEST(Pcx5Reader, PassesOverOtherLinesAndTellsOfTrackPoints) {
  const Parsed parsed(std::string(kSoftware) +
                      "\r\nI  info\r\nM  G WGS 84\r\nF  ID--- N DD.DDDDD\r\n w\r\n"
                      "T  N48.5734053 E007.7521113\r\n");
  EXPECT_EQ(parsed.status, kStatusSuccess);
  EXPECT_EQ(parsed.Route().Count(), 0u);
  EXPECT_EQ(parsed.context.notes.Count(ConversionNote::kLinePassedOver), 1u);
}

TEST(Pcx5Reader, LearnsColumnsFromTheTitleLine) {
  const Parsed parsed(std::string(kSoftware) +
                      "H  IDNT LATITUDE LONGITUDE DATE TIME ALT DESCRIPTION PROXIMITY SYMBOL\n"
                      "W  abcd N48.5xyz W007.25   date time 12.5what it is far\n"
                      "H  nothing of interest\n"
                      "W  efgh N-1.5    E7        date time 77   other        far\n"
                      "H IDNT   LATITUDE LONGITUDE DATE TIME ALT  DESCRIPTION PROXIMITY SYMBOL\n"
                      "W wx yz  2.5      3.5       date time -1.5 third       far\n");
  EXPECT_EQ(parsed.status, kStatusSuccess);
  ASSERT_EQ(parsed.Route().Count(), 3u);
  const CGpsPoint& first = parsed.Route().points[0];
  EXPECT_EQ(first.latitude, 48.5);
  EXPECT_EQ(first.longitude, -7.25);
  EXPECT_EQ(first.altitude, 12.5);
  EXPECT_EQ(first.name, "what it is");
  const CGpsPoint& second = parsed.Route().points[1];
  EXPECT_EQ(second.latitude, -1.5);
  EXPECT_EQ(second.longitude, 7.0);
  EXPECT_EQ(second.altitude, 77.0);
  const CGpsPoint& third = parsed.Route().points[2];
  EXPECT_EQ(third.latitude, 2.5);
  EXPECT_EQ(third.longitude, 3.5);
  EXPECT_EQ(third.altitude, -1.5);
  EXPECT_EQ(third.name, "third");
}

TEST(Pcx5Reader, TitleLineEndsAtAMissingTitle) {
  const Parsed parsed(std::string(kSoftware) +
                      "H  IDNT     LATITUDE    LONGITUDE              TIME     ALT   DESCRIPTION\n"
                      "W  WPT00001 N48.5       E007.25      09-SEP-23 08:05:07 00143 Strasbourg\n");
  EXPECT_EQ(parsed.status, kStatusSuccess);
  ASSERT_EQ(parsed.Route().Count(), 1u);
  const CGpsPoint& point = parsed.Route().points[0];
  EXPECT_EQ(point.latitude, 48.5);
  EXPECT_EQ(point.longitude, 0.0) << "the last title found has no length";
  EXPECT_EQ(point.altitude, 0.0);
  EXPECT_EQ(point.name, "WPT00001");
}

TEST(Pcx5Reader, LaterTitleLineMovesOnlyTheTitlesThatItHolds) {
  const Parsed parsed(std::string(kSoftware) +
                      "H  IDNT LATITUDE LONGITUDE DATE TIME ALT DESCRIPTION PROXIMITY SYMBOL\n"
                      "H IDNT  LATITUDE      LONG\n"
                      "W ab cd 48.5     -7.25     date time 12.5            far\n");
  EXPECT_EQ(parsed.status, kStatusSuccess);
  ASSERT_EQ(parsed.Route().Count(), 1u);
  const CGpsPoint& point = parsed.Route().points[0];
  EXPECT_EQ(point.latitude, 0.0) << "the last title found has no length";
  EXPECT_EQ(point.longitude, -7.25);
  EXPECT_EQ(point.altitude, 12.5);
  EXPECT_EQ(point.name, "ab cd");
}

TEST(Pcx5Reader, TitlesOutOfOrderLeaveTheColumnEmpty) {
  const Parsed parsed(std::string(kSoftware) +
                      "H  LATITUDE IDNT LONGITUDE DATE TIME ALT DESCRIPTION PROXIMITY SYMBOL\n"
                      "W  N48.5    abcd E007.25   date time 1   \n");
  ASSERT_EQ(parsed.Route().Count(), 1u);
  EXPECT_EQ(parsed.Route().points[0].name, "");
  EXPECT_EQ(parsed.Route().points[0].latitude, 48.5);
  EXPECT_EQ(parsed.Route().points[0].longitude, 7.25);
}

TEST(Pcx5Reader, TakesWhatThereIsOfAShortLine) {
  const std::string line = "W  WPT00001 N48.5734053 E007.7521113 09-SEP-23 08:05:07 00143 Name";
  const std::string head = std::string(kSoftware) + std::string(kTitles);

  const Parsed whole(head + line);
  EXPECT_EQ(whole.Route().At(0).name, "Name");
  EXPECT_EQ(whole.Route().At(0).altitude, 143.0);

  const Parsed withoutDescription(head + line.substr(0, line.find(" Name")));
  EXPECT_EQ(withoutDescription.Route().At(0).name, "WPT00001");
  EXPECT_EQ(withoutDescription.Route().At(0).altitude, 143.0);

  const Parsed withoutLongitude(head + line.substr(0, line.find(" E007")));
  EXPECT_EQ(withoutLongitude.Route().At(0).latitude, Float(48.5734053));
  EXPECT_EQ(withoutLongitude.Route().At(0).longitude, 0.0);
  EXPECT_EQ(withoutLongitude.Route().At(0).altitude, 0.0);

  const Parsed letterOnly(head + "W\r");
  ASSERT_EQ(letterOnly.Route().Count(), 1u);
  EXPECT_TRUE(letterOnly.Route().points[0].IsNull());
  EXPECT_EQ(letterOnly.Route().points[0].name, "");
}

TEST(Pcx5Reader, ColumnsEndWhereTheNextBegins) {
  Pcx5Columns columns;
  columns[kPcx5Latitude] = {0, 3};
  columns[kPcx5Longitude] = {4, 3};
  columns[kPcx5Altitude] = {8, 2};
  columns[kPcx5Description] = {12, 4};
  const CGpsPoint point = WaypointOf("1.5675.25612345names and more", columns, Pcx5Form::kDegrees);
  EXPECT_EQ(point.latitude, 1.5);
  EXPECT_EQ(point.longitude, Float(75.));
  EXPECT_EQ(point.altitude, 5612345.0) << "an altitude goes on as long as it is a number";
  EXPECT_EQ(point.name, "345n");
}

TEST(Pcx5Reader, TrimsNames) {
  Pcx5Columns columns;
  columns[kPcx5Ident] = {0, 6};
  columns[kPcx5Description] = {6, 12};
  const auto name = [&columns](std::string_view line) {
    return WaypointOf(line, columns, Pcx5Form::kDegrees).name;
  };
  EXPECT_EQ(name("ident   a  b  \r \r"), "a  b");
  EXPECT_EQ(name(" id \r    \r \r  \r  "), "id");
  EXPECT_EQ(name("ident "), "ident");
  EXPECT_EQ(name("      \t\xE9"), "\t\u00e9");
  EXPECT_EQ(name(""), "");
}

TEST(Pcx5Reader, ReadsRouteNames) {
  const auto name = [](std::string_view line) {
    CGpsRoute route;
    ParsePcx5RouteLine(line, route);
    return route.name;
  };
  EXPECT_EQ(name("R  01 Route des Vins "), "Route des Vins");
  EXPECT_EQ(name("R01Caf\xE9 \r"), "Caf\u00e9");
  EXPECT_EQ(name("R  1 Name"), "Name") << "two characters are skipped, whatever they are";
  EXPECT_EQ(name("R    01    A  B"), "A  B");
  EXPECT_EQ(name("R  0"), "");
  EXPECT_EQ(name("R"), "");
  EXPECT_EQ(name(""), "");
}

TEST(Pcx5Reader, AppendsThePointsOfAllRoutesToOneList) {
  const Parsed parsed(std::string(kSoftware) + std::string(kTitles) +
                      "R  01 First\nW  A        N1\nR  02 Second\nW  B        N2\n");
  ASSERT_EQ(parsed.lists.size(), 1u);
  EXPECT_EQ(parsed.Route().name, "Second");
  ASSERT_EQ(parsed.Route().Count(), 2u);
  EXPECT_EQ(parsed.Route().points[1].name, "B");
}

TEST(Pcx5Reader, TakesTheFormFromTheCoordinateSystem) {
  const std::string head = std::string(kSoftware) + std::string(kTitles);
  const auto latitude = [&head](std::string_view unitLine) {
    return Parsed(head + std::string(unitLine) + "\nW  A        N4830 36   \n")
        .Route()
        .At(0)
        .latitude;
  };
  EXPECT_EQ(latitude("U  LAT LON DEG"), 4830.0);
  EXPECT_EQ(latitude("U  LAT LON   DEGREES"), 4830.0);
  EXPECT_EQ(latitude("U  LAT LON DMS"), Float(48.01));
  EXPECT_EQ(latitude("U  LAT LON DM"), 48.5);
  EXPECT_EQ(latitude("ULAT LONDM"), 48.5);
  EXPECT_EQ(latitude(""), 4830.0) << "degrees, unless the file tells otherwise";
}

TEST(Pcx5Reader, EndsAtAnUnknownCoordinateSystem) {
  for (const std::string_view unitLine : {"U  UTM", "U  LAT LON", "U  LAT LON deg", "U",
                                          "U  lat lon DEG", "U  LAT LON GRD", "U  LAT LON D"}) {
    const Parsed parsed(std::string(kSoftware) + std::string(kTitles) + "W  A        N1\n" +
                        std::string(unitLine) + "\nW  B        N2\n");
    EXPECT_EQ(parsed.status, kStatusFailure) << unitLine;
    EXPECT_EQ(parsed.Route().Count(), 1u) << unitLine;
  }
}

TEST(Pcx5Reader, ReadsDegrees) {
  constexpr Pcx5Form kForm = Pcx5Form::kDegrees;
  EXPECT_EQ(Latitude("N48.8566140", kForm), Float(48.856614));
  EXPECT_EQ(Latitude("S48.8566140", kForm), -Float(48.856614));
  EXPECT_EQ(Latitude("-48.5", kForm), -48.5);
  EXPECT_EQ(Latitude("+48.5", kForm), 48.5);
  EXPECT_EQ(Latitude("48.5", kForm), 48.5);
  EXPECT_EQ(Latitude(" 48.5", kForm), 48.5);
  EXPECT_EQ(Latitude("S-48.5", kForm), 48.5);
  EXPECT_EQ(Latitude("s48.5", kForm), 0.0);
  EXPECT_EQ(Latitude("W48.5", kForm), 0.0);
  EXPECT_EQ(Latitude("N", kForm), 0.0);
  EXPECT_EQ(Latitude("", kForm), 0.0);
  EXPECT_EQ(Longitude("W002.3522219", kForm), -Float(2.3522219));
  EXPECT_EQ(Longitude("E002.3522219", kForm), Float(2.3522219));
  EXPECT_EQ(Longitude("-2.5", kForm), -2.5);
  EXPECT_EQ(Longitude("+2.5", kForm), 2.5);
  EXPECT_EQ(Longitude("N2.5", kForm), 0.0);
}

TEST(Pcx5Reader, LosesMinutesBelowSixtyInDegreesMinutesAndSeconds) {
  constexpr Pcx5Form kForm = Pcx5Form::kDegreesMinutesSeconds;
  EXPECT_EQ(Latitude("N4852 30.5", kForm), Float(48.008472222));
  EXPECT_EQ(Latitude("S485230.5", kForm), -Float(48.008472222));
  EXPECT_EQ(Latitude("N4860 00", kForm), 49.0);
  EXPECT_EQ(Latitude("N4899 36", kForm), Float(49.01));
  EXPECT_EQ(Longitude("W0073036", kForm), -Float(7.01));
  EXPECT_EQ(Longitude("E179 59 18", kForm), Float(179.005));
}

TEST(Pcx5Reader, ReadsDegreesAndMinutes) {
  constexpr Pcx5Form kForm = Pcx5Form::kDegreesMinutes;
  EXPECT_EQ(Latitude("N4830.0", kForm), 48.5);
  EXPECT_EQ(Latitude("S48 30.6", kForm), -Float(48.51));
  EXPECT_EQ(Longitude("W00730.6", kForm), -Float(7.51));
  EXPECT_EQ(Longitude("E 7 15", kForm), 7.25);
}

// Each result as C's sscanf gives it, then 3600 seconds a degree.
TEST(Pcx5Reader, ScansNumbersAsCDoes) {
  const auto latitude = [](std::string_view text) {
    return Latitude("N" + std::string(text), Pcx5Form::kDegreesMinutesSeconds);
  };
  EXPECT_EQ(latitude("4"), 4.0);
  EXPECT_EQ(latitude("48 5"), 48.0);
  EXPECT_EQ(latitude("4852.36"), Float(48.0001)) << "seconds are what the widths leave";
  EXPECT_EQ(latitude("485 18 3"), Float(48.005)) << "a blank ends a number before its width";
  EXPECT_EQ(latitude("48-236"), Float(48.01)) << "a sign counts for the width";
  EXPECT_EQ(latitude("-5 3 36"), Float(-4.99));
  EXPECT_EQ(latitude("4852-36"), Float(47.99));
  EXPECT_EQ(latitude("4852+36"), Float(48.01));
  EXPECT_EQ(latitude("\t48\t52\t36"), Float(48.01));
  EXPECT_EQ(latitude("4852 36e"), Float(48.01));
  EXPECT_EQ(latitude("4852 36e+"), Float(48.01));
  EXPECT_EQ(latitude("4852 3.6e1x"), Float(48.01));
  EXPECT_EQ(latitude("48520x2.4p4"), Float(48.01));
  EXPECT_EQ(latitude("4852 0xg"), 48.0);
  EXPECT_EQ(latitude("4852 ."), 48.0);
  EXPECT_EQ(latitude("4852 --36"), 48.0);
  EXPECT_EQ(latitude("4852 1e-60"), 48.0);
  EXPECT_EQ(latitude("4852 1e99"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(latitude("4852 1e999"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(latitude("4852 inf"), std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(latitude("4852 nan")));
  EXPECT_EQ(latitude(". 1"), 0.0);
  EXPECT_EQ(latitude("--48 52 36"), 0.0) << "nothing is read behind a number that is missing";
  EXPECT_EQ(latitude("48x 52 36"), 48.0);
  EXPECT_EQ(latitude("48\000 52 36"s), 48.0);
  EXPECT_EQ(latitude(""), 0.0);
}

TEST(Pcx5Reader, ReadsAltitudes) {
  const auto altitude = [](std::string_view text) {
    Pcx5Columns columns;
    columns[kPcx5Altitude] = {2, 1};
    return WaypointOf(text, columns, Pcx5Form::kDegrees).altitude;
  };
  EXPECT_EQ(altitude("W -9999"), 0.0);
  EXPECT_EQ(altitude("W -9999.0 x"), 0.0);
  EXPECT_EQ(altitude("W -9998"), -9998.0);
  EXPECT_EQ(altitude("W 00005"), 5.0);
  EXPECT_EQ(altitude("W -0005"), -5.0);
  EXPECT_EQ(altitude("W 1234.1"), Float(1234.1));
  EXPECT_EQ(altitude("W high"), 0.0);
  EXPECT_EQ(altitude("W"), 0.0);
}

TEST(Pcx5, RoundTripsNamesOfUpToFortyBytes) {
  const TemporaryFolder folder;
  const std::string forty = "1234567890123456789012345678901234567890";
  const auto route =
      MakeList("Caf\u00e9 tour ", MakePoint(48.5, -7.25, "  padded ", "lost", 5.0),
               MakePoint(-12.0463731, -77.042754, forty, "", -5.0),
               MakePoint(1.5, 2.5, forty + "x"), MakePoint(1, 2, "Gare, Nord", "", 8848.86));
  EXPECT_EQ(WritePcx5(folder.WidePathTo("a.rte"), route, 0, true), kStatusSuccess);
  PointLists lists;
  EXPECT_EQ(ReadPcx5(folder.WidePathTo("a.rte"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "Caf\u00e9 tour");
  ASSERT_EQ(lists[0]->Count(), 4u);
  EXPECT_EQ(lists[0]->points[0], MakePoint(48.5, -7.25, "padded"));
  EXPECT_EQ(lists[0]->points[0].altitude, 5.0);
  EXPECT_EQ(lists[0]->points[1].name, forty);
  EXPECT_EQ(lists[0]->points[1].latitude, -Float(12.0463731));
  EXPECT_EQ(lists[0]->points[1].longitude, -Float(77.042754));
  EXPECT_EQ(lists[0]->points[1].altitude, -5.0);
  EXPECT_EQ(lists[0]->points[2].name, forty);
  EXPECT_EQ(lists[0]->points[2].altitude, 0.0);
  EXPECT_EQ(lists[0]->points[3].name, "Gare, Nord");
  EXPECT_EQ(lists[0]->points[3].altitude, 8849.0);
}

TEST(Pcx5Reader, SurvivesACutAtEveryByte) {
  const std::string whole = Bytes(MakeList("Tour", MakePoint(48.5, 7.5, "Name", "", 5.0)));
  const size_t softwareEnd = whole.find("VERSION") + 7;
  const size_t unit = whole.find("U  LAT");
  const size_t unitEnd = whole.find("DEG") + 3;
  const size_t waypoint = whole.find("W  WPT");
  for (size_t length = 0; length <= whole.size(); ++length) {
    const Parsed parsed(whole.substr(0, length));
    const bool cutInUnit = length > unit && length < unitEnd;
    EXPECT_EQ(parsed.status, length >= softwareEnd && !cutInUnit ? kStatusSuccess : kStatusFailure)
        << length;
    ASSERT_EQ(parsed.lists.size(), 1u) << length;
    EXPECT_EQ(parsed.Route().Count(), length > waypoint ? 1u : 0u) << length;
  }
}

TEST(Pcx5Reader, TakesZeroBytesAndLongLines) {
  const Parsed zeros(std::string(kSoftware) + std::string(kTitles) + "W\0\0\0\nR\0\0\0\n"s +
                     std::string(1000, '\0'));
  EXPECT_EQ(zeros.status, kStatusSuccess);
  EXPECT_EQ(zeros.Route().Count(), 1u);
  EXPECT_EQ(zeros.Route().name, "\0"s);

  const std::string megabyte(1 << 20, 'x');
  const Parsed longLines(std::string(kSoftware) + "H " + megabyte + " IDNT " + megabyte +
                         "LATITUDE\nR  01 " + megabyte + "\nW  short\nW" + megabyte + megabyte);
  EXPECT_EQ(longLines.status, kStatusSuccess);
  EXPECT_EQ(longLines.Route().name, megabyte);
  ASSERT_EQ(longLines.Route().Count(), 2u);
  EXPECT_EQ(longLines.Route().points[0].name, "");
  // From the title's place, three bytes behind the first megabyte, to the last before the next one.
  EXPECT_EQ(longLines.Route().points[1].name.size(), megabyte.size() - 2);
}

TEST(Pcx5Reader, TellsEmptyTinyForeignAndMissingFiles) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadPcx5(folder.Put("empty", ""), lists, true), kStatusFailure);
  EXPECT_EQ(ReadPcx5(folder.Put("tiny", "H"), lists, true), kStatusFailure);
  EXPECT_EQ(ReadPcx5(folder.Put("foreign", "OziExplorer Route File Version 1.0\r\n"), lists, true),
            kStatusFailure);
  EXPECT_EQ(lists.size(), 3u);
  EXPECT_EQ(ReadPcx5(folder.WidePathTo("missing"), lists, true), kStatusFailure);
  EXPECT_EQ(lists.size(), 3u);
}

}  // namespace
