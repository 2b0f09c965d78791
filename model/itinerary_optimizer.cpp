#include "model/itinerary_optimizer.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "model/order_improvement.h"

namespace {

/// Ends a search from within.
struct Stopped {};

std::vector<SphereVector> PlacesOf(const CGpsPointArray& list) {
  return {list.points.begin(), list.points.end()};
}

std::vector<size_t> ListOrder(size_t count) {
  std::vector<size_t> order(count);
  std::iota(order.begin(), order.end(), size_t{0});
  return order;
}

void TurnRound(std::vector<size_t>& order, size_t first, size_t last) {
  std::reverse(order.begin() + static_cast<std::ptrdiff_t>(first),
               order.begin() + static_cast<std::ptrdiff_t>(last) + 1);
}

/// The way through an order with the costs of its edges, of which a turn replaces two.
struct Way {
  std::vector<size_t> order;
  std::vector<uint32_t> edges{};  ///< between `order[i]` and the stop behind it
  uint32_t sum = 0;

  /// Takes the cost of every edge from `cost`.
  template <typename Cost>
  void Measure(Cost cost) {
    edges.resize(order.size() - 1);
    sum = 0;
    for (size_t i = 0; i < edges.size(); ++i) sum += edges[i] = cost(order[i], order[i + 1]);
  }

  void Turn(size_t first, size_t last, uint32_t before, uint32_t behind) {
    sum += before + behind - edges[first - 1] - edges[last];
    TurnRound(order, first, last);
    std::reverse(edges.begin() + static_cast<std::ptrdiff_t>(first),
                 edges.begin() + static_cast<std::ptrdiff_t>(last));
    edges[first - 1] = before;
    edges[last] = behind;
  }

  bool HasFreeEdge() const { return std::find(edges.begin(), edges.end(), 0U) != edges.end(); }
};

}  // namespace

CItineraryOptimizer::CItineraryOptimizer(const CGpsPointArray& list, RoadDistance road,
                                         std::stop_token stop)
    : m_list(list),
      m_count(list.Count()),
      m_road(std::move(road)),
      m_stop(std::move(stop)),
      m_places(PlacesOf(list)) {}

uint32_t CItineraryOptimizer::PairCost(size_t a, size_t b, bool useDirections) const {
  if (a == b) return 0;
  if (!useDirections) return m_places.at(a).ChordTo(m_places.at(b));
  if (!m_road) throw std::runtime_error("Bad type");
  return m_road(a, b);
}

uint32_t CItineraryOptimizer::PathCost(const std::vector<size_t>& order, bool useDirections) {
  if (useDirections) return RoadPathCost(order);
  uint32_t sum = 0;
  for (size_t i = 1; i < order.size(); ++i) sum += PairCost(order[i - 1], order[i], false);
  return sum;
}

uint32_t CItineraryOptimizer::RoadCost(size_t a, size_t b) {
  if (m_costs.empty()) m_costs.resize(m_count * m_count);
  uint32_t& stored = m_costs[b * m_count + a];
  if (stored == 0) {
    if (m_stop.stop_requested()) throw Stopped();
    const uint32_t cost = PairCost(a, b, true);
    if (m_stop.stop_requested()) throw Stopped();
    stored = m_costs[a * m_count + b] = cost;
  }
  return stored;
}

uint32_t CItineraryOptimizer::RoadPathCost(const std::vector<size_t>& order) {
  uint32_t sum = 0;
  for (size_t i = 1; i < order.size(); ++i) sum += RoadCost(order[i - 1], order[i]);
  return sum;
}

std::vector<size_t> CItineraryOptimizer::Optimise(bool useDirections) {
  if (m_count <= 3) return ListOrder(m_count);
  return useDirections ? OptimiseByRoad() : OptimiseByDistance();
}

std::vector<size_t> CItineraryOptimizer::OptimiseByDistance() const {
  const auto cost = [this](size_t a, size_t b) { return m_places[a].ChordTo(m_places[b]); };
  Way way{ListOrder(m_count)};
  way.Measure(cost);
  const size_t last = m_count - 1;
  for (bool improved = true; std::exchange(improved, false);) {
    for (size_t i = 1; i < last; ++i) {
      if (m_stop.stop_requested()) return way.order;
      for (size_t j = i + 1; j < last; ++j) {
        const uint32_t before = cost(way.order[i - 1], way.order[j]);
        const uint32_t behind = cost(way.order[i], way.order[j + 1]);
        const uint32_t sum = way.sum - way.edges[i - 1] - way.edges[j] + before + behind;
        if (sum >= way.sum) continue;
        way.Turn(i, j, before, behind);
        improved = true;
      }
    }
  }
  return way.order;
}

// A pair without an answer costs nothing and is asked again when it is seen the next time, perhaps
// from the other end, where the answer may be another. While the way holds such a pair every
// candidate is walked through; `best` then may no longer be what the way costs by now.
std::vector<size_t> CItineraryOptimizer::OptimiseByRoad() {
  Way way{ListOrder(m_count)};
  const auto stored = [this](size_t a, size_t b) { return StoredCost(a, b); };
  try {
    uint32_t best = RoadPathCost(way.order);
    way.Measure(stored);
    bool walks = way.HasFreeEdge();
    const size_t last = m_count - 1;
    for (bool improved = true; std::exchange(improved, false);) {
      for (size_t i = 1; i < last; ++i) {
        for (size_t j = i + 1; j < last; ++j) {
          if (walks) {
            std::vector<size_t> turned = way.order;
            TurnRound(turned, i, j);
            const uint32_t cost = RoadPathCost(turned);
            if (cost < best) {
              best = cost;
              way.order = std::move(turned);
              improved = true;
            }
            way.Measure(stored);
            walks = way.HasFreeEdge();
            continue;
          }
          const uint32_t before = RoadCost(way.order[i - 1], way.order[j]);
          const uint32_t behind = RoadCost(way.order[i], way.order[j + 1]);
          const uint32_t cost = way.sum - way.edges[i - 1] - way.edges[j] + before + behind;
          if (cost >= best) continue;
          best = cost;
          way.Turn(i, j, before, behind);
          walks = before == 0 || behind == 0;
          improved = true;
        }
      }
    }
  } catch (const Stopped&) {
  }
  return way.order;
}

uint64_t CItineraryOptimizer::Length(const std::vector<size_t>& order, bool useDirections) const {
  uint64_t sum = 0;
  for (size_t i = 1; i < order.size(); ++i) {
    uint32_t cost = 0;
    if (useDirections && !m_costs.empty()) cost = StoredCost(order[i - 1], order[i]);
    sum += cost != 0 ? cost : PairCost(order[i - 1], order[i], false);
  }
  return sum;
}

std::vector<size_t> CItineraryOptimizer::Improve(const std::vector<size_t>& order,
                                                 bool useDirections,
                                                 std::chrono::milliseconds time) const {
  const bool byRoad = useDirections && !m_costs.empty();
  return ImproveOrder(
      order,
      [this, byRoad](size_t a, size_t b) {
        const uint32_t cost = byRoad ? StoredCost(a, b) : 0;
        return cost != 0 ? cost : m_places[a].ChordTo(m_places[b]);
      },
      std::chrono::steady_clock::now() + time, m_stop);
}

void CItineraryOptimizer::OptimizeInto(CGpsPointArray& target, bool useDirections) {
  FillInOrder(target, Optimise(useDirections));
}

void CItineraryOptimizer::FillInOrder(CGpsPointArray& target,
                                      const std::vector<size_t>& order) const {
  target.Clear();
  for (const size_t index : order) target.points.push_back(m_list.At(index));
  target.SetName(m_list.GetName());
}
