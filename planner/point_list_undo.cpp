// What `CPointListView` does to take steps back and to make them again.

#include <algorithm>

#include "planner/point_list_view.h"

namespace {

// A step that brings or takes more points than this shows the whole list anew.
constexpr size_t kMuch = 100;

struct ChangedPoints {
  size_t operator()(const PointsAdded& change) const { return change.points.size(); }
  size_t operator()(const PointsRemoved& change) const { return change.points.size(); }
  size_t operator()(const PointChanged&) const { return 1; }
  size_t operator()(const PointsReordered& change) const { return change.order.size(); }
  size_t operator()(const ListRenamed&) const { return 0; }
};

bool IsMuch(const EditStep& step) {
  size_t points = 0;
  for (const ListChange& change : step) points += std::visit(ChangedPoints(), change);
  return points > kMuch;
}

}  // namespace

void CPointListView::Undo() {
  if (!list || !CanUndo()) return;
  EditScope edit(*this);
  const EditStep& step = m_history.Undo();
  const bool much = IsMuch(step);
  for (auto at = step.rbegin(); at != step.rend(); ++at) {
    const ListChange& change = *at;
    RevertChange(*list, change);
    if (!much) ShowChange(change, false);
  }
  if (much) ShowAll();
  edit.End();
  AfterEdit();
}

void CPointListView::Redo() {
  if (!list || !CanRedo()) return;
  EditScope edit(*this);
  const EditStep& step = m_history.Redo();
  const bool much = IsMuch(step);
  for (const ListChange& change : step) {
    ApplyChange(*list, change);
    if (!much) ShowChange(change, true);
  }
  if (much) ShowAll();
  edit.End();
  AfterEdit();
}

void CPointListView::ShowChange(const ListChange& change, bool made) {
  if (const auto* added = std::get_if<PointsAdded>(&change)) {
    if (made)
      ShowAdded(added->points);
    else
      ShowRemoved(added->points);
  } else if (const auto* removed = std::get_if<PointsRemoved>(&change)) {
    if (made)
      ShowRemoved(removed->points);
    else
      ShowAdded(removed->points);
  } else if (const auto* changed = std::get_if<PointChanged>(&change)) {
    m_rows.RefreshRows(changed->index, std::min(changed->index + 1, list->LastIndex()));
    RefreshPins(changed->index);
    SelectRow(static_cast<int64_t>(changed->index));
  } else if (const auto* reordered = std::get_if<PointsReordered>(&change)) {
    const size_t end = reordered->first + reordered->order.size();
    m_rows.RefreshRows(reordered->first, std::min(end, list->LastIndex()));
    RefreshPins(reordered->first);
  }
}

void CPointListView::ShowAdded(const std::vector<PlacedPoint>& placed) {
  for (const PlacedPoint& each : placed) InsertRow(each.index);
  const size_t first = placed.front().index;
  RefreshRowsFrom(first == 0 ? 0 : first - 1);
  SelectRow(static_cast<int64_t>(first));
}

void CPointListView::ShowRemoved(const std::vector<PlacedPoint>& placed) {
  // From the last on, so that the indices in front stay what they are; neighbours go at once.
  for (size_t end = placed.size(); end > 0;) {
    size_t start = end - 1;
    while (start > 0 && placed[start - 1].index + 1 == placed[start].index) --start;
    m_rows.RemoveRows(placed[start].index, end - start);
    end = start;
  }
  for (auto at = placed.rbegin(); at != placed.rend(); ++at) {
    const PlacedPoint& each = *at;
    CallPage([this, index = each.index](CPlannerScript& page) {
      page.DelPushPin(pinListId, static_cast<int32_t>(index));
    });
  }
  RefreshRowsFrom(placed.front().index);
}
