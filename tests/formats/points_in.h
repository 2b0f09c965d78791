#pragma once

#include <cstddef>

#include "model/point_list.h"

/// How many points a reader has handed over, in all lists together.
inline size_t PointsIn(const PointLists& lists) {
  size_t count = 0;
  for (const auto& list : lists) count += list->Count();
  return count;
}
