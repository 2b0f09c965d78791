#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// The route planner of klickTel, with decimal commas.

/// Reads one route, into `lists` before the file is parsed. 0, or 1 when it cannot be opened or
/// parsed; the points before a fault stay.
uint32_t ReadKlickTel(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseKlickTel(std::string_view bytes, PointLists& lists);

/// Writes names and positions. 0, or 1 on failure.
uint32_t WriteKlickTel(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                       bool silent);
void WriteKlickTelBody(ByteSink& sink, const CGpsPointArray& list);
