#include "formats/xml/daimler_gpx.h"

#include <algorithm>
#include <iterator>

#include "base/product.h"
#include "markup/xml_writer.h"

namespace {

constexpr std::string_view kDaimlerNamespace274 =
    "http://www.daimler.com/DaimlerGPXExtensions/V2.7.4";
constexpr std::string_view kDaimlerNamespace24 = "http://www.daimler.com/DaimlerGPXExtensions/V2.4";

// Namespace and schema in turn. The schemas without a host are files that the head units bring.
constexpr std::string_view kSchemaLocation50 =
    "http://www.topografix.com/GPX/1/1 http://www.topografix.com/GPX/1/1/gpx.xsd";
constexpr std::string_view kSchemaLocation55 =
    "http://www.topografix.com/GPX/1/1 GPX_Schema_Topografix.xsd "
    "http://www.daimler.com/DaimlerGPXExtensions/V2.7.4 Daimler_GPX_Extension_V2_7_4.xsd";
constexpr std::string_view kSchemaLocationMbux =
    "http://www.topografix.com/GPX/1/1 GPX-Schema_Topografix.xsd";

constexpr std::string_view kPrefix = "gpx:";

// What counts behind the prefix too. Comments and elevations do not.
constexpr std::string_view kPrefixedNames[] = {"gpx", "rte",   "trk",  "name",
                                               "wpt", "rtept", "trkpt"};

// The name as `CGpxReader` knows it.
const XML_Char* PlainName(const XML_Char* name) {
  if (!std::string_view(name).starts_with(kPrefix)) return name;
  const XML_Char* const rest = name + kPrefix.size();
  const bool counts = std::any_of(std::begin(kPrefixedNames), std::end(kPrefixedNames),
                                  [rest](std::string_view known) { return IsName(rest, known); });
  return counts ? rest : name;
}

// The root of NTG 5.0 and MBUX.
CXmlElement PrefixedRoot(CXmlWriter& document, std::string_view daimlerNamespace,
                         std::string_view schemaLocation) {
  return document.Element("gpx:gpx")
      .Attribute("version", "1.1")
      .Attribute("creator", kCreatorTag)
      .Attribute("xmlns:xsi", kXsiNamespace)
      .Attribute("xmlns:gpx", kGpx11Namespace)
      .Attribute("xmlns:gpxd", daimlerNamespace)
      .Attribute("xsi:schemaLocation", schemaLocation);
}

CXmlElement OpenStop(CXmlElement& route, const CGpsPoint& point) {
  CXmlElement stop = route.Child("gpx:rtept");
  WriteGpxPosition(stop, point);
  return stop;
}

void WriteTexts(CXmlElement& stop, const CGpsPoint& point) {
  if (!point.name.empty()) stop.Child("gpx:name").Text(point.name);
  if (!point.comment.empty()) stop.Child("gpx:desc").Cdata(point.comment);
}

// A stop of NTG 5.0 and MBUX has an end tag of its own even when nothing is in it.
void WritePlainStops(CXmlElement& route, const CGpsPointArray& list) {
  for (const CGpsPoint& point : list.points) {
    CXmlElement stop = OpenStop(route, point);
    stop.Text("");
    WriteTexts(stop, point);
  }
}

void WriteStopUse(CXmlElement& stop, bool isLast) {
  CXmlElement extensions = stop.Child("gpx:extensions");
  CXmlElement extension = extensions.Child("gpxd:WptExtension");
  extension.Child("gpxd:WptUse")
      .Attribute("Use", isLast ? "destination" : "attractor")
      .Attribute("LastWpt", "false")
      .Text("");
}

void WriteRouteIcon(CXmlElement& route) {
  CXmlElement extensions = route.Child("gpx:extensions");
  CXmlElement extension = extensions.Child("gpxd:RteExtension");
  extension.Child("gpxd:RouteIconId").Attribute("IconId", "13");
}

}  // namespace

void CDaimlerGpxReader::StartElement(const XML_Char* name, const XML_Char** attributes) {
  CGpxReader::StartElement(PlainName(name), attributes);
}

void CDaimlerGpxReader::EndElement(const XML_Char* name) {
  CGpxReader::EndElement(PlainName(name));
}

void WriteDaimlerGpx50Body(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter document(sink);
  document.Declaration("UTF-8", "1.0");
  CXmlElement root = PrefixedRoot(document, kDaimlerNamespace274, kSchemaLocation50);
  CXmlElement route = root.Child("gpx:rte");
  route.Child("gpx:name").Text(list.name);
  WritePlainStops(route, list);
}

// The head unit wants the prefixes bound with capital letters and used with small ones, and a route
// without a prefix around stops that have one.
void WriteDaimlerGpx55Body(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter document(sink);
  document.Declaration("UTF-8", "1.0");
  CXmlElement root = document.Element("gpx")
                         .Attribute("xsi:schemaLocation", kSchemaLocation55)
                         .Attribute("xmlns:xsi", kXsiNamespace)
                         .Attribute("xmlns:Gpx", kGpx11Namespace)
                         .Attribute("xmlns:Gpxd", kDaimlerNamespace274)
                         .Attribute("xmlns", kGpx11Namespace)
                         .Attribute("creator", kCreatorTag)
                         .Attribute("version", "1.1");
  CXmlElement route = root.Child("rte");
  route.Child("name").Text(list.name);
  for (const CGpsPoint& point : list.points) {
    CXmlElement stop = OpenStop(route, point);
    WriteTexts(stop, point);
    WriteStopUse(stop, /*isLast=*/&point == &list.points.back());
  }
}

void WriteDaimlerGpxMbuxBody(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter document(sink);
  document.Declaration("UTF-8", "1.0");
  CXmlElement root = PrefixedRoot(document, kDaimlerNamespace24, kSchemaLocationMbux);
  CXmlElement route = root.Child("gpx:rte");
  route.Child("gpx:name").Text(list.name);
  WriteRouteIcon(route);
  WritePlainStops(route, list);
}
