#pragma once

#include <gtest/gtest.h>

#include "tests/planner/played_window.h"

/// Services that answer what they were told to.
class PlayedServices : public PageServices {
 public:
  explicit PlayedServices(CallLog& callLog) : directions(callLog), m_log(callLog) {}

  int32_t WaitMs() const override { return waitMs; }
  std::string Get(const std::string& url, const std::string& referrer,
                  const std::string& host) override {
    m_log.push_back(fmt::format("get {} [{}] [{}]", url, referrer, host));
    return body;
  }
  WideString Download(const std::string& url, const std::string& referrer,
                      const WideString& target) override {
    m_log.push_back(fmt::format("download {} [{}] [{}]", url, referrer, target.size()));
    return u"/cache/file";
  }
  void Enqueue(int32_t queue, const std::string& url, const std::string& referrer,
               const std::string& host, ScriptFunctionPtr callback) override {
    m_log.push_back(fmt::format("enqueue {} {} [{}] [{}]", queue, url, referrer, host));
    callbacks.push_back(std::move(callback));
  }
  std::optional<CGpsNamedPoint> FindAddress(const CGpsCoordinate&) override { return address; }
  std::optional<CGpsNamedPoint> FindPanorama(const CGpsCoordinate&) override { return address; }
  std::optional<CGpsNamedPoint> FindElevation(const CGpsCoordinate&) override { return address; }
  RoadDirections* Directions() override { return hasDirections ? &directions : nullptr; }
  std::optional<UserCountry> FindCountry() override {
    m_log.push_back("country");
    return country;
  }
  void UpdateProviders(const std::string& json) override { m_log.push_back("providers " + json); }

  int32_t waitMs = PageServices::WaitMs();
  std::string body;
  std::optional<CGpsNamedPoint> address;
  std::optional<UserCountry> country;
  std::vector<ScriptFunctionPtr> callbacks;
  PlayedDirections directions;
  bool hasDirections = true;

 private:
  CallLog& m_log;
};

/// A window with its four lists and a page that can be brought up: A, B, C in the itinerary, R in
/// the search results, P in the points of interest.
class BridgeTest : public testing::Test {
 protected:
  BridgeTest() {
    settings.autoCalc = false;
    for (const CGpsPoint& point : NamedPoints(3)) lists[0].points.push_back(point);
    lists[1].points.push_back(MakePoint(50, 8, "R"));
    lists[3].points.push_back(MakePoint(51, 9, "P", "cafe", 12.5));
    for (size_t i = 0; i < 4; ++i) {
      views[i]->list = &lists[i];
      views[i]->Rebuild();
    }
    itinerary.progress = &progress;
    itinerary.statusField = &status;
    itinerary.SetCalculation(&services.directions, &window);
    bridge.SetPlannerPage("corvane://planner/page.html");
    bridge.SetEngine(&page);
    page.answers = {{"GetMaps", "[]"}, {"GetProviders", ""}};
  }

  void BringUp() {
    bridge.OnReady(R"({"software": {"version": 1.21, "url": "https://site.example"}})");
    log.clear();
  }

  ScriptValue Call(std::string_view name, const ScriptArray& arguments = {}) {
    return bridge.External()->Invoke(name, arguments);
  }
  /// The number of the error that a call throws; 0 without one.
  uint32_t Failure(std::string_view name, const ScriptArray& arguments = {}) {
    try {
      Call(name, arguments);
    } catch (const ScriptError& failure) {
      return failure.number;
    }
    return 0;
  }
  static ScriptValue Position(ScriptValue latitude, ScriptValue longitude) {
    return std::make_shared<ScriptRecord>(std::vector<std::pair<std::string, ScriptValue>>{
        {"lat", std::move(latitude)}, {"lng", std::move(longitude)}});
  }

  const SettingsHome home;
  CSettings settings;
  CallLog log;
  PostBox posts;
  PlayedPage page{log};
  PlayedRows rows[4];
  PlayedProgress progress{log};
  PlayedStatus status{log};
  PlayedWindow window{log};
  PlayedServices services{log};
  CGpsRoute lists[4];
  CPointListView itinerary{kListItinerary, PinKind::kItinerary, rows[0], settings};
  CPointListView results{kListSearchResults, PinKind::kSearchResults, rows[1], settings};
  CPointListView favorites{kListFavorites, PinKind::kFavorites, rows[2], settings};
  CPointListView pois{kListPois, PinKind::kPois, rows[3], settings};
  CPointListView* views[4] = {&itinerary, &results, &favorites, &pois};
  PlannerBridge bridge{{window,
                        settings,
                        services,
                        posts,
                        {&itinerary, &results, &favorites, &pois},
                        [this](const std::string& url) { log.push_back("outside " + url); },
                        [this](int32_t target, const CGpsPoint& point) {
                          log.push_back(fmt::format("send {} {}", target, point.name));
                        }}};
};
