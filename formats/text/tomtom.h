#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// TomTom: the itinerary `.itn`, a text file of one stop a line, and the POI file `.ov2`, a stream
// of binary records. Both hold positions in 1/100000 degree and a name.

/// Reads an itinerary into one new route. 0, or 1 when the file cannot be opened.
uint32_t ParseItn(std::string_view bytes, PointLists& lists, ConversionContext& context);
uint32_t ReadItn(const WideString& path, PointLists& lists, bool silent);

/// Reads a POI file into one new POI list. 0, or 1 when the file cannot be opened or holds an
/// unknown record; the points before it stay in `lists`.
uint32_t ParseOv2(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadOv2 = ReadFileOf<ParseOv2>;

/// Writes an itinerary. With a `splitLimit` below the number of points, numbered files of at most
/// so many points are written instead, each beginning with the last stop of the one before; a part
/// that cannot be written is passed over. 0, 1 on failure, kStatusInvalidParameter for parts of
/// one point, which would never come to an end.
uint32_t WriteItn(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                  bool silent);

/// Writes one list to one file. 0, or 1 on failure.
uint32_t WriteItnFile(const WideString& path, const CGpsPointArray& list);

/// The lines of one list and nothing else.
void WriteItnBody(ByteSink& sink, const CGpsPointArray& list);

/// Writes a POI file. 0, or 1 on failure.
void WriteOv2Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteOv2 = kWriterOf<WriteOv2Body>;
