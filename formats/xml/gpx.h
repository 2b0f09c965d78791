#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "conversion/xml_frame.h"
#include "formats/xml/bounds.h"
#include "io/byte_sink.h"
#include "markup/xml_reader.h"
#include "markup/xml_writer.h"
#include "model/point_list.h"

// GPX, the exchange format of routes (`rte`), tracks (`trk`) and free points (`wpt`): one reader
// for all its versions, and the writer of plain GPX 1.0.

// Namespaces, and the schema of version 1.1, as their publishers spell them.
inline constexpr std::string_view kXsiNamespace = "http://www.w3.org/2001/XMLSchema-instance";
inline constexpr std::string_view kGpx11Namespace = "http://www.topografix.com/GPX/1/1";
inline constexpr std::string_view kGpx11Schema = "http://www.topografix.com/GPX/1/1/gpx.xsd";

/// The reader behind `ReadGpx`. Names count exactly as they are: elements with a prefix are
/// passed over.
class CGpxReader : public CXmlReader {
 public:
  /// Hands its lists to `results`.
  CGpxReader(PointLists& results, ConversionContext& context)
      : CXmlReader(Encodings::kSystems), m_results(results), m_context(context) {}

  void StartElement(const XML_Char* name, const XML_Char** attributes) override;
  void EndElement(const XML_Char* name) override;

 private:
  /// What the open `extensions` holds.
  enum class Extension { kNone, kEmpty, kShape, kOther };

  void StartOther(const XML_Char* name);
  void NoteValue(const XML_Char* name);
  void TakeComment();
  void TakeDescription();
  void NoteListDescription();
  void OpenWaypoints();
  void OpenList(std::unique_ptr<CGpsPointArray> list, std::string_view pointElement);
  void StartPoint(const XML_Char** attributes);
  void EndPoint();
  void EndName();
  void EndList();
  void EndFile();

  PointLists& m_results;
  ConversionContext& m_context;
  CGpsPointArray* m_current = nullptr;  ///< receives points: the open list, the waypoints or none
  std::unique_ptr<CGpsPointArray> m_open;       ///< the route or track whose end has not come
  std::unique_ptr<CGpsPointArray> m_waypoints;  ///< made at the first `wpt`
  CGpsPoint m_point;
  std::string_view m_pointElement;  ///< what makes a point at present; empty for nothing
  Extension m_extension = Extension::kNone;
  bool m_inPoint = false;
};

/// Reads routes and tracks in the order of the file, each with its segments run together, and then
/// one list of all waypoints. Lists without points are left out. 0, or 1 when the file cannot be
/// opened or is not well-formed; the routes and tracks that ended before the fault stay in `lists`.
inline constexpr FormatReadFn ReadGpx = ReadXmlFileOf<CGpxReader>;
inline constexpr FormatParseFn ParseGpx = ParseXmlOf<CGpxReader>;

/// Writes one route, whatever the list's kind, as GPX 1.0. A `splitLimit` other than 0 removes the
/// commas from the names and comments of points. 0, or 1 on failure.
void WriteGpxBody(ByteSink& sink, const CGpsPointArray& list, bool removesCommas);
inline constexpr FormatWriteFn WriteGpx = kWriterOf<WriteGpxBody>;

/// The present moment as GPX files write it, in UTC.
std::string GpxTimeStamp();

/// Of the coordinates and elevations that GPX files write.
inline constexpr int kGpxDecimals = 6;

/// Writes the attributes "lat" and "lon".
void WriteGpxPosition(CXmlElement& element, const CGpsCoordinate& position);
