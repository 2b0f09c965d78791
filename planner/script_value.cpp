#include "planner/script_value.h"

#include <algorithm>
#include <limits>

ScriptValue::ScriptValue(uint32_t value) {
  if (value <= static_cast<uint32_t>(std::numeric_limits<int32_t>::max()))
    m_value = static_cast<int32_t>(value);
  else
    m_value = static_cast<double>(value);
}

double ScriptValue::AsNumber() const {
  if (Type() == ScriptType::kInteger) return AsInteger();
  return Read<double>();
}

void ScriptObject::Put(std::string_view name, const ScriptValue&) {
  throw ScriptError(Get(name) ? kScriptNoSuchMember : kScriptUnknownName);
}

ScriptValue ScriptObject::Invoke(std::string_view, ScriptArguments) {
  throw ScriptError(kScriptUnknownName);
}

std::optional<ScriptValue> ScriptRecord::Get(std::string_view name) {
  const auto found = std::find_if(m_members.begin(), m_members.end(),
                                  [name](const auto& member) { return member.first == name; });
  if (found == m_members.end()) return std::nullopt;
  return found->second;
}

void ScriptRecord::Put(std::string_view name, const ScriptValue& value) {
  const auto found = std::find_if(m_members.begin(), m_members.end(),
                                  [name](const auto& member) { return member.first == name; });
  if (found != m_members.end())
    found->second = value;
  else
    m_members.emplace_back(name, value);
}

std::vector<std::string_view> ScriptRecord::PropertyNames() const {
  std::vector<std::string_view> names;
  names.reserve(m_members.size());
  for (const auto& member : m_members) names.push_back(member.first);
  return names;
}

ScriptValue PropertyOf(ScriptObject& object, std::string_view name) {
  return object.Get(name).value_or(ScriptValue());
}
