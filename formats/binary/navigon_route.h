#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Navigon `.route` and `.store`: a head and one record a destination, which holds a position and
// a country as typed sub-records.

/// Reads the destinations into one new route without a name; those without a position are dropped.
/// 0, or 1 when the file cannot be opened, is none of this kind or has another size than it says.
uint32_t ParseNavigonRoute(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadNavigonRoute = ReadFileOf<ParseNavigonRoute>;

/// Writes the points as destinations. The country of each is asked of the service in use before
/// the file is opened; a country that is not found stays empty.
/// 0, or 1 on failure.
uint32_t WriteNavigonRoute(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                           bool silent);
void WriteNavigonRouteBody(ByteSink& sink, const CGpsPointArray& list, ConversionContext& context);

/// A packed coordinate is the bit pattern of a double without its lowest 24 bits, in 8 bytes whose
/// upper three are unused. 0 packs as 0, and so does what is no finite number.
uint64_t PackCoordinate(double degrees);
double UnpackCoordinate(uint64_t packed);
