#include "ui/optimise.h"

#include <memory>
#include <numeric>
#include <stop_token>

#include "base/measure_text.h"
#include "base/text_ids.h"
#include "model/itinerary_optimizer.h"
#include "planner/route_request.h"
#include "services/directions/route_provider.h"
#include "services/service_access.h"
#include "services/service_registry.h"
#include "services/service_table.h"
#include "settings/settings.h"
#include "ui/background_work.h"
#include "ui/boxes.h"
#include "ui/main_window.h"
#include "ui/text.h"
#include "ui/workspace.h"

namespace {

// More requests than these are not made without a question.
constexpr uint64_t kManyRequests = 500;

/// The provider of the settings, asked for the length of the way between two stops.
class RoadMeasure {
 public:
  RoadMeasure(const CSettings& settings, const CGpsPointArray& list, WorkProgress& progress,
              std::stop_token stop)
      : m_provider(CServiceRegistry::Instance().CreateRouteProvider(settings.routeProvider)),
        m_list(list),
        m_progress(progress),
        m_stop(std::move(stop)) {
    if (m_provider) m_request = RequestFromSettings(settings, *m_provider);
  }

  bool IsUsable() const { return m_provider != nullptr; }

  uint32_t Between(size_t from, size_t to) {
    if (m_stop.stop_requested()) return 0;
    m_provider->Calculate(m_list.points[from], m_list.points[to], m_request.travelMode,
                          *m_request.options);
    const std::stop_callback cancel(m_stop, [this] { m_provider->Cancel(); });
    const uint32_t status = m_provider->Wait(-1);
    ++m_progress.done;
    if (status != kRouteSuccess || m_provider->GetLegs().empty()) return 0;
    return m_provider->GetLegs().front().measure.distance;
  }

 private:
  std::unique_ptr<CRouteProvider> m_provider;
  RouteRequest m_request;
  const CGpsPointArray& m_list;
  WorkProgress& m_progress;
  std::stop_token m_stop;
};

bool MayAsk(MainWindow& window, const Service& service, size_t count) {
  const uint64_t pairs = uint64_t{count} * (count - 1) / 2;
  if (pairs <= kManyRequests || service.id == provider::kStraight) return true;
  const QString question = FilledText(kTextManyRequests, pairs, ToUtf8(PlainText(service.labelTextId)));
  return ShowMessageBox(&window, question, kBoxYesNo | kBoxQuestionIcon) == kAnswerYes;
}

}  // namespace

void OptimiseItinerary(MainWindow& window, const CSettings& settings) {
  Workspace& work = window.Work();
  // Nothing may change under the optimiser; the window shows a list of its own meanwhile.
  const CGpsRoute list(work.driver.current);
  const Service* const service = FindService(settings.routeProvider);
  const bool byRoad = settings.optimizeUseDirection && service && IsUsable(*service);
  if (byRoad && !MayAsk(window, *service, list.Count())) return;

  WorkProgress progress;
  std::stop_source stop;
  if (byRoad) progress.inAll = uint64_t{list.Count()} * (list.Count() - 1) / 2;
  std::vector<size_t> order;
  uint64_t before = 0;
  uint64_t after = 0;
  RunInBackground(&window, kTextOptimising, progress, stop, [&] {
    RoadMeasure measure(settings, list, progress, stop.get_token());
    RoadDistance road;
    if (byRoad && measure.IsUsable())
      road = [&measure](size_t from, size_t to) { return measure.Between(from, to); };
    CItineraryOptimizer optimizer(list, road, stop.get_token());
    const bool useDirections = static_cast<bool>(road);
    order = optimizer.Optimise(useDirections);
    std::vector<size_t> former(list.Count());
    std::iota(former.begin(), former.end(), size_t{0});
    before = optimizer.Length(former, useDirections);
    after = optimizer.Length(order, useDirections);
  });
  if (stop.stop_requested()) return;
  if (after >= before) {
    window.Tell(Text(kTextAlreadyShort));
    return;
  }
  work.itineraryView.ApplyOrder(order);
  const auto saved = static_cast<uint32_t>(before - after);
  window.Tell(FilledText(kTextOptimisedBy, FormatDistance(saved, settings.distMiles)));
}
