#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "formats/xml/node_index.h"
#include "io/byte_sink.h"
#include "markup/repeat_allowance.h"
#include "markup/xml_reader.h"
#include "model/point_list.h"

// OpenStreetMap's XML: nodes, and ways that name them.

/// Builds a route of every way, which must follow its nodes in the file, and one waypoint list of
/// all nodes.
class COsmReader final : public CXmlReader {
 public:
  COsmReader(PointLists& results, ConversionContext& context)
      : m_results(results), m_context(context) {}

  void StartElement(const XML_Char* name, const XML_Char** attributes) override;
  void EndElement(const XML_Char* name) override;
  /// Does nothing: all that counts stands in attributes.
  void CharacterData(const XML_Char* text, int length) override;

  /// To be called with the status of the parse: completes the last way, and hands the list of all
  /// nodes over if it is success.
  void Finish(uint32_t status);

 private:
  static constexpr size_t kReferencesAtOnce = 64;

  void StartNode(const XML_Char** attributes);
  void StartWay(const XML_Char** attributes);
  void TakeTag(const XML_Char** attributes);
  void TakeReference(const XML_Char** attributes);
  void AppendReferences();

  PointLists& m_results;
  ConversionContext& m_context;
  std::unique_ptr<CGpsWaypointList> m_nodes = std::make_unique<CGpsWaypointList>();
  NodeIndex m_nodeIndex;  ///< into m_nodes
  CGpsPoint m_point;
  uint64_t m_nodeId = 0;
  CGpsPointArray* m_way = nullptr;  ///< the last list of the results, while a way is open
  std::array<uint64_t, kReferencesAtOnce> m_references{};  ///< ids of the way's next points
  size_t m_referenceCount = 0;
  RepeatAllowance m_allowance;  ///< for the texts of nodes in ways
  bool m_inNode = false;
};

/// Reads ways and nodes. 0, or 1 when the file cannot be opened or parsed; of such a file the ways
/// so far stay.
uint32_t ReadOsm(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseOsm(std::string_view bytes, PointLists& lists, ConversionContext& context);

/// Writes the points as nodes and one way through them. 0, or 1 on failure.
void WriteOsmBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteOsm = kWriterOf<WriteOsmBody>;
