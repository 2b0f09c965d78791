#pragma once

#include <cstdint>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// GPX 1.1 with Garmin's extensions, as the maker's devices and desktop programs take it. Read by
// `ReadGpx`. With the context's `writesWay` each stop also holds the way to the next one, which the
// device then follows.

/// For Nüvi devices and MapSource: every stop is written as a waypoint and again as a point of the
/// route. A `splitLimit` other than 0 marks the stops between the first and the last as via points.
/// 0, or 1 on failure.
void WriteNuviGpxBody(ByteSink& sink, const CGpsPointArray& list, bool marksViaPoints,
                      const ConversionContext& context);
inline constexpr FormatWriteFn WriteNuviGpx = kWriterOf<WriteNuviGpxBody>;

/// For Zumo devices and BaseCamp: a route whose stops are all via points, without elevations. 0, or
/// 1 on failure.
void WriteZumoGpxBody(ByteSink& sink, const CGpsPointArray& list, const ConversionContext& context);
inline constexpr FormatWriteFn WriteZumoGpx = kWriterOf<WriteZumoGpxBody>;
