#include "planner/settings_object.h"

#include <algorithm>
#include <iterator>
#include <variant>

#include "settings/setting_table.h"

namespace {

// A property of the page and the stored setting behind it.
struct Property {
  std::string_view name;
  std::string_view key;
};

constexpr Property kProperties[] = {
    {"AutoCalc", "AUTO_CALC"},         {"DistMiles", "DIST_MILES"},
    {"AvoidHighway", "AVOID_HIGHWAY"}, {"AvoidTolls", "AVOID_TOLLS"},
    {"TravelMode", "VehicleType"},     {"RouteProvider", "RouteProvider"},
    {"ForceRoad", "ForceRoad"},        {"AutoAddStep", "AutoAddStep"},
    {"CoordsFormat", "Coordinates"},   {"DisplayNumber", "DisplayNumber"},
};

const SettingRow* FindRow(std::string_view property) {
  const auto* const found =
      std::find_if(std::begin(kProperties), std::end(kProperties),
                   [property](const Property& each) { return each.name == property; });
  if (found == std::end(kProperties)) return nullptr;
  const auto table = SettingTable();
  const auto row = std::find_if(table.begin(), table.end(),
                                [found](const SettingRow& each) { return each.key == found->key; });
  return &*row;
}

}  // namespace

std::optional<ScriptValue> SettingsObject::Get(std::string_view name) {
  if (m_closed) throw ScriptError(kScriptFailed);
  const SettingRow* const row = FindRow(name);
  if (!row) return std::nullopt;
  if (const auto* const flag = std::get_if<bool SettingValues::*>(&row->field))
    return m_settings.**flag;
  return m_settings.*std::get<int32_t SettingValues::*>(row->field);
}

void SettingsObject::Put(std::string_view name, const ScriptValue& value) {
  if (m_closed) throw ScriptError(kScriptFailed);
  const SettingRow* const row = FindRow(name);
  if (!row) throw ScriptError(kScriptUnknownName);
  if (const auto* const flag = std::get_if<bool SettingValues::*>(&row->field)) {
    m_settings.** flag = value.AsBoolean();
  } else {
    const int32_t number = value.AsInteger();
    if (number < row->lowest || number > row->highest) throw ScriptError(kScriptBadIndex);
    m_settings.*std::get<int32_t SettingValues::*>(row->field) = number;
  }
  m_changed();
}

std::vector<std::string_view> SettingsObject::PropertyNames() const {
  std::vector<std::string_view> names;
  for (const Property& each : kProperties) names.push_back(each.name);
  return names;
}
