#include "planner/dispatch_point.h"

#include "planner/dispatch_route.h"

CDispatchPoint::CDispatchPoint(std::weak_ptr<const PlannerLists> lists, int32_t list, int32_t index)
    : m_lists(std::move(lists)), m_list(list), m_index(index), m_kind(PinKind::kItinerary) {
  ReadAnew();
}

void CDispatchPoint::ReadAnew() {
  const std::shared_ptr<const PlannerLists> lists = m_lists.lock();
  const CGpsPoint* const point = lists ? lists->FindPoint(m_list, m_index) : nullptr;
  if (!point) return;
  m_values = *point;
  m_kind = lists->Find(m_list)->kind;
  m_route =
      point->GetRouteLeg() ? std::make_shared<CDispatchRoute>(m_lists, m_list, m_index) : nullptr;
}

std::optional<ScriptValue> CDispatchPoint::Get(std::string_view name) {
  ReadAnew();
  if (name == "lat") return m_values.latitude;
  if (name == "lng") return m_values.longitude;
  if (name == "alt") return m_values.altitude;
  if (name == "address") return m_values.name;
  if (name == "snippet") return m_values.comment;
  if (name == "route") return m_route;
  if (name == "type") return static_cast<int32_t>(m_kind);
  return std::nullopt;
}

std::vector<std::string_view> CDispatchPoint::PropertyNames() const {
  return {"lat", "lng", "alt", "address", "snippet", "route", "type"};
}
