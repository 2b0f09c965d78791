#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "formats/xml/point_element_reader.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Smart TomTom MyRoutes: positions without names.

/// Reads one route, into `lists` before the file is parsed. 0, or 1 when it cannot be opened or
/// parsed; the points before a fault stay.
extern const PointFormat kMyRoutesXmlFormat;
inline constexpr FormatReadFn ReadMyRoutesXml = ReadPointsOf<kMyRoutesXmlFormat>;
inline constexpr FormatParseFn ParseMyRoutesXml = ParsePointsOf<kMyRoutesXmlFormat>;

/// Writes positions only. 0, or 1 on failure.
void WriteMyRoutesXmlBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteMyRoutesXml = kWriterOf<WriteMyRoutesXmlBody>;
