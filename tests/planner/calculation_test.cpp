// Calculating the itinerary: the order of texts, requests and page calls, failures, cancelling, and
// edits that come in the middle.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/planner/list_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class Calculation : public ItineraryTest {
 protected:
  Calculation() {
    list.points.resize(3);
    view.Rebuild();
    log.clear();
  }
};

TEST_F(Calculation, AsksLegByLegInOrder) {
  view.CalculateAll(true);
  EXPECT_EQ(LegsOf(list), ".BC");
  EXPECT_EQ(list.points[2].GetRouteLeg()->provider, 10);
  EXPECT_THAT(log,
              ElementsAre("CloseInfoWindow()",
                          "progress open Get directions from A to C... provider 3 steps 2",
                          "progress Get directions from A to B...",
                          "message Get directions from A to B...", "ask A B", "AddRoute(0, 1)",
                          "message Fastest directions from A to B was successfully retrieved.",
                          "progress step", "progress Get directions from B to C...",
                          "message Get directions from B to C...", "ask B C", "AddRoute(0, 2)",
                          "message Fastest directions from B to C was successfully retrieved.",
                          "progress step", "totals Distance: 2.0km (00:02)", "progress close",
                          "message Fastest directions from A to C was successfully retrieved."));
}

TEST_F(Calculation, WithoutProgressOpensNoWindow) {
  settings.autoCalc = true;
  view.CalculateAll(false);
  EXPECT_TRUE(view.autoCalc);
  EXPECT_EQ(progress.steps, 0u);
  EXPECT_EQ(status.totals, "Distance: 2.0km (00:02)");
}

TEST_F(Calculation, AnEmptyListStopsAtOnce) {
  view.RemoveAll();
  log.clear();
  view.CalculateAll(true);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Calculation, OnePointCalculatesNothingAndAnnouncesNothing) {
  list.points.resize(1);
  view.Rebuild();
  log.clear();
  view.CalculateAll(true);
  EXPECT_THAT(log, ElementsAre("CloseInfoWindow()",
                               "progress open Get directions from A to A... provider 3 steps 0",
                               "totals Distance: 0m", "progress close"));
}

TEST_F(Calculation, CancelKeepsTheLegsSoFar) {
  progress.cancelAtStep = 1;
  view.CalculateAll(true);
  EXPECT_EQ(LegsOf(list), ".B.");
  EXPECT_THAT(log, Contains("ask A B"));
  EXPECT_THAT(log, testing::Not(Contains("ask B C")));
  EXPECT_EQ(status.totals, "");
  EXPECT_EQ(status.message, "");
}

TEST_F(Calculation, CancelInTheMiddleOfARequestAsksNobody) {
  window.dispatch = [this] { progress.cancelled = true; };
  view.CalculateAll(true);
  EXPECT_EQ(LegsOf(list), "...");
  EXPECT_THAT(PageCalls(), ElementsAre("CloseInfoWindow()"));
  EXPECT_EQ(status.message, "");
  for (const std::string& line : log) EXPECT_FALSE(line.starts_with("box")) << line;
}

TEST_F(Calculation, AFailedLegAsksAndGoesOnWithOk) {
  AddLegs();
  directions.statuses = {5};
  window.answers = {kAnswerOk};
  view.CalculateAll(true);
  EXPECT_EQ(LegsOf(list), "..C");
  EXPECT_THAT(log, Contains("box 49 Unable to get directions from A to B. Please check waypoints "
                            "locations and try again."));
  EXPECT_THAT(log, Contains("ask B C"));
  EXPECT_EQ(status.totals, "");
  EXPECT_EQ(status.message, "");  // no success is announced
}

TEST_F(Calculation, AnAnswerForTheRestIsAskedForOnce) {
  directions.statuses = {5, 5};
  window.answers = {kAnswerOk};
  window.answersForTheRest = true;
  view.CalculateAll(true);
  EXPECT_THAT(log, Contains("ask B C"));
  EXPECT_EQ(std::count_if(log.begin(), log.end(),
                          [](const std::string& line) { return line.starts_with("box"); }),
            1);
}

TEST_F(Calculation, AFailedLegEndsTheRunWithCancel) {
  AddLegs();
  view.UpdateTotals();
  directions.statuses = {1};
  window.answers = {kAnswerCancel};
  view.CalculateAll(true);
  EXPECT_EQ(LegsOf(list), "..C");
  EXPECT_THAT(log, testing::Not(Contains("ask B C")));
  EXPECT_EQ(status.totals, "");
}

TEST_F(Calculation, WithoutAStatusFieldAFailedLegIsPassedOver) {
  AddLegs();
  view.statusField = nullptr;
  directions.statuses = {1};
  view.CalculateAll(false);
  EXPECT_EQ(LegsOf(list), ".BC");
  for (const std::string& line : log) EXPECT_FALSE(line.starts_with("box")) << line;
  EXPECT_THAT(log, Contains("ask B C"));
}

TEST_F(Calculation, ANetworkFailureIsTriedAgainOnRetry) {
  directions.statuses = {100 + 12029, 100 + 12002, 0};
  window.answers = {kAnswerRetry, kAnswerRetry};
  view.CalculateAll(false);
  EXPECT_EQ(LegsOf(list), ".BC");
  // 0x80070000 + 12029; error icon, Retry and Cancel.
  EXPECT_THAT(log,
              Contains("box 21 Corvane Map detected a network error. Please check your network "
                       "connection an try again.\n Error 0x80072EFD (No connection to the "
                       "server could be made.)"));
  EXPECT_THAT(log,
              Contains("box 21 Corvane Map detected a network error. Please check your network "
                       "connection an try again.\n Error 0x80072EE2 (The service has not "
                       "answered in time.)"));
}

TEST_F(Calculation, ANetworkFailureEndsTheRunOnCancel) {
  directions.statuses = {100 + 12007};
  view.CalculateAll(false);
  EXPECT_EQ(LegsOf(list), "...");
  EXPECT_THAT(log, testing::Not(Contains("ask B C")));
}

TEST_F(Calculation, CalculateFromAsksForOneLeg) {
  AddLegs();
  view.CalculateFrom(2);
  EXPECT_THAT(log, ElementsAre("message Get directions from B to C...", "ask B C", "AddRoute(0, 2)",
                               "message Fastest directions from B to C was successfully retrieved.",
                               "totals Distance: 2.0km (00:02)", "ViewPushPin(0, 2)"));
  EXPECT_THAT(rows.selected, ElementsAre(2));
}

TEST_F(Calculation, CalculateFromMinusOneOrTwoAsksForAll) {
  view.CalculateFrom(-1);
  EXPECT_EQ(progress.steps, 2u);
  view.CalculateFrom(-2);
  EXPECT_EQ(progress.steps, 4u);
}

TEST_F(Calculation, CalculateFromTheFirstPointHasNothingToDo) {
  view.CalculateFrom(0);
  view.CalculateFrom(3);
  view.CalculateFrom(-3);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Calculation, AFailedSingleLegSelectsNothing) {
  directions.statuses = {4};
  view.CalculateFrom(1);
  EXPECT_THAT(rows.selected, IsEmpty());
  EXPECT_THAT(PageCalls(), IsEmpty());
}

TEST_F(Calculation, OfSeveralLegsTheFirstIsTheStops) {
  directions.moreLegs = 2;
  view.CalculateAll(false);
  EXPECT_EQ(LegsOf(list), ".BC");
  EXPECT_EQ(list.points[1].GetRouteLeg()->Measure().distance, 1000u);
  EXPECT_EQ(list.points[2].GetRouteLeg()->Measure().distance, 1000u);
  EXPECT_EQ(status.totals, "Distance: 2.0km (00:02)");
}

TEST_F(Calculation, EveryEditCalculatesWithAutoCalc) {
  settings.autoCalc = true;
  view.MoveRow(0, 1);
  EXPECT_THAT(log, Contains("ask B A"));
  EXPECT_THAT(log, Contains("ask A C"));
  EXPECT_EQ(LegsOf(list), ".AC");
  EXPECT_EQ(progress.steps, 0u);
}

TEST_F(Calculation, TotalsAreSummedUpInTheLegs) {
  AddLegs();
  list.points[2].GetRouteLeg()->Measure().distance = 500;
  list.points[2].GetRouteLeg()->Measure().duration = 40;
  view.UpdateTotals();
  EXPECT_EQ(list.points[1].GetRouteLeg()->totalDistance, 1000u);
  EXPECT_EQ(list.points[2].GetRouteLeg()->totalDistance, 1500u);
  EXPECT_EQ(list.points[2].GetRouteLeg()->totalDuration, 100u);
  EXPECT_EQ(status.totals, "Distance: 1.5km (00:01)");
}

TEST_F(Calculation, AMissingLegBreaksTheTotalsFromThereOn) {
  list.points = {};
  for (const CGpsPoint& point : NamedPoints(4)) list.points.push_back(point);
  view.Rebuild();
  AddLegs();
  list.points[2].ClearRouteLeg();
  list.points[3].GetRouteLeg()->totalDistance = 7;
  view.UpdateTotals();
  EXPECT_EQ(list.points[1].GetRouteLeg()->totalDistance, 1000u);
  EXPECT_EQ(list.points[3].GetRouteLeg()->totalDistance, 0u);
  EXPECT_EQ(status.totals, "");
}

TEST_F(Calculation, ALegWithoutAMeasureBreaksTheTotals) {
  AddLegs();
  list.points[1].GetRouteLeg()->Measure().flag = 0;
  list.points[1].GetRouteLeg()->totalDistance = 7;
  view.UpdateTotals();
  EXPECT_EQ(list.points[1].GetRouteLeg()->totalDistance, 0u);
  EXPECT_EQ(list.points[2].GetRouteLeg()->totalDistance, 0u);
  EXPECT_EQ(status.totals, "");
}

TEST_F(Calculation, TotalsWithoutADurationHaveNoBrackets) {
  AddLegs();
  for (size_t i = 1; i < 3; ++i) list.points[i].GetRouteLeg()->Measure().duration = 0;
  view.UpdateTotals();
  EXPECT_EQ(status.totals, "Distance: 2.0km");
  settings.distMiles = true;
  view.UpdateTotals();
  EXPECT_EQ(status.totals, "Distance: 1.2mi");
}

TEST_F(Calculation, NoTotalsWithoutAPage) {
  AddLegs();
  status.totals = "old";
  view.planner = nullptr;
  view.UpdateTotals();
  EXPECT_EQ(status.totals, "old");
}

TEST_F(Calculation, AnEditInTheMiddleEndsTheRun) {
  bool edited = false;
  window.dispatch = [&] {
    if (!std::exchange(edited, true)) view.RemoveRows(2);
  };
  view.CalculateAll(true);
  EXPECT_EQ(NamesOf(list), "AB");
  EXPECT_EQ(LegsOf(list), "..");
  EXPECT_THAT(log, testing::Not(Contains("ask B C")));
  EXPECT_EQ(status.totals, "");
}

TEST_F(Calculation, AnEditInTheMiddleBeginsANewRunWithAutoCalc) {
  settings.autoCalc = true;
  bool edited = false;
  window.dispatch = [&] {
    if (!std::exchange(edited, true)) view.RemoveRows(1);
  };
  view.CalculateAll(true);
  EXPECT_EQ(NamesOf(list), "AC");
  EXPECT_EQ(LegsOf(list), ".C");
  EXPECT_EQ(status.totals, "Distance: 1.0km (00:01)");
}

TEST_F(Calculation, EmptyingTheListInTheMiddleIsHarmless) {
  window.dispatch = [&] { view.RemoveAll(); };
  view.CalculateAll(true);
  EXPECT_EQ(list.Count(), 0u);
  window.dispatch = nullptr;
  view.AddPoint(MakePoint(1, 2, "X"));
  view.AddPoint(MakePoint(2, 2, "Y"));
  window.answers = {kAnswerOk};
  window.meanwhile = [&] { view.RemoveAll(); };
  directions.statuses = {5};
  view.CalculateAll(false);
  EXPECT_EQ(list.Count(), 0u);
}

TEST_F(Calculation, EndsWhenThePageEmptiesTheListAtItsBegin) {
  page.meanwhile = [&](std::string_view function) {
    if (function == "CloseInfoWindow") view.RemoveRows(0);
  };
  settings.autoCalc = true;
  for (int i = 0; i < 3; ++i) view.CalculateAll(true);
  EXPECT_EQ(list.Count(), 0u);
  EXPECT_EQ(rows.count, 0u);
}

TEST_F(Calculation, CalculatingInTheMiddleOfACalculationDoesNothing) {
  window.dispatch = [&] {
    view.CalculateAll(true);
    view.CalculateFrom(1);
  };
  view.CalculateAll(true);
  EXPECT_EQ(LegsOf(list), ".BC");
  EXPECT_EQ(progress.steps, 2u);
}

TEST_F(Calculation, ClosingInTheMiddleLeavesEverythingAlone) {
  window.dispatch = [&] { view.Close(); };
  view.CalculateAll(true);
  EXPECT_EQ(LegsOf(list), "...");
  EXPECT_EQ(log.back(), "progress close");
}

TEST_F(Calculation, PreviewPointsOfADraggedPoint) {
  const auto names = [&](int64_t index, bool moved) {
    std::string text;
    for (const CGpsPoint& point : view.PreviewPoints(index, MakePoint(1, 2), moved))
      text += point.name.empty() ? "*" : point.name;
    return text;
  };
  EXPECT_EQ(names(1, false), "A*B");
  EXPECT_EQ(names(0, false), "*A");
  EXPECT_EQ(names(1, true), "A*C");
  EXPECT_EQ(names(0, true), "*B");
  EXPECT_EQ(names(2, true), "B*");
  EXPECT_EQ(names(-1, true), "");
  EXPECT_EQ(names(9, true), "");
  EXPECT_EQ(NamesOf(list), "ABC");
  list.points.resize(1);
  EXPECT_EQ(names(0, true), "");
}

}  // namespace
