#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "markup/repeat_allowance.h"
#include "markup/xml_reader.h"
#include "model/point_list.h"

// Google Earth's KML: placemarks, lines and tours in folders.

/// Builds a list of every folder, a track of every line and a route of every tour. Lists come in
/// the order of their end tags; a line comes before the folder that it stands in.
class CKmlReader final : public CXmlReader {
 public:
  explicit CKmlReader(PointLists& results) : m_results(results) {}

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
  std::deque<Container> m_stack;
  CGpsPoint m_point;
  RepeatAllowance m_allowance;  ///< for the names of placemarks on their lines
  bool m_inPlacemark = false;
  bool m_inFlyTo = false;
  bool m_inLineString = false;
};

/// Reads the lists of a file. 0, or 1 when it cannot be opened or parsed; lists that were complete
/// before a parse error stay.
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
