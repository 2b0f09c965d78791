#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "core/point.h"

// The sorts of both kinds of point lists work on pointers and put the points in their places
// afterwards, so that large points are moved once.

/// Sorts stably, by insertion up to 32 entries and by merging above. Unlike the library's sorts it
/// stays in bounds whatever `isBefore` answers: comparing with a tolerance is no strict weak order.
template <typename Pointer, typename IsBefore>
void MergeSort(std::vector<Pointer>& entries, IsBefore isBefore) {
  constexpr size_t kRun = 32;
  for (size_t start = 0; start < entries.size(); start += kRun) {
    const size_t stop = std::min(start + kRun, entries.size());
    for (size_t i = start + 1; i < stop; ++i) {
      Pointer entry = std::move(entries[i]);
      size_t j = i;
      for (; j > start && isBefore(*entry, *entries[j - 1]); --j)
        entries[j] = std::move(entries[j - 1]);
      entries[j] = std::move(entry);
    }
  }

  std::vector<Pointer> merged(entries.size());
  for (size_t width = kRun; width < entries.size(); width *= 2) {
    for (size_t start = 0; start < entries.size(); start += 2 * width) {
      const size_t middle = std::min(start + width, entries.size());
      const size_t stop = std::min(start + 2 * width, entries.size());
      size_t left = start;
      size_t right = middle;
      for (size_t i = start; i < stop; ++i) {
        const bool takeRight =
            left == middle || (right < stop && isBefore(*entries[right], *entries[left]));
        merged[i] = std::move(takeRight ? entries[right++] : entries[left++]);
      }
    }
    entries.swap(merged);
  }
}

/// Sorts by position and keeps, of each run of points near the first one kept, only that one.
template <typename Pointer>
void SortAndKeepUnique(std::vector<Pointer>& entries) {
  MergeSort(entries,
            [](const CGpsNamedPoint& left, const CGpsNamedPoint& right) { return left < right; });
  size_t kept = 0;
  for (size_t i = 1; i < entries.size(); ++i) {
    if (!entries[kept]->IsNear(*entries[i])) entries[++kept] = std::move(entries[i]);
  }
  if (!entries.empty()) entries.resize(kept + 1);
}
