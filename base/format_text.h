#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include <fmt/printf.h>

#include "base/localized_text.h"

/// Text that is safe to show: control characters, with which a file could command the terminal, and
/// bytes that are no text come out as U+FFFD.
std::string Printable(std::string_view text);

/// An argument of a text as it may be shown.
template <typename Value>
auto ShownValue(const Value& value) {
  if constexpr (std::is_convertible_v<Value, std::string_view>)
    return Printable(value);
  else
    return value;
}

/// The text of a number in the current language with its placeholders filled as printf does, in
/// UTF-8. The arguments must suit the text's placeholders; texts among them are made `Printable`.
template <typename... Args>
std::string FormatText(uint32_t textId, const Args&... args) {
  const std::string_view format = LoadTextUtf8(textId);
  return fmt::sprintf(fmt::string_view(format.data(), format.size()), ShownValue(args)...);
}
