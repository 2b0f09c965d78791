#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "conversion/xml_frame.h"
#include "formats/xml/gpx.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// GPX as the head units of Daimler cars take it (NTG 5.0, NTG 5.5, MBUX): GPX 1.1 whose elements
// carry a prefix.

/// The reader behind `ReadDaimlerGpx`.
class CDaimlerGpxReader final : public CGpxReader {
 public:
  using CGpxReader::CGpxReader;

  void StartElement(const XML_Char* name, const XML_Char** attributes) override;
  void EndElement(const XML_Char* name) override;
};

/// Reads all three. As `ReadGpx`, with the names of lists and points accepted behind "gpx:" too.
/// Comments and elevations count without the prefix only, as the head units have it: the comments
/// that the writers below write do not come back.
inline constexpr FormatReadFn ReadDaimlerGpx = ReadXmlFileOf<CDaimlerGpxReader>;
inline constexpr FormatParseFn ParseDaimlerGpx = ParseXmlOf<CDaimlerGpxReader>;

/// These write one route, whatever the list's kind, without elevations. 0, or 1 on failure.
void WriteDaimlerGpx50Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteDaimlerGpx50 = kWriterOf<WriteDaimlerGpx50Body>;
void WriteDaimlerGpx55Body(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteDaimlerGpx55 = kWriterOf<WriteDaimlerGpx55Body>;
void WriteDaimlerGpxMbuxBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteDaimlerGpxMbux = kWriterOf<WriteDaimlerGpxMbuxBody>;
