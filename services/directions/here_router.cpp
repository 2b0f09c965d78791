#include "services/directions/here_router.h"

#include <vector>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/service_table.h"

namespace {

constexpr ValueWord kVehicles[] = {
    {kCar, ";car"}, {kTruckMode, ";truck"}, {kPedestrian, ";pedestrian"}, {kBicycle, ";bicycle"}};

constexpr RoadWord kParkRoads[] = {{&AvoidanceOptions::motorways, ";park:-2"}};

constexpr RoadWord kRoads[] = {{&AvoidanceOptions::motorways, ";motorway:-2"},
                               {&AvoidanceOptions::tolls, ";tollroad:-2"},
                               {&AvoidanceOptions::boatFerries, ";boatFerry:-2"},
                               {&AvoidanceOptions::railFerries, ";railFerry:-2"},
                               {&AvoidanceOptions::tunnels, ";tunnel:-2"},
                               {&AvoidanceOptions::dirtRoads, ";dirtRoad:-2"}};

constexpr ValueWord kHazards[] = {
    {3, "explosive"},       {4, "gas"},        {5, "flammable"},
    {6, "combustible"},     {7, "organic"},    {8, "poison"},
    {9, "radioActive"},     {10, "corrosive"}, {11, "poisonousInhalation"},
    {12, "harmfulToWater"}, {13, "other"},     {14, "allhazardousGoods"},
};

void AppendSize(std::string& url, std::string_view name, uint32_t tenths) {
  if (tenths != 0) url.append(name).append(TenthsText(tenths));
}

void AppendCount(std::string& url, std::string_view name, uint32_t count) {
  if (count != 0) url += fmt::format("{}{}", name, count);
}

void AppendTruck(std::string& url, const TruckOptions& truck) {
  if (truck.tractor) url += "&truckType=tractorTruck";
  AppendCount(url, "&trailersCount=", truck.trailers);
  // Weights go out in whole tons.
  if (truck.limitedWeight != 0) url += fmt::format("&limitedWeight={}", truck.limitedWeight / 10);
  if (truck.weightPerAxle != 0) url += fmt::format("&weightPerAxle={}", truck.weightPerAxle / 10);
  AppendSize(url, "&height=", truck.height);
  AppendSize(url, "&width=", truck.width);
  AppendSize(url, "&length=", truck.length);
  const std::string_view hazard = WordFor(kHazards, truck.hazardCategory);
  if (!hazard.empty()) url.append("&shippedHazardousGoods=").append(hazard);
}

void ReadShape(const CJsonArray& strings, CGpsPointList& shape) {
  std::vector<std::string_view> pieces;
  for (const auto& value : strings) {
    SplitFields(value->AsString(), ',', pieces);
    if (pieces.size() >= 2) AppendPoint(shape, ParseReal(pieces[0]), ParseReal(pieces[1]));
  }
}

}  // namespace

int32_t CHereRouter::GetId() const { return provider::kHere; }

uint32_t CHereRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                   const CRouteOptions& options, CHttpRequestSpec& spec) {
  const ServiceAccess access = AccessToProvider(GetId());
  std::string& url = spec.url;
  url = access.url +
        "/routing/7.2/calculateroute.json"
        "?metricsystem=metric&representation=overview&routeattributes=shape";
  AppendParameter(url, "&app_id=", access.appId);
  AppendParameter(url, "&app_code=", access.key);
  AppendParameterIfAny(url, "&language=", access.language);
  url += options.mode == kShortest ? "&mode=shortest" : "&mode=fastest";
  url += WordFor(kVehicles, travelMode);
  url += ";traffic:disabled";
  const uint32_t groups = options.Capabilities();
  if (groups & kParking) {
    for (const std::string_view word : AvoidedWords(options, kParkRoads)) url += word;
  }
  if (groups & kAvoidances) {
    for (const std::string_view word : AvoidedWords(options, kRoads)) url += word;
    const TruckOptions* const truck = TruckOf(options);
    if ((groups & kTruck) && truck) AppendTruck(url, *truck);
  }
  size_t index = 0;
  for (const auto& point : chunk.points) {
    url += fmt::format("&waypoint{}=geo!", index++);
    AppendPosition(url, *point, AxisOrder::kLatitudeFirst);
  }
  return kRouteSuccess;
}

uint32_t CHereRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                    const CRouteOptions& options, Legs& legs) {
  return ReadReply(text, legs, [&](const CJsonValue& reply, Legs& read) {
    const CJsonValue& route = reply.Get("response").Get("route").AsArray().At(0);
    CRouteData& leg = read.emplace_back(MakeLeg(travelMode, options));
    for (const auto& waypoint : route.Get("waypoint").AsArray()) {
      AppendPoint(leg.path, waypoint->Get("mappedPosition"), "latitude", "longitude").name =
          ReplyText(waypoint->Get("label"));
    }
    ReadShape(route.Get("shape").AsArray(), leg.shape.points);
    const CJsonValue& summary = route.Get("summary");
    leg.measure =
        MakeMeasure(RoundedMember(summary, "distance"), RoundedMember(summary, "travelTime"));
  });
}
