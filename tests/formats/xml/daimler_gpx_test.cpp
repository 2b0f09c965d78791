#include "formats/xml/daimler_gpx.h"

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

const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>";
const std::string kCreator = " creator=\"" + std::string(kCreatorTag) + "\"";

const std::string kHead50 = kDeclaration + "<gpx:gpx version=\"1.1\"" + kCreator +
                            " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
                            " xmlns:gpx=\"http://www.topografix.com/GPX/1/1\""
                            " xmlns:gpxd=\"http://www.daimler.com/DaimlerGPXExtensions/V2.7.4\""
                            " xsi:schemaLocation=\"http://www.topografix.com/GPX/1/1"
                            " http://www.topografix.com/GPX/1/1/gpx.xsd\">";

const std::string kHead55 =
    kDeclaration +
    "<gpx xsi:schemaLocation=\"http://www.topografix.com/GPX/1/1 GPX_Schema_Topografix.xsd"
    " http://www.daimler.com/DaimlerGPXExtensions/V2.7.4 Daimler_GPX_Extension_V2_7_4.xsd\""
    " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
    " xmlns:Gpx=\"http://www.topografix.com/GPX/1/1\""
    " xmlns:Gpxd=\"http://www.daimler.com/DaimlerGPXExtensions/V2.7.4\""
    " xmlns=\"http://www.topografix.com/GPX/1/1\"" +
    kCreator + " version=\"1.1\">";

const std::string kHeadMbux =
    kDeclaration + "<gpx:gpx version=\"1.1\"" + kCreator +
    " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
    " xmlns:gpx=\"http://www.topografix.com/GPX/1/1\""
    " xmlns:gpxd=\"http://www.daimler.com/DaimlerGPXExtensions/V2.4\""
    " xsi:schemaLocation=\"http://www.topografix.com/GPX/1/1 GPX-Schema_Topografix.xsd\">";

const std::string kRouteIcon =
    "<gpx:extensions><gpxd:RteExtension><gpxd:RouteIconId IconId=\"13\"/></gpxd:RteExtension>"
    "</gpx:extensions>";

std::string Use(const std::string& use) {
  return "<gpx:extensions><gpxd:WptExtension><gpxd:WptUse Use=\"" + use +
         "\" LastWpt=\"false\"></gpxd:WptUse></gpxd:WptExtension></gpx:extensions>";
}

const CGpsRoute& Trip() {
  static const CGpsRoute trip =
      MakeList("Schw\u00e4bische <Alb>", MakePoint(48.49212, 9.21134, "A & B", "x]] & <y>", 380.0),
               MakePoint(-1.5, -0.000001), MakePoint(48.3235, 8.9675, "", "only a comment"));
  return trip;
}

const std::string kStops50 =
    "<gpx:rtept lat=\"48.492120\" lon=\"9.211340\"><gpx:name>A &amp; B</gpx:name>"
    "<gpx:desc><![CDATA[x]] & <y>]]></gpx:desc></gpx:rtept>"
    "<gpx:rtept lat=\"-1.500000\" lon=\"-0.000001\"></gpx:rtept>"
    "<gpx:rtept lat=\"48.323500\" lon=\"8.967500\">"
    "<gpx:desc><![CDATA[only a comment]]></gpx:desc></gpx:rtept>";

TEST(DaimlerGpxWriter, WritesNtg50) {
  EXPECT_EQ(BytesOf(WriteDaimlerGpx50Body, Trip()),
            kHead50 + "<gpx:rte><gpx:name>Schw\u00e4bische &lt;Alb&gt;</gpx:name>" + kStops50 +
                "</gpx:rte></gpx:gpx>");
}

TEST(DaimlerGpxWriter, WritesMbux) {
  EXPECT_EQ(BytesOf(WriteDaimlerGpxMbuxBody, Trip()),
            kHeadMbux + "<gpx:rte><gpx:name>Schw\u00e4bische &lt;Alb&gt;</gpx:name>" + kRouteIcon +
                kStops50 + "</gpx:rte></gpx:gpx>");
}

TEST(DaimlerGpxWriter, WritesNtg55) {
  EXPECT_EQ(BytesOf(WriteDaimlerGpx55Body, Trip()),
            kHead55 +
                "<rte><name>Schw\u00e4bische &lt;Alb&gt;</name>"
                "<gpx:rtept lat=\"48.492120\" lon=\"9.211340\"><gpx:name>A &amp; B</gpx:name>"
                "<gpx:desc><![CDATA[x]] & <y>]]></gpx:desc>" +
                Use("attractor") + "</gpx:rtept><gpx:rtept lat=\"-1.500000\" lon=\"-0.000001\">" +
                Use("attractor") +
                "</gpx:rtept><gpx:rtept lat=\"48.323500\" lon=\"8.967500\">"
                "<gpx:desc><![CDATA[only a comment]]></gpx:desc>" +
                Use("destination") + "</gpx:rtept></rte></gpx>");
}

TEST(DaimlerGpxWriter, TheOnlyStopOfNtg55IsTheDestination) {
  EXPECT_EQ(BytesOf(WriteDaimlerGpx55Body, MakeList("", MakePoint(1, 2))),
            kHead55 + "<rte><name></name><gpx:rtept lat=\"1.000000\" lon=\"2.000000\">" +
                Use("destination") + "</gpx:rtept></rte></gpx>");
}

TEST(DaimlerGpxWriter, AnEmptyListHasARouteWithItsName) {
  EXPECT_EQ(BytesOf(WriteDaimlerGpx50Body, CGpsRoute()),
            kHead50 + "<gpx:rte><gpx:name></gpx:name></gpx:rte></gpx:gpx>");
  EXPECT_EQ(BytesOf(WriteDaimlerGpx55Body, CGpsRoute()),
            kHead55 + "<rte><name></name></rte></gpx>");
  EXPECT_EQ(BytesOf(WriteDaimlerGpxMbuxBody, CGpsRoute()),
            kHeadMbux + "<gpx:rte><gpx:name></gpx:name>" + kRouteIcon + "</gpx:rte></gpx:gpx>");
}

TEST(DaimlerGpxWriter, KindsOfListsAreNotToldApart) {
  for (const auto writeBody :
       {WriteDaimlerGpx50Body, WriteDaimlerGpx55Body, WriteDaimlerGpxMbuxBody}) {
    EXPECT_EQ(BytesOf(writeBody, MakeList<CGpsTrack>("n", MakePoint(1, 2, "p"))),
              BytesOf(writeBody, MakeList<CGpsRoute>("n", MakePoint(1, 2, "p"))));
  }
}

TEST(DaimlerGpxWriter, WritesFilesAndNeverSplits) {
  const TemporaryFolder folder;
  const WideString path = folder.WidePathTo("a.gpx");
  EXPECT_EQ(WriteDaimlerGpx50(path, Trip(), 2, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.gpx"), BytesOf(WriteDaimlerGpx50Body, Trip()));
  EXPECT_EQ(WriteDaimlerGpx55(path, Trip(), 2, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.gpx"), BytesOf(WriteDaimlerGpx55Body, Trip()));
  EXPECT_EQ(WriteDaimlerGpxMbux(path, Trip(), 2, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.gpx"), BytesOf(WriteDaimlerGpxMbuxBody, Trip()));
  const WideString nowhere = folder.WidePathTo("none/a.gpx");
  EXPECT_EQ(WriteDaimlerGpx50(nowhere, Trip(), 0, true), kStatusFailure);
  EXPECT_EQ(WriteDaimlerGpx55(nowhere, Trip(), 0, true), kStatusFailure);
  EXPECT_EQ(WriteDaimlerGpxMbux(nowhere, Trip(), 0, true), kStatusFailure);
}

// A document that must be well-formed.
PointLists Parsed(std::string_view document) {
  PointLists lists;
  EXPECT_EQ(ParseDaimlerGpx(document, lists, ContextInPlace()), kStatusSuccess) << document;
  return lists;
}

TEST(DaimlerGpxReader, ReadsWhatAHeadUnitWrites) {
  const PointLists lists = Parsed(Sample("16/head_unit.gpx"));
  EXPECT_EQ(Outline(lists),
            "route 'Schw\u00e4bische Alb': 48.49212,9.21134 48.3235,8.9675\n"
            "track '': 48.5,9.1\n"
            "waypoints '': 48.4,9\n");
  EXPECT_EQ(lists[0]->points[0].name, "Reutlingen");
  EXPECT_EQ(lists[0]->points[0].comment, "");
  EXPECT_EQ(lists[0]->points[1].name, "Burg Hohenzollern");
  EXPECT_EQ(lists[0]->points[1].altitude, 855.0);
}

TEST(DaimlerGpxReader, ReadsNamesWithAndWithoutThePrefix) {
  const PointLists lists = Parsed(
      "<gpx><rte><name>r</name><gpx:rtept lat='1' lon='2'><gpx:name>a</gpx:name><cmt>c</cmt>"
      "<ele>3</ele></gpx:rtept><rtept lat='4' lon='5'><name>b</name><desc>d</desc></rtept></rte>"
      "<gpx:trk><trkseg><trkpt lat='6' lon='7'/><gpx:trkpt lat='8' lon='9'/></trkseg></gpx:trk>"
      "<gpx:wpt lat='10' lon='11'/><wpt lat='12' lon='13'/></gpx>");
  EXPECT_EQ(Outline(lists), "route 'r': 1,2 4,5\ntrack '': 6,7 8,9\nwaypoints '': 10,11 12,13\n");
  EXPECT_EQ(lists[0]->points[0].name, "a");
  EXPECT_EQ(lists[0]->points[0].comment, "c");
  EXPECT_EQ(lists[0]->points[0].altitude, 3.0);
  EXPECT_EQ(lists[0]->points[1].name, "b");
  EXPECT_EQ(lists[0]->points[1].comment, "d");
}

TEST(DaimlerGpxReader, CommentsAndElevationsCountWithoutThePrefixOnly) {
  const PointLists lists = Parsed(
      "<gpx:gpx><gpx:wpt lat='1' lon='2'><gpx:cmt>c</gpx:cmt><gpx:desc>d</gpx:desc>"
      "<gpx:ele>3</gpx:ele></gpx:wpt></gpx:gpx>");
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->points[0].comment, "");
  EXPECT_EQ(lists[0]->points[0].altitude, 0.0);
}

TEST(DaimlerGpxReader, OtherPrefixesDoNotCount) {
  EXPECT_TRUE(Parsed("<gpx><Gpx:wpt lat='1' lon='2'/><x:rte><x:rtept/></x:rte></gpx>").empty());
  EXPECT_TRUE(Parsed("<gpx><gpx:gpx:wpt/><gpx:/><gpx:wpty/></gpx>").empty());
}

TEST(DaimlerGpxReader, AFileWithoutItsEndKeepsWhatHasEnded) {
  const std::string whole = Sample("16/head_unit.gpx");
  const std::string routeEnd = "</gpx:rte>";
  const std::string trackEnd = "</gpx:trk>";
  const std::string fileEnd = "</gpx:gpx>";
  for (size_t length = 0; length <= whole.size(); ++length) {
    PointLists lists;
    const bool isWhole = length >= whole.find(fileEnd) + fileEnd.size();
    EXPECT_EQ(ParseDaimlerGpx(std::string_view(whole).substr(0, length), lists, ContextInPlace()),
              isWhole ? kStatusSuccess : kStatusFailure);
    const size_t expected = (length >= whole.find(routeEnd) + routeEnd.size() ? 1u : 0u) +
                            (length >= whole.find(trackEnd) + trackEnd.size() ? 1u : 0u) +
                            (isWhole ? 1u : 0u);
    EXPECT_EQ(lists.size(), expected) << length;
  }
}

TEST(DaimlerGpxReader, RejectsWhatIsNoXml) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadDaimlerGpx(folder.WidePathTo("none.gpx"), lists, true), kStatusFailure);
  EXPECT_EQ(ReadDaimlerGpx(folder.Put("a.gpx", ""), lists, true), kStatusFailure);
  EXPECT_EQ(ReadDaimlerGpx(folder.Put("b.gpx", "x"), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
}

// Names and positions come back from all three, comments and elevations from none.
TEST(DaimlerGpx, RoundTripsWithoutComments) {
  const TemporaryFolder folder;
  const WideString path = folder.WidePathTo("a.gpx");
  for (const auto write : {WriteDaimlerGpx50, WriteDaimlerGpx55, WriteDaimlerGpxMbux}) {
    EXPECT_EQ(write(path, Trip(), 0, true), kStatusSuccess);
    PointLists lists;
    EXPECT_EQ(ReadDaimlerGpx(path, lists, true), kStatusSuccess);
    ASSERT_EQ(lists.size(), 1u);
    EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
    EXPECT_EQ(lists[0]->name, Trip().name);
    ASSERT_EQ(lists[0]->Count(), 3u);
    for (size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(lists[0]->points[i].latitude, Trip().points[i].latitude);
      EXPECT_EQ(lists[0]->points[i].longitude, Trip().points[i].longitude);
      EXPECT_EQ(lists[0]->points[i].name, Trip().points[i].name);
      EXPECT_EQ(lists[0]->points[i].comment, "");
      EXPECT_EQ(lists[0]->points[i].altitude, 0.0);
    }
  }
}

// The plain reader finds nothing in prefixed files, so that the search goes on to this one.
TEST(DaimlerGpx, ThePlainReaderFindsNothing) {
  for (const auto writeBody :
       {WriteDaimlerGpx50Body, WriteDaimlerGpx55Body, WriteDaimlerGpxMbuxBody}) {
    PointLists lists;
    EXPECT_EQ(ParseGpx(BytesOf(writeBody, Trip()), lists, ContextInPlace()), kStatusSuccess);
    EXPECT_TRUE(lists.empty());
  }
}

}  // namespace
