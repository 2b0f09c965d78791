#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

#include "model/itinerary_optimizer.h"
#include "services/directions/route_provider.h"

/// How many questions an order by road of that many stops may need. First and last stop are never
/// neighbours of each other.
constexpr uint64_t MostRoadQuestions(uint64_t stops) {
  return stops < 4 ? 0 : stops * (stops - 1) / 2 - 1;
}

/// A pair of stops that the provider has given no way for.
struct RoadFailure {
  size_t from = 0;
  size_t to = 0;
  uint32_t status = kRouteSuccess;
  std::string text;  ///< what the provider adds to the status; mostly empty
};

/// Asks a directions provider how long the ways between the stops of a list are: one pair after the
/// other, each once, in the direction of the first question. A pair without an answer counts as no
/// way at all; a provider that has never answered is given up after the third.
class RoadLengths {
 public:
  /// Called while an answer is waited for, with the number of questions so far. False ends it.
  using GoesOn = std::function<bool(size_t asked)>;

  /// All of them must outlive this.
  RoadLengths(CRouteProvider& provider, uint32_t travelMode, const CRouteOptions& options,
              const CGpsPointArray& list, GoesOn goesOn = {});

  /// Metres, 0 where the provider has given no way.
  uint32_t Between(size_t from, size_t to);
  /// `Between` for an optimiser, which `Stop` ends.
  RoadDistance ForOptimizer();
  std::stop_token Stop() const { return m_stop.get_token(); }

  size_t Asked() const { return m_asked; }
  /// Whether it was ended by `GoesOn`.
  bool IsCancelled() const { return m_isCancelled; }
  /// Whether it was ended because the provider does not answer.
  bool IsGivenUp() const { return m_isGivenUp; }
  /// The pairs without a way, in the order of the questions.
  const std::vector<RoadFailure>& Failures() const { return m_failures; }

 private:
  uint32_t Ask(size_t from, size_t to);
  uint32_t Await();

  CRouteProvider& m_provider;
  const uint32_t m_travelMode;
  const CRouteOptions& m_options;
  const CGpsPointArray& m_list;
  const GoesOn m_goesOn;
  std::map<std::pair<size_t, size_t>, uint32_t> m_known;  ///< by the lower index first
  std::stop_source m_stop;
  size_t m_asked = 0;
  bool m_hasAnswered = false;
  bool m_isCancelled = false;
  bool m_isGivenUp = false;
  std::vector<RoadFailure> m_failures;
};
