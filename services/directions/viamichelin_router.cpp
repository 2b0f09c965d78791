#include "services/directions/viamichelin_router.h"

#include <optional>

#include <fmt/format.h>

#include "services/directions/polyline.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/service_table.h"

namespace {

constexpr ValueWord kVehicles[] = {
    {kCar, "0"}, {kTruckMode, "1"}, {kPedestrian, "2"}, {kBicycle, "3"}, {kMotorcycle, "4"}};

// Columns of a row of the road sheet.
enum Column : size_t {
  kKind = 0,
  kPlace = 1,
  kDistance = 2,
  kDuration = 3,
  kHasNumber = 4,
  kNumber = 5,
  kSecondText = 6,
  kFirstText = 7,
  kRoadName = 8,
};

void AppendPart(std::string& instruction, std::string_view part) {
  if (part.empty()) return;
  if (!instruction.empty()) instruction += ", ";
  instruction += part;
}

std::string ReadInstruction(const CJsonArray& row) {
  std::string instruction;
  AppendPart(instruction, row.At(kFirstText).AsString());
  AppendPart(instruction, row.At(kSecondText).AsString());
  const CJsonValue& road = row.At(kRoadName);
  if (road.type == kJsonString) AppendPart(instruction, road.text);
  if (row.At(kHasNumber).AsNumber() != 0.0)
    AppendPart(instruction, fmt::format("{}", row.At(kNumber).AsNumber()));
  return TextForModel(instruction);
}

void ReadSteps(const CJsonArray& rows, CRouteData& leg) {
  uint32_t distance = 0;
  uint32_t duration = 0;
  for (const auto& value : rows) {
    const CJsonArray& row = value->AsArray();
    if (row.Count() == 0) continue;
    const CJsonValue& kind = row.At(kKind);
    if (kind.type != kJsonString || kind.text != "C") continue;
    CGpsRouteStep& step = leg.steps.emplace_back();
    step.measure = MakeMeasure(RoundedUint32(row.At(kDistance).AsNumber()),
                               RoundedUint32(row.At(kDuration).AsNumber()));
    step.latitude = row.At(kPlace).Get("lat").AsNumber();
    step.longitude = row.At(kPlace).Get("lon").AsNumber();
    step.instruction = ReadInstruction(row);
    distance += step.measure.distance;
    duration += step.measure.duration;
  }
  leg.measure = MakeMeasure(distance, duration);
}

// Longitude first; the first pair is a position, each further one leads on from there.
void ReadTrace(std::string_view trace, CGpsPointList& shape) {
  constexpr size_t kLeadingCharacters = 2;
  constexpr unsigned kMostBits = 30;
  constexpr double kScale = 100'000.0;
  if (trace.size() <= kLeadingCharacters) return;
  PolylineNumbers numbers(trace.substr(kLeadingCharacters), kMostBits);
  double longitude = 0.0;
  double latitude = 0.0;
  int64_t byLongitude = 0;
  int64_t byLatitude = 0;
  PointAllowance allowance;
  while (numbers.Next(byLongitude) && numbers.Next(byLatitude)) {
    longitude += static_cast<double>(byLongitude) / kScale;
    latitude += static_cast<double>(byLatitude) / kScale;
    allowance.TakeOrThrow();
    AppendPoint(shape, latitude, longitude);
  }
}

}  // namespace

int32_t CViaMichelinRouter::GetId() const { return provider::kViaMichelin; }

uint32_t CViaMichelinRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                          const CRouteOptions& options, CHttpRequestSpec& spec) {
  const ServiceAccess access = AccessToProvider(GetId());
  std::string& url = spec.url;
  url = access.url + "/apir/1/iti.json/";
  AppendParameter(url, "", access.language);
  url +=
      "?charset=UTF-8&ie=UTF-8&distUnit=m&avoidBorders=true&avoidCCZ=false&avoidORC=false"
      "&multipleIti=false&itiIdx=0&callback=HTTPResponseLoaded&steps=";
  bool isFirst = true;
  for (const auto& point : chunk.points) {
    url += isFirst ? "1:" : ";1:";
    AppendPosition(url, *point, AxisOrder::kLongitudeFirst, ":");
    isFirst = false;
  }
  const std::string_view vehicle = WordFor(kVehicles, travelMode);
  if (!vehicle.empty()) url.append("&veht=").append(vehicle);
  url += fmt::format("&itit={}", options.mode);
  if (const AvoidanceOptions* const avoidances = AvoidancesOf(options))
    url += avoidances->tolls ? "&avoidTolls=false" : "&avoidTolls=true";
  AppendParameter(url, "&authkey=", access.key);
  return kRouteSuccess;
}

uint32_t CViaMichelinRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                           const CRouteOptions& options, Legs& legs) {
  if (!TakeViaMichelinWrapper(text)) return kRouteInvalidRequest;
  const auto readStatus = [](const CJsonValue& reply) -> std::optional<uint32_t> {
    const CJsonValue* const error = reply.AsObject().Find("error");
    if (!error || error->type != kJsonObject) return std::nullopt;
    return TransportStatus(RoundedMember(*error, "errorCode"));
  };
  const auto readLegs = [&](const CJsonValue& reply, Legs& read) {
    reply.Get("header").AsObject();
    CRouteData& leg = read.emplace_back(MakeLeg(travelMode, options));
    ReadSteps(reply.Get("roadSheet").AsArray().At(0).AsArray(), leg);
    ReadTrace(reply.Get("itineraryTrace").AsString(), leg.shape.points);
    TakePathFromShape(leg);
  };
  return ReadReply(text, legs, readStatus, readLegs);
}
