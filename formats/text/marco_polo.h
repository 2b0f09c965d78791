#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Marco Polo, MTP and OnRoute `.bcr`: a profile file whose three sections hold the stations'
// kinds, their places in whole metres on the Mercator plane, and their names.

/// Reads the stations into one new route, up to the first number that is missing. 0;
/// kStatusFileNotFound for a file without a request, as for a file that isn't there; or the
/// platform's error code.
uint32_t ParseBcr(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadBcr = ReadFileOf<ParseBcr, TellPlatformError>;

/// 0, or the platform's error code.
void WriteBcrBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteBcr = kWriterOf<WriteBcrBody, TellPlatformError>;
