// Links of HERE, ViaMichelin and MyDrive.

#include <string>

#include <gtest/gtest.h>

#include "services/links/here_link.h"
#include "services/links/mydrive_link.h"
#include "services/links/viamichelin_link.h"
#include "tests/services/link_builder.h"

namespace {

const CGpsRoute kTrip =
    MakeList("", MakePoint(48.08078, 7.35584, "Colmar"),
             MakePoint(48.25966, 7.45448, "Sélestat (gare)"), MakePoint(-48.5, -7.5, "Île 1:2/3"));

// HERE.

std::string HereStops(std::string_view link) { return Said(ParseHereLink(link).stops); }

TEST(HereLink, Hosts) {
  for (const char* host : {"here.com", "www.here.com", "wego.here.com", "share.here.com"})
    EXPECT_TRUE(IsHereHost(host)) << host;
  for (const char* host : {"", "there.com", "here.com.evil.org", "here.org"})
    EXPECT_FALSE(IsHereHost(host)) << host;
}

TEST(HereLink, NamesWithPositions) {
  EXPECT_EQ(HereStops("https://www.here.com/directions/drive/Colmar:48.08078,7.35584/"
                      "S%C3%A9lestat:48.25966,7.45448"),
            "Colmar@48.080780,7.355840|Sélestat@48.259660,7.454480");
  EXPECT_EQ(HereStops("https://wego.here.com/directions/mix/Berlin,-Germany:52.51604,13.37691/"
                      "Neue-Stra%C3%9Fe-1:52.5,-13.4?map=52.5,13.4,12,normal"),
            "Berlin, Germany@52.516040,13.376910|Neue Straße 1@52.500000,-13.400000");
}

TEST(HereLink, EscapedColons) {
  EXPECT_EQ(HereStops("https://www.here.com/directions/drive/A%3A1:48.1,7.2/B%3A48.2%2C7.3"),
            "A:1@48.100000,7.200000|B@48.200000,7.300000");
}

TEST(HereLink, StopsWithoutNameOrPosition) {
  EXPECT_EQ(HereStops("https://www.here.com/directions/drive/48.1,7.2/:48.2,7.3/Colmar/"
                      "Paris:loc-dmVyc2lvbj0x//"),
            "@48.100000,7.200000|@48.200000,7.300000|Colmar|Paris");
}

TEST(HereLink, TravelModes) {
  EXPECT_EQ(ParseHereLink("https://www.here.com/directions/walk/A:1,2/B:3,4").travelMode,
            kPedestrian);
  EXPECT_EQ(ParseHereLink("https://www.here.com/directions/drive/A:1,2/B:3,4").travelMode, kCar);
  EXPECT_EQ(ParseHereLink("https://www.here.com/directions/fly/A:1,2/B:3,4").travelMode, kAnyMode);
}

TEST(HereLink, LinksWithoutStops) {
  for (const char* link :
       {"https://www.here.com/", "https://www.here.com/directions/",
        "https://www.here.com/directions/drive", "https://www.here.com/?map=1,2"})
    EXPECT_EQ(HereStops(link), "") << link;
}

TEST(HereLinkOut, WritesNamesAndPositions) {
  EXPECT_EQ(HereLink(PointersTo(kTrip), {}, "https://www.here.com"),
            "https://www.here.com/directions/drive/Colmar:48.080780,7.355840/"
            "S%C3%A9lestat-%28gare%29:48.259660,7.454480/%C3%8Ele-1%3A2%2F3:-48.500000,-7.500000");
  LinkOptions options;
  options.travelMode = kPedestrian;
  EXPECT_EQ(HereLink(PointersTo(MakeList("", MakePoint(1, 2))), options, "https://www.here.com"),
            "https://www.here.com/directions/walk/:1.000000,2.000000");
}

TEST(HereLinkOut, IsReadBackTheSame) {
  for (const uint32_t mode : {kCar, kPedestrian}) {
    LinkOptions options;
    options.travelMode = mode;
    const MapLink link =
        ParseHereLink(HereLink(PointersTo(kTrip), options, "https://www.here.com"));
    EXPECT_EQ(Said(link.stops),
              "Colmar@48.080780,7.355840|Sélestat (gare)@48.259660,7.454480|"
              "Île 1:2/3@-48.500000,-7.500000");
    EXPECT_EQ(link.travelMode, mode);
  }
}

TEST(HereLinkOut, ControlCharactersAreBlanks) {
  EXPECT_EQ(HereLink(PointersTo(MakeList("", MakePoint(1, 2, "a\nb\tc"))), {}, "https://h"),
            "https://h/directions/drive/a%20b%20c:1.000000,2.000000");
}

// ViaMichelin.

std::string ViaMichelinStops(std::string_view link) {
  return Said(ParseViaMichelinLink(link).stops);
}

TEST(ViaMichelinLink, Hosts) {
  for (const char* host :
       {"www.viamichelin.com", "www.viamichelin.fr", "fr.viamichelin.be", "viamichelin.co.uk"})
    EXPECT_TRUE(IsViaMichelinHost(host)) << host;
  for (const char* host : {"", "viamichelin", "www.viamichelin.com.evil.org", "michelin.com",
                           "viamichelin.evil.example.org"})
    EXPECT_FALSE(IsViaMichelinHost(host)) << host;
}

TEST(ViaMichelinLink, BothPaths) {
  EXPECT_EQ(ViaMichelinStops("https://www.viamichelin.com/web/Routes?departure=48.1,7.2"
                             "&arrival=48.3,7.4&step-1=48.2,7.3&vehicle=0"),
            "@48.100000,7.200000|@48.200000,7.300000|@48.300000,7.400000");
  EXPECT_EQ(ViaMichelinStops("http://www.viamichelin.fr/web/Itineraires?departure=68000%20Colmar"
                             "&departureId=31NDN&arrival=Obernai&arrivalId=34MTE"
                             "&strStartLocid=31NDN&strDestLocid=34MTE&distance=km"),
            "68000 Colmar|Obernai");
  EXPECT_EQ(ViaMichelinStops("http://www.viamichelin.fr/web/Hotels?departure=A&arrival=B"), "");
}

TEST(ViaMichelinLink, StepsCountFromOne) {
  EXPECT_EQ(ViaMichelinStops("https://www.viamichelin.com/web/Routes?step-2=C&step-1=B&step-1Id=3"
                             "&departure=A&arrival=D&step-0=X&step-4=Y"),
            "A|B|C|D");
}

TEST(ViaMichelinLink, VehicleAndMotorway) {
  const std::string start = "https://www.viamichelin.com/web/Routes?departure=A&arrival=B";
  EXPECT_EQ(ParseViaMichelinLink(start + "&vehicle=0").travelMode, kCar);
  EXPECT_EQ(ParseViaMichelinLink(start + "&vehicle=3").travelMode, kBicycle);
  EXPECT_EQ(ParseViaMichelinLink(start + "&vehicle=9").travelMode, kAnyMode);
  EXPECT_TRUE(ParseViaMichelinLink(start + "&motorway=false").avoidsMotorways);
  EXPECT_FALSE(ParseViaMichelinLink(start + "&motorway=true").avoidsMotorways);
}

TEST(ViaMichelinLinkOut, WritesPositions) {
  EXPECT_EQ(ViaMichelinLink(PointersTo(kTrip), {}, "https://www.viamichelin.com", "eng"),
            "https://www.viamichelin.com/web/Routes?departure=48.080780,7.355840"
            "&arrival=-48.500000,-7.500000&step-1=48.259660,7.454480&vehicle=0&motorway=true"
            "&distance=km&printRoadSheet=true");
  EXPECT_TRUE(ViaMichelinLink(PointersTo(kTrip), {}, "https://v", "fra")
                  .starts_with("https://v/web/Itineraires?departure="));
}

TEST(ViaMichelinLinkOut, IsReadBackTheSame) {
  for (uint32_t mode = kCar; mode <= kMotorcycle; ++mode) {
    LinkOptions options;
    options.travelMode = mode;
    options.avoidsMotorways = true;
    const MapLink link =
        ParseViaMichelinLink(ViaMichelinLink(PointersTo(kTrip), options, "https://v", "deu"));
    EXPECT_EQ(Said(link.stops), "@48.080780,7.355840|@48.259660,7.454480|@-48.500000,-7.500000");
    EXPECT_EQ(link.travelMode, mode);
    EXPECT_TRUE(link.avoidsMotorways);
  }
  const CGpsRoute one = MakeList("", MakePoint(1, 2));
  EXPECT_EQ(ViaMichelinStops(ViaMichelinLink(PointersTo(one), {}, "https://v", "")),
            "@1.000000,2.000000");
}

// MyDrive.

std::string MyDriveStops(std::string_view link) { return Said(ParseMyDriveLink(link).stops); }

TEST(MyDriveLink, ReadsThePoints) {
  EXPECT_TRUE(IsMyDriveHost("mydrive.tomtom.com"));
  EXPECT_FALSE(IsMyDriveHost("www.tomtom.com"));
  EXPECT_EQ(
      MyDriveStops("https://mydrive.tomtom.com/en_gb/#mode=routes+viewport=48.1,7.2,10+routes="
                   "{\"points\":[\"hw~48.08078,7.35584\",\"hw~-48.5,-7.5\"],"
                   "\"travelMode\":\"CAR\"}"),
      "@48.080780,7.355840|@-48.500000,-7.500000");
  EXPECT_EQ(MyDriveStops("https://mydrive.tomtom.com/fr_fr/#mode=routes+viewport=1,2,10,0,-0+ver=3+"
                         "routes=%7B%22points%22:%5B%22hw~48.1,7.2%22,%22addr~48.2,7.3%22,"
                         "%22hw~x%22,3%5D%7D+more=1"),
            "@48.100000,7.200000|@48.200000,7.300000");
}

TEST(MyDriveLink, TravelModes) {
  const std::string start = "https://mydrive.tomtom.com/en_gb/#mode=routes+routes=";
  EXPECT_EQ(ParseMyDriveLink(start + "{\"points\":[],\"travelMode\":\"TRUCK\"}").travelMode,
            kTruckMode);
  EXPECT_EQ(ParseMyDriveLink(start + "{\"points\":[]}").travelMode, kAnyMode);
}

TEST(MyDriveLink, LinksWithoutStops) {
  for (const char* link : {"https://mydrive.tomtom.com/", "https://mydrive.tomtom.com/#+routes=",
                           "https://mydrive.tomtom.com/#+routes={", "https://m/#+routes=[1]",
                           "https://m/#+routes={\"points\":3}"})
    EXPECT_EQ(MyDriveStops(link), "") << link;
}

TEST(MyDriveLinkOut, WritesTheRoute) {
  LinkOptions options;
  options.travelMode = kTruckMode;
  options.routeType = kThrilling;
  options.hilliness = kHigh;
  options.windingness = kLow;
  EXPECT_EQ(MyDriveLink(PointersTo(kTrip), options, "https://mydrive.tomtom.com"),
            "https://mydrive.tomtom.com/en_gb/#mode=routes+viewport=48.259660,7.454480,10+routes="
            "%7B%22points%22:%5B%22hw~48.080780,7.355840%22,%22hw~48.259660,7.454480%22,"
            "%22hw~-48.500000,-7.500000%22%5D,%22travelMode%22:%22TRUCK%22,"
            "%22routeType%22:%22THRILLING%22,%22hilliness%22:%22HIGH%22,"
            "%22windingness%22:%22LOW%22%7D");
}

TEST(MyDriveLinkOut, IsReadBackTheSame) {
  for (const uint32_t mode : {kCar, kTruckMode}) {
    LinkOptions options;
    options.travelMode = mode;
    const MapLink link = ParseMyDriveLink(MyDriveLink(PointersTo(kTrip), options, "https://m"));
    EXPECT_EQ(Said(link.stops), "@48.080780,7.355840|@48.259660,7.454480|@-48.500000,-7.500000");
    EXPECT_EQ(link.travelMode, mode);
  }
}

}  // namespace
