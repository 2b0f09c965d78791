#include "services/directions/osrm_router.h"

#include "services/directions/polyline.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/service_table.h"

int32_t COsrmRouter::GetId() const { return provider::kOsrm; }

uint32_t COsrmRouter::BuildRequest(const CGpsPointList& chunk, uint32_t /*travelMode*/,
                                   const CRouteOptions& /*options*/, CHttpRequestSpec& spec) {
  std::string& url = spec.url;
  url = AccessToProvider(GetId()).url + "/route/v1/driving/";
  AppendPositions(url, chunk, AxisOrder::kLongitudeFirst, ";");
  url += "?overview=full";
  return kRouteSuccess;
}

uint32_t COsrmRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                    const CRouteOptions& options, Legs& legs) {
  const auto readStatus = [](const CJsonValue& reply) -> uint32_t {
    return reply.Get("code").AsString() == "Ok" ? kRouteSuccess : kRouteFailed;
  };
  const auto readLegs = [&](const CJsonValue& reply, Legs& read) {
    const CJsonValue& route = reply.Get("routes").AsArray().At(0);
    CRouteData& leg = read.emplace_back(MakeLeg(travelMode, options));
    const uint32_t duration = RoundedMember(route, "duration");
    leg.measure = MakeMeasure(RoundedMember(route, "distance"), duration);
    PointAllowance allowance;
    DecodePolyline(route.Get("geometry").AsString(), PolylinePrecision::kFive, leg.shape.points,
                   allowance);
    for (const auto& waypoint : reply.Get("waypoints").AsArray()) {
      const CJsonArray& location = waypoint->Get("location").AsArray();
      AppendPoint(leg.path, location.At(1).AsNumber(), location.At(0).AsNumber()).name =
          ReplyText(waypoint->Get("name"));
    }
  };
  return ReadReply(text, legs, readStatus, readLegs);
}
