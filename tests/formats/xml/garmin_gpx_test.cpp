#include "formats/xml/garmin_gpx.h"

#include <string>

#include <gtest/gtest.h>

#include "base/product.h"
#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/xml/gpx.h"
#include "model/route_leg.h"
#include "tests/formats/written_bytes.h"
#include "tests/formats/xml/gpx_samples.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>";
const std::string kStamp = "<time>2024-05-01T10:00:00Z</time>";
const std::string kLink =
    "<link href=\"" + std::string(kProductSite) + "\"><text>Corvane</text></link>";
const std::string kRoutePoint =
    "<gpxx:RoutePointExtension><gpxx:Subclass>000000000000ffffffffffffffffffffffff</gpxx:Subclass>"
    "</gpxx:RoutePointExtension>";
const std::string kAutoNamed =
    "<gpxx:RouteExtension><gpxx:IsAutoNamed>true</gpxx:IsAutoNamed></gpxx:RouteExtension>";
const std::string kSymbol = "<sym>Waypoint</sym>";

std::string NuviBytes(const CGpsPointArray& list, bool marksViaPoints = false) {
  const FixedClock clock;
  return BytesOf(WriteNuviGpxBody, list, marksViaPoints, ConversionContext());
}

std::string ZumoBytes(const CGpsPointArray& list) {
  const FixedClock clock;
  return BytesOf(WriteZumoGpxBody, list, ConversionContext());
}

// What stands in front of the bounds.
std::string NuviHead() {
  return kDeclaration +
         "<gpx xmlns=\"http://www.topografix.com/GPX/1/1\""
         " xmlns:gpxx=\"http://www.garmin.com/xmlschemas/GpxExtensions/v3\""
         " xmlns:trp=\"http://www.garmin.com/xmlschemas/TripExtensions/v1\""
         " creator=\"" +
         std::string(kCreatorTag) +
         "\" version=\"1.1\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
         " xsi:schemaLocation=\"http://www.topografix.com/GPX/1/1"
         " http://www.topografix.com/GPX/1/1/gpx.xsd"
         " http://www.garmin.com/xmlschemas/GpxExtensions/v3"
         " http://www.garmin.com/xmlschemas/GpxExtensionsv3.xsd"
         " http://www.garmin.com/xmlschemas/TripExtensions/v1"
         " http://www.garmin.com/xmlschemas/TripExtensionsv1.xsd\">"
         "<metadata><author><name>Corvane</name>" +
         kLink + "</author>" + kStamp;
}

std::string ZumoHead() {
  return kDeclaration + "<gpx creator=\"" + std::string(kCreatorTag) +
         "\" version=\"1.1\" xsi:schemaLocation=\""
         "http://www.topografix.com/GPX/1/1 "
         "http://www.topografix.com/GPX/1/1/gpx.xsd "
         "http://www.garmin.com/xmlschemas/WaypointExtension/v1 "
         "http://www8.garmin.com/xmlschemas/WaypointExtensionv1.xsd "
         "http://www.garmin.com/xmlschemas/TrackPointExtension/v1 "
         "http://www.garmin.com/xmlschemas/TrackPointExtensionv1.xsd "
         "http://www.garmin.com/xmlschemas/GpxExtensions/v3 "
         "http://www8.garmin.com/xmlschemas/GpxExtensionsv3.xsd "
         "http://www.garmin.com/xmlschemas/ActivityExtension/v1 "
         "http://www8.garmin.com/xmlschemas/ActivityExtensionv1.xsd "
         "http://www.garmin.com/xmlschemas/AdventuresExtensions/v1 "
         "http://www8.garmin.com/xmlschemas/AdventuresExtensionv1.xsd "
         "http://www.garmin.com/xmlschemas/PressureExtension/v1 "
         "http://www.garmin.com/xmlschemas/PressureExtensionv1.xsd "
         "http://www.garmin.com/xmlschemas/TripExtensions/v1 "
         "http://www.garmin.com/xmlschemas/TripExtensionsv1.xsd "
         "http://www.garmin.com/xmlschemas/TripMetaDataExtensions/v1 "
         "http://www.garmin.com/xmlschemas/TripMetaDataExtensionsv1.xsd "
         "http://www.garmin.com/xmlschemas/ViaPointTransportationModeExtensions/v1 "
         "http://www.garmin.com/xmlschemas/ViaPointTransportationModeExtensionsv1.xsd "
         "http://www.garmin.com/xmlschemas/CreationTimeExtension/v1 "
         "http://www.garmin.com/xmlschemas/CreationTimeExtensionsv1.xsd "
         "http://www.garmin.com/xmlschemas/AccelerationExtension/v1 "
         "http://www.garmin.com/xmlschemas/AccelerationExtensionv1.xsd "
         "http://www.garmin.com/xmlschemas/PowerExtension/v1 "
         "http://www.garmin.com/xmlschemas/PowerExtensionv1.xsd "
         "http://www.garmin.com/xmlschemas/VideoExtension/v1 "
         "http://www.garmin.com/xmlschemas/VideoExtensionv1.xsd\""
         " xmlns=\"http://www.topografix.com/GPX/1/1\""
         " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
         " xmlns:wptx1=\"http://www.garmin.com/xmlschemas/WaypointExtension/v1\""
         " xmlns:gpxtrx=\"http://www.garmin.com/xmlschemas/GpxExtensions/v3\""
         " xmlns:gpxtpx=\"http://www.garmin.com/xmlschemas/TrackPointExtension/v1\""
         " xmlns:gpxx=\"http://www.garmin.com/xmlschemas/GpxExtensions/v3\""
         " xmlns:trp=\"http://www.garmin.com/xmlschemas/TripExtensions/v1\""
         " xmlns:adv=\"http://www.garmin.com/xmlschemas/AdventuresExtensions/v1\""
         " xmlns:prs=\"http://www.garmin.com/xmlschemas/PressureExtension/v1\""
         " xmlns:tmd=\"http://www.garmin.com/xmlschemas/TripMetaDataExtensions/v1\""
         " xmlns:vptm=\"http://www.garmin.com/xmlschemas/ViaPointTransportationModeExtensions/v1\""
         " xmlns:ctx=\"http://www.garmin.com/xmlschemas/CreationTimeExtension/v1\""
         " xmlns:gpxacc=\"http://www.garmin.com/xmlschemas/AccelerationExtension/v1\""
         " xmlns:gpxpx=\"http://www.garmin.com/xmlschemas/PowerExtension/v1\""
         " xmlns:vidx1=\"http://www.garmin.com/xmlschemas/VideoExtension/v1\">"
         "<metadata>" +
         kLink + kStamp;
}

const CGpsRoute& Trip() {
  static const CGpsRoute trip = MakeList(
      "Trip & more", MakePoint(45.899247, 6.129384, "Annecy <old town>", "Start & <go>", 448.5),
      MakePoint(-33.86882, -70.5), MakePoint(45.923697, 6.869433, "Ch\u00e2telard"));
  return trip;
}

TEST(NuviGpxWriter, WritesEveryStopAsWaypointAndAsRoutePoint) {
  const std::string asWaypoint =
      "<extensions><gpxx:WaypointExtension><gpxx:DisplayMode>SymbolAndName</gpxx:DisplayMode>"
      "</gpxx:WaypointExtension></extensions>";
  const std::string asRoutePoint = "<extensions>" + kRoutePoint + "</extensions>";
  const auto points = [](const std::string& element, const std::string& extensions) {
    return "<" + element + " lat=\"45.899247\" lon=\"6.129384\"><ele>448.500000</ele>" + kStamp +
           "<name>Annecy &lt;old town&gt;</name><desc><![CDATA[Start & <go>]]></desc>" + kSymbol +
           extensions + "</" + element + "><" + element +
           " lat=\"-33.868820\" lon=\"-70.500000\"><ele>0.000000</ele>" + kStamp + kSymbol +
           extensions + "</" + element + "><" + element +
           " lat=\"45.923697\" lon=\"6.869433\"><ele>0.000000</ele>" + kStamp +
           "<name>Ch\u00e2telard</name>" + kSymbol + extensions + "</" + element + ">";
  };
  EXPECT_EQ(NuviBytes(Trip()),
            NuviHead() +
                "<bounds minlat=\"-33.868820\" minlon=\"-70.500000\" maxlat=\"45.923697\""
                " maxlon=\"6.869433\"/></metadata>" +
                points("wpt", asWaypoint) + "<rte><name>Trip &amp; more</name>" + kAutoNamed +
                points("rtept", asRoutePoint) + "</rte></gpx>");
}

// The points of the route, each as the content of its `extensions`.
std::string RouteExtensionsOf(const std::string& bytes) {
  const std::string start = "<extensions>";
  const std::string end = "</extensions>";
  std::string all;
  for (size_t at = bytes.find("<rtept"); (at = bytes.find(start, at)) != std::string::npos;) {
    at += start.size();
    all += bytes.substr(at, bytes.find(end, at) - at) + "\n";
  }
  return all;
}

TEST(NuviGpxWriter, MarksInnerStopsAsViaPointsWhenAskedTo) {
  const std::string via = "<trp:ViaPoint/>";
  const auto list =
      MakeList("", MakePoint(1, 1), MakePoint(2, 2), MakePoint(3, 3), MakePoint(4, 4));
  EXPECT_EQ(RouteExtensionsOf(NuviBytes(list, true)), kRoutePoint + "\n" + kRoutePoint + via +
                                                          "\n" + kRoutePoint + via + "\n" +
                                                          kRoutePoint + "\n");
  EXPECT_EQ(RouteExtensionsOf(NuviBytes(list, false)),
            kRoutePoint + "\n" + kRoutePoint + "\n" + kRoutePoint + "\n" + kRoutePoint + "\n");
}

TEST(NuviGpxWriter, OneStopIsFirstAndLastAtOnce) {
  const auto one = MakeList("", MakePoint(1, 1));
  EXPECT_EQ(NuviBytes(one, true), NuviBytes(one, false));
  EXPECT_EQ(NuviBytes(one, true).find("trp:ViaPoint"), std::string::npos);
  const auto two = MakeList("", MakePoint(1, 1), MakePoint(1, 1));
  EXPECT_EQ(NuviBytes(two, true).find("trp:ViaPoint"), std::string::npos);
}

TEST(NuviGpxWriter, AnEmptyListHasARouteOfNameAndExtension) {
  EXPECT_EQ(NuviBytes(CGpsRoute()),
            NuviHead() +
                "<bounds minlat=\"0.000000\" minlon=\"0.000000\" maxlat=\"0.000000\""
                " maxlon=\"0.000000\"/></metadata><rte><name></name>" +
                kAutoNamed + "</rte></gpx>");
}

TEST(ZumoGpxWriter, WritesARouteOfViaPointsOnly) {
  const std::string extensions = "<extensions>" + kRoutePoint + "<trp:ViaPoint/></extensions>";
  EXPECT_EQ(
      ZumoBytes(Trip()),
      ZumoHead() +
          "<bounds maxlat=\"45.923697\" maxlon=\"6.869433\" minlat=\"-33.868820\""
          " minlon=\"-70.500000\"/></metadata>"
          "<rte><name>Trip &amp; more</name><extensions>" +
          kAutoNamed +
          "</extensions>"
          "<rtept lat=\"45.899247\" lon=\"6.129384\">" +
          kStamp + "<name>Annecy &lt;old town&gt;</name><desc><![CDATA[Start & <go>]]></desc>" +
          kSymbol + extensions + "</rtept><rtept lat=\"-33.868820\" lon=\"-70.500000\">" + kStamp +
          kSymbol + extensions + "</rtept><rtept lat=\"45.923697\" lon=\"6.869433\">" + kStamp +
          "<name>Ch\u00e2telard</name>" + kSymbol + extensions + "</rtept></rte></gpx>");
}

TEST(ZumoGpxWriter, OneStopIsAViaPointToo) {
  EXPECT_EQ(RouteExtensionsOf(ZumoBytes(MakeList("", MakePoint(1, 1)))),
            kRoutePoint + "<trp:ViaPoint/>\n");
}

TEST(ZumoGpxWriter, AnEmptyListHasARouteOfNameAndExtension) {
  EXPECT_EQ(ZumoBytes(CGpsRoute()),
            ZumoHead() +
                "<bounds maxlat=\"0.000000\" maxlon=\"0.000000\" minlat=\"0.000000\""
                " minlon=\"0.000000\"/></metadata><rte><name></name><extensions>" +
                kAutoNamed + "</extensions></rte></gpx>");
}

TEST(GarminGpx, KindsOfListsAreNotToldApart) {
  const auto asTrack = MakeList<CGpsTrack>("n", MakePoint(1, 2, "p"));
  const auto asRoute = MakeList<CGpsRoute>("n", MakePoint(1, 2, "p"));
  EXPECT_EQ(NuviBytes(asTrack), NuviBytes(asRoute));
  EXPECT_EQ(ZumoBytes(asTrack), ZumoBytes(asRoute));
}

TEST(GarminGpx, WritesFiles) {
  const FixedClock clock;
  const TemporaryFolder folder;
  EXPECT_EQ(WriteNuviGpx(folder.WidePathTo("a.gpx"), Trip(), 0, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.gpx"), NuviBytes(Trip(), false));
  EXPECT_EQ(WriteNuviGpx(folder.WidePathTo("a.gpx"), Trip(), 2, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.gpx"), NuviBytes(Trip(), true));
  EXPECT_EQ(WriteZumoGpx(folder.WidePathTo("a.gpx"), Trip(), 2, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.gpx"), ZumoBytes(Trip()));
  EXPECT_EQ(WriteNuviGpx(folder.WidePathTo("none/a.gpx"), Trip(), 0, true), kStatusFailure);
  EXPECT_EQ(WriteZumoGpx(folder.WidePathTo("none/a.gpx"), Trip(), 0, true), kStatusFailure);
}

TEST(GarminGpx, ComesBackAsRouteAndWaypoints) {
  PointLists nuvi;
  EXPECT_EQ(ParseGpx(NuviBytes(Trip(), true), nuvi, ContextInPlace()), kStatusSuccess);
  const std::string positions = " 45.899247,6.129384 -33.86882,-70.5 45.923697,6.869433\n";
  EXPECT_EQ(Outline(nuvi), "route 'Trip & more':" + positions + "waypoints '':" + positions);
  EXPECT_EQ(nuvi[0]->points[0].altitude, 448.5);
  for (const auto& list : nuvi) {
    for (size_t i = 0; i < 3; ++i) EXPECT_EQ(list->points[i], Trip().points[i]);
  }
  PointLists zumo;
  EXPECT_EQ(ParseGpx(ZumoBytes(Trip()), zumo, ContextInPlace()), kStatusSuccess);
  EXPECT_EQ(Outline(zumo), "route 'Trip & more':" + positions);
  EXPECT_EQ(zumo[0]->points[0].altitude, 0.0);
  for (size_t i = 0; i < 3; ++i) EXPECT_EQ(zumo[0]->points[i], Trip().points[i]);
}

// Three stops; a way of two points leads from the first to the second, none to the third.
CGpsRoute TripWithWay() {
  CGpsRoute trip = MakeList("", MakePoint(45.5, 6.25), MakePoint(45.75, 6.5), MakePoint(46, 6.75));
  CRouteLeg leg;
  for (const auto& [latitude, longitude] : {std::pair(45.5, 6.25), std::pair(45.625, 6.375)}) {
    auto point = std::make_unique<CGpsNamedPoint>();
    point->latitude = latitude;
    point->longitude = longitude;
    leg.route.shape.points.points.push_back(std::move(point));
  }
  trip.At(1).SetRouteLeg(leg);
  return trip;
}

size_t CountOf(const std::string& part, const std::string& text) {
  size_t count = 0;
  for (size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
  return count;
}

TEST(GarminGpxWriters, WriteTheWayThatStartsAtAStopOnlyWhenTold) {
  const FixedClock clock;
  const CGpsRoute trip = TripWithWay();
  const std::string kWay = "<rtept lat=\"45.500000\" lon=\"6.250000\">";
  const std::string kWithWay =
      "ffffffffffffffffffffffff</gpxx:Subclass>"
      "<gpxx:rpt lat=\"45.500000\" lon=\"6.250000\"/>"
      "<gpxx:rpt lat=\"45.625000\" lon=\"6.375000\"/></gpxx:RoutePointExtension>";
  ConversionContext context;
  context.writesWay = true;
  for (const std::string& bytes : {BytesOf(WriteNuviGpxBody, trip, false, context),
                                   BytesOf(WriteZumoGpxBody, trip, context)}) {
    EXPECT_EQ(CountOf("<gpxx:rpt ", bytes), 2u);
    const size_t first = bytes.find(kWay);
    ASSERT_NE(first, bytes.npos);
    // In the first of the three route points, behind the subclass.
    const size_t way = bytes.find(kWithWay, first);
    ASSERT_NE(way, bytes.npos);
    EXPECT_LT(way, bytes.find("<rtept lat=\"45.750000\""));
    EXPECT_EQ(CountOf(kRoutePoint, bytes), 2u);
  }
  EXPECT_EQ(NuviBytes(trip).find("gpxx:rpt"), std::string::npos);
  EXPECT_EQ(ZumoBytes(trip).find("gpxx:rpt"), std::string::npos);
}

}  // namespace
