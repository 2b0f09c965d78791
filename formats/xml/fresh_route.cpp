#include "formats/xml/fresh_route.h"

#include "base/numbers.h"
#include "conversion/format_frame.h"
#include "formats/xml/point_element_reader.h"
#include "markup/xml_writer.h"

namespace {

constexpr int kDecimals = 6;

constexpr PointField kElements[] = {
    {"Name", TakeName}, {"Latitude", TakeLatitude}, {"Longitude", TakeLongitude}};
constexpr ElementKey kRoute[] = {{"Route"}};

}  // namespace

constinit const PointFormat kFreshRouteFormat{
    .containers = kRoute, .listNameElement = "Name", .point = {"Point"}, .elements = kElements};

uint32_t WriteFreshRoute(const WideString& path, const CGpsPointArray& list, uint32_t handOver,
                         bool) {
  if (handOver == 0) return kWriterOf<WriteFreshRouteBody>(path, list, 0, true);
  ContextInPlace context;
  return context->handOff ? context->handOff(list) : uint32_t{kStatusNotImplemented};
}

void WriteFreshRouteBody(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter writer(sink);
  writer.Declaration("UTF-8", "1.0");
  CXmlElement route = writer.Element("Route");
  route.Child("Name").Text(list.name);
  for (const CGpsPoint& point : list.points) {
    CXmlElement stop = route.Child("Point");
    stop.Child("Name").Text(point.name);
    stop.Child("Latitude").Text(ToFixedString(point.latitude, kDecimals));
    stop.Child("Longitude").Text(ToFixedString(point.longitude, kDecimals));
  }
}
