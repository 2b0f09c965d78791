#include "formats/xml/gpx.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/product.h"
#include "base/status.h"
#include "conversion/conversion_context.h"
#include "tests/formats/written_bytes.h"
#include "tests/formats/xml/gpx_samples.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

// A document that must be well-formed.
PointLists Parsed(std::string_view document) {
  PointLists lists;
  EXPECT_EQ(ParseGpx(document, lists, ContextInPlace()), kStatusSuccess) << document;
  return lists;
}

// The only point of the only list.
CGpsPoint OnlyPoint(std::string_view document) {
  const PointLists lists = Parsed(document);
  if (lists.size() != 1 || lists[0]->Count() != 1) {
    ADD_FAILURE() << "not one point: " << document;
    return {};
  }
  return lists[0]->points[0];
}

TEST(GpxReader, GivesRoutesAndTracksInTheirOrderAndThenAllWaypoints) {
  EXPECT_EQ(Outline(Parsed("<gpx><wpt lat='1' lon='2'/><wpt lat='3' lon='4'/>"
                           "<rte><rtept lat='5' lon='6'/></rte>"
                           "<wpt lat='7' lon='8'/>"
                           "<trk><trkseg><trkpt lat='9' lon='10'/></trkseg></trk>"
                           "<rte><rtept lat='11' lon='12'/></rte>"
                           "<wpt lat='13' lon='14'/></gpx>")),
            "route '': 5,6\n"
            "track '': 9,10\n"
            "route '': 11,12\n"
            "waypoints '': 1,2 3,4 7,8 13,14\n");
}

TEST(GpxReader, RunsTheSegmentsOfATrackTogether) {
  EXPECT_EQ(
      Outline(Parsed("<gpx><trk><trkseg><trkpt lat='1' lon='2'/><trkpt lat='3' lon='4'/>"
                     "</trkseg><trkseg/><trkseg><trkpt lat='5' lon='6'/></trkseg></trk></gpx>")),
      "track '': 1,2 3,4 5,6\n");
}

TEST(GpxReader, LeavesOutListsWithoutPoints) {
  EXPECT_TRUE(Parsed("<gpx><rte><name>empty</name></rte><trk><trkseg/></trk></gpx>").empty());
  EXPECT_TRUE(Parsed("<gpx/>").empty());
  EXPECT_TRUE(Parsed("<kml><Document/></kml>").empty());
}

TEST(GpxReader, ReadsPositionElevationAndTexts) {
  const CGpsPoint point = OnlyPoint(
      "<gpx><wpt lat='48.858222' lon='-2.2945'><ele>35.25</ele><name>Tour &#201;iffel</name>"
      "<cmt>tall</cmt></wpt></gpx>");
  EXPECT_EQ(point.latitude, 48.858222);
  EXPECT_EQ(point.longitude, -2.2945);
  EXPECT_EQ(point.altitude, 35.25);
  EXPECT_EQ(point.name, "Tour \u00c9iffel");
  EXPECT_EQ(point.comment, "tall");
  EXPECT_EQ(point.tolerance, kDefaultTolerance);
  EXPECT_EQ(point.GetRouteLeg(), nullptr);
}

TEST(GpxReader, KeepsPointsWithoutAPosition) {
  EXPECT_EQ(
      Outline(Parsed("<gpx><rte><rtept/><rtept lat='1'/><rtept lon='2'/>"
                     "<rtept lat='north' lon=''/><rtept lat='0x5' lon=' 6.5E1x'/></rte></gpx>")),
      "route '': 0,0 1,0 0,2 0,0 5,65\n");
}

TEST(GpxReader, TakesAttributesOfPointsOnly) {
  EXPECT_EQ(
      Outline(Parsed("<gpx lat='1' lon='1'><rte lat='2' lon='2'><rtept lat='3' LON='3' id='4'>"
                     "<ele lat='5'>0</ele></rtept></rte></gpx>")),
      "route '': 3,0\n");
}

TEST(GpxReader, CommentWinsOverDescriptionInEitherOrder) {
  const auto comment = [](const std::string& elements) {
    return OnlyPoint("<gpx><wpt>" + elements + "</wpt></gpx>").comment;
  };
  EXPECT_EQ(comment("<cmt>c</cmt><desc>d</desc>"), "c");
  EXPECT_EQ(comment("<desc>d</desc><cmt>c</cmt>"), "c");
  EXPECT_EQ(comment("<desc>d</desc>"), "d");
  EXPECT_EQ(comment("<desc>d</desc><desc>e</desc>"), "d");
  EXPECT_EQ(comment("<cmt></cmt><desc>d</desc>"), "d");
  EXPECT_EQ(comment("<desc>d</desc><cmt/>"), "");
  EXPECT_EQ(comment("<desc><![CDATA[<b> & ]]>more</desc>"), "<b> & more");
}

TEST(GpxReader, NothingOfAPointRemainsForTheNext) {
  const PointLists lists = Parsed(
      "<gpx><rte><rtept lat='1' lon='2'><ele>3</ele><name>n</name><desc>d</desc></rtept>"
      "<rtept/></rte></gpx>");
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_TRUE(lists[0]->points[1].IsNull());
  EXPECT_EQ(lists[0]->points[1].altitude, 0.0);
  EXPECT_EQ(lists[0]->points[1].name, "");
  EXPECT_EQ(lists[0]->points[1].comment, "");
}

TEST(GpxReader, FirstNameInAListAndOutsideItsPointsIsTheLists) {
  const PointLists lists = Parsed(
      "<gpx><metadata><name>file</name></metadata><name>file</name>"
      "<rte><name>route</name><rtept><name>stop</name></rtept><name>late</name></rte>"
      "<trk><trkseg><trkpt/><name></name><name>track</name><name>late</name></trkseg></trk>"
      "<wpt><name>a</name></wpt><name>points</name><wpt><name>b</name></wpt>"
      "<name>late</name></gpx>");
  ASSERT_EQ(lists.size(), 3u);
  EXPECT_EQ(lists[0]->name, "route");
  EXPECT_EQ(lists[0]->points[0].name, "stop");
  EXPECT_EQ(lists[1]->name, "track");
  EXPECT_EQ(lists[2]->name, "points");
  EXPECT_EQ(lists[2]->points[0].name, "a");
  EXPECT_EQ(lists[2]->points[1].name, "b");
}

TEST(GpxReader, NamesBehindARouteNameNothing) {
  const PointLists lists =
      Parsed("<gpx><wpt/><rte><rtept/></rte><name>nobody</name><wpt/><name>points</name></gpx>");
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->name, "");
  EXPECT_EQ(lists[1]->name, "points");
}

TEST(GpxReader, TextBehindAChildCountsFromTheChildsStart) {
  EXPECT_EQ(OnlyPoint("<gpx><wpt><name>one<b>two</b>three</name></wpt></gpx>").name, "twothree");
}

TEST(GpxReader, TellsElementsApartExactly) {
  EXPECT_TRUE(Parsed("<gpx:gpx><gpx:wpt lat='1' lon='2'/><gpx:rte><gpx:rtept/></gpx:rte></gpx:gpx>")
                  .empty());
  EXPECT_TRUE(Parsed("<GPX><WPT lat='1' lon='2'/></GPX>").empty());
  EXPECT_TRUE(Parsed("<gpx><wptx/><wp/><rtep/></gpx>").empty());
  EXPECT_EQ(OnlyPoint("<gpx><wpt><x:name>a</x:name><x:ele>5</x:ele></wpt></gpx>").name, "");
}

TEST(GpxReader, PassesOverPointsThatDoNotBelongWhereTheyStand) {
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Outline(Parsed("<gpx><rtept lat='1' lon='1'/><trkpt lat='2' lon='2'/>"
                           "<rte><wpt lat='3' lon='3'><name>of the wpt</name></wpt>"
                           "<rtept lat='4' lon='4'/><trkpt lat='5' lon='5'/></rte></gpx>")),
            "route 'of the wpt': 4,4\n");
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 4u);
}

TEST(GpxReader, ARouteInsideAnOpenOneTakesItsPlace) {
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(
      Outline(Parsed("<gpx><rte><rtept lat='1' lon='1'/><rtept lat='2' lon='2'/>"
                     "<rte><rtept lat='3' lon='3'/></rte><rtept lat='4' lon='4'/></rte></gpx>")),
      "route '': 3,3\n");
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 3u);
  EXPECT_EQ(Outline(Parsed("<gpx><trk><trkpt lat='1' lon='1'/>"
                           "<rte><rtept lat='2' lon='2'/></rte></trk></gpx>")),
            "route '': 2,2\n");
}

TEST(GpxReader, WaypointsAreHandedOverOnce) {
  EXPECT_EQ(Outline(Parsed("<gpx><wpt lat='1' lon='1'/><rte><trk><trkpt lat='2' lon='2'/></trk>"
                           "<wpt lat='3' lon='3'/></rte><wpt lat='4' lon='4'/></gpx>")),
            "track '': 2,2\nwaypoints '': 1,1 3,3 4,4\n");
  EXPECT_EQ(
      Outline(Parsed("<x><gpx><wpt lat='1' lon='1'/></gpx><gpx><wpt lat='2' lon='2'/></gpx></x>")),
      "waypoints '': 1,1\nwaypoints '': 2,2\n");
  EXPECT_EQ(Outline(Parsed("<gpx><rte><rtept lat='1' lon='1'/><gpx><wpt lat='2' lon='2'/></gpx>"
                           "<rtept lat='3' lon='3'/></rte></gpx>")),
            "route '': 1,1\n");
}

// The inner point ends the outer one's part, and the outer end finds nothing left.
TEST(GpxReader, APointInsideAPointOfItsKindCountsTwice) {
  const PointLists lists = Parsed(
      "<gpx><wpt lat='1' lon='1'><wpt lat='2' lon='2'/><cmt>c</cmt><name>n</name></wpt></gpx>");
  EXPECT_EQ(Outline(lists), "waypoints 'n': 2,2 0,0\n");
  EXPECT_EQ(lists[0]->points[1].comment, "c");
}

TEST(GpxReader, AFileWithoutItsEndKeepsWhatHasEnded) {
  PointLists lists;
  EXPECT_EQ(ParseGpx("<gpx><wpt lat='1' lon='1'/><rte><rtept lat='2' lon='2'/></rte>"
                     "<wpt lat='3' lon='3'/><trk><trkpt lat='4' lon='4'/></trk>"
                     "<rte><rtept lat='5' lon='5'/>",
                     lists, ContextInPlace()),
            kStatusFailure);
  EXPECT_EQ(Outline(lists), "route '': 2,2\ntrack '': 4,4\n");
}

TEST(GpxReader, AddsToWhatIsThere) {
  PointLists lists;
  AddList<CGpsRoute>(lists);
  EXPECT_EQ(ParseGpx("<gpx><wpt lat='1' lon='1'/></gpx>", lists, ContextInPlace()), kStatusSuccess);
  EXPECT_EQ(Outline(lists), "route '':\nwaypoints '': 1,1\n");
}

TEST(GpxReader, ReadsOtherEncodings) {
  EXPECT_EQ(OnlyPoint("<?xml version='1.0' encoding='ISO-8859-1'?><gpx><wpt><name>Orl\xE9"
                      "ans</name></wpt></gpx>")
                .name,
            "Orl\u00e9ans");
  EXPECT_EQ(OnlyPoint("<?xml version='1.0' encoding='windows-1252'?><gpx><wpt><name>\x80\xE9"
                      "</name></wpt></gpx>")
                .name,
            "\u0080\u00e9");
  std::string wide = "\xFF\xFE";
  for (const char character : "<gpx><wpt><name>Rh\xF4ne</name></wpt></gpx>"s)
    wide += {character, '\0'};
  EXPECT_EQ(OnlyPoint(wide).name, "Rh\u00f4ne");
  EXPECT_EQ(OnlyPoint("\xEF\xBB\xBF<gpx><wpt><name>Rh\u00f4ne \U0001F6B2</name></wpt></gpx>").name,
            "Rh\u00f4ne \U0001F6B2");
}

TEST(GpxReader, ReadsWhatOtherProgramsDeclare) {
  const auto nameIn = [](const std::string& encoding, const std::string& name) {
    return OnlyPoint("<?xml version='1.0' encoding='" + encoding + "'?><gpx><wpt><name>" + name +
                     "</name></wpt></gpx>")
        .name;
  };
  EXPECT_EQ(nameIn("windows-1250",
                   "\xA3\xF3"
                   "d\x9F"),
            "Łódź");
  EXPECT_EQ(nameIn("iso-8859-5", "\xBC\xDE\xE1\xDA\xD2\xD0"), "Москва");
  EXPECT_EQ(nameIn("Shift_JIS", "\x93\x8C\x8B\x9E"), "東京");
  std::string wide = "\xFE\xFF";
  for (const char character : "<gpx><wpt><name>Rh\xF4ne</name></wpt></gpx>"s)
    wide += {'\0', character};
  EXPECT_EQ(OnlyPoint(wide).name, "Rhône");
}

TEST(GpxReader, ReadsWhatADesktopPlannerWrites) {
  const PointLists lists = Parsed(Sample("15/planner.gpx"));
  EXPECT_EQ(Outline(lists),
            "route 'Annecy to Chamonix': 45.899247,6.129384 45.923697,6.869433\n"
            "waypoints '': 46,6.5\n");
  EXPECT_EQ(lists[0]->points[0].name, "Annecy");
  EXPECT_EQ(lists[0]->points[0].comment, "");
  EXPECT_EQ(lists[0]->points[1].name, "Chamonix");
  EXPECT_EQ(lists[1]->points[0].name, "Ch\u00e2teau & caf\u00e9");
  EXPECT_EQ(lists[1]->points[0].comment, "Closed on Mondays");
  EXPECT_EQ(lists[1]->points[0].altitude, 512.5);
}

TEST(GpxReader, ReadsWhatARecorderWrites) {
  const PointLists lists = Parsed(Sample("15/recorder.gpx"));
  EXPECT_EQ(Outline(lists), "track 'Morning ride': 47.559619,7.5885764 47.5597,7.5887 47.6,7.6\n");
  EXPECT_EQ(lists[0]->points[0].latitude, 47.5596189089119434356689453125);
  EXPECT_EQ(lists[0]->points[0].longitude, 7.58857635781168937683105468750);
  EXPECT_EQ(lists[0]->points[0].altitude, 255.600006103515625);
  EXPECT_EQ(lists[0]->points[2].altitude, 0.0);
}

TEST(GpxReader, ReadsWhatAPhoneWrites) {
  const PointLists lists = Parsed(Sample("15/phone.gpx"));
  EXPECT_EQ(Outline(lists),
            "track '': 35.658581,139.74543 35.66,139.75\n"
            "waypoints '': 35.658581,139.74543 35.710063,139.8107\n");
  EXPECT_EQ(lists[0]->points[1].altitude, -1.5);
  EXPECT_EQ(lists[1]->points[0].name, "\u6771\u4eac\u30bf\u30ef\u30fc");
  EXPECT_EQ(lists[1]->points[0].comment, "Tower <333 m>");
}

TEST(GpxReader, ReadsOurExamples) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadGpx(WidePath(CORVANE_SOURCE_FOLDER "/examples/kyoto-temples.gpx"), lists, true),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->name, "\u4eac\u90fd\u306e\u304a\u5bfa");
  EXPECT_EQ(lists[0]->Count(), 6u);
  EXPECT_EQ(lists[1]->Count(), 2u);
  lists.clear();
  EXPECT_EQ(ReadGpx(WidePath(CORVANE_SOURCE_FOLDER "/examples/balkan-ring.gpx"), lists, true),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "Balkan ring");
  EXPECT_EQ(lists[0]->Count(), 9u);
}

TEST(GpxReader, RejectsWhatIsNoXml) {
  for (const std::string_view bytes : {"", "<", "x", "235222|4856614|Paris|4|\r\n"}) {
    PointLists lists;
    EXPECT_EQ(ParseGpx(bytes, lists, ContextInPlace()), kStatusFailure);
    EXPECT_TRUE(lists.empty());
  }
  PointLists lists;
  EXPECT_EQ(ParseGpx("<gpx><wpt><name>\0</name></wpt></gpx>"s, lists, ContextInPlace()),
            kStatusFailure);
  EXPECT_TRUE(lists.empty());
}

TEST(GpxReader, FilesThatCannotBeOpenedGiveOne) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadGpx(folder.WidePathTo("none.gpx"), lists, true), kStatusFailure);
  EXPECT_EQ(ReadGpx(WidePath(folder.Path().string()), lists, true), kStatusFailure);
  EXPECT_EQ(ReadGpx(folder.Put("empty.gpx", ""), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
}

// Whatever is cut off, a list is there as soon as its end tag is.
TEST(GpxReader, AFileCutAnywhereKeepsTheListsThatHaveEnded) {
  const std::string whole = Sample("15/planner.gpx");
  const size_t routeEnd = whole.find("</rte>") + 6;
  const size_t fileEnd = whole.find("</gpx>") + 6;
  for (size_t length = 0; length <= whole.size(); ++length) {
    PointLists lists;
    EXPECT_EQ(ParseGpx(std::string_view(whole).substr(0, length), lists, ContextInPlace()),
              length < fileEnd ? kStatusFailure : kStatusSuccess);
    EXPECT_EQ(lists.size(), length < routeEnd ? 0u : length < fileEnd ? 1u : 2u) << length;
  }
}

TEST(GpxReader, ReadsLongTexts) {
  const std::string text(2000000, 'x');
  const CGpsPoint point =
      OnlyPoint("<gpx><wpt><name>" + text + "</name><desc>" + text + "</desc></wpt></gpx>");
  EXPECT_EQ(point.name, text);
  EXPECT_EQ(point.comment, text);
}

std::string GpxBytes(const CGpsPointArray& list, bool removesCommas = false) {
  const FixedClock clock;
  return BytesOf(WriteGpxBody, list, removesCommas);
}

// All that stands before the bounds.
std::string Head() {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>"
         "<gpx version=\"1.0\" creator=\"" +
         std::string(kCreatorTag) +
         "\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
         " xmlns=\"http://www.topografix.com/GPX/1/0\""
         " xmlns:topografix=\"http://www.topografix.com/GPX/Private/TopoGrafix/0/2\""
         " xsi:schemaLocation=\"http://www.topografix.com/GPX/1/0"
         " http://www.topografix.com/GPX/1/0/gpx.xsd"
         " http://www.topografix.com/GPX/Private/TopoGrafix/0/2"
         " http://www.topografix.com/GPX/Private/TopoGrafix/0/2/topografix.xsd\">"
         "<time>2024-05-01T10:00:00Z</time>";
}

// What stands between the bounds and the end of the route.
std::string RouteOf(const CGpsPointArray& list, bool removesCommas = false) {
  const std::string bytes = GpxBytes(list, removesCommas);
  const size_t start = bytes.find("<rte>");
  return bytes.substr(start, bytes.find("</gpx>") - start);
}

TEST(GpxWriter, WritesOneLineOfBoundsAndRoute) {
  const auto list = MakeList("Trip", MakePoint(48.856614, 2.352222, "Paris", "Start & <go>", 35.0),
                             MakePoint(-33.868820, 151.209290, "", "", -0.5),
                             MakePoint(50.85045, -4.3, "C\u00f4te"));
  EXPECT_EQ(GpxBytes(list),
            Head() +
                "<bounds minlat=\"-33.868820\" minlon=\"-4.300000\" maxlat=\"50.850450\""
                " maxlon=\"151.209290\"/>"
                "<rte><name>Trip</name>"
                "<rtept lat=\"48.856614\" lon=\"2.352222\"><ele>35.000000</ele><name>Paris</name>"
                "<desc><![CDATA[Start & <go>]]></desc></rtept>"
                "<rtept lat=\"-33.868820\" lon=\"151.209290\"><ele>-0.500000</ele></rtept>"
                "<rtept lat=\"50.850450\" lon=\"-4.300000\"><name>C\u00f4te</name></rtept>"
                "</rte></gpx>");
}

TEST(GpxWriter, AnEmptyListHasBoundsOfZeroAndAnEmptyName) {
  EXPECT_EQ(GpxBytes(CGpsRoute()),
            Head() +
                "<bounds minlat=\"0.000000\" minlon=\"0.000000\" maxlat=\"0.000000\""
                " maxlon=\"0.000000\"/><rte><name></name></rte></gpx>");
}

TEST(GpxWriter, BoundsOfPointsAwayFromZero) {
  EXPECT_NE(GpxBytes(MakeList("", MakePoint(10, -20), MakePoint(11, -21)))
                .find("<bounds minlat=\"10.000000\" minlon=\"-21.000000\" maxlat=\"11.000000\""
                      " maxlon=\"-20.000000\"/>"),
            std::string::npos);
}

TEST(GpxWriter, EveryKindOfListIsARoute) {
  const std::string expected =
      "<rte><name>n</name><rtept lat=\"1.000000\" lon=\"2.000000\"/></rte>";
  EXPECT_EQ(RouteOf(MakeList<CGpsRoute>("n", MakePoint(1, 2))), expected);
  EXPECT_EQ(RouteOf(MakeList<CGpsTrack>("n", MakePoint(1, 2))), expected);
  EXPECT_EQ(RouteOf(MakeList<CGpsWaypointList>("n", MakePoint(1, 2))), expected);
  EXPECT_EQ(RouteOf(MakeList<CGpsPoiList>("n", MakePoint(1, 2))), expected);
}

TEST(GpxWriter, RemovesCommasFromPointsWhenAskedTo) {
  const auto list = MakeList("x,y", MakePoint(1, 2, "a,b", "c,,d,"));
  EXPECT_EQ(RouteOf(list),
            "<rte><name>x,y</name><rtept lat=\"1.000000\" lon=\"2.000000\"><name>a,b</name>"
            "<desc><![CDATA[c,,d,]]></desc></rtept></rte>");
  EXPECT_EQ(RouteOf(list, true),
            "<rte><name>x,y</name><rtept lat=\"1.000000\" lon=\"2.000000\"><name>ab</name>"
            "<desc><![CDATA[cd]]></desc></rtept></rte>");
}

TEST(GpxWriter, ElementsOfCommasOnlyAreLeftOut) {
  EXPECT_EQ(RouteOf(MakeList("", MakePoint(1, 2, ",", ",,")), true),
            "<rte><name></name><rtept lat=\"1.000000\" lon=\"2.000000\"/></rte>");
}

TEST(GpxWriter, EscapesNamesAndBreaksCdataAtItsEnd) {
  const auto list = MakeList("<&'\">", MakePoint(1, 2, "<&'\"> | = ; \u0141 \U0001F6B2", "x]]>y"));
  EXPECT_EQ(RouteOf(list),
            "<rte><name>&lt;&amp;&apos;&quot;&gt;</name><rtept lat=\"1.000000\" lon=\"2.000000\">"
            "<name>&lt;&amp;&apos;&quot;&gt; | = ; \u0141 \U0001F6B2</name>"
            "<desc><![CDATA[x]]>y]]></desc></rtept></rte>");
  PointLists lists;
  EXPECT_EQ(ParseGpx(GpxBytes(list), lists, ContextInPlace()), kStatusFailure);
}

TEST(GpxWriter, WritesFilesAndNeverSplits) {
  const FixedClock clock;
  const TemporaryFolder folder;
  const auto list = MakeList("n", MakePoint(1, 2, "a,b"), MakePoint(3, 4), MakePoint(5, 6));
  EXPECT_EQ(WriteGpx(folder.WidePathTo("a.gpx"), list, 0, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.gpx"), GpxBytes(list));
  EXPECT_EQ(WriteGpx(folder.WidePathTo("b.gpx"), list, 2, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("b.gpx"), GpxBytes(list, true));
  EXPECT_EQ(WriteGpx(folder.WidePathTo("none/a.gpx"), list, 0, true), kStatusFailure);
}

TEST(Gpx, RoundTripsThroughAFile) {
  const TemporaryFolder folder;
  const auto list =
      MakeList("\u4eac\u90fd", MakePoint(34.994857, 135.785046, "\u6e05\u6c34\u5bfa", "a,b"),
               MakePoint(-0.000001, -179.999999, "\"q\" & <t>", "two\nlines", 1234.5),
               MakePoint(0, 0, "null"));
  EXPECT_EQ(WriteGpx(folder.WidePathTo("a.gpx"), list, 0, true), kStatusSuccess);
  PointLists lists;
  EXPECT_EQ(ReadGpx(folder.WidePathTo("a.gpx"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, list.name);
  ASSERT_EQ(lists[0]->Count(), 3u);
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(lists[0]->points[i].latitude, list.points[i].latitude);
    EXPECT_EQ(lists[0]->points[i].longitude, list.points[i].longitude);
    EXPECT_EQ(lists[0]->points[i].altitude, list.points[i].altitude);
    EXPECT_EQ(lists[0]->points[i].name, list.points[i].name);
    EXPECT_EQ(lists[0]->points[i].comment, list.points[i].comment);
  }
}

TEST(Gpx, ALongTrackComesWhole) {
  const TemporaryFolder folder;
  CGpsTrack track;
  for (int i = 0; i < 50000; ++i)
    track.points.push_back(MakePoint(i * 0.001, -i * 0.002, "P" + std::to_string(i), "", i));
  EXPECT_EQ(WriteGpx(folder.WidePathTo("a.gpx"), track, 0, true), kStatusSuccess);
  PointLists lists;
  EXPECT_EQ(ReadGpx(folder.WidePathTo("a.gpx"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 50000u);
  for (size_t i = 0; i < 50000; ++i) {
    ASSERT_TRUE(lists[0]->points[i] == track.points[i]) << i;
    ASSERT_EQ(lists[0]->points[i].altitude, static_cast<double>(i));
  }
}

}  // namespace
