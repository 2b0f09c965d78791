// Nothing of an account breaks out of its parameter, wherever it comes from.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "services/places/bing.h"
#include "services/places/google.h"
#include "services/places/here.h"
#include "services/places/here_v8.h"
#include "services/places/nominatim.h"
#include "services/places/photon.h"
#include "services/places/tomtom.h"
#include "services/places/viamichelin.h"
#include "services/places/waze.h"

namespace {

using testing::HasSubstr;
using testing::Not;

// A key may hold what means nothing in a query; all else would end it.
const ServiceAccess kOdd{"http://h", "K_-.~&x=1#+ ", "A&y", "fr&z=2", ""};
constexpr const char* kKey = "=K_-.~%26x%3D1%23%2B%20";

TEST(AccountsInRequests, KeysAreEscaped) {
  const CGpsCoordinate place;
  for (const std::string& url : std::vector<std::string>{
           GoogleGeocodingUrl(kOdd, "q"), GoogleReverseUrl(kOdd, place),
           GoogleSearchUrl(kOdd, "q", place, 1), BingGeocodingUrl(kOdd, "q"),
           BingReverseUrl(kOdd, place), TomTomGeocodingUrl(kOdd, "q"),
           TomTomReverseUrl(kOdd, place), HereGeocodingUrl(kOdd, "q"), HereReverseUrl(kOdd, place),
           HereSearchUrl(kOdd, "q", place), HereV8GeocodingUrl(kOdd, "q"),
           HereV8ReverseUrl(kOdd, place), HereV8SearchUrl(kOdd, "q", place, 1),
           ViaMichelinGeocodingUrl(kOdd, "q"), ViaMichelinPlaceUrl(kOdd, "1"),
           ViaMichelinReverseUrl(kOdd, place)})
    EXPECT_THAT(url, HasSubstr(kKey));
  EXPECT_THAT(HereGeocodingUrl(kOdd, "q"), HasSubstr("app_id=A%26y&app_code=K"));
}

TEST(AccountsInRequests, LanguagesAreEscaped) {
  const CGpsCoordinate place;
  for (const std::string& url : std::vector<std::string>{
           GoogleGeocodingUrl(kOdd, "q"), GoogleSearchUrl(kOdd, "q", place, 1),
           BingGeocodingUrl(kOdd, "q"), BingReverseUrl(kOdd, place), HereGeocodingUrl(kOdd, "q"),
           HereV8GeocodingUrl(kOdd, "q"), NominatimGeocodingUrl(kOdd, "q"),
           NominatimReverseUrl(kOdd, place), PhotonGeocodingUrl(kOdd, "q"),
           PhotonReverseUrl(kOdd, place), ViaMichelinGeocodingUrl(kOdd, "q")}) {
    EXPECT_THAT(url, HasSubstr("=fr%26z%3D2"));
    EXPECT_THAT(url, Not(HasSubstr("&z=2")));
  }
}

}  // namespace
