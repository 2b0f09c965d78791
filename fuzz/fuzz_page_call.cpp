// Any sequence of calls that a page makes of the program. Each line of the input is one: a name of
// `window.external`, a blank and the arguments as a JSON array. Some words stand for other things
// that a page or its user does. Where the program waits for its window, its page or a service, the
// next line comes in the middle of the present one.
//
// A call gives a value or a ScriptError, whatever it was given. Lists and rows stay in step, and
// all points fit for the model.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"
#include "fuzz/no_home.h"
#include "fuzz/played_planner.h"
#include "markup/json.h"
#include "model/point_list.h"
#include "planner/planner_bridge.h"

namespace {

constexpr size_t kMostLines = 200;
constexpr int kDeepest = 4;

// A value as it comes from a page: texts are UTF-8, numbers integers where they can be. Objects
// {"f": 1} and {"n": 1} stand for a function and for a number that JSON does not have.
ScriptValue ValueOf(const CJsonValue& json, int depth = 0) {
  constexpr int kDeepestValue = 16;
  switch (json.type) {
    case kJsonString:
      return MendUtf8(json.text);
    case kJsonBool:
      return json.flag;
    case kJsonNumber: {
      const bool isInteger = json.number >= std::numeric_limits<int32_t>::min() &&
                             json.number <= std::numeric_limits<int32_t>::max() &&
                             std::floor(json.number) == json.number;
      return isInteger ? ScriptValue(static_cast<int32_t>(json.number)) : ScriptValue(json.number);
    }
    case kJsonArray: {
      ScriptArray values;
      if (depth > kDeepestValue) return values;
      for (const auto& value : json.array) values.push_back(ValueOf(*value, depth + 1));
      return values;
    }
    case kJsonObject: {
      if (json.object.Find("f")) return std::make_shared<PlayedFunction>();
      if (json.object.Find("n")) return std::numeric_limits<double>::quiet_NaN();
      const auto record = std::make_shared<ScriptRecord>();
      if (depth > kDeepestValue) return record;
      for (const auto& member : json.object)
        record->Put(MendUtf8(member->key), ValueOf(*member, depth + 1));
      return record;
    }
    default:
      return {};
  }
}

ScriptArray ArgumentsOf(std::string_view text) {
  CJsonDocument document;
  document.Parse(text);
  const ScriptValue value = ValueOf(document);
  return value.Type() == ScriptType::kArray ? value.AsArray() : ScriptArray();
}

// Reads all that can be read of a result.
void Look(const ScriptValue& value, int depth = 0) {
  if (depth > kDeepest) return;
  if (value.Type() == ScriptType::kText) Expect(IsValidUtf8(value.AsText()));
  if (value.Type() == ScriptType::kArray) {
    for (const ScriptValue& each : value.AsArray()) Look(each, depth + 1);
  }
  if (value.Type() != ScriptType::kObject) return;
  ScriptObject& object = *value.AsObject();
  for (const std::string_view name : object.PropertyNames())
    Look(PropertyOf(object, name), depth + 1);
}

class Session {
 public:
  explicit Session(std::string_view script) : m_script(script) {
    for (size_t i = 0; i < std::size(m_views); ++i) {
      m_views[i]->list = &m_lists[i];
      m_views[i]->Rebuild();
    }
    m_itinerary.SetCalculation(&m_services.directions, &m_window);
    m_bridge.SetPlannerPage("corvane://planner/page.html");
    m_bridge.SetEngine(&m_page);
    m_bridge.OnReady("{}");
  }

  void Run() {
    while (RunLine()) {
      m_posts.Pump();
      Check();
    }
    for (const ScriptObjectPtr& object : m_objects) Look(object);
    m_bridge.Close();
  }

 private:
  bool RunLine() {
    if (m_script.empty() || m_lines == kMostLines) return false;
    ++m_lines;
    const size_t end = m_script.find('\n');
    const std::string_view line = m_script.substr(0, end);
    m_script.remove_prefix(end == std::string_view::npos ? m_script.size() : end + 1);
    const size_t blank = line.find(' ');
    const std::string_view name = line.substr(0, blank);
    const std::string_view rest =
        blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1);
    ++m_depth;
    if (!DoOtherThings(name, rest)) Call(name, ArgumentsOf(rest));
    --m_depth;
    return true;
  }

  void RunMeanwhile() {
    if (m_depth > 0 && m_depth < kDeepest) RunLine();
  }

  bool DoOtherThings(std::string_view name, std::string_view rest) {
    if (name == "undo") {
      m_itinerary.Undo();
    } else if (name == "redo") {
      m_itinerary.Redo();
    } else if (name == "calculate") {
      m_itinerary.CalculateAll(true);
    } else if (name == "clear") {
      m_itinerary.RemoveAll();
    } else if (name == "reverse") {
      m_itinerary.ReverseAll();
    } else if (name == "ready") {
      m_bridge.OnReady(std::string(rest));
    } else if (name == "go") {
      m_bridge.OnNavigate(rest);
    } else if (name == "fail") {
      m_bridge.OnNavigationError(static_cast<uint32_t>(rest.size()));
    } else if (name == "timer") {
      m_bridge.OnTimer(1);
    } else if (name == "reload") {
      m_bridge.SetEngine(&m_page);
    } else if (name == "maps") {
      m_page.maps = MendUtf8(rest);
    } else if (name == "providers") {
      m_page.providers = MendUtf8(rest);
    } else if (name == "set") {
      Set(ArgumentsOf(rest));
    } else {
      return false;
    }
    return true;
  }

  void Set(const ScriptArray& arguments) {
    try {
      ScriptObject& settings = *m_bridge.External()->Get("Settings")->AsObject();
      settings.Put(arguments.at(0).AsText(), arguments.at(1));
      m_bridge.SettingsChanged();
    } catch (const ScriptError&) {
    } catch (const std::out_of_range&) {
    }
  }

  void Call(std::string_view name, const ScriptArray& arguments) {
    try {
      const ScriptValue value = m_bridge.External()->Invoke(name, arguments);
      Look(value);
      if (value.Type() == ScriptType::kObject) m_objects.push_back(value.AsObject());
      if (name == "GetPins") ExpectJson(value.AsText());
    } catch (const ScriptError& failure) {
      Expect(failure.number >> 31 == 1);
    }
  }

  static void ExpectJson(const std::string& text) {
    CJsonDocument document;
    Expect(document.Parse(text) == 0 && document.type == kJsonArray);
  }

  void Check() {
    for (size_t i = 0; i < std::size(m_views); ++i) {
      Expect(m_rows[i].Count() == m_lists[i].Count());
      for (const CGpsPoint& point : m_lists[i].points) {
        Expect(IsValidUtf8(point.name) && IsValidUtf8(point.comment));
        Expect(std::abs(point.latitude) <= 90 && std::abs(point.longitude) <= 180);
        Expect(std::isfinite(point.altitude));
      }
    }
  }

  std::string_view m_script;
  size_t m_lines = 0;
  int m_depth = 0;
  const Meanwhile m_meanwhile = [this] { RunMeanwhile(); };
  CSettings m_settings;
  PostBox m_posts;
  PlayedPage m_page{m_meanwhile};
  PlayedRows m_rows[4];
  PlayedWindow m_window{m_meanwhile};
  PlayedServices m_services{m_meanwhile};
  CGpsRoute m_lists[4];
  CPointListView m_itinerary{kListItinerary, PinKind::kItinerary, m_rows[0], m_settings};
  CPointListView m_results{kListSearchResults, PinKind::kSearchResults, m_rows[1], m_settings};
  CPointListView m_favorites{kListFavorites, PinKind::kFavorites, m_rows[2], m_settings};
  CPointListView m_pois{kListPois, PinKind::kPois, m_rows[3], m_settings};
  CPointListView* m_views[4] = {&m_itinerary, &m_results, &m_favorites, &m_pois};
  std::vector<ScriptObjectPtr> m_objects;
  PlannerBridge m_bridge{{m_window,
                          m_settings,
                          m_services,
                          m_posts,
                          {&m_itinerary, &m_results, &m_favorites, &m_pois},
                          [this](const std::string&) { RunMeanwhile(); },
                          [this](int32_t, const CGpsPoint&) { RunMeanwhile(); }}};
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  LeaveHome();
  unsetenv("CORVANE_DEBUG");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Session(std::string_view(reinterpret_cast<const char*>(data), size)).Run();
  return 0;
}
