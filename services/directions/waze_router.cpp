#include "services/directions/waze_router.h"

#include <chrono>

#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/request_pace.h"

namespace {

void AppendEnd(std::string& url, std::string_view name, const CGpsCoordinate& position) {
  url += name;
  AppendPosition(url, position, AxisOrder::kLongitudeFirst, "+y:");
}

CGpsRouteStep ReadStep(const CJsonValue& value) {
  CGpsRouteStep step;
  const CJsonValue& place = value.Get("path");
  step.latitude = place.Get("y").AsNumber();
  step.longitude = place.Get("x").AsNumber();
  const uint32_t duration = RoundedMember(value, "crossTime");
  step.measure = MakeMeasure(RoundedMember(value, "length"), duration);
  return step;
}

}  // namespace

uint32_t CWazeRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                   const CRouteOptions& /*options*/, CHttpRequestSpec& spec) {
  static RequestPace pace(std::chrono::milliseconds(500));
  if (travelMode != kAnyMode) return kRouteInvalidRequest;
  if (chunk.points.size() > GetMaxPoints()) return kRoutePointCount;
  std::string& url = spec.url;
  url = AccessToProvider(GetId()).url +
        "/routingRequest?returnJSON=true&returnGeometries=true&returnInstructions=true"
        "&timeout=60000&nPaths=1";
  AppendEnd(url, "&from=x:", *chunk.points.front());
  AppendEnd(url, "&to=x:", *chunk.points.back());
  pace.Await();
  return kRouteSuccess;
}

uint32_t CWazeRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                    const CRouteOptions& options, Legs& legs) {
  const auto readStatus = [](const CJsonValue& reply) -> std::optional<uint32_t> {
    const CJsonValue* const error = reply.AsObject().Find("error");
    if (error && error->type == kJsonObject) return kRouteInvalidRequest;
    return std::nullopt;
  };
  const auto readLegs = [&](const CJsonValue& reply, Legs& read) {
    CRouteData& leg = read.emplace_back(MakeLeg(travelMode, options));
    for (const auto& position : reply.Get("coords").AsArray())
      AppendPoint(leg.shape.points, *position, "y", "x");
    uint32_t distance = 0;
    uint32_t duration = 0;
    for (const auto& result : reply.Get("response").Get("results").AsArray()) {
      leg.steps.push_back(ReadStep(*result));
      distance += leg.steps.back().measure.distance;
      duration += leg.steps.back().measure.duration;
    }
    leg.measure = MakeMeasure(distance, duration);
  };
  return ReadReply(text, legs, readStatus, readLegs);
}
