#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Smart TomTom MyRoutes: positions without names.

/// Reads one route, into `lists` before the file is parsed. 0, or 1 when it cannot be opened or
/// parsed; the points before a fault stay.
uint32_t ReadMyRoutesXml(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseMyRoutesXml(std::string_view bytes, PointLists& lists);

/// Writes positions only. 0, or 1 on failure.
uint32_t WriteMyRoutesXml(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                          bool silent);
void WriteMyRoutesXmlBody(ByteSink& sink, const CGpsPointArray& list);
