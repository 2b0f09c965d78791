#include "services/directions/here_v8_router.h"

#include <iterator>

#include <fmt/format.h>

#include "services/directions/polyline.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/service_table.h"

namespace {

constexpr ValueWord kModes[] = {{kTruckMode, "truck"},
                                {kPedestrian, "pedestrian"},
                                {kBicycle, "bicycle"},
                                {kMotorcycle, "scooter"},
                                {kBus, "bus"}};

constexpr RoadWord kRoads[] = {{&AvoidanceOptions::motorways, "controlledAccessHighway"},
                               {&AvoidanceOptions::tolls, "tollRoad"},
                               {&AvoidanceOptions::boatFerries, "ferry"},
                               {&AvoidanceOptions::railFerries, "carShuttleTrain"},
                               {&AvoidanceOptions::tunnels, "tunnel"},
                               {&AvoidanceOptions::dirtRoads, "dirtRoad"}};

constexpr ValueWord kHazards[] = {
    {3, "explosive"},
    {4, "gas"},
    {5, "flammable"},
    {6, "combustible"},
    {7, "organic"},
    {8, "poison"},
    {9, "radioactive"},
    {10, "corrosive"},
    {11, "poisonousInhalation"},
    {12, "harmfulToWater"},
    {13, "other"},
    // All of them at once have no word here.
    {14,
     "explosive,gas,flammable,combustible,organic,poison,radioactive,corrosive,"
     "poisonousInhalation,harmfulToWater,other"}};

// Nothing for what is not given.
void AppendNumber(std::string& url, std::string_view name, uint32_t value) {
  if (value != 0) url += fmt::format("&vehicle[{}]={}", name, value);
}

// Centimetres and kilogrammes.
void AppendTruck(std::string& url, const TruckOptions& truck) {
  constexpr uint32_t kCentimetresPerTenth = 10;
  constexpr uint32_t kKilogrammesPerTenth = 100;
  if (truck.tractor) url += "&vehicle[type]=tractor";
  AppendNumber(url, "trailerCount", truck.trailers);
  AppendNumber(url, "grossWeight", truck.limitedWeight * kKilogrammesPerTenth);
  AppendNumber(url, "weightPerAxle", truck.weightPerAxle * kKilogrammesPerTenth);
  AppendNumber(url, "height", truck.height * kCentimetresPerTenth);
  AppendNumber(url, "width", truck.width * kCentimetresPerTenth);
  AppendNumber(url, "length", truck.length * kCentimetresPerTenth);
  const std::string_view hazards = WordFor(kHazards, truck.hazardCategory);
  if (!hazards.empty()) url.append("&vehicle[shippedHazardousGoods]=").append(hazards);
}

// The gate says "error", the routing says "status", and a way that is not there is a notice.
std::optional<uint32_t> StatusOf(const CJsonValue& reply) {
  constexpr uint32_t kUnauthorized = 401;
  constexpr uint32_t kForbidden = 403;
  constexpr uint32_t kTooManyRequests = 429;
  constexpr uint32_t kBadRequest = 400;
  const CJsonObject& members = reply.AsObject();
  if (members.Find("error")) return kRouteDenied;
  if (!members.Find("status")) return std::nullopt;
  switch (RoundedMember(reply, "status")) {
    case kUnauthorized:
    case kForbidden:
      return kRouteDenied;
    case kTooManyRequests:
      return kRouteOverQueryLimit;
    case kBadRequest:
      return kRouteInvalidRequest;
    default:
      return kRouteFailed;
  }
}

uint32_t StatusOfNotices(const CJsonValue& reply) {
  const CJsonValue* const notices = reply.AsObject().Find("notices");
  if (!notices) return kRouteNothingFound;
  for (const auto& notice : notices->AsArray()) {
    const std::string& code = notice->Get("code").AsString();
    if (code == "couldNotMatchOrigin" || code == "couldNotMatchDestination" ||
        code == "couldNotMatchVia")
      return kRouteNotFound;
  }
  return kRouteNothingFound;
}

void ReadSection(const CJsonValue& section, CRouteData& leg, PointAllowance& allowance) {
  DecodeFlexiblePolyline(section.Get("polyline").AsString(), leg.shape.points, allowance);
  const CJsonValue& summary = section.Get("summary");
  leg.measure = MakeMeasure(RoundedMember(summary, "length"), RoundedMember(summary, "duration"));
  TakePathFromShape(leg);
  const CJsonValue* const actions = section.AsObject().Find("actions");
  if (!actions) return;
  const ShapeIndex shape(leg.shape.points);
  for (const auto& action : actions->AsArray()) {
    CGpsRouteStep& step = leg.steps.emplace_back();
    shape.TakePosition(RoundedMemberOrZero(*action, "offset"), step);
    step.measure = MakeMeasure(RoundedMemberOrZero(*action, "length"),
                               RoundedMemberOrZero(*action, "duration"));
    const CJsonValue* const instruction = action->AsObject().Find("instruction");
    if (instruction) step.instruction = ReplyText(*instruction);
  }
}

}  // namespace

int32_t HereV8Router::GetId() const { return provider::kHereV8; }

uint32_t HereV8Router::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                    const CRouteOptions& options, CHttpRequestSpec& spec) {
  const ServiceAccess access = AccessToProvider(GetId());
  std::string& url = spec.url;
  url = access.url + "/v8/routes?transportMode=";
  url += WordFor(kModes, travelMode, "car");
  url += options.mode == kShortest ? "&routingMode=short" : "&routingMode=fast";
  const auto avoided = AvoidedWords(options, kRoads);
  if (!avoided.empty()) url += fmt::format("&avoid[features]={}", fmt::join(avoided, ","));
  const TruckOptions* const truck = TruckOf(options);
  if (truck && travelMode == kTruckMode) AppendTruck(url, *truck);
  url += "&origin=";
  AppendPosition(url, *chunk.points.front(), AxisOrder::kLatitudeFirst);
  const auto last = std::prev(chunk.points.end());
  for (auto point = std::next(chunk.points.begin()); point != last; ++point) {
    url += "&via=";
    AppendPosition(url, **point, AxisOrder::kLatitudeFirst);
  }
  url += "&destination=";
  AppendPosition(url, **last, AxisOrder::kLatitudeFirst);
  url += "&return=polyline,summary,actions,instructions";
  AppendParameterIfAny(url, "&lang=", access.language);
  AppendParameterIfAny(url, "&apiKey=", access.key);
  return kRouteSuccess;
}

uint32_t HereV8Router::ParseResponse(std::string_view text, uint32_t travelMode,
                                     const CRouteOptions& options, Legs& legs) {
  const auto readStatus = [](const CJsonValue& reply) -> std::optional<uint32_t> {
    const std::optional<uint32_t> status = StatusOf(reply);
    if (status || reply.Get("routes").AsArray().Count() > 0) return status;
    return StatusOfNotices(reply);
  };
  const auto readLegs = [&](const CJsonValue& reply, Legs& read) {
    PointAllowance allowance;
    for (const auto& section : reply.Get("routes").AsArray().At(0).Get("sections").AsArray())
      ReadSection(*section, read.emplace_back(MakeLeg(travelMode, options)), allowance);
  };
  return ReadReply(text, legs, readStatus, readLegs);
}
