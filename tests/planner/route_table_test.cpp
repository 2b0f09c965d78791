// The texts of the rows of a list, column by column.

#include "planner/route_table.h"

#include <iterator>
#include <stdexcept>

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "model/route_leg.h"
#include "tests/list_builder.h"

namespace {

class RouteTable : public testing::Test {
 protected:
  /// Gives B a leg: metres and seconds of its own, and from the start.
  CRouteLeg& AddLeg(uint32_t distance, uint32_t duration, uint32_t totalDistance,
                    uint32_t totalDuration) {
    CRouteLeg leg;
    leg.route.measure.distance = distance;
    leg.route.measure.duration = duration;
    leg.route.measure.flag = 1;
    leg.totalDistance = totalDistance;
    leg.totalDuration = totalDuration;
    list.points[1].SetRouteLeg(leg);
    return *list.points[1].GetRouteLeg();
  }
  std::string Text(RouteColumn column) const { return RouteTableText(list, 1, column, settings); }

  CSettings settings;
  CGpsRoute list =
      MakeList("Trip", MakePoint(48.5, -7.25, "A"), MakePoint(-33.25, 151.5, "B", "a comment", 12));
};

TEST_F(RouteTable, ColumnsHaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(RouteColumn::kNumber), 1);
  EXPECT_EQ(static_cast<int>(RouteColumn::kName), 2);
  EXPECT_EQ(static_cast<int>(RouteColumn::kDistance), 3);
  EXPECT_EQ(static_cast<int>(RouteColumn::kDuration), 4);
  EXPECT_EQ(static_cast<int>(RouteColumn::kPosition), 5);
  EXPECT_EQ(static_cast<int>(RouteColumn::kComment), 6);
  EXPECT_EQ(static_cast<int>(RouteColumn::kTravelMode), 7);
  EXPECT_EQ(static_cast<int>(RouteColumn::kColor), 8);
}

TEST_F(RouteTable, TheFirstColumnIsTheNumberOrTheName) {
  EXPECT_EQ(Text(RouteColumn::kNumber), "2");
  settings.displayNumber = false;
  EXPECT_EQ(Text(RouteColumn::kNumber), "B");
  EXPECT_EQ(Text(RouteColumn::kName), "B");
  EXPECT_EQ(Text(RouteColumn::kComment), "a comment");
}

TEST_F(RouteTable, WithoutALegAllOfItIsUnknown) {
  EXPECT_EQ(Text(RouteColumn::kDistance), " / ---");
  EXPECT_EQ(Text(RouteColumn::kDuration), " / --:--");
  EXPECT_EQ(Text(RouteColumn::kTravelMode), "");
  EXPECT_EQ(Text(RouteColumn::kColor), "");
}

TEST_F(RouteTable, ALegHasItsMeasureAndTheTotals) {
  AddLeg(999, 3599, 12345, 90000);
  EXPECT_EQ(Text(RouteColumn::kDistance), "999m / 12.3km");
  EXPECT_EQ(Text(RouteColumn::kDuration), "00:59 / 25:00");
  // 1609 metres are 1759.6 yards, 3219 are 2.0002 miles.
  AddLeg(1609, 0, 3219, 60);
  settings.distMiles = true;
  EXPECT_EQ(Text(RouteColumn::kDistance), "1760yd / 2.0mi");
  EXPECT_EQ(Text(RouteColumn::kDuration), "00:00 / 00:01");
}

TEST_F(RouteTable, TotalsThatAreNotKnownAreNotShown) {
  AddLeg(1500, 120, 0, 0);
  EXPECT_EQ(Text(RouteColumn::kDistance), "1.5km / ---");
  EXPECT_EQ(Text(RouteColumn::kDuration), "00:02 / --:--");
}

TEST_F(RouteTable, AWayToTheSamePlaceHasNoLength) {
  AddLeg(0, 0, 0, 0);
  EXPECT_EQ(Text(RouteColumn::kDistance), "0m / 0m");
  EXPECT_EQ(Text(RouteColumn::kDuration), "00:00 / 00:00");
}

TEST_F(RouteTable, ALegWithoutAMeasureIsUnknown) {
  AddLeg(0, 0, 0, 0).Measure().flag = 0;
  EXPECT_EQ(Text(RouteColumn::kDistance), " / ---");
  EXPECT_EQ(Text(RouteColumn::kDuration), " / --:--");
  EXPECT_EQ(Text(RouteColumn::kColor), "#0000FF");
}

TEST_F(RouteTable, PositionsFollowTheDisplayFormat) {
  EXPECT_EQ(Text(RouteColumn::kPosition), "-33.250000, 151.500000");
  settings.coordinates = 1;
  EXPECT_EQ(Text(RouteColumn::kPosition), "S33\u00B015.00', E151\u00B030.00'");
  settings.coordinates = 2;
  EXPECT_EQ(Text(RouteColumn::kPosition), "S33\u00B015'0.00\", E151\u00B030'0.00\"");
}

TEST_F(RouteTable, TravelModesHaveTheirNames) {
  const char* const names[] = {"",           "Car", "Truck", "On foot", "Cycle",
                               "Motorcycle", "Van", "Bus",   ""};
  CRouteLeg& leg = AddLeg(1, 1, 1, 1);
  for (uint32_t mode = 0; mode < std::size(names); ++mode) {
    leg.route.travelMode = mode;
    EXPECT_EQ(Text(RouteColumn::kTravelMode), names[mode]) << mode;
  }
}

TEST_F(RouteTable, TravelModesAreNamedInTheProgramsLanguage) {
  SetLanguage(Language::kFrench);
  EXPECT_EQ(TravelModeName(3), "\u00C0 pied");
  SetLanguage(Language::kEnglish);
}

TEST_F(RouteTable, ColorsAreHexadecimal) {
  CRouteLeg& leg = AddLeg(1, 1, 1, 1);
  EXPECT_EQ(Text(RouteColumn::kColor), "#0000FF");
  leg.route.color = 0xFF8A00;
  EXPECT_EQ(Text(RouteColumn::kColor), "#FF8A00");
  leg.route.color = 0;
  EXPECT_EQ(Text(RouteColumn::kColor), "#000000");
}

TEST_F(RouteTable, ThereIsNoRowBehindTheLast) {
  EXPECT_THROW(RouteTableText(list, 2, RouteColumn::kName, settings), std::out_of_range);
}

}  // namespace
