#include "services/directions/road_lengths.h"

#include <algorithm>

namespace {

// How long nobody can cancel.
constexpr int32_t kLookEveryMs = 100;
// After so many questions nobody is expected to answer who never has.
constexpr size_t kMostUnanswered = 3;

uint32_t LengthOf(const CRouteProvider::Legs& legs) {
  uint32_t length = 0;
  for (const CRouteData& leg : legs) {
    if (leg.measure.flag == 0) return 0;
    length += leg.measure.distance;
  }
  return length;
}

// The provider has answered: there is no way.
bool IsNoWay(uint32_t status) { return status == kRouteNothingFound || status == kRouteNotFound; }

}  // namespace

RoadLengths::RoadLengths(CRouteProvider& provider, uint32_t travelMode,
                         const CRouteOptions& options, const CGpsPointArray& list, GoesOn goesOn)
    : m_provider(provider),
      m_travelMode(travelMode),
      m_options(options),
      m_list(list),
      m_goesOn(std::move(goesOn)) {}

uint32_t RoadLengths::Between(size_t from, size_t to) {
  const std::pair pair = std::minmax(from, to);
  if (const auto known = m_known.find(pair); known != m_known.end()) return known->second;
  if (m_stop.stop_requested()) return 0;
  const uint32_t length = Ask(from, to);
  if (!m_stop.stop_requested()) m_known.emplace(pair, length);
  return length;
}

RoadDistance RoadLengths::ForOptimizer() {
  return [this](size_t from, size_t to) { return Between(from, to); };
}

uint32_t RoadLengths::Ask(size_t from, size_t to) {
  ++m_asked;
  m_provider.Calculate(m_list.At(from), m_list.At(to), m_travelMode, m_options);
  const uint32_t status = Await();
  // An answer may have been quicker than the cancelling.
  if (m_isCancelled) {
    m_stop.request_stop();
    return 0;
  }
  m_hasAnswered |= status == kRouteSuccess || IsNoWay(status);
  if (status == kRouteSuccess) return LengthOf(m_provider.GetLegs());
  m_failures.push_back({from, to, status, m_provider.FailureText()});
  if (!m_hasAnswered && m_failures.size() == kMostUnanswered) {
    m_isGivenUp = true;
    m_stop.request_stop();
  }
  return 0;
}

uint32_t RoadLengths::Await() {
  for (;;) {
    if (!m_isCancelled && m_goesOn && !m_goesOn(m_asked)) {
      m_isCancelled = true;
      m_provider.Cancel();
    }
    const uint32_t status = m_provider.Wait(m_isCancelled ? -1 : kLookEveryMs);
    if (status != kRouteTimedOut) return status;
  }
}
