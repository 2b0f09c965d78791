#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "model/point.h"
#include "model/projection.h"

/// Ramer-Douglas-Peucker: reduces a rising sequence of indices to those that keep the shape of
/// the way within `maximum` metres. `pointAt` gives the position of an index.
template <typename PointAt>
void ReduceIndices(std::vector<size_t>& indices, uint32_t maximum, PointAt pointAt) {
  if (indices.size() < 3) return;
  std::vector<bool> survives(indices.size(), true);
  // Pairs of ends still to be looked at. A stack of our own: hostile shapes nest as deep as the
  // list is long.
  std::vector<std::pair<size_t, size_t>> pending{{0, indices.size() - 1}};
  while (!pending.empty()) {
    const auto [first, last] = pending.back();
    pending.pop_back();
    if (last - first < 2) continue;

    const CGridSegment segment(pointAt(indices[first]), pointAt(indices[last]));
    uint32_t largest = 0;
    size_t farthest = first;
    for (size_t i = first + 1; i < last; ++i) {
      const uint32_t distance = pointAt(indices[i]).DistanceToSegment(segment);
      if (distance > largest) {
        largest = distance;
        farthest = i;
      }
    }

    if (largest < maximum) {
      for (size_t i = first + 1; i < last; ++i) survives[i] = false;
    } else if (farthest != first) {
      pending.emplace_back(first, farthest);
      pending.emplace_back(farthest, last);
    }
  }

  size_t kept = 0;
  for (size_t i = 0; i < indices.size(); ++i) {
    if (survives[i]) indices[kept++] = indices[i];
  }
  indices.resize(kept);
}
