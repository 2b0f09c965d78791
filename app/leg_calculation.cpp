#include "app/leg_calculation.h"

#include "app/console_text.h"
#include "app/way_answer.h"
#include "base/format_text.h"
#include "base/text_ids.h"
#include "platform/console.h"

namespace {

constexpr std::string_view kClearLine = "\r\x1B[K";
constexpr int32_t kWithoutLimit = -1;

}  // namespace

bool LegCalculation::ShowsProgress() const { return !m_options.quiet && IsErrorTerminal(); }

bool LegCalculation::MayOrderByRoad(const WideString& source, size_t stops) const {
  constexpr size_t kMostRequests = 500;
  const size_t pairs = stops * (stops - 1) / 2;
  const Service& service = *m_choice.service.provider;
  if (stops < 2 || pairs <= kMostRequests || m_options.directions.force || IsOnThisMachine(service))
    return true;
  Complain(FormatText(kTextManyRequests, ShownPath(source), pairs, service.name));
  return false;
}

RoadDistance LegCalculation::DistancesIn(const CGpsPointArray& list) {
  return [this, &list, asked = size_t{0}](size_t from, size_t to) mutable {
    if (ShowsProgress()) WriteError(fmt::format("{}{}", kClearLine, ++asked));
    CRouteProvider& provider = *m_choice.provider;
    provider.Calculate(list.At(from), list.At(to), m_choice.request.travelMode,
                       *m_choice.request.options);
    const bool isKnown = provider.Wait(kWithoutLimit) == kRouteSuccess;
    if (ShowsProgress()) WriteError(kClearLine);
    uint32_t metres = 0;
    if (!isKnown) return metres;
    for (const CRouteData& leg : provider.GetLegs()) metres += leg.measure.distance;
    return metres;
  };
}

bool LegCalculation::Calculate(const WideString& source, CGpsPointArray& list) {
  const size_t legs = list.LastIndex();
  const auto onLeg = [&](size_t to) {
    if (ShowsProgress()) WriteError(fmt::format("{}{}/{}", kClearLine, to, legs));
    return true;
  };
  const LegsResult result = CalculateLegs(*m_choice.provider, list, m_choice.request.travelMode,
                                          *m_choice.request.options, onLeg);
  if (ShowsProgress()) WriteError(kClearLine);
  m_hasFailures = m_hasFailures || !result.failures.empty();
  Tell(source, list, result);
  return result.calculated > 0 || legs == 0;
}

void LegCalculation::Tell(const WideString& source, const CGpsPointArray& list,
                          const LegsResult& result) const {
  for (const LegFailure& failure : result.failures) {
    const std::string from = NameOfStop(list.points[failure.to - 1], failure.to - 1);
    const std::string to = NameOfStop(list.points[failure.to], failure.to);
    Complain(source, FormatText(kTextNoWay, from, to, failure.status,
                                OutcomeOfWay(failure.status, failure.text).message));
  }
  if (m_options.quiet) return;
  WayTotals totals;
  for (const CGpsPoint& stop : list.points) {
    if (const CRouteLeg* const leg = stop.routeLeg.get()) totals.Add(leg->Measure());
  }
  Complain(FormatText(kTextDirectionsTotals, ShownPath(source), result.calculated, list.LastIndex(),
                      totals.ShownDistance(), totals.ShownDuration()));
}
