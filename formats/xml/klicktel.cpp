#include "formats/xml/klicktel.h"

#include <algorithm>
#include <string>

#include "base/numbers.h"
#include "formats/xml/point_element_reader.h"
#include "markup/xml_writer.h"

namespace {

constexpr int kDecimals = 6;

double ParseGerman(std::string_view text) {
  std::string number(text);
  std::replace(number.begin(), number.end(), ',', '.');
  return ParseReal(number);
}

std::string ToGerman(double value) {
  std::string number = ToFixedString(value, kDecimals);
  std::replace(number.begin(), number.end(), '.', ',');
  return number;
}

bool TakeGermanLatitude(CGpsPoint& point, std::string_view text) {
  point.latitude = ParseGerman(text);
  return true;
}
bool TakeGermanLongitude(CGpsPoint& point, std::string_view text) {
  point.longitude = ParseGerman(text);
  return true;
}

constexpr PointField kElements[] = {
    {"City", TakeName}, {"Latitude", TakeGermanLatitude}, {"Longitude", TakeGermanLongitude}};
// The root has had two names.
constexpr ElementKey kRoute[] = {{"pkDRoute"}, {"kDRoute"}, {"Stations"}};

}  // namespace

constinit const PointFormat kKlickTelFormat{
    .containers = kRoute, .point = {"Station"}, .elements = kElements};

void WriteKlickTelBody(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter writer(sink);
  writer.Declaration("UTF-8", "1.0");
  CXmlElement root = writer.Element("pkDRoute");
  {
    CXmlElement stations = root.Child("Stations");
    for (const CGpsPoint& point : list.points) {
      CXmlElement station = stations.Child("Station");
      station.Child("City").Text(point.name);
      CXmlElement position = station.Child("Point");
      position.Child("Latitude").Text(ToGerman(point.latitude));
      position.Child("Longitude").Text(ToGerman(point.longitude));
    }
  }
  root.Child("RouteOptions");
}
