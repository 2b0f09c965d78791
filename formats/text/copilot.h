#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// CoPilot: the trip file `.trp` in two dialects, a keyed text of `Key=Value` lines and, from
// version 10 on, a JSON document. Both hold positions in millionths of a degree. Version 10 is
// lopsided: its documents are read, but keyed text is written for it, which `ReadCoPilot6` takes
// back.

/// Reads keyed text of any version and in any encoding into one new route. 0, or 1 when the file
/// cannot be opened.
uint32_t ParseCoPilot6(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadCoPilot6 = ReadFileOf<ParseCoPilot6>;

/// Reads a JSON document into one new route. 0, or 1 when the file cannot be opened. Throws
/// CJsonException for a document without a trip, and for one that lacks something further on or
/// has it in another type; the route with the stops so far is then in `lists`.
uint32_t ParseCoPilot10(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadCoPilot10 = ReadFileOf<ParseCoPilot10>;

/// Writes keyed text in 8 bits. 0, or 1 on failure.
void WriteCoPilot6Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteCoPilot6 = kWriterOf<WriteCoPilot6Body>;

/// Writes keyed text in UTF-16 as versions 8 and 9 have it. 0, or 1 on failure.
void WriteCoPilot8Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteCoPilot8 = kWriterOf<WriteCoPilot8Body>;

/// Writes keyed text in UTF-16 as version 10 takes it. 0, or 1 on failure.
void WriteCoPilot10Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteCoPilot10 = kWriterOf<WriteCoPilot10Body>;
