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

/// A number as `sprintf` writes it, with the decimal sign of the current language.
std::string LocalNumber(std::string number);

/// A whole number with the current language's mark between its thousands.
std::string GroupedNumber(std::string number);

/// Fills the placeholders of a text one after the other.
class TextFilling {
 public:
  explicit TextFilling(std::string_view format) : m_rest(format) {}

  template <typename Value>
  void Put(const Value& value) {
    if constexpr (std::is_integral_v<Value>) {
      std::string placeholder = NextPlaceholder(value == 1, value == 0);
      const bool isGrouped = std::erase(placeholder, '\'') > 0;
      const std::string number = fmt::sprintf(placeholder, value);
      m_text += isGrouped ? GroupedNumber(number) : number;
    } else if constexpr (std::is_floating_point_v<Value>) {
      m_text += LocalNumber(fmt::sprintf(NextPlaceholder(false, false), value));
    } else if constexpr (std::is_convertible_v<Value, std::string_view>) {
      m_text += fmt::sprintf(NextPlaceholder(false, false), Printable(value));
    } else {
      m_text += fmt::sprintf(NextPlaceholder(false, false), value);
    }
  }

  std::string Finish();

 private:
  std::string NextPlaceholder(bool isOne, bool isNone);
  void TakeLiteral();

  std::string m_rest;
  std::string m_text;
};

/// The text of a number in the current language with its placeholders filled as printf does, in
/// UTF-8. The arguments must suit the text's placeholders; texts among them are made `Printable`.
///
/// "{%d stop is~%d stops are}" has the form for one and that for several; the first number in it
/// decides, which must be its first placeholder. "%'d" is a number in groups of thousands.
template <typename... Args>
std::string FormatText(uint32_t textId, const Args&... args) {
  TextFilling filling(LoadTextUtf8(textId));
  (filling.Put(args), ...);
  return filling.Finish();
}
