#include "services/directions/tomtom_router.h"

#include <chrono>

#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/request_pace.h"

namespace {

constexpr ValueWord kModes[] = {
    {kCar, "car"},         {kTruckMode, "truck"},       {kPedestrian, "pedestrian"},
    {kBicycle, "bicycle"}, {kMotorcycle, "motorcycle"}, {kVan, "van"},
    {kBus, "bus"}};

constexpr ValueWord kTypes[] = {{kFastest, "fastest"},
                                {kShortest, "shortest"},
                                {kEconomical, "eco"},
                                {kThrilling, "thrilling"}};

constexpr RoadWord kRoads[] = {{&AvoidanceOptions::motorways, "&avoid=motorways"},
                               {&AvoidanceOptions::tolls, "&avoid=tollRoads"},
                               {&AvoidanceOptions::boatFerries, "&avoid=ferries"},
                               {&AvoidanceOptions::dirtRoads, "&avoid=unpavedRoads"}};

constexpr ValueWord kDegrees[] = {{kHigh, "high"}, {kNormal, "normal"}, {kLow, "low"}};

// When the last request may have left, that of any object. The program's start counts as one.
RequestPace pace(std::chrono::milliseconds(100), std::chrono::steady_clock::now());

void AppendWord(std::string& url, std::string_view name, std::string_view word) {
  if (!word.empty()) url.append(name).append(word);
}

void AppendCharacter(std::string& url, const RouteCharacterOptions& character) {
  if (!character.avoidUsedRoads) url += "&avoid=alreadyUsedRoads";
  AppendWord(url, "&hilliness=", WordFor(kDegrees, character.hilliness));
  AppendWord(url, "&windingness=", WordFor(kDegrees, character.windingness));
}

}  // namespace

uint32_t CTomTomRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                     const CRouteOptions& options, CHttpRequestSpec& spec) {
  const ServiceAccess access = AccessToProvider(GetId());
  std::string& url = spec.url;
  url = access.url + "/routing/1/calculateRoute/";
  AppendPositions(url, chunk, AxisOrder::kLatitudeFirst, ":");
  url += "/json";
  AppendParameter(url, "?key=", access.key);
  url += "&traffic=false";
  AppendParameterIfAny(url, "&language=", access.language);
  AppendWord(url, "&travelMode=", WordFor(kModes, travelMode));
  const uint32_t groups = options.Capabilities();
  if (groups & kAvoidances) {
    AppendWord(url, "&routeType=", WordFor(kTypes, options.mode));
    for (const std::string_view word : AvoidedWords(options, kRoads)) url += word;
    const RouteCharacterOptions* const character = CharacterOf(options);
    if ((groups & kRouteCharacter) && character && options.mode == kThrilling)
      AppendCharacter(url, *character);
  }
  pace.Await();
  return kRouteSuccess;
}

uint32_t CTomTomRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                      const CRouteOptions& options, Legs& legs) {
  return ReadReply(text, legs, [&](const CJsonValue& reply, Legs& read) {
    for (const auto& value : reply.Get("routes").AsArray().At(0).Get("legs").AsArray()) {
      CRouteData& leg = read.emplace_back(MakeLeg(travelMode, options));
      const CJsonValue& summary = value->Get("summary");
      leg.measure = MakeMeasure(RoundedMember(summary, "lengthInMeters"),
                                RoundedMember(summary, "travelTimeInSeconds"));
      for (const auto& point : value->Get("points").AsArray())
        AppendPoint(leg.shape.points, *point, "latitude", "longitude");
      TakePathFromShape(leg);
    }
  });
}
