#include "services/directions/geoplateforme_router.h"

#include <iterator>

#include <fmt/format.h>

#include "net/url.h"
#include "services/directions/manoeuvre_text.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/service_table.h"

namespace {

constexpr RoadWord kRoads[] = {{&AvoidanceOptions::motorways, "autoroute"},
                               {&AvoidanceOptions::tunnels, "tunnel"}};

constexpr std::string_view kNameKeys[] = {"nom_1_droite", "nom_1_gauche",
                                          "cpx_toponyme_route_nommee", "cpx_numero"};

// The first name that the road has.
std::string RoadName(const CJsonValue& step) {
  const CJsonValue* const names = step.object.FindPath("attributes/name");
  if (!names || names->type != kJsonObject) return {};
  for (const std::string_view key : kNameKeys) {
    const CJsonValue* const name = names->object.Find(key);
    if (name && name->type == kJsonString && !name->text.empty()) return TextForModel(name->text);
  }
  return {};
}

std::string Member(const CJsonValue& object, std::string_view key) {
  const CJsonValue* const member = object.object.Find(key);
  return member && member->type == kJsonString ? member->text : std::string();
}

void ReadLine(const CJsonArray& positions, CGpsPointList& shape) {
  for (const auto& position : positions) {
    const CJsonArray& numbers = position->AsArray();
    const double longitude = numbers.At(0).AsNumber();
    const double latitude = numbers.At(1).AsNumber();
    // Each step begins where the one before has ended.
    const bool isRepeated = !shape.points.empty() && shape.points.back()->latitude == latitude &&
                            shape.points.back()->longitude == longitude;
    if (!isRepeated) AppendPoint(shape, latitude, longitude);
  }
}

void ReadStep(const CJsonValue& value, CRouteData& leg) {
  const CJsonArray& line = value.Get("geometry").Get("coordinates").AsArray();
  ReadLine(line, leg.shape.points);
  CGpsRouteStep& step = leg.steps.emplace_back();
  const CJsonArray& start = line.At(0).AsArray();
  step.longitude = start.At(0).AsNumber();
  step.latitude = start.At(1).AsNumber();
  step.measure =
      MakeMeasure(RoundedMemberOrZero(value, "distance"), RoundedMemberOrZero(value, "duration"));
  const CJsonValue& instruction = value.Get("instruction");
  step.instruction =
      ManoeuvreText(Member(instruction, "type"), Member(instruction, "modifier"), RoadName(value));
}

uint32_t StatusOfError(const CJsonValue& error) {
  const std::string message = Member(error, "message");
  if (message.find("No path") != std::string::npos) return kRouteNothingFound;
  if (message.find("oo many requests") != std::string::npos) return kRouteOverQueryLimit;
  return error.type == kJsonObject ? kRouteInvalidRequest : kRouteFailed;
}

}  // namespace

int32_t GeoplateformeRouter::GetId() const { return provider::kGeoplateforme; }

uint32_t GeoplateformeRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                           const CRouteOptions& options, CHttpRequestSpec& spec) {
  std::string& url = spec.url;
  url = AccessToProvider(GetId()).url + "/navigation/itineraire?resource=bdtopo-osrm&start=";
  AppendPosition(url, *chunk.points.front(), AxisOrder::kLongitudeFirst);
  url += "&end=";
  const auto last = std::prev(chunk.points.end());
  AppendPosition(url, **last, AxisOrder::kLongitudeFirst);
  for (auto point = std::next(chunk.points.begin()); point != last; ++point) {
    url += point == std::next(chunk.points.begin()) ? "&intermediates=" : "|";
    AppendPosition(url, **point, AxisOrder::kLongitudeFirst);
  }
  url += travelMode == kPedestrian ? "&profile=pedestrian" : "&profile=car";
  url += options.mode == kShortest ? "&optimization=shortest" : "&optimization=fastest";
  for (const std::string_view word : AvoidedWords(options, kRoads)) {
    const std::string constraint = fmt::format(
        R"({{"constraintType":"banned","key":"wayType","operator":"=","value":"{}"}})", word);
    url += "&constraints=" + UrlEscape(constraint, "-_.~,:");
  }
  url +=
      "&getSteps=true&getBbox=false&distanceUnit=meter&timeUnit=second&geometryFormat=geojson"
      "&crs=EPSG:4326";
  return kRouteSuccess;
}

uint32_t GeoplateformeRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                            const CRouteOptions& options, Legs& legs) {
  const auto readStatus = [](const CJsonValue& reply) -> std::optional<uint32_t> {
    const CJsonValue* const error = reply.AsObject().Find("error");
    if (!error) return std::nullopt;
    return StatusOfError(*error);
  };
  const auto readLegs = [&](const CJsonValue& reply, Legs& read) {
    for (const auto& portion : reply.Get("portions").AsArray()) {
      CRouteData& leg = read.emplace_back(MakeLeg(travelMode, options));
      const uint32_t duration = RoundedMember(*portion, "duration");
      leg.measure = MakeMeasure(RoundedMember(*portion, "distance"), duration);
      for (const auto& step : portion->Get("steps").AsArray()) ReadStep(*step, leg);
      TakePathFromShape(leg);
    }
  };
  return ReadReply(text, legs, readStatus, readLegs);
}
