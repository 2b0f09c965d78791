#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "base/text.h"
#include "services/places/bing.h"
#include "services/places/elevation.h"
#include "services/places/geoplateforme.h"
#include "services/places/google.h"
#include "services/places/here.h"
#include "services/places/here_v8.h"
#include "services/places/nominatim.h"
#include "services/places/panorama.h"
#include "services/places/photon.h"
#include "services/places/tomtom.h"
#include "services/places/viamichelin.h"
#include "services/places/waze.h"
#include "tests/services/places/replies.h"

namespace {

// Prints the list when an expectation fails.
std::string Shown(const PlaceList& places) {
  std::string shown;
  for (const CGpsNamedPoint& place : places)
    shown += std::to_string(place.latitude) + " " + std::to_string(place.longitude) + " " +
             place.name + "|" + place.comment + ";";
  return shown;
}

class PlaceReply : public testing::TestWithParam<SampleReply> {};

INSTANTIATE_TEST_SUITE_P(Families, PlaceReply, testing::ValuesIn(kSampleReplies),
                         [](const auto& row) {
                           std::string name(row.param.family);
                           std::erase(name, ' ');
                           return name;
                         });

TEST_P(PlaceReply, IsRead) {
  PlaceList places;
  ASSERT_EQ(GetParam().read(GetParam().text, places), 0u);
  ASSERT_EQ(places.size(), GetParam().places);
  EXPECT_EQ(places[0].name, GetParam().name);
  EXPECT_EQ(places[0].comment, GetParam().comment);
  EXPECT_EQ(places[0].latitude, 48.08);
  EXPECT_EQ(places[0].longitude, 7.36);
  EXPECT_EQ(places[0].tolerance, 0.0001);
}

TEST_P(PlaceReply, CutAnywhereIsAFailureOrShorter) {
  const std::string whole(GetParam().text);
  for (size_t length = 0; length < whole.size(); ++length) {
    PlaceList places(1);
    const uint32_t status = GetParam().read(whole.substr(0, length), places);
    if (status != 0) {
      EXPECT_TRUE(places.empty()) << length;
      EXPECT_TRUE(status == 1 || status == 4 || status == 6) << length << ": " << status;
    } else {
      EXPECT_LE(places.size(), GetParam().places) << length;
    }
  }
}

TEST_P(PlaceReply, SurvivesAByteOfAnyValueAnywhere) {
  const std::string whole(GetParam().text);
  for (size_t i = 0; i < whole.size(); ++i) {
    for (const char byte : {'\0', '"', '{', '}', '[', ']', ',', ':', '\\', '\xFF', '0'}) {
      std::string damaged = whole;
      damaged[i] = byte;
      PlaceList places;
      const uint32_t status = GetParam().read(damaged, places);
      EXPECT_EQ(status == 0, !places.empty());
      for (const CGpsNamedPoint& place : places) {
        EXPECT_TRUE(IsValidUtf8(place.name + place.comment));
        EXPECT_EQ((place.name + place.comment).find('\0'), std::string::npos);
        EXPECT_TRUE(std::isfinite(place.latitude) && std::isfinite(place.longitude));
      }
    }
  }
}

TEST_P(PlaceReply, OfOtherKindsIsAFailure) {
  for (const char* const reply :
       {"", " ", "null", "{}", "[]", "{\"results\":5}", "<html><body>503</body></html>", "[[[[",
        "HTTPResponseLoaded({})", "HTTPResponseLoaded(", "{\"status\":{}}", "[5]", "[null]"}) {
    PlaceList places(2);
    const uint32_t status = GetParam().read(reply, places);
    EXPECT_TRUE(status == 1 || status == 4 || status == 6) << reply << " " << status;
    EXPECT_TRUE(places.empty()) << reply;
  }
}

TEST_P(PlaceReply, TenThousandLevelsDeepIsAFailure) {
  for (const char* const open : {"[", "{\"results\":", "{\"Response\":["}) {
    std::string deep;
    for (int i = 0; i < 10000; ++i) deep += open;
    PlaceList places;
    EXPECT_NE(GetParam().read(deep, places), 0u);
    EXPECT_NE(GetParam().read("HTTPResponseLoaded(" + deep + ")", places), 0u);
  }
}

TEST_P(PlaceReply, OfTooManyValuesIsAFailureBeforeItTakesMemory) {
  std::string many = "{\"results\":[";
  while (many.size() < 8'000'000) many += "0,0,0,0,0,0,0,0,";
  many += "0]}";
  PlaceList places;
  EXPECT_EQ(GetParam().read(many, places), 4u);
}

TEST(GoogleReply, GivesTheStatusOfTheService) {
  const struct {
    const char* word;
    uint32_t status;
  } kRows[] = {{"ZERO_RESULTS", 1},
               {"OVER_QUERY_LIMIT", 2},
               {"REQUEST_DENIED", 3},
               {"INVALID_REQUEST", 4},
               {"NOT_FOUND", 5},
               {"MAX_WAYPOINTS_EXCEEDED", 7},
               {"UNKNOWN_ERROR", 6},
               {"ok", 6},
               {"", 6}};
  for (const auto& row : kRows) {
    PlaceList places(1);
    const std::string reply =
        std::string(
            "{\"results\":[{\"name\":\"X\",\"geometry\":{\"location\":{\"lat\":1,\"lng\":2}"
            "}}],\"status\":\"") +
        row.word + "\"}";
    EXPECT_EQ(ReadGooglePlaces(reply, places), row.status) << row.word;
    EXPECT_TRUE(places.empty());
  }
}

TEST(GoogleReply, TakesTheNameBeforeTheAddress) {
  PlaceList places;
  ASSERT_EQ(ReadGooglePlaces(kSampleReplies[0].text, places), 0u);
  EXPECT_EQ(Shown(places), "48.080000 7.360000 Colmar|;48.100000 7.400000 Le Puits|;");
}

TEST(GoogleReply, IsAFailureOfItsOwnWhenItBreaksOffBehindTheStatus) {
  PlaceList places;
  EXPECT_EQ(ReadGooglePlaces(R"({"status":"OK"})", places), 6u);
  EXPECT_EQ(ReadGooglePlaces(R"({"status":"OK","results":[{"name":"X"}]})", places), 6u);
  EXPECT_EQ(ReadGooglePlaces(R"({"results":[]})", places), 4u);
  EXPECT_EQ(ReadGooglePlaces(R"({"status":7,"results":[]})", places), 4u);
}

TEST(GoogleReply, WithoutResultsIsNothingFound) {
  PlaceList places;
  EXPECT_EQ(ReadGooglePlaces(R"({"status":"OK","results":[]})", places), 1u);
}

TEST(BingReply, MustHaveTheCodeOfSuccess) {
  PlaceList places;
  EXPECT_EQ(ReadBingPlaces(R"({"statusCode":401,"resourceSets":[]})", places), 6u);
  EXPECT_EQ(ReadBingPlaces(R"({"statusCode":"200"})", places), 4u);
  EXPECT_EQ(ReadBingPlaces(R"({"statusCode":200})", places), 6u);
  EXPECT_EQ(ReadBingPlaces(R"({"statusCode":200,"resourceSets":[{"resources":[]}]})", places), 1u);
  EXPECT_EQ(ReadBingPlaces(R"({"statusCode":200,"resourceSets":[]})", places), 1u);
}

TEST(TomTomReply, WithAPositionOfOneNumberIsNothingFound) {
  PlaceList places;
  const char* const reply =
      R"({"results":[{"address":{"freeformAddress":"Colmar"},"position":"48.08"}]})";
  EXPECT_EQ(ReadTomTomPlaces(reply, places), 1u);
  EXPECT_TRUE(places.empty());
}

TEST(TomTomReply, MayHaveThePositionAsText) {
  PlaceList places;
  const char* const reply =
      R"({"results":[{"address":{"freeformAddress":"Colmar"},"position":"48.08,7.36"}]})";
  ASSERT_EQ(ReadTomTomPlaces(reply, places), 0u);
  EXPECT_EQ(Shown(places), "48.080000 7.360000 Colmar|;");
}

TEST(TomTomReply, WithoutResultsIsNothingFound) {
  PlaceList places;
  EXPECT_EQ(ReadTomTomPlaces(R"({"results":[]})", places), 1u);
  EXPECT_EQ(ReadTomTomAddresses(R"({"addresses":[]})", places), 1u);
  EXPECT_EQ(ReadTomTomPlaces(R"({"error":"Forbidden"})", places), 4u);
}

TEST(HereReply, WithoutAViewIsNothingFound) {
  PlaceList places;
  EXPECT_EQ(ReadHerePlaces(R"({"Response":{"MetaInfo":{},"View":[]}})", places), 1u);
  EXPECT_EQ(ReadHerePlaces(R"({"type":"PermissionError","subtype":"InvalidCredentials"})", places),
            4u);
  EXPECT_EQ(ReadHereSearch(R"({"results":{"items":[]}})", places), 1u);
}

TEST(ViaMichelinReply, MustBeTheCallThatWasAskedFor) {
  PlaceList places;
  EXPECT_EQ(ReadViaMichelinPlaces(R"({"locationList":[]})", places), 4u);
  EXPECT_EQ(ReadViaMichelinPlaces("HTTPResponse", places), 4u);
  EXPECT_EQ(ReadViaMichelinPlaces(R"(HTTPResponseLoaded{"locationList":[]})", places), 4u);
  EXPECT_EQ(ReadViaMichelinPlaces(R"(HTTPResponseLoaded({"locationList":[]}))", places), 1u);
}

TEST(ViaMichelinReply, GivesTheErrorOfTheService) {
  PlaceList places;
  EXPECT_EQ(ReadViaMichelinPlaces(
                R"(HTTPResponseLoaded({"error":{"errorCode":207},"locationList":[]}))", places),
            307u);
  EXPECT_EQ(ReadViaMichelinPlaces(R"(HTTPResponseLoaded({"error":{}}))", places), 4u);
}

TEST(ViaMichelinReply, JoinsWhatIsThereAndKeepsTheIds) {
  PlaceList places;
  std::vector<std::string> ids;
  ASSERT_EQ(
      ReadViaMichelinPlaces(
          R"(HTTPResponseLoaded({"locationList":[)"
          R"({"formattedCityLine":"Colmar","countryLabel":"France","coords":{"lon":1,"lat":2}},)"
          R"({"id":42,"area":"Alsace","coords":{"lon":3,"lat":4}}]}))",
          places, &ids),
      0u);
  EXPECT_EQ(Shown(places), "2.000000 1.000000 Colmar, France|;4.000000 3.000000 Alsace|;");
  EXPECT_EQ(ids, (std::vector<std::string>{"", "42"}));
}

TEST(WazeReply, LeavesShortPartsOfAStreetOut) {
  CGpsCoordinate asked;
  asked.latitude = 48.5;
  asked.longitude = 7.5;
  PlaceList places;
  ASSERT_EQ(ReadWazeStreet(R"([{"street":"rue X","city":"","country":"France"}])", asked, places),
            0u);
  EXPECT_EQ(Shown(places), "48.500000 7.500000 rue X, France|;");
  ASSERT_EQ(ReadWazeStreet(R"([{"street":"A","city":"Metz"},{"street":"other"}])", asked, places),
            0u);
  EXPECT_EQ(Shown(places), "48.500000 7.500000 Metz|;");
  EXPECT_EQ(ReadWazeStreet(R"([{"street":"-","city":"?"}])", asked, places), 1u);
  EXPECT_EQ(ReadWazeStreet("[]", asked, places), 1u);
  EXPECT_EQ(ReadWazeStreet(R"({"error":"x"})", asked, places), 4u);
}

TEST(NominatimReply, OfAReverseLookupIsOnePlaceOrAnError) {
  PlaceList places;
  ASSERT_EQ(ReadNominatimPlace(R"({"lat":"48.08","lon":"7.36","display_name":"Colmar"})", places),
            0u);
  EXPECT_EQ(Shown(places), "48.080000 7.360000 Colmar|;");
  EXPECT_EQ(ReadNominatimPlace(R"({"error":"Unable to geocode"})", places), 1u);
  EXPECT_EQ(ReadNominatimPlace(R"({"error":{"code":400,"message":"bad"}})", places), 4u);
  EXPECT_EQ(ReadNominatimPlaces(R"({"error":{"code":400}})", places), 4u);
  EXPECT_EQ(ReadNominatimPlaces("[]", places), 1u);
}

TEST(HereV8Reply, GivesTheStatusOfTheService) {
  PlaceList places;
  EXPECT_EQ(ReadHereV8Places(R"({"items":[]})", places), 1u);
  EXPECT_EQ(ReadHereV8Places(R"({"status":400,"title":"Illegal input"})", places), 4u);
  EXPECT_EQ(ReadHereV8Places(R"({"status":429,"title":"Too many"})", places), 2u);
  EXPECT_EQ(ReadHereV8Places(R"({"status":503,"title":"Down"})", places), 6u);
  EXPECT_EQ(ReadHereV8Places(R"({"error":"Unauthorized","error_description":"x"})", places), 3u);
}

TEST(PhotonReply, LeavesMissingPartsOut) {
  PlaceList places;
  ASSERT_EQ(ReadPhotonPlaces(R"({"features":[{"geometry":{"coordinates":[7,48]},"properties":)"
                             R"({"street":"Rue X","city":"Colmar","state":"Grand Est"}}]})",
                             places),
            0u);
  EXPECT_EQ(Shown(places), "48.000000 7.000000 Rue X, Colmar, Grand Est|;");
  EXPECT_EQ(ReadPhotonPlaces(R"({"features":[]})", places), 1u);
}

TEST(PanoramaReply, WithoutALocationIsNothingFound) {
  PlaceList places(1);
  EXPECT_EQ(ReadPanorama("{\"Data\":{}}", places), 1u);
  EXPECT_TRUE(places.empty());
  EXPECT_EQ(ReadPanorama(R"({"Location":{"lat":48.08,"lng":7.36}})", places), 4u);
}

TEST(ElevationReply, GivesAPointWithItsAltitude) {
  CGpsPoint point;
  ASSERT_EQ(ReadElevation(R"({"results":[{"elevation":189.5,"location":{"lat":48.08,"lng":7.36},)"
                          R"("resolution":9.5}],"status":"OK"})",
                          point),
            0u);
  EXPECT_EQ(point.latitude, 48.08);
  EXPECT_EQ(point.longitude, 7.36);
  EXPECT_EQ(point.altitude, 189.5);
  EXPECT_EQ(point.tolerance, 0.0001);
}

TEST(ElevationReply, LeavesThePointAloneWhenItFails) {
  CGpsPoint point;
  point.altitude = 7;
  EXPECT_EQ(ReadElevation(R"({"status":"REQUEST_DENIED","results":[]})", point), 3u);
  EXPECT_EQ(ReadElevation(R"({"status":"OK","results":[]})", point), 1u);
  EXPECT_EQ(ReadElevation(R"({"status":"OK","results":[{"location":{"lat":1,"lng":2}}]})", point),
            6u);
  EXPECT_EQ(ReadElevation("", point), 4u);
  EXPECT_EQ(point.altitude, 7);
}

TEST(ElevationReply, OfOtherKindsIsAFailure) {
  CGpsPoint point;
  for (const char* const reply :
       {"null", "[]", "{}", "[null]", "<html><body>503</body></html>", R"({"status":5})"})
    EXPECT_EQ(ReadElevation(reply, point), 4u) << reply;
  for (const char* const results : {"null", "5", "{}", "[5]", R"([{"elevation":"189"}])"}) {
    const std::string reply = std::string(R"({"status":"OK","results":)") + results + "}";
    EXPECT_EQ(ReadElevation(reply, point), 6u) << reply;
  }
  for (const char bracket : {'[', '{', '"', '}', '<'})
    EXPECT_EQ(ReadElevation(std::string(50'000, bracket), point), 4u) << bracket;
  EXPECT_EQ(ReadElevation(std::string(8'000'000, '['), point), 4u);
}

TEST(TextForModel, IsValidWhateverTheReplyHolds) {
  EXPECT_EQ(TextForModel("café"), "café");
  // What "\u00e9" in a reply has become.
  EXPECT_EQ(TextForModel("caf\xE9"), "café");
  EXPECT_EQ(TextForModel(std::string_view("a\0b", 3)), "a\uFFFDb");
  EXPECT_EQ(TextForModel("\xED\xA0\x80\xFF"), "\xC3\xAD\xC2\xA0\xC2\x80\xC3\xBF");
}

TEST(PanoramaReply, WithALocationThatIsNoneIsNothingFound) {
  PlaceList places;
  EXPECT_EQ(ReadPanorama("{\"Location\":null}", places), 1u);
  EXPECT_EQ(ReadPanorama("{\"Location\":{}}", places), 4u);
}

TEST(TomTomReply, TakesTheFirstTwoNumbersOfAPosition) {
  PlaceList places;
  const char* const reply =
      R"({"addresses":[{"address":{"freeformAddress":"Colmar"},"position":"48.08,7.36,190"}]})";
  ASSERT_EQ(ReadTomTomAddresses(reply, places), 0u);
  EXPECT_EQ(Shown(places), "48.080000 7.360000 Colmar|;");
}

}  // namespace
