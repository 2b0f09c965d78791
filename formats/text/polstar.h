#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Polstar PolNav `.trl`: positions and altitudes in binary records of one size, without names.

/// Reads the records into one new route; a cut last record is passed over. 0, or 1 when the file
/// cannot be opened.
uint32_t ParsePolstar(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadPolstar = ReadFileOf<ParsePolstar>;

/// 0, or 1 on failure.
void WritePolstarBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WritePolstar = kWriterOf<WritePolstarBody>;
