#include "services/places/here.h"

#include "net/url.h"
#include "services/request_text.h"

namespace {

std::string WithAccount(std::string url, const ServiceAccess& access) {
  url += "&app_id=" + AccountText(access.appId) + "&app_code=" + AccountText(access.key);
  AppendParameterIfAny(url, "&language=", access.language);
  return url;
}

}  // namespace

std::string HereGeocodingUrl(const ServiceAccess& access, std::string_view text) {
  return WithAccount(access.url + "/6.2/geocode.json?gen=4&searchtext=" + UrlEscape(text, ""),
                     access);
}

std::string HereReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position) {
  return WithAccount(access.url + "/6.2/reversegeocode.json?gen=4&mode=retrieveAddresses&prox=" +
                         LatLonText(position),
                     access);
}

std::string HereSearchUrl(const ServiceAccess& access, std::string_view text,
                          const CGpsCoordinate& position) {
  return WithAccount(access.url +
                         "/places/v1/discover/search?refinements=false&Accept=application/json&q=" +
                         UrlEscape(text, ""),
                     access) +
         "&at=" + LatLonText(position);
}

uint32_t ReadHerePlaces(std::string_view reply, PlaceList& places) {
  return ReadPlaces(reply, places, [&places](const CJsonValue& document, bool&) {
    const CJsonValue* const view = FirstOf(document.Get("Response").Get("View"));
    if (!view) return kServiceNoResults;
    for (const auto& result : view->Get("Result").AsArray()) {
      const CJsonValue& location = result->Get("Location");
      const CJsonValue& position = location.Get("DisplayPosition");
      places.push_back(MakePlace(position.Get("Latitude").AsNumber(),
                                 position.Get("Longitude").AsNumber(),
                                 ReplyText(location.Get("Address").Get("Label"))));
    }
    return kServiceSuccess;
  });
}

uint32_t ReadHereSearch(std::string_view reply, PlaceList& places) {
  return ReadPlaces(reply, places, [&places](const CJsonValue& document, bool&) {
    for (const auto& item : document.Get("results").Get("items").AsArray()) {
      const CJsonValue& position = item->Get("position");
      places.push_back(MakePlace(NumberAt(position, 0), NumberAt(position, 1),
                                 ReplyText(item->Get("title")), OptionalText(*item, "vicinity")));
    }
    return kServiceSuccess;
  });
}
