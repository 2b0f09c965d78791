// Legs that cannot be had, for one leg and for a whole run: what becomes of the leg that was there,
// of the totals, and of what the map shows. And moves at the ends of the list.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/planner/list_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kFailureBox[] =
    "box 49 Unable to get directions from A to B. Please check waypoints locations and try again.";

class LegFailure : public ItineraryTest {
 protected:
  LegFailure() {
    list.points.resize(3);
    view.Rebuild();
    AddLegs();
    view.UpdateTotals();
    log.clear();
  }
};

TEST_F(LegFailure, OfOneLegEmptiesTheTotalsAndGoesOnWithOk) {
  directions.statuses = {5};
  window.answers = {kAnswerOk};
  view.CalculateFrom(1);
  EXPECT_EQ(LegsOf(list), "..C");
  EXPECT_THAT(
      log, ElementsAre("message Get directions from A to B...", "ask A B", "RefreshPushPins(0, 1)",
                       kFailureBox, "message ", "totals ", "ViewPushPin(0, 1)"));
  EXPECT_EQ(list.points[2].GetRouteLeg()->totalDistance, 0u);
}

TEST_F(LegFailure, OfOneLegEmptiesTheTotalsAndEndsWithCancel) {
  directions.statuses = {5};
  window.answers = {kAnswerCancel};
  view.CalculateFrom(1);
  EXPECT_EQ(LegsOf(list), "..C");
  EXPECT_THAT(log, ElementsAre("message Get directions from A to B...", "ask A B",
                               "RefreshPushPins(0, 1)", kFailureBox, "message ", "totals "));
}

TEST_F(LegFailure, OfTheNetworkKeepsTheLegThatIsThere) {
  directions.statuses = {100 + 12029};
  window.answers = {kAnswerCancel};
  view.CalculateFrom(1);
  EXPECT_EQ(LegsOf(list), ".BC");
  EXPECT_EQ(status.totals, "Distance: 2.0km (00:02)");
  EXPECT_EQ(status.message, "");
  EXPECT_THAT(PageCalls(), IsEmpty());
}

TEST_F(LegFailure, WithoutAStatusFieldIsPassedOver) {
  view.statusField = nullptr;
  directions.statuses = {5};
  view.CalculateFrom(1);
  EXPECT_EQ(LegsOf(list), ".BC");
  EXPECT_THAT(log, ElementsAre("ask A B", "ViewPushPin(0, 1)"));
}

TEST_F(LegFailure, BehindWhichTheListIsEmptiedIsHarmless) {
  directions.statuses = {5};
  window.answers = {kAnswerOk};
  window.meanwhile = [this] { view.RemoveAll(); };
  view.CalculateFrom(2);
  EXPECT_EQ(list.Count(), 0u);
  EXPECT_THAT(rows.selected, IsEmpty());
}

TEST_F(LegFailure, InARunTakesTheWayFromTheMap) {
  directions.statuses = {0, 5};
  window.answers = {kAnswerOk};
  view.CalculateAll(false);
  EXPECT_EQ(LegsOf(list), ".B.");
  EXPECT_THAT(PageCalls(),
              ElementsAre("CloseInfoWindow()", "AddRoute(0, 1)", "RefreshPushPins(0, 2)"));
  // There is nothing more to be taken the second time.
  log.clear();
  directions.statuses = {0, 5};
  window.answers = {kAnswerOk};
  view.CalculateAll(false);
  EXPECT_THAT(PageCalls(), ElementsAre("CloseInfoWindow()", "AddRoute(0, 1)"));
}

TEST_F(LegFailure, InTheLastLegOfARunWithProgressClosesTheWindow) {
  directions.statuses = {0, 5};
  window.answers = {kAnswerCancel};
  view.CalculateAll(true);
  EXPECT_EQ(LegsOf(list), ".B.");
  EXPECT_EQ(status.totals, "");
  EXPECT_EQ(status.message, "");
  EXPECT_THAT(log, Contains("progress close"));
  EXPECT_EQ(progress.steps, 1u);
}

TEST_F(LegFailure, TheSettingIsLookedUpAtTheStartOfEveryRun) {
  view.RemoveAll();
  settings.autoCalc = true;
  EXPECT_FALSE(view.autoCalc);
  view.CalculateAll(false);
  EXPECT_TRUE(view.autoCalc);
  settings.autoCalc = false;
  view.CalculateAll(true);
  EXPECT_FALSE(view.autoCalc);
}

using MovesAtTheEnds = ItineraryTest;

TEST_F(MovesAtTheEnds, TheFirstRowStaysWhereTheOthersGoUp) {
  rows.selected = {0, 1, 3};
  view.MoveSelectedUp();
  // The first row stays, the second goes in front of it, the fourth in front of the third.
  EXPECT_EQ(NamesOf(list), "BADCE");
  EXPECT_THAT(rows.selected, ElementsAre(0, 1, 2));
  EXPECT_THAT(log, ElementsAre("RefreshPushPins(0, 0)", "totals "));
  ASSERT_EQ(rows.refreshed.size(), 2u);
  EXPECT_THAT(rows.refreshed.front(), testing::Pair(0, 4));
}

TEST_F(MovesAtTheEnds, TheLastRowStaysWhereTheOthersGoDown) {
  AddLegs();
  rows.selected = {1, 4};
  view.MoveSelectedDown();
  EXPECT_EQ(NamesOf(list), "ACBDE");
  EXPECT_EQ(LegsOf(list), "....E");
  EXPECT_THAT(rows.selected, ElementsAre(2, 4));
}

TEST_F(MovesAtTheEnds, OneRowUpClearsTheLegsAroundIt) {
  AddLegs();
  rows.selected = {2};
  view.MoveSelectedUp();
  EXPECT_EQ(NamesOf(list), "ACBDE");
  EXPECT_EQ(LegsOf(list), "....E");
  EXPECT_THAT(rows.selected, ElementsAre(1));
}

TEST_F(MovesAtTheEnds, NothingSelectedMovesNothing) {
  view.MoveSelectedUp();
  view.MoveSelectedDown();
  EXPECT_EQ(NamesOf(list), "ABCDE");
  EXPECT_THAT(log, IsEmpty());
}

}  // namespace
