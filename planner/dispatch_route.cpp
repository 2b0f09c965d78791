#include "planner/dispatch_route.h"

#include <utility>

#include "services/directions/route_options.h"

namespace {

// One point of a line. Ways have hundreds of thousands of them.
class LinePoint : public ScriptObject {
 public:
  LinePoint(double latitude, double longitude) : m_latitude(latitude), m_longitude(longitude) {}

  std::optional<ScriptValue> Get(std::string_view name) override {
    if (name == "lat") return m_latitude;
    if (name == "lng") return m_longitude;
    return std::nullopt;
  }
  std::vector<std::string_view> PropertyNames() const override { return {"lat", "lng"}; }
  bool IsCopied() const override { return true; }

 private:
  double m_latitude;
  double m_longitude;
};

ScriptArray LineOf(const CRouteData& route) {
  ScriptArray line;
  line.reserve(route.shape.points.points.size());
  for (const auto& point : route.shape.points.points)
    line.emplace_back(std::make_shared<LinePoint>(point->latitude, point->longitude));
  return line;
}

}  // namespace

CDispatchRoute::CDispatchRoute(std::weak_ptr<const PlannerLists> lists, int32_t list, int32_t index)
    : m_lists(std::move(lists)), m_list(list), m_index(index) {
  if (const CRouteLeg* const leg = FindLeg()) m_summary = SummaryOf(leg->Route(), leg->provider);
}

CDispatchRoute::CDispatchRoute(CRouteData route, int32_t provider)
    : m_own(std::make_unique<CRouteData>(std::move(route))),
      m_summary(SummaryOf(*m_own, provider)) {}

const CRouteLeg* CDispatchRoute::FindLeg() const {
  const std::shared_ptr<const PlannerLists> lists = m_lists.lock();
  const CGpsPoint* const point = lists ? lists->FindPoint(m_list, m_index) : nullptr;
  return point ? point->GetRouteLeg() : nullptr;
}

ScriptValue CDispatchRoute::Points() const {
  if (m_own) return LineOf(*m_own);
  const CRouteLeg* const leg = FindLeg();
  return leg ? LineOf(leg->Route()) : ScriptArray();
}

std::optional<ScriptValue> CDispatchRoute::Get(std::string_view name) {
  if (const CRouteLeg* const leg = FindLeg()) m_summary = SummaryOf(leg->Route(), leg->provider);
  if (name == "distance") return m_summary.distance;
  if (name == "duration") return m_summary.duration;
  if (name == "avoid_highway") return m_summary.avoidsHighway;
  if (name == "avoid_tolls") return m_summary.avoidsTolls;
  if (name == "driving") return m_summary.travelMode;
  if (name == "provider") return m_summary.provider;
  if (name == "points") return Points();
  if (name == "color") return m_summary.color;
  return std::nullopt;
}

std::vector<std::string_view> CDispatchRoute::PropertyNames() const {
  return {"distance", "duration", "avoid_highway", "avoid_tolls",
          "driving",  "provider", "points",        "color"};
}

CDispatchRoute::Summary CDispatchRoute::SummaryOf(const CRouteData& route, int32_t provider) {
  Summary summary;
  summary.distance = route.measure.distance;
  summary.duration = route.measure.duration;
  summary.travelMode = route.travelMode;
  summary.provider = provider;
  summary.color = route.color;
  if (const AvoidanceOptions* const avoidances = AvoidancesOf(*route.options)) {
    summary.avoidsHighway = !avoidances->motorways;
    summary.avoidsTolls = !avoidances->tolls;
  }
  return summary;
}
