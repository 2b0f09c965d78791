#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// The plain location list `.loc`.

/// Writes names and positions. 0, or 1 on failure.
void WriteLocBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteLoc = kWriterOf<WriteLocBody>;
