#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "io/byte_sink.h"
#include "model/point_list.h"
#include "settings/csv_layout.h"

// CSV: a line a point, in columns that the user's layout describes. Reading and writing have a
// layout each, which unless `silent` the user is asked for (conversion/csv_layouts.h).

/// Reads a file into one new route. 0, kStatusCancelled when the user does not want to go on, or
/// the platform's error code for a file that cannot be opened.
uint32_t ReadCsv(const WideString& path, PointLists& lists, bool silent);

/// As `ReadCsv`, in the layout told or stored. 0, or kStatusBadFormat when the layout was to be
/// found and is not; other bytes that are no table give an empty route.
uint32_t ParseCsv(std::string_view bytes, PointLists& lists, ConversionContext& context);
/// The same in a layout of the caller's.
uint32_t ParseCsvTable(std::string_view bytes, PointLists& lists, const CCsvLayout& layout,
                       ConversionContext& context);

/// Writes a file. 0, kStatusCancelled, kStatusInvalidParameter for a layout of more than
/// kMostCsvColumns columns, or the platform's error code.
uint32_t WriteCsv(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                  bool silent);
/// The same without a question.
uint32_t EmitCsv(ByteSink& sink, const CGpsPointArray& list, uint32_t splitLimit,
                 ConversionContext& context);

/// The header line and the lines of the points. `layout` has at most kMostCsvColumns columns.
void WriteCsvBody(ByteSink& sink, const CGpsPointArray& list, const CCsvLayout& layout = {});
/// The same with a header in an encoding; UTF-8 when that is empty.
void WriteCsvTable(ByteSink& sink, const CGpsPointArray& list, const CCsvLayout& layout,
                   const std::string& encoding);
