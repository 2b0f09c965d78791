#include "formats/xml/garmin_gpx.h"

#include <string>
#include <string_view>

#include "base/product.h"
#include "formats/xml/gpx.h"
#include "markup/xml_writer.h"
#include "model/route_leg.h"

namespace {

constexpr std::string_view kGpxExtensions = "http://www.garmin.com/xmlschemas/GpxExtensions/v3";
constexpr std::string_view kTripExtensions = "http://www.garmin.com/xmlschemas/TripExtensions/v1";

// Namespace and schema in turn, as MapSource writes them.
constexpr std::string_view kNuviSchemaLocation =
    "http://www.topografix.com/GPX/1/1 "
    "http://www.topografix.com/GPX/1/1/gpx.xsd "
    "http://www.garmin.com/xmlschemas/GpxExtensions/v3 "
    "http://www.garmin.com/xmlschemas/GpxExtensionsv3.xsd "
    "http://www.garmin.com/xmlschemas/TripExtensions/v1 "
    "http://www.garmin.com/xmlschemas/TripExtensionsv1.xsd";

// The same as BaseCamp writes them: some schemas lie on the maker's eighth host, and two file names
// differ by an "s" from their namespaces.
constexpr std::string_view kZumoSchemaLocation =
    "http://www.topografix.com/GPX/1/1 "
    "http://www.topografix.com/GPX/1/1/gpx.xsd "
    "http://www.garmin.com/xmlschemas/WaypointExtension/v1 "
    "http://www8.garmin.com/xmlschemas/WaypointExtensionv1.xsd "
    "http://www.garmin.com/xmlschemas/TrackPointExtension/v1 "
    "http://www.garmin.com/xmlschemas/TrackPointExtensionv1.xsd "
    "http://www.garmin.com/xmlschemas/GpxExtensions/v3 "
    "http://www8.garmin.com/xmlschemas/GpxExtensionsv3.xsd "
    "http://www.garmin.com/xmlschemas/ActivityExtension/v1 "
    "http://www8.garmin.com/xmlschemas/ActivityExtensionv1.xsd "
    "http://www.garmin.com/xmlschemas/AdventuresExtensions/v1 "
    "http://www8.garmin.com/xmlschemas/AdventuresExtensionv1.xsd "
    "http://www.garmin.com/xmlschemas/PressureExtension/v1 "
    "http://www.garmin.com/xmlschemas/PressureExtensionv1.xsd "
    "http://www.garmin.com/xmlschemas/TripExtensions/v1 "
    "http://www.garmin.com/xmlschemas/TripExtensionsv1.xsd "
    "http://www.garmin.com/xmlschemas/TripMetaDataExtensions/v1 "
    "http://www.garmin.com/xmlschemas/TripMetaDataExtensionsv1.xsd "
    "http://www.garmin.com/xmlschemas/ViaPointTransportationModeExtensions/v1 "
    "http://www.garmin.com/xmlschemas/ViaPointTransportationModeExtensionsv1.xsd "
    "http://www.garmin.com/xmlschemas/CreationTimeExtension/v1 "
    "http://www.garmin.com/xmlschemas/CreationTimeExtensionsv1.xsd "
    "http://www.garmin.com/xmlschemas/AccelerationExtension/v1 "
    "http://www.garmin.com/xmlschemas/AccelerationExtensionv1.xsd "
    "http://www.garmin.com/xmlschemas/PowerExtension/v1 "
    "http://www.garmin.com/xmlschemas/PowerExtensionv1.xsd "
    "http://www.garmin.com/xmlschemas/VideoExtension/v1 "
    "http://www.garmin.com/xmlschemas/VideoExtensionv1.xsd";

// The prefixes of a Zumo file in its order. Two of them stand for one namespace.
struct NamespaceBinding {
  std::string_view attribute;
  std::string_view uri;
};
constexpr NamespaceBinding kZumoNamespaces[] = {
    {"xmlns:xsi", kXsiNamespace},
    {"xmlns:wptx1", "http://www.garmin.com/xmlschemas/WaypointExtension/v1"},
    {"xmlns:gpxtrx", kGpxExtensions},
    {"xmlns:gpxtpx", "http://www.garmin.com/xmlschemas/TrackPointExtension/v1"},
    {"xmlns:gpxx", kGpxExtensions},
    {"xmlns:trp", kTripExtensions},
    {"xmlns:adv", "http://www.garmin.com/xmlschemas/AdventuresExtensions/v1"},
    {"xmlns:prs", "http://www.garmin.com/xmlschemas/PressureExtension/v1"},
    {"xmlns:tmd", "http://www.garmin.com/xmlschemas/TripMetaDataExtensions/v1"},
    {"xmlns:vptm", "http://www.garmin.com/xmlschemas/ViaPointTransportationModeExtensions/v1"},
    {"xmlns:ctx", "http://www.garmin.com/xmlschemas/CreationTimeExtension/v1"},
    {"xmlns:gpxacc", "http://www.garmin.com/xmlschemas/AccelerationExtension/v1"},
    {"xmlns:gpxpx", "http://www.garmin.com/xmlschemas/PowerExtension/v1"},
    {"xmlns:vidx1", "http://www.garmin.com/xmlschemas/VideoExtension/v1"},
};

constexpr std::string_view kAuthor = "Corvane";

// The road of the map that a stop lies on: none, the device finds it.
constexpr std::string_view kSubclass = "000000000000ffffffffffffffffffffffff";

enum class ElevationElement { kWritten, kLeftOut };

// Without a key the element is empty.
void WriteGarminExtension(CXmlElement& parent, std::string_view prefix, std::string_view wrapper,
                          std::string_view key, std::string_view value) {
  const auto qualified = [prefix](std::string_view name) {
    return std::string(prefix).append(":").append(name);
  };
  CXmlElement element = parent.Child(qualified(wrapper));
  if (key.empty()) return;
  CXmlElement child = element.Child(qualified(key));
  if (!value.empty()) child.Text(value);
}

void WriteAutoNamed(CXmlElement& parent) {
  WriteGarminExtension(parent, "gpxx", "RouteExtension", "IsAutoNamed", "true");
}

// `way` is what leads from the stop to the next one; null: the device finds it.
void WriteRoutePoint(CXmlElement& parent, const CRouteLeg* way) {
  CXmlElement element = parent.Child("gpxx:RoutePointExtension");
  element.Child("gpxx:Subclass").Text(kSubclass);
  if (!way) return;
  for (const auto& point : way->Shape().points.points) {
    CXmlElement position = element.Child("gpxx:rpt");
    WriteGpxPosition(position, *point);
  }
}

// Calls `write` for each point, with the way that starts there, or null where none is to be
// written.
template <typename Write>
void ForEachWithWay(const CGpsPointArray& list, const ConversionContext& context, Write&& write) {
  const CGpsPoint* stop = nullptr;
  for (const CGpsPoint& next : list.points) {
    if (stop) write(*stop, context.writesWay ? next.routeLeg.get() : nullptr);
    stop = &next;
  }
  if (stop) write(*stop, static_cast<const CRouteLeg*>(nullptr));
}

void WriteViaPoint(CXmlElement& parent) { WriteGarminExtension(parent, "trp", "ViaPoint", "", ""); }

// `writeExtensions` takes the open element `extensions`.
template <typename WriteExtensions>
void WriteGarminPoint(CXmlElement& parent, const CGpsPoint& point, std::string_view elementName,
                      const std::string& stamp, ElevationElement elevation,
                      WriteExtensions&& writeExtensions) {
  CXmlElement element = parent.Child(elementName);
  WriteGpxPosition(element, point);
  if (elevation == ElevationElement::kWritten)
    element.Child("ele").NumberText(point.altitude, kGpxDecimals);
  element.Child("time").Text(stamp);
  if (!point.name.empty()) element.Child("name").Text(point.name);
  if (!point.comment.empty()) element.Child("desc").Cdata(point.comment);
  element.Child("sym").Text("Waypoint");
  CXmlElement extensions = element.Child("extensions");
  writeExtensions(extensions);
}

void WriteAuthorLink(CXmlElement& parent) {
  CXmlElement link = parent.Child("link").Attribute("href", kProductSite);
  link.Child("text").Text(kAuthor);
}

void WriteNuviMetadata(CXmlElement& root, const Bounds& bounds, const std::string& stamp) {
  CXmlElement metadata = root.Child("metadata");
  {
    CXmlElement author = metadata.Child("author");
    author.Child("name").Text(kAuthor);
    WriteAuthorLink(author);
  }
  metadata.Child("time").Text(stamp);
  metadata.Child("bounds")
      .NumberAttribute("minlat", bounds.minLatitude, kGpxDecimals)
      .NumberAttribute("minlon", bounds.minLongitude, kGpxDecimals)
      .NumberAttribute("maxlat", bounds.maxLatitude, kGpxDecimals)
      .NumberAttribute("maxlon", bounds.maxLongitude, kGpxDecimals);
}

void WriteZumoMetadata(CXmlElement& root, const Bounds& bounds, const std::string& stamp) {
  CXmlElement metadata = root.Child("metadata");
  WriteAuthorLink(metadata);
  metadata.Child("time").Text(stamp);
  metadata.Child("bounds")
      .NumberAttribute("maxlat", bounds.maxLatitude, kGpxDecimals)
      .NumberAttribute("maxlon", bounds.maxLongitude, kGpxDecimals)
      .NumberAttribute("minlat", bounds.minLatitude, kGpxDecimals)
      .NumberAttribute("minlon", bounds.minLongitude, kGpxDecimals);
}

}  // namespace

void WriteNuviGpxBody(ByteSink& sink, const CGpsPointArray& list, bool marksViaPoints,
                      const ConversionContext& context) {
  const std::string stamp = GpxTimeStamp();
  CXmlWriter document(sink);
  document.Declaration("UTF-8", "1.0");
  CXmlElement root = document.Element("gpx")
                         .Attribute("xmlns", kGpx11Namespace)
                         .Attribute("xmlns:gpxx", kGpxExtensions)
                         .Attribute("xmlns:trp", kTripExtensions)
                         .Attribute("creator", kCreatorTag)
                         .Attribute("version", "1.1")
                         .Attribute("xmlns:xsi", kXsiNamespace)
                         .Attribute("xsi:schemaLocation", kNuviSchemaLocation);
  WriteNuviMetadata(root, Bounds(list), stamp);

  for (const CGpsPoint& point : list.points) {
    WriteGarminPoint(root, point, "wpt", stamp, ElevationElement::kWritten,
                     [](CXmlElement& extensions) {
                       WriteGarminExtension(extensions, "gpxx", "WaypointExtension", "DisplayMode",
                                            "SymbolAndName");
                     });
  }

  CXmlElement route = root.Child("rte");
  route.Child("name").Text(list.name);
  // The devices want this one without an `extensions` element around it.
  WriteAutoNamed(route);
  ForEachWithWay(list, context, [&](const CGpsPoint& point, const CRouteLeg* way) {
    const bool isInner = &point != &list.points.front() && &point != &list.points.back();
    WriteGarminPoint(route, point, "rtept", stamp, ElevationElement::kWritten,
                     [&](CXmlElement& extensions) {
                       WriteRoutePoint(extensions, way);
                       if (marksViaPoints && isInner) WriteViaPoint(extensions);
                     });
  });
}

void WriteZumoGpxBody(ByteSink& sink, const CGpsPointArray& list,
                      const ConversionContext& context) {
  const std::string stamp = GpxTimeStamp();
  CXmlWriter document(sink);
  document.Declaration("UTF-8", "1.0");
  CXmlElement root = document.Element("gpx")
                         .Attribute("creator", kCreatorTag)
                         .Attribute("version", "1.1")
                         .Attribute("xsi:schemaLocation", kZumoSchemaLocation)
                         .Attribute("xmlns", kGpx11Namespace);
  for (const NamespaceBinding& binding : kZumoNamespaces)
    root.Attribute(binding.attribute, binding.uri);
  WriteZumoMetadata(root, Bounds(list), stamp);

  CXmlElement route = root.Child("rte");
  route.Child("name").Text(list.name);
  {
    CXmlElement extensions = route.Child("extensions");
    WriteAutoNamed(extensions);
  }
  ForEachWithWay(list, context, [&](const CGpsPoint& point, const CRouteLeg* way) {
    WriteGarminPoint(route, point, "rtept", stamp, ElevationElement::kLeftOut,
                     [way](CXmlElement& extensions) {
                       WriteRoutePoint(extensions, way);
                       WriteViaPoint(extensions);
                     });
  });
}
