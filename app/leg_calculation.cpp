#include "app/leg_calculation.h"

#include "app/console_text.h"
#include "app/way_answer.h"
#include "base/format_text.h"
#include "base/text_ids.h"
#include "platform/console.h"
#include "services/service_access.h"

namespace {

constexpr std::string_view kClearLine = "\r\x1B[K";

}  // namespace

bool LegCalculation::ShowsProgress() const { return !m_options.quiet && IsErrorTerminal(); }

std::string LegCalculation::WhyNotOrderByRoad(const WideString& source, size_t stops) const {
  constexpr size_t kMostRequests = 500;
  const size_t pairs = stops * (stops - 1) / 2;
  const Service& service = *m_choice.service.provider;
  if (stops < 2 || pairs <= kMostRequests || m_options.force || IsOnThisMachine(service)) return {};
  return FormatText(kTextManyRequests, ShownPath(source), pairs, service.name);
}

RoadOrder LegCalculation::Roads() const {
  return {*m_choice.provider, m_choice.service.provider->name, m_choice.request.travelMode,
          *m_choice.request.options};
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
