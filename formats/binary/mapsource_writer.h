#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/status.h"
#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// The records that the two files of Garmin's MapSource have in common when they are written.

/// What the two files have apart in them.
struct MapSourceLayout {
  /// An altitude of 0 is left out, and a corner of a box has one in any case.
  bool altitudeIsOptional;
  std::string_view waypointTail;
  int32_t routePointClass;
  std::string_view routePointMiddle;  ///< between subclass and number of links
  std::string_view routePointTail;
  // The length of a route record is a sum of these and of its texts.
  size_t routeSize;
  size_t firstRoutePointSize;
  size_t nextRoutePointSize;
  size_t nextRoutePointAltitudeSize;
};

/// The head of a record of `length` bytes.
void WriteMapSourceHead(ByteSink& sink, char type, size_t length);

/// The record that tells the version of the format.
void WriteMapSourceVersion(ByteSink& sink, char letter);

/// A record for each place of the list: sorted by position, neighbours that are near each other
/// only once.
void WriteMapSourceWaypoints(ByteSink& sink, const CGpsPointArray& list,
                             const MapSourceLayout& layout);

/// The record of the list as a route; none for an empty list.
void WriteMapSourceRoute(ByteSink& sink, const CGpsPointArray& list, const MapSourceLayout& layout);

/// The record that ends the file.
void WriteMapSourceEnd(ByteSink& sink);

/// A target that cannot be made is no failure of these formats: the result is 0 and nothing is
/// written. The context tells the cause to those who want it.
inline uint32_t TellNoFailure(uint32_t) { return kStatusSuccess; }
