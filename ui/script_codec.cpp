#include "ui/script_codec.h"

#include <QJsonArray>
#include <QJsonObject>
#include <cmath>
#include <limits>

#include "ui/text.h"

namespace {

constexpr QLatin1String kPlainObject("o");
constexpr QLatin1String kFunction("f");
constexpr QLatin1String kHeldObject("h");
constexpr QLatin1String kProperties("p");
constexpr QLatin1String kMethods("m");
constexpr QLatin1String kOddNumber("n");

uint32_t ReadNumber(const QJsonValue& json) {
  const double number = json.toDouble(-1);
  if (!(number >= 0 && number <= std::numeric_limits<uint32_t>::max()))
    throw ScriptError(kScriptWrongType);
  return static_cast<uint32_t>(number);
}

ScriptValue ReadDouble(double number) {
  const bool isWhole = number >= std::numeric_limits<int32_t>::min() &&
                       number <= std::numeric_limits<int32_t>::max() &&
                       std::floor(number) == number;
  if (isWhole) return static_cast<int32_t>(number);
  return number;
}

ScriptValue ReadObject(const QJsonObject& json, const ScriptObjectTable& objects,
                       const ScriptFunctionMaker& makeFunction) {
  if (json.contains(kHeldObject)) return objects.Find(ReadNumber(json[kHeldObject]));
  if (json.contains(kFunction)) return makeFunction(ReadNumber(json[kFunction]));
  if (json.contains(kOddNumber)) {
    const QString text = json[kOddNumber].toString();
    if (text.isEmpty()) throw ScriptError(kScriptWrongType);
    const double infinity = std::numeric_limits<double>::infinity();
    if (text == QLatin1String("NaN")) return std::numeric_limits<double>::quiet_NaN();
    return text.startsWith(QLatin1Char('-')) ? -infinity : infinity;
  }
  if (!json[kPlainObject].isObject()) throw ScriptError(kScriptWrongType);
  const QJsonObject plain = json[kPlainObject].toObject();
  std::vector<std::pair<std::string, ScriptValue>> members;
  for (auto member = plain.begin(); member != plain.end(); ++member)
    members.emplace_back(ToUtf8(member.key()),
                         ReadScriptValue(member.value(), objects, makeFunction));
  return std::make_shared<ScriptRecord>(std::move(members));
}

QJsonArray WriteNames(const std::vector<std::string_view>& names) {
  QJsonArray json;
  for (const std::string_view name : names) json.append(FromUtf8(name));
  return json;
}

QJsonValue WriteDouble(double number) {
  if (std::isfinite(number)) return number;
  const char* const text = std::isnan(number) ? "NaN" : number < 0 ? "-Infinity" : "Infinity";
  return QJsonObject{{kOddNumber, QLatin1String(text)}};
}

QJsonObject WriteCopy(ScriptObject& object, ScriptObjectTable& objects) {
  QJsonObject members;
  for (const std::string_view name : object.PropertyNames())
    members.insert(FromUtf8(name),
                   WriteScriptValue(object.Get(name).value_or(ScriptValue()), objects));
  return {{kPlainObject, members}};
}

}  // namespace

uint32_t ScriptObjectTable::Add(ScriptObjectPtr object) {
  m_objects.emplace(++m_last, std::move(object));
  return m_last;
}

const ScriptObjectPtr& ScriptObjectTable::Find(uint32_t number) const {
  const auto found = m_objects.find(number);
  if (found == m_objects.end()) throw ScriptError(kScriptFailed);
  return found->second;
}

ScriptValue ReadScriptValue(const QJsonValue& json, const ScriptObjectTable& objects,
                            const ScriptFunctionMaker& makeFunction) {
  switch (json.type()) {
    case QJsonValue::Null:
    case QJsonValue::Undefined:
      return {};
    case QJsonValue::Bool:
      return json.toBool();
    case QJsonValue::Double:
      return ReadDouble(json.toDouble());
    case QJsonValue::String:
      return ToUtf8(json.toString());
    case QJsonValue::Array:
      return ReadScriptValues(json, objects, makeFunction);
    case QJsonValue::Object:
      return ReadObject(json.toObject(), objects, makeFunction);
  }
  throw ScriptError(kScriptWrongType);
}

ScriptArray ReadScriptValues(const QJsonValue& json, const ScriptObjectTable& objects,
                             const ScriptFunctionMaker& makeFunction) {
  ScriptArray values;
  const QJsonArray array = json.toArray();
  values.reserve(static_cast<size_t>(array.size()));
  for (const QJsonValue value : array)
    values.push_back(ReadScriptValue(value, objects, makeFunction));
  return values;
}

QJsonValue WriteScriptValue(const ScriptValue& value, ScriptObjectTable& objects) {
  switch (value.Type()) {
    case ScriptType::kNull:
    case ScriptType::kFunction:
      return QJsonValue::Null;
    case ScriptType::kBoolean:
      return value.AsBoolean();
    case ScriptType::kInteger:
      return value.AsInteger();
    case ScriptType::kDouble:
      return WriteDouble(value.AsNumber());
    case ScriptType::kText:
      return FromUtf8(value.AsText());
    case ScriptType::kArray: {
      QJsonArray array;
      for (const ScriptValue& each : value.AsArray()) array.append(WriteScriptValue(each, objects));
      return array;
    }
    case ScriptType::kObject:
      break;
  }
  const ScriptObjectPtr& object = value.AsObject();
  if (object->IsCopied()) return WriteCopy(*object, objects);
  QJsonObject json{{kHeldObject, static_cast<double>(objects.Add(object))}};
  json.insert(kProperties, WriteNames(object->PropertyNames()));
  json.insert(kMethods, WriteNames(object->MethodNames()));
  return json;
}
