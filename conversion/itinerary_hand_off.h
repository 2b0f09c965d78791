#pragma once

#include <cstdint>
#include <functional>

#include "model/point_list.h"

/// Gives an itinerary to the companion program of a device instead of writing a file. Returns a
/// status.
using ItineraryHandOff = std::function<uint32_t(const CGpsPointArray& list)>;
