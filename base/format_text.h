#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <fmt/printf.h>

#include "base/localized_text.h"

/// The text of a number in the current language with its placeholders filled, as UTF-8. The
/// arguments must suit the text's placeholders.
template <typename... Args>
std::string FormatText(uint32_t textId, const Args&... args) {
  const std::string_view format = LoadTextUtf8(textId);
  return fmt::sprintf(fmt::string_view(format.data(), format.size()), args...);
}
