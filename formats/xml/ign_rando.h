#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "formats/xml/point_element_reader.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// IGN Rando's walks, in windows-1252.

/// Reads one route, into `lists` before the file is parsed. 0, or 1 when it cannot be opened or
/// parsed; the points before a fault stay.
extern const PointFormat kRdnFormat;
inline constexpr FormatReadFn ReadRdn = ReadPointsOf<kRdnFormat>;
inline constexpr FormatParseFn ParseRdn = ParsePointsOf<kRdnFormat>;

/// Writes a walk; comments are lost. 0, or 1 on failure.
void WriteRdnBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteRdn = kWriterOf<WriteRdnBody>;
