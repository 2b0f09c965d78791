#pragma once

#include "model/point_list.h"

/// Sees the points of a reader that hands them on, as they come.
class PointWatcher {
 public:
  virtual ~PointWatcher() = default;
  /// `point` is about to be added to `list`. True when the list need not keep it.
  virtual bool Takes(const CGpsPointArray& list, const CGpsPoint& point) = 0;
};
