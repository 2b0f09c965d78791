#include "formats/xml/mapfactor.h"

#include <utility>

#include "base/numbers.h"
#include "markup/xml_writer.h"

namespace {

constexpr std::string_view kRoot = "routing_points";
constexpr std::string_view kSet = "set";
constexpr std::string_view kName = "name";
constexpr std::string_view kLatitude = "lat";
constexpr std::string_view kLongitude = "lon";
constexpr std::string_view kDeparture = "departure";
constexpr std::string_view kWaypoint = "waypoint";
constexpr std::string_view kDestination = "destination";

constexpr double kUnitsPerDegree = 3600000.0;

bool IsPoint(const XML_Char* name) {
  return IsName(name, kDeparture) || IsName(name, kWaypoint) || IsName(name, kDestination);
}

// A degree does not fit 32 bits beyond 596, and no position lies there.
std::string ToUnits(double degrees) {
  return std::to_string(TruncateToInt32(degrees * kUnitsPerDegree));
}

}  // namespace

void CMapFactorReader::StartElement(const XML_Char* name, const XML_Char**) {
  m_text.clear();
  if (IsName(name, kRoot)) {
    m_inRoot = true;
  } else if (IsName(name, kSet)) {
    if (m_inRoot) m_current = std::make_unique<CGpsRoute>();
  } else if (IsPoint(name) && m_current) {
    m_point.Reset();
    m_inPoint = true;
  }
}

void CMapFactorReader::EndElement(const XML_Char* name) {
  if (IsName(name, kRoot)) {
    m_inRoot = m_inPoint = false;
  } else if (!m_current) {
    return;
  } else if (IsName(name, kSet)) {
    m_results.push_back(std::move(m_current));
    m_inPoint = false;
  } else if (IsName(name, kName)) {
    (m_inPoint ? m_point.name : m_current->name) = m_text;
  } else if (IsName(name, kLatitude)) {
    m_point.latitude = ParseReal(m_text) / kUnitsPerDegree;
  } else if (IsName(name, kLongitude)) {
    m_point.longitude = ParseReal(m_text) / kUnitsPerDegree;
  } else if (IsPoint(name)) {
    m_current->points.push_back(std::move(m_point));
    m_point.Reset();
    m_inPoint = false;
  }
}

void WriteMapFactorBody(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter writer(sink);
  writer.Declaration("UTF-8", "1.0");
  CXmlElement root = writer.Element(kRoot);
  CXmlElement set = root.Child(kSet);
  set.Child(kName).Text(list.name);
  const size_t last = list.LastIndex();
  size_t index = 0;
  for (const CGpsPoint& point : list.points) {
    CXmlElement stop = set.Child(index == 0      ? kDeparture
                                 : index == last ? kDestination
                                                 : kWaypoint);
    stop.Child(kName).Text(point.name);
    stop.Child(kLatitude).Text(ToUnits(point.latitude));
    stop.Child(kLongitude).Text(ToUnits(point.longitude));
    ++index;
  }
}
