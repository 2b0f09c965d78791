// Every edit of a list: points, legs, rows, and the calls that reach the page in their order.

#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/planner/list_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using ListActions = ItineraryTest;

TEST_F(ListActions, SelectRowClearsTheOthersAndCentresTheMap) {
  rows.selected = {0, 3};
  view.SelectRow(2);
  EXPECT_THAT(rows.selected, ElementsAre(2));
  EXPECT_THAT(log, ElementsAre("ViewPushPin(0, 2)"));
  log.clear();
  view.SelectRow(kNoRow);
  EXPECT_THAT(rows.selected, IsEmpty());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(ListActions, NothingReachesAPageThatIsNotThere) {
  view.planner = nullptr;
  view.SelectRow(2);
  view.InsertPoint(1, MakePoint(1, 2, "X"));
  view.RemoveRows(0);
  view.ReverseAll();
  view.RemoveAll();
  EXPECT_THAT(PageCalls(), IsEmpty());
  EXPECT_EQ(rows.count, 0u);
}

// A file of many points that the user does not want to see.
TEST_F(ListActions, AHiddenListIsShownByItsFirstEdit) {
  view.RemoveRows(4);
  log.clear();
  view.Hide();
  list.points.clear();
  for (int i = 0; i < 2; ++i) list.points.push_back(MakePoint(1, 2, "Z"));
  EXPECT_EQ(rows.count, 0u);
  EXPECT_FALSE(view.CanUndo());
  EXPECT_THAT(log, ElementsAre("ClearPushPins(0)"));
  view.ShowSettings();
  EXPECT_EQ(rows.count, 0u);
  log.clear();
  view.AddPoint(MakePoint(1, 2, "X"));
  EXPECT_EQ(NamesOf(list), "ZZX");
  EXPECT_EQ(rows.count, 3u);
  EXPECT_THAT(log, ElementsAre("ClearPushPins(0)", "RefreshPushPins(0, 0)", "InsertPushPin(0, 2)",
                               "ViewPushPin(0, 2)"));
  view.Undo();
  EXPECT_EQ(NamesOf(list), "ZZ");
}

TEST_F(ListActions, AHiddenListIsShownByAnotherNameAndByACalculation) {
  view.Hide();
  view.RenamePoint(1, "Y");
  EXPECT_EQ(NamesOf(list), "AYCDE");
  EXPECT_EQ(rows.count, 5u);
  view.Hide();
  view.CalculateFrom(2);
  EXPECT_EQ(rows.count, 5u);
  view.Hide();
  view.Rebuild();
  EXPECT_EQ(rows.count, 5u);
}

TEST_F(ListActions, AddPointAppendsWithoutASelection) {
  view.AddPoint(MakePoint(1, 2, "X"));
  EXPECT_EQ(NamesOf(list), "ABCDEX");
  EXPECT_THAT(rows.selected, ElementsAre(5));
  EXPECT_THAT(log, ElementsAre("InsertPushPin(0, 5)", "ViewPushPin(0, 5)"));
}

TEST_F(ListActions, AddPointGoesBehindTheFirstSelectedRow) {
  AddLegs();
  rows.selected = {1, 3};
  view.AddPoint(MakePoint(1, 2, "X"));
  EXPECT_EQ(NamesOf(list), "ABXCDE");
  EXPECT_EQ(LegsOf(list), ".B..DE");
  EXPECT_THAT(rows.selected, ElementsAre(2));
  EXPECT_THAT(log, ElementsAre("InsertPushPin(0, 2)", "ViewPushPin(0, 2)"));
  EXPECT_THAT(rows.refreshed.back(), Pair(1, 5));
}

TEST_F(ListActions, AddPointBehindTheLastRowAppends) {
  rows.selected = {4};
  view.AddPoint(MakePoint(1, 2, "X"));
  EXPECT_EQ(NamesOf(list), "ABCDEX");
}

TEST_F(ListActions, AddPointWithoutAListDoesNothing) {
  view.list = nullptr;
  view.AddPoint(MakePoint(1, 2, "X"));
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(ListActions, AddPointFillsAnEmptyList) {
  view.RemoveAll();
  log.clear();
  view.AddPoint(MakePoint(1, 2, "X"));
  EXPECT_EQ(NamesOf(list), "X");
  EXPECT_THAT(log, ElementsAre("InsertPushPin(0, 0)", "ViewPushPin(0, 0)"));
}

TEST_F(ListActions, InsertPointEndsWithTheTotals) {
  AddLegs();
  view.InsertPoint(2, MakePoint(1, 2, "X"));
  EXPECT_EQ(NamesOf(list), "ABXCDE");
  EXPECT_EQ(LegsOf(list), ".B..DE");
  EXPECT_THAT(log, ElementsAre("InsertPushPin(0, 2)", "ViewPushPin(0, 2)", "totals "));
}

TEST_F(ListActions, InsertPointBehindTheEndChangesNothing) {
  EXPECT_THROW(view.InsertPoint(6, MakePoint(1, 2)), std::out_of_range);
  EXPECT_EQ(NamesOf(list), "ABCDE");
  EXPECT_THAT(log, IsEmpty());
  EXPECT_FALSE(view.CanUndo());
}

TEST_F(ListActions, SetPositionKeepsNameAndCommentAndClearsTwoLegs) {
  AddLegs();
  list.points[2].comment = "comment";
  CGpsPoint position = MakePoint(50, 8, "other", "other", 120);
  position.tolerance = 0.5;
  view.SetPosition(2, position);
  const CGpsPoint& point = list.points[2];
  EXPECT_EQ(point.name, "C");
  EXPECT_EQ(point.comment, "comment");
  EXPECT_EQ(point.latitude, 50);
  EXPECT_EQ(point.longitude, 8);
  EXPECT_EQ(point.altitude, 120);
  EXPECT_EQ(point.tolerance, 0.5);
  EXPECT_EQ(LegsOf(list), ".B..E");
  EXPECT_THAT(log, ElementsAre("RefreshPushPins(0, 2)", "ViewPushPin(0, 2)", "totals "));
  EXPECT_THAT(rows.refreshed.front(), Pair(2, 3));
}

TEST_F(ListActions, SetPositionOfTheLastPointClearsOneLeg) {
  AddLegs();
  view.SetPosition(4, MakePoint(50, 8));
  EXPECT_EQ(LegsOf(list), ".BCD.");
  EXPECT_THAT(rows.refreshed.front(), Pair(4, 4));
}

TEST_F(ListActions, MoveSelectedUpTakesEverySelectedRowOneUp) {
  AddLegs();
  rows.selected = {2, 3};
  view.MoveSelectedUp();
  EXPECT_EQ(NamesOf(list), "ACDBE");
  EXPECT_EQ(LegsOf(list), ".....");
  EXPECT_THAT(rows.selected, ElementsAre(1, 2));
  EXPECT_THAT(log, ElementsAre("RefreshPushPins(0, 1)", "totals "));
}

TEST_F(ListActions, MoveSelectedUpLeavesTheFirstRow) {
  rows.selected = {0};
  view.MoveSelectedUp();
  EXPECT_EQ(NamesOf(list), "ABCDE");
  EXPECT_THAT(log, IsEmpty());
  EXPECT_FALSE(view.CanUndo());
}

TEST_F(ListActions, MoveSelectedDownTakesEverySelectedRowOneDown) {
  AddLegs();
  rows.selected = {0, 1};
  view.MoveSelectedDown();
  EXPECT_EQ(NamesOf(list), "CABDE");
  EXPECT_EQ(LegsOf(list), "....E");
  EXPECT_THAT(rows.selected, ElementsAre(1, 2));
  EXPECT_THAT(log, ElementsAre("RefreshPushPins(0, 0)", "totals "));
}

TEST_F(ListActions, MoveSelectedDownOfTheLastRowDoesNothing) {
  AddLegs();
  rows.selected = {4};
  view.MoveSelectedDown();
  EXPECT_EQ(NamesOf(list), "ABCDE");
  EXPECT_EQ(LegsOf(list), ".BCDE");
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(ListActions, MoveRowDownGoesBehindTheTarget) {
  AddLegs();
  view.MoveRow(1, 3);
  EXPECT_EQ(NamesOf(list), "ACDBE");
  EXPECT_EQ(LegsOf(list), ".....");
  EXPECT_THAT(log, ElementsAre("RefreshPushPins(0, 1)", "totals "));
}

TEST_F(ListActions, MoveRowUpGoesInFrontOfTheTarget) {
  AddLegs();
  view.MoveRow(3, 1);
  EXPECT_EQ(NamesOf(list), "ADBCE");
  EXPECT_EQ(LegsOf(list), ".....");
}

TEST_F(ListActions, MoveRowOntoItselfDoesNothing) {
  view.MoveRow(2, 2);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_THROW(view.MoveRow(0, 5), std::out_of_range);
  EXPECT_EQ(NamesOf(list), "ABCDE");
}

// With the automatic calculation off, the legs around the row are gone and the totals are empty.
TEST_F(ListActions, MovingARowEmptiesTheTotals) {
  AddLegs();
  view.UpdateTotals();
  EXPECT_EQ(status.totals, "Distance: 4.0km (00:04)");
  view.MoveRow(0, 1);
  EXPECT_EQ(LegsOf(list), "...DE");
  EXPECT_EQ(status.totals, "");
}

TEST_F(ListActions, RemoveRowsTakesOneRow) {
  AddLegs();
  view.RemoveRows(1);
  EXPECT_EQ(NamesOf(list), "ACDE");
  EXPECT_EQ(LegsOf(list), "..DE");
  EXPECT_EQ(rows.count, 4u);
  EXPECT_THAT(log, ElementsAre("DelPushPin(0, 1)", "totals "));
}

TEST_F(ListActions, RemoveRowsTakesTheSelection) {
  AddLegs();
  rows.selected = {0, 1, 3};
  view.RemoveRows(kSelectedRows);
  EXPECT_EQ(NamesOf(list), "CE");
  EXPECT_EQ(LegsOf(list), "..");
  EXPECT_EQ(rows.count, 2u);
  EXPECT_THAT(rows.selected, IsEmpty());
  EXPECT_THAT(log,
              ElementsAre("DelPushPin(0, 3)", "DelPushPin(0, 1)", "DelPushPin(0, 0)", "totals "));
}

TEST_F(ListActions, RemoveRowsWithoutASelectionDoesNothing) {
  view.RemoveRows(kSelectedRows);
  EXPECT_THROW(view.RemoveRows(5), std::out_of_range);
  EXPECT_THROW(view.RemoveRows(-2), std::out_of_range);
  EXPECT_EQ(NamesOf(list), "ABCDE");
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(ListActions, RemoveAllClearsRoutePinsRowsAndList) {
  AddLegs();
  list.name = "Trip";
  view.RemoveAll();
  EXPECT_EQ(list.Count(), 0u);
  EXPECT_EQ(list.name, "");
  EXPECT_EQ(rows.count, 0u);
  EXPECT_THAT(log, ElementsAre("message ", "totals ", "CloseInfoWindow()", "ClearRoutes(0)",
                               "ClearPushPins(0)", "totals Distance: 0m"));
}

TEST_F(ListActions, ReverseAllTurnsTheListAndSelectsNothing) {
  AddLegs();
  rows.selected = {1};
  view.ReverseAll();
  EXPECT_EQ(NamesOf(list), "EDCBA");
  EXPECT_EQ(LegsOf(list), ".....");
  EXPECT_THAT(rows.selected, IsEmpty());
  EXPECT_THAT(log, ElementsAre("message ", "totals ", "CloseInfoWindow()", "ClearRoutes(0)",
                               "RefreshPushPins(0, 0)", "totals "));
}

TEST_F(ListActions, ClearRouteDropsAllLegs) {
  AddLegs();
  status.message = "old";
  view.ClearRoute();
  EXPECT_EQ(LegsOf(list), ".....");
  EXPECT_EQ(status.message, "");
  EXPECT_THAT(log, ElementsAre("message ", "totals ", "CloseInfoWindow()", "ClearRoutes(0)"));
  EXPECT_FALSE(view.CanUndo());
}

TEST_F(ListActions, RenameKeepsLegsAndCalculatesNothing) {
  AddLegs();
  settings.autoCalc = true;
  view.RenamePoint(1, "Z");
  EXPECT_EQ(NamesOf(list), "AZCDE");
  EXPECT_EQ(LegsOf(list), ".ZCDE");
  EXPECT_THAT(log, ElementsAre("RefreshPushPins(0, 1)"));
}

TEST_F(ListActions, ChangePointKeepsLegsOfAPointThatStays) {
  AddLegs();
  CGpsPoint point = list.points[2];
  point.name = "Z";
  point.comment = "new";
  view.ChangePoint(2, point);
  EXPECT_EQ(LegsOf(list), ".BZDE");
  point.latitude = 10;
  view.ChangePoint(2, point);
  EXPECT_EQ(LegsOf(list), ".B..E");
}

TEST_F(ListActions, ApplyOrderTakesTheOrderOfAnOptimisation) {
  AddLegs();
  view.ApplyOrder({0, 3, 1, 2, 4});
  EXPECT_EQ(NamesOf(list), "ADBCE");
  EXPECT_EQ(LegsOf(list), ".....");
  EXPECT_THAT(log, ElementsAre("RefreshPushPins(0, 0)", "totals "));
  EXPECT_THROW(view.ApplyOrder({0, 0, 1, 2, 3}), std::invalid_argument);
  EXPECT_THROW(view.ApplyOrder({0, 1, 2, 3}), std::invalid_argument);
  EXPECT_THROW(view.ApplyOrder({0, 1, 2, 3, 5}), std::invalid_argument);
  EXPECT_EQ(NamesOf(list), "ADBCE");
}

TEST_F(ListActions, InsertPointsIsOneStep) {
  view.InsertPoints(1, {MakePoint(1, 2, "X"), MakePoint(3, 4, "Y")});
  EXPECT_EQ(NamesOf(list), "AXYBCDE");
  EXPECT_THAT(log, ElementsAre("InsertPushPin(0, 1)", "InsertPushPin(0, 2)", "ViewPushPin(0, 1)",
                               "totals "));
  view.Undo();
  EXPECT_EQ(NamesOf(list), "ABCDE");
}

TEST_F(ListActions, InsertingManyPointsShowsProgressAndCanBeCancelled) {
  progress.cancelAtStep = 3;
  view.InsertPoints(5, NamedPoints(400));
  EXPECT_EQ(NamesOf(list), "ABCDEABC");
  EXPECT_EQ(rows.count, 8u);
  EXPECT_EQ(log.front(), "progress open Adding 400 waypoints... provider 3 steps 400");
  EXPECT_FALSE(view.batch);
  view.Undo();
  EXPECT_EQ(NamesOf(list), "ABCDE");
  EXPECT_EQ(rows.count, 5u);
}

TEST_F(ListActions, ListsOfOtherKindsCalculateNothing) {
  settings.autoCalc = true;
  CPointListView pois(kListPois, PinKind::kPois, rows, settings);
  pois.list = &list;
  pois.planner = &script;
  pois.statusField = &status;
  pois.SetCalculation(&directions, &window);
  pois.InsertPoint(0, MakePoint(1, 2, "X"));
  pois.CalculateAll(false);
  pois.CalculateFrom(1);
  EXPECT_THAT(log, ElementsAre("InsertPushPin(3, 0)", "ViewPushPin(3, 0)"));
}

TEST_F(ListActions, AFailingPageDisturbsNoEdit) {
  page.throws = true;
  view.InsertPoint(1, MakePoint(1, 2, "X"));
  view.MoveRow(0, 5);
  view.RemoveRows(0);
  view.ReverseAll();
  EXPECT_EQ(NamesOf(list), "AEDCB");
  EXPECT_EQ(rows.count, 5u);
}

TEST_F(ListActions, RebuildShowsEverythingAnewAndForgetsTheSteps) {
  AddLegs();
  view.RemoveRows(4);
  log.clear();
  view.Rebuild();
  EXPECT_FALSE(view.CanUndo());
  EXPECT_THAT(log, ElementsAre("ClearPushPins(0)", "RefreshPushPins(0, 0)", "AddRoute(0, 1)",
                               "AddRoute(0, 2)", "AddRoute(0, 3)", "AutoViewMap()",
                               "totals Distance: 3.0km (00:03)"));
}

TEST_F(ListActions, InsertRowStepsTheBarOfALoopOnly) {
  list.points.push_back(MakePoint(1, 2, "X"));
  progress.cancelled = true;
  EXPECT_TRUE(view.InsertRow(5));
  EXPECT_EQ(progress.steps, 0u);
  view.batch = true;
  list.points.push_back(MakePoint(1, 2, "Y"));
  EXPECT_FALSE(view.InsertRow(6));
  progress.cancelled = false;
  list.points.push_back(MakePoint(1, 2, "Z"));
  EXPECT_TRUE(view.InsertRow(7));
  EXPECT_EQ(progress.steps, 2u);
  EXPECT_EQ(rows.count, 8u);
  EXPECT_THAT(PageCalls(),
              ElementsAre("InsertPushPin(0, 5)", "InsertPushPin(0, 6)", "InsertPushPin(0, 7)"));
}

TEST_F(ListActions, TheRowInFrontOfANewOneIsRefreshedToo) {
  view.InsertPoint(2, MakePoint(1, 2, "X"));
  EXPECT_THAT(rows.refreshed.front(), Pair(1, 5));
  EXPECT_THAT(rows.selected, ElementsAre(2));
  rows.refreshed.clear();
  view.InsertPoint(0, MakePoint(1, 2, "Y"));
  EXPECT_THAT(rows.refreshed.front(), Pair(0, 6));
}

TEST_F(ListActions, ADragRefreshesTheRowsBetweenItsEnds) {
  view.MoveRow(1, 3);
  EXPECT_THAT(rows.refreshed.front(), Pair(1, 4));  // E has another stop in front of it
  rows.refreshed.clear();
  view.MoveRow(4, 3);
  EXPECT_THAT(rows.refreshed.front(), Pair(3, 4));
}

TEST_F(ListActions, TheNewFirstPointHasNoLeg) {
  AddLegs();
  view.RemoveRows(0);
  EXPECT_EQ(NamesOf(list), "BCDE");
  EXPECT_EQ(LegsOf(list), ".CDE");
}

TEST_F(ListActions, ClearRouteNeedsNeitherPageNorFields) {
  AddLegs();
  view.planner = nullptr;
  view.statusField = nullptr;
  view.ClearRoute();
  EXPECT_EQ(LegsOf(list), ".....");
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(ListActions, RemovingAllCalculatesNothing) {
  AddLegs();
  settings.autoCalc = true;
  view.RemoveAll();
  EXPECT_THAT(log, ElementsAre("message ", "totals ", "CloseInfoWindow()", "ClearRoutes(0)",
                               "ClearPushPins(0)"));
}

TEST_F(ListActions, ReversingCalculatesTheOtherWay) {
  settings.autoCalc = true;
  view.ReverseAll();
  EXPECT_EQ(LegsOf(list), ".DCBA");
  EXPECT_THAT(log, testing::Contains("ask E D"));
  EXPECT_THAT(log, testing::Contains("ask B A"));
}

TEST_F(ListActions, EveryKindOfEditIsCounted) {
  uint64_t edits = view.EditCount();
  const auto counted = [&] { return std::exchange(edits, view.EditCount()) < view.EditCount(); };
  view.RenamePoint(1, "new");
  EXPECT_TRUE(counted());
  view.AddPoint(MakePoint(1, 2, "X"));
  EXPECT_TRUE(counted());
  view.SetPosition(0, MakePoint(1, 2));
  EXPECT_TRUE(counted());
  view.MoveRow(0, 1);
  EXPECT_TRUE(counted());
  view.ReverseAll();
  EXPECT_TRUE(counted());
  view.Undo();
  EXPECT_TRUE(counted());
  view.RemoveAll();
  EXPECT_TRUE(counted());
  view.SelectRow(kNoRow);
  EXPECT_FALSE(counted());
}

}  // namespace
