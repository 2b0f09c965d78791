#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// iGo 8 POI `.upoi`: a UTF-16 text file of one point a line, fields separated by "|". The later
// version has two fields more, which moves the comment.

/// Reads both versions into one new route, in any encoding that `DetectEncoding` tells. 0, or 1
/// when the file cannot be opened.
uint32_t ParseUpoi(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadUpoi = ReadFileOf<ParseUpoi>;

/// iGo 8.0. The writers give 0, or 1 on failure.
void WriteUpoi80Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteUpoi80 = kWriterOf<WriteUpoi80Body>;

/// iGo 8.3.
void WriteUpoi83Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteUpoi83 = kWriterOf<WriteUpoi83Body>;
