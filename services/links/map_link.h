#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "conversion/map_links.h"
#include "model/point.h"
#include "services/directions/route_options.h"

/// The points of one link.
using LinkPoints = std::span<const CGpsNamedPoint* const>;

/// A stop as a link tells it. Without a position `name` is the address to look up, and `placeId`,
/// where there is one, what the service itself calls the place.
struct LinkStop {
  std::string name;  ///< UTF-8; may be empty where there is a position
  std::string comment;
  std::optional<CGpsCoordinate> position;
  std::string placeId;
};

/// What a link says.
struct MapLink {
  std::vector<LinkStop> stops;
  uint32_t travelMode = kAnyMode;  ///< TravelMode
  bool avoidsMotorways = false;
  bool avoidsTolls = false;
  std::string language;     ///< of the page that the link opens; empty where it says nothing
  bool isSavedMap = false;  ///< the service knows more stops
};
