#include "formats/xml/gpx.h"

#include <algorithm>
#include <utility>

#include <fmt/printf.h>

#include "base/numbers.h"
#include "base/product.h"
#include "platform/clock.h"

namespace {

constexpr std::string_view kGpx10Namespace = "http://www.topografix.com/GPX/1/0";
constexpr std::string_view kTopografixNamespace =
    "http://www.topografix.com/GPX/Private/TopoGrafix/0/2";
constexpr std::string_view kGpx10SchemaLocation =
    "http://www.topografix.com/GPX/1/0 http://www.topografix.com/GPX/1/0/gpx.xsd "
    "http://www.topografix.com/GPX/Private/TopoGrafix/0/2 "
    "http://www.topografix.com/GPX/Private/TopoGrafix/0/2/topografix.xsd";

// The elements that make points.
constexpr std::string_view kWaypoint = "wpt";
constexpr std::string_view kRoutePoint = "rtept";
constexpr std::string_view kTrackPoint = "trkpt";

}  // namespace

void CGpxReader::StartElement(const XML_Char* name, const XML_Char** attributes) {
  m_text.clear();
  if (IsName(name, kWaypoint) && !m_current) OpenWaypoints();
  if (IsName(name, m_pointElement)) {
    StartPoint(attributes);
  } else if (IsName(name, "rte")) {
    OpenList(std::make_unique<CGpsRoute>(), kRoutePoint);
  } else if (IsName(name, "trk")) {
    OpenList(std::make_unique<CGpsTrack>(), kTrackPoint);
  } else if (IsName(name, kWaypoint) || IsName(name, kRoutePoint) || IsName(name, kTrackPoint)) {
    m_context.Note(ConversionNote::kLinePassedOver);
  } else {
    StartOther(name);
  }
}

// What is not taken is counted. A way between two stops is told by points in an extension.
void CGpxReader::StartOther(const XML_Char* name) {
  if (IsName(name, "trkseg")) {
    if (m_open && m_open->Count() > 0) m_context.Note(ConversionNote::kSegmentBreak);
  } else if (IsName(name, "extensions")) {
    m_extension = Extension::kEmpty;
  } else if (m_extension != Extension::kNone) {
    const bool isShape = IsName(name, "gpxx:rpt") || IsName(name, "rpt");
    if (isShape) m_context.Note(ConversionNote::kShapingPoint);
    if (isShape || m_extension == Extension::kEmpty)
      m_extension = isShape ? Extension::kShape : Extension::kOther;
  } else if (!m_pointElement.empty() && (IsName(name, "link") || IsName(name, "url"))) {
    // Those in front of the lists are about the file.
    m_context.Note(ConversionNote::kLink);
  }
}

void CGpxReader::EndElement(const XML_Char* name) {
  if (IsName(name, m_pointElement)) {
    EndPoint();
  } else if (IsName(name, "name")) {
    EndName();
  } else if (IsName(name, "cmt")) {
    TakeComment();
  } else if (IsName(name, "desc")) {
    TakeDescription();
  } else if (IsName(name, "ele")) {
    m_point.altitude = ParseReal(m_text);
  } else if (IsName(name, "rte") || IsName(name, "trk")) {
    EndList();
  } else if (IsName(name, "gpx")) {
    EndFile();
  } else if (IsName(name, "extensions")) {
    if (m_extension == Extension::kOther) m_context.Note(ConversionNote::kExtension);
    m_extension = Extension::kNone;
  } else if (m_inPoint && m_extension == Extension::kNone && !m_text.empty()) {
    NoteValue(name);
  }
}

// A value of a point for which the model has no place.
void CGpxReader::NoteValue(const XML_Char* name) {
  constexpr std::string_view kMeasurements[] = {"magvar", "geoidheight", "fix",   "sat",
                                                "hdop",   "vdop",        "pdop",  "ageofdgpsdata",
                                                "dgpsid", "speed",       "course"};
  if (IsName(name, "time")) {
    m_context.Note(ConversionNote::kTime);
  } else if (IsName(name, "sym") || IsName(name, "type")) {
    m_context.Note(ConversionNote::kSymbol);
  } else if (std::any_of(std::begin(kMeasurements), std::end(kMeasurements),
                         [name](std::string_view known) { return IsName(name, known); })) {
    m_context.Note(ConversionNote::kMeasurement);
  }
}

// A comment goes before a description. Outside of points neither is kept.
void CGpxReader::TakeComment() {
  if (m_inPoint && !m_point.comment.empty() && m_point.comment != m_text)
    m_context.Note(ConversionNote::kDescription);
  m_point.comment = m_text;
  NoteListDescription();
}

void CGpxReader::TakeDescription() {
  if (m_point.comment.empty())
    m_point.comment = m_text;
  else if (m_inPoint && m_point.comment != m_text)
    m_context.Note(ConversionNote::kDescription);
  NoteListDescription();
}

void CGpxReader::NoteListDescription() {
  if (!m_inPoint && !m_pointElement.empty() && !m_text.empty())
    m_context.Note(ConversionNote::kDescription);
}

void CGpxReader::OpenWaypoints() {
  if (!m_waypoints) m_waypoints = std::make_unique<CGpsWaypointList>();
  m_current = m_waypoints.get();
  m_pointElement = kWaypoint;
}

// A route or track inside an open one takes its place.
void CGpxReader::OpenList(std::unique_ptr<CGpsPointArray> list, std::string_view pointElement) {
  if (m_open) m_context.Note(ConversionNote::kLinePassedOver, m_open->Count());
  m_open = std::move(list);
  m_current = m_open.get();
  m_pointElement = pointElement;
}

void CGpxReader::StartPoint(const XML_Char** attributes) {
  m_point.Reset();
  m_inPoint = true;
  for (; *attributes; attributes += 2) {
    if (IsName(attributes[0], "lat")) m_point.latitude = ParseReal(attributes[1]);
    if (IsName(attributes[0], "lon")) m_point.longitude = ParseReal(attributes[1]);
  }
}

void CGpxReader::EndPoint() {
  if (m_current && !m_context.WatcherTakes(*m_current, m_point))
    m_current->points.push_back(std::move(m_point));
  m_point.Reset();
  m_inPoint = false;
}

// The first name that stands in a list and outside of its points is the list's.
void CGpxReader::EndName() {
  if (m_inPoint) {
    m_point.name = m_text;
  } else if (m_current && !m_pointElement.empty() && m_current->name.empty()) {
    m_current->name = m_text;
  }
}

void CGpxReader::EndList() {
  if (m_open && m_open->Count() > 0) m_results.push_back(std::move(m_open));
  m_open.reset();
  m_current = nullptr;
  m_pointElement = {};
}

void CGpxReader::EndFile() {
  if (m_current == m_waypoints.get()) m_current = nullptr;
  if (m_waypoints && m_waypoints->Count() > 0) m_results.push_back(std::move(m_waypoints));
  m_waypoints.reset();
  m_pointElement = {};
}

void WriteGpxBody(ByteSink& sink, const CGpsPointArray& list, bool removesCommas) {
  CXmlWriter document(sink);
  document.Declaration("UTF-8", "1.0");
  CXmlElement root = document.Element("gpx")
                         .Attribute("version", "1.0")
                         .Attribute("creator", kCreatorTag)
                         .Attribute("xmlns:xsi", kXsiNamespace)
                         .Attribute("xmlns", kGpx10Namespace)
                         .Attribute("xmlns:topografix", kTopografixNamespace)
                         .Attribute("xsi:schemaLocation", kGpx10SchemaLocation);
  root.Child("time").Text(GpxTimeStamp());
  const Bounds bounds(list);
  root.Child("bounds")
      .NumberAttribute("minlat", bounds.minLatitude, kGpxDecimals)
      .NumberAttribute("minlon", bounds.minLongitude, kGpxDecimals)
      .NumberAttribute("maxlat", bounds.maxLatitude, kGpxDecimals)
      .NumberAttribute("maxlon", bounds.maxLongitude, kGpxDecimals);

  std::string withoutCommas;
  const auto shown = [&](const std::string& text) -> std::string_view {
    if (!removesCommas) return text;
    withoutCommas = text;
    std::erase(withoutCommas, ',');
    return withoutCommas;
  };
  CXmlElement route = root.Child("rte");
  route.Child("name").Text(list.name);
  for (const CGpsPoint& point : list.points) {
    CXmlElement stop = route.Child("rtept");
    WriteGpxPosition(stop, point);
    if (point.altitude != 0.0) stop.Child("ele").NumberText(point.altitude, kGpxDecimals);
    if (const auto name = shown(point.name); !name.empty()) stop.Child("name").Text(name);
    if (const auto comment = shown(point.comment); !comment.empty())
      stop.Child("desc").Cdata(comment);
  }
}

std::string GpxTimeStamp() {
  const CalendarTime now = UtcNow();
  return fmt::sprintf("%04d-%02d-%02dT%02d:%02d:%02dZ", now.year, now.month, now.day, now.hour,
                      now.minute, now.second);
}

void WriteGpxPosition(CXmlElement& element, const CGpsCoordinate& position) {
  element.NumberAttribute("lat", position.latitude, kGpxDecimals)
      .NumberAttribute("lon", position.longitude, kGpxDecimals);
}
