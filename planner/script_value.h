#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "planner/script_error.h"

class ScriptFunction;
class ScriptObject;
class ScriptValue;

using ScriptArray = std::vector<ScriptValue>;
using ScriptArguments = std::span<const ScriptValue>;
using ScriptObjectPtr = std::shared_ptr<ScriptObject>;
using ScriptFunctionPtr = std::shared_ptr<ScriptFunction>;

/// What a value that crosses between program and page is. A script's number is an integer when it
/// is whole and fits 32 bits; its `undefined` is null.
enum class ScriptType { kNull, kBoolean, kInteger, kDouble, kText, kObject, kArray, kFunction };

/// A value that crosses between program and page. The readers throw ScriptError kScriptWrongType
/// for a value of another type.
class ScriptValue {
 public:
  ScriptValue() = default;
  // NOLINTBEGIN(google-explicit-constructor): whatever a script may be given is one.
  ScriptValue(bool value) : m_value(value) {}
  ScriptValue(int32_t value) : m_value(value) {}
  ScriptValue(uint32_t value);
  ScriptValue(double value) : m_value(value) {}
  ScriptValue(std::string text) : m_value(std::move(text)) {}
  ScriptValue(std::string_view text) : m_value(std::string(text)) {}
  ScriptValue(const char* text) : m_value(std::string(text)) {}
  ScriptValue(ScriptArray values) : m_value(std::move(values)) {}
  /// A null pointer is null.
  template <typename Object>
  requires std::is_convertible_v<Object*, ScriptObject*> ScriptValue(
      std::shared_ptr<Object> object) {
    if (object) m_value = ScriptObjectPtr(std::move(object));
  }
  template <typename Function>
  requires std::is_convertible_v<Function*, ScriptFunction*> ScriptValue(
      std::shared_ptr<Function> function) {
    if (function) m_value = ScriptFunctionPtr(std::move(function));
  }
  // NOLINTEND(google-explicit-constructor)

  ScriptType Type() const { return static_cast<ScriptType>(m_value.index()); }
  bool IsNull() const { return Type() == ScriptType::kNull; }

  bool AsBoolean() const { return Read<bool>(); }
  int32_t AsInteger() const { return Read<int32_t>(); }
  /// An integer or a double.
  double AsNumber() const;
  /// UTF-8.
  const std::string& AsText() const { return Read<std::string>(); }
  const ScriptObjectPtr& AsObject() const { return Read<ScriptObjectPtr>(); }
  const ScriptArray& AsArray() const { return Read<ScriptArray>(); }
  const ScriptFunctionPtr& AsFunction() const { return Read<ScriptFunctionPtr>(); }

 private:
  template <typename Type>
  const Type& Read() const {
    const Type* const value = std::get_if<Type>(&m_value);
    if (!value) throw ScriptError(kScriptWrongType);
    return *value;
  }

  // In the order of ScriptType.
  std::variant<std::monostate, bool, int32_t, double, std::string, ScriptObjectPtr, ScriptArray,
               ScriptFunctionPtr>
      m_value;
};

/// An object of the page as the program sees it, or one of the program's as the page sees it. Names
/// are compared with their case.
class ScriptObject {
 public:
  virtual ~ScriptObject() = default;
  /// The property; nothing when there is none of this name.
  virtual std::optional<ScriptValue> Get(std::string_view name) = 0;
  /// Changes a property. Throws kScriptUnknownName without one, kScriptNoSuchMember for one that
  /// can only be read, and kScriptWrongType.
  virtual void Put(std::string_view name, const ScriptValue& value);
  /// Calls a method. Throws kScriptUnknownName without one, and as the method does.
  virtual ScriptValue Invoke(std::string_view name, ScriptArguments arguments);
  /// The names of all properties, for an engine that lists them or copies the object.
  virtual std::vector<std::string_view> PropertyNames() const = 0;
  virtual std::vector<std::string_view> MethodNames() const { return {}; }
  /// True for one of nothing but values, of which an engine hands over a copy.
  virtual bool IsCopied() const { return false; }
};

/// A function of the page that the program may call later.
class ScriptFunction {
 public:
  virtual ~ScriptFunction() = default;
  /// Throws ScriptError when the function throws, or has gone with its page.
  virtual ScriptValue Call(ScriptArguments arguments) = 0;
};

/// A plain object: names and values in their order.
class ScriptRecord : public ScriptObject {
 public:
  ScriptRecord() = default;
  explicit ScriptRecord(std::vector<std::pair<std::string, ScriptValue>> members)
      : m_members(std::move(members)) {}

  std::optional<ScriptValue> Get(std::string_view name) override;
  void Put(std::string_view name, const ScriptValue& value) override;
  std::vector<std::string_view> PropertyNames() const override;
  bool IsCopied() const override { return true; }

 private:
  std::vector<std::pair<std::string, ScriptValue>> m_members;
};

/// A property of a page's object; null when there is none.
ScriptValue PropertyOf(ScriptObject& object, std::string_view name);
