#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "model/point.h"
#include "model/point_queue.h"

// The sorts of both kinds of point lists work on pointers and put the points in their places
// afterwards, so that large points are moved once.

/// Sorts stably, by insertion up to 32 entries and by merging above. Unlike the library's sorts it
/// stays in bounds whatever `isBefore` answers: comparing with a tolerance is no strict weak order.
template <typename Entry, typename IsBefore>
void MergeSort(std::vector<Entry>& entries, IsBefore isBefore) {
  constexpr size_t kRun = 32;
  for (size_t start = 0; start < entries.size(); start += kRun) {
    const size_t stop = std::min(start + kRun, entries.size());
    for (size_t i = start + 1; i < stop; ++i) {
      Entry entry = std::move(entries[i]);
      size_t j = i;
      for (; j > start && isBefore(entry, entries[j - 1]); --j)
        entries[j] = std::move(entries[j - 1]);
      entries[j] = std::move(entry);
    }
  }

  std::vector<Entry> merged(entries.size());
  for (size_t width = kRun; width < entries.size(); width *= 2) {
    for (size_t start = 0; start < entries.size(); start += 2 * width) {
      const size_t middle = std::min(start + width, entries.size());
      const size_t stop = std::min(start + 2 * width, entries.size());
      size_t left = start;
      size_t right = middle;
      for (size_t i = start; i < stop; ++i) {
        const bool takeRight =
            left == middle || (right < stop && isBefore(entries[right], entries[left]));
        merged[i] = std::move(takeRight ? entries[right++] : entries[left++]);
      }
    }
    entries.swap(merged);
  }
}

/// What positions are compared by, in one piece beside a sort's pointer: this spares the way to
/// the point.
struct PlaceKey {
  double latitude;
  double longitude;
  double tolerance;

  bool IsNear(const PlaceKey& other) const {
    const double halfWidth = std::max(tolerance, other.tolerance);
    return LiesWithin(latitude, other.latitude, halfWidth) &&
           LiesWithin(longitude, other.longitude, halfWidth);
  }

  bool operator<(const PlaceKey& other) const {
    const double halfWidth = std::max(tolerance, other.tolerance);
    if (LiesWithin(latitude, other.latitude, halfWidth)) return longitude < other.longitude;
    return latitude < other.latitude;
  }

 private:
  static bool LiesWithin(double value, double centre, double halfWidth) {
    return centre - halfWidth < value && value < centre + halfWidth;
  }
};

inline PlaceKey KeyOf(const CGpsCoordinate& position) {
  return {position.latitude, position.longitude, position.tolerance};
}

/// Sorts by position and keeps, of each run of points near the first one kept, only that one.
template <typename Pointer>
void SortAndKeepUnique(std::vector<Pointer>& entries) {
  std::vector<std::pair<PlaceKey, Pointer>> order;
  order.reserve(entries.size());
  for (Pointer& entry : entries) {
    const PlaceKey key = KeyOf(*entry);
    order.emplace_back(key, std::move(entry));
  }
  MergeSort(order, [](const auto& left, const auto& right) { return left.first < right.first; });

  entries.clear();
  const PlaceKey* kept = nullptr;
  for (auto& [key, entry] : order) {
    if (kept != nullptr && kept->IsNear(key)) continue;
    entries.push_back(std::move(entry));
    kept = &key;
  }
}

/// The points that `SortAndUnique` would leave in a copy of `points`, in its order. They stay where
/// they are.
inline std::vector<const CGpsPoint*> SortedUniquePoints(const PointQueue& points) {
  std::vector<const CGpsPoint*> order;
  order.reserve(points.size());
  for (const CGpsPoint& point : points) order.push_back(&point);
  SortAndKeepUnique(order);
  return order;
}
