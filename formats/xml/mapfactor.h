#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "conversion/xml_frame.h"
#include "io/byte_sink.h"
#include "markup/xml_reader.h"
#include "model/point_list.h"

// MapFactor navigation: sets of routing points in 1/3600000 degree.

class CMapFactorReader final : public CXmlReader {
 public:
  CMapFactorReader(PointLists& results, ConversionContext&) : m_results(results) {}

  void StartElement(const XML_Char* name, const XML_Char** attributes) override;
  void EndElement(const XML_Char* name) override;

 private:
  PointLists& m_results;
  std::unique_ptr<CGpsRoute> m_current;  ///< the set being filled
  CGpsPoint m_point;
  bool m_inRoot = false;
  bool m_inPoint = false;
};

/// Reads a route of every set, empty ones too. 0, or 1 when the file cannot be opened or parsed.
inline constexpr FormatReadFn ReadMapFactor = ReadXmlFileOf<CMapFactorReader>;
inline constexpr FormatParseFn ParseMapFactor = ParseXmlOf<CMapFactorReader>;

/// Writes one set; only names and positions are kept. 0, or 1 on failure.
void WriteMapFactorBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteMapFactor = kWriterOf<WriteMapFactorBody>;
