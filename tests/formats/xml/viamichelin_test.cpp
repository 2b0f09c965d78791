#include "formats/xml/viamichelin.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

std::string XvmBytes(const CGpsPointArray& list) { return BytesOf(WriteXvmBody, list); }

// What stands in front of the itinerary.
const std::string kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>"
    "<!DOCTYPE poi_list SYSTEM \"http://www.viamichelin.com/dtd/export.dtd\">"
    "<poi_list version=\"2.0\" folder=\"\">";

TEST(XvmWriter, WritesStepsAndThenTheDescription) {
  const auto list =
      MakeList("Auvergne", MakePoint(45.777222, 3.087025, "Clermont", "lost", 400.0),
               MakePoint(-0.25, -1.1234565, ""), MakePoint(45.0428, 3.8829, "Le Puy"));
  EXPECT_EQ(XvmBytes(list),
            kHead +
                "<itinerary name=\"Auvergne\">"
                "<step name=\"Clermont\" longitude=\"3.087025\" latitude=\"45.777222\"/>"
                "<step name=\"\" longitude=\"-1.123457\" latitude=\"-0.250000\"/>"
                "<step name=\"Le Puy\" longitude=\"3.882900\" latitude=\"45.042800\"/>"
                "<description>Auvergne</description></itinerary></poi_list>");
}

TEST(XvmWriter, EmptyListHasADescription) {
  EXPECT_EQ(XvmBytes(CGpsRoute()),
            kHead + "<itinerary name=\"\"><description></description></itinerary></poi_list>");
}

TEST(XvmWriter, EscapesNames) {
  EXPECT_EQ(XvmBytes(MakeList("A & B", MakePoint(1, 2, "\"<&'>"))),
            kHead +
                "<itinerary name=\"A &amp; B\">"
                "<step name=\"&quot;&lt;&amp;&apos;&gt;\" longitude=\"2.000000\""
                " latitude=\"1.000000\"/>"
                "<description>A &amp; B</description></itinerary></poi_list>");
  EXPECT_EQ(XvmBytes(MakeList("\u041b", MakePoint(1, 2, "\u0141\u00f3d\u017a \U0001F600"))),
            kHead +
                "<itinerary name=\"\u041b\">"
                "<step name=\"\u0141\u00f3d\u017a \U0001F600\" longitude=\"2.000000\""
                " latitude=\"1.000000\"/>"
                "<description>\u041b</description></itinerary></poi_list>");
}

TEST(XvmReader, ReadsItinerariesAndFreePoints) {
  PointLists lists;
  EXPECT_EQ(ParseXvm(kHead + "\n<poi name=\"Hotel\" latitude=\"48.5\" longitude=\"2.25\">"
                             "<description>Four <![CDATA[& more]]> stars</description></poi>\n"
                             "<itinerary name=\"First\">\n"
                             "<step latitude=\"1.5\" longitude=\"2.5\" name=\"A\">"
                             "<description>of A</description></step>\n"
                             "<step longitude=\"-3.5\" latitude=\"-4.5\" name=\"B\"/>\n"
                             "<description>First</description>\n</itinerary>\n"
                             "<itinerary name=\"Second\"/>\n"
                             "<poi latitude=\"5\"/>\n</poi_list>",
                     lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 3u);

  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "First");
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].name, "A");
  EXPECT_EQ(lists[0]->points[0].comment, "of A");
  EXPECT_EQ(lists[0]->points[0].latitude, 1.5);
  EXPECT_EQ(lists[0]->points[0].longitude, 2.5);
  EXPECT_EQ(lists[0]->points[1].name, "B");
  EXPECT_EQ(lists[0]->points[1].comment, "");
  EXPECT_EQ(lists[0]->points[1].latitude, -4.5);
  EXPECT_EQ(lists[0]->points[1].longitude, -3.5);

  EXPECT_EQ(lists[1]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[1]->name, "Second");
  EXPECT_EQ(lists[1]->Count(), 0u);

  EXPECT_EQ(lists[2]->GetKind(), kKindWaypoints);
  EXPECT_EQ(lists[2]->name, "");
  ASSERT_EQ(lists[2]->Count(), 2u);
  EXPECT_EQ(lists[2]->points[0].name, "Hotel");
  EXPECT_EQ(lists[2]->points[0].comment, "Four & more stars");
  EXPECT_EQ(lists[2]->points[0].latitude, 48.5);
  EXPECT_EQ(lists[2]->points[0].longitude, 2.25);
  EXPECT_EQ(lists[2]->points[1].name, "");
  EXPECT_EQ(lists[2]->points[1].comment, "");
  EXPECT_EQ(lists[2]->points[1].latitude, 5.0);
  EXPECT_EQ(lists[2]->points[1].longitude, 0.0);
}

TEST(XvmReader, MakesNoWaypointListWithoutFreePoints) {
  PointLists lists;
  EXPECT_EQ(ParseXvm("<poi_list><itinerary name=\"only\"/></poi_list>", lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
}

TEST(XvmReader, GivesNoListsForADocumentWithNothingInIt) {
  PointLists lists;
  EXPECT_EQ(ParseXvm("<poi_list/>", lists, ContextInPlace()), kStatusSuccess);
  EXPECT_TRUE(lists.empty());
}

TEST(XvmReader, PointsInsideAPointRepeatIt) {
  PointLists lists;
  EXPECT_EQ(ParseXvm("<poi_list><poi name=\"a\"><poi name=\"b\" latitude=\"1\"/></poi></poi_list>",
                     lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.at(0)->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].name, "b");
  EXPECT_EQ(lists[0]->points[1].name, "b");
  EXPECT_EQ(lists[0]->points[1].latitude, 1.0);
}

TEST(XvmReader, LongTextsAreNotRepeatedWithoutEnd) {
  // The name and the description of 500000 bytes each four times, and 2^20 bytes more, are room for
  // five copies of both.
  const std::string text(500'000, 'n');
  std::string points;
  for (int i = 1; i < 10'000; ++i) points += "<poi>";
  points += "<poi name=\"" + text + "\"><description>" + text + "</description>";
  for (int i = 0; i < 10'000; ++i) points += "</poi>";
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(ParseXvm("<poi_list>" + points + "</poi_list>", lists, ContextInPlace()),
            kStatusSuccess);
  EXPECT_EQ(lists.at(0)->Count(), 5u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 9'995u);
}

TEST(XvmReader, StepsStandInsideAndFreePointsOutsideOfItineraries) {
  PointLists lists;
  EXPECT_EQ(ParseXvm("<poi_list><step name=\"lost\" latitude=\"1\" longitude=\"2\"/>"
                     "<itinerary name=\"r\"><poi name=\"inner\" latitude=\"3\" longitude=\"4\">"
                     "<description>of nobody</description></poi>"
                     "<step name=\"s\" latitude=\"5\" longitude=\"6\"/></itinerary>"
                     "<step name=\"late\" latitude=\"7\" longitude=\"8\"/></poi_list>",
                     lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, "s");
  EXPECT_EQ(lists[0]->points[0].comment, "");
}

TEST(XvmReader, FaultKeepsFinishedItinerariesOnly) {
  const std::string step = "<step name=\"s\" latitude=\"5\" longitude=\"6\"/>";
  const std::string poi = "<poi name=\"p\" latitude=\"5\" longitude=\"6\"/>";
  PointLists lists;
  EXPECT_EQ(ParseXvm("<poi_list>" + poi + "<itinerary name=\"done\">" + step +
                         "</itinerary><itinerary name=\"open\">" + step + "</poi_list>",
                     lists, ContextInPlace()),
            kStatusFailure);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "done");
  EXPECT_EQ(lists[0]->Count(), 1u);
}

TEST(XvmReader, StrayPointsAreNoted) {
  ConversionContext context;
  const ConversionScope scope(context);
  PointLists lists;
  ParseXvm("<poi_list><step/><itinerary><poi/><step/></itinerary><poi/><description/></poi_list>",
           lists, ContextInPlace());
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 2u);
}

TEST(XvmReader, DescriptionBehindAStepIsNobodysComment) {
  PointLists lists;
  ParseXvm(
      "<poi_list><itinerary><description>head</description><step/>"
      "<description>between</description><step/><description>tail</description></itinerary>"
      "<description>list</description><poi/><description>end</description></poi_list>",
      lists, ContextInPlace());
  ASSERT_EQ(lists.size(), 2u);
  ASSERT_EQ(lists[0]->Count(), 2u);
  ASSERT_EQ(lists[1]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].comment, "");
  EXPECT_EQ(lists[0]->points[1].comment, "");
  EXPECT_EQ(lists[1]->points[0].comment, "");
}

TEST(XvmReader, ItineraryInsideAStepDoesNotKeepTheStep) {
  PointLists lists;
  EXPECT_EQ(ParseXvm("<poi_list><itinerary name=\"outer\"><step name=\"a\">"
                     "<itinerary name=\"inner\"><description>x</description></itinerary>"
                     "<description>y</description></step></itinerary></poi_list>",
                     lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "inner");
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(XvmReader, ItineraryInsideAnotherIsNeverHandedOverTwice) {
  PointLists lists;
  EXPECT_EQ(ParseXvm("<poi_list><itinerary name=\"outer\"><step name=\"a\"/>"
                     "<itinerary name=\"inner\"><step name=\"b\"/></itinerary>"
                     "<step name=\"c\"/></itinerary></poi_list>",
                     lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "inner");
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, "b");
}

TEST(Xvm, RoundTripKeepsNamesAndPositions) {
  const auto list =
      MakeList("Auvergne <\"&'>", MakePoint(45.777222, 3.087025, "Ch\u00e2tel & Guyon"),
               MakePoint(-22.95192, -43.21049, "\u0141\u00f3d\u017a"));
  PointLists lists;
  EXPECT_EQ(ParseXvm(XvmBytes(list), lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, list.name);
  ASSERT_EQ(lists[0]->Count(), 2u);
  for (size_t i = 0; i < 2; ++i) EXPECT_EQ(lists[0]->points[i], list.points[i]);
}

}  // namespace
