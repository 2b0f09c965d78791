#include "services/places/bing.h"

#include "net/url.h"
#include "services/request_text.h"

namespace {

constexpr double kHttpOk = 200;

}  // namespace

std::string BingGeocodingUrl(const ServiceAccess& access, std::string_view text) {
  std::string url = access.url + "/REST/v1/Locations?o=json&query=" + UrlEscape(text, "");
  AppendParameter(url, "&key=", access.key);
  AppendParameterIfAny(url, "&c=", access.language);
  return url;
}

std::string BingReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position) {
  std::string url = access.url + "/REST/v1/Locations/" + LatLonText(position) + "?o=json";
  AppendParameter(url, "&key=", access.key);
  AppendParameterIfAny(url, "&c=", access.language);
  return url;
}

uint32_t ReadBingPlaces(std::string_view reply, PlaceList& places) {
  return ReadPlaces(reply, places, [&places](const CJsonValue& document, bool& hasStatus) {
    const double code = document.Get("statusCode").AsNumber();
    hasStatus = true;
    if (code != kHttpOk) return kServiceOther;
    const CJsonValue* const set = FirstOf(document.Get("resourceSets"));
    if (!set) return kServiceNoResults;
    for (const auto& resource : set->Get("resources").AsArray()) {
      const CJsonValue& coordinates = resource->Get("point").Get("coordinates");
      places.push_back(MakePlace(NumberAt(coordinates, 0), NumberAt(coordinates, 1),
                                 ReplyText(resource->Get("name"))));
    }
    return kServiceSuccess;
  });
}
