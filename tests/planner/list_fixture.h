#pragma once

#include <gtest/gtest.h>

#include "tests/planner/played_window.h"

/// The itinerary A, B, C, D, E in a window, with a page that has just come up.
class ItineraryTest : public testing::Test {
 protected:
  ItineraryTest() {
    settings.autoCalc = false;
    for (const CGpsPoint& point : NamedPoints(5)) list.points.push_back(point);
    view.list = &list;
    view.planner = &script;
    view.progress = &progress;
    view.statusField = &status;
    view.SetCalculation(&directions, &window);
    view.Rebuild();
    rows.refreshed.clear();
    log.clear();
  }

  /// Gives every point behind the first a leg, without a call.
  void AddLegs() {
    for (size_t i = 1; i < list.Count(); ++i) {
      CRouteLeg leg;
      leg.route = MakeRoute(1000, 60);
      list.points[i].SetRouteLeg(leg);
    }
  }

  /// What the page was asked for, without the lines of the window.
  CallLog PageCalls() const {
    CallLog calls;
    for (const std::string& line : log) {
      if (line.ends_with(")") && line.find(' ') > line.find('(')) calls.push_back(line);
    }
    return calls;
  }

  const SettingsHome home;
  CSettings settings;
  CallLog log;
  PlayedPage page{log};
  CPlannerScript script{&page};
  PlayedRows rows;
  PlayedProgress progress{log};
  PlayedStatus status{log};
  PlayedWindow window{log};
  PlayedDirections directions{log};
  CGpsRoute list;
  CPointListView view{kListItinerary, PinKind::kItinerary, rows, settings};
};
