#include "formats/xml/navman.h"

#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

std::string NavmanBytes(const CGpsPointArray& list) { return BytesOf(WriteNavmanBody, list); }

// An item as the device's own files have it.
std::string Item(const std::string& name, const std::string& latitude, const std::string& longitude,
                 const std::string& type) {
  return "<Item class=\"Location\"><name>" + name + "</name><lat>" + latitude + "</lat><long>" +
         longitude + "</long><entryName>" + name + "</entryName><entryLat>" + latitude +
         "</entryLat><entryLong>" + longitude +
         "</entryLong><entryHeading>-1</entryHeading><entrySideOfLine>0</entrySideOfLine>"
         "<entryHouseNo>0</entryHouseNo><entryPostcode></entryPostcode>"
         "<entryResolved>1</entryResolved><entryValid>1</entryValid>"
         "<entryMaxRoad>0</entryMaxRoad><entryHalfSize>0</entryHalfSize><source>5</source>"
         "<resultType>9</resultType><photo></photo><typeName></typeName><phoneNum></phoneNum>"
         "<type>" +
         type + "</type></Item>";
}

// A document with these items behind the blank one.
std::string Document(const std::string& items) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>"
         "<MultistopLocations><MultistopLocations class=\"LocationList\">" +
         Item("", "0", "0", "road") + items + "</MultistopLocations></MultistopLocations>";
}

TEST(NavmanWriter, WritesABlankItemFirst) { EXPECT_EQ(NavmanBytes(CGpsRoute()), Document("")); }

TEST(NavmanWriter, WritesPointsAsAreas) {
  const auto list = MakeList("lost", MakePoint(48.85661, 2.35222, "Paris", "lost", 35.0),
                             MakePoint(-22.95192, -43.21049, "Corcovado"));
  EXPECT_EQ(NavmanBytes(list), Document(Item("Paris", "4885661", "235222", "area") +
                                        Item("Corcovado", "-2295192", "-4321049", "area")));
}

TEST(NavmanWriter, TruncatesTowardZero) {
  // 2.3 × 100000 is 229999.99999999997 in doubles.
  const auto list = MakeList("", MakePoint(2.3, -0.000019, "a"), MakePoint(-1.999999, 0.00001, ""));
  EXPECT_EQ(NavmanBytes(list),
            Document(Item("a", "229999", "-1", "area") + Item("", "-199999", "1", "area")));
}

TEST(NavmanWriter, EscapesNames) {
  EXPECT_EQ(NavmanBytes(MakeList("", MakePoint(1, 2, "\"<&'>, \u0141\u00f3d\u017a|\U0001F600"))),
            Document(Item("&quot;&lt;&amp;&apos;&gt;, \u0141\u00f3d\u017a|\U0001F600", "100000",
                          "200000", "area")));
}

TEST(NavmanReader, ReadsItems) {
  PointLists lists;
  EXPECT_EQ(ParseNavman("<MultistopLocations>\n<MultistopLocations class=\"LocationList\">\n"
                        "<Item class=\"Location\">\n<long>-235222</long><lat>4885661</lat>"
                        "<name>Paris</name><entryName>Gare</entryName>"
                        "<entryLat>1</entryLat><entryLong>2</entryLong></Item>\n"
                        "<Item class=\"Location\"></Item>\n"
                        "</MultistopLocations>\n</MultistopLocations>\n",
                        lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "");
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].name, "Paris");
  EXPECT_EQ(lists[0]->points[0].latitude, 48.85661);
  EXPECT_EQ(lists[0]->points[0].longitude, -2.35222);
  EXPECT_TRUE(lists[0]->points[1].IsNull());
  EXPECT_EQ(lists[0]->points[1].name, "");
}

// The name of the only item, whose content is this.
std::string NameOf(const std::string& content) {
  PointLists lists;
  EXPECT_EQ(ParseNavman("<MultistopLocations class=\"LocationList\"><Item class=\"Location\">" +
                            content + "</Item></MultistopLocations>",
                        lists, ContextInPlace()),
            kStatusSuccess);
  return lists.at(0)->At(0).name;
}

TEST(NavmanReader, TakesTheEntryNameOnlyWhereTheNameIsEmpty) {
  EXPECT_EQ(NameOf("<name>a</name><entryName>b</entryName>"), "a");
  EXPECT_EQ(NameOf("<name></name><entryName>b</entryName>"), "b");
  EXPECT_EQ(NameOf("<entryName>b</entryName>"), "b");
  EXPECT_EQ(NameOf("<entryName>b</entryName><name>a</name>"), "a");
  EXPECT_EQ(NameOf("<entryName>b</entryName><entryName>c</entryName>"), "b");
}

TEST(NavmanReader, ClassesDecide) {
  const std::string fields = "<name>a</name><lat>100000</lat><long>200000</long>";
  PointLists lists;
  EXPECT_EQ(ParseNavman("<MultistopLocations>"
                        "<Item class=\"Location\">" +
                            fields +
                            "</Item>"
                            "<MultistopLocations class=\"Other\"><Item class=\"Location\">" +
                            fields +
                            "</Item></MultistopLocations>"
                            "<MultistopLocations class=\"LocationList\"><Item>" +
                            fields + "</Item><Item class=\"location\">" + fields +
                            "</Item></MultistopLocations></MultistopLocations>",
                        lists, ContextInPlace()),
            kStatusSuccess);
  EXPECT_EQ(lists.at(0)->Count(), 0u);
}

TEST(NavmanReader, LocationListEndsWithItsElement) {
  const std::string item = "<Item class=\"Location\"><name>a</name></Item>";
  PointLists lists;
  ParseNavman("<MultistopLocations><MultistopLocations class=\"LocationList\">" + item +
                  "</MultistopLocations>" + item + "</MultistopLocations>",
              lists, ContextInPlace());
  EXPECT_EQ(lists.at(0)->Count(), 1u);
}

TEST(NavmanReader, FieldsOutsideOfAnItemDoNotCount) {
  PointLists lists;
  ParseNavman(
      "<MultistopLocations class=\"LocationList\"><name>x</name><lat>1</lat>"
      "<Item class=\"Location\"/><long>1</long></MultistopLocations>",
      lists, ContextInPlace());
  ASSERT_EQ(lists.at(0)->Count(), 1u);
  EXPECT_TRUE(lists[0]->points[0].IsNull());
  EXPECT_EQ(lists[0]->points[0].name, "");
  EXPECT_EQ(lists[0]->name, "");
}

TEST(Navman, FileOfTwoPointsReadsAsThree) {
  const auto list = MakeList("", MakePoint(48.85661, 2.35222, "Paris \"<&'>"),
                             MakePoint(-22.95192, -43.21049, "Corcovado"));
  PointLists lists;
  EXPECT_EQ(ParseNavman(NavmanBytes(list), lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.at(0)->Count(), 3u);
  EXPECT_TRUE(lists[0]->points[0].IsNull());
  EXPECT_EQ(lists[0]->points[0].name, "");
  EXPECT_EQ(lists[0]->points[1], list.points[0]);
  EXPECT_EQ(lists[0]->points[2], list.points[1]);
}

}  // namespace
