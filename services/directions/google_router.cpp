#include "services/directions/google_router.h"

#include <chrono>

#include <fmt/format.h>

#include "services/directions/polyline.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/request_pace.h"
#include "services/service_table.h"

namespace {

constexpr ValueWord kModes[] = {{kPedestrian, "walking"}, {kBicycle, "bicycling"}};

constexpr RoadWord kRoads[] = {{&AvoidanceOptions::motorways, "highways"},
                               {&AvoidanceOptions::tolls, "tolls"},
                               {&AvoidanceOptions::boatFerries, "ferries"}};

// When the last request may have left, that of any object. The program's start counts as one.
RequestPace pace(std::chrono::milliseconds(100), std::chrono::steady_clock::now());

CRouteMeasure ReadMeasure(const CJsonValue& value) {
  const uint32_t duration = RoundedMember(value.Get("duration"), "value");
  return MakeMeasure(RoundedMember(value.Get("distance"), "value"), duration);
}

CGpsRouteStep ReadStep(const CJsonValue& value) {
  CGpsRouteStep step;
  step.measure = ReadMeasure(value);
  const CJsonValue& start = value.Get("start_location");
  step.latitude = start.Get("lat").AsNumber();
  step.longitude = start.Get("lng").AsNumber();
  step.instruction = ReplyText(value.Get("html_instructions"));
  return step;
}

void ReadLeg(const CJsonValue& value, CRouteData& leg, PointAllowance& allowance) {
  AppendPoint(leg.path, value.Get("start_location"), "lat", "lng").name =
      ReplyText(value.Get("start_address"));
  AppendPoint(leg.path, value.Get("end_location"), "lat", "lng").name =
      ReplyText(value.Get("end_address"));
  leg.measure = ReadMeasure(value);
  for (const auto& step : value.Get("steps").AsArray()) {
    leg.steps.push_back(ReadStep(*step));
    const CJsonValue* const points = step->object.FindPath("polyline/points");
    if (!points) continue;
    DecodePolyline(points->AsString(), PolylinePrecision::kFive, leg.shape.points, allowance);
  }
}

}  // namespace

int32_t CGoogleRouter::GetId() const { return provider::kGoogle; }

uint32_t CGoogleRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                     const CRouteOptions& options, CHttpRequestSpec& spec) {
  const ServiceAccess access = AccessToProvider(GetId());
  std::string& url = spec.url;
  url = access.url + "/maps/api/directions/json?sensor=false&units=metric";
  AppendParameterIfAny(url, "&language=", access.language);
  AppendParameter(url, "&key=", access.key);
  url += "&mode=";
  url += WordFor(kModes, travelMode, "driving");
  const auto avoided = AvoidedWords(options, kRoads);
  if (!avoided.empty()) url += fmt::format("&avoid={}", fmt::join(avoided, "|"));
  url += "&origin=";
  AppendPosition(url, *chunk.points.front(), AxisOrder::kLatitudeFirst);
  url += "&destination=";
  AppendPosition(url, *chunk.points.back(), AxisOrder::kLatitudeFirst);
  spec.referrer = access.referrer;
  pace.Await();
  return kRouteSuccess;
}

uint32_t CGoogleRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                      const CRouteOptions& options, Legs& legs) {
  const auto readStatus = [](const CJsonValue& reply) {
    return GoogleStatus(reply.Get("status").AsString());
  };
  const auto readLegs = [&](const CJsonValue& reply, Legs& read) {
    PointAllowance allowance;
    const CJsonValue& route = reply.Get("routes").AsArray().At(0);
    // A route without legs is an answer: there is no way.
    const CJsonValue* const values = route.AsObject().Find("legs");
    if (!values) return;
    for (const auto& leg : values->AsArray())
      ReadLeg(*leg, read.emplace_back(MakeLeg(travelMode, options)), allowance);
  };
  return ReadReply(text, legs, readStatus, readLegs);
}
