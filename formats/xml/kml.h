#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
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
  explicit CKmlReader(PointLists& results) : CXmlReader(EEncodings::kSystems), m_results(results) {}

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
  void CloseContainer();
  void EndInLineString(const XML_Char* name);
  void EndInRecordedTrack(const XML_Char* name);
  void EndInPlacemark(const XML_Char* name);
  void EndInFlyTo(const XML_Char* name);
  void AppendPoint();
  void AppendPlacemark();
  void AddLine();
  void AddTrack(std::unique_ptr<CGpsPointArray> track);
  void TakePosition();

  PointLists& m_results;
  std::deque<Container> m_stack;
  CGpsPoint m_point;
  RepeatAllowance m_allowance;  ///< for the texts of placemarks on their lines and further points
  std::unique_ptr<CGpsTrack> m_recordedTrack;  ///< the one that is open
  std::vector<CGpsCoordinate> m_formerPoints;  ///< of this placemark, before that in `m_point`
  size_t m_multiGeometries = 0;                ///< that are open
  bool m_hasPoint = false;                     ///< `m_point` stands where a Point does
  bool m_inPoint = false;
  bool m_inPlacemark = false;
  bool m_inFlyTo = false;
  bool m_inLineString = false;
};

/// Reads the lists of a file, which may be a KMZ archive. 0, or 1 when it cannot be opened or
/// parsed; lists that were complete before a parse error stay.
uint32_t ReadKml(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseKml(std::string_view bytes, PointLists& lists);

/// Writes a document with the route as a line and its stops as placemarks. 0, or 1 on failure.
uint32_t WriteKml(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                  bool silent);
void WriteKmlBody(ByteSink& sink, const CGpsPointArray& list);

/// Writes the itinerary of NDrive and Mappy devices, with texts as they stand. 0, or 1 on failure.
uint32_t WriteNdriveKml(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                        bool silent);
void WriteNdriveKmlBody(ByteSink& sink, const CGpsPointArray& list);
