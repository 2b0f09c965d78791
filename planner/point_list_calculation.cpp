// What `CPointListView` does to get the legs of the itinerary and to sum them up.

#include <algorithm>
#include <utility>

#include "base/format_text.h"
#include "base/localized_text.h"
#include "base/measure_text.h"
#include "base/text_ids.h"
#include "planner/network_report.h"
#include "planner/point_list_view.h"

namespace {

std::string NamesText(uint32_t textId, const CGpsPoint& from, const CGpsPoint& to) {
  return FormatText(textId, from.name, to.name);
}

CGpsPoint WithoutLeg(const CGpsPoint& point) {
  return CGpsPoint(static_cast<const CGpsNamedPoint&>(point));
}

}  // namespace

void CPointListView::CalculateFrom(int64_t index) {
  if (!list || kind != PinKind::kItinerary) return;
  if (index == -1 || index == -2) {
    CalculateAll(true);
    return;
  }
  if (index < 1 || static_cast<uint64_t>(index) >= list->Count() || m_isCalculating) return;
  ShowHidden();
  const auto to = static_cast<size_t>(index);
  const uint64_t edits = m_editCount;
  m_isCalculating = true;
  const LegResult result = CalculateLeg(to - 1, to);
  if (EndCalculation() || edits != m_editCount) return;
  if (result != LegResult::kCalculated) ShowMessage({});
  if (result != LegResult::kEnded) {
    UpdateTotals();
    SelectRow(index);
  } else if (statusField && !list->points[to].GetRouteLeg()) {
    statusField->ShowTotals({});
  }
}

void CPointListView::CalculateAll(bool showProgress) {
  if (kind != PinKind::kItinerary) return;
  const bool shows = showProgress && progress && m_window;
  if (m_isCalculating) {
    m_progressWaits = m_progressWaits || (shows && !m_showsProgress);
    return;
  }
  ShowHidden();
  m_isCalculating = true;
  RunCalculation(shows);
  EndCalculation();
}

bool CPointListView::EndCalculation() {
  m_isCalculating = false;
  const bool isEdited = std::exchange(m_afterEditWaits, false);
  if (std::exchange(m_progressWaits, false))
    CalculateAll(true);
  else if (isEdited)
    AfterEdit();
  else
    return false;
  return true;
}

bool CPointListView::GoesOn(uint64_t edits) {
  if (m_window && (m_showsProgress || later)) m_window->DispatchMessages();
  return edits == m_editCount && !m_progressWaits && !(m_showsProgress && progress->IsCancelled());
}

void CPointListView::RunCalculation(bool showProgress) {
  autoCalc = m_settings.autoCalc;
  if (!list || list->points.empty()) return;
  const uint64_t edits = m_editCount;
  CallPage([](CPlannerScript& page) { page.CloseInfoWindow(); });
  if (edits != m_editCount) return;

  const size_t last = list->LastIndex();
  const CGpsPoint from = WithoutLeg(list->points.front());
  const CGpsPoint to = WithoutLeg(list->points.back());
  m_showsProgress = showProgress;
  if (showProgress)
    progress->Open(NamesText(kTextGetDirections, from, to), m_settings.routeProvider, last);

  bool ended = false;
  bool passesFailuresOver = false;
  size_t calculated = 0;
  for (size_t i = 0; i < last && edits == m_editCount; ++i) {
    const LegResult result = CalculateLeg(i, i + 1, &passesFailuresOver);
    if (result == LegResult::kCalculated) ++calculated;
    ended = result == LegResult::kEnded;
    if (ended) break;
    if (showProgress) progress->Step();
    if (!GoesOn(edits)) break;
  }

  m_showsProgress = false;
  const bool isOvertaken = edits != m_editCount;
  if (!ended && !isOvertaken)
    UpdateTotals();
  else if (statusField && !isOvertaken)
    statusField->ShowTotals({});
  if (showProgress) progress->Close();
  if (isOvertaken) return;
  // A run that was ended, or had a leg that failed, is no success.
  if (last != 0)
    ShowMessage(calculated == last ? NamesText(kTextDirectionsRetrieved, from, to) : std::string());
}

CPointListView::LegResult CPointListView::CalculateLeg(size_t from, size_t to,
                                                       bool* passesFailuresOver) {
  if (!m_directions) return LegResult::kEnded;
  const uint64_t edits = m_editCount;
  const std::vector<CGpsPoint> points{WithoutLeg(list->points[from]), WithoutLeg(list->points[to])};
  const std::string text = NamesText(kTextGetDirections, points.front(), points.back());
  if (m_showsProgress) progress->SetText(text);
  ShowMessage(text);

  const std::optional<DirectionsAnswer> answer = AskForLeg(points);
  if (!answer) return LegResult::kEnded;
  if (answer->status == 0 && !answer->legs.empty()) {
    LegArrived(to, *answer);
    ShowMessage(NamesText(kTextDirectionsRetrieved, points.front(), points.back()));
    return LegResult::kCalculated;
  }
  if (!statusField) return LegResult::kFailed;
  CGpsPoint& point = list->points[to];
  const bool hadLeg = point.GetRouteLeg() != nullptr;
  point.ClearRouteLeg();
  m_rows.RefreshRows(to, to);
  if (hadLeg) RefreshPins(to);
  if (passesFailuresOver && *passesFailuresOver) return LegResult::kFailed;
  const std::string failure = NamesText(kTextNoDirections, points.front(), points.back());
  constexpr uint32_t kStyle = kBoxOkCancel | kBoxWarningIcon;
  const int32_t box = passesFailuresOver
                          ? m_window->ShowRepeatedBox(failure, kStyle, *passesFailuresOver)
                          : m_window->ShowBox(failure, kStyle);
  // The list may have changed behind the box.
  return box == kAnswerOk && edits == m_editCount ? LegResult::kFailed : LegResult::kEnded;
}

std::optional<DirectionsAnswer> CPointListView::AskForLeg(const std::vector<CGpsPoint>& points) {
  const uint64_t edits = m_editCount;
  for (;;) {
    DirectionsAnswer answer = m_directions->Ask(points, [&] { return GoesOn(edits); });
    if (edits != m_editCount || m_progressWaits) return std::nullopt;
    if (answer.status < kTransportStatus) return answer;
    if (m_showsProgress && progress->IsCancelled()) return std::nullopt;
    const int32_t box = ReportTransportError(*m_window, answer.status - kTransportStatus);
    if (box != kAnswerRetry || edits != m_editCount) return std::nullopt;
  }
}

void CPointListView::LegArrived(size_t to, const DirectionsAnswer& answer) {
  CRouteLeg leg;
  leg.route = answer.legs.front();
  leg.provider = answer.provider;
  list->points[to].SetRouteLeg(leg);
  m_rows.RefreshRows(to, to);
  CallPage(
      [this, to](CPlannerScript& page) { page.AddRoute(pinListId, static_cast<int32_t>(to)); });
}

void CPointListView::UpdateTotals() {
  if (!planner || !list) return;
  uint32_t distance = 0;
  uint32_t duration = 0;
  bool broken = false;
  for (size_t i = 1; i < list->Count(); ++i) {
    CRouteLeg* const leg = list->points[i].GetRouteLeg();
    if (!leg) {
      broken = true;
      continue;
    }
    broken = broken || leg->Measure().flag == 0;
    if (!broken) {
      distance += leg->Measure().distance;
      duration += leg->Measure().duration;
    }
    leg->TotalDistance() = broken ? 0 : distance;
    leg->TotalDuration() = broken ? 0 : duration;
  }
  RefreshRowsFrom(0);
  if (!statusField) return;
  std::string text;
  if (!broken) {
    text = std::string(LoadTextUtf8(kTextTotalDistance)) +
           FormatDistance(distance, m_settings.distMiles);
    if (duration != 0) text += " (" + FormatDuration(duration) + ")";
  }
  statusField->ShowTotals(text);
}

std::vector<CGpsPoint> CPointListView::PreviewPoints(int64_t index, const CGpsCoordinate& position,
                                                     bool moved) const {
  if (!list || index < 0 || list->Count() < 2) return {};
  CGpsPoint dragged;
  static_cast<CGpsCoordinate&>(dragged) = position;
  std::vector<CGpsPoint> points;
  const auto add = [&](uint64_t at) {
    if (at < list->Count()) points.push_back(WithoutLeg(list->points[at]));
  };
  const auto at = static_cast<uint64_t>(index);
  if (at > 0) add(at - 1);
  points.push_back(dragged);
  add(moved ? at + 1 : at);
  if (points.size() < 2) points.clear();
  return points;
}
