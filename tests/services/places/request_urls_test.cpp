#include <string>

#include <gtest/gtest.h>

#include "services/places/bing.h"
#include "services/places/geoplateforme.h"
#include "services/places/google.h"
#include "services/places/here.h"
#include "services/places/here_v8.h"
#include "services/places/nominatim.h"
#include "services/places/photon.h"
#include "services/places/tomtom.h"
#include "services/places/viamichelin.h"
#include "services/places/waze.h"

namespace {

// An account without a language, and one with.
const ServiceAccess kMute{"http://h", "KEY", "APP", "", ""};
const ServiceAccess kFrench{"http://h", "KEY", "APP", "fr", ""};

// "rue des Clefs, Étain" with a "+" and a line feed, which is escaped without its leading zero.
constexpr const char* kText = "rue des Clefs,\nÉtain+1";
#define ESCAPED "rue%20des%20Clefs%2C%A%C3%89tain%2B1"

CGpsCoordinate Colmar() {
  CGpsCoordinate position;
  position.latitude = 48.0777;
  position.longitude = -7.35812345;
  return position;
}

TEST(GoogleRequest, HasItsParametersInOrder) {
  EXPECT_EQ(GoogleGeocodingUrl(kMute, kText),
            "http://h/maps/api/geocode/json?sensor=false&address=" ESCAPED "&key=KEY");
  EXPECT_EQ(GoogleGeocodingUrl(kFrench, kText),
            "http://h/maps/api/geocode/json?sensor=false&address=" ESCAPED "&language=fr&key=KEY");
  EXPECT_EQ(
      GoogleReverseUrl(kFrench, Colmar()),
      "http://h/maps/api/geocode/json?sensor=false&latlng=48.077700,-7.358123&language=fr&key=KEY");
  EXPECT_EQ(GoogleReverseUrl(kMute, Colmar()),
            "http://h/maps/api/geocode/json?sensor=false&latlng=48.077700,-7.358123&key=KEY");
  EXPECT_EQ(GoogleSearchUrl(kFrench, "pizza", Colmar(), 30000),
            "http://h/maps/api/place/textsearch/json?query=pizza&location=48.077700,-7.358123"
            "&radius=30000&key=KEY&language=fr");
  EXPECT_EQ(GoogleSearchUrl(kMute, "pizza", Colmar(), 0),
            "http://h/maps/api/place/textsearch/json?query=pizza&location=48.077700,-7.358123"
            "&radius=0&key=KEY");
}

TEST(BingRequest, HasItsParametersInOrder) {
  EXPECT_EQ(BingGeocodingUrl(kMute, kText),
            "http://h/REST/v1/Locations?o=json&query=" ESCAPED "&key=KEY");
  EXPECT_EQ(BingGeocodingUrl(kFrench, kText),
            "http://h/REST/v1/Locations?o=json&query=" ESCAPED "&key=KEY&c=fr");
  EXPECT_EQ(BingReverseUrl(kMute, Colmar()),
            "http://h/REST/v1/Locations/48.077700,-7.358123?o=json&key=KEY");
  EXPECT_EQ(BingReverseUrl(kFrench, Colmar()),
            "http://h/REST/v1/Locations/48.077700,-7.358123?o=json&key=KEY&c=fr");
}

TEST(TomTomRequest, HasTheQueryInItsPath) {
  EXPECT_EQ(TomTomGeocodingUrl(kFrench, kText),
            "http://h/search/2/geocode/" ESCAPED ".json?key=KEY");
  EXPECT_EQ(TomTomGeocodingUrl(kFrench, "1/2 rue?"),
            "http://h/search/2/geocode/1%2F2%20rue%3F.json?key=KEY");
  EXPECT_EQ(TomTomReverseUrl(kFrench, Colmar()),
            "http://h/search/2/reverseGeocode/48.077700,-7.358123.json?key=KEY");
}

TEST(HereRequest, HasItsParametersInOrder) {
  EXPECT_EQ(HereGeocodingUrl(kMute, kText),
            "http://h/6.2/geocode.json?gen=4&searchtext=" ESCAPED "&app_id=APP&app_code=KEY");
  EXPECT_EQ(HereGeocodingUrl(kFrench, kText), "http://h/6.2/geocode.json?gen=4&searchtext=" ESCAPED
                                              "&app_id=APP&app_code=KEY&language=fr");
  EXPECT_EQ(HereReverseUrl(kFrench, Colmar()),
            "http://h/6.2/reversegeocode.json?gen=4&mode=retrieveAddresses"
            "&prox=48.077700,-7.358123&app_id=APP&app_code=KEY&language=fr");
  EXPECT_EQ(HereSearchUrl(kMute, "pizza", Colmar()),
            "http://h/places/v1/discover/search?refinements=false&Accept=application/json&q=pizza"
            "&app_id=APP&app_code=KEY&at=48.077700,-7.358123");
  EXPECT_EQ(HereSearchUrl(kFrench, "pizza", Colmar()),
            "http://h/places/v1/discover/search?refinements=false&Accept=application/json&q=pizza"
            "&app_id=APP&app_code=KEY&language=fr&at=48.077700,-7.358123");
}

TEST(ViaMichelinRequest, HasItsParametersInOrder) {
  EXPECT_EQ(ViaMichelinGeocodingUrl(kMute, kText),
            "http://h/apir/1/geocode1f.json?charset=UTF-8&ie=UTF-8&callback=HTTPResponseLoaded"
            "&lg=&authkey=KEY&query=" ESCAPED);
  EXPECT_EQ(ViaMichelinPlaceUrl(kFrench, "31NDJ=/"),
            "http://h/apir/1/location.json/31NDJ%3D%2F?charset=UTF-8&ie=UTF-8"
            "&callback=HTTPResponseLoaded&lg=fr&authkey=KEY");
  EXPECT_EQ(ViaMichelinReverseUrl(kFrench, Colmar()),
            "http://h/apir/1/rgeocode.json?charset=UTF-8&ie=UTF-8&callback=HTTPResponseLoaded"
            "&authkey=KEY&center=-7.358123:48.077700");
}

TEST(WazeRequest, HasItsParametersInOrder) {
  EXPECT_EQ(WazeGeocodingUrl(kMute, kText), "http://h/mozi?lon=0&lat=0&q=" ESCAPED);
  EXPECT_EQ(WazeGeocodingUrl(kFrench, kText), "http://h/mozi?lon=0&lat=0&q=" ESCAPED "&lang=fr");
  EXPECT_EQ(WazeReverseUrl(kFrench, Colmar()),
            "http://h/app/getStreet?radius=0.0005&lat=48.077700&lon=-7.358123");
}

TEST(NominatimRequest, AsksForJson) {
  EXPECT_EQ(NominatimGeocodingUrl(kMute, kText),
            "http://h/search?q=" ESCAPED "&format=jsonv2&limit=10");
  EXPECT_EQ(NominatimReverseUrl(kFrench, Colmar()),
            "http://h/reverse?lat=48.077700&lon=-7.358123&format=jsonv2&accept-language=fr");
}

TEST(PhotonRequest, AsksForTenPlaces) {
  EXPECT_EQ(PhotonGeocodingUrl(kFrench, kText), "http://h/api/?q=" ESCAPED "&limit=10&lang=fr");
  EXPECT_EQ(PhotonReverseUrl(kMute, Colmar()), "http://h/reverse?lon=-7.358123&lat=48.077700");
}

TEST(HereV8Request, HasOneKey) {
  EXPECT_EQ(HereV8GeocodingUrl(kFrench, kText),
            "http://h/v1/geocode?q=" ESCAPED "&limit=10&lang=fr&apiKey=KEY");
  EXPECT_EQ(HereV8ReverseUrl(kMute, Colmar()),
            "http://h/v1/revgeocode?at=48.077700,-7.358123&apiKey=KEY");
  EXPECT_EQ(
      HereV8SearchUrl(kMute, "pizza", Colmar(), 2000),
      "http://h/v1/discover?q=pizza&in=circle:48.077700,-7.358123%3Br=2000&limit=20&apiKey=KEY");
}

TEST(GeoplateformeRequest, NeedsNoKey) {
  EXPECT_EQ(GeoplateformeGeocodingUrl(kFrench, kText),
            "http://h/geocodage/search?q=" ESCAPED "&limit=10");
  EXPECT_EQ(GeoplateformeReverseUrl(kFrench, Colmar()),
            "http://h/geocodage/reverse?lon=-7.358123&lat=48.077700&limit=1");
}

}  // namespace
