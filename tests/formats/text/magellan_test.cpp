#include "formats/text/magellan.h"

#include <chrono>
#include <filesystem>
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
using std::string_view_literals::operator""sv;

std::string Bytes(const CGpsPointArray& list,
                  const std::optional<std::string>& routeName = std::nullopt) {
  return BytesOf(WriteMagellanBody, list, routeName);
}

// The bytes without the checksums, which have tests of their own.
std::string Sentences(const CGpsPointArray& list,
                      const std::optional<std::string>& routeName = std::nullopt) {
  std::string text = Bytes(list, routeName);
  for (size_t star = text.find('*'); star != std::string::npos; star = text.find('*', star))
    text.erase(star, 3);
  return text;
}

struct Parsed {
  explicit Parsed(std::string_view bytes) : status(ParseMagellan(bytes, lists, context)) {}

  const CGpsPointArray& Route() const { return *lists.at(0); }
  uint64_t PassedOver() const { return context.notes.Count(ConversionNote::kLinePassedOver); }
  uint64_t Missing() const { return context.notes.Count(ConversionNote::kStopWithoutWaypoint); }

  PointLists lists;
  ConversionContext context;
  uint32_t status;
};

CGpsRoute NumberedRoute(int count) {
  CGpsRoute route;
  for (int i = 1; i <= count; ++i) route.points.push_back(MakePoint(i, i, "P" + std::to_string(i)));
  return route;
}

// Three waypoints for the tests of route sentences.
constexpr std::string_view kPool =
    "$PMGNWPL,4830.000,N,00215.000,E,0000100,M,WPT001,Start,a*00\r\n"
    "$PMGNWPL,4900.000,N,00300.000,E,0000200,M,WPT002,Middle,a*00\r\n"
    "$PMGNWPL,5030.000,N,00415.000,E,0000300,M,WPT003,End,a*00\r\n";

Parsed WithPool(std::string_view sentences) {
  return Parsed(std::string(kPool) + std::string(sentences));
}

std::string Names(const CGpsPointArray& list) {
  std::string names;
  for (const CGpsPoint& point : list.points) names += point.name + " ";
  return names;
}

TEST(MagellanWriter, WritesWaypointsThenTheRoute) {
  const auto route = MakeList("ignored", MakePoint(48.5, -2.25, "Gare, Nord", "lost", 100.0),
                              MakePoint(-33.75, 151.125, "Sydney"));
  EXPECT_EQ(Sentences(route),
            "$PMGNWPL,4830.000,N,00215.000,W,0000100,M,WPT001,Gare Nord,a\r\n"
            "$PMGNWPL,3345.000,S,15107.500,E,0000000,M,WPT002,Sydney,a\r\n"
            "$PMGNRTE,1,1,c,1,WPT001,a,WPT002,a\r\n");
}

TEST(MagellanWriter, ClosesSentencesWithTheirChecksum) {
  // XOR of the bytes between "$" and "*", worked out apart from the program.
  EXPECT_EQ(Bytes(MakeList("", MakePoint(48.5, -2.25, "A"))),
            "$PMGNWPL,4830.000,N,00215.000,W,0000000,M,WPT001,A,a*6C\r\n"
            "$PMGNRTE,1,1,c,1,WPT001,a*06\r\n");
  EXPECT_EQ(Bytes(MakeList("", MakePoint(48.5, -2.25, "\u00e9"))),
            "$PMGNWPL,4830.000,N,00215.000,W,0000000,M,WPT001,\xE9,a*C4\r\n"
            "$PMGNRTE,1,1,c,1,WPT001,a*06\r\n");
}

TEST(MagellanWriter, WritesNothingForAnEmptyList) {
  EXPECT_EQ(Bytes(CGpsRoute()), "");
  EXPECT_EQ(Bytes(CGpsRoute(), "Name"), "");
}

TEST(MagellanWriter, LastSentenceOfAnOddCountHasOneStop) {
  const std::string text = Sentences(NumberedRoute(3));
  EXPECT_EQ(text.substr(text.find("$PMGNRTE")),
            "$PMGNRTE,2,1,c,1,WPT001,a,WPT002,a\r\n"
            "$PMGNRTE,2,2,c,1,WPT003,a\r\n");
}

TEST(MagellanWriter, PutsTheRouteNameIntoTheExploristForm) {
  const std::string odd = Sentences(NumberedRoute(3), "Tour");
  EXPECT_EQ(odd.substr(odd.find("$PMGNRTE")),
            "$PMGNRTE,2,1,c,1,Tour,WPT001,a,WPT002,a\r\n"
            "$PMGNRTE,2,2,c,1,Tour,WPT003,a\r\n");
  const std::string even = Sentences(NumberedRoute(2), "");
  EXPECT_EQ(even.substr(even.find("$PMGNRTE")), "$PMGNRTE,1,1,c,1,,WPT001,a,WPT002,a\r\n");
}

TEST(MagellanWriter, PadsPositionsAltitudesAndIds) {
  const auto position = [](double latitude, double longitude, double altitude) {
    const std::string text =
        Sentences(MakeList("", MakePoint(latitude, longitude, "A", "", altitude)));
    return text.substr(0, text.find(",M,"));
  };
  EXPECT_EQ(position(0.0, 0.0, 0.0), "$PMGNWPL,0000.000,N,00000.000,E,0000000");
  EXPECT_EQ(position(-0.0, -0.0, -0.0), "$PMGNWPL,0000.000,N,00000.000,E,-000000");
  EXPECT_EQ(position(-0.5, -0.25, -5.0), "$PMGNWPL,0030.000,S,00015.000,W,-000005");
  EXPECT_EQ(position(5.0625, 179.75, 8848.86), "$PMGNWPL,0503.750,N,17945.000,E,0008849");
  EXPECT_EQ(position(-89.5, -180.0, 12345678.0), "$PMGNWPL,8930.000,S,18000.000,W,12345678");
  const std::string many = Sentences(NumberedRoute(1000));
  EXPECT_NE(many.find(",M,WPT999,P999,a\r\n"), std::string::npos);
  EXPECT_NE(many.find(",M,WPT1000,P1000,a\r\n$PMGNRTE,500,1,c,1,WPT001,a,WPT002,a\r\n"),
            std::string::npos);
  EXPECT_TRUE(many.ends_with("$PMGNRTE,500,500,c,1,WPT999,a,WPT1000,a\r\n"));
}

TEST(MagellanWriter, RoundsMinutesToThreeDecimalsWithoutCarry) {
  // 48.99999999 degrees are 59.9999994 minutes.
  const std::string text = Sentences(MakeList("", MakePoint(48.99999999, 7.0000001, "A")));
  EXPECT_EQ(text.substr(0, 35), "$PMGNWPL,4860.000,N,00700.000,E,000");
}

TEST(MagellanWriter, NarrowsNamesAndRemovesTheirCommas) {
  const auto name = [](const std::string& text) {
    const std::string sentences = Sentences(MakeList("", MakePoint(1, 2, text)));
    const size_t start = sentences.find("WPT001,") + 7;
    return sentences.substr(start, sentences.find(",a\r\n") - start);
  };
  EXPECT_EQ(name(",a,,b,"), "ab");
  EXPECT_EQ(name(""), "");
  EXPECT_EQ(name("\u0141\u00f3d\u017a \U0001F600 |\"=\""),
            "?\xF3"
            "d? ?? |\"=\"");
}

TEST(MagellanWriter, NamesTheRouteAfterTheFile) {
  const TemporaryFolder folder;
  const CGpsRoute route = NumberedRoute(1);
  EXPECT_EQ(WriteMagellan(folder.WidePathTo("caf\u00e9, \u0141.v2.mag"), route, 1, true),
            kStatusSuccess);
  EXPECT_EQ(folder.Get("caf\u00e9, \u0141.v2.mag"), Bytes(route, "caf\xE9 ?.v2"));

  EXPECT_EQ(WriteMagellan(folder.WidePathTo("plain.mag"), route, 0, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("plain.mag"), Bytes(route));

  std::filesystem::create_directory(folder.PathTo("a.b"));
  EXPECT_EQ(WriteMagellan(folder.WidePathTo("a.b/route"), route, 7, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.b/route"), Bytes(route, "route"));

  EXPECT_EQ(WriteMagellan(folder.WidePathTo("missing/a.mag"), route, 0, true), kStatusFailure);
}

TEST(MagellanReader, ReadsWaypointsWithoutARouteAsARoute) {
  const Parsed parsed(
      "$PMGNWPL,4830.000,N,00215.000,W,0000100,M,WPT001,Caf\xE9,a*00\r\n"
      "$PMGNWPL,3345.600,S,15107.500,E,0000328,F,WPT002,,a*00\r\n"
      "$PMGNCMD,END*3D\r\n");
  EXPECT_EQ(parsed.status, kStatusSuccess);
  ASSERT_EQ(parsed.lists.size(), 1u);
  EXPECT_EQ(parsed.Route().GetKind(), kKindRoute);
  EXPECT_EQ(parsed.Route().name, "");
  ASSERT_EQ(parsed.Route().Count(), 2u);
  const CGpsPoint& cafe = parsed.Route().points[0];
  EXPECT_EQ(cafe.latitude, 48.5);
  EXPECT_EQ(cafe.longitude, -2.25);
  EXPECT_EQ(cafe.altitude, 100.0);
  EXPECT_EQ(cafe.name, "Caf\u00e9");
  EXPECT_EQ(cafe.comment, "WPT001");
  EXPECT_EQ(cafe.tolerance, kDefaultTolerance);
  const CGpsPoint& second = parsed.Route().points[1];
  EXPECT_DOUBLE_EQ(second.latitude, -33.76);
  EXPECT_EQ(second.longitude, 151.125);
  EXPECT_EQ(second.altitude, 328.0 * 0.3048);
  EXPECT_EQ(second.name, "WPT002") << "the id stands in for an empty name";
  EXPECT_EQ(second.comment, "WPT002");
  EXPECT_EQ(parsed.PassedOver(), 0u);
}

TEST(MagellanReader, TakesTheStopsOfTheRoute) {
  const Parsed parsed = WithPool(
      "$PMGNRTE,2,1,c,1,WPT003,a,WPT001,a*00\r\n"
      "$PMGNRTE,2,2,c,1,WPT003,a*00\r\n");
  EXPECT_EQ(parsed.status, kStatusSuccess);
  ASSERT_EQ(parsed.lists.size(), 1u);
  EXPECT_EQ(parsed.Route().name, "");
  EXPECT_EQ(Names(parsed.Route()), "End Start End ") << "an id named twice is a stop twice";
  EXPECT_EQ(parsed.Route().points[0], parsed.Route().points[2]);
  EXPECT_EQ(parsed.Route().points[1].altitude, 100.0);
  EXPECT_EQ(parsed.Route().points[1].comment, "WPT001");
}

TEST(MagellanReader, TakesTheNameOfTheRoute) {
  const Parsed parsed = WithPool(
      "$PMGNRTE,2,1,c,1,Caf\xE9 tour,WPT001,a,WPT002,a*00\r\n"
      "$PMGNRTE,2,2,c,1,another,WPT003,a*00\r\n");
  EXPECT_EQ(parsed.Route().name, "Caf\u00e9 tour");
  EXPECT_EQ(Names(parsed.Route()), "Start Middle End ");
}

TEST(MagellanReader, OnlyTheFirstSentenceTellsWhetherThereIsAName) {
  // Eleven fields at first: the name stands in all. Ten fields in the second change nothing.
  const Parsed named = WithPool(
      "$PMGNRTE,2,1,c,1,,WPT001,a,WPT002,a*00\r\n"
      "$PMGNRTE,2,2,c,1,Late,WPT003,a,x*00\r\n");
  EXPECT_EQ(named.Route().name, "Late") << "an empty name is none";
  EXPECT_EQ(Names(named.Route()), "Start Middle End ");
  // A second sentence that comes first is read without a name.
  const Parsed late = WithPool("$PMGNRTE,2,2,c,1,WPT003,WPT001,a*00\r\n");
  EXPECT_EQ(late.Route().name, "");
  EXPECT_EQ(Names(late.Route()), "End ");
  EXPECT_EQ(late.Missing(), 1u) << "the icon where an id is looked for";
  // The number may be written as other numbers are.
  EXPECT_EQ(WithPool("$PMGNRTE,1, 01x,c,1,Name,WPT001,a*00\r\n").Route().name, "Name");
  // Numbers start anew with another route.
  const Parsed anew =
      WithPool("$PMGNRTE,1,1,c,1,Name,WPT001,a*00\r\n$PMGNRTE,1,1,c,2,WPT002,a,WPT003,a*00\r\n");
  EXPECT_EQ(Names(anew.Route()), "Start Middle End ");
}

TEST(MagellanReader, SentenceThatIsNoneOfCStillTellsAboutTheName) {
  const Parsed parsed = WithPool(
      "$PMGNRTE,2,1,w,1,Name,WPT001,a*00\r\n"
      "$PMGNRTE,2,2,c,1,Other,WPT002,a*00\r\n");
  EXPECT_EQ(parsed.Route().name, "Other");
  EXPECT_EQ(Names(parsed.Route()), "Middle ");
  EXPECT_EQ(parsed.PassedOver(), 1u);
  EXPECT_EQ(Names(WithPool("$PMGNRTE,1,1,cx,1,WPT002,a*00\r\n").Route()), "Middle ");
}

TEST(MagellanReader, LastFieldIsNeverAStop) {
  // Without a checksum nine fields seem to hold a name, and what follows it is no id.
  const Parsed parsed = WithPool(
      "$PMGNRTE,2,1,c,1,WPT001,a,WPT002,a\r\n"
      "$PMGNRTE,2,2,c,1,any,WPT003,a\r\n");
  EXPECT_EQ(parsed.Route().name, "WPT001");
  EXPECT_EQ(Names(parsed.Route()), "End ");
  EXPECT_EQ(parsed.Missing(), 1u);
  // Six fields hold no stop, and without any all waypoints are the route.
  EXPECT_EQ(Names(WithPool("$PMGNRTE,2,2,c,1,WPT002\r\n").Route()), "Start Middle End ");
}

TEST(MagellanReader, PassesOverMissingIds) {
  const Parsed parsed = WithPool("$PMGNRTE,1,1,c,1,WPT002,a,WPT009,a*00\r\n");
  EXPECT_EQ(Names(parsed.Route()), "Middle ");
  EXPECT_EQ(parsed.Missing(), 1u);
}

TEST(MagellanReader, RouteWithoutAnyKnownStopIsAllWaypointsWithoutAName) {
  const Parsed parsed = WithPool("$PMGNRTE,1,1,c,1,Name,WPT009,a*00\r\n");
  EXPECT_EQ(parsed.Route().name, "");
  EXPECT_EQ(Names(parsed.Route()), "Start Middle End ");
}

TEST(MagellanReader, FindsTheFirstWaypointOfAnIdAmongThoseReadSoFar) {
  const Parsed parsed = WithPool(
      "$PMGNWPL,0100.000,N,00100.000,E,0000000,M,WPT001,Second of its id,a*00\r\n"
      "$PMGNRTE,1,1,c,1,WPT001,a,late,a*00\r\n"
      "$PMGNWPL,0100.000,N,00100.000,E,0000000,M,late,Late,a*00\r\n");
  EXPECT_EQ(Names(parsed.Route()), "Start ");
  EXPECT_EQ(parsed.Missing(), 1u);
}

TEST(MagellanReader, FindsWaypointsThatStandBetweenTheRouteSentences) {
  const Parsed parsed = WithPool(
      "$PMGNRTE,2,1,c,1,WPT002,a,WPT001,a*00\r\n"
      "$PMGNWPL,0100.000,N,00100.000,E,0000000,M,late,Late,a*00\r\n"
      "$PMGNWPL,0200.000,N,00200.000,E,0000000,M,WPT001,Second of its id,a*00\r\n"
      "$PMGNRTE,2,2,c,1,late,a,WPT001,a,WPT003,a,late,a*00\r\n");
  EXPECT_EQ(Names(parsed.Route()), "Middle Start Late Start End Late ");
  EXPECT_EQ(parsed.Route().points[3], parsed.Route().points[1]);
  EXPECT_EQ(parsed.Route().points[5].comment, "late");
  EXPECT_EQ(parsed.Missing(), 0u);
}

TEST(MagellanReader, FindsIdsWithAccentsAndEmptyOnes) {
  const Parsed parsed(
      "$PMGNWPL,0100.000,N,00100.000,E,0000000,M,caf\xE9,Accent,a*00\r\n"
      "$PMGNWPL,0100.000,N,00100.000,E,0000000,M,,Nameless,a*00\r\n"
      "$PMGNRTE,1,1,c,1,,a,caf\xE9,a*00\r\n");
  EXPECT_EQ(Names(parsed.Route()), "Nameless Accent ");
}

TEST(MagellanReader, NeedsTenFieldsForAWaypointAndSixForARoute) {
  const Parsed parsed(
      "$PMGNWPL,0100.000,N,00100.000,E,0000000,M,id,nine\r\n"
      "$PMGNWPL,0100.000,N,00100.000,E,0000000,M,id,ten,a\r\n"
      "$PMGNRTE,1,1,c,1\r\n"
      "$PMGNTRK,0100.000,N,00100.000,E,0000000,M,0800,A,,090923*00\r\n");
  EXPECT_EQ(Names(parsed.Route()), "ten ");
  EXPECT_EQ(parsed.PassedOver(), 3u);
}

TEST(MagellanReader, TakesOtherNumbersAndLettersAsTheyCome) {
  const Parsed parsed(
      "$PMGNWPL,north,South,-00215.000,w,high,Feet,id,name,a*00\r\n"
      "$PMGNWPL, 4830.000,s,0x00215.000,West,10,f,id,name,a*00\r\n");
  ASSERT_EQ(parsed.Route().Count(), 2u);
  EXPECT_EQ(parsed.Route().points[0].latitude, 0.0);
  EXPECT_EQ(parsed.Route().points[0].longitude, -2.25);
  EXPECT_EQ(parsed.Route().points[0].altitude, 0.0);
  EXPECT_EQ(parsed.Route().points[1].latitude, 48.5);
  EXPECT_EQ(parsed.Route().points[1].longitude, -2.25);
  EXPECT_EQ(parsed.Route().points[1].altitude, 10.0);
}

TEST(MagellanReader, StarEndsAFieldAnywhere) {
  const Parsed parsed("$PMGNWPL*4830.000*N*00215.000*E*0000100*M*id*Stars*a\r\n");
  EXPECT_EQ(Names(parsed.Route()), "Stars ");
}

TEST(MagellanReader, NeverLooksAtTheChecksum) {
  const Parsed parsed(
      "$PMGNWPL,0100.000,N,00100.000,E,0000000,M,A,A,a*FF\r\n"
      "$PMGNWPL,0100.000,N,00100.000,E,0000000,M,B,B,a*no\r\n"
      "$PMGNRTE,1,1,c,1,B,a,A,a*\r\n");
  EXPECT_EQ(Names(parsed.Route()), "B A ");
}

TEST(MagellanReader, GivesAnEmptyRouteForOtherFiles) {
  for (const std::string_view bytes :
       {"OziExplorer Route File Version 1.0\r\nR,1,a,,\r\nW,1,1,1,a,1,2,\r\n"sv, ""sv, "$"sv,
        "$PMGN"sv, "$PMGNWPLX,0100.000,N,00100.000,E,0000000,M,A,A,a*00\r\n"sv,
        " $PMGNWPL,0100.000,N,00100.000,E,0000000,M,A,A,a*00\r\n"sv}) {
    const Parsed parsed(bytes);
    EXPECT_EQ(parsed.status, kStatusSuccess);
    ASSERT_EQ(parsed.lists.size(), 1u);
    EXPECT_EQ(parsed.Route().Count(), 0u) << bytes;
    EXPECT_EQ(parsed.PassedOver(), 0u);
  }
}

TEST(MagellanReader, SurvivesACutAtEveryByte) {
  const std::string whole =
      Bytes(MakeList("", MakePoint(48.5, 7.5, "Start"), MakePoint(1, 2, "End")), "Tour");
  const size_t secondLine = whole.find("$PMGNWPL", 1);
  const size_t firstDone = whole.find("Start,") + 6;
  const size_t secondDone = whole.find("End,") + 4;
  for (size_t length = 0; length <= whole.size(); ++length) {
    const Parsed parsed(whole.substr(0, length));
    EXPECT_EQ(parsed.status, kStatusSuccess) << length;
    ASSERT_EQ(parsed.lists.size(), 1u) << length;
    if (length < secondLine) {
      EXPECT_EQ(parsed.Route().Count(), length < firstDone ? 0u : 1u) << length;
    } else if (length < secondDone) {
      EXPECT_EQ(Names(parsed.Route()), "Start ") << length;
    } else {
      EXPECT_GE(parsed.Route().Count(), 1u) << length;
    }
  }
}

TEST(MagellanReader, TakesZeroBytesAndLongLines) {
  const Parsed zeros("$PMGNWPL,\0,\0,\0,\0,\0,\0,\0,N\0,\0*00\r\n"s + std::string(1000, '\0'));
  ASSERT_EQ(zeros.Route().Count(), 1u);
  EXPECT_EQ(zeros.Route().points[0].name, "N\0"s);

  const std::string megabyte(1 << 20, 'x');
  const Parsed longLines("$PMGNWPL,0100.000,N,00100.000,E,0,M,id," + megabyte + ",a*00\r\n" +
                         std::string(1 << 20, '*') + "\r\n$PMGNRTE,1,1,c,1,id,a," +
                         std::string(1 << 20, ','));
  ASSERT_EQ(longLines.Route().Count(), 1u);
  EXPECT_EQ(longLines.Route().points[0].name, megabyte);
}

TEST(MagellanReader, FindsManyIdsInLinearTime) {
  constexpr int kStops = 200000;
  std::string bytes;
  for (int i = 0; i < kStops; ++i)
    bytes += "$PMGNWPL,0100.000,N,00100.000,E,0,M,W" + std::to_string(i) + ",n,a*00\n";
  for (int i = kStops - 1; i >= 0; --i)
    bytes += "$PMGNRTE,9,9,c,1,W" + std::to_string(i) + ",a*00\n";
  const auto start = std::chrono::steady_clock::now();
  const Parsed parsed(bytes);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
  ASSERT_EQ(parsed.Route().Count(), size_t{kStops});
  EXPECT_EQ(parsed.Route().points.front().comment, "W199999");
  EXPECT_EQ(parsed.Route().points.back().comment, "W0");
}

TEST(MagellanReader, LongTextsCannotFillTheMemory) {
  // One waypoint with a text of one megabyte and its id of one letter. It is handed out once
  // itself, and then in copies as long as those before hold no more than 64 megabytes.
  const std::string megabyte((1 << 20) - 1, 'x');
  std::string bytes =
      "$PMGNWPL,0100.000,N,00100.000,E,0,M,A," + megabyte + ",a*00\n$PMGNRTE,9,9,c,1";
  for (int i = 0; i < 100000; ++i) bytes += ",A,a";
  bytes += "*00\n";
  const Parsed parsed(bytes);
  EXPECT_EQ(parsed.status, kStatusSuccess);
  EXPECT_EQ(parsed.Route().Count(), 66u);
  EXPECT_EQ(parsed.Missing(), 100000u - 66u);
}

TEST(MagellanReader, TellsEmptyTinyAndMissingFiles) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadMagellan(folder.Put("empty", ""), lists, true), kStatusSuccess);
  EXPECT_EQ(ReadMagellan(folder.Put("tiny", "$"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->Count() + lists[1]->Count(), 0u);
  EXPECT_EQ(ReadMagellan(folder.WidePathTo("missing"), lists, true), kStatusFailure);
  EXPECT_EQ(lists.size(), 2u);
}

TEST(Magellan, RoundTripsBothForms) {
  const TemporaryFolder folder;
  const auto route = MakeList("lost", MakePoint(46.2044, 6.1432, "Gen\u00e8ve", "lost", 375.0),
                              MakePoint(-33.85678, -151.21529, "", "", -5.0),
                              MakePoint(46.4312, 6.9107, "Montreux", "", 0.0));
  for (const uint32_t explorist : {0u, 1u}) {
    PointLists lists;
    EXPECT_EQ(WriteMagellan(folder.WidePathTo("L\u00e9man.mag"), route, explorist, true),
              kStatusSuccess);
    EXPECT_EQ(ReadMagellan(folder.WidePathTo("L\u00e9man.mag"), lists, true), kStatusSuccess);
    ASSERT_EQ(lists.size(), 1u);
    EXPECT_EQ(lists[0]->name, explorist ? "L\u00e9man" : "");
    ASSERT_EQ(lists[0]->Count(), 3u);
    // Three decimals of a minute are 0.0000083 degrees at most.
    for (size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(lists[0]->points[i].latitude, route.points[i].latitude, 0.0000084);
      EXPECT_NEAR(lists[0]->points[i].longitude, route.points[i].longitude, 0.0000084);
      EXPECT_EQ(lists[0]->points[i].altitude, route.points[i].altitude);
      EXPECT_EQ(lists[0]->points[i].comment, "WPT00" + std::to_string(i + 1));
    }
    EXPECT_EQ(Names(*lists[0]), "Gen\u00e8ve WPT002 Montreux ");
  }
}

}  // namespace
