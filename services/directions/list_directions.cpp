#include "services/directions/list_directions.h"

#include <iterator>
#include <utility>

namespace {

// Services may cut the way between two points into several legs, at a ferry for instance.
void AppendLeg(CRouteData& leg, CRouteData& next) {
  leg.steps.insert(leg.steps.end(), std::make_move_iterator(next.steps.begin()),
                   std::make_move_iterator(next.steps.end()));
  leg.path.points.splice(leg.path.points.end(), next.path.points);
  leg.shape.points.points.splice(leg.shape.points.points.end(), next.shape.points.points);
  leg.measure.distance += next.measure.distance;
  leg.measure.duration += next.measure.duration;
  leg.measure.flag = leg.measure.flag & next.measure.flag;
}

}  // namespace

LegTotals UpdateLegTotals(CGpsPointArray& list) {
  LegTotals totals;
  bool isFirst = true;
  for (CGpsPoint& point : list.points) {
    CRouteLeg* const leg = point.GetRouteLeg();
    const bool hasMeasure = leg != nullptr && leg->Measure().flag != 0;
    if (!isFirst && !hasMeasure) totals.complete = false;
    if (!isFirst && totals.complete) {
      totals.distance += leg->Measure().distance;
      totals.duration += leg->Measure().duration;
    }
    if (leg != nullptr) {
      const bool isKnown = !isFirst && totals.complete;
      leg->totalDistance = isKnown ? totals.distance : 0;
      leg->totalDuration = isKnown ? totals.duration : 0;
    }
    isFirst = false;
  }
  return totals;
}

LegFailure CalculateLeg(CRouteProvider& provider, CGpsPointArray& list, size_t to,
                        uint32_t travelMode, const CRouteOptions& options,
                        const std::stop_token& stop) {
  constexpr int32_t kWithoutLimit = -1;
  CGpsPoint& target = list.At(to);
  target.ClearRouteLeg();
  const std::stop_callback cancel(stop, [&provider] { provider.Cancel(); });
  provider.Calculate(list.At(to - 1), target, travelMode, options);
  // A stop right before the calculation has begun has found nothing to cancel.
  if (stop.stop_requested()) provider.Cancel();
  LegFailure result{to, provider.Wait(kWithoutLimit), {}};
  CRouteProvider::Legs& legs = provider.GetLegs();
  if (result.status == kRouteSuccess && legs.empty()) result.status = kRouteNothingFound;
  if (result.status != kRouteSuccess) {
    result.text = provider.FailureText();
    return result;
  }
  for (size_t i = 1; i < legs.size(); ++i) AppendLeg(legs[0], legs[i]);
  auto leg = std::make_unique<CRouteLeg>();
  leg->route = std::move(legs[0]);
  leg->provider = provider.GetId();
  target.routeLeg = std::move(leg);
  return result;
}

LegsResult CalculateLegs(CRouteProvider& provider, CGpsPointArray& list, uint32_t travelMode,
                         const CRouteOptions& options, const std::function<bool(size_t to)>& onLeg,
                         const std::stop_token& stop) {
  LegsResult result;
  for (size_t to = 1; to < list.Count() && !result.cancelled; ++to) {
    if (stop.stop_requested() || (onLeg && !onLeg(to))) {
      result.cancelled = true;
      break;
    }
    LegFailure leg = CalculateLeg(provider, list, to, travelMode, options, stop);
    if (leg.status == kRouteSuccess) {
      ++result.calculated;
    } else if (stop.stop_requested()) {
      result.cancelled = true;
    } else {
      result.failures.push_back(std::move(leg));
    }
  }
  UpdateLegTotals(list);
  return result;
}

void ReplaceStopsByWay(CGpsPointArray& list) {
  CGpsTrack way;
  for (CGpsPoint& stop : list.points) {
    if (const CRouteLeg* const leg = stop.GetRouteLeg()) way.AppendPoints(leg->Shape().points);
    stop.ClearRouteLeg();
  }
  list.points.clear();
  list.TakePoints(way);
}
