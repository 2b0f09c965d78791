#pragma once

#include <cstdint>
#include <map>

#include "planner/point_list_view.h"

/// The lists that the page knows, by their numbers.
class PlannerLists {
 public:
  /// `view` must stay until `Clear`.
  void Add(CPointListView& view) { m_views[view.pinListId] = &view; }
  void Clear() { m_views.clear(); }

  /// Null for a number that no list has.
  CPointListView* Find(int32_t id) const {
    const auto found = m_views.find(id);
    return found == m_views.end() ? nullptr : found->second;
  }
  /// The point, or null when there is none there.
  const CGpsPoint* FindPoint(int32_t id, int64_t index) const {
    const CPointListView* const view = Find(id);
    if (!view || !view->list || index < 0) return nullptr;
    const auto at = static_cast<uint64_t>(index);
    return at < view->list->Count() ? &view->list->points[at] : nullptr;
  }

 private:
  std::map<int32_t, CPointListView*> m_views;
};
