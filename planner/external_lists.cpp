// What the page does with the lists, with boxes and with settings.

#include <algorithm>
#include <limits>

#include <fmt/format.h>

#include "base/text.h"
#include "planner/dispatch_point.h"
#include "planner/external.h"
#include "planner/json_text.h"
#include "planner/route_table.h"
#include "platform/clock.h"
#include "platform/debug_log.h"

namespace {

// A box with more text than this would not fit any screen.
constexpr size_t kLongestBoxText = 4000;

// With more points of ways in one answer, the window would stand still for too long.
constexpr size_t kMostWayPoints = 20'000;

void WriteWay(JsonText& json, const CRouteData& way) {
  json.BeginObject();
  json.Key("distance").Number(way.measure.distance);
  json.Key("duration").Number(way.measure.duration);
  json.Key("driving").Number(way.travelMode);
  json.Key("color").Number(way.color);
  json.Key("shape").BeginArray();
  for (const auto& point : way.shape.points.points)
    json.Number(point->latitude).Number(point->longitude);
  json.End().End();
}

// The part of a list that a page asks for, by its first index and a count.
std::pair<size_t, size_t> AskedRange(const ExternalArguments& arguments,
                                     const CGpsPointArray& list) {
  const int32_t first = arguments.Integer(1);
  const int32_t count = arguments.Integer(2);
  if (first < 0 || count < 0 || static_cast<size_t>(first) > list.Count())
    throw ScriptError(kScriptBadIndex);
  const auto start = static_cast<size_t>(first);
  return {start, std::min(list.Count(), start + static_cast<size_t>(count))};
}

}  // namespace

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): one of the table of functions.
ScriptValue PlannerExternal::Trace(const ExternalArguments& arguments) const {
  const CalendarTime now = LocalNow();
  DebugLog(fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02} page: {}", now.year, now.month, now.day,
                       now.hour, now.minute, now.second, arguments.Text(0)));
  return {};
}

ScriptValue PlannerExternal::MessageBox(const ExternalArguments& arguments) const {
  const auto style = static_cast<uint32_t>(arguments.IntegerOr(1, kBoxOk));
  return m_parts.window.ShowPageBox(MendUtf8(arguments.Text(0).substr(0, kLongestBoxText)), style);
}

ScriptValue PlannerExternal::GetPoint(const ExternalArguments& arguments) const {
  const Place place = PlaceOf(arguments);
  return std::make_shared<CDispatchPoint>(m_parts.lists, place.view.pinListId,
                                          static_cast<int32_t>(place.index));
}

ScriptValue PlannerExternal::SelectPoint(const ExternalArguments& arguments) const {
  const Place place = PlaceOf(arguments);
  place.view.SelectRow(static_cast<int64_t>(place.index));
  return {};
}

ScriptValue PlannerExternal::DeletePoint(const ExternalArguments& arguments) const {
  const Place place = PlaceOf(arguments);
  if (IsEditable(place.view.kind)) place.view.RemoveRows(static_cast<int64_t>(place.index));
  return {};
}

ScriptValue PlannerExternal::RenamePoint(const ExternalArguments& arguments) const {
  const std::string& name = arguments.Text(2);
  const Place place = PlaceOf(arguments);
  if (IsEditable(place.view.kind)) place.view.RenamePoint(place.index, name);
  return {};
}

ScriptValue PlannerExternal::MovePoint(const ExternalArguments& arguments) const {
  const CGpsPoint position = arguments.Position(2);
  const Place place = PlaceOf(arguments);
  if (IsEditable(place.view.kind)) place.view.SetPosition(place.index, position);
  return {};
}

ScriptValue PlannerExternal::InsertPoint(const ExternalArguments& arguments) const {
  const int32_t index = arguments.Integer(1);
  CGpsPoint point = arguments.Position(2);
  point.name = arguments.Text(3);
  point.comment = arguments.Text(4);
  CPointListView& view = View(arguments);
  if (index < 0 || static_cast<size_t>(index) > view.list->Count())
    throw ScriptError(kScriptBadIndex);
  if (IsEditable(view.kind)) view.InsertPoint(static_cast<size_t>(index), point);
  return {};
}

ScriptValue PlannerExternal::AddPoint(const ExternalArguments& arguments) const {
  const CGpsPoint point = arguments.Point(1);
  CPointListView& view = View(arguments);
  view.AddPoint(point);
  if (IsEditable(view.kind)) view.AfterEdit();
  return {};
}

ScriptValue PlannerExternal::AddFavorite(const ExternalArguments& arguments) const {
  const CGpsPoint point = arguments.Point(0);
  CPointListView* const favorites = m_parts.lists->Find(kListFavorites);
  if (!favorites || !favorites->list) throw ScriptError(kScriptBadIndex);
  const auto& points = favorites->list->points;
  // Behind its equals, as a stable sort by name would put it.
  const auto place = std::upper_bound(
      points.begin(), points.end(), point,
      [](const CGpsPoint& left, const CGpsPoint& right) { return left.name < right.name; });
  favorites->InsertPoint(static_cast<size_t>(place - points.begin()), point);
  const uint32_t status = m_parts.storeFavorites(*favorites->list);
  if (status != 0) throw ScriptError(TransportHresult(status));
  return {};
}

ScriptValue PlannerExternal::Calculate(const ExternalArguments& arguments) const {
  const int32_t id = View(arguments).pinListId;
  // The list may have gone by then.
  m_parts.posts.Post([lists = std::weak_ptr(m_parts.lists), id] {
    const std::shared_ptr<PlannerLists> there = lists.lock();
    CPointListView* const view = there ? there->Find(id) : nullptr;
    if (view) view->CalculateFrom(-1);
  });
  return {};
}

ScriptValue PlannerExternal::SendToGps(const ExternalArguments& arguments) const {
  const int32_t target = arguments.Integer(0);
  const int32_t index = arguments.Integer(2);
  const CGpsPoint* const point = m_parts.lists->FindPoint(arguments.Integer(1), index);
  if (!point) throw ScriptError(kScriptBadIndex);
  m_parts.sendPoint(target, *point);
  return {};
}

ScriptValue PlannerExternal::GetStrCoords(const ExternalArguments& arguments) const {
  const CGpsPoint position = arguments.Position(0);
  const int32_t format = arguments.IntegerOr(1, m_parts.settings.coordinates);
  if (format < 0 || format > static_cast<int32_t>(CoordinateFormat::kSeconds))
    throw ScriptError(kScriptBadIndex);
  return PositionText(position, static_cast<CoordinateFormat>(format));
}

ScriptValue PlannerExternal::SetCurrentMap(const ExternalArguments& arguments) const {
  const std::string& name = arguments.Text(0);
  const int32_t kind = arguments.Integer(1);
  m_parts.settings.defaultMap = MapChoice{static_cast<uint32_t>(kind), name};
  return {};
}

ScriptValue PlannerExternal::GetCount(const ExternalArguments& arguments) const {
  return static_cast<int32_t>(View(arguments).list->Count());
}

ScriptValue PlannerExternal::GetPins(const ExternalArguments& arguments) const {
  const CGpsPointArray& list = *View(arguments).list;
  const auto [first, end] = AskedRange(arguments, list);
  JsonText json;
  json.BeginArray();
  for (size_t i = first; i < end; ++i) {
    const CGpsPoint& point = list.points[i];
    json.BeginObject();
    json.Key("lat").Number(point.latitude);
    json.Key("lng").Number(point.longitude);
    json.Key("alt").Number(point.altitude);
    json.Key("address").Text(point.name);
    json.Key("snippet").Text(point.comment);
    // So that a page need not ask every point for a way that it has not.
    if (point.GetRouteLeg()) json.Key("route").Boolean(true);
    json.End();
  }
  json.End();
  return json.Result();
}

ScriptValue PlannerExternal::GetWays(const ExternalArguments& arguments) const {
  const CGpsPointArray& list = *View(arguments).list;
  const auto [first, end] = AskedRange(arguments, list);
  size_t points = 0;
  JsonText json;
  json.BeginArray();
  for (size_t i = first; i < end && points < kMostWayPoints; ++i) {
    const CRouteLeg* const leg = list.points[i].GetRouteLeg();
    if (!leg) {
      json.Null();
      continue;
    }
    WriteWay(json, leg->Route());
    points += leg->Route().shape.points.points.size();
  }
  json.End();
  return json.Result();
}
