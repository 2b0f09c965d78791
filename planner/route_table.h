#pragma once

#include <cstddef>
#include <string>

#include "base/measure_text.h"
#include "model/point_list.h"
#include "settings/settings.h"

/// The columns of a list of points.
enum class RouteColumn {
  kNumber = 1,  ///< the number from 1, or the name when numbers are not shown
  kName = 2,
  kDistance = 3,  ///< of the leg, and from the start
  kDuration = 4,  ///< likewise
  kPosition = 5,
  kComment = 6,
  kTravelMode = 7,
  kColor = 8,  ///< "#RRGGBB"
};

/// The text of a cell, in UTF-8. Throws std::out_of_range beyond the last point.
std::string RouteTableText(const CGpsPointArray& list, size_t index, RouteColumn column,
                           const CSettings& settings);

/// Latitude and longitude in a display format.
std::string PositionText(const CGpsCoordinate& position, CoordinateFormat format);

/// The name of a travel mode in the current language; empty for an unknown one.
std::string TravelModeName(uint32_t mode);
