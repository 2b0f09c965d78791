#include "app/stop_order.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

#include "app/console_text.h"
#include "app/settings_command.h"
#include "base/format_text.h"
#include "base/measure_text.h"
#include "base/text_ids.h"
#include "model/itinerary_optimizer.h"
#include "platform/interruption.h"
#include "services/directions/road_lengths.h"
#include "settings/settings.h"

namespace {

// How long the best order is looked for.
constexpr std::chrono::seconds kTimeToImprove{2};

std::string ShownLength(uint64_t metres) {
  const uint64_t shown = std::min<uint64_t>(metres, std::numeric_limits<uint32_t>::max());
  LoadUserSettings();
  return LocalNumber(FormatDistance(static_cast<uint32_t>(shown), CSettings::Instance().distMiles));
}

std::vector<size_t> ListOrder(const CGpsPointArray& list) {
  std::vector<size_t> order(list.Count());
  std::iota(order.begin(), order.end(), size_t{0});
  return order;
}

/// The questions of one ordering by road, with their progress on a terminal.
class RoadSearch {
 public:
  RoadSearch(const RoadOrder& roads, bool quiet, const CGpsPointArray& list)
      : m_roads(roads),
        m_showsProgress(!quiet && IsErrorTerminal()),
        m_most(MostRoadQuestions(list.Count())),
        m_lengths(roads.provider, roads.travelMode, roads.options, list,
                  [this](size_t asked) { return GoesOn(asked); }) {}

  RoadDistance Distance() { return m_lengths.ForOptimizer(); }
  std::stop_token Stop() const { return m_lengths.Stop(); }

  /// Tells why it has ended early, if it has.
  void Finish(const WideString& source, bool quiet) const {
    if (m_showsProgress) WriteError("\r\x1B[K");
    if (m_lengths.IsCancelled() && !quiet)
      Complain(FormatText(kTextOrderInterrupted, ShownPath(source)));
    if (m_lengths.Failure() != kRouteSuccess) {
      Complain(FormatText(kTextOrderFailed, ShownPath(source), m_roads.providerName,
                          m_lengths.Failure()));
    }
  }

 private:
  bool GoesOn(size_t asked) const {
    if (m_showsProgress) WriteError(fmt::format("\r\x1B[K{}/{}", asked, m_most));
    return !m_watch.IsInterrupted();
  }

  const RoadOrder& m_roads;
  const bool m_showsProgress;
  const uint64_t m_most;
  const InterruptionWatch m_watch;
  RoadLengths m_lengths;
};

}  // namespace

void OrderStops(const WideString& source, const StopOrder& how, CGpsRoute& list) {
  const bool byRoad = how.roads != nullptr;
  std::optional<RoadSearch> roads;
  if (byRoad) roads.emplace(*how.roads, how.quiet, list);
  CItineraryOptimizer optimizer(list, byRoad ? roads->Distance() : RoadDistance(),
                                byRoad ? roads->Stop() : std::stop_token());

  std::vector<size_t> order = optimizer.Optimise(byRoad);
  if (byRoad) roads->Finish(source, how.quiet);
  const uint64_t before = optimizer.Length(ListOrder(list), byRoad);
  const uint64_t after = optimizer.Length(order, byRoad);
  if (!how.quiet)
    Complain(
        FormatText(kTextOptimised, ShownPath(source), ShownLength(after), ShownLength(before)));
  if (how.isBest && !(byRoad && roads->Stop().stop_requested())) {
    order = optimizer.Improve(order, byRoad, kTimeToImprove);
    const uint64_t improved = optimizer.Length(order, byRoad);
    if (!how.quiet)
      Complain(FormatText(kTextImproved, ShownPath(source), ShownLength(after - improved),
                          ShownLength(improved)));
  }
  CGpsWaypointList ordered;
  optimizer.FillInOrder(ordered, order);
  list.Assign(ordered);
}
