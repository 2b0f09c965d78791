#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/xml/kml.h"
#include "tests/formats/xml/kml_reading.h"
#include "tests/list_builder.h"

namespace {

using namespace kml;
using std::string_literals::operator""s;

TEST_F(KmlReader, AFaultKeepsWhatIsComplete) {
  const std::string content =
      "<Document><Placemark><name>L</name><LineString>" + Coordinates("1,2,3") +
      "</LineString></Placemark><Folder><Placemark><name>a</name>" + Coordinates("1,2") +
      "</Placemark></Folder><Placemark><name>b</name>" + Coordinates("3,4") + "</Placemark>";
  EXPECT_EQ(ParseKml("<kml>" + content + "</Folder>", m_lists, ContextInPlace()), kStatusFailure);
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->name, "L");
  EXPECT_EQ(m_lists[1]->At(0).name, "a");
}

TEST_F(KmlReader, NothingThatIsNoXmlParses) {
  for (const std::string& bytes :
       {""s, "<"s, "x"s, "\0"s, "\xEF\xBB\xBF"s, "no tags at all"s, "<kml>"s, "<kml/><kml/>"s}) {
    EXPECT_EQ(ParseKml(bytes, m_lists, ContextInPlace()), kStatusFailure) << bytes;
    EXPECT_TRUE(m_lists.empty());
  }
}

TEST_F(KmlReader, CutAnywhereItFails) {
  const std::string sample = KmlBytes(MakeList("Tour", MakePoint(1, 2, "a"), MakePoint(3, 4, "b")));
  std::vector<size_t> counts = {0};
  for (size_t length = 0; length < sample.size(); ++length) {
    m_lists.clear();
    EXPECT_EQ(ParseKml(std::string_view(sample).substr(0, length), m_lists, ContextInPlace()),
              kStatusFailure);
    if (m_lists.size() != counts.back()) counts.push_back(m_lists.size());
  }
  EXPECT_EQ(counts, (std::vector<size_t>{0, 1, 2}));
}

TEST_F(KmlReader, ZeroBytesAreFaults) {
  const std::string sample = KmlBytes(MakeList("Tour", MakePoint(1, 2, "a", "c")));
  for (size_t i = 1; i < sample.size(); ++i) {
    std::string faulty = sample;
    faulty[i] = '\0';
    EXPECT_EQ(ParseKml(faulty, m_lists, ContextInPlace()), kStatusFailure) << i;
  }
}

TEST_F(KmlReader, AMillionNestedFolders) {
  std::string document;
  for (int i = 0; i < 1'000'000; ++i) document += "<Folder>";
  EXPECT_EQ(ParseKml(document, m_lists, ContextInPlace()), kStatusFailure);
  EXPECT_TRUE(m_lists.empty());
  document += "<Placemark>" + Coordinates("1,2") + "</Placemark>";
  for (int i = 0; i < 1'000'000; ++i) document += "</Folder>";
  EXPECT_EQ(ParseKml(document, m_lists, ContextInPlace()), kStatusSuccess);
  EXPECT_EQ(m_lists.size(), 1u);
}

TEST_F(KmlReader, ManyPlacemarksAndLongTexts) {
  CGpsRoute many;
  for (int i = 1; i <= 20'000; ++i)
    many.points.push_back(MakePoint(i * 0.001, -i * 0.002, std::to_string(i)));
  many.points.back().name.assign(1'000'000, 'n');
  EXPECT_EQ(ParseKml(KmlBytes(many), m_lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->Count(), 20'000u);
  ASSERT_EQ(m_lists[1]->Count(), 20'000u);
  EXPECT_EQ(m_lists[1]->points.back().name.size(), 1'000'000u);
}

TEST_F(KmlReader, CoordinatesOfManyMegabytes) {
  std::string text;
  for (int i = 0; i < 500'000; ++i) text += "2.352220,48.856610,0 ";
  EXPECT_EQ(LineOf(text).size(), 500'000u);
  EXPECT_TRUE(LineOf(std::string(5'000'000, ',')).empty());
  EXPECT_TRUE(LineOf(std::string(5'000'000, ' ')).empty());
  EXPECT_TRUE(LineOf(std::string(5'000'000, '1')).empty());
  EXPECT_EQ(PlacemarkOf(Coordinates("1,2" + std::string(5'000'000, ','))).latitude, 2.0);
}

}  // namespace
