#include "services/places/nominatim.h"

#include "base/numbers.h"
#include "net/url.h"
#include "services/request_text.h"

namespace {

// Positions are texts.
CGpsNamedPoint ReadPlace(const CJsonValue& place) {
  return MakePlace(ParseReal(place.Get("lat").AsString()), ParseReal(place.Get("lon").AsString()),
                   ReplyText(place.Get("display_name")));
}

// What went wrong comes as a text, or as an object with the HTTP status.
uint32_t ErrorStatus(const CJsonValue& error) {
  return error.type == kJsonString ? uint32_t{kServiceNoResults} : uint32_t{kServiceInvalid};
}

}  // namespace

std::string NominatimGeocodingUrl(const ServiceAccess& access, std::string_view text) {
  std::string url = access.url + "/search?q=" + UrlEscape(text, "") + "&format=jsonv2&limit=10";
  AppendParameterIfAny(url, "&accept-language=", access.language);
  return url;
}

std::string NominatimReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position) {
  std::string url = access.url + "/reverse?lat=" + CoordinateText(position.latitude) +
                    "&lon=" + CoordinateText(position.longitude) + "&format=jsonv2";
  AppendParameterIfAny(url, "&accept-language=", access.language);
  return url;
}

uint32_t ReadNominatimPlaces(std::string_view reply, PlaceList& places) {
  return ReadPlaces(reply, places, [&places](const CJsonValue& document, bool&) {
    for (const auto& place : document.AsArray()) places.push_back(ReadPlace(*place));
    return kServiceSuccess;
  });
}

uint32_t ReadNominatimPlace(std::string_view reply, PlaceList& places) {
  return ReadPlaces(reply, places, [&places](const CJsonValue& document, bool&) {
    if (const CJsonValue* const error = document.AsObject().Find("error"))
      return ErrorStatus(*error);
    places.push_back(ReadPlace(document));
    return uint32_t{kServiceSuccess};
  });
}
