#include "services/places/geoplateforme.h"

#include "net/url.h"
#include "services/request_text.h"

std::string GeoplateformeGeocodingUrl(const ServiceAccess& access, std::string_view text) {
  return access.url + "/geocodage/search?q=" + UrlEscape(text, "") + "&limit=10";
}

std::string GeoplateformeReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position) {
  return access.url + "/geocodage/reverse?lon=" + CoordinateText(position.longitude) +
         "&lat=" + CoordinateText(position.latitude) + "&limit=1";
}

uint32_t ReadGeoplateformePlaces(std::string_view reply, PlaceList& places) {
  return ReadPlaces(reply, places, [&places](const CJsonValue& document, bool&) {
    for (const auto& feature : document.Get("features").AsArray()) {
      const CJsonValue& position = feature->Get("geometry").Get("coordinates");
      places.push_back(MakePlace(NumberAt(position, 1), NumberAt(position, 0),
                                 ReplyText(feature->Get("properties").Get("label"))));
    }
    return kServiceSuccess;
  });
}
