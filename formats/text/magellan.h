#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/name_index.h"
#include "model/point_list.h"

// Magellan SD: 8-bit text of the vendor's NMEA-style sentences, "$" to "*" and a checksum. First
// the waypoints, then the sentences of the route, which name the waypoints by their ids.

/// The waypoints of a file, found by id. The bytes of the file must outlive it.
class MagellanPool {
 public:
  MagellanPool() : m_index(IdAt{m_ids}) {}
  MagellanPool(const MagellanPool&) = delete;
  MagellanPool& operator=(const MagellanPool&) = delete;

  /// Adds a waypoint with this id, which becomes its comment. Of equal ids the first is found.
  CGpsPoint& Add(std::string_view id);

  /// Appends the waypoint with this id: the first time itself, then copies of that point, which
  /// must stay in its place. False when there is none, or when copies would fill the memory with
  /// their texts.
  bool AppendTo(CGpsPointArray& list, std::string_view id);

  /// Moves all waypoints to the end of `list`; for a pool of which no stop has been appended.
  void MoveTo(CGpsPointArray& list);

 private:
  struct IdAt {
    std::string_view operator()(uint32_t number) const { return ids[number]; }
    const std::vector<std::string_view>& ids;
  };

  void IndexNewWaypoints();

  CGpsWaypointList m_waypoints;
  std::vector<std::string_view> m_ids;    ///< of all waypoints, as they stand in the file
  std::vector<const CGpsPoint*> m_stops;  ///< where the first stop stands; of those in the index
  NameIndex<IdAt> m_index;
  size_t m_copiedSize = 0;  ///< bytes in names and comments of the copies
};

/// Reads a file into one new route: the stops of its route sentences, or all its waypoints when it
/// has none. Comments hold the ids. Nothing tells a file of another format, which gives an empty
/// route. 0, or 1 when the file cannot be opened.
uint32_t ParseMagellan(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadMagellan = ReadFileOf<ParseMagellan>;

/// Adds the waypoint of a "$PMGNWPL" sentence to `pool`.
void ParseMagellanWaypoint(const std::vector<std::string_view>& fields, MagellanPool& pool,
                           ConversionContext& context);

/// Appends the stops of a "$PMGNRTE" sentence to `route`. `nameShift` is 1 in a file whose route
/// sentences hold the route's name; the first sentence of a route tells.
void ParseMagellanRoute(const std::vector<std::string_view>& fields, MagellanPool& pool,
                        CGpsRoute& route, size_t& nameShift, ConversionContext& context);

/// Writes waypoints and route. With `explorist` other than 0 the route sentences hold the route's
/// name, the title of the file, as the eXplorist wants it. 0, or 1 on failure.
uint32_t WriteMagellan(const WideString& path, const CGpsPointArray& list, uint32_t explorist,
                       bool silent);
/// The same without a file, whose title is the list's name then.
uint32_t EmitMagellan(ByteSink& sink, const CGpsPointArray& list, uint32_t explorist,
                      ConversionContext& context);

/// `routeName`: 8-bit text for the eXplorist form; without it the plain form is written.
void WriteMagellanBody(ByteSink& sink, const CGpsPointArray& list,
                       const std::optional<std::string>& routeName);
