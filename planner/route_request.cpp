#include "planner/route_request.h"

#include "services/directions/route_options.h"

namespace {

uint32_t Unsigned(int32_t value) { return value < 0 ? 0 : static_cast<uint32_t>(value); }

// Options of a class hold those of the classes below it.
void FillOptions(const CSettings& settings, CRouteOptions& options) {
  options.mode = Unsigned(settings.itineraryType);
  if (auto* const avoidances = dynamic_cast<AvoidanceOptions*>(&options)) {
    avoidances->motorways = !settings.avoidHighway;
    avoidances->tolls = !settings.avoidTolls;
  }
  if (auto* const truck = dynamic_cast<TruckOptions*>(&options)) {
    truck->hazardCategory = Unsigned(settings.truckCategory);
    truck->trailers = Unsigned(settings.truckTrailersCount);
    truck->limitedWeight = Unsigned(settings.truckLimitedWeight);
    truck->weightPerAxle = Unsigned(settings.truckWeightAxle);
    truck->height = Unsigned(settings.truckHeight);
    truck->width = Unsigned(settings.truckWidth);
    truck->length = Unsigned(settings.truckLength);
  }
}

}  // namespace

RouteRequest RequestFromSettings(const CSettings& settings, const CRouteProvider& provider) {
  const TravelModes modes = provider.GetTravelModes();
  RouteRequest request;
  auto mode = modes.find(Unsigned(settings.vehicleType));
  if (mode == modes.end()) mode = modes.begin();
  if (mode == modes.end()) {
    request.options = std::make_unique<CRouteOptions>();
  } else {
    request.travelMode = mode->first;
    request.options = MakeRouteOptions(mode->second->Capabilities());
  }
  FillOptions(settings, *request.options);
  return request;
}
