// What the page does to the lists through `window.external`.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "settings/favorites.h"
#include "settings/storage.h"
#include "tests/planner/external_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(External, BeforeThePageIsReadyThereAreNoLists) {
  bridge.SetEngine(&page);
  EXPECT_EQ(Failure("GetPoint", {0, 0}), 0x8002000B);
}

TEST_F(External, GetPointShowsThePointAtItsPlace) {
  CRouteLeg leg;
  leg.route = MakeRoute(1200, 90);
  leg.provider = 10;
  lists[0].points[1].SetRouteLeg(leg);
  lists[0].points[1].comment = "comment";
  lists[0].points[1].altitude = 220;
  const ScriptObjectPtr point = Call("GetPoint", {0, 1}).AsObject();
  EXPECT_THAT(point->PropertyNames(),
              ElementsAre("lat", "lng", "alt", "address", "snippet", "route", "type"));
  EXPECT_EQ(point->Get("lat")->AsNumber(), 48.1);
  EXPECT_EQ(point->Get("lng")->AsNumber(), 7.1);
  EXPECT_EQ(point->Get("alt")->AsNumber(), 220);
  EXPECT_EQ(point->Get("address")->AsText(), "B");
  EXPECT_EQ(point->Get("snippet")->AsText(), "comment");
  EXPECT_EQ(point->Get("type")->AsInteger(), 9);
  EXPECT_FALSE(point->Get("Lat"));
  const ScriptObjectPtr route = point->Get("route")->AsObject();
  EXPECT_EQ(route->Get("distance")->AsInteger(), 1200);
  EXPECT_EQ(route->Get("duration")->AsInteger(), 90);
  EXPECT_EQ(route->Get("driving")->AsInteger(), 1);
  EXPECT_EQ(route->Get("provider")->AsInteger(), 10);
  EXPECT_EQ(route->Get("color")->AsInteger(), 255);
  const ScriptArray line = route->Get("points")->AsArray();
  ASSERT_EQ(line.size(), 2u);
  EXPECT_EQ(line[1].AsObject()->Get("lat")->AsNumber(), 48.2);
  EXPECT_EQ(line[1].AsObject()->Get("lng")->AsNumber(), 7.3);
  EXPECT_TRUE(Call("GetPoint", {0, 0}).AsObject()->Get("route")->IsNull());
  EXPECT_EQ(Call("GetPoint", {3, 0}).AsObject()->Get("type")->AsInteger(), 8);

  // Live: whatever is there now, and the last values when nothing is.
  itinerary.RemoveRows(0);
  EXPECT_EQ(point->Get("address")->AsText(), "C");
  itinerary.RemoveAll();
  EXPECT_EQ(point->Get("address")->AsText(), "C");
  EXPECT_EQ(route->Get("distance")->AsInteger(), 1200);
  EXPECT_THAT(route->Get("points")->AsArray(), IsEmpty());
}

TEST_F(External, SelectPointActsOnAllLists) {
  Call("SelectPoint", {1, 0});
  EXPECT_THAT(rows[1].selected, ElementsAre(0));
  EXPECT_THAT(log, ElementsAre("ViewPushPin(1, 0)"));
}

TEST_F(External, EditsActOnListsThatTheMapMayEdit) {
  Call("DeletePoint", {3, 0});
  EXPECT_EQ(lists[3].Count(), 0u);
  EXPECT_THAT(log, ElementsAre("DelPushPin(3, 0)"));
  log.clear();
  Call("DeletePoint", {1, 0});
  Call("MovePoint", {1, 0, Position(1, 2)});
  Call("RenamePoint", {1, 0, "other"});
  Call("InsertPoint", {1, 0, Position(1, 2), "x", ""});
  EXPECT_EQ(NamesOf(lists[1]), "R");
  EXPECT_EQ(lists[1].points[0].latitude, 50);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(External, EditsOfTheItineraryGoThroughTheList) {
  Call("InsertPoint", {0, 1, Position(1, 2.5), "X", "comment"});
  EXPECT_EQ(NamesOf(lists[0]), "AXBC");
  EXPECT_EQ(lists[0].points[1].longitude, 2.5);
  EXPECT_EQ(lists[0].points[1].comment, "comment");
  Call("InsertPoint", {0, 4, Position(1, 2), "Y", ""});
  Call("MovePoint", {0, 0, Position(3, 4)});
  Call("RenamePoint", {0, 0, "Z"});
  Call("DeletePoint", {0, 2});
  EXPECT_EQ(NamesOf(lists[0]), "ZXCY");
  EXPECT_EQ(lists[0].points[0].latitude, 3);
  for (int i = 0; i < 5; ++i) itinerary.Undo();
  EXPECT_EQ(NamesOf(lists[0]), "ABC");
}

TEST_F(External, AddPointTakesPointObjects) {
  const auto point =
      std::make_shared<ScriptRecord>(std::vector<std::pair<std::string, ScriptValue>>{
          {"lat", 1}, {"lng", 2}, {"alt", 3.5}, {"address", "X"}, {"snippet", "comment"}});
  settings.autoCalc = true;
  Call("AddPoint", {0, point});
  EXPECT_EQ(NamesOf(lists[0]), "ABCX");
  EXPECT_EQ(lists[0].points[3].altitude, 3.5);
  EXPECT_EQ(lists[0].points[3].comment, "comment");
  EXPECT_EQ(LegsOf(lists[0]), ".BCX");  // calculated
  Call("AddPoint", {1, point});
  EXPECT_EQ(NamesOf(lists[1]), "RX");
  EXPECT_EQ(LegsOf(lists[1]), "..");
}

TEST_F(External, AddPointTakesPointsThatThePageGotFromUs) {
  Call("AddPoint", {0, Call("GetPoint", {3, 0})});
  EXPECT_EQ(NamesOf(lists[0]), "ABCP");
  EXPECT_EQ(lists[0].points[3].comment, "cafe");
  EXPECT_EQ(lists[0].points[3].altitude, 12.5);
}

TEST_F(External, AddFavoriteKeepsThemSortedAndStored) {
  settings.Load();
  for (const char* const name : {"m", "a", "z", "m"}) {
    const auto point =
        std::make_shared<ScriptRecord>(std::vector<std::pair<std::string, ScriptValue>>{
            {"lat", 1.5}, {"lng", 2}, {"address", name}});
    Call("AddFavorite", {point});
  }
  EXPECT_EQ(NamesOf(lists[2]), "ammz");
  CGpsWaypointList stored;
  EXPECT_EQ(LoadFavorites(storage::OpenUserStorage(), stored), 0u);
  EXPECT_EQ(NamesOf(stored), "ammz");
  EXPECT_EQ(stored.points[0].latitude, 1.5);
}

TEST_F(External, CalculateReturnsAtOnce) {
  Call("Calculate", {0});
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(posts.Pump(), 1u);
  EXPECT_EQ(LegsOf(lists[0]), ".BC");
  EXPECT_EQ(progress.steps, 2u);
  log.clear();
  Call("Calculate", {3});
  posts.Pump();
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(External, CalculateIsForgottenWhenTheWindowGoes) {
  Call("Calculate", {0});
  bridge.Close();
  posts.Pump();
  EXPECT_EQ(LegsOf(lists[0]), "...");
}

TEST_F(External, SendToGpsHandsThePointOver) {
  Call("SendToGps", {3, 0, 1});
  EXPECT_THAT(log, ElementsAre("send 3 B"));
}

TEST_F(External, CallsFromInsideACallAreHarmless) {
  int answers = 0;  // so often the page answers a call with one of its own
  page.meanwhile = [&](std::string_view function) {
    if (answers == 0 || lists[0].Count() == 0) return;
    --answers;
    if (function == "DelPushPin") Call("DeletePoint", {0, 0});
    if (function == "InsertPushPin") Call("InsertPoint", {0, 0, Position(1, 2), "N", ""});
    if (function == "AddRoute") Call("DeletePoint", {0, 0});
  };
  const auto inStep = [&] { return rows[0].count == lists[0].Count(); };
  answers = 4;
  Call("DeletePoint", {0, 0});
  EXPECT_TRUE(inStep());
  answers = 4;
  Call("InsertPoint", {0, 0, Position(1, 2), "X", ""});
  EXPECT_TRUE(inStep());
  answers = 4;
  itinerary.InsertPoints(1, NamedPoints(5));
  EXPECT_TRUE(inStep());
  settings.autoCalc = true;
  answers = 4;
  itinerary.AfterEdit();
  EXPECT_TRUE(inStep());
  itinerary.InsertPoints(0, NamedPoints(5));
  answers = 4;
  Call("Calculate", {0});
  posts.Pump();
  EXPECT_TRUE(inStep());
}

}  // namespace
