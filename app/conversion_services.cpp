#include "app/conversion_services.h"

#include "app/service_choice.h"
#include "app/service_outcome.h"
#include "base/format_text.h"
#include "base/text_ids.h"
#include "services/geonames_countries.h"
#include "services/service_access.h"
#include "services/service_registry.h"

namespace {

// The provider that is named may be meant for directions.
ServiceChoice ChooseFinder(const Options& options) {
  const std::string finder = DefaultFinder(kCanGeocode);
  ServiceChoice choice = ChooseService(options, kCanGeocode, finder);
  const bool isOther = choice.service && !(choice.service->abilities & kCanGeocode);
  return isOther ? ChooseNamedService(options, kCanGeocode, finder) : choice;
}

FinderMaker MakerOf(const ServiceChoice& finder) {
  const int32_t id = ProviderIdOf(*finder.provider);
  return [id] { return CServiceRegistry::Instance().CreateGeocoder(id); };
}

std::string RemedyFor(const Options& options, const Service& service) {
  if (options.services.offline) return FormatText(kTextServiceOffline, service.name);
  return IsUsable(service) ? std::string() : DescribeMissingSettings(service);
}

}  // namespace

void AllowLookups(const Options& options, Lookups& lookups) {
  lookups.isOffline = options.services.offline;
  lookups.mayFetch = !lookups.isOffline;
  lookups.prepare = [&options](Lookups& asked) {
    PrepareServices();
    if (const ServiceChoice finder = ChooseFinder(options); finder.exitStatus == 0)
      asked.makeFinder = MakerOf(finder);
    if (asked.isOffline) return;
    if (IsUsable(ServiceNamed("geonames"))) asked.countries = &GeonamesCountries();
    if (IsUsable(ServiceNamed("google"))) {
      asked.makeGeocoder = [](int32_t id) {
        return CServiceRegistry::Instance().CreateGeocoder(id);
      };
    }
  };
}

void AllowLocalLookups(const Options& options, Lookups& lookups) {
  lookups.prepare = [&options](Lookups& asked) {
    PrepareServices();
    const ServiceChoice finder = ChooseFinder(options);
    if (finder.exitStatus == 0 && IsOnThisMachine(*finder.service))
      asked.makeFinder = MakerOf(finder);
  };
}

std::string PositionRemedy(const Options& options) {
  return RemedyFor(options, ServiceNamed("google"));
}

std::string CountryRemedy(const Options& options) {
  return RemedyFor(options, ServiceNamed("geonames"));
}

std::string PlaceRemedy(const Options& options) { return ChooseFinder(options).message; }
