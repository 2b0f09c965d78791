#include "services/directions/google_routes_router.h"

#include <iterator>

#include <fmt/format.h>

#include "base/numbers.h"
#include "services/directions/polyline.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/service_table.h"

namespace {

constexpr ValueWord kModes[] = {
    {kPedestrian, "WALK"}, {kBicycle, "BICYCLE"}, {kMotorcycle, "TWO_WHEELER"}};

constexpr RoadWord kRoads[] = {{&AvoidanceOptions::tolls, "\"avoidTolls\":true"},
                               {&AvoidanceOptions::motorways, "\"avoidHighways\":true"},
                               {&AvoidanceOptions::boatFerries, "\"avoidFerries\":true"}};

// What the reply shall hold; without this there is none.
constexpr char kFieldMask[] =
    "routes.legs.distanceMeters,routes.legs.duration,routes.legs.polyline.encodedPolyline,"
    "routes.legs.startLocation,routes.legs.endLocation,routes.legs.steps.distanceMeters,"
    "routes.legs.steps.staticDuration,routes.legs.steps.startLocation,"
    "routes.legs.steps.navigationInstruction.instructions";

constexpr struct {
  std::string_view word;
  uint32_t status;
} kErrors[] = {
    {"INVALID_ARGUMENT", kRouteInvalidRequest},
    {"PERMISSION_DENIED", kRouteDenied},
    {"UNAUTHENTICATED", kRouteDenied},
    {"RESOURCE_EXHAUSTED", kRouteOverQueryLimit},
    {"NOT_FOUND", kRouteNotFound},
};

uint32_t StatusOfError(const CJsonValue& error) {
  const std::string& word = error.Get("status").AsString();
  for (const auto& row : kErrors) {
    if (row.word == word) return row.status;
  }
  return kRouteFailed;
}

void AppendPlace(std::string& body, const CGpsCoordinate& position) {
  body += "{\"location\":{\"latLng\":{\"latitude\":";
  AppendPosition(body, position, AxisOrder::kLatitudeFirst, ",\"longitude\":");
  body += "}}}";
}

// Seconds come as "165s". What is 0 is left out, positions on the equator included.
uint32_t ReadSeconds(const CJsonValue& value, std::string_view key) {
  const CJsonValue* const seconds = value.AsObject().Find(key);
  return seconds ? RoundedUint32(ParseReal(seconds->AsString())) : 0;
}

double NumberOrZero(const CJsonValue& value, std::string_view key) {
  const CJsonValue* const number = value.AsObject().Find(key);
  return number ? number->AsNumber() : 0.0;
}

void TakePlace(const CJsonValue& location, CGpsCoordinate& position) {
  const CJsonValue& place = location.Get("latLng");
  position.latitude = NumberOrZero(place, "latitude");
  position.longitude = NumberOrZero(place, "longitude");
}

void ReadLeg(const CJsonValue& value, CRouteData& leg, PointAllowance& allowance) {
  TakePlace(value.Get("startLocation"), AppendPoint(leg.path, 0.0, 0.0));
  TakePlace(value.Get("endLocation"), AppendPoint(leg.path, 0.0, 0.0));
  leg.measure =
      MakeMeasure(RoundedMemberOrZero(value, "distanceMeters"), ReadSeconds(value, "duration"));
  DecodePolyline(value.Get("polyline").Get("encodedPolyline").AsString(), PolylinePrecision::kFive,
                 leg.shape.points, allowance);
  const CJsonValue* const steps = value.AsObject().Find("steps");
  if (!steps) return;
  for (const auto& item : steps->AsArray()) {
    CGpsRouteStep& step = leg.steps.emplace_back();
    TakePlace(item->Get("startLocation"), step);
    step.measure = MakeMeasure(RoundedMemberOrZero(*item, "distanceMeters"),
                               ReadSeconds(*item, "staticDuration"));
    const CJsonValue* const text = item->AsObject().FindPath("navigationInstruction/instructions");
    if (text) step.instruction = ReplyText(*text);
  }
}

}  // namespace

int32_t GoogleRoutesRouter::GetId() const { return provider::kGoogleRoutes; }

uint32_t GoogleRoutesRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                          const CRouteOptions& options, CHttpRequestSpec& spec) {
  const ServiceAccess access = AccessToProvider(GetId());
  spec.url = access.url + "/directions/v2:computeRoutes";
  spec.headers = {{"Content-Type", "application/json"},
                  {"X-Goog-Api-Key", access.key},
                  {"X-Goog-FieldMask", kFieldMask}};
  std::string& body = spec.postData;
  body = "{\"origin\":";
  AppendPlace(body, *chunk.points.front());
  body += ",\"destination\":";
  AppendPlace(body, *chunk.points.back());
  const auto last = std::prev(chunk.points.end());
  for (auto point = std::next(chunk.points.begin()); point != last; ++point) {
    body += point == std::next(chunk.points.begin()) ? ",\"intermediates\":[" : ",";
    AppendPlace(body, **point);
  }
  if (chunk.points.size() > 2) body += ']';
  body += fmt::format(",\"travelMode\":\"{}\"", WordFor(kModes, travelMode, "DRIVE"));
  // The service takes these only for what drives.
  if (travelMode != kPedestrian && travelMode != kBicycle) {
    body += ",\"routingPreference\":\"TRAFFIC_UNAWARE\"";
    const auto avoided = AvoidedWords(options, kRoads);
    if (!avoided.empty())
      body += fmt::format(",\"routeModifiers\":{{{}}}", fmt::join(avoided, ","));
  }
  if (!access.language.empty()) {
    body += ",\"languageCode\":";
    AppendJsonText(body, access.language);
  }
  body += ",\"units\":\"METRIC\"}";
  return kRouteSuccess;
}

uint32_t GoogleRoutesRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                           const CRouteOptions& options, Legs& legs) {
  const auto readStatus = [](const CJsonValue& reply) -> std::optional<uint32_t> {
    const CJsonValue* const error = reply.AsObject().Find("error");
    if (error) return StatusOfError(*error);
    if (!reply.object.Find("routes")) return kRouteNothingFound;  // "{}" is no way
    return std::nullopt;
  };
  const auto readLegs = [&](const CJsonValue& reply, Legs& read) {
    PointAllowance allowance;
    for (const auto& leg : reply.Get("routes").AsArray().At(0).Get("legs").AsArray())
      ReadLeg(*leg, read.emplace_back(MakeLeg(travelMode, options)), allowance);
  };
  return ReadReply(text, legs, readStatus, readLegs);
}
