#pragma once

#include <cstdint>
#include <memory>

#include "services/directions/route_provider.h"
#include "settings/settings.h"

/// What the settings ask of a provider.
struct RouteRequest {
  uint32_t travelMode = 0;
  std::unique_ptr<CRouteOptions> options;  ///< never null
};

/// The travel mode and options of the present settings, as far as the provider offers them: a
/// vehicle that it does not know becomes its first.
RouteRequest RequestFromSettings(const CSettings& settings, const CRouteProvider& provider);
