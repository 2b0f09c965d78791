#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "formats/xml/point_element_reader.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// The route planner of klickTel, with decimal commas.

/// Reads one route, into `lists` before the file is parsed. 0, or 1 when it cannot be opened or
/// parsed; the points before a fault stay.
extern const PointFormat kKlickTelFormat;
inline constexpr FormatReadFn ReadKlickTel = ReadPointsOf<kKlickTelFormat>;
inline constexpr FormatParseFn ParseKlickTel = ParsePointsOf<kKlickTelFormat>;

/// Writes names and positions. 0, or 1 on failure.
void WriteKlickTelBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteKlickTel = kWriterOf<WriteKlickTelBody>;
