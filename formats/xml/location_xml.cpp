#include "formats/xml/location_xml.h"

#include "base/numbers.h"
#include "base/product.h"
#include "markup/xml_writer.h"

namespace {

constexpr int kDecimals = 6;

}  // namespace

void WriteLocBody(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter writer(sink);
  writer.Declaration("UTF-8", "1.0");
  CXmlElement root =
      writer.Element("loc").Attribute("version", "1.0").Attribute("src", kProductName);
  for (const CGpsPoint& point : list.points) {
    CXmlElement waypoint = root.Child("waypoint");
    waypoint.Child("name").Attribute("id", point.name).Cdata(point.name);
    waypoint.Child("coord")
        .Attribute("lat", ToFixedString(point.latitude, kDecimals))
        .Attribute("lon", ToFixedString(point.longitude, kDecimals));
    waypoint.Child("type").Text("Waypoint");
  }
}
