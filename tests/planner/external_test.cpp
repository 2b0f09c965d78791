// What the page finds as `window.external`: names, numbers, argument checks, and what concerns the
// program itself.

#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "planner/external_names.h"
#include "tests/planner/external_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

TEST_F(External, MessageBoxGivesTheAnswer) {
  window.answers = {kAnswerYes};
  EXPECT_EQ(Call("MessageBox", {"Really?", 36}).AsInteger(), 6);
  EXPECT_EQ(Call("MessageBox", {"Well", ScriptValue()}).AsInteger(), 2);
  EXPECT_THAT(log, ElementsAre("box 36 Really?", "box 0 Well"));
  log.clear();
  Call("MessageBox", {std::string(1'000'000, 'x')});
  EXPECT_LE(log.front().size(), 5000u);
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

TEST_F(External, HugeTextsAreTaken) {
  const std::string huge(20'000'000, 'x');
  Call("RenamePoint", {0, 0, huge});
  EXPECT_EQ(lists[0].points[0].name.size(), huge.size());
  Call("Trace", {huge});
  EXPECT_EQ(Failure(huge), 0x80020006);
}

}  // namespace
