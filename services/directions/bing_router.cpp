#include "services/directions/bing_router.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <fmt/format.h>

#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/service_table.h"

namespace {

constexpr RoadWord kRoads[] = {{&AvoidanceOptions::motorways, "&avoid=highways"},
                               {&AvoidanceOptions::tolls, "&avoid=tolls"}};

struct Position {
  double latitude;
  double longitude;
};

// Latitude and longitude stand in an array of two.
Position ReadPosition(const CJsonValue& value) {
  const CJsonArray& numbers = value.AsArray();
  return {numbers.At(0).AsNumber(), numbers.At(1).AsNumber()};
}

CGpsNamedPoint& AppendPoint(CGpsPointList& points, const Position& position) {
  return AppendPoint(points, position.latitude, position.longitude);
}

std::vector<Position> ReadLine(const CJsonValue& resource) {
  std::vector<Position> line;
  const CJsonArray& coordinates =
      resource.Get("routePath").Get("line").Get("coordinates").AsArray();
  line.reserve(coordinates.Count());
  for (const auto& pair : coordinates) line.push_back(ReadPosition(*pair));
  return line;
}

// Distances come in kilometres.
CRouteMeasure ReadMeasure(const CJsonValue& value) {
  constexpr double kMetres = 1000.0;
  if (!value.AsObject().Find("travelDistance")) return {};
  return MakeMeasure(RoundedUint32(value.Get("travelDistance").AsNumber() * kMetres),
                     RoundedMember(value, "travelDuration"));
}

// Reads a step and gives the index of the route's point up to which it leads.
size_t ReadStep(const CJsonValue& value, size_t last, CGpsRouteStep& step) {
  const Position place = ReadPosition(value.Get("maneuverPoint").Get("coordinates"));
  step.latitude = place.latitude;
  step.longitude = place.longitude;
  step.instruction = ReplyText(value.Get("instruction").Get("text"));
  step.measure = ReadMeasure(value);
  size_t end = 0;
  for (const auto& detail : value.Get("details").AsArray()) {
    const size_t index = RoundedUint32(detail->Get("endPathIndices").AsArray().At(0).AsNumber());
    end = std::max(end, std::min(index, last));
  }
  return end;
}

// Reads a leg, whose shape is the part of the route's line from point `from` on. Gives the index of
// the point where it ends.
size_t ReadLeg(const CJsonValue& value, const std::vector<Position>& line, size_t from,
               CRouteData& leg) {
  AppendPoint(leg.path, ReadPosition(value.Get("actualStart").Get("coordinates")));
  AppendPoint(leg.path, ReadPosition(value.Get("actualEnd").Get("coordinates")));
  leg.measure = ReadMeasure(value);
  const size_t last = line.empty() ? 0 : line.size() - 1;
  size_t to = from;
  for (const auto& item : value.Get("itineraryItems").AsArray())
    to = std::max(to, ReadStep(*item, last, leg.steps.emplace_back()));
  for (size_t i = from; i <= to && i < line.size(); ++i) AppendPoint(leg.shape.points, line[i]);
  return to;
}

}  // namespace

int32_t CBingRouter::GetId() const { return provider::kBing; }

uint32_t CBingRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                   const CRouteOptions& options, CHttpRequestSpec& spec) {
  const ServiceAccess access = AccessToProvider(GetId());
  const bool isWalking = travelMode == kPedestrian || travelMode == kBicycle;
  std::string& url = spec.url;
  url = access.url + "/REST/V1/Routes/" + (isWalking ? "Walking" : "Driving") +
        "?o=json&rpo=Points&du=km&optmz=" + (options.mode == kShortest ? "distance" : "time");
  for (const std::string_view word : AvoidedWords(options, kRoads)) url += word;
  size_t index = 0;
  for (const auto& point : chunk.points) {
    url += fmt::format("&wp.{}=", index++);
    AppendPosition(url, *point, AxisOrder::kLatitudeFirst);
  }
  AppendParameter(url, "&key=", access.key);
  AppendParameterIfAny(url, "&c=", access.language);
  spec.referrer = access.referrer;
  return kRouteSuccess;
}

uint32_t CBingRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                    const CRouteOptions& options, Legs& legs) {
  const auto readStatus = [](const CJsonValue& reply) -> uint32_t {
    constexpr double kOk = 200.0;
    return reply.Get("statusCode").AsNumber() == kOk ? kRouteSuccess : kRouteFailed;
  };
  const auto readLegs = [&](const CJsonValue& reply, Legs& read) {
    const CJsonValue& resource =
        reply.Get("resourceSets").AsArray().At(0).Get("resources").AsArray().At(0);
    const std::vector<Position> line = ReadLine(resource);
    size_t from = 0;
    for (const auto& leg : resource.Get("routeLegs").AsArray())
      from = ReadLeg(*leg, line, from, read.emplace_back(MakeLeg(travelMode, options)));
  };
  return ReadReply(text, legs, readStatus, readLegs);
}
