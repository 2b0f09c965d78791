#include "conversion/fit.h"

#include <string>

#include <gtest/gtest.h>

#include "conversion/text_encoding.h"

namespace {

CItineraryFormat Row(const RowFacts& facts) { return {u"x", 0, nullptr, nullptr, 0, facts}; }

CGpsRoute Stops(const std::vector<std::string>& names) {
  CGpsRoute route;
  for (const std::string& name : names) {
    CGpsPoint& point = route.points.emplace_back();
    point.latitude = static_cast<double>(route.Count());
    point.name = name;
  }
  return route;
}

std::vector<std::string> Names(const CGpsPointArray& list) {
  std::vector<std::string> names;
  for (const CGpsPoint& point : list.points) names.push_back(point.name);
  return names;
}

using NameList = std::vector<std::string>;

TEST(FitItinerary, LeavesUnicodeAlone) {
  CGpsRoute list = Stops({"\u0416|,\n", "", "", "\u0416|,\n"});
  const CItineraryFormat row = Row({});
  EXPECT_FALSE(WouldFit(list, row, ""));
  EXPECT_FALSE(FitItinerary(list, row, "").HasDone());
  EXPECT_EQ(Names(list), NameList({"\u0416|,\n", "", "", "\u0416|,\n"}));
}

TEST(FitItinerary, GivesNumbersThatNoNameHas) {
  CGpsRoute list = Stops({"", "1", "", "3 2", "", "a", "a", "a", "a 2"});
  const CItineraryFormat row = Row({.findsByName = true});
  EXPECT_TRUE(WouldFit(list, row, ""));
  const FitReport report = FitItinerary(list, row, "");
  EXPECT_EQ(Names(list), NameList({"1 2", "1", "3", "3 2", "5", "a", "a 3", "a 4", "a 2"}));
  EXPECT_EQ(report.namesGiven, 3u);
  EXPECT_EQ(report.namesMadeUnique, 2u);
  EXPECT_FALSE(WouldFit(list, row, ""));
}

TEST(FitItinerary, DoesNotLookAtBlanksAroundNames) {
  CGpsRoute list = Stops({"a", " a ", "  "});
  FitItinerary(list, Row({.findsByName = true}), "");
  EXPECT_EQ(Names(list), NameList({"a", "a 2", "3"}));
}

// All of these are cut to the same forty letters.
TEST(FitItinerary, TakesLinearTimeForNamesThatAreCutAlike) {
  const std::string start(40, 'x');
  std::vector<std::string> names;
  for (int i = 0; i < 50000; ++i) names.push_back(start + std::to_string(i));
  CGpsRoute list = Stops(names);
  const FitReport report =
      FitItinerary(list, Row({.findsByName = true, .limits = {.longestName = 40}}), "");
  EXPECT_EQ(report.textsCut, 50000u);
  EXPECT_EQ(report.namesMadeUnique, 49999u);
  EXPECT_EQ(list.At(49999).name, std::string(31, 'x') + " 50000");
}

TEST(FitItinerary, CutsWholeLetters) {
  const CItineraryFormat row = Row({.limits = {.longestName = 3}});
  // A letter with its accent; a character outside the BMP takes two units.
  CGpsRoute list = Stops({"abe\u0301", "ab\U0001F600", "abcd", "abc"});
  const FitReport report = FitItinerary(list, row, "");
  EXPECT_EQ(Names(list), NameList({"ab", "ab", "abc", "abc"}));
  EXPECT_EQ(report.textsCut, 3u);
}

TEST(FitItinerary, SpellsForTheEncodingOfTheFile) {
  const CItineraryFormat row = Row({.text = TextForm::kNarrow});
  CGpsRoute list = Stops({"\u0416\u010D\u00E9"});
  FitItinerary(list, row, "windows-1251");
  EXPECT_EQ(Names(list), NameList({"\u0416ce"}));
}

TEST(FitItinerary, SplitsLongLists) {
  CGpsRoute list = Stops({"a", "b", "c"});
  EXPECT_EQ(FitItinerary(list, Row({.limits = {.mostPoints = 2}}), "").mostPoints, 2u);
  EXPECT_EQ(FitItinerary(list, Row({.limits = {.mostPoints = 3}}), "").mostPoints, 0u);
}

TEST(TextEncoding, GoesThereAndBack) {
  CGpsRoute list = Stops({"Plze\u0148", "plain", "\u20AC"});
  list.name = "\u0159";
  list.points.front().comment = "\u017E";
  CGpsWaypointList encoded = EncodedTexts("windows-1250", list);
  EXPECT_EQ(Names(encoded), NameList({"Plze\u00F2", "plain", "\u0080"}));
  DecodeTexts("windows-1250", encoded);
  EXPECT_EQ(Names(encoded), Names(list));
  EXPECT_EQ(encoded.name, list.name);
  EXPECT_EQ(encoded.points.front().comment, "\u017E");
}

TEST(TextEncoding, SuitsFilesOnlyWithTheirSeparators) {
  EXPECT_TRUE(IsFileEncoding("windows-1251"));
  EXPECT_TRUE(IsFileEncoding("UTF-8"));
  EXPECT_TRUE(IsFileEncoding("shift_jis"));
  EXPECT_FALSE(IsFileEncoding("UTF-16"));
  EXPECT_FALSE(IsFileEncoding("UTF-7"));
  EXPECT_FALSE(IsFileEncoding(""));
}

}  // namespace
