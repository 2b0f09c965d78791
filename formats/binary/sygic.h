#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// `.itf`, the itineraries of Sygic's programs, in three generations: McGuider, a list of stops, and
// those of 11 and of 13, lists of the ways from stop to stop.

/// Reads a McGuider itinerary into one new route. 0; 1 when the file cannot be opened, and
/// kStatusBadFormat when it is no such file.
uint32_t ParseSygic(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadSygic = ReadFileOf<ParseSygic>;

/// Points that a McGuider itinerary can hold.
inline constexpr size_t kMostMcGuiderPoints = 65535;

/// Writes a McGuider itinerary. 0; 1 when it cannot be written, and kStatusInvalidParameter for
/// more than 65535 points, which it cannot hold.
uint32_t EmitSygicMcGuider(ByteSink& sink, const CGpsPointArray& list, uint32_t splitLimit,
                           ConversionContext& context);
inline constexpr FormatWriteFn WriteSygicMcGuider = WriteFileOf<EmitSygicMcGuider>;
void WriteSygicMcGuiderBody(ByteSink& sink, const CGpsPointArray& list);

/// Writes the itinerary of versions 11 and 12. 0, or 1 when it cannot be written.
void WriteSygic11Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteSygic11 = kWriterOf<WriteSygic11Body>;

/// Writes the itinerary of version 13 and later. 0, or 1 when it cannot be written.
void WriteSygic13Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteSygic13 = kWriterOf<WriteSygic13Body>;
