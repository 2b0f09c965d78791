#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// OziExplorer: comma-separated 8-bit text for routes (`.rte`), routes of the CE edition (`.rt2`),
// tracks (`.plt`) and waypoints (`.wpt`), all in the WGS 84 datum. Writers replace commas in the
// texts of points by blanks, so that a field stays a field; names of lists are left as they are.

/// Reads a `.rte` file into one route for each "R" line. 0, or 1 when the file cannot be opened or
/// has not the header of a route file.
uint32_t ReadOziRoute(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseOziRoute(std::string_view bytes, PointLists& lists, ConversionContext& context);

/// Takes the name of a route from its "R" line. Gives the number that the waypoint lines of this
/// route bear, -1 when the line has too few fields for it.
int32_t ParseOziRteRouteLine(const std::vector<std::string_view>& fields, CGpsPointArray& list);

/// Reads a `.rt2` file into one route for each "H3" line. 0, or 1 when the file cannot be opened or
/// has no "H1" line.
uint32_t ParseOziRouteCe(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadOziRouteCe = ReadFileOf<ParseOziRouteCe>;

/// Takes the name of a route from its "H3" line, if the line has one.
void ParseOziRt2RouteLine(const std::vector<std::string_view>& fields, CGpsPointArray& list);

/// Reads a `.plt` file into one track without a name. 0, or 1 when the file cannot be opened.
uint32_t ParseOziTrack(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadOziTrack = ReadFileOf<ParseOziTrack>;

/// Reads a `.wpt` file into one waypoint list. Names and comments keep the blank that stands behind
/// their comma. 0, or 1 when the file cannot be opened.
uint32_t ParseOziWaypoints(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadOziWaypoints = ReadFileOf<ParseOziWaypoints>;

/// Writes one route with names and the first 40 bytes of the comments. 0, or 1 on failure.
void WriteOziRouteBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteOziRoute = kWriterOf<WriteOziRouteBody>;

/// Writes one route with names. 0, or 1 on failure.
void WriteOziRouteCeBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteOziRouteCe = kWriterOf<WriteOziRouteCeBody>;

/// Writes one track: positions and altitudes only. 0, or 1 on failure.
void WriteOziTrackBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteOziTrack = kWriterOf<WriteOziTrackBody>;

/// Writes waypoints with names, the first 40 bytes of the comments, and altitudes. 0, or 1 on
/// failure.
void WriteOziWaypointsBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteOziWaypoints = kWriterOf<WriteOziWaypointsBody>;
