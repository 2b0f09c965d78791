#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"
#include "io/byte_sink.h"
#include "model/point_list.h"
#include "resources/route_templates.h"

// AutoRoute, Streets & Trips and MapPoint: compound files whose stream "Journey" holds the stops.
// A stop has its name twice, in 8 bits and wide, and its position three times. Files are written
// by filling the stops into a template of the program concerned.

/// Reads the stops into one new route without a name. 0; kStatusNotAStorage never comes out, since
/// such a file is read as a plain journey; another storage status when the file or one of its
/// streams cannot be read; 1 for a plain file that is no journey. The route is there even then.
uint32_t ReadAutoRoute(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseAutoRoute(std::string_view bytes, PointLists& lists, ConversionContext& context);

/// The version of the map program from the map properties stream, 0 when there is none.
int32_t ReadMapVersion(std::string_view properties);

/// Appends the stops of a "Journey" stream, up to the first that is cut.
void ParseJourney(std::string_view journey, int32_t version, CGpsPointArray& route,
                  ConversionContext& context);

/// Appends the stops of an old file that is no compound file and begins with its journey. 0, or 1
/// when it is none or has no stops.
uint32_t ParsePlainJourney(std::string_view bytes, CGpsPointArray& route,
                           ConversionContext& context);

/// Fills the template of that number (`resources/route_templates.h`). 0 or a storage status.
uint32_t EmitCompoundRoute(uint32_t templateNumber, ByteSink& sink, const CGpsPointArray& list,
                           ConversionContext& context);
/// The same for the file at `path`.
uint32_t WriteCompoundRoute(uint32_t templateNumber, const WideString& path,
                            const CGpsPointArray& list);

template <uint32_t kTemplate>
uint32_t EmitCompoundRouteOf(ByteSink& sink, const CGpsPointArray& list, uint32_t,
                             ConversionContext& context) {
  return EmitCompoundRoute(kTemplate, sink, list, context);
}
template <uint32_t kTemplate>
uint32_t WriteCompoundRouteOf(const WideString& path, const CGpsPointArray& list, uint32_t, bool) {
  return WriteCompoundRoute(kTemplate, path, list);
}

/// Write a file for one of the three programs. 0 or a storage status.
inline constexpr FormatWriteFn WriteAutoRoute = WriteCompoundRouteOf<kTemplateAutoRoute>;
inline constexpr FormatWriteFn WriteMapPoint = WriteCompoundRouteOf<kTemplateMapPoint>;
inline constexpr FormatWriteFn WriteStreetsTrips = WriteCompoundRouteOf<kTemplateStreetsTrips>;

/// Gives in `file` the template with the stops of the list in front of those that it has, which
/// no longer count. 0 or a storage status.
uint32_t FillRouteTemplate(std::string_view templateFile, const CGpsPointArray& list,
                           std::string& file);

/// The records of all stops, for a map program of that version.
void WriteStopRecords(ByteSink& sink, const CGpsPointArray& list, int32_t version);
