#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "conversion/xml_frame.h"
#include "io/byte_sink.h"
#include "markup/repeat_allowance.h"
#include "markup/xml_reader.h"
#include "model/point_list.h"

// Google Earth's KML: placemarks, lines and tours in folders.

/// Builds a list of every folder, a track of every line and recorded track, and a route of every
/// tour. Lists come in the order of their end tags; a line comes before the folder that it stands
/// in. A placemark with several points makes a stop of each.
class CKmlReader final : public CXmlReader {
 public:
  CKmlReader(PointLists& results, ConversionContext& context)
      : CXmlReader(Encodings::kSystems), m_results(results), m_context(context) {}

  void StartElement(const XML_Char* name, const XML_Char** attributes) override;
  void EndElement(const XML_Char* name) override;

 private:
  /// A folder, document or tour that is still open.
  struct Container {
    std::string element;
    std::string listName;
    std::unique_ptr<CGpsPointArray> list;  ///< made with the first point
  };

  void StartPlacemark();
  void StartOther(const XML_Char* name);
  void NoteValue(const XML_Char* name);
  void CloseContainer();
  void EndInLineString(const XML_Char* name);
  void EndInRecordedTrack(const XML_Char* name);
  void EndInPlacemark(const XML_Char* name);
  void EndInFlyTo(const XML_Char* name);
  void AppendPoint();
  void AppendPlacemark();
  void AddLine();
  void AppendTrackPoint(CGpsPointArray& track, std::string_view longitude,
                        std::string_view latitude, std::string_view altitude);
  void AddTrack(std::unique_ptr<CGpsPointArray> track);
  void TakePosition();

  PointLists& m_results;
  ConversionContext& m_context;
  std::deque<Container> m_stack;
  CGpsPoint m_point;
  RepeatAllowance m_allowance;  ///< for the texts of placemarks on their lines and further points
  std::unique_ptr<CGpsTrack> m_recordedTrack;  ///< the one that is open
  std::vector<CGpsCoordinate> m_formerPoints;  ///< of this placemark, before that in `m_point`
  size_t m_multiGeometries = 0;                ///< that are open
  bool m_hasPoint = false;                     ///< `m_point` stands where a Point does
  bool m_hasLine = false;                      ///< the placemark holds a line or recorded track
  bool m_inPoint = false;
  bool m_inPlacemark = false;
  bool m_inFlyTo = false;
  bool m_inLineString = false;
};

/// Reads the lists of a file, which may be a KMZ archive. 0, or 1 when it cannot be opened or
/// parsed; lists that were complete before a parse error stay.
uint32_t ReadKml(const WideString& path, PointLists& lists, bool silent);
inline constexpr FormatParseFn ParseKml = ParseXmlOf<CKmlReader>;

/// Writes a document with the route as a line and its stops as placemarks. 0, or 1 on failure.
void WriteKmlBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteKml = kWriterOf<WriteKmlBody>;

/// Writes the itinerary of NDrive and Mappy devices, with texts as they stand. 0, or 1 on failure.
void WriteNdriveKmlBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteNdriveKml = kWriterOf<WriteNdriveKmlBody>;
