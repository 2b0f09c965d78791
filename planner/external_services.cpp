// What the page asks of the network.

#include <chrono>

#include "base/text.h"
#include "planner/dispatch_call.h"
#include "planner/dispatch_point.h"
#include "planner/dispatch_route.h"
#include "planner/external.h"
#include "planner/external_names.h"
#include "planner/page_texts.h"
#include "platform/folder.h"
#include "platform/known_folders.h"

namespace {

ScriptValue PointOrNull(const std::optional<CGpsNamedPoint>& point) {
  if (!point) return {};
  return std::make_shared<CDispatchPoint>(*point, PinKind::kSearchResults);
}

// The options of a request; absent properties keep their defaults.
struct RequestOptions {
  std::string referrer;
  std::string host;
  ScriptFunctionPtr callback;
  int32_t queue = 0;
};

RequestOptions ReadRequestOptions(ScriptObject& object) {
  RequestOptions options;
  if (const ScriptValue value = PropertyOf(object, "referrer"); !value.IsNull())
    options.referrer = value.AsText();
  if (const ScriptValue value = PropertyOf(object, "host"); !value.IsNull())
    options.host = value.AsText();
  if (const ScriptValue value = PropertyOf(object, "callback"); !value.IsNull())
    options.callback = value.AsFunction();
  if (const ScriptValue value = PropertyOf(object, "queue"); !value.IsNull())
    options.queue = value.AsInteger();
  return options;
}

// Several legs as one: their sums, and their lines joined.
CRouteData JoinLegs(const std::vector<CRouteData>& legs) {
  CRouteData joined = legs.front();
  for (size_t i = 1; i < legs.size(); ++i) {
    CRouteData leg = legs[i];
    joined.measure.distance += leg.measure.distance;
    joined.measure.duration += leg.measure.duration;
    auto& line = joined.shape.points.points;
    line.splice(line.end(), leg.shape.points.points);
  }
  return joined;
}

ScriptValue RouteOrNull(const DirectionsAnswer& answer) {
  if (answer.status != 0 || answer.legs.empty()) return {};
  return std::make_shared<CDispatchRoute>(JoinLegs(answer.legs), answer.provider);
}

constexpr uint32_t kTooFewPoints = 8;

// Whether to wait on: for so many milliseconds from now.
std::function<bool()> GoesOnFor(int32_t milliseconds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  return [end] { return std::chrono::steady_clock::now() < end; };
}

}  // namespace

ScriptValue PlannerExternal::DispatchToService(int32_t id, const ExternalArguments& arguments) {
  switch (id) {
    case kExternalHttpRequest:
      return HttpRequest(arguments);
    case kExternalHttpDownload:
      return HttpDownload(arguments);
    case kExternalGetLocation:
      return GetLocation(arguments);
    case kExternalGetRoadLocation:
      return GetRoadLocation(arguments);
    case kExternalGetStreetViewLocation:
      return PointOrNull(m_parts.services.FindPanorama(arguments.Position(0)));
    case kExternalReverseGeocoding:
      return PointOrNull(m_parts.services.FindAddress(arguments.Position(0)));
    case kExternalGetRoutePreview:
      return GetRoutePreview(arguments);
    case kExternalGetElevation:
      return PointOrNull(m_parts.services.FindElevation(arguments.Position(0)));
    case kExternalGetTexts:
      return PageTexts();
    default:
      throw ScriptError(kScriptNoSuchMember);
  }
}

ScriptValue PlannerExternal::HttpRequest(const ExternalArguments& arguments) const {
  const std::string& url = arguments.Text(0);
  RequestOptions options;
  const ScriptValue& last = arguments.At(arguments.Count() - 1);
  if (arguments.Count() >= 2 && last.Type() == ScriptType::kObject)
    options = ReadRequestOptions(*last.AsObject());
  if (!options.callback) return MendUtf8(m_parts.services.Get(url, options.referrer, options.host));
  m_parts.services.Enqueue(options.queue, url, options.referrer, options.host, options.callback);
  return {};
}

ScriptValue PlannerExternal::HttpDownload(const ExternalArguments& arguments) const {
  const std::string& url = arguments.Text(0);
  const std::string referrer = arguments.TextOr(1, {});
  const WideString target = Utf8ToWideLossy(arguments.TextOr(2, {}));
  if (!target.empty() && !IsInsideFolder(target, DownloadFolder()) &&
      !m_parts.window.MayDownloadTo(target))
    return "";
  return WideToUtf8Lossy(m_parts.services.Download(url, referrer, target));
}

ScriptValue PlannerExternal::GetLocation(const ExternalArguments& arguments) const {
  CGpsPoint point = arguments.Position(0);
  point.name = arguments.TextOr(1, {});
  if (const std::optional<CGpsNamedPoint> found = m_parts.services.FindAddress(point))
    point.name = found->name;
  return std::make_shared<CDispatchPoint>(point, PinKind::kSearchResults);
}

ScriptValue PlannerExternal::GetRoadLocation(const ExternalArguments& arguments) const {
  const CGpsPoint position = arguments.Position(0);
  RoadDirections* const directions = m_parts.services.Directions();
  if (!directions) return {};
  const DirectionsAnswer answer =
      directions->Ask({position, position}, GoesOnFor(m_parts.services.WaitMs()));
  if (answer.status != 0 || answer.legs.empty()) return {};
  const CRouteData& leg = answer.legs.front();
  const auto& line = leg.shape.points.points.empty() ? leg.path.points : leg.shape.points.points;
  if (line.empty()) return {};
  CGpsNamedPoint onRoad = *line.front();
  if (!leg.path.points.empty()) onRoad.name = leg.path.points.front()->name;
  return std::make_shared<CDispatchPoint>(onRoad, PinKind::kSearchResults);
}

ScriptValue PlannerExternal::GetRoutePreview(const ExternalArguments& arguments) const {
  const int32_t index = arguments.Integer(1);
  const CGpsPoint position = arguments.Position(2);
  const bool moved = arguments.Boolean(3);
  const ScriptFunctionPtr callback = arguments.FunctionOrNull(4);
  const CPointListView& view = View(arguments);
  if (index < 0) throw ScriptError(kScriptBadIndex);

  const std::vector<CGpsPoint> points = view.PreviewPoints(index, position, moved);
  RoadDirections* const directions = points.empty() ? nullptr : m_parts.services.Directions();
  if (!callback) {
    if (!directions) return {};
    return RouteOrNull(directions->Ask(points, GoesOnFor(m_parts.services.WaitMs())));
  }
  const auto answered = [callback](const DirectionsAnswer& answer) {
    CDispatchCall(callback).Push(answer.status).Push(RouteOrNull(answer)).Invoke();
  };
  if (directions)
    directions->AskLater(points, answered);
  else
    m_parts.posts.Post([answered] { answered({kTooFewPoints, {}, 0}); });
  return {};
}
