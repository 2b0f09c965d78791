#include "planner/external_arguments.h"

#include <cmath>

namespace {

double Finite(const ScriptValue& value) {
  const double number = value.AsNumber();
  if (!std::isfinite(number)) throw ScriptError(kScriptWrongType);
  return number;
}

double NumberOf(ScriptObject& object, std::string_view name) {
  const std::optional<ScriptValue> value = object.Get(name);
  if (!value) throw ScriptError(kScriptUnknownName);
  return Finite(*value);
}

}  // namespace

ExternalArguments::ExternalArguments(ScriptArguments arguments, size_t needed)
    : m_arguments(arguments) {
  if (arguments.size() < needed) throw ScriptError(kScriptTooFewArguments);
}

bool ExternalArguments::IsAbsent(size_t index) const {
  return index >= m_arguments.size() || m_arguments[index].IsNull();
}

std::string ExternalArguments::TextOr(size_t index, std::string_view absent) const {
  return IsAbsent(index) ? std::string(absent) : Text(index);
}

int32_t ExternalArguments::IntegerOr(size_t index, int32_t absent) const {
  return IsAbsent(index) ? absent : Integer(index);
}

ScriptFunctionPtr ExternalArguments::FunctionOrNull(size_t index) const {
  return IsAbsent(index) ? nullptr : At(index).AsFunction();
}

CGpsPoint ExternalArguments::Position(size_t index) const {
  ScriptObject& object = *At(index).AsObject();
  CGpsPoint point;
  point.latitude = NumberOf(object, "lat");
  point.longitude = NumberOf(object, "lng");
  point.Clamp();
  return point;
}

CGpsPoint ExternalArguments::Point(size_t index) const {
  CGpsPoint point = Position(index);
  ScriptObject& object = *At(index).AsObject();
  if (const ScriptValue altitude = PropertyOf(object, "alt"); !altitude.IsNull())
    point.altitude = Finite(altitude);
  if (const ScriptValue name = PropertyOf(object, "address"); !name.IsNull())
    point.name = name.AsText();
  if (const ScriptValue comment = PropertyOf(object, "snippet"); !comment.IsNull())
    point.comment = comment.AsText();
  return point;
}
