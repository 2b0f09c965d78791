#include "formats/xml/my_routes.h"

#include "base/numbers.h"
#include "conversion/format_file.h"
#include "formats/xml/point_element_reader.h"
#include "markup/xml_writer.h"

namespace {

constexpr int kDecimals = 5;

constexpr PointField kAttributes[] = {
    {"name", TakeName}, {"lat", TakeLatitude}, {"long", TakeLongitude}};
constexpr ElementKey kRoute[] = {{"route"}};
constexpr PointFormat kFormat{.containers = kRoute,
                              .listNameAttribute = "name",
                              .point = {"location"},
                              .attributes = kAttributes};

}  // namespace

uint32_t ReadMyRoutesXml(const WideString& path, PointLists& lists, bool) {
  return ReadPoints(path, lists, kFormat);
}

uint32_t ParseMyRoutesXml(std::string_view bytes, PointLists& lists) {
  return ParsePoints(bytes, lists, kFormat);
}

uint32_t WriteMyRoutesXml(const WideString& path, const CGpsPointArray& list, uint32_t, bool) {
  return WriteFormatFile(path, [&list](ByteSink& sink) { WriteMyRoutesXmlBody(sink, list); });
}

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
