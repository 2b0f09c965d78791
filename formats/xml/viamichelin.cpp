#include "formats/xml/viamichelin.h"

#include <memory>
#include <utility>

#include "base/numbers.h"
#include "conversion/xml_frame.h"
#include "formats/xml/point_element_reader.h"
#include "markup/repeat_allowance.h"
#include "markup/xml_reader.h"
#include "markup/xml_writer.h"

namespace {

constexpr std::string_view kDoctype =
    "poi_list SYSTEM \"http://www.viamichelin.com/dtd/export.dtd\"";

constexpr int kDecimals = 6;

constexpr PointField kAttributes[] = {
    {"name", TakeName}, {"longitude", TakeLongitude}, {"latitude", TakeLatitude}};

class XvmReader final : public CXmlReader {
 public:
  XvmReader(PointLists& results, ConversionContext& context)
      : m_results(results), m_context(context) {}

  void StartElement(const XML_Char* name, const XML_Char** attributes) override {
    m_text.clear();
    if (IsName(name, "itinerary")) {
      m_route = std::make_unique<CGpsRoute>();
      m_route->name = AttributeValue(attributes, "name");
    } else if (ListOf(name)) {
      m_point.Reset();
      StoreAttributes(m_point, attributes, kAttributes);
      m_allowance.AddText(m_point.name.size());
    } else if (IsName(name, "step") || IsName(name, "poi")) {
      m_context.Note(ConversionNote::kLinePassedOver);
    }
  }

  void EndElement(const XML_Char* name) override {
    if (IsName(name, "description")) {
      m_point.comment = m_text;
      m_allowance.AddText(m_text.size());
    } else if (IsName(name, "itinerary")) {
      HandOver(std::move(m_route));
    } else if (IsName(name, "poi_list")) {
      HandOver(std::move(m_waypoints));
    } else if (CGpsPointArray* list = ListOf(name)) {
      AppendPoint(*list);
    }
  }

 private:
  // The list that a point of this element belongs to: steps stand inside itineraries, free points
  // outside. Null for every other element.
  CGpsPointArray* ListOf(const XML_Char* name) {
    if (m_route) return IsName(name, "step") ? m_route.get() : nullptr;
    if (!IsName(name, "poi")) return nullptr;
    if (!m_waypoints) m_waypoints = std::make_unique<CGpsWaypointList>();
    return m_waypoints.get();
  }

  // A point inside another one is the last to be read, and so both come out as this one.
  void AppendPoint(CGpsPointArray& list) {
    if (m_allowance.TakeCopy(m_point.name.size() + m_point.comment.size())) {
      list.points.push_back(m_point);
    } else {
      m_context.Note(ConversionNote::kLinePassedOver);
    }
  }

  void HandOver(std::unique_ptr<CGpsPointArray> list) {
    if (list) m_results.push_back(std::move(list));
  }

  PointLists& m_results;
  ConversionContext& m_context;
  std::unique_ptr<CGpsRoute> m_route;             ///< the open itinerary
  std::unique_ptr<CGpsWaypointList> m_waypoints;  ///< made at the first free point
  CGpsPoint m_point;
  RepeatAllowance m_allowance;  ///< for the texts of points inside points
};

}  // namespace

uint32_t ReadXvm(const WideString& path, PointLists& lists, bool silent) {
  return ReadXmlFileOf<XvmReader>(path, lists, silent);
}

uint32_t ParseXvm(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  return ParseXmlOf<XvmReader>(bytes, lists, context);
}

void WriteXvmBody(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter writer(sink);
  writer.Declaration("UTF-8", "1.0");
  writer.Doctype(kDoctype);
  CXmlElement root = writer.Element("poi_list").Attribute("version", "2.0").Attribute("folder", "");
  CXmlElement itinerary = root.Child("itinerary").Attribute("name", list.name);
  for (const CGpsPoint& point : list.points) {
    itinerary.Child("step")
        .Attribute("name", point.name)
        .Attribute("longitude", ToFixedString(point.longitude, kDecimals))
        .Attribute("latitude", ToFixedString(point.latitude, kDecimals));
  }
  itinerary.Child("description").Text(list.name);
}
