#pragma once

#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "planner/directions.h"
#include "planner/page_services.h"
#include "planner/script_engine.h"
#include "planner/window_parts.h"

// A window, a page and services that agree to everything and show nothing. Wherever the real ones
// let the page run meanwhile, these call `meanwhile`.

inline void Expect(bool holds) {
  if (!holds) std::abort();
}

using Meanwhile = std::function<void()>;

class PlayedPage : public IScriptEngine {
 public:
  explicit PlayedPage(const Meanwhile& meanwhile) : m_meanwhile(meanwhile) {}

  ScriptValue Call(std::string_view function, ScriptArguments) override {
    m_meanwhile();
    if (function == "GetMaps") return maps;
    if (function == "GetProviders") return providers;
    throw ScriptError(kScriptUnknownName);
  }
  void Send(std::string_view, ScriptArguments) override { m_meanwhile(); }
  void Offer(std::string_view, ScriptArguments) override { m_meanwhile(); }

  ScriptValue maps;
  ScriptValue providers;

 private:
  const Meanwhile& m_meanwhile;
};

/// A function of the page.
class PlayedFunction : public ScriptFunction {
 public:
  ScriptValue Call(ScriptArguments) override { throw ScriptError(kScriptFailed); }
};

class PlayedRows : public PointRows {
 public:
  void InsertRow(size_t index) override {
    Expect(index <= m_count);
    ++m_count;
    if (m_selected >= index && m_selected != kNone) ++m_selected;
  }
  void RemoveRows(size_t first, size_t count) override {
    Expect(first <= m_count && count <= m_count - first);
    m_count -= count;
    m_selected = kNone;
  }
  void ResetRows(size_t count) override {
    m_count = count;
    m_selected = kNone;
  }
  void RefreshRows(size_t first, size_t last) override { Expect(first <= last && last < m_count); }
  void ClearSelection() override { m_selected = kNone; }
  void SelectRow(size_t index) override {
    Expect(index < m_count);
    m_selected = index;
  }
  std::vector<size_t> SelectedRows() const override {
    if (m_selected == kNone) return {};
    return {m_selected};
  }

  size_t Count() const { return m_count; }

 private:
  static constexpr size_t kNone = static_cast<size_t>(-1);
  size_t m_count = 0;
  size_t m_selected = kNone;
};

class PlayedWindow : public PlannerWindow {
 public:
  explicit PlayedWindow(const Meanwhile& meanwhile) : m_meanwhile(meanwhile) {}

  int32_t ShowBox(std::string_view, uint32_t) override {
    m_meanwhile();
    return kAnswerOk;
  }
  int32_t ShowRepeatedBox(std::string_view text, uint32_t style, bool& forTheRest) override {
    forTheRest = true;
    return ShowBox(text, style);
  }
  void DispatchMessages() override { m_meanwhile(); }
  void ShowNormalTitle() override {}
  void ShowUpdateNotice(std::string_view, std::string_view) override {}
  void DisableMap(std::string_view) override {}
  void ReloadPage() override {}
  void StartTimer(int32_t, int32_t) override {}
  void StopTimer(int32_t) override {}
  bool MayDownloadTo(const WideString&) override {
    m_meanwhile();
    return true;
  }

 private:
  const Meanwhile& m_meanwhile;
};

/// A leg of a kilometre between each two points; no way through more than ten.
class PlayedDirections : public RoadDirections {
 public:
  explicit PlayedDirections(const Meanwhile& meanwhile) : m_meanwhile(meanwhile) {}

  DirectionsAnswer Ask(const std::vector<CGpsPoint>& points,
                       const std::function<bool()>& goesOn) override {
    constexpr uint32_t kKilometre = 1000;
    constexpr size_t kMostPoints = 10;
    m_meanwhile();
    if (!goesOn()) return {kTransportStatus, {}, Provider()};
    if (points.size() > kMostPoints) return {1, {}, Provider()};
    DirectionsAnswer answer{0, {}, Provider()};
    for (size_t i = 1; i < points.size(); ++i) {
      CRouteData& leg = answer.legs.emplace_back();
      leg.measure.distance = kKilometre;
      leg.measure.flag = 1;
      leg.shape.points.points.push_back(std::make_unique<CGpsNamedPoint>(points[i - 1]));
      leg.shape.points.points.push_back(std::make_unique<CGpsNamedPoint>(points[i]));
    }
    return answer;
  }
  void AskLater(const std::vector<CGpsPoint>& points,
                std::function<void(const DirectionsAnswer&)> answered) override {
    answered(Ask(points, [] { return true; }));
  }
  int32_t Provider() const override { return 0; }

 private:
  const Meanwhile& m_meanwhile;
};

/// Answers with what it was asked for.
class PlayedServices : public PageServices {
 public:
  explicit PlayedServices(const Meanwhile& meanwhile)
      : directions(meanwhile), m_meanwhile(meanwhile) {}

  std::string Get(const std::string& url, const std::string&, const std::string&) override {
    m_meanwhile();
    return url;
  }
  WideString Download(const std::string&, const std::string&, const WideString& target) override {
    m_meanwhile();
    return target;
  }
  void Enqueue(int32_t, const std::string&, const std::string&, const std::string&,
               ScriptFunctionPtr callback) override {
    callbacks.push_back(std::move(callback));
  }
  std::optional<CGpsNamedPoint> FindAddress(const CGpsCoordinate& position) override {
    return At(position);
  }
  std::optional<CGpsNamedPoint> FindPanorama(const CGpsCoordinate& position) override {
    return At(position);
  }
  std::optional<CGpsNamedPoint> FindElevation(const CGpsCoordinate&) override {
    m_meanwhile();
    return std::nullopt;
  }
  RoadDirections* Directions() override { return &directions; }
  std::optional<UserCountry> FindCountry() override {
    m_meanwhile();
    return UserCountry{"NL", 52, 5};
  }
  void UpdateProviders(const std::string&) override {}

  PlayedDirections directions;
  std::vector<ScriptFunctionPtr> callbacks;

 private:
  std::optional<CGpsNamedPoint> At(const CGpsCoordinate& position) {
    m_meanwhile();
    CGpsNamedPoint point;
    point.latitude = position.latitude;
    point.longitude = position.longitude;
    return point;
  }

  const Meanwhile& m_meanwhile;
};
