#include "services/directions/brouter_router.h"

#include "base/numbers.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/service_table.h"

namespace {

// The profiles that every server comes with.
std::string_view ProfileOf(uint32_t travelMode, uint32_t type) {
  constexpr ValueWord kByMode[] = {{kPedestrian, "hiking-mountain"}, {kBicycle, "trekking"}};
  if (type == kShortest && travelMode != kCar) return "shortest";
  if (type == kFastest && travelMode == kBicycle) return "fastbike";
  return WordFor(kByMode, travelMode, type == kEconomical ? "car-eco" : "car-fast");
}

// Errors come as a sentence.
uint32_t StatusOfSentence(std::string_view text) {
  constexpr struct {
    std::string_view part;
    uint32_t status;
  } kParts[] = {
      {"not mapped", kRouteNotFound},
      {"datafile", kRouteNotFound},
      {"no track found", kRouteNothingFound},
      {"island", kRouteNothingFound},
      {"killed", kRouteBusy},
      {"overload", kRouteBusy},
  };
  for (const auto& row : kParts) {
    if (text.find(row.part) != std::string_view::npos) return row.status;
  }
  return kRouteInvalidRequest;
}

// Numbers come as texts.
uint32_t RoundedText(const CJsonValue& properties, std::string_view key) {
  return RoundedUint32(ParseReal(properties.Get(key).AsString()));
}

void ReadLine(const CJsonArray& positions, CGpsPointList& shape) {
  for (const auto& position : positions) {
    const CJsonArray& numbers = position->AsArray();
    CGpsNamedPoint& point = AppendPoint(shape, numbers.At(1).AsNumber(), numbers.At(0).AsNumber());
    if (numbers.Count() > 2) point.altitude = numbers.At(2).AsNumber();
  }
}

}  // namespace

int32_t BRouterRouter::GetId() const { return provider::kBRouter; }

uint32_t BRouterRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                     const CRouteOptions& options, CHttpRequestSpec& spec) {
  std::string& url = spec.url;
  url = AccessToProvider(GetId()).url + "/brouter?lonlats=";
  AppendPositions(url, chunk, AxisOrder::kLongitudeFirst, "|");
  url += "&profile=";
  url += ProfileOf(travelMode, options.mode);
  url += "&alternativeidx=0&format=geojson";
  return kRouteSuccess;
}

uint32_t BRouterRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                      const CRouteOptions& options, Legs& legs) {
  if (!text.starts_with('{')) return StatusOfSentence(text);
  return ReadReply(text, legs, [&](const CJsonValue& reply, Legs& read) {
    const CJsonValue& feature = reply.Get("features").AsArray().At(0);
    CRouteData& leg = read.emplace_back(MakeLeg(travelMode, options));
    const CJsonValue& properties = feature.Get("properties");
    const uint32_t duration = RoundedText(properties, "total-time");
    leg.measure = MakeMeasure(RoundedText(properties, "track-length"), duration);
    ReadLine(feature.Get("geometry").Get("coordinates").AsArray(), leg.shape.points);
    TakePathFromShape(leg);
  });
}
