#include "formats/xml/osm.h"

#include "base/numbers.h"
#include "base/product.h"
#include "conversion/xml_frame.h"
#include "formats/xml/bounds.h"
#include "markup/xml_writer.h"
#include "platform/prefetch.h"

namespace {

constexpr std::string_view kNode = "node";
constexpr std::string_view kWay = "way";
constexpr std::string_view kTag = "tag";
constexpr std::string_view kReference = "nd";

constexpr std::string_view kName = "name";
constexpr std::string_view kNote = "note";
constexpr std::string_view kElevation = "ele";

constexpr int kDecimals = 6;

void WriteTag(CXmlElement& parent, std::string_view key, std::string_view value) {
  parent.Child(kTag).Attribute("k", key).Attribute("v", value);
}

size_t TextSize(const CGpsPoint& point) { return point.name.size() + point.comment.size(); }

// Ids of objects that the map's database doesn't know yet count down from -1.
std::string NewId(size_t number) { return "-" + std::to_string(number); }

}  // namespace

uint32_t ReadOsm(const WideString& path, PointLists& lists, bool) {
  ContextInPlace context;
  COsmReader reader(lists, context);
  const uint32_t status = ReadXmlFile(reader, path, context);
  reader.Finish(status);
  return status;
}

uint32_t ParseOsm(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  COsmReader reader(lists, context);
  const uint32_t status = ParseXmlBytes(reader, bytes, context);
  reader.Finish(status);
  return status;
}

void COsmReader::StartElement(const XML_Char* name, const XML_Char** attributes) {
  if (IsName(name, kNode)) {
    StartNode(attributes);
  } else if (IsName(name, kWay)) {
    StartWay(attributes);
  } else if (IsName(name, kTag)) {
    TakeTag(attributes);
  } else if (IsName(name, kReference) && m_way) {
    TakeReference(attributes);
  } else if (IsName(name, "relation")) {
    m_context.Note(ConversionNote::kRelation);
  }
}

void COsmReader::EndElement(const XML_Char* name) {
  if (IsName(name, kNode)) {
    AppendReferences();
    m_allowance.AddText(TextSize(m_point));
    m_nodes->points.push_back(std::move(m_point));
    m_nodeIndex.Set(m_nodeId, m_nodes->points.back());
    m_point.Reset();
    m_inNode = false;
  } else if (IsName(name, kWay)) {
    AppendReferences();
    m_way = nullptr;
  }
}

void COsmReader::CharacterData(const XML_Char*, int) {}

void COsmReader::Finish(uint32_t status) {
  AppendReferences();
  if (status == kStatusSuccess && !m_nodes->points.empty()) m_results.push_back(std::move(m_nodes));
}

void COsmReader::StartNode(const XML_Char** attributes) {
  m_inNode = true;
  m_nodeId = ParseId(AttributeValue(attributes, "id"));
  m_point.latitude = ParseReal(AttributeValue(attributes, "lat"));
  m_point.longitude = ParseReal(AttributeValue(attributes, "lon"));
}

void COsmReader::StartWay(const XML_Char** attributes) {
  AppendReferences();
  m_way = &AddList<CGpsRoute>(m_results);
  m_way->name = AttributeValue(attributes, "id");
}

void COsmReader::TakeTag(const XML_Char** attributes) {
  if (!m_inNode && !m_way) return;
  const std::string_view key = AttributeValue(attributes, "k");
  const std::string_view value = AttributeValue(attributes, "v");
  if (!m_inNode) {
    if (key == kName)
      m_way->name = value;
    else
      m_context.Note(ConversionNote::kDetail);
  } else if (key == kName) {
    m_point.name = value;
  } else if (key == kNote) {
    m_point.comment = value;
  } else if (key == kElevation) {
    m_point.altitude = ParseReal(value);
  } else {
    m_context.Note(ConversionNote::kDetail);
  }
}

void COsmReader::TakeReference(const XML_Char** attributes) {
  m_references[m_referenceCount++] = ParseId(AttributeValue(attributes, "ref"));
  if (m_referenceCount == m_references.size()) AppendReferences();
}

// References wait for this until the index changes or the way ends: looking up many at once is
// several times as fast.
void COsmReader::AppendReferences() {
  std::array<const CGpsPoint*, kReferencesAtOnce> nodes;
  m_nodeIndex.Find({m_references.data(), m_referenceCount}, nodes.data());
  for (size_t i = 0; i < m_referenceCount; ++i) {
    if (nodes[i]) Prefetch(nodes[i]->name.data());
  }
  for (size_t i = 0; i < m_referenceCount; ++i) {
    if (!nodes[i]) {
      m_context.Note(ConversionNote::kStopWithoutWaypoint);
    } else if (m_allowance.TakeCopy(TextSize(*nodes[i]))) {
      m_way->points.push_back(*nodes[i]);
    } else {
      m_context.Note(ConversionNote::kLinePassedOver);
    }
  }
  m_referenceCount = 0;
}

void WriteOsmBody(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter writer(sink);
  writer.Declaration("UTF-8", "1.0");
  CXmlElement root =
      writer.Element("osm").Attribute("version", "0.6").Attribute("generator", kCreatorTag);
  const Bounds bounds(list);
  root.Child("bounds")
      .Attribute("minlat", ToFixedString(bounds.minLatitude, kDecimals))
      .Attribute("minlon", ToFixedString(bounds.minLongitude, kDecimals))
      .Attribute("maxlat", ToFixedString(bounds.maxLatitude, kDecimals))
      .Attribute("maxlon", ToFixedString(bounds.maxLongitude, kDecimals));

  size_t number = 0;
  for (const CGpsPoint& point : list.points) {
    CXmlElement node = root.Child(kNode);
    node.Attribute("id", NewId(++number))
        .Attribute("visible", "true")
        .Attribute("lat", ToFixedString(point.latitude, kDecimals))
        .Attribute("lon", ToFixedString(point.longitude, kDecimals));
    if (point.altitude != 0.0) WriteTag(node, kElevation, ToFixedString(point.altitude, kDecimals));
    if (!point.name.empty()) WriteTag(node, kName, point.name);
    if (!point.comment.empty()) WriteTag(node, kNote, point.comment);
  }

  CXmlElement way = root.Child(kWay);
  way.Attribute("id", NewId(list.Count() + 1)).Attribute("visible", "true");
  if (!list.name.empty()) WriteTag(way, kName, list.name);
  for (size_t i = 1; i <= list.Count(); ++i) way.Child(kReference).Attribute("ref", NewId(i));
}
