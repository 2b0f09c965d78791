#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/byte_sink.h"
#include "core/point_list.h"
#include "platform/wide_string.h"

// Magellan SD: 8-bit text of the vendor's NMEA-style sentences, "$" to "*" and a checksum. First
// the waypoints, then the sentences of the route, which name the waypoints by their ids.

/// The waypoints of a file, found by id.
class MagellanPool {
 public:
  /// Adds a waypoint, whose id is its comment. Of equal ids the first is found.
  void Add(CGpsPoint waypoint);

  /// Appends a copy of the waypoint with this id. False when there is none, or when copies of the
  /// same waypoints would fill the memory with their texts.
  bool AppendTo(CGpsPointArray& list, const std::string& id);

  /// Moves all waypoints to the end of `list`.
  void MoveTo(CGpsPointArray& list);

 private:
  void IndexNewWaypoints();

  CGpsWaypointList m_waypoints;
  std::unordered_map<std::string_view, const CGpsPoint*> m_firstById;  ///< views of the comments
  size_t m_indexed = 0;     ///< waypoints that stand in the index
  size_t m_textSize = 0;    ///< bytes in names and comments
  size_t m_copiedSize = 0;  ///< the same of the copies handed out
};

/// Reads a file into one new route: the stops of its route sentences, or all its waypoints when it
/// has none. Comments hold the ids. Nothing tells a file of another format, which gives an empty
/// route. 0, or 1 when the file cannot be opened.
uint32_t ReadMagellan(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseMagellan(std::string_view bytes, PointLists& lists);

/// Adds the waypoint of a "$PMGNWPL" sentence to `pool`.
void ParseMagellanWaypoint(const std::vector<std::string_view>& fields, MagellanPool& pool);

/// Appends the stops of a "$PMGNRTE" sentence to `route`. `nameShift` is 1 in a file whose route
/// sentences hold the route's name; the first sentence of a route tells.
void ParseMagellanRoute(const std::vector<std::string_view>& fields, MagellanPool& pool,
                        CGpsRoute& route, size_t& nameShift);

/// Writes waypoints and route. With `explorist` other than 0 the route sentences hold the route's
/// name, the title of the file, as the eXplorist wants it. 0, or 1 on failure.
uint32_t WriteMagellan(const WideString& path, const CGpsPointArray& list, uint32_t explorist,
                       bool silent);

/// `routeName`: 8-bit text for the eXplorist form; without it the plain form is written.
void WriteMagellanBody(ByteSink& sink, const CGpsPointArray& list,
                       const std::optional<std::string>& routeName);
