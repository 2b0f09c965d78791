#include "formats/xml/navman.h"

#include <string>

#include "base/numbers.h"
#include "conversion/format_file.h"
#include "formats/xml/point_element_reader.h"
#include "markup/xml_writer.h"

namespace {

constexpr double kUnitsPerDegree = 100000.0;

void TakeLatitudeUnits(CGpsPoint& point, std::string_view text) {
  point.latitude = ParseReal(text) / kUnitsPerDegree;
}
void TakeLongitudeUnits(CGpsPoint& point, std::string_view text) {
  point.longitude = ParseReal(text) / kUnitsPerDegree;
}
void TakeMissingName(CGpsPoint& point, std::string_view text) {
  if (point.name.empty()) point.name = text;
}

constexpr PointField kElements[] = {
    {"name", TakeName},
    {"lat", TakeLatitudeUnits},
    {"long", TakeLongitudeUnits},
    {"entryName", TakeMissingName},
};
constexpr ElementKey kLocationList[] = {{"MultistopLocations", "LocationList"}};
constexpr PointFormat kFormat{
    .containers = kLocationList, .point = {"Item", "Location"}, .elements = kElements};

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

uint32_t ReadNavman(const WideString& path, PointLists& lists, bool) {
  return ReadPoints(path, lists, kFormat);
}

uint32_t ParseNavman(std::string_view bytes, PointLists& lists) {
  return ParsePoints(bytes, lists, kFormat);
}

uint32_t WriteNavman(const WideString& path, const CGpsPointArray& list, uint32_t, bool) {
  return WriteFormatFile(path, [&list](ByteSink& sink) { WriteNavmanBody(sink, list); });
}

void WriteNavmanBody(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter writer(sink);
  writer.Declaration("UTF-8", "1.0");
  CXmlElement root = writer.Element("MultistopLocations");
  CXmlElement locations = root.Child("MultistopLocations").Attribute("class", "LocationList");
  WriteNavmanItem(locations, CGpsPoint(), "road");
  for (const CGpsPoint& point : list.points) WriteNavmanItem(locations, point, "area");
}
