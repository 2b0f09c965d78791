#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// The plain location list `.loc`.

/// Writes names and positions. 0, or 1 on failure.
uint32_t WriteLoc(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                  bool silent);
void WriteLocBody(ByteSink& sink, const CGpsPointArray& list);
