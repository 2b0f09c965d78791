#include "conversion/loss_report.h"

#include <gtest/gtest.h>

#include "tests/list_builder.h"

namespace {

TEST(LossReport, FindsNothingWhereNothingIsLost) {
  const auto list = MakeList("", MakePoint(48, 2, "A", "note", 35), MakePoint(49, 3));
  const LossReport report = CompareLists(list, list);
  EXPECT_EQ(report.stops, 2u);
  EXPECT_FALSE(report.HasLosses());
  EXPECT_EQ(report.largestShift, 0.0);
  EXPECT_FALSE(CompareLists(CGpsRoute(), CGpsRoute()).HasLosses());
}

TEST(LossReport, CountsNamesCommentsAndAltitudes) {
  const LossReport report =
      CompareLists(MakeList("", MakePoint(1, 1, "\u0141\u00f3d\u017a", "note", 35),
                            MakePoint(2, 2, "B"), MakePoint(3, 3, "\u6771\u4eac", "other")),
                   MakeList("", MakePoint(1, 1, "?\u00f3d?"), MakePoint(2, 2, " B ", "WPT002"),
                            MakePoint(3, 3, "??", "other")));
  EXPECT_EQ(report.namesChanged, 2u);
  EXPECT_EQ(report.nameBefore, "\u0141\u00f3d\u017a");
  EXPECT_EQ(report.nameAfter, "?\u00f3d?");
  EXPECT_EQ(report.commentsChanged, 1u);
  EXPECT_EQ(report.altitudesChanged, 1u);
  EXPECT_TRUE(report.HasLosses());
}

TEST(LossReport, MeasuresTheLargestShift) {
  // 0.00001 degree on the equator is 1.1132 m.
  const LossReport rounding =
      CompareLists(MakeList("", MakePoint(0, 2)), MakeList("", MakePoint(0, 2.00001)));
  EXPECT_NEAR(rounding.largestShift, 1.1132, 0.0001);
  EXPECT_FALSE(rounding.HasLosses());
  const LossReport shift =
      CompareLists(MakeList("", MakePoint(0, 2)), MakeList("", MakePoint(0, 2.0001)));
  EXPECT_NEAR(shift.largestShift, 11.132, 0.001);
  EXPECT_TRUE(shift.HasLosses());
}

TEST(LossReport, FindsLostStopsByPlaceOrName) {
  const auto before = MakeList("", MakePoint(1, 1, "A"), MakePoint(2, 2, "B"), MakePoint(3, 3, "C"),
                               MakePoint(4, 4, "D"));
  const LossReport lost =
      CompareLists(before, MakeList("", MakePoint(1, 1, "A"), MakePoint(30, 3, "C")));
  EXPECT_EQ(lost.stopsLost, 2u);
  EXPECT_EQ(lost.stopsAdded, 0u);
  EXPECT_EQ(lost.namesChanged, 0u);
  EXPECT_GT(lost.largestShift, 1000000.0);
  EXPECT_EQ(CompareLists(before, CGpsRoute()).stopsLost, 4u);
}

TEST(LossReport, FindsAddedStops) {
  const LossReport report =
      CompareLists(MakeList("", MakePoint(1, 1, "A"), MakePoint(2, 2, "B")),
                   MakeList("", MakePoint(0, 0), MakePoint(1, 1, "A"), MakePoint(2, 2, "B")));
  EXPECT_EQ(report.stopsAdded, 1u);
  EXPECT_EQ(report.stopsLost, 0u);
  EXPECT_TRUE(report.HasLosses());
}

}  // namespace
