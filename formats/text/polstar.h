#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Polstar PolNav `.trl`: positions and altitudes in binary records of one size, without names.

/// Reads the records into one new route; a cut last record is passed over. 0, or 1 when the file
/// cannot be opened.
uint32_t ReadPolstar(const WideString& path, PointLists& lists, bool silent);
uint32_t ParsePolstar(std::string_view bytes, PointLists& lists);

/// 0, or 1 on failure.
uint32_t WritePolstar(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                      bool silent);
void WritePolstarBody(ByteSink& sink, const CGpsPointArray& list);
