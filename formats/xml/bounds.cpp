#include "formats/xml/bounds.h"

#include <algorithm>

Bounds::Bounds(const CGpsPointArray& list) {
  if (list.points.empty()) return;
  const CGpsPoint& first = list.points.front();
  minLatitude = maxLatitude = first.latitude;
  minLongitude = maxLongitude = first.longitude;
  for (const CGpsPoint& point : list.points) {
    minLatitude = std::min(minLatitude, point.latitude);
    minLongitude = std::min(minLongitude, point.longitude);
    maxLatitude = std::max(maxLatitude, point.latitude);
    maxLongitude = std::max(maxLongitude, point.longitude);
  }
}
