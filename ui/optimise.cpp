#include "ui/optimise.h"

#include <memory>
#include <numeric>
#include <stop_token>

#include "base/measure_text.h"
#include "base/text_ids.h"
#include "model/itinerary_optimizer.h"
#include "services/directions/road_lengths.h"
#include "services/directions/route_wishes.h"
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

/// What a search for a shorter order has found.
struct ShorterOrder {
  std::vector<size_t> order;
  uint64_t before = 0;  ///< metres
  uint64_t after = 0;
  uint32_t failure = kRouteSuccess;  ///< of a provider that does not answer
};

ShorterOrder FindOrder(const CGpsPointArray& list, RoadLengths* roads, std::stop_token stop) {
  const bool byRoad = roads != nullptr;
  CItineraryOptimizer optimizer(list, byRoad ? roads->ForOptimizer() : RoadDistance(),
                                byRoad ? roads->Stop() : std::move(stop));
  ShorterOrder found;
  found.order = optimizer.Optimise(byRoad);
  std::vector<size_t> former(list.Count());
  std::iota(former.begin(), former.end(), size_t{0});
  found.before = optimizer.Length(former, byRoad);
  found.after = optimizer.Length(found.order, byRoad);
  if (byRoad && roads->IsGivenUp()) found.failure = roads->Failures().back().status;
  return found;
}

bool MayAsk(MainWindow& window, const Service& service, size_t count) {
  const uint64_t most = MostRoadQuestions(count);
  if (most <= kManyRequests || IsOnThisMachine(service)) return true;
  const QString question =
      FilledText(kTextManyRequestsQuestion, most, ToUtf8(PlainText(service.labelTextId)));
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
  if (byRoad) progress.inAll = MostRoadQuestions(list.Count());
  ShorterOrder found;
  RunInBackground(&window, kTextOptimising, progress, stop, [&] {
    if (!byRoad) {
      found = FindOrder(list, nullptr, stop.get_token());
      return;
    }
    const auto provider = CServiceRegistry::Instance().CreateRouteProvider(service->id);
    const RouteRequest request = RequestFor({}, settings, *provider);
    RoadLengths roads(*provider, request.travelMode, *request.options, list, [&](size_t asked) {
      progress.done = asked;
      return !stop.stop_requested();
    });
    found = FindOrder(list, &roads, {});
  });
  if (stop.stop_requested()) return;
  if (found.failure != kRouteSuccess) {
    window.Tell(
        FilledText(kTextNoOrderFound, ToUtf8(PlainText(service->labelTextId)), found.failure));
  } else if (found.after >= found.before) {
    window.Tell(Text(kTextAlreadyShort));
  } else {
    work.itineraryView.ApplyOrder(found.order);
    const auto saved = static_cast<uint32_t>(found.before - found.after);
    window.Tell(FilledText(kTextOptimisedBy, FormatDistance(saved, settings.distMiles)));
  }
}
