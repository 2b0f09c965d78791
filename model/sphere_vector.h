#pragma once

#include <cmath>
#include <cstdint>

#include "base/numbers.h"
#include "model/point.h"

/// A position as a vector of the unit sphere. Whoever needs many distances between the same
/// positions makes these once: the angles are the expensive part.
class SphereVector {
 public:
  explicit SphereVector(const CGpsCoordinate& position) {
    const double latitude = position.latitude / kDegreesPerRadian;
    const double longitude = position.longitude / kDegreesPerRadian;
    m_x = std::cos(latitude) * std::cos(longitude);
    m_y = std::sin(longitude) * std::cos(latitude);
    m_z = std::sin(latitude);
  }

  /// Length of the chord through the earth in whole metres.
  uint32_t ChordTo(const SphereVector& other) const {
    return TruncateToUint32(std::sqrt((m_x - other.m_x) * (m_x - other.m_x) +
                                      (m_y - other.m_y) * (m_y - other.m_y) +
                                      (m_z - other.m_z) * (m_z - other.m_z)) *
                            kEarthRadius);
  }

 private:
  double m_x;
  double m_y;
  double m_z;
};
