#include "ui/place_finder.h"

#include "base/localized_text.h"
#include "base/text_ids.h"
#include "conversion/geocoder.h"
#include "services/places/place_search.h"
#include "services/places/stoppable_geocoder.h"
#include "services/service_registry.h"

FoundPlaces FindPlaces(int32_t provider, const std::string& text, const std::stop_token& stop) {
  const auto geocoder = CServiceRegistry::Instance().CreateGeocoder(provider);
  if (!geocoder) return {kServiceInvalid, {}};
  if (auto* const stoppable = dynamic_cast<CStoppableGeocoder*>(geocoder.get()))
    stoppable->SetStop(stop);
  const uint32_t status = geocoder->Search(text);
  return {status, geocoder->GetResults()};
}

FoundPlaces FindPlacesNear(int32_t provider, const std::string& text,
                           const CGpsCoordinate& position, const std::stop_token& stop) {
  const auto search = CreatePlaceSearch(provider);
  if (!search) return {kServiceInvalid, {}};
  search->SearchNear(text, position);
  const std::stop_callback cancel(stop, [&search] { search->Cancel(); });
  const uint32_t status = search->Wait(-1);
  return {status, search->GetResults()};
}

std::string DescribeSearchFailure(uint32_t status) {
  switch (status) {
    case kServiceNoResults:
    case kServiceNotFound:
      return std::string(LoadTextUtf8(kTextNothingFound));
    case kServiceOverLimit:
    case kServiceDenied:
      return std::string(LoadTextUtf8(kTextServiceRefused));
    default:
      return std::string(LoadTextUtf8(kTextSearchFailed));
  }
}
