#include "model/point_list.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "model/point_order.h"
#include "model/route_leg.h"
#include "model/simplify.h"

namespace {

[[noreturn]] void ThrowBadIndex() { throw std::out_of_range("invalid deque<T> subscript"); }

// A point of a polyline as an element of a list: with its leg where it has one.
CGpsPoint ToListPoint(const CGpsNamedPoint& point) {
  if (const auto* full = dynamic_cast<const CGpsPoint*>(&point)) return *full;
  return CGpsPoint(point);
}

std::unique_ptr<CGpsNamedPoint> CopyOf(const CGpsNamedPoint& point) {
  if (const auto* full = dynamic_cast<const CGpsPoint*>(&point))
    return std::make_unique<CGpsPoint>(*full);
  if (const auto* step = dynamic_cast<const CGpsRouteStep*>(&point))
    return std::make_unique<CGpsRouteStep>(*step);
  return std::make_unique<CGpsNamedPoint>(point);
}

std::vector<CGpsPoint*> PointersTo(PointQueue& points) {
  std::vector<CGpsPoint*> pointers;
  pointers.reserve(points.size());
  for (CGpsPoint& point : points) pointers.push_back(&point);
  return pointers;
}

// Lets `points` hold just the given ones of its points, in the given order.
void Rearrange(PointQueue& points, const std::vector<CGpsPoint*>& order) {
  PointQueue arranged;
  for (CGpsPoint* point : order) arranged.push_back(std::move(*point));
  points.swap(arranged);
}

}  // namespace

CGpsPointList::CGpsPointList(const CGpsPointList& other) {
  for (const auto& point : other.points) points.push_back(CopyOf(*point));
}

CGpsPointList& CGpsPointList::operator=(const CGpsPointList& other) {
  if (this != &other) *this = CGpsPointList(other);
  return *this;
}

size_t CGpsPointList::LastIndex() const { return points.empty() ? 0 : points.size() - 1; }

void CGpsPointList::SortAndUnique() {
  std::vector<std::unique_ptr<CGpsNamedPoint>> order(std::make_move_iterator(points.begin()),
                                                     std::make_move_iterator(points.end()));
  SortAndKeepUnique(order);
  points.assign(std::make_move_iterator(order.begin()), std::make_move_iterator(order.end()));
}

void CGpsPointList::RemoveNullPoints() {
  points.remove_if([](const auto& point) { return point->IsNull(); });
}

void CGpsPointList::Simplify(std::vector<size_t>& indices, uint32_t maximum) const {
  std::vector<const CGpsNamedPoint*> byIndex;
  byIndex.reserve(points.size());
  for (const auto& point : points) byIndex.push_back(point.get());
  ReduceIndices(indices, maximum, [&](size_t index) -> const CGpsNamedPoint& {
    if (index >= byIndex.size()) ThrowBadIndex();
    return *byIndex[index];
  });
}

CGpsPointArray::CGpsPointArray(const CGpsPointArray& other, size_t start, size_t count)
    : name(other.name) {
  if (start >= other.points.size()) return;
  const auto first = other.points.begin() + static_cast<std::ptrdiff_t>(start);
  const size_t length = std::min(count, other.points.size() - start);
  points.assign(first, first + static_cast<std::ptrdiff_t>(length));
}

void CGpsPointArray::AssignPoints(const CGpsPointList& other) {
  points.resize(std::min(points.size(), other.points.size()));
  auto source = other.points.begin();
  for (CGpsPoint& point : points) point = CGpsPoint(**source++);
  for (; source != other.points.end(); ++source) points.emplace_back(**source);
}

void CGpsPointArray::Assign(const CGpsPointArray& other) {
  if (this == &other) return;
  points = other.points;
  name = other.name;
}

void CGpsPointArray::AppendPoints(const CGpsPointList& other) {
  for (const auto& point : other.points) points.push_back(ToListPoint(*point));
}

void CGpsPointArray::Append(const CGpsPointArray& other) {
  if (this == &other) return;
  points.insert(points.end(), other.points.begin(), other.points.end());
}

void CGpsPointArray::SetName(const std::string& newName) { name = newName; }

const std::string& CGpsPointArray::GetName() const { return name; }

void CGpsPointArray::Clear() {
  name.clear();
  points.clear();
}

size_t CGpsPointArray::LastIndex() const { return points.empty() ? 0 : points.size() - 1; }

void CGpsPointArray::InsertAt(size_t index, const CGpsPoint& point) {
  if (index > points.size()) ThrowBadIndex();
  if (index < points.size()) points[index].ClearRouteLeg();
  points.insert(points.begin() + static_cast<std::ptrdiff_t>(index), CGpsPoint(point));
}

void CGpsPointArray::RemoveAt(size_t index) {
  if (index >= points.size()) ThrowBadIndex();
  points.erase(points.begin() + static_cast<std::ptrdiff_t>(index));
  if (index < points.size()) points[index].ClearRouteLeg();
}

void CGpsPointArray::MoveTo(size_t from, size_t to) {
  if (from == to) return;
  if (to > points.size()) ThrowBadIndex();
  const CGpsPoint moved = At(from);
  RemoveAt(from);
  const size_t target = to > from ? to - 1 : to;
  InsertAt(target, moved);
  for (size_t i = std::min(from, target); i <= std::max(from, target); ++i)
    points[i].ClearRouteLeg();
}

void CGpsPointArray::Reverse() {
  for (CGpsPoint& point : points) point.ClearRouteLeg();
  std::reverse(points.begin(), points.end());
}

void CGpsPointArray::Simplify(uint32_t maximum) {
  if (points.size() < 2) return;
  std::vector<size_t> survivors(points.size());
  std::iota(survivors.begin(), survivors.end(), size_t{0});
  ReduceIndices(survivors, maximum,
                [this](size_t index) -> const CGpsPoint& { return points[index]; });

  // Each run is erased at its old indices although the runs before it are gone by then, and so
  // what goes lies `erased` places further on. All in one pass.
  std::vector<bool> goes(points.size(), false);
  size_t erased = 0;
  for (size_t i = 1; i < survivors.size(); ++i) {
    const size_t start = std::min(survivors[i - 1] + 1 + erased, points.size());
    const size_t stop = std::min(survivors[i] + erased, points.size());
    std::fill(goes.begin() + static_cast<std::ptrdiff_t>(start),
              goes.begin() + static_cast<std::ptrdiff_t>(std::max(start, stop)), true);
    erased += stop > start ? stop - start : 0;
  }
  if (erased == 0) return;

  std::vector<CGpsPoint*> kept;
  kept.reserve(points.size() - erased);
  for (size_t i = 0; i < points.size(); ++i) {
    if (!goes[i]) kept.push_back(&points[i]);
  }
  Rearrange(points, kept);
}

void CGpsPointArray::SortByName() {
  std::vector<CGpsPoint*> order = PointersTo(points);
  MergeSort(order,
            [](const CGpsPoint* left, const CGpsPoint* right) { return left->name < right->name; });
  Rearrange(points, order);
}

void CGpsPointArray::SortAndUnique() {
  std::vector<CGpsPoint*> order = PointersTo(points);
  SortAndKeepUnique(order);
  Rearrange(points, order);
}

void CGpsPointArray::RemoveNullPoints() {
  erase_if(points, [](const CGpsPoint& point) { return point.IsNull(); });
}

CGpsPoint& CGpsPointArray::At(size_t index) { return points.at(index); }

const CGpsPoint& CGpsPointArray::At(size_t index) const { return points.at(index); }

void CGpsPointArray::TakePoints(CGpsPointArray& other) {
  if (this == &other) return;
  if (points.empty()) {
    points.swap(other.points);
  } else {
    std::move(other.points.begin(), other.points.end(), std::back_inserter(points));
  }
  other.points.clear();
}

CGpsWaypointList& CGpsWaypointList::operator=(const CGpsWaypointList& other) {
  Assign(other);
  return *this;
}

CGpsPoiList& CGpsPoiList::operator=(const CGpsPoiList& other) {
  Assign(other);
  return *this;
}

CGpsTrack& CGpsTrack::operator=(const CGpsTrack& other) {
  Assign(other);
  return *this;
}

CGpsRoute::CGpsRoute(const CGpsPointArray& other, size_t start, size_t count)
    : CGpsPointArray(other, start, count), snapshot(other, start, count) {}

void CGpsRoute::Clear() {
  CGpsPointArray::Clear();
  snapshot.Clear();
}

CGpsRoute& CGpsRoute::operator=(const CGpsRoute& other) {
  Assign(other);
  return *this;
}
