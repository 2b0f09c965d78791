#pragma once

#include <cstddef>
#include <string>

// Numbers of a fixed width, as text formats in columns want them.

/// Appends `value` as printf's "%0*.*f" does: zeros behind the sign up to `width` characters. What
/// is no finite number is filled up with blanks in front.
void AppendPaddedFixed(std::string& text, double value, int decimals, size_t width);

/// The same with a sign in front of positive numbers too, "%+0*.*f".
void AppendSignedFixed(std::string& text, double value, int decimals, size_t width);
