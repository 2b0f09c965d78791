#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "model/point_list.h"

/// Which lists of a file become the itinerary.
struct ListChoice {
  enum class Which { kDefault, kAll, kRoutes, kTracks, kWaypoints, kPois, kNumbers };

  Which which = Which::kDefault;
  std::vector<size_t> numbers;  ///< from 1, for kNumbers
  std::string text;             ///< as the user wrote it
};

/// The indices of the lists that a choice means; none when it means none of them, or one that is
/// not there. The default is the first route, without one the first list of points, without one
/// the first track.
std::vector<size_t> SelectLists(const PointLists& lists, const ListChoice& choice);
