#include "ui/pasted_lines.h"

#include <gtest/gtest.h>

#include "ui/pasted_position.h"

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

TEST(PastedLinesTest, AnglesInMinutesAndSecondsArePositions) {
  // 4 / 60 + 45.84 / 3600 = 0.0794 and 21 / 60 + 30.6 / 3600 = 0.3585.
  const auto inSeconds = ReadPastedPosition("48° 4' 45.84\" N, 7° 21' 30.6\" E Colmar");
  ASSERT_TRUE(inSeconds);
  EXPECT_NEAR(inSeconds->latitude, 48.0794, 1e-9);
  EXPECT_NEAR(inSeconds->longitude, 7.3585, 1e-9);
  EXPECT_EQ(inSeconds->name, "Colmar");
  // 54.6 / 60 = 0.91 and 25.2 / 60 = 0.42.
  const auto inMinutes = ReadPastedPosition("S33 54.6 E018 25.2");
  ASSERT_TRUE(inMinutes);
  EXPECT_NEAR(inMinutes->latitude, -33.91, 1e-9);
  EXPECT_NEAR(inMinutes->longitude, 18.42, 1e-9);
  const auto western = ReadPastedPosition("40.4168 N 3.7038 W\tMadrid");
  ASSERT_TRUE(western);
  EXPECT_EQ(western->latitude, 40.4168);
  EXPECT_EQ(western->longitude, -3.7038);
  EXPECT_EQ(western->name, "Madrid");
}

TEST(PastedLinesTest, AddressesAreNoPositions) {
  EXPECT_FALSE(ReadPastedPosition("7 North Street"));
  EXPECT_FALSE(ReadPastedPosition("N 12"));
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
