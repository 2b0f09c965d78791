#include "formats/xml/my_routes.h"

#include "base/numbers.h"
#include "formats/xml/point_element_reader.h"
#include "markup/xml_writer.h"

namespace {

constexpr int kDecimals = 5;

constexpr PointField kAttributes[] = {
    {"name", TakeName}, {"lat", TakeLatitude}, {"long", TakeLongitude}};
constexpr ElementKey kRoute[] = {{"route"}};

}  // namespace

constinit const PointFormat kMyRoutesXmlFormat{.containers = kRoute,
                                               .listNameAttribute = "name",
                                               .point = {"location"},
                                               .attributes = kAttributes};

void WriteMyRoutesXmlBody(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter writer(sink);
  // The program behind this format puts its declaration into a comment.
  writer.Comment("xml version=\"1.0\" encoding=\"utf-8\"");
  CXmlElement route = writer.Element("route").Attribute("name", list.name);
  for (const CGpsPoint& point : list.points) {
    route.Child("location")
        .Attribute("lat", ToFixedString(point.latitude, kDecimals))
        .Attribute("long", ToFixedString(point.longitude, kDecimals));
  }
}
