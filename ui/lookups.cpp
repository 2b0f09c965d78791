#include "ui/lookups.h"

#include "conversion/conversion_context.h"
#include "planner/hand_off.h"
#include "platform/open_link.h"
#include "services/directions/route_wishes.h"
#include "services/geonames_countries.h"
#include "services/links/link_writing.h"
#include "services/service_access.h"
#include "services/service_registry.h"
#include "services/service_table.h"
#include "settings/settings.h"

namespace {

// The finder of the settings, or where it cannot be asked, that on this machine.
int32_t FinderInUse(const CSettings& settings) {
  const Service* const finder = FindService(settings.findProvider);
  if (!finder) return provider::kOfflinePlaces;
  const Service& service = ServiceFor(*finder, kCanGeocode);
  const bool isReady = (service.abilities & kCanGeocode) && IsUsable(service);
  return isReady ? settings.findProvider : provider::kOfflinePlaces;
}

}  // namespace

void AllowServices(const CSettings& settings, ConversionContext& context) {
  Lookups& lookups = context.lookups;
  lookups.mayFetch = true;
  lookups.makeFinder = [id = FinderInUse(settings)] {
    return CServiceRegistry::Instance().CreateGeocoder(id);
  };
  lookups.makeGeocoder = {};
  if (IsUsable(ServiceNamed("google"))) {
    lookups.makeGeocoder = [](int32_t id) {
      return CServiceRegistry::Instance().CreateGeocoder(id);
    };
  }
  lookups.countries = IsUsable(ServiceNamed("geonames")) ? &GeonamesCountries() : nullptr;
  context.handOff = SendItineraryToNavigon;
  context.takeLink = OpenLink;
  context.linkOptions = LinkOptionsFor({}, settings);
}
