// What the page asks of services through `window.external`.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/planner/external_fixture.h"

namespace {

using testing::ElementsAre;

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

}  // namespace
