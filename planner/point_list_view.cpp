#include "planner/point_list_view.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/format_text.h"
#include "base/text_ids.h"
#include "platform/debug_log.h"

namespace {

// So many points come in without a progress window.
constexpr size_t kManyPoints = 300;

void CheckIndex(const CGpsPointArray& list, size_t index) {
  if (index >= list.Count()) static_cast<void>(list.At(index));
}

}  // namespace

CPointListView::CPointListView(int32_t listId, PinKind listKind, PointRows& rows,
                               CSettings& settings)
    : pinListId(listId), kind(listKind), m_rows(rows), m_settings(settings) {}

void CPointListView::SetCalculation(RoadDirections* directions, PlannerWindow* window) {
  m_directions = directions;
  m_window = window;
}

void CPointListView::Close() {
  ++m_editCount;
  planner = nullptr;
  statusField = nullptr;
  m_directions = nullptr;
}

void CPointListView::CallPage(PageCall call) {
  if (!planner) return;
  m_pageCalls.push_back(std::move(call));
  SendPageCalls();
}

void CPointListView::SendPageCalls() {
  if (m_editDepth > 0 || m_sendsPageCalls) return;
  m_sendsPageCalls = true;
  while (!m_pageCalls.empty()) {
    const PageCall call = std::move(m_pageCalls.front());
    m_pageCalls.pop_front();
    try {
      if (planner) call(*planner);
    } catch (const std::exception& failure) {
      DebugLog(std::string("page: ") + failure.what());
    }
  }
  m_sendsPageCalls = false;
}

void CPointListView::ShowMessage(std::string_view text) const {
  if (statusField) statusField->ShowMessage(text);
}

void CPointListView::Hide() {
  EditScope edit(*this);
  m_history.Clear();
  m_rows.ResetRows(0);
  CallPage([=, this](CPlannerScript& page) { page.ClearPushPins(pinListId); });
  m_isHidden = true;
}

void CPointListView::ShowHidden() {
  if (!std::exchange(m_isHidden, false) || !list) return;
  m_rows.ResetRows(list->Count());
  ShowAllPins();
}

void CPointListView::RefreshRowsFrom(size_t first) {
  if (!m_isHidden && first < list->Count()) m_rows.RefreshRows(first, list->LastIndex());
}

void CPointListView::RefreshPins(size_t first) {
  CallPage([=, this](CPlannerScript& page) {
    page.RefreshPushPins(pinListId, static_cast<int32_t>(first));
  });
}

void CPointListView::Rebuild() {
  m_isHidden = false;
  EditScope edit(*this);
  m_history.Clear();
  ShowAll();
  edit.End();
  if (kind == PinKind::kItinerary) UpdateTotals();
}

void CPointListView::ShowAll() {
  m_rows.ResetRows(list ? list->Count() : 0);
  ShowAllPins();
  CallPage([](CPlannerScript& page) { page.AutoViewMap(); });
}

void CPointListView::ShowAllPins() {
  CallPage([=, this](CPlannerScript& page) { page.ClearPushPins(pinListId); });
  RefreshPins(0);
  for (size_t i = 0; list && i < list->Count(); ++i) {
    if (!list->points[i].GetRouteLeg()) continue;
    CallPage(
        [=, this](CPlannerScript& page) { page.AddRoute(pinListId, static_cast<int32_t>(i)); });
  }
}

void CPointListView::ShowSettings() {
  if (!list) return;
  RefreshRowsFrom(0);
  UpdateTotals();
}

void CPointListView::AfterEdit() {
  if (kind != PinKind::kItinerary) return;
  if (m_isCalculating) {
    m_afterEditWaits = true;
    return;
  }
  autoCalc = m_settings.autoCalc;
  if (autoCalc && !later) return CalculateAll(false);
  UpdateTotals();
  if (!autoCalc || std::exchange(m_runWaits, true)) return;
  later([this] {
    m_runWaits = false;
    CalculateAll(false);
  });
}

int64_t CPointListView::FirstSelectedRow() const {
  const std::vector<size_t> selected = m_rows.SelectedRows();
  return selected.empty() ? kNoRow : static_cast<int64_t>(selected.front());
}

void CPointListView::SelectRow(int64_t index) {
  m_rows.ClearSelection();
  if (index == kNoRow) return;
  m_rows.SelectRow(static_cast<size_t>(index));
  CallPage([=, this](CPlannerScript& page) {
    page.ViewPushPin(pinListId, static_cast<int32_t>(index));
  });
}

bool CPointListView::InsertRow(size_t index) {
  m_rows.InsertRow(index);
  CallPage([=, this](CPlannerScript& page) {
    page.InsertPushPin(pinListId, static_cast<int32_t>(index));
  });
  if (!batch || !progress) return true;
  progress->Step();
  return !progress->IsCancelled();
}

void CPointListView::AddPoint(const CGpsPoint& point) {
  if (!list) return;
  EditScope edit(*this);
  const int64_t selected = FirstSelectedRow();
  const bool appends = selected == kNoRow || static_cast<size_t>(selected) >= list->LastIndex();
  const size_t index = appends ? list->Count() : static_cast<size_t>(selected) + 1;
  list->InsertAt(index, point);
  m_history.Add({PointsAdded{{{index, CGpsPoint(static_cast<const CGpsNamedPoint&>(point))}}}});
  InsertRow(index);
  RefreshRowsFrom(index == 0 ? 0 : index - 1);
  SelectRow(static_cast<int64_t>(index));
}

void CPointListView::InsertPoint(size_t index, const CGpsPoint& point) {
  if (!list) return;
  EditScope edit(*this);
  list->InsertAt(index, point);
  m_history.Add({PointsAdded{{{index, CGpsPoint(static_cast<const CGpsNamedPoint&>(point))}}}});
  InsertRow(index);
  RefreshRowsFrom(index == 0 ? 0 : index - 1);
  SelectRow(static_cast<int64_t>(index));
  edit.End();
  AfterEdit();
}

void CPointListView::InsertPoints(size_t index, std::vector<CGpsPoint> points) {
  if (!list || points.empty()) return;
  if (index > list->Count()) CheckIndex(*list, index);
  EditScope edit(*this);
  PointsAdded added;
  added.points.reserve(points.size());
  for (CGpsPoint& point : points) {
    point.ClearRouteLeg();
    added.points.push_back({index + added.points.size(), std::move(point)});
  }
  ApplyChange(*list, added);

  batch = progress && added.points.size() > kManyPoints;
  if (batch)
    progress->Open(FormatText(kTextAddingWaypoints, added.points.size()), m_settings.routeProvider,
                   added.points.size());
  size_t shown = 0;
  while (shown < added.points.size() && InsertRow(added.points[shown].index)) ++shown;
  if (std::exchange(batch, false)) progress->Close();
  if (shown < added.points.size()) {
    // Cancelled: the point whose row came last stays, the others behind it go again.
    std::vector<size_t> surplus;
    for (size_t i = shown + 1; i < added.points.size(); ++i)
      surplus.push_back(added.points[i].index);
    RemovePoints(*list, surplus);
    added.points.resize(shown + 1);
  }
  m_history.Add({std::move(added)});
  RefreshRowsFrom(index == 0 ? 0 : index - 1);
  SelectRow(static_cast<int64_t>(index));
  edit.End();
  AfterEdit();
}

void CPointListView::SetPosition(size_t index, const CGpsPoint& position) {
  if (!list) return;
  CheckIndex(*list, index);
  CGpsPoint changed(static_cast<const CGpsNamedPoint&>(list->points[index]));
  // NOLINTNEXTLINE(cppcoreguidelines-slicing): the rest stays.
  static_cast<CGpsCoordinate&>(changed) = position;
  ReplacePoint(index, changed, true);
}

void CPointListView::ChangePoint(size_t index, const CGpsPoint& point) {
  if (!list) return;
  CheckIndex(*list, index);
  const CGpsPoint& former = list->points[index];
  const bool moves = former.latitude != point.latitude || former.longitude != point.longitude;
  ReplacePoint(index, point, moves);
}

void CPointListView::ReplacePoint(size_t index, const CGpsPoint& values, bool clearsLegs) {
  EditScope edit(*this);
  CGpsPoint& point = list->points[index];
  PointChanged change{index, CGpsPoint(static_cast<const CGpsNamedPoint&>(point)),
                      CGpsPoint(static_cast<const CGpsNamedPoint&>(values))};
  // NOLINTNEXTLINE(cppcoreguidelines-slicing): the leg is not among the values.
  static_cast<CGpsNamedPoint&>(point) = values;
  m_history.Add({std::move(change)});
  const bool hasNext = index + 1 < list->Count();
  if (clearsLegs) {
    point.ClearRouteLeg();
    if (hasNext) list->points[index + 1].ClearRouteLeg();
  }
  m_rows.RefreshRows(index, clearsLegs && hasNext ? index + 1 : index);
  RefreshPins(index);
  SelectRow(static_cast<int64_t>(index));
  edit.End();
  AfterEdit();
}

void CPointListView::RenamePoint(size_t index, std::string_view name) {
  if (!list) return;
  CheckIndex(*list, index);
  ShowHidden();
  CGpsPoint& point = list->points[index];
  PointChanged change{index, CGpsPoint(static_cast<const CGpsNamedPoint&>(point)), {}};
  point.name = name;
  change.after = CGpsPoint(static_cast<const CGpsNamedPoint&>(point));
  m_history.Add({std::move(change)});
  ++m_renameCount;
  m_rows.RefreshRows(index, index);
  RefreshPins(index);
}

void CPointListView::MoveSelectedUp() { MoveSelected(true); }

void CPointListView::MoveSelectedDown() { MoveSelected(false); }

void CPointListView::MoveSelected(bool up) {
  if (!list || list->points.empty()) return;
  const std::vector<size_t> selected = m_rows.SelectedRows();
  const auto moves = [&](size_t index) { return up ? index > 0 : index < list->LastIndex(); };
  if (std::none_of(selected.begin(), selected.end(), moves)) return;
  // Which rows are selected afterwards; the row in front of, or behind, one that moves may be too.
  std::vector<bool> marks(list->Count(), false);
  for (const size_t index : selected) marks.at(index) = true;

  EditScope edit(*this);
  EditStep step;
  size_t first = list->Count();
  size_t last = 0;
  const auto move = [&](size_t index) {
    if (!moves(index)) return;
    const size_t other = up ? index - 1 : index + 1;
    PointsReordered change = MoveAsReorder(index, up ? index - 1 : index + 2);
    ApplyChange(*list, change);
    step.push_back(std::move(change));
    const bool mark = marks[other];
    marks[other] = marks[index];
    marks[index] = mark;
    first = std::min({first, index, other});
    last = std::max({last, index, other});
  };
  // From the end that moves first, so that no row moves twice.
  if (up)
    std::for_each(selected.begin(), selected.end(), move);
  else
    std::for_each(selected.rbegin(), selected.rend(), move);

  m_history.Add(std::move(step));
  m_rows.RefreshRows(first, std::min(last + 1, list->LastIndex()));
  RefreshPins(first);
  m_rows.ClearSelection();
  for (size_t i = 0; i < marks.size(); ++i) {
    if (marks[i]) m_rows.SelectRow(i);
  }
  edit.End();
  AfterEdit();
}

void CPointListView::MoveRow(size_t from, size_t to) {
  if (!list || from == to) return;
  CheckIndex(*list, std::max(from, to));
  EditScope edit(*this);
  PointsReordered change = MoveAsReorder(from, from < to ? to + 1 : to);
  ApplyChange(*list, change);
  m_history.Add({std::move(change)});
  const size_t first = std::min(from, to);
  m_rows.RefreshRows(first, std::min(std::max(from, to) + 1, list->LastIndex()));
  RefreshPins(first);
  edit.End();
  AfterEdit();
}

void CPointListView::ApplyOrder(const std::vector<size_t>& order) {
  if (!list) return;
  std::vector<bool> seen(list->Count(), false);
  PointsReordered change{0, {}};
  change.order.reserve(order.size());
  for (const size_t index : order) {
    if (index >= seen.size() || seen[index]) throw std::invalid_argument("no order of the list");
    seen[index] = true;
    change.order.push_back(static_cast<uint32_t>(index));
  }
  if (order.size() != seen.size()) throw std::invalid_argument("no order of the list");
  if (std::is_sorted(order.begin(), order.end())) return;
  EditScope edit(*this);
  ApplyChange(*list, change);
  m_history.Add({std::move(change)});
  RefreshRowsFrom(0);
  RefreshPins(0);
  edit.End();
  AfterEdit();
}

void CPointListView::RemoveRows(int64_t index) {
  if (!list) return;
  std::vector<size_t> indices = index == kSelectedRows
                                    ? m_rows.SelectedRows()
                                    : std::vector<size_t>{static_cast<size_t>(index)};
  if (indices.empty()) return;
  CheckIndex(*list, indices.back());
  EditScope edit(*this);
  PointsRemoved removed = RemovePoints(*list, indices);
  ShowRemoved(removed.points);
  m_history.Add({std::move(removed)});
  edit.End();
  AfterEdit();
}

void CPointListView::RemoveAll() {
  if (!list) return;
  EditScope edit(*this);
  ClearRoute();
  CallPage([=, this](CPlannerScript& page) { page.ClearPushPins(pinListId); });
  m_rows.ResetRows(0);
  EditStep step;
  if (!list->points.empty()) {
    PointsRemoved removed;
    removed.points.reserve(list->Count());
    for (CGpsPoint& point : list->points)
      removed.points.push_back({removed.points.size(), std::move(point)});
    step.emplace_back(std::move(removed));
  }
  if (!list->name.empty()) step.emplace_back(ListRenamed{list->name, {}});
  list->Clear();
  m_history.Add(std::move(step));
  edit.End();
  AfterEdit();
}

void CPointListView::ReverseAll() {
  if (!list) return;
  EditScope edit(*this);
  ClearRoute();
  list->Reverse();
  if (list->Count() > 1) {
    PointsReordered change{0, std::vector<uint32_t>(list->Count())};
    for (uint32_t i = 0; i < change.order.size(); ++i)
      change.order[i] = static_cast<uint32_t>(change.order.size()) - 1 - i;
    m_history.Add({std::move(change)});
  }
  RefreshRowsFrom(0);
  RefreshPins(0);
  SelectRow(kNoRow);
  edit.End();
  AfterEdit();
}

void CPointListView::ClearRoute() {
  if (!list) return;
  EditScope edit(*this);
  for (CGpsPoint& point : list->points) point.ClearRouteLeg();
  ShowMessage({});
  if (statusField) statusField->ShowTotals({});
  CallPage([](CPlannerScript& page) { page.CloseInfoWindow(); });
  CallPage([=, this](CPlannerScript& page) { page.ClearRoutes(pinListId); });
  RefreshRowsFrom(0);
}
