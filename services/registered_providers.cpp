#include "services/registered_providers.h"

#include "services/directions/route_provider.h"
#include "services/directions/travel_modes.h"
#include "services/service_table.h"

std::vector<int32_t> RegisteredProviders::Providers() const {
  std::set<int32_t> numbers;
  for (const Service& service : Services()) {
    const int32_t number = ProviderIdOf(service);
    if ((service.abilities & kCanDirections) != 0 && m_registry.CreateRouteProvider(number))
      numbers.insert(number);
  }
  return {numbers.begin(), numbers.end()};
}

std::optional<std::set<int32_t>> RegisteredProviders::VehiclesOf(int32_t provider) const {
  if (!m_registry.CreateRouteProvider(provider)) return std::nullopt;
  std::set<int32_t> vehicles;
  for (const auto& [mode, info] : TravelModesOf(provider))
    vehicles.insert(static_cast<int32_t>(mode));
  return vehicles;
}
