#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "planner/directions.h"
#include "planner/planner_bridge.h"
#include "tests/list_builder.h"
#include "tests/settings_home.h"

// A window and a page as tests play them: everything that reaches them is a line of one log.

using CallLog = std::vector<std::string>;

inline std::string Shown(const ScriptValue& value) {
  switch (value.Type()) {
    case ScriptType::kNull:
      return "null";
    case ScriptType::kBoolean:
      return value.AsBoolean() ? "true" : "false";
    case ScriptType::kInteger:
      return std::to_string(value.AsInteger());
    case ScriptType::kDouble:
      return fmt::format("{}", value.AsNumber());
    case ScriptType::kText:
      return value.AsText();
    case ScriptType::kObject:
      return "object";
    case ScriptType::kArray:
      return fmt::format("array of {}", value.AsArray().size());
    case ScriptType::kFunction:
      return "function";
  }
  return "?";
}

/// A page that writes down which of its functions are called, and answers what it was told to.
class PlayedPage : public IScriptEngine {
 public:
  explicit PlayedPage(CallLog& log) : m_log(log) {}

  ScriptValue Call(std::string_view function, ScriptArguments arguments) override {
    Note(function, arguments);
    const auto found = answers.find(std::string(function));
    if (found == answers.end()) throw ScriptError(kScriptUnknownName);
    return found->second;
  }
  void Send(std::string_view function, ScriptArguments arguments) override {
    Note(function, arguments);
    if (throws) throw ScriptError(kScriptFailed);
  }
  void Offer(std::string_view function, ScriptArguments arguments) override {
    Note(function, arguments);
  }

  std::map<std::string, ScriptValue> answers;
  bool throws = false;
  /// Runs in the middle of each call.
  std::function<void(std::string_view)> meanwhile;

 private:
  void Note(std::string_view function, ScriptArguments arguments) {
    std::string line = std::string(function) + "(";
    for (size_t i = 0; i < arguments.size(); ++i)
      line += (i == 0 ? "" : ", ") + Shown(arguments[i]);
    m_log.push_back(line + ")");
    if (meanwhile) meanwhile(function);
  }

  CallLog& m_log;
};

/// A function of the page that writes down its arguments.
class PlayedFunction : public ScriptFunction {
 public:
  explicit PlayedFunction(CallLog& log, bool fails = false) : m_log(log), m_fails(fails) {}

  ScriptValue Call(ScriptArguments arguments) override {
    std::string line = "callback(";
    for (size_t i = 0; i < arguments.size(); ++i)
      line += (i == 0 ? "" : ", ") + Shown(arguments[i]);
    m_log.push_back(line + ")");
    if (m_fails) throw ScriptError(kScriptFailed);
    last.assign(arguments.begin(), arguments.end());
    return {};
  }

  ScriptArray last;

 private:
  CallLog& m_log;
  bool m_fails;
};

/// Rows that know how many they are and which are selected.
class PlayedRows : public PointRows {
 public:
  void InsertRow(size_t index) override {
    ASSERT_LE(index, count);
    ++count;
    for (size_t& row : selected) row += row >= index ? 1 : 0;
  }
  void RemoveRows(size_t first, size_t number) override {
    ASSERT_LE(first + number, count);
    count -= number;
    std::erase_if(selected, [&](size_t row) { return row >= first && row < first + number; });
    for (size_t& row : selected) row -= row >= first + number ? number : 0;
  }
  void ResetRows(size_t number) override {
    count = number;
    selected.clear();
  }
  void RefreshRows(size_t first, size_t last) override {
    ASSERT_LE(first, last);
    ASSERT_LT(last, count);
    refreshed.emplace_back(first, last);
  }
  void ClearSelection() override { selected.clear(); }
  void SelectRow(size_t index) override {
    ASSERT_LT(index, count);
    selected.push_back(index);
    std::sort(selected.begin(), selected.end());
  }
  std::vector<size_t> SelectedRows() const override { return selected; }

  size_t count = 0;
  std::vector<size_t> selected;
  std::vector<std::pair<size_t, size_t>> refreshed;
};

class PlayedProgress : public ProgressWindow {
 public:
  explicit PlayedProgress(CallLog& log) : m_log(log) {}

  void Open(std::string_view text, int32_t provider, size_t most) override {
    m_log.push_back(fmt::format("progress open {} provider {} steps {}", text, provider, most));
  }
  void SetText(std::string_view text) override {
    m_log.push_back(fmt::format("progress {}", text));
  }
  void Step() override {
    ++steps;
    m_log.push_back("progress step");
    if (steps == cancelAtStep) cancelled = true;
  }
  bool IsCancelled() const override { return cancelled; }
  void Close() override { m_log.push_back("progress close"); }

  size_t steps = 0;
  size_t cancelAtStep = 0;  ///< 0: nobody presses Cancel
  bool cancelled = false;

 private:
  CallLog& m_log;
};

class PlayedStatus : public StatusField {
 public:
  explicit PlayedStatus(CallLog& log) : m_log(log) {}

  void ShowMessage(std::string_view text) override {
    message = text;
    m_log.push_back(fmt::format("message {}", text));
  }
  void ShowTotals(std::string_view text) override {
    totals = text;
    m_log.push_back(fmt::format("totals {}", text));
  }

  std::string message;
  std::string totals;

 private:
  CallLog& m_log;
};

class PlayedWindow : public PlannerWindow {
 public:
  explicit PlayedWindow(CallLog& log) : m_log(log) {}

  int32_t ShowBox(std::string_view text, uint32_t style) override {
    m_log.push_back(fmt::format("box {} {}", style, text));
    if (meanwhile) meanwhile();
    if (answers.empty()) return kAnswerCancel;
    const int32_t answer = answers.front();
    answers.pop_front();
    return answer;
  }
  int32_t ShowRepeatedBox(std::string_view text, uint32_t style, bool& rest) override {
    rest = answersForTheRest;
    return ShowBox(text, style);
  }
  void DispatchMessages() override {
    if (dispatch) dispatch();
  }
  void ShowNormalTitle() override { m_log.push_back("normal title"); }
  void ShowUpdateNotice(std::string_view text, std::string_view url) override {
    m_log.push_back(fmt::format("notice {} [{}]", text, url));
  }
  void DisableMap(std::string_view reason) override {
    m_log.push_back(fmt::format("map disabled: {}", reason));
  }
  void ReloadPage() override { m_log.push_back("reload"); }
  void StartTimer(int32_t timer, int32_t milliseconds) override {
    m_log.push_back(fmt::format("timer {} {}", timer, milliseconds));
  }
  void StopTimer(int32_t timer) override { m_log.push_back(fmt::format("timer {} stops", timer)); }
  bool MayDownloadTo(const WideString&) override { return mayDownload; }

  bool answersForTheRest = false;
  std::deque<int32_t> answers;
  std::function<void()> meanwhile;
  std::function<void()> dispatch;
  bool mayDownload = false;

 private:
  CallLog& m_log;
};

/// A leg of so many metres and seconds, with two points as its line.
inline CRouteData MakeRoute(uint32_t distance, uint32_t duration) {
  CRouteData route;
  route.measure.distance = distance;
  route.measure.duration = duration;
  route.measure.flag = 1;
  route.travelMode = 1;
  route.shape.points.points.push_back(std::make_unique<CGpsNamedPoint>(MakePoint(48.1, 7.2)));
  route.shape.points.points.push_back(std::make_unique<CGpsNamedPoint>(MakePoint(48.2, 7.3)));
  return route;
}

/// Directions that answer what they were told to, or a kilometre in a minute.
class PlayedDirections : public RoadDirections {
 public:
  explicit PlayedDirections(CallLog& log) : m_log(log) {}

  DirectionsAnswer Ask(const std::vector<CGpsPoint>& points,
                       const std::function<bool()>& goesOn) override {
    std::string line = "ask";
    for (const CGpsPoint& point : points)
      line += " " + (point.name.empty() ? fmt::format("{},{}", point.latitude, point.longitude)
                                        : point.name);
    m_log.push_back(line);
    if (!goesOn()) return {kTransportStatus + 12017, {}, 10};
    DirectionsAnswer answer{0, {}, 10};
    if (!statuses.empty()) {
      answer.status = statuses.front();
      statuses.pop_front();
    }
    for (size_t i = 1; answer.status == 0 && i < points.size() + moreLegs; ++i)
      answer.legs.push_back(MakeRoute(i < points.size() ? 1000 : 5000, 60));
    return answer;
  }
  void AskLater(const std::vector<CGpsPoint>& points,
                std::function<void(const DirectionsAnswer&)> answered) override {
    answered(Ask(points, [] { return true; }));
  }
  int32_t Provider() const override { return 10; }

  std::deque<uint32_t> statuses;
  size_t moreLegs = 0;  ///< than there are pairs of points, of five kilometres each

 private:
  CallLog& m_log;
};

/// Points named A, B, C, ... a tenth of a degree apart.
inline std::vector<CGpsPoint> NamedPoints(size_t count) {
  std::vector<CGpsPoint> points;
  for (size_t i = 0; i < count; ++i) {
    const double offset = 0.1 * static_cast<double>(i);
    points.push_back(
        MakePoint(48.0 + offset, 7.0 + offset, std::string(1, static_cast<char>('A' + i % 26))));
  }
  return points;
}

inline std::string NamesOf(const CGpsPointArray& list) {
  std::string names;
  for (const CGpsPoint& point : list.points) names += point.name;
  return names;
}

/// Which points have a leg: a letter of the name, or a dot.
inline std::string LegsOf(const CGpsPointArray& list) {
  std::string legs;
  for (const CGpsPoint& point : list.points) legs += point.GetRouteLeg() ? point.name : ".";
  return legs;
}
