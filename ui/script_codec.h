#pragma once

#include <QJsonValue>
#include <cstdint>
#include <functional>
#include <map>

#include "planner/script_value.h"

/// Objects of the program that the page holds, by the numbers under which it names them. They stay
/// until the page says that it holds them no more, or goes itself.
class ScriptObjectTable {
 public:
  uint32_t Add(ScriptObjectPtr object);
  /// Throws ScriptError kScriptFailed for a number that stands for nothing.
  const ScriptObjectPtr& Find(uint32_t number) const;
  void Release(uint32_t number) { m_objects.erase(number); }
  void Clear() { m_objects.clear(); }
  size_t Count() const { return m_objects.size(); }

 private:
  std::map<uint32_t, ScriptObjectPtr> m_objects;
  uint32_t m_last = 0;
};

/// Makes the program's side of a function that the page has given with this number.
using ScriptFunctionMaker = std::function<ScriptFunctionPtr(uint32_t number)>;

// Values as they travel: null, booleans, numbers, texts and arrays as JSON has them. {"o": members}
// is a plain object of the page, {"f": number} a function of it, {"h": number} an object of the
// program, which on the way to the page also tells its properties "p" and methods "m", and
// {"n": text} a number that JSON does not have.

/// Throws ScriptError kScriptWrongType for what is none of these.
ScriptValue ReadScriptValue(const QJsonValue& json, const ScriptObjectTable& objects,
                            const ScriptFunctionMaker& makeFunction);
/// The values of an array.
ScriptArray ReadScriptValues(const QJsonValue& json, const ScriptObjectTable& objects,
                             const ScriptFunctionMaker& makeFunction);

/// Functions of the page do not travel back; they become null.
QJsonValue WriteScriptValue(const ScriptValue& value, ScriptObjectTable& objects);
