#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// What a reader had to pass over or a writer could not find out.
enum class ConversionNote : size_t {
  kLinePassedOver,        ///< a line or record that holds data but does not fit the format
  kStopWithoutWaypoint,   ///< a route stop that names a waypoint that the file does not hold
  kPointWithoutPosition,  ///< a point at 0, 0, dropped
  kStopNotAsked,          ///< one of these with an address that nobody may be asked about
  kPlaceNotAsked,         ///< a stop of a link with an address that nobody may be asked about
  kPageNotFetched,        ///< a page that holds more stops of a link, and could not be had
  kStopLookedUp,          ///< a stop whose position was asked of the geocoder
  kStopNotFound,          ///< one of these that was not found
  kCountryNotFound,       ///< a stop whose country could not be looked up
  // What a file holds besides the points and their texts:
  kTime,          ///< when a point was passed or made
  kSymbol,        ///< what a stop is shown with, or its kind
  kMeasurement,   ///< what a receiver measured besides the position: speed, accuracy, pulse
  kLink,          ///< an address in the web, of a point or a list
  kDescription,   ///< a text of a point beyond name and comment, or of a list
  kDetail,        ///< a value of a point that has a name of its own, such as a telephone number
  kShapingPoint,  ///< a point between two stops that only shapes the way
  kSegmentBreak,  ///< a gap in a track
  kExtension,     ///< what another program has put into a point for itself
  kArea,          ///< a polygon
  kOverlay,       ///< a picture or model on the map
  kDocument,      ///< another document that the file holds or names
  kRelation,      ///< what groups points and ways
  kCount,
};

/// How often each was noted.
class ConversionNotes {
 public:
  uint64_t Count(ConversionNote note) const { return m_counts[static_cast<size_t>(note)]; }
  void Add(ConversionNote note, uint64_t count = 1) {
    m_counts[static_cast<size_t>(note)] += count;
  }
  void Add(const ConversionNotes& other) {
    for (size_t i = 0; i < m_counts.size(); ++i) m_counts[i] += other.m_counts[i];
  }

  /// True when a reader has passed something over.
  bool HasLosses() const {
    for (size_t i = 0; i < m_counts.size(); ++i) {
      const auto note = static_cast<ConversionNote>(i);
      const bool isLoss =
          note != ConversionNote::kStopLookedUp && note != ConversionNote::kCountryNotFound;
      if (isLoss && m_counts[i] > 0) return true;
    }
    return false;
  }

  bool operator==(const ConversionNotes&) const = default;

 private:
  std::array<uint64_t, static_cast<size_t>(ConversionNote::kCount)> m_counts{};
};
