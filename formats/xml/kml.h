#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "conversion/xml_frame.h"
#include "io/byte_sink.h"
#include "markup/repeat_allowance.h"
#include "markup/xml_reader.h"
#include "model/point_list.h"

// Google Earth's KML: placemarks, lines and tours in folders.

/// Builds a list of every folder, a track of every line and a route of every tour. Lists come in
/// the order of their end tags; a line comes before the folder that it stands in.
class CKmlReader final : public CXmlReader {
 public:
  CKmlReader(PointLists& results, ConversionContext& context)
      : m_results(results), m_context(context) {}

  void StartElement(const XML_Char* name, const XML_Char** attributes) override;
  void EndElement(const XML_Char* name) override;

 private:
  /// A folder, document or tour that is still open.
  struct Container {
    std::string element;
    std::string listName;
    std::unique_ptr<CGpsPointArray> list;  ///< made with the first point
  };

  void CloseContainer();
  void EndInLineString(const XML_Char* name);
  void EndInPlacemark(const XML_Char* name);
  void EndInFlyTo(const XML_Char* name);
  void AppendPoint();
  void AddTrack();
  void TakePosition();

  PointLists& m_results;
  ConversionContext& m_context;
  std::deque<Container> m_stack;
  CGpsPoint m_point;
  RepeatAllowance m_allowance;  ///< for the names of placemarks on their lines
  bool m_inPlacemark = false;
  bool m_inFlyTo = false;
  bool m_inLineString = false;
};

/// Reads the lists of a file. 0, or 1 when it cannot be opened or parsed; lists that were complete
/// before a parse error stay.
inline constexpr FormatReadFn ReadKml = ReadXmlFileOf<CKmlReader>;
inline constexpr FormatParseFn ParseKml = ParseXmlOf<CKmlReader>;

/// Writes a document with the route as a line and its stops as placemarks. 0, or 1 on failure.
void WriteKmlBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteKml = kWriterOf<WriteKmlBody>;

/// Writes the itinerary of NDrive and Mappy devices, with texts as they stand. 0, or 1 on failure.
void WriteNdriveKmlBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteNdriveKml = kWriterOf<WriteNdriveKmlBody>;
