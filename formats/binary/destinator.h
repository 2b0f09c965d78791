#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// `.dat` of Destinator PN: records of texts and a position. The file that a device takes in and the
// one that it gives out differ in their records, and so what is written here does not read back.

/// Reads the places that a device has saved into one new route. 0, or the platform's error code
/// when the file cannot be opened. A record of an unknown kind ends the list.
uint32_t ParseDestinator(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadDestinator = ReadFileOf<ParseDestinator, TellPlatformError>;

/// Writes the list for a device. 0 or the platform's error code.
void WriteDestinatorBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteDestinator = kWriterOf<WriteDestinatorBody, TellPlatformError>;
