#include "services/places/google.h"

#include <fmt/format.h>

#include "net/url.h"
#include "services/request_text.h"

namespace {

std::string WithLanguageAndKey(std::string url, const ServiceAccess& access) {
  AppendParameterIfAny(url, "&language=", access.language);
  return url + "&key=" + AccountText(access.key);
}

CGpsNamedPoint ReadResult(const CJsonValue& result) {
  const char* const name = result.AsObject().Find("name") ? "name" : "formatted_address";
  const CJsonValue& location = result.Get("geometry").Get("location");
  return MakePlace(location.Get("lat").AsNumber(), location.Get("lng").AsNumber(),
                   ReplyText(result.Get(name)));
}

}  // namespace

std::string GoogleGeocodingUrl(const ServiceAccess& access, std::string_view text) {
  return WithLanguageAndKey(
      access.url + "/maps/api/geocode/json?sensor=false&address=" + UrlEscape(text, ""), access);
}

std::string GoogleReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position) {
  return WithLanguageAndKey(
      access.url + "/maps/api/geocode/json?sensor=false&latlng=" + LatLonText(position), access);
}

std::string GoogleSearchUrl(const ServiceAccess& access, std::string_view text,
                            const CGpsCoordinate& position, uint32_t radius) {
  std::string url = fmt::format("{}/maps/api/place/textsearch/json?query={}&location={}&radius={}",
                                access.url, UrlEscape(text, ""), LatLonText(position), radius);
  AppendParameter(url, "&key=", access.key);
  AppendParameterIfAny(url, "&language=", access.language);
  return url;
}

uint32_t ReadGooglePlaces(std::string_view reply, PlaceList& places) {
  return ReadPlaces(reply, places, [&places](const CJsonValue& document, bool& hasStatus) {
    const uint32_t status = GoogleStatus(document.Get("status").AsString());
    hasStatus = true;
    if (status != kServiceSuccess) return status;
    for (const auto& result : document.Get("results").AsArray())
      places.push_back(ReadResult(*result));
    return status;
  });
}
