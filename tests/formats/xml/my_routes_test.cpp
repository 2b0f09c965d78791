#include "formats/xml/my_routes.h"

#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

// The first bytes of the file: a comment where others have their declaration.
const std::string kComment = "<!--xml version=\"1.0\" encoding=\"utf-8\"-->";

std::string MyRoutesBytes(const CGpsPointArray& list) {
  return BytesOf(WriteMyRoutesXmlBody, list);
}

TEST(MyRoutesWriter, WritesPositionsOnly) {
  const auto list = MakeList("Zomer", MakePoint(52.3702157, 4.8951679, "Amsterdam", "lost", 3.0),
                             MakePoint(-0.000005, -51.5), MakePoint(0.000006, 100, "x"));
  // As a double 0.000005 lies a little above the half.
  EXPECT_EQ(MyRoutesBytes(list), kComment +
                                     "<route name=\"Zomer\">"
                                     "<location lat=\"52.37022\" long=\"4.89517\"/>"
                                     "<location lat=\"-0.00001\" long=\"-51.50000\"/>"
                                     "<location lat=\"0.00001\" long=\"100.00000\"/></route>");
}

TEST(MyRoutesWriter, EscapesTheNameOfTheList) {
  EXPECT_EQ(MyRoutesBytes(MakeList("\"<&'> \u0141\U0001F600")),
            kComment + "<route name=\"&quot;&lt;&amp;&apos;&gt; \u0141\U0001F600\"/>");
  EXPECT_EQ(MyRoutesBytes(CGpsRoute()), kComment + "<route name=\"\"/>");
}

TEST(MyRoutesReader, ReadsAttributes) {
  PointLists lists;
  EXPECT_EQ(ParseMyRoutesXml("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                             "<route name=\"Zomer &amp; zon\">\n"
                             " <location long=\"4.89517\" name=\"Amsterdam\" lat=\"52.37022\"/>\n"
                             " <location lat=\"-1.5\" long=\"-2.5\"></location>\n"
                             " <location/>\n</route>",
                             lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "Zomer & zon");
  ASSERT_EQ(lists[0]->Count(), 3u);
  EXPECT_EQ(lists[0]->points[0].name, "Amsterdam");
  EXPECT_EQ(lists[0]->points[0].latitude, 52.37022);
  EXPECT_EQ(lists[0]->points[0].longitude, 4.89517);
  EXPECT_EQ(lists[0]->points[1].name, "");
  EXPECT_EQ(lists[0]->points[1].latitude, -1.5);
  EXPECT_EQ(lists[0]->points[1].longitude, -2.5);
  EXPECT_TRUE(lists[0]->points[2].IsNull());
}

TEST(MyRoutesReader, AppendsAtTheStartOfALocation) {
  PointLists lists;
  EXPECT_EQ(ParseMyRoutesXml("<route><location lat=\"1\" long=\"2\">", lists, ContextInPlace()),
            kStatusFailure);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].longitude, 2.0);
}

TEST(MyRoutesReader, LocationsStandInsideARoute) {
  PointLists lists;
  EXPECT_EQ(ParseMyRoutesXml("<places><location lat=\"1\" long=\"2\"/></places>", lists,
                             ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(MyRoutes, RoundTripKeepsNameAndPositions) {
  const auto list = MakeList("Zomer <\"&'> \u0141\u00f3d\u017a", MakePoint(52.37022, 4.89517),
                             MakePoint(-22.95192, -43.21049));
  PointLists lists;
  EXPECT_EQ(ParseMyRoutesXml(MyRoutesBytes(list), lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, list.name);
  ASSERT_EQ(lists[0]->Count(), 2u);
  for (size_t i = 0; i < 2; ++i) EXPECT_EQ(lists[0]->points[i], list.points[i]);
}

}  // namespace
