#include "services/directions/route_wishes.h"

#include "services/directions/route_options.h"
#include "services/directions/route_words.h"

namespace {

uint32_t Unsigned(int32_t value) { return value < 0 ? 0 : static_cast<uint32_t>(value); }

AvoidedRoads AvoidedBy(const RouteWishes& wishes, const CSettings& settings) {
  if (wishes.avoided) return *wishes.avoided;
  AvoidedRoads avoided;
  avoided.motorways = settings.avoidHighway;
  avoided.tolls = settings.avoidTolls;
  return avoided;
}

uint32_t TravelModeFor(const RouteWishes& wishes, const CSettings& settings,
                       const TravelModes& modes) {
  if (wishes.mode) return *wishes.mode;
  const uint32_t stored = Unsigned(settings.vehicleType);
  if (modes.contains(stored) || modes.empty()) return stored;
  return modes.begin()->first;
}

// What the options must be able to say: what the mode offers, and what is wished beyond that.
uint32_t CapabilitiesFor(const RouteWishes& wishes, uint32_t mode, const TravelModes& modes) {
  auto offered = modes.find(mode);
  if (offered == modes.end()) offered = modes.begin();
  uint32_t capabilities =
      offered == modes.end() ? uint32_t{kRouteTypeOnly} : offered->second->Capabilities();
  if (wishes.avoided) capabilities |= kAvoidances;
  if (wishes.tractor) capabilities |= kAvoidances | kTruck;
  const bool hasCharacter =
      wishes.hilliness || wishes.windingness || (wishes.avoided && wishes.avoided->usedRoads);
  if (hasCharacter) capabilities |= kAvoidances | kRouteCharacter;
  return capabilities;
}

void FillAvoidances(const AvoidedRoads& avoided, AvoidanceOptions& options) {
  options.motorways = !avoided.motorways;
  options.tolls = !avoided.tolls;
  options.boatFerries = !avoided.boatFerries;
  options.railFerries = !avoided.railFerries;
  options.tunnels = !avoided.tunnels;
  options.dirtRoads = !avoided.dirtRoads;
}

void FillTruck(const RouteWishes& wishes, const CSettings& settings, TruckOptions& truck) {
  truck.tractor = wishes.tractor;
  truck.hazardCategory = Unsigned(settings.truckCategory);
  truck.trailers = Unsigned(settings.truckTrailersCount);
  truck.limitedWeight = Unsigned(settings.truckLimitedWeight);
  truck.weightPerAxle = Unsigned(settings.truckWeightAxle);
  truck.height = Unsigned(settings.truckHeight);
  truck.width = Unsigned(settings.truckWidth);
  truck.length = Unsigned(settings.truckLength);
}

// Options of a class hold those of the classes below it.
void FillOptions(const RouteWishes& wishes, const CSettings& settings, CRouteOptions& options) {
  options.mode = wishes.type.value_or(Unsigned(settings.itineraryType));
  const AvoidedRoads avoided = AvoidedBy(wishes, settings);
  if (auto* const avoidances = dynamic_cast<AvoidanceOptions*>(&options))
    FillAvoidances(avoided, *avoidances);
  if (auto* const truck = dynamic_cast<TruckOptions*>(&options))
    FillTruck(wishes, settings, *truck);
  if (auto* const character = dynamic_cast<RouteCharacterOptions*>(&options)) {
    character->avoidUsedRoads = !avoided.usedRoads;
    character->hilliness = wishes.hilliness.value_or(kNormal);
    character->windingness = wishes.windingness.value_or(kNormal);
  }
}

bool OffersTractor(const CTravelModeInfo& info) {
  const auto* const truck = dynamic_cast<const TruckModeInfo*>(&info);
  return truck != nullptr && truck->Tractor().first;
}

}  // namespace

RouteRequest RequestFor(const RouteWishes& wishes, const CSettings& settings,
                        const CRouteProvider& provider) {
  const TravelModes modes = provider.GetTravelModes();
  RouteRequest request;
  request.travelMode = TravelModeFor(wishes, settings, modes);
  request.options = MakeRouteOptions(CapabilitiesFor(wishes, request.travelMode, modes));
  FillOptions(wishes, settings, *request.options);
  return request;
}

std::vector<std::string_view> NotOffered(const RouteWishes& wishes, const CSettings& settings,
                                         const CRouteProvider& provider) {
  const TravelModes modes = provider.GetTravelModes();
  const uint32_t mode = TravelModeFor(wishes, settings, modes);
  const auto found = modes.find(mode);
  const CTravelModeInfo* const info = found == modes.end() ? nullptr : found->second.get();
  std::vector<std::string_view> words;
  const auto need = [&words](bool isOffered, std::string_view word) {
    if (!isOffered) words.push_back(word);
  };
  if (wishes.mode) need(info != nullptr, WordOf(TravelModeWords(), mode));
  // Of a vehicle that is not known nothing else is.
  if (!info) return words;
  if (wishes.type)
    need(info->RouteTypes().contains(*wishes.type), WordOf(RouteTypeWords(), *wishes.type));
  const AvoidedRoads avoided = AvoidedBy(wishes, settings);
  for (const RoadsWord& roads : RoadsWords()) {
    if (avoided.*roads.avoided) need(roads.IsOfferedBy(*info), roads.word);
  }
  const bool hasCharacter = (info->Capabilities() & kRouteCharacter) != 0;
  if (wishes.hilliness) need(hasCharacter, "hilliness");
  if (wishes.windingness) need(hasCharacter, "windingness");
  if (wishes.tractor) need(OffersTractor(*info), "tractor");
  return words;
}
