#pragma once

#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <duktape.h>

#include "planner/script_engine.h"

/// A JavaScript engine behind the planner's seam, with the program's object as `external`. What
/// the program throws reaches script as an Error with a `number`.
class DuktapeEngine : public IScriptEngine {
 public:
  DuktapeEngine() : m_context(duk_create_heap(nullptr, nullptr, nullptr, this, nullptr)) {}
  ~DuktapeEngine() override { duk_destroy_heap(m_context); }
  DuktapeEngine(const DuktapeEngine&) = delete;
  DuktapeEngine& operator=(const DuktapeEngine&) = delete;

  /// Puts an object of the program's under a global name.
  void SetGlobal(const char* name, const ScriptObjectPtr& object) {
    PushObject(object);
    duk_put_global_string(m_context, name);
  }

  /// Runs a script and gives the value of its last expression. Throws ScriptError.
  ScriptValue Run(const std::string& script) {
    const bool failed = duk_peval_lstring(m_context, script.data(), script.size()) != 0;
    return TakeResult(failed);
  }

  ScriptValue Call(std::string_view function, ScriptArguments arguments) override {
    duk_push_global_object(m_context);
    duk_get_prop_lstring(m_context, -1, function.data(), function.size());
    duk_remove(m_context, -2);
    if (!duk_is_function(m_context, -1)) {
      duk_pop(m_context);
      throw ScriptError(kScriptUnknownName);
    }
    return CallTop(arguments);
  }
  void Send(std::string_view function, ScriptArguments arguments) override {
    Call(function, arguments);
  }
  void Offer(std::string_view function, ScriptArguments arguments) override {
    try {
      Call(function, arguments);
    } catch (const ScriptError& failure) {
      if (failure.number != kScriptUnknownName) throw;
    }
  }

 private:
  // A function of the script's, kept from its garbage collector.
  class Function : public ScriptFunction {
   public:
    Function(DuktapeEngine& engine, std::string key) : m_engine(engine), m_key(std::move(key)) {}
    ScriptValue Call(ScriptArguments arguments) override {
      duk_push_global_stash(m_engine.m_context);
      duk_get_prop_string(m_engine.m_context, -1, m_key.c_str());
      duk_remove(m_engine.m_context, -2);
      return m_engine.CallTop(arguments);
    }

   private:
    DuktapeEngine& m_engine;
    std::string m_key;
  };

  static DuktapeEngine& Of(duk_context* context) {
    duk_memory_functions functions;
    duk_get_memory_functions(context, &functions);
    return *static_cast<DuktapeEngine*>(functions.udata);
  }

  ScriptValue CallTop(ScriptArguments arguments) {
    for (const ScriptValue& argument : arguments) Push(argument);
    return TakeResult(duk_pcall(m_context, static_cast<duk_idx_t>(arguments.size())) != 0);
  }

  ScriptValue TakeResult(bool failed) {
    if (failed) {
      const std::string text = duk_safe_to_string(m_context, -1);
      duk_pop(m_context);
      throw ScriptError(kScriptFailed, text);
    }
    ScriptValue value = Get(-1);
    duk_pop(m_context);
    return value;
  }

  void Push(const ScriptValue& value) {
    switch (value.Type()) {
      case ScriptType::kNull:
        duk_push_null(m_context);
        break;
      case ScriptType::kBoolean:
        duk_push_boolean(m_context, value.AsBoolean());
        break;
      case ScriptType::kInteger:
      case ScriptType::kDouble:
        duk_push_number(m_context, value.AsNumber());
        break;
      case ScriptType::kText:
        duk_push_lstring(m_context, value.AsText().data(), value.AsText().size());
        break;
      case ScriptType::kObject:
        PushObject(value.AsObject());
        break;
      case ScriptType::kArray: {
        const duk_idx_t array = duk_push_array(m_context);
        duk_uarridx_t index = 0;
        for (const ScriptValue& element : value.AsArray()) {
          Push(element);
          duk_put_prop_index(m_context, array, index++);
        }
        break;
      }
      case ScriptType::kFunction:
        duk_push_null(m_context);
        break;
    }
  }

  // Objects of the program are proxies, so that every read asks the program.
  void PushObject(const ScriptObjectPtr& object) {
    m_objects.push_back(object);
    duk_get_global_string(m_context, "Proxy");
    duk_push_object(m_context);
    duk_push_uint(m_context, static_cast<duk_uint_t>(m_objects.size() - 1));
    duk_put_prop_string(m_context, -2, "__number");
    duk_push_object(m_context);
    duk_push_c_function(m_context, GetProperty, 2);
    duk_put_prop_string(m_context, -2, "get");
    duk_push_c_function(m_context, PutProperty, 3);
    duk_put_prop_string(m_context, -2, "set");
    duk_new(m_context, 2);
  }

  // Runs `action` and turns what it throws into an error of the script.
  template <typename Action>
  static duk_ret_t Guarded(duk_context* context, Action action) {
    uint32_t number = 0;
    std::string text;
    try {
      return action(Of(context));
    } catch (const ScriptError& failure) {
      number = failure.number;
      text = failure.what();
    }
    duk_push_error_object(context, DUK_ERR_ERROR, "%s", text.c_str());
    duk_push_int(context, static_cast<duk_int_t>(number));
    duk_put_prop_string(context, -2, "number");
    std::string().swap(text);  // the throw below jumps over destructors
    return duk_throw(context);
  }

  static ScriptObjectPtr ObjectAt(duk_context* context, duk_idx_t index) {
    duk_get_prop_string(context, index, "__number");
    const duk_uint_t number = duk_get_uint(context, -1);
    duk_pop(context);
    return Of(context).m_objects.at(number);
  }

  static duk_ret_t GetProperty(duk_context* context) {
    return Guarded(context, [context](DuktapeEngine& engine) -> duk_ret_t {
      const std::string name = duk_get_string_default(context, 1, "");
      if (name == "__number") {
        duk_get_prop_string(context, 0, "__number");
        return 1;
      }
      const ScriptObjectPtr object = ObjectAt(context, 0);
      for (const std::string_view method : object->MethodNames()) {
        if (method != name) continue;
        duk_push_c_function(context, CallMethod, DUK_VARARGS);
        duk_get_prop_string(context, 0, "__number");
        duk_put_prop_string(context, -2, "object");
        duk_push_string(context, name.c_str());
        duk_put_prop_string(context, -2, "method");
        return 1;
      }
      const std::optional<ScriptValue> value = object->Get(name);
      if (!value) throw ScriptError(kScriptUnknownName);
      engine.Push(*value);
      return 1;
    });
  }

  static duk_ret_t PutProperty(duk_context* context) {
    return Guarded(context, [context](DuktapeEngine& engine) -> duk_ret_t {
      ObjectAt(context, 0)->Put(duk_get_string_default(context, 1, ""), engine.Get(2));
      duk_push_true(context);
      return 1;
    });
  }

  static duk_ret_t CallMethod(duk_context* context) {
    return Guarded(context, [context](DuktapeEngine& engine) -> duk_ret_t {
      const duk_idx_t count = duk_get_top(context);
      ScriptArray arguments;
      for (duk_idx_t i = 0; i < count; ++i) arguments.push_back(engine.Get(i));
      duk_push_current_function(context);
      duk_get_prop_string(context, -1, "object");
      const ScriptObjectPtr object = engine.m_objects.at(duk_get_uint(context, -1));
      duk_get_prop_string(context, -2, "method");
      const std::string method = duk_get_string(context, -1);
      duk_set_top(context, count);
      engine.Push(object->Invoke(method, arguments));
      return 1;
    });
  }

  // A value of the script's. Plain objects are copied, functions kept.
  ScriptValue Get(duk_idx_t index) {
    const duk_idx_t place = duk_normalize_index(m_context, index);
    switch (duk_get_type(m_context, place)) {
      case DUK_TYPE_BOOLEAN:
        return duk_get_boolean(m_context, place) != 0;
      case DUK_TYPE_NUMBER: {
        const double number = duk_get_number(m_context, place);
        const bool isWhole = std::trunc(number) == number && std::abs(number) < 2147483648.0;
        return isWhole ? ScriptValue(static_cast<int32_t>(number)) : ScriptValue(number);
      }
      case DUK_TYPE_STRING: {
        duk_size_t size = 0;
        const char* const text = duk_get_lstring(m_context, place, &size);
        return std::string(text, size);
      }
      case DUK_TYPE_OBJECT:
        return GetObject(place);
      default:
        return {};
    }
  }

  ScriptValue GetObject(duk_idx_t place) {
    if (duk_is_function(m_context, place)) {
      const std::string key = "f" + std::to_string(++m_functions);
      duk_push_global_stash(m_context);
      duk_dup(m_context, place);
      duk_put_prop_string(m_context, -2, key.c_str());
      duk_pop(m_context);
      return std::make_shared<Function>(*this, key);
    }
    if (duk_is_array(m_context, place)) {
      ScriptArray values;
      for (duk_uarridx_t i = 0; i < duk_get_length(m_context, place); ++i) {
        duk_get_prop_index(m_context, place, i);
        values.push_back(Get(-1));
        duk_pop(m_context);
      }
      return values;
    }
    if (IsOwnObject(place)) return ObjectAt(m_context, place);
    auto record = std::make_shared<ScriptRecord>();
    duk_enum(m_context, place, DUK_ENUM_OWN_PROPERTIES_ONLY);
    while (duk_next(m_context, -1, 1)) {
      record->Put(duk_get_string(m_context, -2), Get(-1));
      duk_pop_2(m_context);
    }
    duk_pop(m_context);
    return record;
  }

  // The program's own objects, as they come back from a script.
  bool IsOwnObject(duk_idx_t place) {
    duk_get_prop_string(m_context, place, "__number");
    const bool isOurs = duk_is_number(m_context, -1) != 0;
    duk_pop(m_context);
    return isOurs;
  }

  duk_context* m_context;
  std::vector<ScriptObjectPtr> m_objects;
  size_t m_functions = 0;
};
