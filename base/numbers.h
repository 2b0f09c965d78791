#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/wide_string.h"

// Text to number has the result of a stream extraction in the classic locale: leading white space
// is skipped, the longest valid prefix counts, 0 when there is none, too large values are clamped.

/// A signed whole number. Text that begins with "0x" (exactly so) is hexadecimal behind it.
int32_t ParseWhole(std::string_view text);
int32_t ParseWhole(std::u16string_view text);

/// The same in 64 bits; `ParseId` wraps instead of clamping, so that "-1" and the largest unsigned
/// number are the same identifier.
int64_t ParseWhole64(std::string_view text);
uint64_t ParseId(std::string_view text);

/// A real number. Of text that begins with "0x" these two characters are skipped, and the rest is
/// read as decimal.
double ParseReal(std::string_view text);
double ParseReal(std::u16string_view text);
/// The same of text that ends with a zero byte.
double ParseReal(const char* text);

/// As `ParseReal`, with false and `value` untouched when no number stands at the start.
bool TryParseReal(std::string_view text, double& value);

/// Truncates toward zero to 32 bits. What does not fit, and no number at all, gives -2147483648.
int32_t TruncateToInt32(double value);

/// Truncates toward zero to 32 bits without a sign; what does not fit gives 0.
uint32_t TruncateToUint32(double value);

/// 1/100000 degree of line formats and their kin: value × 100000, its floor, plus one half,
/// truncated toward zero. Devices rely on the asymmetry that this gives below zero.
int32_t ToFixedPoint(double degrees);

/// Where a number becomes text: digits from the end of `digits` on, or all of `longer` for what
/// finds no room there.
struct NumberRoom {
  std::array<char, 32> digits;
  std::string longer;
};

/// `value` as printf's "%.*f" writes it: exact value, ties to even, never an exponent. The text
/// lies in `room`.
std::string_view FixedText(NumberRoom& room, double value, int decimals);

/// `value` as printf's "%0*lld" writes it: at least `width` characters, the sign in front of the
/// zeros that fill up. The text lies in `room`.
std::string_view WholeText(NumberRoom& room, int64_t value, size_t width = 0);

/// Appends the `FixedText` of `value`.
void AppendFixed(std::string& text, double value, int decimals);

/// The same as a text of its own ("2.352200" with six decimals).
std::string ToFixedString(double value, int decimals);

/// Appends the `WholeText` of `value`.
void AppendWhole(std::string& text, int64_t value, size_t width = 0);
