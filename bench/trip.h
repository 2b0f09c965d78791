#pragma once

#include <cstddef>
#include <cstdint>

#include "model/point_list.h"

/// What an invented trip looks like.
struct TripOptions {
  size_t points = 1'000'000;
  uint64_t seed = 1;
  size_t shortestName = 8;  ///< characters of a name, accented letters counted once
  size_t longestName = 24;
  bool altitude = false;
  bool comment = false;
};

/// A way through Europe, from city to city along bent roads, with a name at every point. The same
/// options give the same trip on every machine.
CGpsRoute MakeTrip(const TripOptions& options);
