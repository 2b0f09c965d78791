#include "formats/xml/osm.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/product.h"
#include "base/status.h"
#include "conversion/conversion_context.h"
#include "platform/path_text.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

std::string OsmBytes(const CGpsPointArray& list) { return BytesOf(WriteOsmBody, list); }

std::string Document(const std::string& bounds, const std::string& content) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>"
         "<osm version=\"0.6\" generator=\"Corvane Map 1.21 (" +
         std::string(kProductSite) + ")\"><bounds " + bounds + "/>" + content + "</osm>";
}

TEST(OsmWriter, WritesAnEmptyList) {
  EXPECT_EQ(OsmBytes(CGpsRoute()),
            Document("minlat=\"0.000000\" minlon=\"0.000000\" maxlat=\"0.000000\" "
                     "maxlon=\"0.000000\"",
                     "<way id=\"-1\" visible=\"true\"/>"));
}

TEST(OsmWriter, WritesOnePoint) {
  EXPECT_EQ(OsmBytes(MakeList("", MakePoint(-22.95192, -43.21049))),
            Document("minlat=\"-22.951920\" minlon=\"-43.210490\" maxlat=\"-22.951920\" "
                     "maxlon=\"-43.210490\"",
                     "<node id=\"-1\" visible=\"true\" lat=\"-22.951920\" lon=\"-43.210490\"/>"
                     "<way id=\"-2\" visible=\"true\"><nd ref=\"-1\"/></way>"));
}

TEST(OsmWriter, WritesTwoPoints) {
  EXPECT_EQ(OsmBytes(MakeList("Tour", MakePoint(48.85661, 2.35222, "Paris", "Gare", 35.5),
                              MakePoint(47.394144, 0.68484, "Tours"))),
            Document("minlat=\"47.394144\" minlon=\"0.684840\" maxlat=\"48.856610\" "
                     "maxlon=\"2.352220\"",
                     "<node id=\"-1\" visible=\"true\" lat=\"48.856610\" lon=\"2.352220\">"
                     "<tag k=\"ele\" v=\"35.500000\"/><tag k=\"name\" v=\"Paris\"/>"
                     "<tag k=\"note\" v=\"Gare\"/></node>"
                     "<node id=\"-2\" visible=\"true\" lat=\"47.394144\" lon=\"0.684840\">"
                     "<tag k=\"name\" v=\"Tours\"/></node>"
                     "<way id=\"-3\" visible=\"true\"><tag k=\"name\" v=\"Tour\"/>"
                     "<nd ref=\"-1\"/><nd ref=\"-2\"/></way>"));
}

TEST(OsmWriter, WritesThreePointsAndEscapes) {
  EXPECT_EQ(
      OsmBytes(MakeList("\"<&'>", MakePoint(1, -2, "\"<&'>, |=\u0141\u00f3d\u017a\U0001F600"),
                        MakePoint(3, 4, "", "n"), MakePoint(-5, 6, "", "", -7.25))),
      Document("minlat=\"-5.000000\" minlon=\"-2.000000\" maxlat=\"3.000000\" maxlon=\"6.000000\"",
               "<node id=\"-1\" visible=\"true\" lat=\"1.000000\" lon=\"-2.000000\">"
               "<tag k=\"name\" v=\"&quot;&lt;&amp;&apos;&gt;, |=\u0141\u00f3d\u017a\U0001F600\"/>"
               "</node>"
               "<node id=\"-2\" visible=\"true\" lat=\"3.000000\" lon=\"4.000000\">"
               "<tag k=\"note\" v=\"n\"/></node>"
               "<node id=\"-3\" visible=\"true\" lat=\"-5.000000\" lon=\"6.000000\">"
               "<tag k=\"ele\" v=\"-7.250000\"/></node>"
               "<way id=\"-4\" visible=\"true\">"
               "<tag k=\"name\" v=\"&quot;&lt;&amp;&apos;&gt;\"/>"
               "<nd ref=\"-1\"/><nd ref=\"-2\"/><nd ref=\"-3\"/></way>"));
}

TEST(OsmWriter, NumbersHaveNoExponent) {
  const std::string bytes = OsmBytes(MakeList("", MakePoint(0.0000004, -1e15, "", "", 1e-7)));
  EXPECT_NE(bytes.find("lat=\"0.000000\" lon=\"-1000000000000000.000000\">"
                       "<tag k=\"ele\" v=\"0.000000\"/>"),
            std::string::npos)
      << bytes;
}

class OsmReader : public testing::Test {
 protected:
  // Reads the content of an osm element without an error.
  const PointLists& Read(const std::string& content) {
    m_lists.clear();
    EXPECT_EQ(ParseOsm("<osm>" + content + "</osm>", m_lists, ContextInPlace()), kStatusSuccess);
    return m_lists;
  }

  // The latitudes of a list; nodes of tests are told apart by them.
  std::vector<double> Latitudes(size_t list) const {
    std::vector<double> latitudes;
    for (const CGpsPoint& point : m_lists.at(list)->points) latitudes.push_back(point.latitude);
    return latitudes;
  }

  PointLists m_lists;
};

std::string Node(const std::string& id, const std::string& latitude) {
  return "<node id=\"" + id + "\" lat=\"" + latitude + "\" lon=\"9\"/>";
}

std::string Way(const std::vector<std::string>& nodes) {
  std::string way = "<way id=\"50\">";
  for (const std::string& node : nodes) way += "<nd ref=\"" + node + "\"/>";
  return way + "</way>";
}

using Values = std::vector<double>;

TEST_F(OsmReader, NodesAloneAreOneWaypointList) {
  Read(
      "<node id=\"1\" lat=\"48.85661\" lon=\"2.35222\"><tag k=\"name\" v=\"Paris\"/>"
      "<tag k=\"ele\" v=\"35.5\"/><tag k=\"note\" v=\"Gare &amp; more\"/>"
      "<tag k=\"highway\" v=\"x\"/></node>"
      "<node lon=\"-43.21049\" lat=\"-22.95192\" id=\"2\"/>");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->GetKind(), kKindWaypoints);
  EXPECT_EQ(m_lists[0]->name, "");
  ASSERT_EQ(m_lists[0]->Count(), 2u);
  const CGpsPoint& paris = m_lists[0]->points[0];
  EXPECT_EQ(paris.name, "Paris");
  EXPECT_EQ(paris.comment, "Gare & more");
  EXPECT_EQ(paris.altitude, 35.5);
  EXPECT_EQ(paris.latitude, 48.85661);
  EXPECT_EQ(paris.longitude, 2.35222);
  const CGpsPoint& rio = m_lists[0]->points[1];
  EXPECT_EQ(rio.name, "");
  EXPECT_EQ(rio.comment, "");
  EXPECT_EQ(rio.altitude, 0.0);
  EXPECT_EQ(rio.latitude, -22.95192);
  EXPECT_EQ(rio.longitude, -43.21049);
}

TEST_F(OsmReader, WaysComeBeforeTheNodes) {
  Read(
      "<node id=\"1\" lat=\"1\" lon=\"2\"><tag k=\"name\" v=\"a\"/></node>"
      "<node id=\"2\" lat=\"3\" lon=\"4\"/><node id=\"3\" lat=\"5\" lon=\"6\"/>"
      "<way id=\"70\"><nd ref=\"2\"/><nd ref=\"1\"/><nd ref=\"2\"/><tag k=\"name\" v=\"Ring\"/>"
      "<tag k=\"note\" v=\"n\"/><tag k=\"ele\" v=\"5\"/></way>"
      "<way id=\"0071\"><nd ref=\"3\"/></way>");
  ASSERT_EQ(m_lists.size(), 3u);
  EXPECT_EQ(m_lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(m_lists[0]->name, "Ring");
  EXPECT_EQ(Latitudes(0), (Values{3, 1, 3}));
  EXPECT_EQ(m_lists[0]->points[1].name, "a");
  EXPECT_EQ(m_lists[0]->points[1].longitude, 2.0);
  EXPECT_EQ(m_lists[0]->points[0].altitude, 0.0);
  EXPECT_EQ(m_lists[1]->GetKind(), kKindRoute);
  EXPECT_EQ(m_lists[1]->name, "0071");
  EXPECT_EQ(Latitudes(1), Values{5});
  EXPECT_EQ(m_lists[2]->GetKind(), kKindWaypoints);
  EXPECT_EQ(Latitudes(2), (Values{1, 3, 5}));
}

TEST_F(OsmReader, AWayWithoutNodesIsAnEmptyRoute) {
  Read("<way id=\"7\"/><way/>");
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->name, "7");
  EXPECT_EQ(m_lists[0]->Count(), 0u);
  EXPECT_EQ(m_lists[1]->name, "");
}

TEST_F(OsmReader, AWayFindsOnlyNodesInFrontOfIt) {
  ConversionContext context;
  const ConversionScope scope(context);
  Read(Node("1", "1") + Way({"1", "2", "3"}) + Node("2", "2") + Way({"2", "4"}));
  ASSERT_EQ(m_lists.size(), 3u);
  EXPECT_EQ(Latitudes(0), Values{1});
  EXPECT_EQ(Latitudes(1), Values{2});
  EXPECT_EQ(Latitudes(2), (Values{1, 2}));
  EXPECT_EQ(context.notes.Count(ConversionNote::kStopWithoutWaypoint), 3u);
}

TEST_F(OsmReader, IdsHave64Bits) {
  Read(Node("-1", "1") + Node("9223372036854775807", "2") + Node("4294967297", "3") +
       Node("1", "4") + Node("0x1F", "5") + Node("18446744073709551614", "6") +
       Way({"-1", "9223372036854775807", "4294967297", "1", "31", "-2", "0x1f",
            "18446744073709551615"}));
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(Latitudes(0), (Values{1, 2, 3, 4, 5, 6, 5, 1}));
}

TEST_F(OsmReader, OfEqualIdsTheLastCounts) {
  Read(Node("5", "1") + Way({"5"}) + Node("5", "2") + Way({"5"}));
  ASSERT_EQ(m_lists.size(), 3u);
  EXPECT_EQ(Latitudes(0), Values{1});
  EXPECT_EQ(Latitudes(1), Values{2});
  EXPECT_EQ(Latitudes(2), (Values{1, 2}));
}

TEST_F(OsmReader, AMissingIdIsZero) {
  Read("<node lat=\"1\" lon=\"2\"/><way id=\"1\"><nd/><nd ref=\"0\"/><nd ref=\"x\"/></way>");
  EXPECT_EQ(Latitudes(0), (Values{1, 1, 1}));
}

TEST_F(OsmReader, MissingPositionsAreZero) {
  Read("<node id=\"1\" lat=\"5\"/><node id=\"2\"/><node id=\"3\" lat=\"x\" lon=\" 7 \"/>");
  ASSERT_EQ(m_lists.size(), 1u);
  ASSERT_EQ(m_lists[0]->Count(), 3u);
  EXPECT_EQ(m_lists[0]->points[0].latitude, 5.0);
  EXPECT_EQ(m_lists[0]->points[0].longitude, 0.0);
  EXPECT_TRUE(m_lists[0]->points[1].IsNull());
  EXPECT_EQ(m_lists[0]->points[2].longitude, 7.0);
}

TEST_F(OsmReader, TagsOutsideOfNodesAndWaysAreIgnored) {
  Read("<tag k=\"name\" v=\"x\"/>" + Node("1", "1") +
       "<tag k=\"name\" v=\"y\"/><way id=\"2\"/>"
       "<tag k=\"name\" v=\"z\"/><relation id=\"3\"><member type=\"way\" ref=\"2\" role=\"\"/>"
       "<nd ref=\"1\"/><tag k=\"name\" v=\"r\"/></relation>");
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->name, "2");
  EXPECT_EQ(m_lists[0]->Count(), 0u);
  EXPECT_EQ(m_lists[1]->name, "");
  EXPECT_EQ(m_lists[1]->At(0).name, "");
}

TEST_F(OsmReader, TagsWithoutValuesEmptyTheText) {
  Read(
      "<node id=\"1\" lat=\"1\" lon=\"1\"><tag k=\"name\" v=\"a\"/><tag k=\"name\"/>"
      "<tag v=\"b\"/></node><way id=\"2\"><tag v=\"c\"/><tag k=\"name\" v=\"\"/></way>");
  EXPECT_EQ(m_lists.at(0)->name, "");
  EXPECT_EQ(m_lists.at(1)->At(0).name, "");
}

TEST_F(OsmReader, ANodeInAWay) {
  Read(
      "<way id=\"1\"><node id=\"2\" lat=\"3\" lon=\"4\"><tag k=\"name\" v=\"n\"/></node>"
      "<nd ref=\"2\"/><tag k=\"name\" v=\"w\"/></way>");
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->name, "w");
  EXPECT_EQ(Latitudes(0), Values{3});
  EXPECT_EQ(m_lists[1]->At(0).name, "n");
}

TEST_F(OsmReader, ANodeInAWayCountsForWhatFollows) {
  ConversionContext context;
  const ConversionScope scope(context);
  Read(Node("1", "1") + "<way id=\"50\"><nd ref=\"1\"/><nd ref=\"2\"/>" + Node("1", "3") +
       Node("2", "4") + "<nd ref=\"1\"/><nd ref=\"2\"/></way>");
  EXPECT_EQ(Latitudes(0), (Values{1, 3, 4}));
  EXPECT_EQ(context.notes.Count(ConversionNote::kStopWithoutWaypoint), 1u);
}

TEST_F(OsmReader, WaysOfManyNodes) {
  constexpr size_t kNodes = 300;
  std::string content;
  std::vector<std::string> references;
  for (size_t i = 0; i < kNodes; ++i) {
    const std::string id = std::to_string(i);
    if (i % 100 != 99) content += Node(id, id);
    references.insert(references.begin(), id);
  }
  ConversionContext context;
  const ConversionScope scope(context);
  for (size_t count = 0; count <= kNodes; ++count) {
    references.resize(kNodes - count);
    content += Way(references);
  }
  Read(content);
  ASSERT_EQ(m_lists.size(), kNodes + 2);
  uint64_t missing = 0;
  for (size_t count = 0; count <= kNodes; ++count) {
    Values expected;
    for (size_t i = kNodes; i > count; --i) {
      if ((i - 1) % 100 == 99) {
        ++missing;
      } else {
        expected.push_back(static_cast<double>(i - 1));
      }
    }
    ASSERT_EQ(Latitudes(count), expected) << count;
  }
  EXPECT_EQ(context.notes.Count(ConversionNote::kStopWithoutWaypoint), missing);
}

TEST_F(OsmReader, ANodeInANodeLeavesABlankOne) {
  Read(
      "<node id=\"1\" lat=\"1\" lon=\"1\"><tag k=\"name\" v=\"n\"/>"
      "<node id=\"2\" lat=\"2\" lon=\"2\"/></node>" +
      Way({"1", "2"}));
  ASSERT_EQ(m_lists.size(), 2u);
  ASSERT_EQ(m_lists[1]->Count(), 2u);
  EXPECT_EQ(m_lists[1]->points[0].latitude, 2.0);
  EXPECT_EQ(m_lists[1]->points[0].name, "n");
  EXPECT_TRUE(m_lists[1]->points[1].IsNull());
  EXPECT_EQ(Latitudes(0), Values{0});
}

TEST_F(OsmReader, AWayInAWayEndsBoth) {
  Read(Node("1", "1") +
       "<way id=\"2\"><nd ref=\"1\"/><way id=\"3\"><nd ref=\"1\"/></way>"
       "<nd ref=\"1\"/><tag k=\"name\" v=\"w\"/></way>");
  ASSERT_EQ(m_lists.size(), 3u);
  EXPECT_EQ(m_lists[0]->name, "2");
  EXPECT_EQ(m_lists[0]->Count(), 1u);
  EXPECT_EQ(m_lists[1]->name, "3");
  EXPECT_EQ(m_lists[1]->Count(), 1u);
}

TEST_F(OsmReader, FormerListsOfTheCallerStay) {
  AddList<CGpsTrack>(m_lists).name = "before";
  EXPECT_EQ(ParseOsm("<osm><tag k=\"name\" v=\"x\"/>" + Node("1", "1") + "</osm>", m_lists,
                     ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->name, "before");
}

// An extract as the servers of the project give it.
TEST_F(OsmReader, ReadsAnExtract) {
  EXPECT_EQ(
      ParseOsm(
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<osm version=\"0.6\" generator=\"openstreetmap-cgimap 2.0.1\" "
          "copyright=\"OpenStreetMap and contributors\">\n"
          " <bounds minlat=\"54.0889580\" minlon=\"12.2487570\" maxlat=\"54.0913900\" "
          "maxlon=\"12.2524800\"/>\n"
          " <node id=\"298884269\" visible=\"true\" version=\"1\" changeset=\"676636\" "
          "timestamp=\"2008-09-21T21:37:45Z\" user=\"x\" uid=\"46882\" lat=\"54.0901746\" "
          "lon=\"12.2482632\"/>\n"
          " <node id=\"11831902741\" visible=\"true\" version=\"2\" lat=\"54.0906309\" "
          "lon=\"12.2441924\">\n"
          "  <tag k=\"amenity\" v=\"cafe\"/>\n  <tag k=\"name\" v=\"Strandcaf&#233;\"/>\n </node>\n"
          " <way id=\"26659127\" visible=\"true\" version=\"5\">\n"
          "  <nd ref=\"298884269\"/>\n  <nd ref=\"292403538\"/>\n  <nd ref=\"11831902741\"/>\n"
          "  <tag k=\"highway\" v=\"unclassified\"/>\n  <tag k=\"name\" v=\"Am Strand\"/>\n"
          " </way>\n"
          " <relation id=\"56688\" visible=\"true\">\n"
          "  <member type=\"node\" ref=\"298884269\" role=\"\"/>\n"
          "  <member type=\"way\" ref=\"26659127\" role=\"\"/>\n"
          "  <tag k=\"name\" v=\"Line 1\"/>\n </relation>\n</osm>\n",
          m_lists, ContextInPlace()),
      kStatusSuccess);
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->name, "Am Strand");
  EXPECT_EQ(Latitudes(0), (Values{54.0901746, 54.0906309}));
  EXPECT_EQ(Latitudes(1), (Values{54.0901746, 54.0906309}));
  EXPECT_EQ(m_lists[1]->points[1].name, "Strandcaf\u00e9");
  EXPECT_EQ(m_lists[1]->points[1].longitude, 12.2441924);
}

TEST_F(OsmReader, AFaultKeepsTheWaysAndDropsTheNodes) {
  EXPECT_EQ(ParseOsm("<osm>" + Node("1", "1") + Way({"1"}) + "<way id=\"60\"><nd ref=\"1\"/>",
                     m_lists, ContextInPlace()),
            kStatusFailure);
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->name, "50");
  EXPECT_EQ(Latitudes(0), Values{1});
  EXPECT_EQ(m_lists[1]->name, "60");
  EXPECT_EQ(Latitudes(1), Values{1});
}

TEST_F(OsmReader, NothingThatIsNoXmlParses) {
  for (const std::string& bytes :
       {""s, "<"s, "x"s, "\0"s, "\xEF\xBB\xBF"s, "no tags at all"s, "<osm>"s, "<osm/><osm/>"s}) {
    EXPECT_EQ(ParseOsm(bytes, m_lists, ContextInPlace()), kStatusFailure) << bytes;
    EXPECT_TRUE(m_lists.empty());
  }
}

TEST_F(OsmReader, CutAnywhereItFails) {
  const std::string sample = OsmBytes(MakeList("Tour", MakePoint(1, 2, "a"), MakePoint(3, 4, "b")));
  std::vector<size_t> counts = {0};
  for (size_t length = 0; length < sample.size(); ++length) {
    m_lists.clear();
    EXPECT_EQ(ParseOsm(std::string_view(sample).substr(0, length), m_lists, ContextInPlace()),
              kStatusFailure);
    EXPECT_LE(m_lists.size(), 1u);
    const size_t count = m_lists.empty() ? 0 : m_lists[0]->Count();
    if (count != counts.back()) counts.push_back(count);
  }
  EXPECT_EQ(counts, (std::vector<size_t>{0, 1, 2}));
}

TEST_F(OsmReader, ZeroBytesAreFaults) {
  const std::string sample = OsmBytes(MakeList("Tour", MakePoint(1, 2, "a", "c")));
  for (size_t i = 1; i < sample.size(); ++i) {
    std::string faulty = sample;
    faulty[i] = '\0';
    EXPECT_EQ(ParseOsm(faulty, m_lists, ContextInPlace()), kStatusFailure) << i;
  }
}

TEST_F(OsmReader, OtherKindsOfXmlGiveNothing) {
  EXPECT_EQ(ParseOsm("<gpx><wpt lat=\"1\" lon=\"2\"><name>a</name></wpt></gpx>", m_lists,
                     ContextInPlace()),
            kStatusSuccess);
  EXPECT_TRUE(m_lists.empty());
}

// Ids whose plain remainders all fall together in tables of usual sizes.
TEST_F(OsmReader, IdsMadeToCollideAreNotSlow) {
  constexpr uint64_t kBuckets[] = {1ull << 40, 218971, 62233, 107897, 126271, 12345};
  for (const uint64_t step : kBuckets) {
    std::string content;
    for (uint64_t i = 0; i < 100'000; ++i) content += Node(std::to_string(i * step), "1");
    content += "<way id=\"1\">";
    for (uint64_t i = 0; i < 100'000; ++i)
      content += "<nd ref=\"" + std::to_string(i * step) + "\"/>";
    Read(content + "</way>");
    ASSERT_EQ(m_lists.size(), 2u);
    EXPECT_EQ(m_lists[0]->Count(), 100'000u);
  }
}

TEST_F(OsmReader, HostileNesting) {
  std::string document;
  for (int i = 0; i < 300'000; ++i) document += "<node id=\"1\"><way id=\"1\">";
  EXPECT_EQ(ParseOsm(document, m_lists, ContextInPlace()), kStatusFailure);
  EXPECT_EQ(m_lists.size(), 300'000u);
}

TEST_F(OsmReader, LongTextsAreNotCopiedWithoutEnd) {
  // 1000001 bytes four times, and 2^20 more, are room for five copies and no sixth.
  const std::string node = "<node id=\"1\"><tag k=\"name\" v=\"" + std::string(1'000'000, 'n') +
                           "\"/><tag k=\"note\" v=\"c\"/></node>";
  std::string references;
  for (int i = 0; i < 100'000; ++i) references += "<nd ref=\"1\"/><nd ref=\"2\"/>";
  ConversionContext context;
  const ConversionScope scope(context);
  Read(node + "<node id=\"2\"><tag k=\"name\" v=\"" + std::string(64, 'x') + "\"/></node>" +
       "<way id=\"3\">" + references + "</way>");
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->Count(), 100'005u);
  EXPECT_EQ(m_lists[0]->points[4].name.size(), 1'000'000u);
  EXPECT_EQ(m_lists[0]->points[10].name.size(), 64u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 99'995u);
}

TEST_F(OsmReader, LongTexts) {
  const std::string name(1'000'000, 'n');
  EXPECT_EQ(
      ParseOsm(OsmBytes(MakeList(name, MakePoint(1, 2, name, name))), m_lists, ContextInPlace()),
      kStatusSuccess);
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->name, name);
  EXPECT_EQ(m_lists[1]->At(0).comment, name);
}

TEST(Osm, FileOfTwoPointsReadsAsRouteAndNodes) {
  const auto list = MakeList("Tour", MakePoint(48.85661, 2.35222, "Paris \"<&'>", "c <&>", 35.5),
                             MakePoint(-22.95192, -43.21049, "Rio"));
  PointLists lists;
  EXPECT_EQ(ParseOsm(OsmBytes(list), lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "Tour");
  EXPECT_EQ(lists[1]->GetKind(), kKindWaypoints);
  for (const auto& read : lists) {
    ASSERT_EQ(read->Count(), 2u);
    EXPECT_EQ(read->points[0], list.points[0]);
    EXPECT_EQ(read->points[0].altitude, 35.5);
    EXPECT_EQ(read->points[1], list.points[1]);
  }
}

TEST(Osm, FilesHoldWhatTheBytesHold) {
  const TemporaryFolder folder;
  const auto list = MakeList("Tour", MakePoint(1, 2, "a"), MakePoint(3, 4, "b"));
  EXPECT_EQ(WriteOsm(folder.WidePathTo("a.osm"), list, 7, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.osm"), OsmBytes(list));
  PointLists lists;
  EXPECT_EQ(ReadOsm(folder.WidePathTo("a.osm"), lists, true), kStatusSuccess);
  EXPECT_EQ(lists.size(), 2u);
}

TEST(Osm, FilesThatCannotBeUsedAreFailures) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadOsm(folder.WidePathTo("none.osm"), lists, true), kStatusFailure);
  EXPECT_EQ(ReadOsm(folder.WidePathTo(""), lists, true), kStatusFailure);
  EXPECT_EQ(ReadOsm(folder.Put("cut.osm", "<osm>" + Node("1", "1")), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(WriteOsm(folder.WidePathTo("missing/a.osm"), CGpsRoute(), 0, true), kStatusFailure);
}

TEST(Osm, ReadsTheExample) {
  PointLists lists;
  EXPECT_EQ(ReadOsm(WidePath(CORVANE_SOURCE_FOLDER "/examples/baltic-coast.osm"), lists, true),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "Ostseek\u00fcste");
  ASSERT_EQ(lists[0]->Count(), 6u);
  EXPECT_EQ(lists[0]->points[0].name, "L\u00fcbeck, Holstentor");
  EXPECT_EQ(lists[0]->points[5].name, "Kap Arkona");
  EXPECT_EQ(lists[1]->Count(), 7u);
  for (const CGpsPoint& point : lists[1]->points) EXPECT_TRUE(point.IsValid());
}

}  // namespace
