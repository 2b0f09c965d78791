#include "conversion/loss_report.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace {

// How far ahead a stop is looked for when the lists differ in length.
constexpr size_t kMatchWindow = 64;
// About a hundred metres: coarser than any format rounds.
constexpr double kMatchTolerance = 0.001;
constexpr double kAltitudeTolerance = 1.0;

// Length of the arc in metres. The model's own distance counts whole metres only.
double ShiftBetween(const CGpsPoint& from, const CGpsPoint& to) {
  const double latitudeFrom = from.latitude / kDegreesPerRadian;
  const double latitudeTo = to.latitude / kDegreesPerRadian;
  const double halfLatitude = std::sin((latitudeTo - latitudeFrom) / 2);
  const double halfLongitude = std::sin((to.longitude - from.longitude) / kDegreesPerRadian / 2);
  const double chord = halfLatitude * halfLatitude + std::cos(latitudeFrom) * std::cos(latitudeTo) *
                                                         halfLongitude * halfLongitude;
  return 2 * kEarthRadius * std::asin(std::min(1.0, std::sqrt(chord)));
}

bool Matches(const CGpsPoint& before, const CGpsPoint& after) {
  const bool near = std::abs(before.latitude - after.latitude) < kMatchTolerance &&
                    std::abs(before.longitude - after.longitude) < kMatchTolerance;
  return near || (!before.name.empty() && before.name == after.name);
}

// Most texts have not changed at all.
bool IsSameText(const std::string& before, const std::string& after) {
  return before == after || Trim(before, " ") == Trim(after, " ");
}

void CompareStop(const CGpsPoint& before, const CGpsPoint& after, LossReport& report) {
  if (!IsSameText(before.name, after.name)) {
    if (report.namesChanged++ == 0) {
      report.nameBefore = before.name;
      report.nameAfter = after.name;
    }
  }
  if (!IsSameText(before.comment, after.comment) && !before.comment.empty())
    ++report.commentsChanged;
  if (!(std::abs(before.altitude - after.altitude) <= kAltitudeTolerance))
    ++report.altitudesChanged;
  if (before.latitude != after.latitude || before.longitude != after.longitude)
    report.largestShift = std::max(report.largestShift, ShiftBetween(before, after));
}

}  // namespace

bool LossReport::HasLosses() const {
  return stopsLost > 0 || stopsAdded > 0 || namesChanged > 0 || commentsChanged > 0 ||
         altitudesChanged > 0 || largestShift > kReceiverAccuracy;
}

StopComparison::StopComparison(const CGpsPointArray& before)
    : m_next(before.points.begin()), m_end(before.points.end()) {
  m_report.stops = before.Count();
}

void StopComparison::Take(const CGpsPoint& after) {
  ++m_count;
  if (m_next != m_end) CompareStop(*m_next++, after, m_report);
}

size_t CountDoubtfulPositions(const CGpsPointArray& list) {
  const auto isDoubtful = [](const CGpsPoint& point) {
    return !(std::abs(point.latitude) <= 90.0 && std::abs(point.longitude) <= 180.0);
  };
  return static_cast<size_t>(std::count_if(list.points.begin(), list.points.end(), isDoubtful));
}

LossReport CompareLists(const CGpsPointArray& before, const CGpsPointArray& after) {
  LossReport report;
  report.stops = before.Count();
  const bool sameLength = before.Count() == after.Count();
  size_t next = 0;
  size_t matched = 0;
  for (const CGpsPoint& stop : before.points) {
    size_t candidate = next;
    const size_t end = std::min(after.Count(), next + kMatchWindow);
    if (!sameLength) {
      while (candidate < end && !Matches(stop, after.points[candidate])) ++candidate;
    }
    if (candidate == end) {
      ++report.stopsLost;
      continue;
    }
    CompareStop(stop, after.points[candidate], report);
    next = candidate + 1;
    ++matched;
  }
  report.stopsAdded = after.Count() - matched;
  return report;
}
