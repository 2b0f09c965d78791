#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "base/wide_string.h"

/// The directions provider of a fresh installation: the lowest number among the accounts that the
/// program comes with (Microsoft Bing).
inline constexpr int32_t kDefaultRouteProvider = 3;

/// What finds addresses and places in a fresh installation: the cities on this machine, so that
/// nobody's stops leave it unasked.
inline constexpr int32_t kDefaultFindProvider = 101;

/// Where a window stood, as its system records it; kept and given back, never looked into.
using WindowPlacement = std::array<uint8_t, 44>;

/// The map that the planner starts with.
struct MapChoice {
  uint32_t kind = 0;
  std::string name;  ///< UTF-8

  bool operator==(const MapChoice&) const = default;
};

/// The values of all settings; a fresh object holds the defaults. Under which keys and in which
/// form they are stored stands in settings/setting_table.h.
struct SettingValues {
  std::optional<WindowPlacement> converterPosition;
  std::optional<WindowPlacement> editorPosition;
  bool autoCalc = false;              ///< recalculate the itinerary after each change
  bool distMiles = false;             ///< show distances in miles
  bool optimizeUseDirection = false;  ///< optimise by road distance
  bool avoidHighway = false;
  bool avoidTolls = false;
  int32_t vehicleType = 0;
  int32_t itineraryType = 1;
  int32_t routeProvider = kDefaultRouteProvider;  ///< number of a directions provider
  bool forceRoad = false;                         ///< place waypoints on roads
  bool autoAddStep = false;                       ///< add a stage by a click on the route
  bool displayNumber = true;                      ///< show waypoint numbers
  int32_t exportIndex = -1;  ///< entry of the export list chosen last; negative = none
  int32_t language = 0;      ///< primary language identifier, 0 = none; only ever read
  int32_t coordinates = 0;   ///< 0 decimal degrees, 1 with minutes, 2 with minutes and seconds
  int32_t truckHeight = 20;  ///< sizes in tenths of a metre, weights in tenths of a ton
  int32_t truckWidth = 30;
  int32_t truckLength = 80;
  int32_t truckTrailersCount = 1;
  int32_t truckLimitedWeight = 30;
  int32_t truckWeightAxle = 50;
  int32_t truckCategory = 0;  ///< class of hazardous goods
  WideString userId;
  std::optional<MapChoice> defaultMap;
  int32_t findProvider = kDefaultFindProvider;  ///< the service that finds addresses and places
  bool calculateAsked = false;  ///< the first calculation has asked which provider to take
  WideString plannerPage;       ///< address of a planner page in place of our own; empty: our own
  int32_t programLanguage =
      0;  ///< identifier of the language where `language` is 0; 0 = the system's
};
