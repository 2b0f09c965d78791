#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Falk Navigator `.tour`: a profile file with one section for the tour and one for every stop,
// named by its number from 0. Places are whole metres on the Mercator plane, text is UTF-8.

/// Reads the stops into one new route, up to the first number that is missing. 0, or 1 when the
/// file cannot be opened.
uint32_t ParseFalkTour(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadFalkTour = ReadFileOf<ParseFalkTour>;

/// 0, or 1 on failure.
void WriteFalkTourBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteFalkTour = kWriterOf<WriteFalkTourBody>;
