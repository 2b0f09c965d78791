#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "model/point_list.h"

/// A position that moves by less than this, in metres, is as good as any receiver can tell.
inline constexpr double kReceiverAccuracy = 5.0;

/// What an itinerary has lost on its way through a file.
struct LossReport {
  size_t stops = 0;  ///< that went in
  size_t stopsLost = 0;
  size_t stopsAdded = 0;    ///< that only the file has
  size_t namesChanged = 0;  ///< beyond blanks at their ends
  std::string nameBefore;   ///< the first of these, UTF-8
  std::string nameAfter;
  size_t commentsChanged = 0;
  size_t altitudesChanged = 0;  ///< by more than a metre
  double largestShift = 0.0;    ///< metres along the ground

  /// True when the shift is more than rounding, or anything else is missing.
  bool HasLosses() const;
};

/// Compares what was written with what was read back. Lists of one length are compared stop by
/// stop; otherwise stops are matched in their order by place or name.
LossReport CompareLists(const CGpsPointArray& before, const CGpsPointArray& after);
