#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "model/point.h"
#include "planner/script_value.h"

/// The arguments of one call from the page. Readers throw ScriptError kScriptWrongType for values
/// of another type. Indices count from 0.
class ExternalArguments {
 public:
  /// Throws kScriptTooFewArguments for fewer than `needed`.
  ExternalArguments(ScriptArguments arguments, size_t needed);

  size_t Count() const { return m_arguments.size(); }
  /// Absent, or null.
  bool IsAbsent(size_t index) const;
  const ScriptValue& At(size_t index) const { return m_arguments[index]; }
  const std::string& Text(size_t index) const { return At(index).AsText(); }
  int32_t Integer(size_t index) const { return At(index).AsInteger(); }
  bool Boolean(size_t index) const { return At(index).AsBoolean(); }
  std::string TextOr(size_t index, std::string_view absent) const;
  int32_t IntegerOr(size_t index, int32_t absent) const;
  ScriptFunctionPtr FunctionOrNull(size_t index) const;
  /// An object with numbers as `lat` and `lng`. Throws kScriptUnknownName without them. Positions
  /// off the earth come to its edge; kScriptWrongType for numbers that are none.
  CGpsPoint Position(size_t index) const;
  /// The same with `alt`, `address` and `snippet` where the object has them.
  CGpsPoint Point(size_t index) const;

 private:
  ScriptArguments m_arguments;
};
