#include "services/directions/straight_line_router.h"

#include "services/directions/route_reply.h"
#include "services/service_table.h"

int32_t CStraightLineRouter::GetId() const { return provider::kStraight; }

void CStraightLineRouter::Calculate(std::unique_ptr<CGpsPointList> points, uint32_t travelMode,
                                    const CRouteOptions& options) {
  Begin();
  if (points->points.size() < 2) {
    Finish(kRoutePointCount);
    return;
  }
  const CGpsNamedPoint* from = nullptr;
  for (const auto& to : points->points) {
    if (from) {
      CRouteData& leg = GetLegs().emplace_back(MakeLeg(travelMode, options));
      for (CGpsPointList* const line : {&leg.path, &leg.shape.points}) {
        AppendPoint(*line, *from);
        AppendPoint(*line, *to);
      }
      leg.measure = MakeMeasure(from->DistanceTo(*to), 0);
    }
    from = to.get();
  }
  Finish(kRouteSuccess);
}

uint32_t CStraightLineRouter::Wait(int32_t /*timeoutMs*/) {
  return Status() == kRoutePointCount ? kRoutePointCount : kRouteSuccess;
}

uint32_t CStraightLineRouter::BuildRequest(const CGpsPointList& /*chunk*/, uint32_t /*travelMode*/,
                                           const CRouteOptions& /*options*/,
                                           CHttpRequestSpec& /*spec*/) {
  return kRouteInvalidRequest;
}

uint32_t CStraightLineRouter::ParseResponse(std::string_view /*text*/, uint32_t /*travelMode*/,
                                            const CRouteOptions& /*options*/, Legs& /*legs*/) {
  return kRouteInvalidRequest;
}
