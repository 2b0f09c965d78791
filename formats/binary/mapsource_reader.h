#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "conversion/conversion_context.h"
#include "io/byte_cursor.h"
#include "model/name_index.h"
#include "model/point_list.h"

/// Reads one record file of Garmin's MapSource: a magic, then records of a length, a type letter
/// and a body. What the two kinds of file have apart is told by the virtual functions.
class MapSourceReader {
 public:
  virtual ~MapSourceReader() = default;
  MapSourceReader(const MapSourceReader&) = delete;
  MapSourceReader& operator=(const MapSourceReader&) = delete;

  /// Reads the bytes of a whole file, once. The free waypoints come first, even when there are
  /// none, then routes and tracks in the order of the file. 0, kStatusInvalidArgument without the
  /// magic, or what `TakeVersion` gives; what was read before that stays in `lists`.
  uint32_t Read(std::string_view bytes, PointLists& lists);

 protected:
  /// `magic`: how the file begins. `altitudeIsOptional`: an altitude stands in the file only when
  /// the flag in front of it is set.
  MapSourceReader(std::string_view magic, bool altitudeIsOptional, ConversionContext& context)
      : m_magic(magic), m_altitudeIsOptional(altitudeIsOptional), m_context(context) {}

  /// Takes the letter of a version record. A status other than 0 ends the read with it.
  virtual uint32_t TakeVersion(uint8_t letter) = 0;
  /// Text of the file as UTF-8.
  virtual std::string Text(std::string_view bytes) const = 0;
  /// Passes over what stands behind an application record without being counted in its length.
  virtual void SkipBehindApplication(ByteCursor& file) const = 0;
  /// Bytes behind the country text of a waypoint or a route point.
  virtual size_t SubclassSize() const = 0;
  /// Passes over what stands between the subclass of a route point and its number of links.
  virtual void SkipToLinkCount(ByteCursor& record) const = 0;
  /// Bytes behind the box of a route point.
  virtual size_t RoutePointTailSize() const = 0;
  /// Passes over what follows the position of a track point.
  virtual void SkipTrackPointDetails(ByteCursor& record) const = 0;

  ConversionContext& Context() const { return m_context; }

 private:
  struct Position {
    double latitude;   ///< degrees
    double longitude;  ///< degrees
    double altitude;   ///< metres, 0 for none
  };

  /// A waypoint whose texts are still those of the file.
  struct Waypoint {
    Position position;
    std::string_view name;
    std::string_view comment;
  };

  struct NameInPool {
    const std::vector<Waypoint>& pool;
    std::string_view operator()(uint32_t number) const { return pool[number].name; }
  };

  void ReadWaypoint(ByteCursor& record, CGpsPointArray& userWaypoints);
  void ReadTrack(ByteCursor& record, CGpsPointArray& track) const;
  void ReadRoute(ByteCursor& record, CGpsPointArray& route);
  void AppendStops(CGpsPointArray& route, std::span<const std::string_view> names);
  void AppendWaypoint(CGpsPointArray& list, const Waypoint& waypoint) const;
  static void AppendPosition(CGpsPointArray& list, const Position& position);
  Position ReadPosition(ByteCursor& record) const;
  void SkipBox(ByteCursor& record) const;
  void SpendIfEmpty(const CGpsPointArray& list);
  void Spend(size_t bytes);

  const std::string_view m_magic;
  const bool m_altitudeIsOptional;
  ConversionContext& m_context;
  std::vector<Waypoint> m_pool;  ///< the waypoints that belong to routes
  NameIndex<NameInPool> m_poolIndex{NameInPool{m_pool}};
  uint32_t m_indexed = 0;  ///< points of the pool that the index knows
  /// Bytes that may still be gone through or copied a second time, or be spent on empty lists.
  size_t m_allowance = 0;
};
