#include "formats/xml/navman.h"

#include <string>

#include "base/numbers.h"
#include "formats/xml/point_element_reader.h"
#include "markup/xml_writer.h"

namespace {

constexpr double kUnitsPerDegree = 100000.0;

bool TakeLatitudeUnits(CGpsPoint& point, std::string_view text) {
  point.latitude = ParseReal(text) / kUnitsPerDegree;
  return true;
}
bool TakeLongitudeUnits(CGpsPoint& point, std::string_view text) {
  point.longitude = ParseReal(text) / kUnitsPerDegree;
  return true;
}
bool TakeMissingName(CGpsPoint& point, std::string_view text) {
  if (point.name.empty()) point.name = text;
  return true;
}

constexpr PointField kElements[] = {
    {"name", TakeName},
    {"lat", TakeLatitudeUnits},
    {"long", TakeLongitudeUnits},
    {"entryName", TakeMissingName},
};
constexpr ElementKey kLocationList[] = {{"MultistopLocations", "LocationList"}};

// An item of the device's own lists, with the fields that it keeps beside name and position at
// the values of a place without a house number.
void WriteNavmanItem(CXmlElement& parent, const CGpsPoint& point, std::string_view type) {
  const std::string latitude = std::to_string(TruncateToInt32(point.latitude * kUnitsPerDegree));
  const std::string longitude = std::to_string(TruncateToInt32(point.longitude * kUnitsPerDegree));
  CXmlElement item = parent.Child("Item").Attribute("class", "Location");
  const struct {
    std::string_view element;
    std::string_view text;
  } children[] = {
      {"name", point.name},   {"lat", latitude},
      {"long", longitude},    {"entryName", point.name},
      {"entryLat", latitude}, {"entryLong", longitude},
      {"entryHeading", "-1"}, {"entrySideOfLine", "0"},
      {"entryHouseNo", "0"},  {"entryPostcode", ""},
      {"entryResolved", "1"}, {"entryValid", "1"},
      {"entryMaxRoad", "0"},  {"entryHalfSize", "0"},
      {"source", "5"},        {"resultType", "9"},
      {"photo", ""},          {"typeName", ""},
      {"phoneNum", ""},       {"type", type},
  };
  for (const auto& child : children) item.Child(child.element).Text(child.text);
}

}  // namespace

constinit const PointFormat kNavmanFormat{
    .containers = kLocationList, .point = {"Item", "Location"}, .elements = kElements};

void WriteNavmanBody(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter writer(sink);
  writer.Declaration("UTF-8", "1.0");
  CXmlElement root = writer.Element("MultistopLocations");
  CXmlElement locations = root.Child("MultistopLocations").Attribute("class", "LocationList");
  WriteNavmanItem(locations, CGpsPoint(), "road");
  for (const CGpsPoint& point : list.points) WriteNavmanItem(locations, point, "area");
}
