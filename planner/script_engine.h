#pragma once

#include <string_view>

#include "planner/script_value.h"

/// The engine that runs the page. The program calls the page's functions through it and gives it
/// the object that the page finds as `window.external`. Everything on the window's thread.
class IScriptEngine {
 public:
  virtual ~IScriptEngine() = default;

  /// Calls a function of the page, waits, and gives its result. Never used from inside a call that
  /// the page makes. Throws ScriptError: kScriptUnknownName without such a function, kScriptFailed
  /// when it throws.
  virtual ScriptValue Call(std::string_view function, ScriptArguments arguments) = 0;

  /// Calls a function whose result nobody wants. An engine that cannot call at once keeps the calls
  /// in their order, and behind what the page's present call into the program returns. May throw as
  /// `Call` does.
  virtual void Send(std::string_view function, ScriptArguments arguments) = 0;

  /// As `Send`; a page without the function is fine.
  virtual void Offer(std::string_view function, ScriptArguments arguments) = 0;
};
