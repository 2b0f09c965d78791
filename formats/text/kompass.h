#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Kompass `.tk`: a text file of one point a line, its latitude, longitude and altitude with commas
// between. Files of the vendor often have no altitude.

/// Reads the points into one new route, those at 0, 0 too. 0, or 1 when the file cannot be opened.
uint32_t ParseKompass(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadKompass = ReadFileOf<ParseKompass>;

/// 0, or 1 on failure.
void WriteKompassBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteKompass = kWriterOf<WriteKompassBody>;
