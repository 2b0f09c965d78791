#include "services/directions/ors_router.h"

#include <fmt/format.h>

#include "services/directions/polyline.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/service_table.h"

namespace {

constexpr ValueWord kProfiles[] = {
    {kTruckMode, "driving-hgv"}, {kPedestrian, "foot-walking"}, {kBicycle, "cycling-regular"}};

constexpr RoadWord kDrivingRoads[] = {{&AvoidanceOptions::motorways, "\"highways\""},
                                      {&AvoidanceOptions::tolls, "\"tollways\""},
                                      {&AvoidanceOptions::boatFerries, "\"ferries\""}};
constexpr RoadWord kOtherRoads[] = {{&AvoidanceOptions::boatFerries, "\"ferries\""}};

void AppendSize(std::string& json, std::string_view name, uint32_t tenths) {
  if (tenths == 0) return;
  if (!json.empty()) json += ',';
  json += fmt::format("\"{}\":{}", name, TenthsText(tenths));
}

// Metres and tons.
std::string Restrictions(const TruckOptions& truck) {
  std::string json;
  AppendSize(json, "height", truck.height);
  AppendSize(json, "width", truck.width);
  AppendSize(json, "length", truck.length);
  AppendSize(json, "weight", truck.limitedWeight);
  AppendSize(json, "axleload", truck.weightPerAxle);
  if (truck.hazardCategory >= kFirstHazard)
    json += json.empty() ? "\"hazmat\":true" : ",\"hazmat\":true";
  return json;
}

// What may not be used and what must fit, as the members of the request's "options".
std::string OptionsText(uint32_t travelMode, const CRouteOptions& options) {
  const bool isDriving = travelMode != kPedestrian && travelMode != kBicycle;
  const auto avoided =
      isDriving ? AvoidedWords(options, kDrivingRoads) : AvoidedWords(options, kOtherRoads);
  std::string json;
  if (!avoided.empty()) json = fmt::format("\"avoid_features\":[{}]", fmt::join(avoided, ","));
  const TruckOptions* const truck = TruckOf(options);
  const std::string restrictions =
      truck && travelMode == kTruckMode ? Restrictions(*truck) : std::string();
  if (!restrictions.empty()) {
    if (!json.empty()) json += ',';
    json += "\"vehicle_type\":\"hgv\",\"profile_params\":{\"restrictions\":{" + restrictions + "}}";
  }
  return json;
}

// Errors of the routing have a number, those of the gate in front of it are a text alone.
uint32_t StatusOfError(const CJsonValue& error) {
  if (error.type == kJsonString) {
    const bool isLimit = error.text.find("imit") != std::string::npos ||
                         error.text.find("uota") != std::string::npos;
    return isLimit ? kRouteOverQueryLimit : kRouteDenied;
  }
  constexpr uint32_t kLimitExceeded = 2004;
  constexpr uint32_t kRouteNotThere = 2009;
  constexpr uint32_t kPointNotThere = 2010;
  constexpr uint32_t kFirstOfRequest = 2000;
  constexpr uint32_t kLastOfRequest = 2013;
  const uint32_t code = RoundedMember(error, "code");
  switch (code) {
    case kLimitExceeded:
      return kRouteBusy;
    case kRouteNotThere:
      return kRouteNothingFound;
    case kPointNotThere:
      return kRouteNotFound;
    default:
      return code >= kFirstOfRequest && code <= kLastOfRequest ? kRouteInvalidRequest
                                                               : kRouteFailed;
  }
}

struct Range {
  size_t from;
  size_t to;
};

// Indices into the route's shape, the last one included.
Range ReadRange(const CJsonValue& value) {
  const CJsonArray& numbers = value.AsArray();
  return {RoundedUint32(numbers.At(0).AsNumber()), RoundedUint32(numbers.At(1).AsNumber())};
}

void ReadSegment(const CJsonValue& segment, const ShapeIndex& shape, CRouteData& leg,
                 PointAllowance& allowance) {
  leg.measure = MakeMeasure(RoundedMemberOrZero(segment, "distance"),
                            RoundedMemberOrZero(segment, "duration"));
  bool isFirst = true;
  Range whole{0, 0};
  for (const auto& value : segment.Get("steps").AsArray()) {
    const Range range = ReadRange(value->Get("way_points"));
    if (isFirst) whole.from = range.from;
    whole.to = range.to;
    isFirst = false;
    CGpsRouteStep& step = leg.steps.emplace_back();
    shape.TakePosition(range.from, step);
    step.measure = MakeMeasure(RoundedMemberOrZero(*value, "distance"),
                               RoundedMemberOrZero(*value, "duration"));
    step.instruction = ReplyText(value->Get("instruction"));
  }
  shape.Append(whole.from, whole.to, leg.shape.points, allowance);
  TakePathFromShape(leg);
}

}  // namespace

int32_t OrsRouter::GetId() const { return provider::kOrs; }

uint32_t OrsRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                 const CRouteOptions& options, CHttpRequestSpec& spec) {
  const ServiceAccess access = AccessToProvider(GetId());
  spec.url = access.url + "/v2/directions/";
  spec.url += WordFor(kProfiles, travelMode, "driving-car");
  spec.url += "/json";
  spec.headers = {{"Authorization", access.key}, {"Content-Type", "application/json"}};
  std::string& body = spec.postData;
  body = "{\"coordinates\":[[";
  AppendPositions(body, chunk, AxisOrder::kLongitudeFirst, "],[");
  body += "]],\"preference\":";
  body += options.mode == kShortest ? "\"shortest\"" : "\"fastest\"";
  body += ",\"units\":\"m\"";
  if (!access.language.empty()) {
    body += ",\"language\":";
    AppendJsonText(body, access.language);
  }
  const std::string more = OptionsText(travelMode, options);
  if (!more.empty()) body += ",\"options\":{" + more + "}";
  body += "}";
  return kRouteSuccess;
}

uint32_t OrsRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                  const CRouteOptions& options, Legs& legs) {
  const auto readStatus = [](const CJsonValue& reply) -> std::optional<uint32_t> {
    const CJsonValue* const error = reply.AsObject().Find("error");
    if (!error) return std::nullopt;
    return StatusOfError(*error);
  };
  const auto readLegs = [&](const CJsonValue& reply, Legs& read) {
    const CJsonValue& route = reply.Get("routes").AsArray().At(0);
    CGpsPointList line;
    PointAllowance allowance;
    DecodePolyline(route.Get("geometry").AsString(), PolylinePrecision::kFive, line, allowance);
    const ShapeIndex shape(line);
    for (const auto& segment : route.Get("segments").AsArray())
      ReadSegment(*segment, shape, read.emplace_back(MakeLeg(travelMode, options)), allowance);
  };
  return ReadReply(text, legs, readStatus, readLegs);
}
