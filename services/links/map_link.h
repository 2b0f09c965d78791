#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/point.h"

/// How the way is to be travelled; the values of the setting `VehicleType` and of all directions.
enum ELinkTravelMode : uint32_t {
  kLinkNoMode = 0,
  kLinkCar = 1,
  kLinkTruck = 2,
  kLinkPedestrian = 3,
  kLinkBicycle = 4,
  kLinkMotorcycle = 5,
};

/// Kinds of routes; the values of the setting `ItineraryType` that a link can say.
inline constexpr uint32_t kLinkThrilling = 5;

/// How hilly or winding a thrilling route is.
enum ELinkCharacter : uint32_t { kLinkHigh = 0, kLinkNormal = 1, kLinkLow = 2 };

/// What a link that is written asks for besides its stops.
struct LinkOptions {
  uint32_t travelMode = kLinkNoMode;
  uint32_t routeType = 1;
  bool avoidsMotorways = false;
  bool avoidsTolls = false;
  bool wantsAlternatives = false;
  uint32_t hilliness = kLinkNormal;
  uint32_t windingness = kLinkNormal;
};

/// The points of one link.
using LinkPoints = std::span<const CGpsNamedPoint* const>;

/// A stop as a link tells it. Without a position `name` is the address to look up.
struct LinkStop {
  std::string name;  ///< UTF-8; may be empty where there is a position
  std::string comment;
  std::optional<CGpsCoordinate> position;
};

/// What a link says.
struct MapLink {
  std::vector<LinkStop> stops;
  uint32_t travelMode = kLinkNoMode;
  bool avoidsMotorways = false;
  bool avoidsTolls = false;
  std::string language;     ///< of the page that the link opens; empty where it says nothing
  bool isSavedMap = false;  ///< the service knows more stops
};
