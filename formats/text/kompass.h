#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Kompass `.tk`: a text file of one point a line, its latitude, longitude and altitude with commas
// between. Files of the vendor often have no altitude.

/// Reads the points into one new route, those at 0, 0 too. 0, or 1 when the file cannot be opened.
uint32_t ReadKompass(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseKompass(std::string_view bytes, PointLists& lists);

/// 0, or 1 on failure.
uint32_t WriteKompass(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                      bool silent);
void WriteKompassBody(ByteSink& sink, const CGpsPointArray& list);
