#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/xml/kml.h"
#include "tests/formats/written_bytes.h"

namespace kml {

/// What the writer gives for a list.
inline std::string KmlBytes(const CGpsPointArray& list) { return BytesOf(WriteKmlBody, list); }

/// The element that holds positions.
inline std::string Coordinates(const std::string& text) {
  return "<coordinates>" + text + "</coordinates>";
}

/// Reads documents into lists of its own.
class KmlReader : public testing::Test {
 protected:
  // Reads the content of a kml element without an error.
  const PointLists& Read(const std::string& content) {
    m_lists.clear();
    EXPECT_EQ(ParseKml("<kml>" + content + "</kml>", m_lists, ContextInPlace()), kStatusSuccess);
    return m_lists;
  }

  // Reads the content of one placemark in a folder, that of one point.
  CGpsPoint PlacemarkOf(const std::string& content) {
    Read("<Folder><Placemark>" + content + "</Placemark></Folder>");
    EXPECT_EQ(m_lists.size(), 1u);
    return m_lists.at(0)->At(0);
  }

  // Reads the points of one line in a placemark.
  std::vector<CGpsPoint> LineOf(const std::string& coordinates) {
    Read("<Folder><Placemark><LineString>" + Coordinates(coordinates) +
         "</LineString></Placemark></Folder>");
    if (m_lists.empty()) return {};
    EXPECT_EQ(m_lists.size(), 1u);
    EXPECT_EQ(m_lists[0]->GetKind(), kKindTrack);
    return {m_lists[0]->points.begin(), m_lists[0]->points.end()};
  }

  PointLists m_lists;
};

}  // namespace kml
