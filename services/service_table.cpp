#include "services/service_table.h"

#include <algorithm>
#include <cassert>

#include "base/text.h"
#include "base/text_ids.h"

namespace {

constexpr uint32_t kUrl = kNeedsUrl;
constexpr uint32_t kUrlKey = kNeedsUrl | kNeedsKey;
constexpr uint32_t kUrlKeyAppId = kNeedsUrl | kNeedsKey | kNeedsAppId;

constexpr uint32_t kGeocodes = kCanGeocode | kCanReverse;
constexpr uint32_t kRoutesAndGeocodes = kCanDirections | kGeocodes;
constexpr uint32_t kWhatGoogleCan = kRoutesAndGeocodes | kCanSearch | kCanElevation;
constexpr uint32_t kWhatHereCan = kRoutesAndGeocodes | kCanSearch;

constexpr std::string_view kWazeUsRouting = "https://www.waze.com/RoutingManager";
constexpr std::string_view kWazeWorldRouting = "https://www.waze.com/row-RoutingManager";
constexpr std::string_view kTomTomApi = "https://api.tomtom.com";

// Name, number, label, abilities, needs, address, account, closed since, successor.
constexpr Service kServices[] = {
    {"straight", provider::kStraight, kTextStraightLines, kCanDirections, kNeedsNothing, "",
     "straight", "", ""},

    {"google", provider::kGoogle, kTextGoogle, kWhatGoogleCan, kUrlKey,
     "https://maps.googleapis.com", "google", "2025-03", "google-routes"},
    {"google-panorama", kNoProviderId, kTextPanorama, kCanPanorama, kUrl, "https://maps.google.com",
     "google-panorama", "", ""},
    {"google-site", kNoProviderId, kTextGoogle, kCanLinks, kUrl, "https://www.google.com",
     "google-site", "", ""},

    {"bing", provider::kBing, kTextBing, kRoutesAndGeocodes, kUrlKey,
     "https://dev.virtualearth.net", "bing", "2025-06", "Azure Maps"},
    {"bing-site", kNoProviderId, kTextBing, kCanLinks, kUrl, "https://www.bing.com/maps",
     "bing-site", "", ""},

    {"tomtom", provider::kTomTom, kTextTomTom, kRoutesAndGeocodes, kUrlKey, kTomTomApi, "tomtom",
     "", ""},
    {"tomtom-6", provider::kTomTom6, kTextTomTom, kCanDirections, kUrlKey, kTomTomApi, "tomtom-6",
     "", ""},
    {"tomtom-search", provider::kTomTomSearch, kTextTomTom, kGeocodes, kUrlKey, kTomTomApi,
     "tomtom-search", "", ""},
    {"tomtom-site", kNoProviderId, kTextTomTom, kCanLinks, kUrl, "https://www.tomtom.com",
     "tomtom-site", "", ""},
    {"mydrive-site", kNoProviderId, kTextMyDrive, kCanLinks, kUrl, "https://mydrive.tomtom.com",
     "mydrive-site", "", ""},

    {"geonames", provider::kGeonames, kTextGeonames, kCanCountry, kUrlKey,
     "https://api.geonames.org", "geonames", "", ""},

    {"viamichelin", provider::kViaMichelin, kTextViaMichelin, kRoutesAndGeocodes, kUrlKey,
     "https://apir.viamichelin.com", "viamichelin", "", ""},
    {"viamichelin-site", kNoProviderId, kTextViaMichelin, kCanLinks, kUrl,
     "https://www.viamichelin.com", "viamichelin-site", "", ""},

    {"osrm", provider::kOsrm, kTextOsrm, kCanDirections, kUrl, "https://router.project-osrm.org",
     "osrm", "", ""},
    {"ign", provider::kIgn, kTextIgn, kCanDirections, kUrlKey, "https://wxs.ign.fr", "ign", "2024",
     "geoplateforme"},

    {"waze-us", provider::kWazeUs, kTextWazeUs, kRoutesAndGeocodes, kUrl, kWazeUsRouting, "waze-us",
     "", ""},
    {"waze-us-search", kNoProviderId, kTextWazeUs, kCanGeocode, kUrl, "https://www.waze.com/WAS",
     "waze-us", "", ""},
    {"waze-us-reverse", kNoProviderId, kTextWazeUs, kCanReverse, kUrl,
     "https://www.waze.com/SearchServer", "waze-us", "", ""},
    {"waze-world", provider::kWazeWorld, kTextWazeWorld, kRoutesAndGeocodes, kUrl,
     kWazeWorldRouting, "waze-world", "", ""},
    {"waze-world-search", kNoProviderId, kTextWazeWorld, kCanGeocode, kUrl,
     "https://www.waze.com/row-WAS", "waze-world", "", ""},
    {"waze-world-reverse", kNoProviderId, kTextWazeWorld, kCanReverse, kUrl,
     "https://www.waze.com/row-SearchServer", "waze-world", "", ""},

    {"here", provider::kHere, kTextHere, kWhatHereCan, kUrlKeyAppId, "https://route.api.here.com",
     "here", "2025", "here-v8"},
    {"here-geocoder", kNoProviderId, kTextHere, kCanGeocode, kUrlKeyAppId,
     "https://geocoder.api.here.com", "here", "2025", "here-v8-search"},
    {"here-reverse", kNoProviderId, kTextHere, kCanReverse, kUrlKeyAppId,
     "https://reverse.geocoder.api.here.com", "here", "2025", "here-v8-search"},
    {"here-places", kNoProviderId, kTextHere, kCanSearch, kUrlKeyAppId,
     "https://places.api.here.com", "here", "2025", "here-v8-search"},
    {"here-site", kNoProviderId, kTextHere, kCanLinks, kUrl, "https://www.here.com", "here-site",
     "", ""},

    {"openrouteservice", provider::kOpenRouteService, kTextOpenRouteService, kCanDirections, kUrl,
     "", "openrouteservice", "", ""},
    {"tripy", provider::kTripy, kTextTripy, kCanDirections, kUrl, "", "tripy", "", ""},

    {"geoip", kNoProviderId, kTextGeoIp, kCanCountry, kUrl, "", "geoip", "", ""},
    {"garmin-site", kNoProviderId, kTextGarmin, 0, kUrl, "https://my.garmin.com", "garmin-site", "",
     ""},

    {"offline-roads", provider::kOfflineRoads, kTextOfflineRoads, kCanDirections, kNeedsNothing, "",
     "offline-roads", "", ""},
    {"offline-places", provider::kOfflinePlaces, kTextOfflinePlaces, kGeocodes | kCanSearch,
     kNeedsNothing, "", "offline-places", "", ""},

    {"nominatim", provider::kNominatim, kTextNominatim, kGeocodes, kUrl, "", "nominatim", "", ""},
    {"valhalla", provider::kValhalla, kTextValhalla, kCanDirections, kUrl, "", "valhalla", "", ""},
    {"brouter", provider::kBRouter, kTextBRouter, kCanDirections, kUrl, "", "brouter", "", ""},
    {"ors", provider::kOrs, kTextOpenRouteService, kCanDirections, kUrlKey,
     "https://api.openrouteservice.org", "ors", "", ""},
    {"here-v8", provider::kHereV8, kTextHereV8, kWhatHereCan, kUrlKey, "https://router.hereapi.com",
     "here-v8", "", ""},
    {"here-v8-search", kNoProviderId, kTextHereV8, kGeocodes | kCanSearch, kUrlKey,
     "https://geocode.search.hereapi.com", "here-v8", "", ""},
    {"google-routes", provider::kGoogleRoutes, kTextGoogleRoutes, kCanDirections, kUrlKey,
     "https://routes.googleapis.com", "google-routes", "", ""},
    {"geoplateforme", provider::kGeoplateforme, kTextGeoplateforme, kRoutesAndGeocodes, kUrl,
     "https://data.geopf.fr", "geoplateforme", "", ""},
    {"photon", provider::kPhoton, kTextPhoton, kGeocodes, kUrl, "https://photon.komoot.io",
     "photon", "", ""},
};

// Work of providers that is done under an address of its own.
struct ServiceOfProvider {
  std::string_view provider;
  uint32_t abilities;
  std::string_view service;
};

constexpr ServiceOfProvider kServicesOfProviders[] = {
    {"tomtom", kGeocodes, "tomtom-search"},
    {"waze-us", kCanGeocode, "waze-us-search"},
    {"waze-us", kCanReverse, "waze-us-reverse"},
    {"waze-world", kCanGeocode, "waze-world-search"},
    {"waze-world", kCanReverse, "waze-world-reverse"},
    {"here", kCanGeocode, "here-geocoder"},
    {"here", kCanReverse, "here-reverse"},
    {"here", kCanSearch, "here-places"},
    {"here-v8", kGeocodes | kCanSearch, "here-v8-search"},
    {"google", kCanPanorama, "google-panorama"},
};

}  // namespace

std::span<const Service> Services() { return kServices; }

const Service* FindService(std::string_view name) {
  const std::string wanted = ToLowerAscii(name);
  const auto* const found = std::ranges::find(kServices, wanted, &Service::name);
  return found == std::end(kServices) ? nullptr : found;
}

const Service* FindService(int32_t id) {
  if (id == kNoProviderId) return nullptr;
  const auto* const found = std::ranges::find(kServices, id, &Service::id);
  return found == std::end(kServices) ? nullptr : found;
}

const Service& ServiceNamed(std::string_view name) {
  const Service* const service = FindService(name);
  assert(service != nullptr);
  return *service;
}

const Service& ServiceFor(const Service& provider, ServiceAbility ability) {
  for (const ServiceOfProvider& row : kServicesOfProviders) {
    if (row.provider == provider.name && (row.abilities & ability))
      return ServiceNamed(row.service);
  }
  return provider;
}

int32_t ProviderIdOf(const Service& service) {
  return service.id != kNoProviderId ? service.id : ServiceNamed(service.account).id;
}
