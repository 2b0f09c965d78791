#include <gtest/gtest.h>

#include "app/list_description.h"
#include "app/options.h"
#include "conversion/list_choice.h"
#include "tests/list_builder.h"

namespace {

using Indices = std::vector<size_t>;

PointLists ListsOf(const std::string& kinds) {
  PointLists lists;
  for (const char kind : kinds) {
    if (kind == 'r') AddList<CGpsRoute>(lists);
    if (kind == 't') AddList<CGpsTrack>(lists);
    if (kind == 'w') AddList<CGpsWaypointList>(lists);
    if (kind == 'p') AddList<CGpsPoiList>(lists);
  }
  return lists;
}

Indices Select(const std::string& kinds, const std::string& choice) {
  return SelectLists(ListsOf(kinds),
                     choice.empty() ? ListChoice() : ParseListChoice(choice).value());
}

TEST(SelectLists, DefaultsToARouteThenPointsThenATrack) {
  EXPECT_EQ(Select("twrr", ""), Indices{2});
  EXPECT_EQ(Select("twp", ""), Indices{1});
  EXPECT_EQ(Select("tpw", ""), Indices{1});
  EXPECT_EQ(Select("tt", ""), Indices{0});
}

TEST(SelectLists, TakesKindsAndNumbers) {
  EXPECT_EQ(Select("twrrp", "all"), (Indices{0, 1, 2, 3, 4}));
  EXPECT_EQ(Select("twrrp", "routes"), (Indices{2, 3}));
  EXPECT_EQ(Select("twrrp", "tracks"), Indices{0});
  EXPECT_EQ(Select("twrrp", "waypoints"), Indices{1});
  EXPECT_EQ(Select("twrrp", "pois"), Indices{4});
  EXPECT_EQ(Select("tt", "routes"), Indices{});
  EXPECT_EQ(Select("twr", "3,1,3"), (Indices{2, 0}));
  EXPECT_EQ(Select("twr", "1,4"), Indices{});
}

TEST(DescribeList, NamesKindNameAndCount) {
  EXPECT_EQ(DescribeList(MakeList<CGpsTrack>("Day 1", MakePoint(1, 1))),
            "track \"Day 1\" (1 point)");
  EXPECT_EQ(DescribeList(CGpsPoiList()), "points of interest (0 points)");
}

TEST(ParseListChoice, RefusesWhatMeansNothing) {
  for (const char* text :
       {"", "0", "1,", ",1", "1 2", "-1", "Routes", "1,x", "99999999999999999999"})
    EXPECT_FALSE(ParseListChoice(text).has_value()) << text;
}

}  // namespace
