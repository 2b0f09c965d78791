#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "model/point_list.h"

/// A position that moves by less than this, in metres, is as good as any receiver can tell.
inline constexpr double kReceiverAccuracy = 5.0;

/// A position that moves by more than this, in metres, is another place.
inline constexpr double kLargestHarmlessShift = 100.0;

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
  /// True when stops are missing or lie elsewhere.
  bool HasGraveLosses() const { return stopsLost > 0 || largestShift > kLargestHarmlessShift; }
};

/// Compares stops with those of a list, one by one as they come.
class StopComparison {
 public:
  /// `before` must live as long as this and stay as it is.
  explicit StopComparison(const CGpsPointArray& before);

  /// The next stop. Those that go beyond the list are only counted.
  void Take(const CGpsPoint& after);
  size_t Count() const { return m_count; }
  /// Of the stops so far.
  const LossReport& Report() const { return m_report; }

 private:
  PointQueue::const_iterator m_next;
  PointQueue::const_iterator m_end;
  size_t m_count = 0;
  LossReport m_report;
};

/// How many positions of a list are none on this planet.
size_t CountDoubtfulPositions(const CGpsPointArray& list);

/// Compares what was written with what was read back. Lists of one length are compared stop by
/// stop; otherwise stops are matched in their order by place or name.
LossReport CompareLists(const CGpsPointArray& before, const CGpsPointArray& after);
