#include "ui/pasted_lines.h"

#include <gtest/gtest.h>

namespace {

TEST(PastedLinesTest, BlankLinesAreNone) {
  const auto lines = SplitPastedText("Colmar\r\n\n  \nObernai");
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].text, "Colmar");
  EXPECT_EQ(lines[1].text, "Obernai");
}

TEST(PastedLinesTest, PositionsNeedNobody) {
  const auto point = ReadPastedPosition("48.079400, 7.358500\tColmar");
  ASSERT_TRUE(point);
  EXPECT_EQ(point->latitude, 48.0794);
  EXPECT_EQ(point->longitude, 7.3585);
  EXPECT_EQ(point->name, "Colmar");
  ASSERT_TRUE(ReadPastedPosition("-33.9;18.4"));
  EXPECT_EQ(ReadPastedPosition("-33.9;18.4")->latitude, -33.9);
  ASSERT_TRUE(ReadPastedPosition("48.5° 7.5°"));
  EXPECT_EQ(ReadPastedPosition("48.5° 7.5°")->longitude, 7.5);
}

TEST(PastedLinesTest, AddressesAreNoPositions) {
  EXPECT_FALSE(ReadPastedPosition("12 34 Long Street"));
  EXPECT_FALSE(ReadPastedPosition("12, Rue des Clefs"));
  EXPECT_FALSE(ReadPastedPosition("Colmar"));
  EXPECT_FALSE(ReadPastedPosition("91.5, 7.0"));
  EXPECT_FALSE(ReadPastedPosition("48.5, 7.5abc"));
}

TEST(PastedLinesTest, WhatIsCopiedCanBePasted) {
  CGpsNamedPoint point;
  point.latitude = 48.0794;
  point.longitude = 7.3585;
  point.name = "Colmar";
  EXPECT_EQ(PastableText({point}), "48.079400, 7.358500\tColmar\n");
}

TEST(PastedLinesTest, APlaceOfTheSameNameIsSure) {
  CGpsNamedPoint place;
  place.name = "Colmar, Grand Est";
  EXPECT_TRUE(IsSurelyMeant("colmar", place));
  EXPECT_FALSE(IsSurelyMeant("Col", place));
}

}  // namespace
