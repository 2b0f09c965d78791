#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// ViaMichelin's exports: itineraries and points of interest.

/// Reads a route of every itinerary, and one waypoint list of all points outside of them. 0, or 1
/// when the file cannot be opened or parsed.
uint32_t ReadXvm(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseXvm(std::string_view bytes, PointLists& lists, ConversionContext& context);

/// Writes one itinerary of names and positions. 0, or 1 on failure.
void WriteXvmBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteXvm = kWriterOf<WriteXvmBody>;
