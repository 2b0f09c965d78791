#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Navigon and Becker `.rte`: a text file of one stop a line, fields separated by "|". Three shapes
// of line are in use, one a generation of devices; one reader takes them all, mixed or not.

/// Reads the stops into one new route. A stop of the oldest shape without a position is looked up
/// by its address with the geocoder of `kProviderGoogle`, one blocking request a stop; what has no
/// position then is dropped. 0, or 1 when the file cannot be opened.
uint32_t ParseNavigonRte(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadNavigonRte = ReadFileOf<ParseNavigonRte>;

/// Navigon MN 4 and 5, and MioMap 2. The writers give 0, or 1 on failure.
void WriteNavigonMn5Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteNavigonMn5 = kWriterOf<WriteNavigonMn5Body>;

/// Navigon MN 6.
void WriteNavigonMn6Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteNavigonMn6 = kWriterOf<WriteNavigonMn6Body>;

/// Becker Traffic Assist.
void WriteBeckerBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteBecker = kWriterOf<WriteBeckerBody>;
