// What the small formats of this room have in common, each tested with all of them.

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/format_table.h"
#include "formats/xml/fresh_route.h"
#include "formats/xml/gopal.h"
#include "formats/xml/ign_rando.h"
#include "formats/xml/klicktel.h"
#include "formats/xml/mapfactor.h"
#include "formats/xml/my_routes.h"
#include "formats/xml/navman.h"
#include "formats/xml/nokia_lmx.h"
#include "formats/xml/viamichelin.h"
#include "platform/path_text.h"
#include "tests/formats/points_in.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

struct SmallFormat {
  std::string_view name;
  FormatReadFn read;
  FormatWriteFn write;
  FormatParseFn parse;
  void (*writeBody)(ByteSink& sink, const CGpsPointArray& list);
  std::string_view root;

  // The trip of ours in this format: its file, its name if the format has one, its stops.
  std::string_view example;
  std::string_view exampleName;
  size_t exampleCount;
  std::string_view lastStop;

  size_t blankPoints = 0;       // written in front of the list's own
  bool keepsUnfinished = true;  // a list that has not come to its end
  bool keepsNames = true;
};

const SmallFormat kFormats[] = {
    {.name = "FreshRoute",
     .read = ReadFreshRoute,
     .write = WriteFreshRoute,
     .parse = ParseFreshRoute,
     .writeBody = WriteFreshRouteBody,
     .root = "Route",
     .example = "rhine-castles.freshroute",
     .exampleName = "Burgen am Mittelrhein",
     .exampleCount = 9,
     .lastStop = "Koblenz, Deutsches Eck"},
    {.name = "MyRoutes",
     .read = ReadMyRoutesXml,
     .write = WriteMyRoutesXml,
     .parse = ParseMyRoutesXml,
     .writeBody = WriteMyRoutesXmlBody,
     .root = "route",
     .example = "ring-of-kerry-myroutes.xml",
     .exampleName = "M\u00f3rchuaird Chiarra\u00ed",
     .exampleCount = 8,
     .lastStop = "Cill Airne",
     .keepsNames = false},
    {.name = "Navman",
     .read = ReadNavman,
     .write = WriteNavman,
     .parse = ParseNavman,
     .writeBody = WriteNavmanBody,
     .root = "MultistopLocations",
     .example = "dutch-city-tour-navman.xml",
     .exampleName = "",
     .exampleCount = 10,
     .lastStop = "Alkmaar",
     .blankPoints = 1},
    {.name = "Xvm",
     .read = ReadXvm,
     .write = WriteXvm,
     .parse = ParseXvm,
     .writeBody = WriteXvmBody,
     .root = "poi_list",
     .example = "auvergne-volcanoes.xvm",
     .exampleName = "Volcans d'Auvergne",
     .exampleCount = 8,
     .lastStop = "Le Puy-en-Velay",
     .keepsUnfinished = false},
    {.name = "Rdn",
     .read = ReadRdn,
     .write = WriteRdn,
     .parse = ParseRdn,
     .writeBody = WriteRdnBody,
     .root = "RANDONNEE",
     .example = "vanoise-huts.rdn",
     .exampleName = "",
     .exampleCount = 5,
     .lastStop = "Termignon, \u00e9glise"},
    {.name = "GoPal",
     .read = ReadGoPal,
     .write = WriteGoPal,
     .parse = ParseGoPal,
     .writeBody = WriteGoPalBody,
     .root = "tour",
     .example = "bavarian-lakes-gopal.xml",
     .exampleName = "",
     .exampleCount = 8,
     .lastStop = "F\u00fcssen"},
    {.name = "Lmx",
     .read = ReadLmx,
     .write = WriteLmx,
     .parse = ParseLmx,
     .writeBody = WriteLmxBody,
     .root = "lm:lmx",
     .example = "finnish-summer.lmx",
     .exampleName = "Kes\u00e4 Suomessa",
     .exampleCount = 6,
     .lastStop = "Hanko"},
    {.name = "KlickTel",
     .read = ReadKlickTel,
     .write = WriteKlickTel,
     .parse = ParseKlickTel,
     .writeBody = WriteKlickTelBody,
     .root = "pkDRoute",
     .example = "swabian-alb.krt",
     .exampleName = "",
     .exampleCount = 6,
     .lastStop = "Ulm, M\u00fcnster"},
    {.name = "MapFactor",
     .read = ReadMapFactor,
     .write = WriteMapFactor,
     .parse = ParseMapFactor,
     .writeBody = WriteMapFactorBody,
     .root = "routing_points",
     .example = "moravian-castles-mapfactor.xml",
     .exampleName = "Moravsk\u00e9 hrady",
     .exampleCount = 6,
     .lastStop = "Olomouc",
     .keepsUnfinished = false},
};

void PrintTo(const SmallFormat& format, std::ostream* stream) { *stream << format.name; }

class SmallFormats : public testing::TestWithParam<SmallFormat> {
 protected:
  // A document of three points.
  std::string Sample() const { return Written(kSamplePoints); }

  std::string Written(const CGpsPointArray& list) const {
    return BytesOf(GetParam().writeBody, list);
  }

  uint32_t Parse(std::string_view bytes) {
    m_lists.clear();
    return GetParam().parse(bytes, m_lists, ContextInPlace());
  }

  const CGpsRoute kSamplePoints =
      MakeList("Loire", MakePoint(47.394144, 0.68484, "Tours"),
               MakePoint(47.902964, 1.909251, "Orl\u00e9ans"), MakePoint(-1.5, -2.5, "c"));
  PointLists m_lists;
};

INSTANTIATE_TEST_SUITE_P(Xml, SmallFormats, testing::ValuesIn(kFormats),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(SmallFormats, MissingFileAndFolderAreFailures) {
  const TemporaryFolder folder;
  EXPECT_EQ(GetParam().read(folder.WidePathTo("none"), m_lists, true), kStatusFailure);
  EXPECT_EQ(GetParam().read(folder.WidePathTo(""), m_lists, true), kStatusFailure);
  EXPECT_EQ(PointsIn(m_lists), 0u);
}

TEST_P(SmallFormats, PathThatCannotBeWrittenIsAFailure) {
  const TemporaryFolder folder;
  EXPECT_EQ(GetParam().write(folder.WidePathTo("missing/a"), kSamplePoints, 0, true),
            kStatusFailure);
}

TEST_P(SmallFormats, FilesHoldWhatTheBytesHold) {
  const TemporaryFolder folder;
  EXPECT_EQ(GetParam().write(folder.WidePathTo("a"), kSamplePoints, 0, true), kStatusSuccess);
  EXPECT_EQ(GetParam().read(folder.WidePathTo("a"), m_lists, true), kStatusSuccess);
  ASSERT_EQ(m_lists.size(), 1u);
  const size_t blank = GetParam().blankPoints;
  ASSERT_EQ(m_lists[0]->Count(), blank + 3);
  for (size_t i = 0; i < 3; ++i) {
    const CGpsPoint& point = m_lists[0]->points[blank + i];
    EXPECT_TRUE(point.IsNear(kSamplePoints.points[i]));
    EXPECT_EQ(point.name, GetParam().keepsNames ? kSamplePoints.points[i].name : "");
  }
}

TEST_P(SmallFormats, ReadsTheExample) {
  const std::string path = CORVANE_SOURCE_FOLDER "/examples/" + std::string(GetParam().example);
  EXPECT_EQ(GetParam().read(WidePath(path), m_lists, true), kStatusSuccess);
  ASSERT_FALSE(m_lists.empty());
  EXPECT_EQ(m_lists[0]->name, GetParam().exampleName);
  ASSERT_EQ(m_lists[0]->Count(), GetParam().exampleCount);
  EXPECT_EQ(m_lists[0]->points.back().name, GetParam().lastStop);
  for (size_t i = GetParam().blankPoints; i < m_lists[0]->Count(); ++i)
    EXPECT_TRUE(m_lists[0]->points[i].IsValid()) << i;
}

TEST_P(SmallFormats, EmptyDocumentGivesNoPoints) {
  EXPECT_EQ(Parse("<" + std::string(GetParam().root) + "/>"), kStatusSuccess);
  EXPECT_EQ(PointsIn(m_lists), 0u);
  EXPECT_EQ(m_lists.size(), GetParam().keepsUnfinished ? 1u : 0u);
}

TEST_P(SmallFormats, NothingThatIsNoXmlParses) {
  for (const std::string& bytes :
       {""s, "<"s, "x"s, "\0"s, "\xEF\xBB\xBF"s, "no tags at all"s, "<a>"s, "<a/><b/>"s}) {
    EXPECT_EQ(Parse(bytes), kStatusFailure) << bytes;
    EXPECT_EQ(PointsIn(m_lists), 0u) << bytes;
  }
}

TEST_P(SmallFormats, DocumentsOfAnotherKindGiveNoPoints) {
  EXPECT_EQ(Parse("<gpx><rte><name>r</name><rtept lat=\"1\" lon=\"2\"><name>a</name></rtept></rte>"
                  "</gpx>"),
            kStatusSuccess);
  EXPECT_EQ(PointsIn(m_lists), 0u);
  EXPECT_EQ(Parse("<kml><Document><Placemark><name>p</name><Point><coordinates>1,2"
                  "</coordinates></Point></Placemark></Document></kml>"),
            kStatusSuccess);
  EXPECT_EQ(PointsIn(m_lists), 0u);
}

TEST_P(SmallFormats, MarkInFrontIsPassedOver) {
  EXPECT_EQ(Parse("\xEF\xBB\xBF" + Sample()), kStatusSuccess);
  EXPECT_EQ(PointsIn(m_lists), GetParam().blankPoints + 3);
}

TEST_P(SmallFormats, CutDocumentFailsWithThePointsSoFar) {
  const std::string sample = Sample();
  const size_t end = sample.rfind('>');
  std::vector<size_t> counts = {0};
  for (size_t length = 0; length <= end; ++length) {
    EXPECT_EQ(Parse(sample.substr(0, length)), kStatusFailure) << length;
    if (PointsIn(m_lists) != counts.back()) counts.push_back(PointsIn(m_lists));
  }
  std::vector<size_t> expected = {0};
  if (GetParam().keepsUnfinished) {
    for (size_t i = 1; i < GetParam().blankPoints + 3; ++i) expected.push_back(i);
  }
  expected.push_back(GetParam().blankPoints + 3);
  EXPECT_EQ(counts, expected);
  EXPECT_EQ(Parse(sample), kStatusSuccess);
}

TEST_P(SmallFormats, ZeroBytesAreFaults) {
  for (size_t i = 1, end = Sample().rfind('>'); i <= end; ++i) {
    std::string faulty = Sample();
    faulty[i] = '\0';
    EXPECT_EQ(Parse(faulty), kStatusFailure) << i;
  }
}

TEST_P(SmallFormats, ReadsALongName) {
  const std::string name(1'000'000, 'n');
  EXPECT_EQ(Parse(Written(MakeList(name, MakePoint(1, 2, name)))), kStatusSuccess);
  ASSERT_EQ(m_lists.size(), 1u);
  ASSERT_EQ(m_lists[0]->Count(), GetParam().blankPoints + 1);
  EXPECT_EQ(m_lists[0]->points.back().name, GetParam().keepsNames ? name : "");
}

TEST_P(SmallFormats, ReadsManyPoints) {
  CGpsRoute many;
  for (int i = 0; i < 10'000; ++i)
    many.points.push_back(MakePoint(i * 0.001, -i * 0.002, std::to_string(i)));
  EXPECT_EQ(Parse(Written(many)), kStatusSuccess);
  ASSERT_EQ(m_lists.size(), 1u);
  ASSERT_EQ(m_lists[0]->Count(), GetParam().blankPoints + 10'000);
  EXPECT_TRUE(m_lists[0]->points.back().IsNear(many.points.back()));
}

TEST_P(SmallFormats, WritesAndReadsPositionsOutsideOfTheWorld) {
  const double huge = 1e300;
  EXPECT_EQ(Parse(Written(MakeList("", MakePoint(huge, -huge, "a"), MakePoint(90, 180, "b"),
                                   MakePoint(-90, -180, "c")))),
            kStatusSuccess);
  EXPECT_EQ(PointsIn(m_lists), GetParam().blankPoints + 3);
}

}  // namespace
