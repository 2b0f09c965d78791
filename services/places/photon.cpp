#include "services/places/photon.h"

#include "net/url.h"
#include "services/request_text.h"

namespace {

// Two texts with a blank between them where both are there.
std::string Together(std::string first, const std::string& second) {
  if (!first.empty() && !second.empty()) first += ' ';
  return first + second;
}

// "Maison Pfister, 11 Rue des Marchands, 68000 Colmar, France"
std::string ReadAddress(const CJsonValue& properties) {
  const auto text = [&properties](const char* name) { return OptionalText(properties, name); };
  std::string address = text("name");
  JoinText(address, Together(text("housenumber"), text("street")));
  JoinText(address, Together(text("postcode"), text("city")));
  JoinText(address, text("state"));
  JoinText(address, text("country"));
  return address;
}

}  // namespace

std::string PhotonGeocodingUrl(const ServiceAccess& access, std::string_view text) {
  std::string url = access.url + "/api/?q=" + UrlEscape(text, "") + "&limit=10";
  AppendParameterIfAny(url, "&lang=", access.language);
  return url;
}

std::string PhotonReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position) {
  std::string url = access.url + "/reverse?lon=" + CoordinateText(position.longitude) +
                    "&lat=" + CoordinateText(position.latitude);
  AppendParameterIfAny(url, "&lang=", access.language);
  return url;
}

uint32_t ReadPhotonPlaces(std::string_view reply, PlaceList& places) {
  return ReadPlaces(reply, places, [&places](const CJsonValue& document, bool&) {
    for (const auto& feature : document.Get("features").AsArray()) {
      const CJsonValue& position = feature->Get("geometry").Get("coordinates");
      places.push_back(MakePlace(NumberAt(position, 1), NumberAt(position, 0),
                                 ReadAddress(feature->Get("properties"))));
    }
    return kServiceSuccess;
  });
}
