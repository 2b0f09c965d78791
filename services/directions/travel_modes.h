#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "services/directions/travel_mode_info.h"

/// Kinds of roads that a provider can avoid, as a mask.
enum RoadKind : uint32_t {
  kMotorways = 1,
  kTolls = 2,
  kBoatFerries = 4,
  kRailFerries = 8,
  kTunnels = 16,
  kDirtRoads = 32,
};

/// What sizes and loads of a truck a provider understands, in tenths of a metre or a ton.
struct TruckLimits {
  MaximumAndMinimum trailers;
  MaximumAndMinimum limitedWeight;
  MaximumAndMinimum weightPerAxle;
  MaximumAndMinimum height;
  MaximumAndMinimum width;
  MaximumAndMinimum length;
  bool tractor;
  uint32_t hazardCategories;  ///< bit n: category n
};

/// What a provider offers for some travel modes.
struct TravelModeRow {
  int32_t provider;
  uint32_t modes;         ///< bit n: travel mode n
  uint32_t types;         ///< bit n: route type n
  uint32_t avoidances;    ///< RoadKind
  uint32_t capabilities;  ///< of the options to make
  const TruckLimits* truck;

  bool HasMode(uint32_t mode) const { return mode < 32 && (modes >> mode & 1) != 0; }
  bool HasType(uint32_t type) const { return type < 32 && (types >> type & 1) != 0; }
};

/// The travel modes of all providers.
std::span<const TravelModeRow> TravelModeTable();

/// What the provider offers for a travel mode; null when it has no such mode.
const TravelModeRow* FindTravelMode(int32_t provider, uint32_t mode);

/// The lowest travel mode of the provider, for whoever has chosen none; 0 for one without modes.
uint32_t FirstTravelMode(int32_t provider);

/// The same as the settings panels see it.
TravelModes TravelModesOf(int32_t provider);
