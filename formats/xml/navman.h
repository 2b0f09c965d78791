#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Navman S-Series: a list of locations in 1/100000 degree.

/// Reads one route, into `lists` before the file is parsed. 0, or 1 when it cannot be opened or
/// parsed; the points before a fault stay.
uint32_t ReadNavman(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseNavman(std::string_view bytes, PointLists& lists);

/// Writes the locations behind a blank one, which the device wants first. 0, or 1 on failure.
uint32_t WriteNavman(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                     bool silent);
void WriteNavmanBody(ByteSink& sink, const CGpsPointArray& list);
