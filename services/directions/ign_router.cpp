#include "services/directions/ign_router.h"

#include <iterator>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/service_table.h"

namespace {

constexpr RoadWord kRoads[] = {{&AvoidanceOptions::tunnels, "&exclusions=Tunnel"},
                               {&AvoidanceOptions::tolls, "&exclusions=toll"}};

// "LINESTRING (7.1 48.1, 7.2 48.2)": longitude in front of latitude. Nothing when it is none.
void ReadLineString(std::string_view wkt, CGpsPointList& shape) {
  const size_t word = wkt.find("LINESTRING");
  const size_t open = word == std::string_view::npos ? word : wkt.find('(', word);
  const size_t close = open == std::string_view::npos ? open : wkt.find(')', open);
  if (close == std::string_view::npos) return;
  std::vector<std::string_view> pairs;
  std::vector<std::string_view> numbers;
  SplitFields(wkt.substr(open + 1, close - open - 1), ',', pairs);
  for (const std::string_view pair : pairs) {
    SplitFields(TrimLeft(pair, " "), ' ', numbers);
    if (numbers.size() >= 2) AppendPoint(shape, ParseReal(numbers[1]), ParseReal(numbers[0]));
  }
}

// The points between the first and the last of a chunk.
void AppendMiddlePoints(const CGpsPointList& chunk, std::string& url) {
  if (chunk.points.size() <= 2) return;
  std::string_view separator = "&waypoints=";
  const auto last = std::prev(chunk.points.end());
  for (auto point = std::next(chunk.points.begin()); point != last; ++point) {
    url += separator;
    AppendPosition(url, **point, AxisOrder::kLongitudeFirst);
    separator = ";";
  }
}

uint32_t RoundedText(const CJsonValue& reply, std::string_view key) {
  return RoundedUint32(ParseReal(reply.Get(key).AsString()));
}

}  // namespace

int32_t CIgnRouter::GetId() const { return provider::kIgn; }

uint32_t CIgnRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                  const CRouteOptions& options, CHttpRequestSpec& spec) {
  const ServiceAccess access = AccessToProvider(GetId());
  std::string& url = spec.url;
  url = access.url + "/";
  AppendParameter(url, "", access.key);
  url += "/itineraire/rest/route.json?origin=";
  AppendPosition(url, *chunk.points.front(), AxisOrder::kLongitudeFirst);
  url += "&destination=";
  AppendPosition(url, *chunk.points.back(), AxisOrder::kLongitudeFirst);
  AppendMiddlePoints(chunk, url);
  url += travelMode == kPedestrian ? "&graphName=Pieton" : "&graphName=Voiture";
  url += options.mode == kShortest ? "&method=DISTANCE" : "&method=TIME";
  for (const std::string_view word : AvoidedWords(options, kRoads)) url += word;
  spec.referrer = access.referrer;  // the key is bound to it
  return kRouteSuccess;
}

uint32_t CIgnRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                   const CRouteOptions& options, Legs& legs) {
  const auto readStatus = [](const CJsonValue& reply) -> uint32_t {
    return reply.Get("status").AsString() == "OK" ? kRouteSuccess : kRouteFailed;
  };
  const auto readLegs = [&](const CJsonValue& reply, Legs& read) {
    CRouteData& leg = read.emplace_back(MakeLeg(travelMode, options));
    const uint32_t duration = RoundedText(reply, "durationSeconds");
    leg.measure = MakeMeasure(RoundedText(reply, "distanceMeters"), duration);
    ReadLineString(reply.Get("geometryWkt").AsString(), leg.shape.points);
    TakePathFromShape(leg);
  };
  return ReadReply(text, legs, readStatus, readLegs);
}
