#include "services/places/tomtom.h"

#include <optional>

#include "base/numbers.h"
#include "net/url.h"
#include "services/request_text.h"

namespace {

// The service writes the position as text, "48.08,7.36", or as an object of two numbers, depending
// on what was asked.
std::optional<CGpsCoordinate> ReadPosition(const CJsonValue& value) {
  CGpsCoordinate position;
  if (value.type == kJsonObject) {
    position.latitude = value.Get("lat").AsNumber();
    position.longitude = value.Get("lon").AsNumber();
    return position;
  }
  const std::string_view text = value.AsString();
  const size_t comma = text.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  position.latitude = ParseReal(text.substr(0, comma));
  position.longitude = ParseReal(text.substr(comma + 1));
  return position;
}

uint32_t ReadFirst(std::string_view reply, std::string_view arrayName, PlaceList& places) {
  return ReadPlaces(reply, places, [&](const CJsonValue& document, bool&) {
    const CJsonValue* const first = FirstOf(document.Get(arrayName));
    if (!first) return kServiceNoResults;
    std::string name = ReplyText(first->Get("address").Get("freeformAddress"));
    if (const auto position = ReadPosition(first->Get("position")))
      places.push_back(MakePlace(position->latitude, position->longitude, std::move(name)));
    return kServiceSuccess;
  });
}

}  // namespace

std::string TomTomGeocodingUrl(const ServiceAccess& access, std::string_view text) {
  return access.url + "/search/2/geocode/" + UrlEscape(text, "") +
         ".json?key=" + AccountText(access.key);
}

std::string TomTomReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position) {
  return access.url + "/search/2/reverseGeocode/" + LatLonText(position) +
         ".json?key=" + AccountText(access.key);
}

uint32_t ReadTomTomPlaces(std::string_view reply, PlaceList& places) {
  return ReadFirst(reply, "results", places);
}

uint32_t ReadTomTomAddresses(std::string_view reply, PlaceList& places) {
  return ReadFirst(reply, "addresses", places);
}
