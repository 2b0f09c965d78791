#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "formats/xml/point_element_reader.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Navman S-Series: a list of locations in 1/100000 degree.

/// Reads one route, into `lists` before the file is parsed. 0, or 1 when it cannot be opened or
/// parsed; the points before a fault stay.
extern const PointFormat kNavmanFormat;
inline constexpr FormatReadFn ReadNavman = ReadPointsOf<kNavmanFormat>;
inline constexpr FormatParseFn ParseNavman = ParsePointsOf<kNavmanFormat>;

/// Writes the locations behind a blank one, which the device wants first. 0, or 1 on failure.
void WriteNavmanBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteNavman = kWriterOf<WriteNavmanBody>;
