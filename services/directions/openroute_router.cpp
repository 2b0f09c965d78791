#include "services/directions/openroute_router.h"

#include <iterator>

#include "services/directions/route_request.h"
#include "services/service_table.h"

namespace {

constexpr RoadWord kRoads[] = {{&AvoidanceOptions::motorways, "&noMotorways=true"},
                               {&AvoidanceOptions::tolls, "&noTollways=true"}};

std::string_view Preference(uint32_t travelMode, const CRouteOptions& options) {
  constexpr ValueWord kModes[] = {{kBicycle, "Bicycle"}, {kPedestrian, "Pedestrian"}};
  return WordFor(kModes, travelMode, options.mode == kShortest ? "Shortest" : "Fastest");
}

}  // namespace

int32_t COpenRouteRouter::GetId() const { return provider::kOpenRouteService; }

uint32_t COpenRouteRouter::BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                        const CRouteOptions& options, CHttpRequestSpec& spec) {
  const ServiceAccess access = AccessToProvider(GetId());
  spec.url = access.url + "/php/OpenLSRS_DetermineRoute.php";
  std::string& body = spec.postData;
  body = "Start=";
  AppendPosition(body, *chunk.points.front(), AxisOrder::kLongitudeFirst);
  body += "&End=";
  AppendPosition(body, *chunk.points.back(), AxisOrder::kLongitudeFirst);
  const auto last = std::prev(chunk.points.end());
  for (auto point = std::next(chunk.points.begin()); point != last; ++point) {
    body += "&Via=";
    AppendPosition(body, **point, AxisOrder::kLongitudeFirst);
  }
  body.append("&routepref=").append(Preference(travelMode, options));
  for (const std::string_view word : AvoidedWords(options, kRoads)) body += word;
  AppendParameterIfAny(body, "&lang=", access.language);
  return kRouteSuccess;
}

uint32_t COpenRouteRouter::ParseResponse(std::string_view /*text*/, uint32_t /*travelMode*/,
                                         const CRouteOptions& /*options*/, Legs& /*legs*/) {
  return kRouteInvalidRequest;
}
