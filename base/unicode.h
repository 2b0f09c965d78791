#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// One code point taken from encoded text.
struct DecodedCodePoint {
  char32_t codePoint;  ///< only meaningful when `valid`
  uint32_t length;     ///< code units consumed: 1 to 4 in UTF-8, 1 or 2 in UTF-16
  bool valid;          ///< false: the unit at the position starts no character; `length` is then 1
};

/// Decodes the character of UTF-8 `text` at `position`, which must lie inside. Overlong forms,
/// surrogates and values above U+10FFFF are invalid.
DecodedCodePoint DecodeUtf8(std::string_view text, size_t position);

/// Decodes the character of UTF-16 `text` at `position`, which must lie inside. A surrogate
/// without its partner is invalid.
DecodedCodePoint DecodeUtf16(std::u16string_view text, size_t position);

/// Appends `codePoint` (at most U+10FFFF) in UTF-8.
void AppendUtf8(std::string& text, char32_t codePoint);

/// Appends `codePoint` (at most U+10FFFF) in UTF-16.
void AppendUtf16(std::u16string& text, char32_t codePoint);
