// Taking steps back and making them again.

#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include "tests/planner/list_fixture.h"

namespace {

using testing::ElementsAre;

using Undo = ItineraryTest;

/// Names and positions of a list, to compare its states.
std::string StateOf(const CGpsPointArray& list) {
  std::string state = list.name + ":";
  for (const CGpsPoint& point : list.points)
    state +=
        fmt::format("{}@{},{};{}|", point.name, point.latitude, point.longitude, point.comment);
  return state;
}

TEST_F(Undo, EveryActionIsOneStepBackAndForth) {
  list.name = "Trip";
  const std::vector<std::function<void()>> actions = {
      [&] { view.InsertPoint(1, MakePoint(1, 2, "X", "c")); },
      [&] { view.AddPoint(MakePoint(3, 4, "Y")); },
      [&] { view.InsertPoints(2, NamedPoints(3)); },
      [&] { view.SetPosition(0, MakePoint(9, 9)); },
      [&] { view.ChangePoint(1, MakePoint(8, 8, "Q", "r", 5)); },
      [&] { view.RenamePoint(2, "Renamed"); },
      [&] {
        rows.selected = {2, 3};
        view.MoveSelectedUp();
      },
      [&] {
        rows.selected = {0, 4};
        view.MoveSelectedDown();
      },
      [&] { view.MoveRow(0, 4); },
      [&] { view.MoveRow(5, 1); },
      [&] {
        view.ApplyOrder({1, 0, 2, 4, 3, 6, 5, 8, 9, 7});
      },
      [&] { view.RemoveRows(3); },
      [&] {
        rows.selected = {0, 1, 5};
        view.RemoveRows(kSelectedRows);
      },
      [&] { view.ReverseAll(); },
      [&] { view.RemoveAll(); },
  };
  std::vector<std::string> states{StateOf(list)};
  for (const auto& action : actions) {
    action();
    states.push_back(StateOf(list));
    ASSERT_NE(states.back(), states[states.size() - 2]) << states.size();
  }
  for (size_t i = actions.size(); i > 0; --i) {
    ASSERT_TRUE(view.CanUndo());
    view.Undo();
    EXPECT_EQ(StateOf(list), states[i - 1]) << i;
    EXPECT_EQ(rows.count, list.Count());
  }
  EXPECT_FALSE(view.CanUndo());
  for (size_t i = 0; i < actions.size(); ++i) {
    ASSERT_TRUE(view.CanRedo());
    view.Redo();
    EXPECT_EQ(StateOf(list), states[i + 1]) << i;
    EXPECT_EQ(rows.count, list.Count());
  }
  EXPECT_FALSE(view.CanRedo());
}

TEST_F(Undo, AnActionBehindAnUndoForgetsWhatCouldBeRedone) {
  view.RemoveRows(0);
  view.Undo();
  view.RenamePoint(0, "Z");
  EXPECT_FALSE(view.CanRedo());
  view.Undo();
  EXPECT_EQ(NamesOf(list), "ABCDE");
}

TEST_F(Undo, CalculationsAreNoSteps) {
  view.CalculateAll(false);
  view.ClearRoute();
  EXPECT_FALSE(view.CanUndo());
}

TEST_F(Undo, SmallStepsReachThePageAsSmallCalls) {
  view.RemoveRows(1);
  log.clear();
  view.Undo();
  EXPECT_THAT(log, ElementsAre("InsertPushPin(0, 1)", "ViewPushPin(0, 1)", "totals "));
  log.clear();
  view.Redo();
  EXPECT_THAT(log, ElementsAre("DelPushPin(0, 1)", "totals "));
  view.MoveRow(1, 3);
  log.clear();
  view.Undo();
  EXPECT_THAT(log, ElementsAre("RefreshPushPins(0, 1)", "totals "));
}

TEST_F(Undo, LargeStepsShowTheWholeListAnew) {
  view.InsertPoints(5, NamedPoints(200));
  log.clear();
  view.Undo();
  EXPECT_EQ(NamesOf(list), "ABCDE");
  EXPECT_THAT(log,
              ElementsAre("ClearPushPins(0)", "RefreshPushPins(0, 0)", "AutoViewMap()", "totals "));
}

TEST_F(Undo, LegsAroundAPointThatComesBackAreGone) {
  AddLegs();
  view.RemoveRows(1);
  EXPECT_EQ(LegsOf(list), "..DE");
  view.Undo();
  EXPECT_EQ(LegsOf(list), "...DE");
}

TEST_F(Undo, WithAutoCalcAStepBackIsCalculated) {
  view.RemoveRows(1);
  settings.autoCalc = true;
  view.Undo();
  EXPECT_EQ(LegsOf(list), ".BCDE");
}

/// Points that no other call gives.
std::vector<CGpsPoint> UniquePoints(int call, size_t count) {
  std::vector<CGpsPoint> points;
  for (size_t i = 0; i < count; ++i)
    points.push_back(MakePoint(call, 1.0 + static_cast<double>(i), "u"));
  return points;
}

// A random walk of actions with steps back and forth, beside a list of all states.
TEST_F(Undo, RandomActionsComeBackToTheirStates) {
  std::mt19937 random(7);
  const auto number = [&](size_t limit) { return static_cast<size_t>(random() % limit); };
  std::vector<std::string> states{StateOf(list)};
  size_t at = 0;
  for (int i = 0; i < 3000; ++i) {
    const size_t count = list.Count();
    const std::string before = StateOf(list);
    switch (number(9)) {
      case 0:
        view.InsertPoint(number(count + 1), MakePoint(1, i, "p" + std::to_string(i)));
        break;
      case 1:
        if (count > 0) view.RemoveRows(static_cast<int64_t>(number(count)));
        break;
      case 2:
        if (count > 1) view.MoveRow(number(count), number(count));
        break;
      case 3:
      case 4:
        rows.selected.clear();
        for (size_t row = 0; row < count; ++row) {
          if (number(3) == 0) rows.selected.push_back(row);
        }
        if (i % 3 == 0)
          view.RemoveRows(kSelectedRows);
        else if (i % 3 == 1)
          view.MoveSelectedUp();
        else
          view.MoveSelectedDown();
        break;
      case 5:
        if (count > 1) view.ReverseAll();
        break;
      case 6:
        view.InsertPoints(number(count + 1), UniquePoints(i, number(7)));
        break;
      case 7:
        if (view.CanUndo()) {
          view.Undo();
          ASSERT_EQ(StateOf(list), states[--at]) << i;
        }
        continue;
      default:
        if (view.CanRedo()) {
          view.Redo();
          ASSERT_EQ(StateOf(list), states[++at]) << i;
        }
        continue;
    }
    ASSERT_EQ(rows.count, list.Count());
    if (StateOf(list) == before && !view.CanRedo() && at + 1 == states.size()) continue;
    if (view.CanRedo()) continue;  // nothing was changed
    states.resize(at + 1);
    states.push_back(StateOf(list));
    ++at;
  }
}

size_t HeapInUse() { return mallinfo2().uordblks + mallinfo2().hblkhd; }

// Steps that each take the whole of a long list, the worst that an action can do.
TEST_F(Undo, TwoHundredStepsOnTenThousandPointsStayBelow200MB) {
  std::vector<CGpsPoint> points;
  for (int i = 0; i < 10'000; ++i) {
    points.push_back(MakePoint(40 + i * 1e-4, 7, "Rue de la Gare " + std::to_string(i),
                               "A comment of some length for stop " + std::to_string(i)));
  }
  view.progress = nullptr;
  view.planner = nullptr;  // whose log would grow too
  view.InsertPoints(5, points);
  const size_t before = HeapInUse();
  for (int i = 0; i < 200; i += 2) {
    rows.selected.clear();
    for (size_t row = 0; row < list.Count(); ++row) rows.selected.push_back(row);
    view.RemoveRows(kSelectedRows);
    view.InsertPoints(0, points);
  }
  EXPECT_LT(HeapInUse() - before, size_t{200'000'000});
  EXPECT_TRUE(view.CanUndo());
  view.Undo();
  EXPECT_EQ(list.Count(), 0u);
  view.Undo();
  EXPECT_EQ(list.Count(), 10'000u);
}

TEST_F(Undo, TheOldestStepsGoFirst) {
  view.planner = nullptr;  // whose log would grow too
  for (int i = 0; i < 10'050; ++i) view.RenamePoint(0, "n" + std::to_string(i));
  int steps = 0;
  for (; view.CanUndo(); ++steps) view.Undo();
  EXPECT_EQ(steps, 10'000);
  EXPECT_EQ(list.points[0].name, "n49");
  for (; view.CanRedo(); --steps) view.Redo();
  EXPECT_EQ(steps, 0);
  EXPECT_EQ(list.points[0].name, "n10049");
}

}  // namespace
