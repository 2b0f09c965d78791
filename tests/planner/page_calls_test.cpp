// Calls of the page in full: which of their arguments count, what they leave in lists and settings,
// and which of them calculate.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "services/directions/route_options.h"
#include "settings/storage.h"
#include "tests/planner/bridge_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PageCalls : public BridgeTest {
 protected:
  PageCalls() { BringUp(); }

  static std::shared_ptr<ScriptRecord> Record(
      std::vector<std::pair<std::string, ScriptValue>> members) {
    return std::make_shared<ScriptRecord>(std::move(members));
  }
  /// What the page is started with.
  std::string StartText() {
    log.clear();
    bridge.OnReady("{}");
    for (const std::string& line : log) {
      if (line.starts_with("InitMap(")) return line;
    }
    return {};
  }
};

TEST_F(PageCalls, OnlyTheLastArgumentOfARequestIsItsOptions) {
  const auto options = Record({{"referrer", "http://r.example"}, {"other", 7}});
  Call("HttpRequest", {"http://a.example/1", 7, options});
  Call("HttpRequest", {"http://a.example/2", options, 7});
  Call("HttpRequest", {"http://a.example/3", ScriptValue()});
  Call("HttpRequest", {"http://a.example/4", Record({})});
  EXPECT_THAT(log, ElementsAre("get http://a.example/1 [http://r.example] []",
                               "get http://a.example/2 [] []", "get http://a.example/3 [] []",
                               "get http://a.example/4 [] []"));
}

TEST_F(PageCalls, ARequestWithACallbackGoesToTheFirstQueue) {
  const auto callback = std::make_shared<PlayedFunction>(log);
  EXPECT_TRUE(
      Call("HttpRequest", {"http://a.example/", Record({{"callback", callback}})}).IsNull());
  EXPECT_THAT(log, ElementsAre("enqueue 0 http://a.example/ [] []"));
  EXPECT_EQ(services.callbacks.at(0), callback);
}

TEST_F(PageCalls, OptionsOfTheWrongTypeAskNothing) {
  EXPECT_EQ(Failure("HttpRequest", {"http://a.example/", Record({{"callback", "f"}})}), 0x80020008);
  EXPECT_EQ(Failure("HttpRequest", {"http://a.example/", Record({{"referrer", 1}})}), 0x80020008);
  EXPECT_EQ(Failure("HttpRequest", {"http://a.example/", Record({{"host", true}})}), 0x80020008);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(PageCalls, PointsTellTheKindOfTheirList) {
  lists[2].points.push_back(MakePoint(1, 2, "F"));
  const int32_t kinds[] = {9, 5, 6, 8};
  for (int32_t list = 0; list < 4; ++list)
    EXPECT_EQ(Call("GetPoint", {list, 0}).AsObject()->Get("type")->AsInteger(), kinds[list]);
}

TEST_F(PageCalls, ARouteTellsWhatItAvoids) {
  CRouteLeg leg;
  leg.route = MakeRoute(1000, 60);
  auto options = std::make_unique<AvoidanceOptions>();
  options->motorways = false;
  leg.route.options = options->Clone();
  lists[0].points[1].SetRouteLeg(leg);
  options->motorways = true;
  options->tolls = false;
  leg.route.options = options->Clone();
  leg.route.measure.distance = 4294967295U;
  lists[0].points[2].SetRouteLeg(leg);
  const auto route = [this](int32_t index) {
    return Call("GetPoint", {0, index}).AsObject()->Get("route")->AsObject();
  };
  EXPECT_THAT(route(1)->PropertyNames(),
              ElementsAre("distance", "duration", "avoid_highway", "avoid_tolls", "driving",
                          "provider", "points", "color"));
  EXPECT_TRUE(route(1)->Get("avoid_highway")->AsBoolean());
  EXPECT_FALSE(route(1)->Get("avoid_tolls")->AsBoolean());
  EXPECT_FALSE(route(2)->Get("avoid_highway")->AsBoolean());
  EXPECT_TRUE(route(2)->Get("avoid_tolls")->AsBoolean());
  EXPECT_EQ(route(2)->Get("distance")->AsNumber(), 4294967295.0);
}

TEST_F(PageCalls, APointShowsTheLegThatHasComeSince) {
  const ScriptObjectPtr point = Call("GetPoint", {0, 2}).AsObject();
  EXPECT_TRUE(point->Get("route")->IsNull());
  itinerary.CalculateAll(false);
  EXPECT_EQ(point->Get("route")->AsObject()->Get("distance")->AsInteger(), 1000);
  itinerary.ClearRoute();
  EXPECT_TRUE(point->Get("route")->IsNull());
}

TEST_F(PageCalls, EditsCalculateWhereThatIsSet) {
  settings.autoCalc = true;
  Call("DeletePoint", {0, 1});
  EXPECT_THAT(log, Contains("ask A C"));
  EXPECT_EQ(LegsOf(lists[0]), ".C");
  log.clear();
  Call("MovePoint", {0, 0, Position(1, 2)});
  EXPECT_THAT(log, Contains("ask A C"));
  log.clear();
  Call("InsertPoint", {0, 1, Position(1, 2), "X", ""});
  EXPECT_THAT(log, Contains("ask A X"));
  EXPECT_THAT(log, Contains("ask X C"));
  log.clear();
  Call("RenamePoint", {0, 1, "Y"});
  EXPECT_THAT(log, ElementsAre("RefreshPushPins(0, 1)"));
}

TEST_F(PageCalls, OnlyTheItineraryIsCalculated) {
  settings.autoCalc = true;
  Call("AddPoint", {3, Position(1, 2)});
  Call("AddPoint", {1, Position(1, 2)});
  Call("MovePoint", {3, 0, Position(3, 4)});
  Call("InsertPoint", {3, 0, Position(1, 2), "Q", ""});
  Call("RenamePoint", {3, 0, "N"});
  Call("DeletePoint", {3, 1});
  EXPECT_EQ(NamesOf(lists[3]), "N");
  EXPECT_EQ(lists[3].Count(), 2u);
  for (const std::string& line : log) {
    EXPECT_FALSE(line.starts_with("ask")) << line;
    EXPECT_FALSE(line.starts_with("totals")) << line;
  }
}

TEST_F(PageCalls, AddPointGoesBehindTheSelectedRow) {
  rows[0].selected = {0};
  Call("AddPoint", {0, Record({{"lat", 1}, {"lng", 2}, {"address", "X"}})});
  EXPECT_EQ(NamesOf(lists[0]), "AXBC");
  EXPECT_THAT(log, ElementsAre("InsertPushPin(0, 1)", "ViewPushPin(0, 1)", "totals "));
}

TEST_F(PageCalls, MovePointTakesAWholePosition) {
  lists[0].points[1].altitude = 100;
  lists[0].points[1].comment = "note";
  Call("MovePoint", {0, 1, Position(1, 2.5)});
  EXPECT_EQ(lists[0].points[1].latitude, 1);
  EXPECT_EQ(lists[0].points[1].longitude, 2.5);
  EXPECT_EQ(lists[0].points[1].altitude, 0);  // that of the place is not known
  EXPECT_EQ(lists[0].points[1].name, "B");
  EXPECT_EQ(lists[0].points[1].comment, "note");
}

TEST_F(PageCalls, APreviewAtTheFirstPointIsTheFirstLeg) {
  Call("GetRoutePreview", {0, 0, Position(1, 2), true});
  Call("GetRoutePreview", {0, 0, Position(1, 2), false});
  Call("GetRoutePreview", {0, 2, Position(1, 2), true});
  EXPECT_THAT(log, ElementsAre("ask 1,2 B", "ask 1,2 A", "ask B 1,2"));
}

TEST_F(PageCalls, AListOfOnePointHasNoPreview) {
  EXPECT_TRUE(Call("GetRoutePreview", {1, 0, Position(1, 2), false}).IsNull());
  EXPECT_TRUE(Call("GetRoutePreview", {2, 0, Position(1, 2), true}).IsNull());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(PageCalls, SettingsAreStoredUnderTheirKeys) {
  ASSERT_EQ(settings.Load(), 0u);
  const ScriptObjectPtr object = Call("Settings").AsObject();
  const std::pair<const char*, const char*> flags[] = {
      {"AutoCalc", "AUTO_CALC"},         {"DistMiles", "DIST_MILES"},
      {"AvoidHighway", "AVOID_HIGHWAY"}, {"AvoidTolls", "AVOID_TOLLS"},
      {"ForceRoad", "ForceRoad"},        {"AutoAddStep", "AutoAddStep"},
      {"DisplayNumber", "DisplayNumber"}};
  const std::pair<const char*, const char*> numbers[] = {{"TravelMode", "VehicleType"},
                                                         {"RouteProvider", "RouteProvider"},
                                                         {"CoordsFormat", "Coordinates"}};
  for (const bool value : {true, false}) {
    for (const auto& [name, key] : flags) object->Put(name, value);
    for (const auto& [name, key] : numbers) object->Put(name, value ? 2 : 0);
    ASSERT_EQ(settings.Save(), 0u);
    const storage::SFolder stored = storage::OpenUserStorage().OpenFolder(kSettingsRoot);
    for (const auto& [name, key] : flags)
      EXPECT_EQ(stored.OpenValue(key).ReadBytes(), std::string(1, value ? '\1' : '\0')) << key;
    for (const auto& [name, key] : numbers)
      EXPECT_EQ(stored.OpenValue(key).ReadNumber(), value ? 2u : 0u) << key;
  }
}

TEST_F(PageCalls, TheCurrentMapComesBackAsItWas) {
  Call("SetCurrentMap", {"Map of \"mine\"", -1});
  EXPECT_THAT(StartText(), HasSubstr(R"("map": {"flag": "Map of \"mine\"", "type": -1})"));
}

TEST_F(PageCalls, ThePageIsStartedInTheProgramsLanguage) {
  SetLanguage(Language::kDutch);
  const std::string text = StartText();
  SetLanguage(Language::kEnglish);
  EXPECT_THAT(text, HasSubstr(R"("lang": {"hl": "nl"})"));
}

TEST_F(PageCalls, APageThatFailsLaterTakesTheListsAway) {
  bridge.OnReady("Internal error");
  log.clear();
  EXPECT_EQ(Failure("GetPoint", {0, 0}), 0x8002000B);
  EXPECT_EQ(Failure("AddFavorite", {Position(1, 2)}), 0x8002000B);
  itinerary.InsertPoint(0, MakePoint(1, 2, "X"));
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(NamesOf(lists[0]), "XABC");
  BringUp();
  EXPECT_EQ(Call("GetPoint", {0, 0}).AsObject()->Get("address")->AsText(), "X");
}

TEST_F(PageCalls, ASignalWithoutATextIsNoPage) {
  EXPECT_FALSE(bridge.OnNavigate("signal:ready"));
  posts.Pump();
  EXPECT_THAT(log, ElementsAre("map disabled: "));
}

TEST_F(PageCalls, ABoxHasAnOkButtonUnlessTold) {
  window.answers = {kAnswerOk};
  EXPECT_EQ(Call("MessageBox", {"Done"}).AsInteger(), 1);
  EXPECT_THAT(log, ElementsAre("box 0 Done"));
}

TEST_F(PageCalls, APageWithoutAPathIsTheSameWithItsSlash) {
  bridge.SetPlannerPage("https://planner.example");
  EXPECT_TRUE(bridge.OnNavigate("https://planner.example"));
  EXPECT_TRUE(bridge.OnNavigate("https://planner.example/"));
  EXPECT_THAT(log, IsEmpty());
  EXPECT_FALSE(bridge.OnNavigate("https://planner.example/other"));
  EXPECT_FALSE(bridge.OnNavigate("https://planner.example.com/"));
  bridge.SetPlannerPage("https://planner.example/page");
  EXPECT_FALSE(bridge.OnNavigate("https://planner.example/page/"));
  EXPECT_EQ(log.size(), 3u);
}

}  // namespace
