#include "services/places/viamichelin.h"

#include "base/numbers.h"
#include "net/url.h"
#include "services/request_text.h"

namespace {

constexpr std::string_view kCharsetAndCall = "?charset=UTF-8&ie=UTF-8&callback=HTTPResponseLoaded";

constexpr std::string_view kAddressParts[] = {"formattedAddressLine", "formattedCityLine", "area",
                                              "countryLabel"};

std::string ReadAddress(const CJsonValue& location) {
  std::string address;
  for (const std::string_view part : kAddressParts) JoinText(address, OptionalText(location, part));
  return address;
}

// The id is a text or a number.
std::string ReadId(const CJsonValue& location) {
  const CJsonValue* const id = location.AsObject().Find("id");
  if (id && id->type == kJsonNumber) return ToFixedString(id->number, 0);
  return OptionalText(location, "id");
}

std::string WithLanguageAndKey(std::string url, const ServiceAccess& access) {
  return url.append(kCharsetAndCall) + "&lg=" + AccountText(access.language) +
         "&authkey=" + AccountText(access.key);
}

}  // namespace

std::string ViaMichelinGeocodingUrl(const ServiceAccess& access, std::string_view text) {
  return WithLanguageAndKey(access.url + "/apir/1/geocode1f.json", access) +
         "&query=" + UrlEscape(text, "");
}

std::string ViaMichelinPlaceUrl(const ServiceAccess& access, std::string_view placeId) {
  return WithLanguageAndKey(access.url + "/apir/1/location.json/" + UrlEscape(placeId, ""), access);
}

std::string ViaMichelinReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position) {
  return (access.url + "/apir/1/rgeocode.json").append(kCharsetAndCall) +
         "&authkey=" + AccountText(access.key) + "&center=" + LonLatText(position, ":");
}

uint32_t ReadViaMichelinPlaces(std::string_view reply, PlaceList& places,
                               std::vector<std::string>* ids) {
  places.clear();
  if (ids) ids->clear();
  if (!TakeViaMichelinWrapper(reply)) return kServiceInvalid;
  const uint32_t status = ReadPlaces(reply, places, [&](const CJsonValue& document, bool&) {
    // Its own numbers share the place of the transport's.
    if (const CJsonValue* const error = document.AsObject().Find("error");
        error && error->type == kJsonObject)
      return kServiceTransport + TruncateToUint32(error->Get("errorCode").AsNumber());
    for (const auto& location : document.Get("locationList").AsArray()) {
      const CJsonValue& position = location->Get("coords");
      places.push_back(MakePlace(position.Get("lat").AsNumber(), position.Get("lon").AsNumber(),
                                 ReadAddress(*location)));
      if (ids) ids->push_back(ReadId(*location));
    }
    return uint32_t{kServiceSuccess};
  });
  if (ids && places.empty()) ids->clear();
  return status;
}
