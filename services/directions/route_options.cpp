#include "services/directions/route_options.h"

namespace {

void TakeIfNotGiven(uint32_t& value, uint32_t other) {
  if (value == 0) value = other;
}

void TakeIfNormal(uint32_t& degree, uint32_t other) {
  if (degree == kNormal) degree = other;
}

}  // namespace

std::unique_ptr<CRouteOptions> AvoidanceOptions::Clone() const {
  return std::make_unique<AvoidanceOptions>(*this);
}

uint32_t AvoidanceOptions::Capabilities() const { return kAvoidances; }

void AvoidanceOptions::Merge(const CRouteOptions& other) {
  CRouteOptions::Merge(other);
  const AvoidanceOptions* const avoidances = AvoidancesOf(other);
  if (!avoidances) return;
  motorways = motorways && avoidances->motorways;
  tolls = tolls && avoidances->tolls;
  boatFerries = boatFerries && avoidances->boatFerries;
  railFerries = railFerries && avoidances->railFerries;
  tunnels = tunnels && avoidances->tunnels;
  dirtRoads = dirtRoads && avoidances->dirtRoads;
}

std::unique_ptr<CRouteOptions> TruckOptions::Clone() const {
  return std::make_unique<TruckOptions>(*this);
}

uint32_t TruckOptions::Capabilities() const { return kAvoidances | kTruck; }

void TruckOptions::Merge(const CRouteOptions& other) {
  AvoidanceOptions::Merge(other);
  const TruckOptions* const truck = TruckOf(other);
  if (!truck) return;
  TakeIfNotGiven(hazardCategory, truck->hazardCategory);
  tractor = tractor || truck->tractor;
  TakeIfNotGiven(trailers, truck->trailers);
  TakeIfNotGiven(limitedWeight, truck->limitedWeight);
  TakeIfNotGiven(weightPerAxle, truck->weightPerAxle);
  TakeIfNotGiven(height, truck->height);
  TakeIfNotGiven(width, truck->width);
  TakeIfNotGiven(length, truck->length);
}

std::unique_ptr<CRouteOptions> RouteCharacterOptions::Clone() const {
  return std::make_unique<RouteCharacterOptions>(*this);
}

uint32_t RouteCharacterOptions::Capabilities() const { return kAvoidances | kRouteCharacter; }

void RouteCharacterOptions::Merge(const CRouteOptions& other) {
  AvoidanceOptions::Merge(other);
  const RouteCharacterOptions* const character = CharacterOf(other);
  if (!character) return;
  avoidUsedRoads = avoidUsedRoads && character->avoidUsedRoads;
  TakeIfNormal(hilliness, character->hilliness);
  TakeIfNormal(windingness, character->windingness);
}

const AvoidanceOptions* AvoidancesOf(const CRouteOptions& options) {
  return dynamic_cast<const AvoidanceOptions*>(&options);
}

const TruckOptions* TruckOf(const CRouteOptions& options) {
  return dynamic_cast<const TruckOptions*>(&options);
}

const RouteCharacterOptions* CharacterOf(const CRouteOptions& options) {
  return dynamic_cast<const RouteCharacterOptions*>(&options);
}

std::unique_ptr<CRouteOptions> MakeRouteOptions(uint32_t capabilities) {
  if (capabilities & kTruck) return std::make_unique<TruckOptions>();
  if (capabilities & kRouteCharacter) return std::make_unique<RouteCharacterOptions>();
  if (capabilities & kAvoidances) return std::make_unique<AvoidanceOptions>();
  return std::make_unique<CRouteOptions>();
}
