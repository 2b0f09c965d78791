#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <vector>

#include "model/point_list.h"
#include "model/sphere_vector.h"

/// The length in metres of the way by road between two points of a list, 0 where none is known.
using RoadDistance = std::function<uint32_t(size_t from, size_t to)>;

/// Finds an order of the stops of a list that makes the whole way shorter; first and last stay.
/// It takes any two stops, turns round what lies between them, and keeps what became shorter, until
/// a pass over all pairs finds nothing more. Costs are metres and add up in 32 bits.
class CItineraryOptimizer {
 public:
  /// `list` must stay as it is while this lives. Without `road` there is nobody to ask for
  /// directions. A stop ends `Optimise` with the best order so far; an answer that arrives behind
  /// it does not count.
  explicit CItineraryOptimizer(const CGpsPointArray& list, RoadDistance road = {},
                               std::stop_token stop = {});

  /// The straight distance, or with `useDirections` that by road, asked anew. Throws
  /// std::runtime_error when there is nobody to ask.
  uint32_t PairCost(size_t a, size_t b, bool useDirections) const;

  /// The length of the way through these points, with a memory for pairs by road: one that is known
  /// in either direction and not 0 is not asked again.
  uint32_t PathCost(const std::vector<size_t>& order, bool useDirections);

  /// The best order found, as indices of the list. A list of up to three stays as it is. Asks for
  /// pairs by road in the direction in which they are first looked at.
  std::vector<size_t> Optimise(bool useDirections);

  /// Goes on from an order of `Optimise` by moving short runs of stops and by shaking, as long as
  /// `time` or until a stop; few stops get the best order of all at once. The result is never
  /// longer than `order` as `Length` measures. Asks for nothing.
  std::vector<size_t> Improve(const std::vector<size_t>& order, bool useDirections,
                              std::chrono::milliseconds time) const;

  /// The length of the way in metres that does not wrap. By road, a pair that is not known counts
  /// with its straight distance.
  uint64_t Length(const std::vector<size_t>& order, bool useDirections) const;

  /// Fills `target`, which must be another list, with copies of the points in the order of
  /// `Optimise`, route legs included, and gives it the list's name.
  void OptimizeInto(CGpsPointArray& target, bool useDirections);

  /// The same for an order that is known.
  void FillInOrder(CGpsPointArray& target, const std::vector<size_t>& order) const;

 private:
  std::vector<size_t> OptimiseByDistance() const;
  std::vector<size_t> OptimiseByRoad();
  uint32_t StoredCost(size_t a, size_t b) const { return m_costs[b * m_count + a]; }
  uint32_t RoadCost(size_t a, size_t b);
  uint32_t RoadPathCost(const std::vector<size_t>& order);

  const CGpsPointArray& m_list;
  const size_t m_count;
  const RoadDistance m_road;
  const std::stop_token m_stop;
  const std::vector<SphereVector> m_places;
  std::vector<uint32_t> m_costs;  ///< by road, from a to b at a * count + b; 0 = not known yet
};
