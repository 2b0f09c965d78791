#include "formats/xml/point_element_reader.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"

namespace {

constexpr PointField kAttributes[] = {{"name", TakeName}, {"lat", TakeLatitude}};
constexpr PointField kElements[] = {{"title", TakeName},
                                    {"note", TakeComment},
                                    {"lat", TakeLatitude},
                                    {"lon", TakeLongitude},
                                    {"height", TakeAltitude}};
constexpr PointFormat kStops{.listNameElement = "title",
                             .point = {"stop"},
                             .attributes = kAttributes,
                             .elements = kElements};

uint32_t ParseStops(std::string_view document, PointLists& lists) {
  return ParsePoints(document, lists, kStops, ContextInPlace());
}

// The same stops in trips of a class.
constexpr ElementKey kContainers[] = {{"trip", "planned"}, {"tour"}};
constexpr PointFormat kPlannedStops{.containers = kContainers,
                                    .listNameAttribute = "name",
                                    .listNameElement = "title",
                                    .point = {"stop", "place"},
                                    .attributes = kAttributes,
                                    .elements = kElements};

// The names of the points of a document.
std::string PlannedStops(std::string_view document) {
  PointLists lists;
  EXPECT_EQ(ParsePoints(document, lists, kPlannedStops, ContextInPlace()), kStatusSuccess);
  std::string names;
  for (const CGpsPoint& point : lists.at(0)->points) names += point.name;
  return names;
}

TEST(PointElementReader, RouteStandsInTheResultsBeforeTheFileIsParsed) {
  PointLists lists;
  EXPECT_EQ(ParseStops("", lists), kStatusFailure);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(PointElementReader, StoresAttributesAndElements) {
  PointLists lists;
  EXPECT_EQ(ParseStops("<trip><stop name=\"A\" lat=\"1.5\" other=\"x\"><lon>2.5</lon>"
                       "<height>35</height><note>n</note><other>y</other></stop>"
                       "<stop lat=\"1\"><title>B</title><lat>-3</lat></stop></trip>",
                       lists),
            kStatusSuccess);
  ASSERT_EQ(lists.at(0)->Count(), 2u);
  const CGpsPoint& first = lists[0]->points[0];
  EXPECT_EQ(first.name, "A");
  EXPECT_EQ(first.comment, "n");
  EXPECT_EQ(first.latitude, 1.5);
  EXPECT_EQ(first.longitude, 2.5);
  EXPECT_EQ(first.altitude, 35.0);
  EXPECT_EQ(lists[0]->points[1].name, "B");
  EXPECT_EQ(lists[0]->points[1].latitude, -3.0);
}

TEST(PointElementReader, EachPointStartsAnew) {
  PointLists lists;
  ParseStops(
      "<trip><stop name=\"A\" lat=\"1\"><lon>2</lon><height>3</height><note>n</note></stop>"
      "<note>between</note><stop/></trip>",
      lists);
  ASSERT_EQ(lists.at(0)->Count(), 2u);
  const CGpsPoint& second = lists[0]->points[1];
  EXPECT_TRUE(second.IsNull());
  EXPECT_EQ(second.altitude, 0.0);
  EXPECT_EQ(second.name, "");
  EXPECT_EQ(second.comment, "");
}

TEST(PointElementReader, TextOfOneElementComesTogether) {
  PointLists lists;
  ParseStops(
      "<trip><stop><title>a<!-- c -->b<![CDATA[<c>]]>&amp;&#233;<?pi?>d</title></stop></trip>",
      lists);
  ASSERT_EQ(lists.at(0)->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, "ab<c>&\u00e9d");
}

TEST(PointElementReader, PointIsAppendedAtItsEnd) {
  PointLists lists;
  EXPECT_EQ(ParseStops("<trip><stop name=\"A\"></stop><stop name=\"B\"><lon>2</lon>", lists),
            kStatusFailure);
  ASSERT_EQ(lists.at(0)->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, "A");
}

TEST(PointElementReader, PointWithoutElementsIsAppendedAtItsStart) {
  constexpr PointFormat kMarks{.point = {"mark"}, .attributes = kAttributes};
  PointLists lists;
  EXPECT_EQ(ParsePoints("<trip><mark name=\"A\"/><mark name=\"B\"><lon>2</lon>", lists, kMarks,
                        ContextInPlace()),
            kStatusFailure);
  ASSERT_EQ(lists.at(0)->Count(), 2u);
  EXPECT_EQ(lists[0]->points[1].name, "B");
  EXPECT_EQ(lists[0]->points[1].longitude, 0.0);
}

TEST(PointElementReader, FinishesEachPointOnce) {
  constexpr PointFormat kCounted{.point = {"stop"},
                                 .attributes = kAttributes,
                                 .elements = kElements,
                                 .finish = [](CGpsPoint& point) { point.name += "!"; }};
  PointLists lists;
  ParsePoints("<trip><stop name=\"A\"/><stop><title>B</title></stop></trip>", lists, kCounted,
              ContextInPlace());
  ASSERT_EQ(lists.at(0)->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].name, "A!");
  EXPECT_EQ(lists[0]->points[1].name, "B!");
}

TEST(PointElementReader, PointsCountInsideAContainerOnly) {
  const std::string stop = "<stop class=\"place\" name=\"A\"/>";
  EXPECT_EQ(PlannedStops("<trip class=\"planned\">" + stop + stop + "</trip>"), "AA");
  EXPECT_EQ(PlannedStops("<tour class=\"any\"><day>" + stop + "</day></tour>"), "A");
  EXPECT_EQ(PlannedStops("<trip>" + stop + "</trip>"), "");
  EXPECT_EQ(PlannedStops("<x>" + stop + "<tour/>" + stop + "</x>"), "");
}

TEST(PointElementReader, ContainerEndsWithItsOwnEndTag) {
  const std::string stop = "<stop class=\"place\" name=\"A\"/>";
  EXPECT_EQ(
      PlannedStops("<trip><trip class=\"planned\"><trip/>" + stop + "</trip>" + stop + "</trip>"),
      "A");
  EXPECT_EQ(PlannedStops("<tour><tour/>" + stop + "</tour>"), "A");
}

TEST(PointElementReader, PointEndsWithItsOwnEndTag) {
  EXPECT_EQ(PlannedStops("<tour><stop class=\"place\"><stop class=\"place\" name=\"inner\"/>"
                         "<title>A</title></stop><stop>no</stop></tour>"),
            "A");
}

TEST(PointElementReader, NamesTheListOnce) {
  PointLists lists;
  ParsePoints(
      "<x><title>outside</title><tour><title/><stop class=\"place\"><title>A</title></stop>"
      "<title>first</title><title>second</title></tour><tour name=\"third\"/></x>",
      lists, kPlannedStops, ContextInPlace());
  ParsePoints("<tour name=\"attribute\"><title>element</title></tour>", lists, kPlannedStops,
              ContextInPlace());
  EXPECT_EQ(lists.at(0)->name, "first");
  EXPECT_EQ(lists.at(1)->name, "attribute");
}

}  // namespace
