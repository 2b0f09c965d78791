#include "services/places/here_v8.h"

#include <fmt/format.h>

#include "net/url.h"
#include "services/request_text.h"

namespace {

std::string WithAccount(std::string url, const ServiceAccess& access) {
  AppendParameterIfAny(url, "&lang=", access.language);
  return url + "&apiKey=" + AccountText(access.key);
}

// Errors are objects with the HTTP status, or with a word where the key is wrong.
uint32_t ErrorStatus(const CJsonValue& document) {
  if (document.AsObject().Find("error")) return kServiceDenied;
  const CJsonValue* const status = document.AsObject().Find("status");
  if (!status || status->type != kJsonNumber) return kServiceInvalid;
  if (status->number == 401 || status->number == 403) return kServiceDenied;
  if (status->number == 429) return kServiceOverLimit;
  return status->number == 400 ? uint32_t{kServiceInvalid} : uint32_t{kServiceOther};
}

}  // namespace

std::string HereV8GeocodingUrl(const ServiceAccess& access, std::string_view text) {
  return WithAccount(access.url + "/v1/geocode?q=" + UrlEscape(text, "") + "&limit=10", access);
}

std::string HereV8ReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position) {
  return WithAccount(access.url + "/v1/revgeocode?at=" + LatLonText(position), access);
}

std::string HereV8SearchUrl(const ServiceAccess& access, std::string_view text,
                            const CGpsCoordinate& position, uint32_t radius) {
  return WithAccount(fmt::format("{}/v1/discover?q={}&in=circle:{}%3Br={}&limit=20", access.url,
                                 UrlEscape(text, ""), LatLonText(position), radius),
                     access);
}

uint32_t ReadHereV8Places(std::string_view reply, PlaceList& places) {
  return ReadPlaces(reply, places, [&places](const CJsonValue& document, bool&) {
    const CJsonValue* const items = document.AsObject().Find("items");
    if (!items) return ErrorStatus(document);
    for (const auto& item : items->AsArray()) {
      const CJsonValue& position = item->Get("position");
      std::string label = OptionalText(item->Get("address"), "label");
      std::string title = ReplyText(item->Get("title"));
      if (label == title) label.clear();
      places.push_back(MakePlace(position.Get("lat").AsNumber(), position.Get("lng").AsNumber(),
                                 std::move(title), std::move(label)));
    }
    return uint32_t{kServiceSuccess};
  });
}
