// A page of real JavaScript that does what docs/page-protocol.md says, held against the lists.

#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/planner/bridge_fixture.h"
#include "tests/planner/duktape_engine.h"

namespace {

using testing::ElementsAre;

// The page: pins and ways of every list, and a note of everything else that it was asked.
constexpr char kPage[] = R"(
var lists = {}, notes = [], start = null, software = 1.21;

function pinAt(pin) { return {name: pin.address, lat: pin.lat, lng: pin.lng, way: null}; }

function NewPinList(list) { lists[list] = []; }

function ClearPushPins(list) { lists[list] = []; }

function RefreshPushPins(list, first) {
  var pins = lists[list];
  var ways = pins.map(function (pin) { return pin.way; });
  pins.length = Math.min(first, pins.length);
  var count = external.GetCount(list);
  while (pins.length < count) {
    JSON.parse(external.GetPins(list, pins.length, 3)).forEach(function (pin) {
      pins.push(pinAt(pin));
    });
  }
  for (var i = first; i < pins.length; ++i) {
    pins[i].way = ways[i] && external.GetPoint(list, i).route ? ways[i] : null;
  }
}

function dropWay(list, index) { if (lists[list][index]) lists[list][index].way = null; }

function ViewPushPin(list, index) { notes.push('view ' + list + ' ' + index); }

function DelPushPin(list, index) {
  lists[list].splice(index, 1);
  dropWay(list, index);
}

function InsertPushPin(list, index) {
  var point = external.GetPoint(list, index);
  lists[list].splice(index, 0, pinAt(point));
  dropWay(list, index + 1);
}

function AddRoute(list, index) {
  var route = external.GetPoint(list, index).route;
  lists[list][index].way = {distance: route.distance, points: route.points.length};
}

function ClearRoutes(list) { lists[list].forEach(function (pin) { pin.way = null; }); }

function AutoViewMap() { notes.push('fit'); }
function MapClickEnabled(enabled) { notes.push('clicks ' + enabled); }
function CloseInfoWindow() {}
function ShowUpdateWindow() { notes.push('update'); }
function InitMap(json) { start = JSON.parse(json); }
function GetMaps() { return JSON.stringify([{name: 'OpenStreetMap', icon: 1, map: false}]); }
function GetProviders() { return ''; }
function SettingsChanged() { notes.push('settings'); }

// What a test asks for.
function names(list) { return lists[list].map(function (pin) { return pin.name; }).join(''); }
function ways(list) {
  return lists[list].map(function (pin) { return pin.way ? pin.name : '.'; }).join('');
}
function failure(action) {
  try { action(); } catch (error) { return error.number; }
  return 0;
}
function takeNotes() { var text = notes.join(', '); notes = []; return text; }
)";

class RealPage : public BridgeTest {
 protected:
  RealPage() {
    engine.SetGlobal("external", bridge.External());
    engine.Run(kPage);
    bridge.SetEngine(&engine);
    bridge.OnReady(R"({"software": {"version": 1.21}})");
  }
  ~RealPage() override { bridge.Close(); }

  CPointListView& view() { return itinerary; }
  std::string Text(const std::string& script) { return engine.Run(script).AsText(); }
  int32_t Number(const std::string& script) { return engine.Run(script).AsInteger(); }
  /// The page shows just what the list holds.
  void ExpectSame() {
    EXPECT_EQ(Text("names(0)"), NamesOf(lists[0]));
    EXPECT_EQ(Text("ways(0)"), LegsOf(lists[0]));
    EXPECT_EQ(rows[0].count, lists[0].Count());
  }

  DuktapeEngine engine;
};

TEST_F(RealPage, ComesUpWithThePinsThatAreThere) {
  EXPECT_EQ(Text("names(0)"), "ABC");
  EXPECT_EQ(Text("names(1)"), "R");
  EXPECT_EQ(Text("names(2)"), "");
  EXPECT_EQ(Text("names(3)"), "P");
  EXPECT_EQ(Text("start.lang.hl"), "en");
  EXPECT_EQ(Text("JSON.stringify(start.maps)"),
            R"([{"flag":"OpenStreetMap","map":false,"sat":false,"hybrid":false,"topo":false}])");
  EXPECT_EQ(Text("takeNotes()"), "fit");
}

TEST_F(RealPage, FollowsEveryAction) {
  view().CalculateAll(false);
  EXPECT_EQ(Text("ways(0)"), ".BC");
  EXPECT_EQ(Number("lists[0][1].way.distance"), 1000);
  EXPECT_EQ(Number("lists[0][1].way.points"), 2);
  view().InsertPoint(1, MakePoint(1, 2, "X"));
  ExpectSame();
  view().MoveRow(3, 0);
  ExpectSame();
  view().CalculateAll(false);
  view().SetPosition(2, MakePoint(5, 6));
  ExpectSame();
  EXPECT_EQ(Number("lists[0][2].lat"), 5);
  view().RemoveRows(1);
  ExpectSame();
  view().ReverseAll();
  ExpectSame();
  view().RemoveAll();
  ExpectSame();
  view().Undo();
  ExpectSame();
}

TEST_F(RealPage, EditsTheItinerary) {
  engine.Run("external.InsertPoint(0, 1, {lat: 1, lng: 2.5}, 'X', 'c')");
  engine.Run("external.AddPoint(0, {lat: 1, lng: 2, address: 'Y'})");
  engine.Run("external.AddPoint(0, external.GetPoint(3, 0))");
  engine.Run("external.DeletePoint(0, 0)");
  engine.Run("external.RenamePoint(0, 0, 'Z')");
  engine.Run("external.MovePoint(0, 1, {lat: -3, lng: 4})");
  ExpectSame();
  EXPECT_EQ(lists[0].points[1].latitude, -3);
  engine.Run("external.Calculate(0)");
  EXPECT_EQ(posts.Pump(), 1u);
  ExpectSame();
  EXPECT_EQ(LegsOf(lists[0]).find('.'), 0u);
}

TEST_F(RealPage, SeesFailuresAsErrorsWithANumber) {
  EXPECT_EQ(Number("failure(function () { external.NoSuchName; })"),
            static_cast<int32_t>(0x80020006));
  EXPECT_EQ(Number("failure(function () { external.GetPoint(0); })"),
            static_cast<int32_t>(0x8002000E));
  EXPECT_EQ(Number("failure(function () { external.GetPoint(0, 99); })"),
            static_cast<int32_t>(0x8002000B));
  EXPECT_EQ(Number("failure(function () { external.MovePoint(0, 0, {lat: NaN, lng: 1}); })"),
            static_cast<int32_t>(0x80020008));
  EXPECT_EQ(Number("failure(function () { external.MovePoint(0, 0, {lat: 1}); })"),
            static_cast<int32_t>(0x80020006));
  EXPECT_EQ(Number("failure(function () { external.GetPoint(0, 0); })"), 0);
  ExpectSame();
}

TEST_F(RealPage, UsesSettingsAndCodecs) {
  EXPECT_FALSE(engine.Run("external.Settings.AutoCalc").AsBoolean());
  engine.Run("external.Settings.AutoCalc = true");
  EXPECT_TRUE(settings.autoCalc);
  EXPECT_EQ(Number("failure(function () { external.Settings.AutoCalc = 'yes'; })"),
            static_cast<int32_t>(0x80020008));
  EXPECT_EQ(Text("external.Base64.Encode('ab')"), "YWI=");
  EXPECT_EQ(Text("external.Utf8.Decode(external.Utf8.Encode('caf\\u00e9'))"), "caf\u00E9");
  EXPECT_EQ(Text("external.GetStrCoords({lat: 48, lng: 7.5})"), "48.000000, 7.500000");
  EXPECT_EQ(Text("JSON.parse(external.GetTexts()).zoomIn"), "Zoom in");
  bridge.SettingsChanged();
  EXPECT_NE(Text("takeNotes()").find("settings"), std::string::npos);
}

TEST_F(RealPage, GetsItsCallbacks) {
  engine.Run(R"(
    var status = -1, distance = -1;
    external.GetRoutePreview(0, 1, {lat: 1, lng: 2}, false, function (code, route) {
      status = code;
      distance = route.distance;
    }))");
  EXPECT_EQ(Number("status"), 0);
  EXPECT_EQ(Number("distance"), 2000);
  engine.Run(
      "external.HttpRequest('http://a.example/', {callback: function (code, text) {"
      "  status = code; throw new Error(text); }})");
  ASSERT_EQ(services.callbacks.size(), 1u);
  EXPECT_THROW(services.callbacks[0]->Call(ScriptArray{12029, "body"}), ScriptError);
  EXPECT_EQ(Number("status"), 12029);
}

// The page changes the list while it is being told of a change.
TEST_F(RealPage, MayCallBackWhileItIsCalled) {
  engine.Run(
      "var former = DelPushPin; DelPushPin = function (list, index) {"
      "  former(list, index); DelPushPin = former; external.RenamePoint(0, 0, 'N'); }");
  view().RemoveRows(1);
  ExpectSame();
  EXPECT_EQ(NamesOf(lists[0]), "NC");
}

// Whatever is done in whatever order, the page shows what the list holds.
TEST_F(RealPage, StaysInStepThroughRandomActions) {
  std::mt19937 random(11);
  const auto number = [&](size_t limit) { return static_cast<size_t>(random() % limit); };
  for (int i = 0; i < 600; ++i) {
    const size_t count = lists[0].Count();
    settings.autoCalc = number(4) == 0;
    const auto row = static_cast<int64_t>(count == 0 ? 0 : number(count));
    switch (number(11)) {
      case 0:
      case 1:
        view().InsertPoint(number(count + 1),
                           MakePoint(1, i % 90, std::string(1, static_cast<char>('a' + i % 26))));
        break;
      case 2:
        if (count > 0) view().RemoveRows(row);
        break;
      case 3:
        if (count > 1) view().MoveRow(number(count), number(count));
        break;
      case 4:
        if (count > 0) view().SetPosition(static_cast<size_t>(row), MakePoint(2, i % 90));
        break;
      case 5:
        view().ReverseAll();
        break;
      case 6:
        view().InsertPoints(number(count + 1), NamedPoints(number(150)));
        break;
      case 7:
        rows[0].selected.clear();
        for (size_t at = 0; at < count; ++at) {
          if (number(3) == 0) rows[0].selected.push_back(at);
        }
        if (i % 2 == 0)
          view().MoveSelectedUp();
        else
          view().RemoveRows(kSelectedRows);
        break;
      case 8:
        view().Undo();
        break;
      case 9:
        view().Redo();
        break;
      default:
        if (i % 7 == 0) view().RemoveAll();
        view().CalculateFrom(row);
        break;
    }
    ASSERT_EQ(Text("names(0)"), NamesOf(lists[0])) << i;
    ASSERT_EQ(Text("ways(0)"), LegsOf(lists[0])) << i;
    log.clear();
  }
}

// A leg that cannot be had again is on the map no more than in the list.
TEST_F(RealPage, LosesTheWayOfALegThatFails) {
  view().CalculateAll(false);
  EXPECT_EQ(Text("ways(0)"), ".BC");
  services.directions.statuses = {5};
  window.answers = {kAnswerOk};
  view().CalculateAll(false);
  EXPECT_EQ(LegsOf(lists[0]), "..C");
  ExpectSame();
  services.directions.statuses = {1};
  window.answers = {kAnswerCancel};
  view().CalculateFrom(2);
  EXPECT_EQ(LegsOf(lists[0]), "...");
  ExpectSame();
}

}  // namespace
