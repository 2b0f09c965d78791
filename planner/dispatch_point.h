#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "model/point.h"
#include "planner/list_ids.h"
#include "planner/planner_lists.h"
#include "planner/script_value.h"

/// A point as the page sees it: `lat`, `lng`, `alt`, `address`, `snippet`, `route`, `type`. It
/// stands for whatever point is at its place in its list, and keeps the values read last when there
/// is none any more.
class CDispatchPoint : public ScriptObject {
 public:
  CDispatchPoint(std::weak_ptr<const PlannerLists> lists, int32_t list, int32_t index);
  /// A point of no list.
  CDispatchPoint(CGpsNamedPoint point, PinKind kind) : m_values(std::move(point)), m_kind(kind) {}

  std::optional<ScriptValue> Get(std::string_view name) override;
  std::vector<std::string_view> PropertyNames() const override;

 private:
  void ReadAnew();

  std::weak_ptr<const PlannerLists> m_lists;
  int32_t m_list = 0;
  int32_t m_index = 0;
  CGpsNamedPoint m_values;
  PinKind m_kind;
  ScriptValue m_route;
};
