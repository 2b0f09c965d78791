#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "model/point_list.h"

// Changes of a list that can be taken back. Each takes time that grows with what changes and with
// the points behind it that move, never with the product of the two. Points are kept without their
// legs: a way is calculated again, or not, whatever way the list came to be.

/// A point and the place where it stands, or stood, in its list.
struct PlacedPoint {
  size_t index;
  CGpsPoint point;
};

/// Points that have come; by rising index.
struct PointsAdded {
  std::vector<PlacedPoint> points;
};

/// Points that have gone, at the indices that they had; rising.
struct PointsRemoved {
  std::vector<PlacedPoint> points;
};

/// A point that has other values.
struct PointChanged {
  size_t index;
  CGpsPoint before;
  CGpsPoint after;
};

/// The points from `first` on stand in another order: the one that is now at `first + i` stood at
/// `first + order[i]`.
struct PointsReordered {
  size_t first;
  std::vector<uint32_t> order;
};

/// The list has another name.
struct ListRenamed {
  std::string before;
  std::string after;
};

using ListChange =
    std::variant<PointsAdded, PointsRemoved, PointChanged, PointsReordered, ListRenamed>;

/// Makes the change in `list`, or takes it back. What stands behind another point than before loses
/// its leg. The list must be in the state in which, or behind which, the change was recorded.
void ApplyChange(CGpsPointArray& list, const ListChange& change);
void RevertChange(CGpsPointArray& list, const ListChange& change);

/// Takes the points at these rising indices out of the list and gives them.
PointsRemoved RemovePoints(CGpsPointArray& list, const std::vector<size_t>& indices);

/// The order that moving one point makes, as `CGpsPointArray::MoveTo` counts.
PointsReordered MoveAsReorder(size_t from, size_t to);

/// About how many bytes the change takes.
size_t MemoryOf(const ListChange& change);
