#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "formats/xml/point_element_reader.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Navigon Fresh: names and positions for the companion program.

/// Reads one route, into `lists` before the file is parsed. 0, or 1 when it cannot be opened or
/// parsed; the points before a fault stay.
extern const PointFormat kFreshRouteFormat;
inline constexpr FormatReadFn ReadFreshRoute = ReadPointsOf<kFreshRouteFormat>;
inline constexpr FormatParseFn ParseFreshRoute = ParsePointsOf<kFreshRouteFormat>;

/// Writes names and positions. 0, or 1 on failure. With `handOver` other than 0 nothing is written:
/// the list goes to the companion program (core/itinerary_hand_off.h), whose status is the result.
uint32_t WriteFreshRoute(const WideString& path, const CGpsPointArray& list, uint32_t handOver,
                         bool silent);
void WriteFreshRouteBody(ByteSink& sink, const CGpsPointArray& list);
