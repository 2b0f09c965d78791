#include "services/directions/valhalla_router.h"

#include <fmt/format.h>

#include "net/url.h"
#include "services/directions/polyline.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/service_table.h"

namespace {

constexpr ValueWord kCostings[] = {{kTruckMode, "truck"},
                                   {kPedestrian, "pedestrian"},
                                   {kBicycle, "bicycle"},
                                   {kMotorcycle, "motorcycle"},
                                   {kBus, "bus"}};

// 0 tells the server to keep away as far as it can.
constexpr RoadWord kRoads[] = {{&AvoidanceOptions::motorways, "\"use_highways\":0"},
                               {&AvoidanceOptions::tolls, "\"use_tolls\":0"},
                               {&AvoidanceOptions::boatFerries, "\"use_ferry\":0"},
                               {&AvoidanceOptions::dirtRoads, "\"use_tracks\":0"}};
constexpr RoadWord kOtherRoads[] = {{&AvoidanceOptions::boatFerries, "\"use_ferry\":0"}};

void AppendMember(std::string& json, std::string_view member) {
  if (!json.empty()) json += ',';
  json += member;
}

void AppendSize(std::string& json, std::string_view name, uint32_t tenths) {
  if (tenths != 0) AppendMember(json, fmt::format("\"{}\":{}", name, TenthsText(tenths)));
}

// Metres and tons.
void AppendTruck(std::string& json, const TruckOptions& truck) {
  AppendSize(json, "height", truck.height);
  AppendSize(json, "width", truck.width);
  AppendSize(json, "length", truck.length);
  AppendSize(json, "weight", truck.limitedWeight);
  AppendSize(json, "axle_load", truck.weightPerAxle);
  if (truck.hazardCategory >= kFirstHazard) AppendMember(json, "\"hazmat\":true");
}

std::string CostingOptions(uint32_t travelMode, const CRouteOptions& options) {
  const bool isDriving = travelMode != kPedestrian && travelMode != kBicycle;
  std::string json;
  const auto avoided =
      isDriving ? AvoidedWords(options, kRoads) : AvoidedWords(options, kOtherRoads);
  for (const std::string_view word : avoided) AppendMember(json, word);
  if (options.mode == kShortest) AppendMember(json, "\"shortest\":true");
  const TruckOptions* const truck = TruckOf(options);
  if (truck && travelMode == kTruckMode) AppendTruck(json, *truck);
  return json;
}

uint32_t StatusOfError(uint32_t code) {
  constexpr uint32_t kTooManyLocations = 150;
  constexpr uint32_t kTooFar = 154;
  constexpr uint32_t kLocationsUnreachable = 170;
  constexpr uint32_t kNoRoadNear = 171;
  constexpr uint32_t kNoPath = 442;
  constexpr uint32_t kFirstOfRequest = 100;
  constexpr uint32_t kLastOfRequest = 199;
  switch (code) {
    case kTooManyLocations:
    case kTooFar:
      return kRouteBusy;
    case kLocationsUnreachable:
    case kNoPath:
      return kRouteNothingFound;
    case kNoRoadNear:
      return kRouteNotFound;
    default:
      return code >= kFirstOfRequest && code <= kLastOfRequest ? kRouteInvalidRequest
                                                               : kRouteFailed;
  }
}

// Lengths come in kilometres.
CRouteMeasure ReadMeasure(const CJsonValue& value) {
  constexpr double kMetres = 1000.0;
  const uint32_t duration = RoundedMember(value, "time");
  return MakeMeasure(RoundedUint32(value.Get("length").AsNumber() * kMetres), duration);
}

void ReadLeg(const CJsonValue& value, CRouteData& leg, PointAllowance& allowance) {
  DecodePolyline(value.Get("shape").AsString(), PolylinePrecision::kSix, leg.shape.points,
                 allowance);
  TakePathFromShape(leg);
  leg.measure = ReadMeasure(value.Get("summary"));
  const ShapeIndex shape(leg.shape.points);
  for (const auto& manoeuvre : value.Get("maneuvers").AsArray()) {
    CGpsRouteStep& step = leg.steps.emplace_back();
    shape.TakePosition(RoundedMember(*manoeuvre, "begin_shape_index"), step);
    step.measure = ReadMeasure(*manoeuvre);
    step.instruction = ReplyText(manoeuvre->Get("instruction"));
  }
}

}  // namespace

int32_t ValhallaRouter::GetId() const { return provider::kValhalla; }

uint32_t ValhallaRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                      const CRouteOptions& options, CHttpRequestSpec& spec) {
  const ServiceAccess access = AccessToProvider(GetId());
  const std::string_view costing = WordFor(kCostings, travelMode, "auto");
  std::string json = "{\"locations\":[";
  for (const auto& point : chunk.points) {
    json += point == chunk.points.front() ? "{\"lat\":" : ",{\"lat\":";
    AppendPosition(json, *point, AxisOrder::kLatitudeFirst, ",\"lon\":");
    json += ",\"type\":\"break\"}";
  }
  json += fmt::format("],\"costing\":\"{}\"", costing);
  const std::string costingOptions = CostingOptions(travelMode, options);
  if (!costingOptions.empty())
    json += fmt::format(",\"costing_options\":{{\"{}\":{{{}}}}}", costing, costingOptions);
  json += ",\"units\":\"kilometers\"";
  if (!access.language.empty()) {
    json += ",\"language\":";
    AppendJsonText(json, access.language);
  }
  json += '}';
  spec.url = access.url + "/route?json=" + UrlEscape(json, "-_.~,:");
  return kRouteSuccess;
}

uint32_t ValhallaRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                       const CRouteOptions& options, Legs& legs) {
  const auto readStatus = [](const CJsonValue& reply) -> uint32_t {
    if (reply.AsObject().Find("error_code"))
      return StatusOfError(RoundedMember(reply, "error_code"));
    return RoundedMember(reply.Get("trip"), "status") == 0 ? kRouteSuccess : kRouteFailed;
  };
  const auto readLegs = [&](const CJsonValue& reply, Legs& read) {
    PointAllowance allowance;
    for (const auto& leg : reply.Get("trip").Get("legs").AsArray())
      ReadLeg(*leg, read.emplace_back(MakeLeg(travelMode, options)), allowance);
  };
  return ReadReply(text, legs, readStatus, readLegs);
}
