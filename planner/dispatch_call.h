#pragma once

#include <memory>
#include <string>

#include "planner/script_engine.h"
#include "planner/script_value.h"

/// A prepared call of a script function: of one of the page's by its name, or of one that the page
/// has given. Script sees the arguments in the order in which they were pushed.
class CDispatchCall {
 public:
  /// `engine` must outlive the call; null stands for no page.
  CDispatchCall(IScriptEngine* engine, std::string_view function)
      : m_engine(engine), m_name(function) {}
  explicit CDispatchCall(ScriptFunctionPtr function) : m_function(std::move(function)) {}

  CDispatchCall& Push(ScriptValue value) & {
    m_arguments.push_back(std::move(value));
    return *this;
  }
  CDispatchCall&& Push(ScriptValue value) && {
    m_arguments.push_back(std::move(value));
    return std::move(*this);
  }

  /// Calls and gives the result. Throws ScriptError, kScriptNoPage without a page.
  ScriptValue Invoke() const;
  /// Calls a function of the page without waiting for its result.
  void Send() const;
  /// As `Send`, of a function that the page need not have.
  void Offer() const;

 private:
  IScriptEngine& Engine() const;

  IScriptEngine* m_engine = nullptr;
  std::string m_name;
  ScriptFunctionPtr m_function;
  ScriptArray m_arguments;
};
