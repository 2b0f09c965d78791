#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "formats/xml/point_element_reader.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Medion GoPal: destinations in whole metres on the Mercator plane.

/// Reads one route, into `lists` before the file is parsed. 0, or 1 when it cannot be opened or
/// parsed; the points before a fault stay.
extern const PointFormat kGoPalFormat;
inline constexpr FormatReadFn ReadGoPal = ReadPointsOf<kGoPalFormat>;
inline constexpr FormatParseFn ParseGoPal = ParsePointsOf<kGoPalFormat>;

/// Writes names as they stand, without escapes, as the device expects them. 0, or 1 on failure.
void WriteGoPalBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteGoPal = kWriterOf<WriteGoPalBody>;
