#include "base/measure_text.h"

#include <gtest/gtest.h>

namespace {

TEST(FormatDistance, ChangesUnitsAtAThousandMetres) {
  EXPECT_EQ(FormatDistance(0, false), "0m");
  EXPECT_EQ(FormatDistance(999, false), "999m");
  EXPECT_EQ(FormatDistance(1000, false), "1.0km");
  EXPECT_EQ(FormatDistance(1250, false), "1.2km");
  EXPECT_EQ(FormatDistance(123456, false), "123.5km");
}

TEST(FormatDistance, ChangesFromYardsToMiles) {
  EXPECT_EQ(FormatDistance(100, true), "109yd");
  EXPECT_EQ(FormatDistance(1609, true), "1760yd");
  EXPECT_EQ(FormatDistance(1610, true), "1.0mi");
  EXPECT_EQ(FormatDistance(16093, true), "10.0mi");
}

TEST(FormatDuration, DropsSecondsAndCountsHoursOn) {
  EXPECT_EQ(FormatDuration(0), "00:00");
  EXPECT_EQ(FormatDuration(3599), "00:59");
  EXPECT_EQ(FormatDuration(3600), "01:00");
  EXPECT_EQ(FormatDuration(90000), "25:00");
  EXPECT_EQ(FormatDuration(360000), "100:00");
}

TEST(FormatCoordinate, ShowsAllThreeForms) {
  EXPECT_EQ(FormatCoordinate(48.5, true, CoordinateFormat::kDegrees), "48.500000");
  EXPECT_EQ(FormatCoordinate(48.5, true, CoordinateFormat::kMinutes), "N48\u00b030.00'");
  EXPECT_EQ(FormatCoordinate(-48.5, true, CoordinateFormat::kMinutes), "S48\u00b030.00'");
  EXPECT_EQ(FormatCoordinate(2.5125, false, CoordinateFormat::kSeconds), "E2\u00b030'45.00\"");
  EXPECT_EQ(FormatCoordinate(-2.5125, false, CoordinateFormat::kSeconds), "W2\u00b030'45.00\"");
}

TEST(Angle, IsTakenApartAndPutTogether) {
  const AngleParts parts = DecomposeAngle(-2.5125);
  EXPECT_TRUE(parts.negative);
  EXPECT_EQ(parts.degrees, 2u);
  EXPECT_NEAR(parts.minutes, 30.75, 1e-9);
  EXPECT_NEAR(parts.seconds, 45.0, 1e-9);
  EXPECT_DOUBLE_EQ(ComposeAngle(true, 2, 30, 45), -2.5125);
  EXPECT_DOUBLE_EQ(ComposeAngle(false, 2, 30.75, 0), 2.5125);
}

}  // namespace
