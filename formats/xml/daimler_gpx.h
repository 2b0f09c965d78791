#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "formats/xml/gpx.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// GPX as the head units of Daimler cars take it (NTG 5.0, NTG 5.5, MBUX): GPX 1.1 whose elements
// carry a prefix.

/// Reads all three. As `ReadGpx`, with the names of lists and points accepted behind "gpx:" too.
/// Comments and elevations count without the prefix only, as the head units have it: the comments
/// that the writers below write do not come back.
uint32_t ReadDaimlerGpx(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseDaimlerGpx(std::string_view bytes, PointLists& lists);

/// These write one route, whatever the list's kind, without elevations. 0, or 1 on failure.
uint32_t WriteDaimlerGpx50(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                           bool silent);
uint32_t WriteDaimlerGpx55(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                           bool silent);
uint32_t WriteDaimlerGpxMbux(const WideString& path, const CGpsPointArray& list,
                             uint32_t splitLimit, bool silent);
void WriteDaimlerGpx50Body(ByteSink& sink, const CGpsPointArray& list);
void WriteDaimlerGpx55Body(ByteSink& sink, const CGpsPointArray& list);
void WriteDaimlerGpxMbuxBody(ByteSink& sink, const CGpsPointArray& list);

/// The reader behind `ReadDaimlerGpx`.
class CDaimlerGpxReader final : public CGpxReader {
 public:
  using CGpxReader::CGpxReader;

  void StartElement(const XML_Char* name, const XML_Char** attributes) override;
  void EndElement(const XML_Char* name) override;
};
