#include "planner/list_changes.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace {

CGpsPoint WithoutLeg(const CGpsPoint& point) {
  return CGpsPoint(static_cast<const CGpsNamedPoint&>(point));
}

void ClearLegAt(CGpsPointArray& list, size_t index) {
  if (index < list.Count()) list.points[index].ClearRouteLeg();
}

// Puts the points in at the indices that they will have.
void InsertPlaced(CGpsPointArray& list, const std::vector<PlacedPoint>& placed) {
  if (placed.empty()) return;
  if (placed.size() == 1) {
    list.InsertAt(placed.front().index, placed.front().point);
    return;
  }
  // Room at the end, and then everything moves once, from the last on.
  const size_t former = list.Count();
  list.points.resize(former + placed.size());
  size_t source = former;
  size_t target = list.Count();
  for (auto next = placed.rbegin(); next != placed.rend(); ++next) {
    while (target > next->index + 1) list.points[--target] = std::move(list.points[--source]);
    list.points[--target] = next->point;
    ClearLegAt(list, target + 1);
  }
}

std::vector<size_t> IndicesOf(const std::vector<PlacedPoint>& placed) {
  std::vector<size_t> indices;
  indices.reserve(placed.size());
  for (const PlacedPoint& each : placed) indices.push_back(each.index);
  return indices;
}

void Reorder(CGpsPointArray& list, size_t first, const std::vector<uint32_t>& order) {
  std::vector<CGpsPoint> points;
  points.reserve(order.size());
  for (const uint32_t offset : order) points.push_back(std::move(list.At(first + offset)));
  for (size_t i = 0; i < points.size(); ++i) {
    points[i].ClearRouteLeg();
    list.points[first + i] = std::move(points[i]);
  }
  ClearLegAt(list, first + order.size());
}

std::vector<uint32_t> Inverse(const std::vector<uint32_t>& order) {
  std::vector<uint32_t> inverse(order.size());
  for (uint32_t i = 0; i < order.size(); ++i) inverse[order[i]] = i;
  return inverse;
}

void ReplacePoint(CGpsPointArray& list, size_t index, const CGpsPoint& before,
                  const CGpsPoint& after) {
  const bool moved = before.latitude != after.latitude || before.longitude != after.longitude;
  CGpsPoint& point = list.At(index);
  const CGpsNamedPoint& named = after;
  static_cast<CGpsNamedPoint&>(point) = named;
  if (!moved) return;
  point.ClearRouteLeg();
  ClearLegAt(list, index + 1);
}

size_t TextMemory(const std::string& text) {
  return text.capacity() > std::string().capacity() ? text.capacity() + 1 : 0;
}

size_t PointMemory(const CGpsPoint& point) {
  return TextMemory(point.name) + TextMemory(point.comment);
}

size_t PlacedMemory(const std::vector<PlacedPoint>& placed) {
  size_t bytes = placed.capacity() * sizeof(PlacedPoint);
  for (const PlacedPoint& each : placed) bytes += PointMemory(each.point);
  return bytes;
}

struct Apply {
  CGpsPointArray& list;

  void operator()(const PointsAdded& change) const { InsertPlaced(list, change.points); }
  void operator()(const PointsRemoved& change) const {
    RemovePoints(list, IndicesOf(change.points));
  }
  void operator()(const PointChanged& change) const {
    ReplacePoint(list, change.index, change.before, change.after);
  }
  void operator()(const PointsReordered& change) const {
    Reorder(list, change.first, change.order);
  }
  void operator()(const ListRenamed& change) const { list.SetName(change.after); }
};

struct Revert {
  CGpsPointArray& list;

  void operator()(const PointsAdded& change) const { RemovePoints(list, IndicesOf(change.points)); }
  void operator()(const PointsRemoved& change) const { InsertPlaced(list, change.points); }
  void operator()(const PointChanged& change) const {
    ReplacePoint(list, change.index, change.after, change.before);
  }
  void operator()(const PointsReordered& change) const {
    Reorder(list, change.first, Inverse(change.order));
  }
  void operator()(const ListRenamed& change) const { list.SetName(change.before); }
};

struct Memory {
  size_t operator()(const PointsAdded& change) const { return PlacedMemory(change.points); }
  size_t operator()(const PointsRemoved& change) const { return PlacedMemory(change.points); }
  size_t operator()(const PointChanged& change) const {
    return PointMemory(change.before) + PointMemory(change.after);
  }
  size_t operator()(const PointsReordered& change) const {
    return change.order.capacity() * sizeof(uint32_t);
  }
  size_t operator()(const ListRenamed& change) const {
    return TextMemory(change.before) + TextMemory(change.after);
  }
};

}  // namespace

void ApplyChange(CGpsPointArray& list, const ListChange& change) {
  std::visit(Apply{list}, change);
}

void RevertChange(CGpsPointArray& list, const ListChange& change) {
  std::visit(Revert{list}, change);
}

PointsRemoved RemovePoints(CGpsPointArray& list, const std::vector<size_t>& indices) {
  PointsRemoved removed;
  removed.points.reserve(indices.size());
  if (indices.size() == 1) {
    removed.points.push_back({indices.front(), WithoutLeg(list.At(indices.front()))});
    list.RemoveAt(indices.front());
    return removed;
  }
  auto next = indices.begin();
  size_t target = indices.empty() ? list.Count() : indices.front();
  bool clearsLeg = false;
  for (size_t source = target; source < list.Count(); ++source) {
    CGpsPoint& point = list.points[source];
    if (next != indices.end() && *next == source) {
      ++next;
      removed.points.push_back({source, WithoutLeg(point)});
      clearsLeg = true;
      continue;
    }
    if (std::exchange(clearsLeg, false)) point.ClearRouteLeg();
    list.points[target++] = std::move(point);
  }
  list.points.erase(list.points.begin() + static_cast<std::ptrdiff_t>(target), list.points.end());
  return removed;
}

PointsReordered MoveAsReorder(size_t from, size_t to) {
  const size_t target = to > from ? to - 1 : to;
  const size_t first = std::min(from, target);
  std::vector<uint32_t> order(std::max(from, target) - first + 1);
  std::iota(order.begin(), order.end(), 0U);
  if (from < target)
    std::rotate(order.begin(), order.begin() + 1, order.end());
  else
    std::rotate(order.begin(), order.end() - 1, order.end());
  return {first, std::move(order)};
}

size_t MemoryOf(const ListChange& change) {
  return sizeof(ListChange) + std::visit(Memory(), change);
}
