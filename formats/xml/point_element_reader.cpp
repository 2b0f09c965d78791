#include "formats/xml/point_element_reader.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "base/text.h"

namespace {

bool IsElement(const ElementKey& key, const XML_Char* name, const XML_Char** attributes) {
  return IsName(name, key.name) &&
         (key.className.empty() || AttributeValue(attributes, "class") == key.className);
}

bool StoreField(CGpsPoint& point, std::span<const PointField> fields, const XML_Char* name,
                std::string_view text) {
  bool isTaken = true;
  for (const PointField& field : fields) {
    if (IsName(name, field.name)) isTaken = field.store(point, text) && isTaken;
  }
  return isTaken;
}

class PointElementReader final : public CXmlReader {
 public:
  PointElementReader(PointLists& results, const PointFormat& format, ConversionContext& context)
      : m_route(AddList<CGpsRoute>(results)), m_format(format), m_context(context) {}

  void StartElement(const XML_Char* name, const XML_Char** attributes) override {
    m_text.clear();
    m_isLeaf = true;
    ++m_depth;
    if (!IsContained()) {
      if (IsContainer(name, attributes)) StartContainer(attributes);
    } else if (m_pointDepth == 0 && IsElement(m_format.point, name, attributes)) {
      StartPoint(attributes);
    }
  }

  void EndElement(const XML_Char* name) override {
    if (m_depth == m_pointDepth) {
      FinishPoint();
    } else if (m_pointDepth != 0) {
      NoteUnlessTaken(StoreField(m_point, m_format.elements, name, m_text));
      if (m_format.tellsOthers && m_isLeaf) NoteOther(name);
    } else if (IsContained() && IsName(name, m_format.listNameElement) && m_route.name.empty()) {
      m_route.name = m_text;
    }
    if (m_depth == m_containerDepth) m_containerDepth = 0;
    m_isLeaf = false;
    --m_depth;
  }

 private:
  bool IsContained() const { return m_format.containers.empty() || m_containerDepth != 0; }

  bool IsContainer(const XML_Char* name, const XML_Char** attributes) const {
    return std::any_of(m_format.containers.begin(), m_format.containers.end(),
                       [&](const ElementKey& key) { return IsElement(key, name, attributes); });
  }

  void StartContainer(const XML_Char** attributes) {
    m_containerDepth = m_depth;
    if (m_route.name.empty()) m_route.name = AttributeValue(attributes, m_format.listNameAttribute);
  }

  void StartPoint(const XML_Char** attributes) {
    m_point.Reset();
    m_pointDepth = m_depth;
    NoteUnlessTaken(StoreAttributes(m_point, attributes, m_format.attributes));
    if (m_format.elements.empty()) FinishPoint();
  }

  void NoteUnlessTaken(bool isTaken) {
    if (!isTaken) m_context.Note(ConversionNote::kLinePassedOver);
  }

  void NoteOther(const XML_Char* name) {
    const bool isKnown =
        std::any_of(m_format.elements.begin(), m_format.elements.end(),
                    [name](const PointField& field) { return IsName(name, field.name); });
    if (!isKnown && !Trim(m_text, " \t\r\n").empty()) m_context.Note(ConversionNote::kDetail);
  }

  void FinishPoint() {
    if (m_format.finish) m_format.finish(m_point);
    m_route.points.push_back(std::move(m_point));
    m_pointDepth = 0;
  }

  CGpsRoute& m_route;
  const PointFormat& m_format;
  ConversionContext& m_context;
  CGpsPoint m_point;
  bool m_isLeaf = false;        ///< nothing has ended since the last start tag
  size_t m_depth = 0;           ///< of the innermost open element; the root is at 1
  size_t m_containerDepth = 0;  ///< of the open container, 0 without one
  size_t m_pointDepth = 0;      ///< of the open point, 0 without one
};

}  // namespace

bool StoreAttributes(CGpsPoint& point, const XML_Char** attributes,
                     std::span<const PointField> fields) {
  bool isTaken = true;
  for (; *attributes; attributes += 2)
    isTaken = StoreField(point, fields, attributes[0], attributes[1]) && isTaken;
  return isTaken;
}

uint32_t ReadPoints(const WideString& path, PointLists& lists, const PointFormat& format) {
  ContextInPlace context;
  PointElementReader reader(lists, format, context);
  return ReadXmlFile(reader, path, context);
}

uint32_t ParsePoints(std::string_view bytes, PointLists& lists, const PointFormat& format,
                     ConversionContext& context) {
  PointElementReader reader(lists, format, context);
  return ParseXmlBytes(reader, bytes, context);
}
