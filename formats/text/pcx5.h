#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"
#include "platform/clock.h"

// Garmin PCX5: 8-bit text in fixed columns. The first letter of a line tells what it holds; where
// the columns of the waypoint lines stand is told by a line of titles in the file.

/// One column of the waypoint lines. Without a length it is empty.
struct Pcx5Column {
  size_t start = 0;
  size_t length = 0;
};

/// The columns in the order of their titles.
enum Pcx5ColumnIndex : size_t {
  kPcx5Ident,
  kPcx5Latitude,
  kPcx5Longitude,
  kPcx5Date,
  kPcx5Time,
  kPcx5Altitude,
  kPcx5Description,
  kPcx5Proximity,
  kPcx5Symbol,
  kPcx5ColumnCount,
};
using Pcx5Columns = std::array<Pcx5Column, kPcx5ColumnCount>;

/// How the angles of a file are written.
enum class Pcx5Form { kDegrees, kDegreesMinutesSeconds, kDegreesMinutes };

/// Reads a file into one new route. 0, or 1 when the file cannot be opened, has no software line or
/// an unknown coordinate system; the points before it stay in `lists`.
uint32_t ParsePcx5(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadPcx5 = ReadFileOf<ParsePcx5>;

/// Names `list` from an "R" line.
void ParsePcx5RouteLine(std::string_view line, CGpsPointArray& list);

/// Appends the point of a "W" line. Coordinates and altitude have the precision of 32-bit floats.
void ParsePcx5Waypoint(std::string_view line, const Pcx5Columns& columns, Pcx5Form form,
                       CGpsPointArray& list);

/// Writes one route of waypoint lines, all with the present moment in UTC. 0, or 1 on failure.
uint32_t EmitPcx5(ByteSink& sink, const CGpsPointArray& list, uint32_t splitLimit,
                  ConversionContext& context);
inline constexpr FormatWriteFn WritePcx5 = WriteFileOf<EmitPcx5>;
void WritePcx5Body(ByteSink& sink, const CGpsPointArray& list, const CalendarTime& moment);
