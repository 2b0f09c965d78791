#pragma once

#include <cstdint>
#include <memory>

#include "model/route_leg.h"
#include "planner/planner_lists.h"
#include "planner/script_value.h"

/// A calculated leg as the page sees it: `distance` (metres), `duration` (seconds),
/// `avoid_highway`, `avoid_tolls`, `driving` (travel mode), `provider`, `points` (array of
/// {lat, lng}), `color`.
class CDispatchRoute : public ScriptObject {
 public:
  /// The leg that leads to a point of a list, whichever it is when it is read. When there is none
  /// any more, its numbers stay those read last and `points` is empty.
  CDispatchRoute(std::weak_ptr<const PlannerLists> lists, int32_t list, int32_t index);
  /// A leg of no list.
  CDispatchRoute(CRouteData route, int32_t provider);

  std::optional<ScriptValue> Get(std::string_view name) override;
  std::vector<std::string_view> PropertyNames() const override;

 private:
  // Everything but the points.
  struct Summary {
    uint32_t distance = 0;
    uint32_t duration = 0;
    bool avoidsHighway = false;
    bool avoidsTolls = false;
    uint32_t travelMode = 0;
    int32_t provider = 0;
    uint32_t color = 0;
  };

  static Summary SummaryOf(const CRouteData& route, int32_t provider);
  const CRouteLeg* FindLeg() const;
  ScriptValue Points() const;

  std::weak_ptr<const PlannerLists> m_lists;
  int32_t m_list = 0;
  int32_t m_index = 0;
  std::unique_ptr<CRouteData> m_own;
  Summary m_summary;
};
