#include "formats/xml/fresh_route.h"

#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>";

std::string FreshRouteBytes(const CGpsPointArray& list) {
  return BytesOf(WriteFreshRouteBody, list);
}

TEST(FreshRouteWriter, WritesNamesAndPositions) {
  const auto list = MakeList("Rhein", MakePoint(50.356943, 7.5889959, "Koblenz", "lost", 64.0),
                             MakePoint(-22.95192, -0.25, ""));
  EXPECT_EQ(FreshRouteBytes(list), kDeclaration +
                                       "<Route><Name>Rhein</Name>"
                                       "<Point><Name>Koblenz</Name>"
                                       "<Latitude>50.356943</Latitude>"
                                       "<Longitude>7.588996</Longitude></Point>"
                                       "<Point><Name></Name>"
                                       "<Latitude>-22.951920</Latitude>"
                                       "<Longitude>-0.250000</Longitude></Point></Route>");
}

TEST(FreshRouteWriter, EmptyListHasAName) {
  EXPECT_EQ(FreshRouteBytes(CGpsRoute()), kDeclaration + "<Route><Name></Name></Route>");
}

TEST(FreshRouteWriter, EscapesNames) {
  EXPECT_EQ(FreshRouteBytes(MakeList("\u041b & B", MakePoint(1, 2, "\"<&'> \u0141\U0001F600"))),
            kDeclaration +
                "<Route><Name>\u041b &amp; B</Name>"
                "<Point><Name>&quot;&lt;&amp;&apos;&gt; \u0141\U0001F600</Name>"
                "<Latitude>1.000000</Latitude><Longitude>2.000000</Longitude></Point></Route>");
}

TEST(FreshRouteWriter, HandsTheListOverInsteadOfWriting) {
  const TemporaryFolder folder;
  const WideString path = folder.WidePathTo("a.freshroute");
  const auto list = MakeList("Rhein", MakePoint(50.356943, 7.588996, "Koblenz"));
  EXPECT_EQ(WriteFreshRoute(path, list, 1, true), kStatusNotImplemented);

  std::string taken;
  ConversionContext context;
  context.handOff = [&taken](const CGpsPointArray& given) {
    taken += given.name;
    return uint32_t{kStatusAccessDenied};
  };
  const ConversionScope scope(context);
  EXPECT_EQ(WriteFreshRoute(path, list, 1, true), kStatusAccessDenied);
  EXPECT_EQ(taken, "Rhein");
  EXPECT_FALSE(folder.Has("a.freshroute"));

  EXPECT_EQ(WriteFreshRoute(path, list, 0, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.freshroute"), FreshRouteBytes(list));
  EXPECT_EQ(taken, "Rhein");
}

TEST(FreshRouteReader, ReadsPointsInAnyOrderOfElements) {
  PointLists lists;
  EXPECT_EQ(ParseFreshRoute("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Route>\n"
                            "<Point><Longitude>7.588996</Longitude><Name>Koblenz</Name>"
                            "<Latitude>50.356943</Latitude></Point>\n"
                            "<Name>Rhein</Name>\n<Point/>\n</Route>",
                            lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "Rhein");
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].name, "Koblenz");
  EXPECT_EQ(lists[0]->points[0].latitude, 50.356943);
  EXPECT_EQ(lists[0]->points[0].longitude, 7.588996);
  EXPECT_TRUE(lists[0]->points[1].IsNull());
  EXPECT_EQ(lists[0]->points[1].name, "");
}

TEST(FreshRouteReader, PositionsOutsideOfAPointDoNotCount) {
  PointLists lists;
  ParseFreshRoute("<Route><Latitude>1</Latitude><Longitude>2</Longitude><Point/></Route>", lists,
                  ContextInPlace());
  ASSERT_EQ(lists.at(0)->Count(), 1u);
  EXPECT_TRUE(lists[0]->points[0].IsNull());
}

TEST(FreshRoute, RoundTripKeepsNamesAndPositions) {
  const auto list = MakeList("Rhein & Mosel", MakePoint(50.356943, 7.588996, "K\u00f6ln <\"'>"),
                             MakePoint(-22.95192, -43.21049, "\u0141\u00f3d\u017a"));
  PointLists lists;
  EXPECT_EQ(ParseFreshRoute(FreshRouteBytes(list), lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, list.name);
  ASSERT_EQ(lists[0]->Count(), 2u);
  for (size_t i = 0; i < 2; ++i) EXPECT_EQ(lists[0]->points[i], list.points[i]);
}

}  // namespace
