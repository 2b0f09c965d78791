#pragma once

#include "model/point_list.h"

/// Sees the points of a reader that hands them on, as they come.
class PointWatcher {
 public:
  virtual ~PointWatcher() = default;
  /// `point` is the next of `list`, whether it stands there already or not. True when the list need
  /// not keep it, unless it is its only one.
  virtual bool Takes(const CGpsPointArray& list, const CGpsPoint& point) = 0;
};
