// What the page finds as `window.external`: names, numbers, argument checks, and what each call
// does.

#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "planner/external_names.h"
#include "settings/favorites.h"
#include "settings/storage.h"
#include "tests/planner/bridge_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class External : public BridgeTest {
 protected:
  External() { BringUp(); }
};

TEST_F(External, NamesHaveTheirNumbers) {
  const std::pair<int32_t, std::string_view> names[] = {
      {1, "Trace"},
      {2, "MessageBox"},
      {3, "HttpRequest"},
      {4, "HttpDownload"},
      {5, "GetPoint"},
      {6, "SelectPoint"},
      {7, "DeletePoint"},
      {8, "RenamePoint"},
      {9, "MovePoint"},
      {10, "InsertPoint"},
      {11, "AddPoint"},
      {12, "AddFavorite"},
      {13, "Calculate"},
      {14, "SendToGps"},
      {15, "GetLocation"},
      {16, "GetRoadLocation"},
      {17, "GetStreetViewLocation"},
      {18, "ReverseGeocoding"},
      {19, "GetRoutePreview"},
      {20, "GetElevation"},
      {21, "Settings"},
      {22, "Base64"},
      {23, "Utf8"},
      {24, "GetStrCoords"},
      {25, "SetCurrentMap"},
      {100, "GetCount"},
      {101, "GetPins"},
      {102, "GetTexts"},
      {103, "GetWays"},
  };
  EXPECT_EQ(ExternalNames().size(), std::size(names));
  for (const auto& [id, name] : names) EXPECT_EQ(PlannerExternal::IdOf(name), id) << name;
}

TEST_F(External, UnknownNamesAndNumbersAreTold) {
  EXPECT_EQ(Failure("NoSuchName"), 0x80020006);
  EXPECT_EQ(Failure("getpoint"), 0x80020006);
  EXPECT_EQ(Failure(""), 0x80020006);
  EXPECT_FALSE(bridge.External()->Get("NoSuchName"));
  for (const int32_t id : {0, 26, 99, 104, -1}) {
    try {
      bridge.External()->Invoke(id, {});
      ADD_FAILURE() << id;
    } catch (const ScriptError& failure) {
      EXPECT_EQ(failure.number, 0x80020003);
    }
  }
}

TEST_F(External, TooFewArgumentsAreTold) {
  EXPECT_EQ(Failure("Trace"), 0x8002000E);
  EXPECT_EQ(Failure("HttpRequest"), 0x8002000E);
  EXPECT_EQ(Failure("GetPoint", {0}), 0x8002000E);
  EXPECT_EQ(Failure("RenamePoint", {0, 1}), 0x8002000E);
  EXPECT_EQ(Failure("InsertPoint", {0, 1, Position(1, 2), "name"}), 0x8002000E);
  EXPECT_EQ(Failure("GetRoutePreview", {0, 1, Position(1, 2)}), 0x8002000E);
  EXPECT_EQ(Failure("SetCurrentMap", {"map"}), 0x8002000E);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(External, WrongTypesAreTold) {
  EXPECT_EQ(Failure("Trace", {1}), 0x80020008);
  EXPECT_EQ(Failure("MessageBox", {"text", "style"}), 0x80020008);
  EXPECT_EQ(Failure("HttpRequest", {true}), 0x80020008);
  EXPECT_EQ(Failure("GetPoint", {0, 1.5}), 0x80020008);
  EXPECT_EQ(Failure("GetPoint", {"0", 1}), 0x80020008);
  EXPECT_EQ(Failure("RenamePoint", {0, 1, 7}), 0x80020008);
  EXPECT_EQ(Failure("MovePoint", {0, 1, "here"}), 0x80020008);
  EXPECT_EQ(Failure("MovePoint", {0, 1, Position("1", 2)}), 0x80020008);
  EXPECT_EQ(Failure("GetRoutePreview", {0, 1, Position(1, 2), 1}), 0x80020008);
  EXPECT_EQ(Failure("GetRoutePreview", {0, 1, Position(1, 2), true, "f"}), 0x80020008);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(External, PositionsThatAreNoneAreTold) {
  const double nothing = std::numeric_limits<double>::quiet_NaN();
  const double endless = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Failure("MovePoint", {0, 1, Position(nothing, 2)}), 0x80020008);
  EXPECT_EQ(Failure("MovePoint", {0, 1, Position(1, endless)}), 0x80020008);
  EXPECT_EQ(Failure("MovePoint", {0, 1, std::make_shared<ScriptRecord>()}), 0x80020006);
  EXPECT_EQ(lists[0].points[1].latitude, 48.1);
  // Off the earth: to its edge.
  Call("MovePoint", {0, 1, Position(95, -200.5)});
  EXPECT_EQ(lists[0].points[1].latitude, 90);
  EXPECT_EQ(lists[0].points[1].longitude, -180);
}

TEST_F(External, UnknownListsAndIndicesAreTold) {
  for (const int32_t list : {-1, 4, 2147483647}) {
    EXPECT_EQ(Failure("GetPoint", {list, 0}), 0x8002000B);
    EXPECT_EQ(Failure("AddPoint", {list, Position(1, 2)}), 0x8002000B);
    EXPECT_EQ(Failure("Calculate", {list}), 0x8002000B);
    EXPECT_EQ(Failure("GetCount", {list}), 0x8002000B);
  }
  const int32_t lowest = std::numeric_limits<int32_t>::min();
  for (const int32_t index : {-1, 3, 2147483647, lowest}) {
    EXPECT_EQ(Failure("GetPoint", {0, index}), 0x8002000B);
    EXPECT_EQ(Failure("SelectPoint", {0, index}), 0x8002000B);
    EXPECT_EQ(Failure("DeletePoint", {0, index}), 0x8002000B);
    EXPECT_EQ(Failure("RenamePoint", {0, index, "x"}), 0x8002000B);
    EXPECT_EQ(Failure("MovePoint", {0, index, Position(1, 2)}), 0x8002000B);
    EXPECT_EQ(Failure("SendToGps", {0, 0, index}), 0x8002000B);
  }
  EXPECT_EQ(Failure("InsertPoint", {0, 4, Position(1, 2), "x", ""}), 0x8002000B);
  EXPECT_EQ(Failure("GetRoutePreview", {0, -1, Position(1, 2), false}), 0x8002000B);
  EXPECT_EQ(Failure("GetPoint", {2, 0}), 0x8002000B);  // an empty list
  EXPECT_EQ(NamesOf(lists[0]), "ABC");
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(External, BeforeThePageIsReadyThereAreNoLists) {
  bridge.SetEngine(&page);
  EXPECT_EQ(Failure("GetPoint", {0, 0}), 0x8002000B);
}

TEST_F(External, MessageBoxGivesTheAnswer) {
  window.answers = {kAnswerYes};
  EXPECT_EQ(Call("MessageBox", {"Really?", 36}).AsInteger(), 6);
  EXPECT_EQ(Call("MessageBox", {"Well", ScriptValue()}).AsInteger(), 2);
  EXPECT_THAT(log, ElementsAre("box 36 Really?", "box 0 Well"));
  log.clear();
  Call("MessageBox", {std::string(1'000'000, 'x')});
  EXPECT_LE(log.front().size(), 5000u);
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

TEST_F(External, ObjectsOutliveTheWindow) {
  const ScriptObjectPtr point = Call("GetPoint", {0, 1}).AsObject();
  const ScriptObjectPtr object = Call("Settings").AsObject();
  bridge.Close();
  EXPECT_THROW(object->Put("AutoCalc", true), ScriptError);
  EXPECT_THROW(object->Get("AutoCalc"), ScriptError);
  EXPECT_FALSE(settings.autoCalc);
  EXPECT_EQ(point->Get("address")->AsText(), "B");
  for (const ExternalName& row : ExternalNames())
    EXPECT_EQ(Failure(row.name, ScriptArray(5)), 0x80004005) << row.name;
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

TEST_F(External, HttpRequestHasThreeForms) {
  services.body = "body";
  EXPECT_EQ(Call("HttpRequest", {"http://a.example/x"}).AsText(), "body");
  // A second argument that is no object is no options.
  EXPECT_EQ(Call("HttpRequest", {"http://a.example/y", 7}).AsText(), "body");
  const auto options =
      std::make_shared<ScriptRecord>(std::vector<std::pair<std::string, ScriptValue>>{
          {"referrer", "http://r.example"}, {"host", "h.example"}});
  EXPECT_EQ(Call("HttpRequest", {"http://a.example/z", options}).AsText(), "body");
  options->Put("queue", 4);
  options->Put("callback", std::make_shared<PlayedFunction>(log));
  EXPECT_TRUE(Call("HttpRequest", {"http://a.example/q", options}).IsNull());
  EXPECT_THAT(log, ElementsAre("get http://a.example/x [] []", "get http://a.example/y [] []",
                               "get http://a.example/z [http://r.example] [h.example]",
                               "enqueue 4 http://a.example/q [http://r.example] [h.example]"));
  options->Put("queue", "4");
  EXPECT_EQ(Failure("HttpRequest", {"http://a.example/q", options}), 0x80020008);
}

TEST_F(External, HttpDownloadAsksForPathsOutsideTheDownloads) {
  EXPECT_EQ(Call("HttpDownload", {"http://a.example/f"}).AsText(), "/cache/file");
  EXPECT_EQ(Call("HttpDownload", {"http://a.example/f", ScriptValue(), "/etc/x"}).AsText(), "");
  const std::string downloads = std::string(getenv("HOME")) + "/Downloads/";
  EXPECT_EQ(
      Call("HttpDownload", {"http://a.example/f", ScriptValue(), downloads + "../x"}).AsText(), "");
  Call("HttpDownload", {"http://a.example/g", ScriptValue(), downloads + "x"});
  window.mayDownload = true;
  Call("HttpDownload", {"http://a.example/f", "http://r.example", "/tmp/x"});
  EXPECT_THAT(log,
              ElementsAre("download http://a.example/f [] [0]",
                          fmt::format("download http://a.example/g [] [{}]", downloads.size() + 1),
                          "download http://a.example/f [http://r.example] [6]"));
}

TEST_F(External, GetLocationIsNamedByItsAddress) {
  const ScriptObjectPtr unknown = Call("GetLocation", {Position(1, 2), "here"}).AsObject();
  EXPECT_EQ(unknown->Get("address")->AsText(), "here");
  services.address = MakePoint(1.5, 2.5, "Main street");
  const ScriptObjectPtr known = Call("GetLocation", {Position(1, 2)}).AsObject();
  EXPECT_EQ(known->Get("address")->AsText(), "Main street");
  EXPECT_EQ(known->Get("lat")->AsNumber(), 1);
}

TEST_F(External, LookUpsGivePointsOrNull) {
  for (const char* const name : {"ReverseGeocoding", "GetStreetViewLocation", "GetElevation"})
    EXPECT_TRUE(Call(name, {Position(1, 2)}).IsNull()) << name;
  services.address = MakePoint(1.5, 2.5, "Main street", "Town", 320);
  for (const char* const name : {"ReverseGeocoding", "GetStreetViewLocation", "GetElevation"}) {
    const ScriptObjectPtr point = Call(name, {Position(1, 2)}).AsObject();
    EXPECT_EQ(point->Get("lat")->AsNumber(), 1.5);
    EXPECT_EQ(point->Get("alt")->AsNumber(), 320);
    EXPECT_EQ(point->Get("snippet")->AsText(), "Town");
  }
}

TEST_F(External, GetRoadLocationAsksForTheWayFromThePlaceToItself) {
  const ScriptObjectPtr point = Call("GetRoadLocation", {Position(1, 2)}).AsObject();
  EXPECT_THAT(log, ElementsAre("ask 1,2 1,2"));
  EXPECT_EQ(point->Get("lat")->AsNumber(), 48.1);
  EXPECT_EQ(point->Get("lng")->AsNumber(), 7.2);
  services.directions.statuses = {5};
  EXPECT_TRUE(Call("GetRoadLocation", {Position(1, 2)}).IsNull());
  services.hasDirections = false;
  EXPECT_TRUE(Call("GetRoadLocation", {Position(1, 2)}).IsNull());
}

TEST_F(External, GetRoutePreviewJoinsTheLegs) {
  const ScriptObjectPtr route = Call("GetRoutePreview", {0, 1, Position(1, 2), false}).AsObject();
  EXPECT_THAT(log, ElementsAre("ask A 1,2 B"));
  EXPECT_EQ(route->Get("distance")->AsInteger(), 2000);
  EXPECT_EQ(route->Get("duration")->AsInteger(), 120);
  EXPECT_EQ(route->Get("points")->AsArray().size(), 4u);
  EXPECT_EQ(NamesOf(lists[0]), "ABC");
  EXPECT_EQ(LegsOf(lists[0]), "...");
  services.directions.statuses = {3};
  EXPECT_TRUE(Call("GetRoutePreview", {0, 1, Position(1, 2), true}).IsNull());
  EXPECT_TRUE(Call("GetRoutePreview", {0, 9, Position(1, 2), true}).IsNull());
}

TEST_F(External, DirectionsThatComeTooLateAreNone) {
  services.waitMs = 0;
  EXPECT_TRUE(Call("GetRoadLocation", {Position(1, 2)}).IsNull());
  EXPECT_TRUE(Call("GetRoutePreview", {0, 1, Position(1, 2), false}).IsNull());
  EXPECT_THAT(log, ElementsAre("ask 1,2 1,2", "ask A 1,2 B"));
}

TEST_F(External, GetRoutePreviewCallsBack) {
  const auto callback = std::make_shared<PlayedFunction>(log);
  EXPECT_TRUE(Call("GetRoutePreview", {0, 1, Position(1, 2), true, callback}).IsNull());
  EXPECT_THAT(log, ElementsAre("ask A 1,2 C", "callback(0, object)"));
  services.directions.statuses = {1};
  Call("GetRoutePreview", {0, 1, Position(1, 2), true, callback});
  EXPECT_EQ(log.back(), "callback(1, null)");
  Call("GetRoutePreview", {0, 9, Position(1, 2), true, callback});
  posts.Pump();
  EXPECT_EQ(log.back(), "callback(8, null)");
}

TEST_F(External, SettingsAreTheProgramsOwn) {
  const ScriptObjectPtr object = Call("Settings").AsObject();
  EXPECT_EQ(bridge.External()->Get("Settings")->AsObject(), object);
  EXPECT_EQ(object->PropertyNames().size(), 10u);
  const std::pair<std::string_view, bool CSettings::*> flags[] = {
      {"AutoCalc", &CSettings::autoCalc},          {"DistMiles", &CSettings::distMiles},
      {"AvoidHighway", &CSettings::avoidHighway},  {"AvoidTolls", &CSettings::avoidTolls},
      {"ForceRoad", &CSettings::forceRoad},        {"AutoAddStep", &CSettings::autoAddStep},
      {"DisplayNumber", &CSettings::displayNumber}};
  for (const auto& [name, field] : flags) {
    settings.*field = false;
    EXPECT_FALSE(object->Get(name)->AsBoolean()) << name;
    object->Put(name, true);
    EXPECT_TRUE(settings.*field) << name;
    EXPECT_THROW(object->Put(name, 1), ScriptError) << name;
  }
  object->Put("TravelMode", 3);
  object->Put("RouteProvider", 10);
  object->Put("CoordsFormat", 2);
  EXPECT_EQ(settings.vehicleType, 3);
  EXPECT_EQ(settings.routeProvider, 10);
  EXPECT_EQ(settings.coordinates, 2);
  EXPECT_EQ(object->Get("CoordsFormat")->AsInteger(), 2);
  EXPECT_THROW(object->Put("CoordsFormat", 3), ScriptError);
  EXPECT_THROW(object->Put("TravelMode", -1), ScriptError);
  EXPECT_THROW(object->Put("RouteProvider", true), ScriptError);
  EXPECT_THROW(object->Put("UserID", "me"), ScriptError);
  EXPECT_FALSE(object->Get("UserID"));
}

TEST_F(External, CodecsWorkOnBytes) {
  const ScriptObjectPtr base64 = Call("Base64").AsObject();
  const auto call = [](const ScriptObjectPtr& object, std::string_view name, ScriptValue text) {
    return object->Invoke(name, ScriptArray{std::move(text)}).AsText();
  };
  EXPECT_EQ(call(base64, "Encode", "ab"), "YWI=");
  EXPECT_EQ(call(base64, "Decode", "YWI="), "ab");
  EXPECT_EQ(call(base64, "Encode", "\u00FF"), "/w==");
  EXPECT_EQ(call(base64, "Decode", "/w=="), "\u00FF");
  EXPECT_EQ(call(base64, "Encode", "\u20AC"), "Pw==");  // "?"
  const ScriptObjectPtr utf8 = Call("Utf8").AsObject();
  EXPECT_EQ(call(utf8, "Encode", "\u00E9"), "\u00C3\u00A9");
  EXPECT_EQ(call(utf8, "Decode", "\u00C3\u00A9"), "\u00E9");
  EXPECT_EQ(call(utf8, "Decode", "\u00C3"), "\uFFFD");
  EXPECT_THROW(base64->Invoke("encode", ScriptArray{"x"}), ScriptError);
  EXPECT_THROW(base64->Invoke("Encode", ScriptArray{}), ScriptError);
  EXPECT_THROW(base64->Invoke("Encode", ScriptArray{1}), ScriptError);
}

TEST_F(External, GetStrCoordsFollowsTheDisplayFormat) {
  const ScriptValue position = Position(48.5, -7.25);
  EXPECT_EQ(Call("GetStrCoords", {position}).AsText(), "48.500000, -7.250000");
  EXPECT_EQ(Call("GetStrCoords", {position, 1}).AsText(), "N48\u00B030.00', W7\u00B015.00'");
  EXPECT_EQ(Call("GetStrCoords", {position, 2}).AsText(), "N48\u00B030'0.00\", W7\u00B015'0.00\"");
  settings.coordinates = 1;
  EXPECT_EQ(Call("GetStrCoords", {position}).AsText(), "N48\u00B030.00', W7\u00B015.00'");
  EXPECT_EQ(Call("GetStrCoords", {position, 0}).AsText(), "48.500000, -7.250000");
  EXPECT_EQ(Call("GetStrCoords", {Position(48, 7), 0}).AsText(), "48.000000, 7.000000");
  EXPECT_EQ(Failure("GetStrCoords", {position, 3}), 0x8002000B);
}

TEST_F(External, SetCurrentMapIsKept) {
  Call("SetCurrentMap", {"OpenStreetMap", 2});
  EXPECT_EQ(settings.defaultMap, (MapChoice{2, "OpenStreetMap"}));
  bridge.OnReady("{}");
  const auto start = std::find_if(log.begin(), log.end(),
                                  [](const std::string& line) { return line.starts_with("Init"); });
  ASSERT_NE(start, log.end());
  EXPECT_NE(start->find(R"("map": {"flag": "OpenStreetMap", "type": 2})"), std::string::npos);
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

TEST_F(External, HugeTextsAreTaken) {
  const std::string huge(20'000'000, 'x');
  Call("RenamePoint", {0, 0, huge});
  EXPECT_EQ(lists[0].points[0].name.size(), huge.size());
  Call("Trace", {huge});
  EXPECT_EQ(Failure(huge), 0x80020006);
}

}  // namespace
