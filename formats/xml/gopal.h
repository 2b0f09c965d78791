#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Medion GoPal: destinations in whole metres on the Mercator plane.

/// Reads one route, into `lists` before the file is parsed. 0, or 1 when it cannot be opened or
/// parsed; the points before a fault stay.
uint32_t ReadGoPal(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseGoPal(std::string_view bytes, PointLists& lists);

/// Writes names as they stand, without escapes, as the device expects them. 0, or 1 on failure.
uint32_t WriteGoPal(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                    bool silent);
void WriteGoPalBody(ByteSink& sink, const CGpsPointArray& list);
