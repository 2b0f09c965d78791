#include "services/places/waze.h"

#include "net/url.h"
#include "services/request_text.h"

namespace {

// Shorter texts of an address are placeholders.
constexpr size_t kShortestPart = 2;

constexpr std::string_view kStreetParts[] = {"street", "city", "country"};

}  // namespace

std::string WazeGeocodingUrl(const ServiceAccess& access, std::string_view text) {
  std::string url = access.url + "/mozi?lon=0&lat=0&q=" + UrlEscape(text, "");
  AppendParameterIfAny(url, "&lang=", access.language);
  return url;
}

std::string WazeReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position) {
  return access.url + "/app/getStreet?radius=0.0005&lat=" + CoordinateText(position.latitude) +
         "&lon=" + CoordinateText(position.longitude);
}

uint32_t ReadWazePlaces(std::string_view reply, PlaceList& places) {
  return ReadPlaces(reply, places, [&places](const CJsonValue& document, bool&) {
    for (const auto& result : document.AsArray()) {
      const CJsonValue& location = result->Get("location");
      places.push_back(MakePlace(location.Get("lat").AsNumber(), location.Get("lon").AsNumber(),
                                 ReplyText(result->Get("name")), OptionalText(*result, "state")));
    }
    return kServiceSuccess;
  });
}

uint32_t ReadWazeStreet(std::string_view reply, const CGpsCoordinate& asked, PlaceList& places) {
  return ReadPlaces(reply, places, [&](const CJsonValue& document, bool&) {
    const CJsonValue* const street = FirstOf(document);
    if (!street) return kServiceNoResults;
    std::string address;
    for (const std::string_view name : kStreetParts) {
      const std::string part = OptionalText(*street, name);
      if (part.size() >= kShortestPart) JoinText(address, part);
    }
    if (!address.empty())
      places.push_back(MakePlace(asked.latitude, asked.longitude, std::move(address)));
    return kServiceSuccess;
  });
}
