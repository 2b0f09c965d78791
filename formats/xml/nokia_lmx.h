#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "formats/xml/point_element_reader.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Nokia's landmark exchange.

/// Reads one route, into `lists` before the file is parsed. 0, or 1 when it cannot be opened or
/// parsed; the points before a fault stay.
extern const PointFormat kLmxFormat;
inline constexpr FormatReadFn ReadLmx = ReadPointsOf<kLmxFormat>;
inline constexpr FormatParseFn ParseLmx = ParsePointsOf<kLmxFormat>;

/// Writes a collection of landmarks. 0, or 1 on failure.
void WriteLmxBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteLmx = kWriterOf<WriteLmxBody>;
