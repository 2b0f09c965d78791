#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "services/directions/route_provider.h"
#include "settings/settings.h"

/// Kinds of roads that are not to be used.
struct AvoidedRoads {
  bool motorways = false;
  bool tolls = false;
  bool boatFerries = false;
  bool railFerries = false;
  bool tunnels = false;
  bool dirtRoads = false;
  bool usedRoads = false;  ///< those that the way has used before
};

/// What somebody wants of a way. Where nothing is said, the settings count.
struct RouteWishes {
  std::optional<uint32_t> mode = {};  ///< TravelMode
  std::optional<uint32_t> type = {};  ///< RouteType, or ViaMichelin's ViaMichelinType
  std::optional<AvoidedRoads> avoided = {};
  std::optional<uint32_t> hilliness = {};    ///< RouteDegree
  std::optional<uint32_t> windingness = {};  ///< likewise
  bool tractor = false;
};

/// What is asked of a provider.
struct RouteRequest {
  uint32_t travelMode = 0;
  std::unique_ptr<CRouteOptions> options;  ///< never null
};

/// The travel mode and the options for these wishes and settings. A vehicle of the settings that
/// the provider does not know becomes its first; a wish goes out even where the provider's table
/// does not offer it, so that its requests say of it what they can.
RouteRequest RequestFor(const RouteWishes& wishes, const CSettings& settings,
                        const CRouteProvider& provider);

/// What of the wishes, and of the roads that the settings avoid, the provider does not offer, by
/// the words of services/directions/route_words.h.
std::vector<std::string_view> NotOffered(const RouteWishes& wishes, const CSettings& settings,
                                         const CRouteProvider& provider);
