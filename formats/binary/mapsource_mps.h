#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "formats/binary/mapsource_writer.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// `.mps` of Garmin MapSource up to 5: waypoints, routes and tracks in one file of records.

/// Reads free waypoints into a first list, and each route and track into one of its own. 0; the
/// platform's error code when the file cannot be opened, 1 when it is empty, kStatusInvalidArgument
/// when it is no such file, and kStatusNotImplemented from a version that is not known on.
uint32_t ReadMps(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseMps(std::string_view bytes, PointLists& lists, ConversionContext& context);
/// The same for the `size` bytes at `data`, with the context in place.
uint32_t ParseMpsBuffer(const void* data, size_t size, PointLists& lists);

/// Writes the list as a route with its waypoints. Always 0: a file that cannot be written is told
/// by the context alone.
void WriteMpsBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteMps = kWriterOf<WriteMpsBody, TellNoFailure>;
