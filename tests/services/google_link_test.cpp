#include "services/links/google_link.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/services/link_builder.h"

namespace {

std::string Stops(std::string_view link) { return Said(ParseGoogleLink(link).stops); }

TEST(GoogleLink, HostsOfAllCountries) {
  for (const char* host :
       {"maps.google.com", "maps.google.fr", "maps.google.co.uk", "maps.google.com.br",
        "www.google.com", "www.google.de", "www.google.co.jp", "google.com", "google.nl"})
    EXPECT_TRUE(IsGoogleMapsHost(host)) << host;
  for (const char* host :
       {"", "google", "google.", "maps.google.", "www.google.com.evil.org", "www.google.example",
        "evilgoogle.com", "maps.google.com.", "www.google.c0m", "news.google.com", "here.com"})
    EXPECT_FALSE(IsGoogleMapsHost(host)) << host;
}

TEST(GoogleLink, ShortLinksSayNothing) {
  EXPECT_TRUE(IsShortGoogleLink("https://maps.app.goo.gl/AbCdEf123"));
  EXPECT_TRUE(IsShortGoogleLink("https://goo.gl/maps/AbCdEf123"));
  EXPECT_FALSE(IsShortGoogleLink("https://goo.gl/AbCdEf123"));
  EXPECT_FALSE(IsShortGoogleLink("https://www.google.com/maps/dir/A/B"));
}

// Stops in the path.

TEST(GoogleLink, PositionsInThePath) {
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/48.08078,7.35584/48.46,7.48/"),
            "@48.080780,7.355840|@48.460000,7.480000");
  EXPECT_EQ(Stops("https://www.google.fr/maps/dir/-33.9,18.4/-34,-18.5"),
            "@-33.900000,18.400000|@-34.000000,-18.500000");
  // Blanks as the page writes them.
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/48.1,+7.2/48.2,%207.3/"),
            "@48.100000,7.200000|@48.200000,7.300000");
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/48.1%2C7.2/48.2%2C7.3"),
            "@48.100000,7.200000|@48.200000,7.300000");
}

TEST(GoogleLink, AddressesInThePath) {
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/Colmar/Obernai,+France/"),
            "Colmar|Obernai, France");
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/S%C3%A9lestat/Saint-Di%C3%A9-des-Vosges"),
            "Sélestat|Saint-Dié-des-Vosges");
  EXPECT_EQ(Stops("www.google.com/maps/dir/Rue+100%25/B"), "Rue 100%|B");
  EXPECT_EQ(Stops("  https://www.google.com/maps/dir/A/B \n"), "A|B");
  EXPECT_EQ(Stops("HTTPS://WWW.GOOGLE.COM/maps/dir/A/B"), "A|B");
}

TEST(GoogleLink, TheViewIsNoStop) {
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/Colmar/Obernai/@48.2,7.4,11z"),
            "Colmar|Obernai");
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/Colmar/@48.2,7.4,11z/Obernai"),
            "Colmar|Obernai");
}

TEST(GoogleLink, MyOwnPlaceIsAnEmptySegment) {
  EXPECT_EQ(Stops("https://www.google.com/maps/dir//Obernai/@48.2,7.4,11z"), "Obernai");
}

TEST(GoogleLink, TheDataBlockHoldsThePositionsOfAddresses) {
  EXPECT_EQ(
      Stops("https://www.google.com/maps/dir/Colmar/48.3,7.4/Obernai/@48.2,7.3,11z/data=!3m1!4b1"
            "!4m18!4m17!1m5!1m1!1s0x479165e8d2b6c4d3:0x40a5fb99a3b4a30!2m2!1d7.358512!2d48.079359"
            "!1m3!2m2!1d7.4!2d48.3!1m5!1m1!1s0x4796b1:0x3!2m2!1d7.482!2d48.46!3e0?hl=fr"),
      // The second stop has a position of its own, but the block tells it all the same: the next
      // one without is the third.
      "Colmar@48.079359,7.358512|@48.300000,7.400000|Obernai@48.300000,7.400000");
}

TEST(GoogleLink, StopsWithAPositionHaveNoneInTheBlock) {
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/Colmar/48.3,7.4/Obernai/data=!4m14!4m13!1m5!1m1"
                  "!1s0x1:0x2!2m2!1d7.358512!2d48.079359!1m0!1m5!1m1!1s0x3:0x4!2m2!1d7.482!2d48.46"
                  "!3e0"),
            "Colmar@48.079359,7.358512|@48.300000,7.400000|Obernai@48.460000,7.482000");
}

TEST(GoogleLink, PlacesThatAWayWasDraggedOverAreNoStops) {
  EXPECT_EQ(
      Stops("https://www.google.com/maps/dir/Colmar/Obernai/data=!4m19!4m18!1m10!1m1!1s0x1:0x2"
            "!2m2!1d7.358512!2d48.079359!3m4!1m2!1d7.5!2d48.3!3s0x5:0x6!1m5!1m1!1s0x3:0x4"
            "!2m2!1d7.482!2d48.46!3e0"),
      "Colmar@48.079359,7.358512|Obernai@48.460000,7.482000");
}

TEST(GoogleLink, UnknownTokensArePassedOver) {
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/Colmar/Obernai/am=t/data=!9z!!x!77q5!4m2!2m2!1dx"
                  "!2d48!2m2!1d7.5!2m2!1d7.482!2d48.46!2m2!1d181!2d1!5i3!1szzz"),
            "Colmar@48.460000,7.482000|Obernai");
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/Colmar/B/data=%214m2%212m2%211d7.5%212d48.5"),
            "Colmar@48.500000,7.500000|B");
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/Colmar/B/data="), "Colmar|B");
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/Colmar/B/data=!2m2!1d7.5"), "Colmar|B");
}

TEST(GoogleLink, TravelModeAndAvoidances) {
  const std::string start = "https://www.google.com/maps/dir/A/B/data=!4m2!4m1";
  EXPECT_EQ(ParseGoogleLink(start + "!3e0").travelMode, kCar);
  EXPECT_EQ(ParseGoogleLink(start + "!3e1").travelMode, kBicycle);
  EXPECT_EQ(ParseGoogleLink(start + "!3e2").travelMode, kPedestrian);
  EXPECT_EQ(ParseGoogleLink(start + "!3e3").travelMode, kAnyMode);
  const MapLink link = ParseGoogleLink(start + "!1m0!1m0!2m2!1b1!2b1!3e0?hl=de");
  EXPECT_TRUE(link.avoidsMotorways);
  EXPECT_TRUE(link.avoidsTolls);
  EXPECT_EQ(link.language, "de");
  EXPECT_FALSE(ParseGoogleLink(start + "!3e0").avoidsTolls);
}

TEST(GoogleLink, Places) {
  EXPECT_EQ(Stops("https://www.google.com/maps/place/Colmar,+France/@48.07,7.28,12z/data=!3m1!4b1"
                  "!4m6!3m5!1s0x479165:0x40a5!8m2!3d48.0793589!4d7.358512!16zL20v"),
            "Colmar, France@48.079359,7.358512");
  EXPECT_EQ(Stops("https://www.google.com/maps/place/Colmar"), "Colmar");
  EXPECT_EQ(Stops("https://www.google.com/maps/place/48.1,7.2"), "@48.100000,7.200000");
  EXPECT_EQ(Stops("https://www.google.com/maps/place/48%C2%B004'39.0%22N+7%C2%B021'21.0%22E/"
                  "@48.07,7.35,17z/data=!3m1!4b1!4m4!3m3!8m2!3d48.0775!4d7.355833"),
            "48°04'39.0\"N 7°21'21.0\"E@48.077500,7.355833");
  // In directions, that is the place that the map shows beside them.
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/A/B/data=!8m2!3d48.0775!4d7.355833"), "A|B");
}

// The form for programs.

TEST(GoogleLink, OriginWaypointsAndDestination) {
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/?api=1&origin=Colmar&destination=48.46,7.48"
                  "&waypoints=48.1,7.2%7CS%C3%A9lestat&travelmode=bicycling"),
            "Colmar|@48.100000,7.200000|Sélestat|@48.460000,7.480000");
  EXPECT_EQ(Stops("https://www.google.com/maps/dir/?api=1&destination=Colmar"), "Colmar");
  EXPECT_EQ(Stops("https://www.google.com/maps/dir?api=1&origin=A&destination=B"), "A|B");
  EXPECT_EQ(Stops("https://www.google.com/maps/search/?api=1&query=48.1%2C7.2"),
            "@48.100000,7.200000");
  const MapLink link = ParseGoogleLink(
      "https://www.google.com/maps/dir/?api=1&origin=A&destination=B&travelmode=walking"
      "&avoid=tolls,ferries");
  EXPECT_EQ(link.travelMode, kPedestrian);
  EXPECT_TRUE(link.avoidsTolls);
  EXPECT_FALSE(link.avoidsMotorways);
}

// The classic form.

TEST(GoogleLink, SaddrAndDaddr) {
  EXPECT_EQ(Stops("http://maps.google.com/maps?saddr=Colmar&daddr=Obernai"), "Colmar|Obernai");
  EXPECT_EQ(Stops("http://maps.google.fr/maps?f=d&hl=fr&saddr=Colmar&daddr=A+to:B+to:C+to:D"),
            "Colmar|A|B|C|D");
  EXPECT_EQ(Stops("http://maps.google.com/?saddr=48.1,7.2&daddr=48.2,7.3+to:48.3,7.4"),
            "@48.100000,7.200000|@48.200000,7.300000|@48.300000,7.400000");
  EXPECT_EQ(Stops("http://maps.google.com/maps?daddr=A+to:B"), "A|B");
}

TEST(GoogleLink, TheSeparatorMayBeEscaped) {
  for (const char* separator : {"+to:", "+to%3A", "%20to:", "%20to%3a", " to:"}) {
    EXPECT_EQ(Stops("http://maps.google.com/maps?saddr=Z&daddr=A" + std::string(separator) + "B" +
                    separator + "C"),
              "Z|A|B|C")
        << separator;
  }
  EXPECT_EQ(Stops("http://maps.google.com/maps?saddr=Z&daddr=Porto+to%3AGo+to+B"),
            "Z|Porto|Go to B");
}

TEST(GoogleLink, AStopMayEndInAPosition) {
  EXPECT_EQ(Stops("http://maps.google.com/maps?saddr=Home+@48.1,7.2&daddr=Work@48.2,7.3+to:C@home"),
            "Home@48.100000,7.200000|Work@48.200000,7.300000|C@home");
}

TEST(GoogleLink, GeocodeHoldsMillionths) {
  EXPECT_EQ(Stops("http://maps.google.com/maps?saddr=A&daddr=B+to:C"
                  "&geocode=48100000,7200000,48200000,-7300000,-48300000,7400001"),
            "A@48.100000,7.200000|B@48.200000,-7.300000|C@-48.300000,7.400001");
  // One that is missing, and one that the stop itself tells better.
  EXPECT_EQ(Stops("http://maps.google.com/maps?saddr=A&daddr=1,2+to:C"
                  "&geocode=,,48200000,7300000,48300000,7400000"),
            "A|@1.000000,2.000000|C@48.300000,7.400000");
  // As newer pages write it.
  EXPECT_EQ(Stops("http://maps.google.com/maps?saddr=A&daddr=B"
                  "&geocode=FYuXyQIdPfBvACk,FV8u3QIdJoBwACm;FdN1"),
            "A|B");
}

TEST(GoogleLink, OnePlaceOfTheClassicForm) {
  EXPECT_EQ(Stops("http://maps.google.com/maps?q=48.1,7.2"), "@48.100000,7.200000");
  EXPECT_EQ(Stops("http://maps.google.com/?q=loc:48.1,7.2"), "@48.100000,7.200000");
  EXPECT_EQ(Stops("https://maps.google.com/maps?q=Colmar+@48.1,7.2"), "Colmar@48.100000,7.200000");
}

TEST(GoogleLink, LinksWithoutStops) {
  for (const char* link : {"https://www.google.com/", "https://www.google.com/maps/@48.1,7.2,12z",
                           "https://www.google.com/maps/dir/", "http://maps.google.com/maps?hl=fr",
                           "https://www.google.com/maps/dir///", "", "://", "https://", "?", "#"})
    EXPECT_EQ(Stops(link), "") << link;
}

// Saved maps.

TEST(GoogleLink, SavedMapsAreMarked) {
  EXPECT_TRUE(ParseGoogleLink("http://maps.google.com/maps/ms?msid=2134.0004a&msa=0").isSavedMap);
  EXPECT_FALSE(ParseGoogleLink("http://maps.google.com/maps?saddr=A&daddr=B").isSavedMap);
}

TEST(GoogleLink, SavedMapsHoldMarkers) {
  const std::vector<LinkStop> stops = ParseSavedMap(
      "<script>window.loadVPage({title:\"My map\",ms_map:{name:\"x\",kmlOverlays:{markers:["
      "{id:\"A\",latlng:{lat:48.1,lng:7.2},name:\"Colmar\",description:\"<b>old</b>\"},"
      "{id:\"B\",name:\"nowhere\"},"
      "{id:\"C\",latlng:{lat:-48.25,lng:-7.5},name:\"Far\",description:\"\"}"
      "],polylines:[]}}});</script>");
  EXPECT_EQ(Said(stops), "Colmar@48.100000,7.200000|Far@-48.250000,-7.500000");
  ASSERT_EQ(stops.size(), 2u);
  EXPECT_EQ(stops[0].comment, "<b>old</b>");
}

TEST(GoogleLink, SavedMapsThatCannotBeRead) {
  const std::string script =
      "loadVPage({ms_map:{kmlOverlays:{markers:[{latlng:{lat:48.1,lng:7.2},name:\"A\"}]}}})";
  EXPECT_EQ(Said(ParseSavedMap(script)), "A@48.100000,7.200000");
  for (size_t length = 0; length < script.size(); ++length)
    EXPECT_LE(ParseSavedMap(script.substr(0, length)).size(), 1u);
  for (const char* other : {"", "loadVPage(", "loadVPage(1)", "loadVPage({ms_map:3})",
                            "loadVPage({ms_map:{kmlOverlays:{markers:{}}}})",
                            "loadVPage({ms_map:{kmlOverlays:{markers:[1,[],{latlng:[1,2]}]}}})"})
    EXPECT_TRUE(ParseSavedMap(other).empty()) << other;
}

// Links out.

constexpr const char* kSite = "https://www.google.com";

TEST(GoogleLinkOut, CountsItsTokens) {
  const CGpsRoute route = MakeList("", MakePoint(48.08078, 7.35584), MakePoint(-48.5, -7.5));
  // The outer group holds the inner one and its 3 tokens: two stops and the mode.
  EXPECT_EQ(GoogleLink(PointersTo(route), {}, kSite, ""),
            "https://www.google.com/maps/dir/48.080780,7.355840/-48.500000,-7.500000/"
            "data=!4m4!4m3!1m0!1m0!3e0");
  LinkOptions options;
  options.avoidsMotorways = true;
  options.travelMode = kBicycle;
  EXPECT_EQ(GoogleLink(PointersTo(route), options, kSite, "fr"),
            "https://www.google.com/maps/dir/48.080780,7.355840/-48.500000,-7.500000/"
            "data=!4m6!4m5!1m0!1m0!2m1!1b1!3e1?hl=fr");
  options.avoidsTolls = true;
  options.wantsAlternatives = true;
  options.travelMode = kPedestrian;
  EXPECT_EQ(GoogleLink(PointersTo(route), options, kSite, ""),
            "https://www.google.com/maps/dir/48.080780,7.355840/-48.500000,-7.500000/am=t/"
            "data=!4m7!4m6!1m0!1m0!2m2!1b1!2b1!3e2");
}

TEST(GoogleLinkOut, IsReadBackTheSame) {
  const CGpsRoute route = MakeList("", MakePoint(48.0807801, 7.3558444, "Colmar"),
                                   MakePoint(-0.000001, 179.9999999), MakePoint(89.9, -180));
  for (const uint32_t mode : {kCar, kPedestrian, kBicycle}) {
    LinkOptions options;
    options.travelMode = mode;
    options.avoidsTolls = true;
    const MapLink link = ParseGoogleLink(GoogleLink(PointersTo(route), options, kSite, "nl"));
    EXPECT_EQ(Said(link.stops), "@48.080780,7.355844|@-0.000001,180.000000|@89.900000,-180.000000");
    EXPECT_EQ(link.travelMode, mode);
    EXPECT_TRUE(link.avoidsTolls);
    EXPECT_FALSE(link.avoidsMotorways);
    EXPECT_EQ(link.language, "nl");
  }
}

}  // namespace
