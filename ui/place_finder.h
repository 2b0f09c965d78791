#pragma once

#include <cstdint>
#include <stop_token>
#include <string>
#include <vector>

#include "model/point.h"

/// What a search has given; the status is that of a service.
struct FoundPlaces {
  uint32_t status = 0;
  std::vector<CGpsNamedPoint> places;
};

/// Asks the finder of this number for a text, and waits until it answers or is to stop. Any thread.
FoundPlaces FindPlaces(int32_t provider, const std::string& text, const std::stop_token& stop);
/// The same around a position.
FoundPlaces FindPlacesNear(int32_t provider, const std::string& text,
                           const CGpsCoordinate& position, const std::stop_token& stop);

/// A sentence for the user about a status that is not 0.
std::string DescribeSearchFailure(uint32_t status);
