#include "planner/online_services.h"

#include <utility>

#include "base/text.h"
#include "net/http_client.h"
#include "planner/posted_function.h"
#include "services/country.h"
#include "services/places/elevation.h"
#include "services/places/panorama.h"
#include "services/places/reverse_geocoder.h"
#include "services/service_access.h"
#include "services/service_registry.h"

std::string OnlineServices::Get(const std::string& url, const std::string& referrer,
                                const std::string& host) {
  HttpOptions options;
  options.waitMs = waitMs;
  return HttpGet(Utf8ToWideLossy(url), referrer, host, options);
}

WideString OnlineServices::Download(const std::string& url, const std::string& referrer,
                                    const WideString& target) {
  return HttpDownload(url, target, referrer);
}

void OnlineServices::Enqueue(int32_t queue, const std::string& url, const std::string& referrer,
                             const std::string& host, ScriptFunctionPtr callback) {
  m_queues.EnqueueRequest(queue, url, referrer, host,
                          MakePostedFunction(m_posts, std::move(callback)));
}

std::optional<CGpsNamedPoint> OnlineServices::FindAddress(const CGpsCoordinate& position) {
  const Service* const service = FindService(m_settings.findProvider);
  if (service && !IsUsable(*service)) return std::nullopt;
  const std::unique_ptr<CReverseGeocoder> geocoder =
      CServiceRegistry::Instance().CreateReverseGeocoder(m_settings.findProvider);
  if (!geocoder) return std::nullopt;
  geocoder->SetWait(waitMs);
  if (geocoder->Search(position) != 0 || geocoder->GetResults().empty()) return std::nullopt;
  return geocoder->GetResults().front();
}

std::optional<CGpsNamedPoint> OnlineServices::FindPanorama(const CGpsCoordinate& position) {
  PlaceList places;
  if (GetStreetViewLocation(position, places, waitMs) != 0 || places.empty()) return std::nullopt;
  return places.front();
}

std::optional<CGpsNamedPoint> OnlineServices::FindElevation(const CGpsCoordinate& position) {
  CGpsPoint point;
  if (GetElevation(position, point, waitMs) != 0) return std::nullopt;
  return point;
}

std::optional<UserCountry> OnlineServices::FindCountry() {
  CCountryInfo country;
  CGpsCoordinate position;
  if (GetCountry(country, position, waitMs) != 0) return std::nullopt;
  return UserCountry{country.countryCode, position.latitude, position.longitude};
}

void OnlineServices::UpdateProviders(const std::string& json) {
  CServiceRegistry& registry = CServiceRegistry::Instance();
  currentProvider = m_settings.routeProvider;
  const bool hasAccount = registry.Has(m_settings.routeProvider);
  UpdateServiceRegistry(registry, json);
  // One that needs no account has none that the page could have removed.
  if (hasAccount) m_settings.routeProvider = currentProvider;
}
