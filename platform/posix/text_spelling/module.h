#pragma once

#include "platform/text_speller.h"

// The module that spells text; hardly any conversion needs the library behind it. Module and
// program are always built together.

inline constexpr char kTextSpellingModule[] = "corvane_text_spelling";
/// Name of the function that does what `LoadTextSpeller` does.
inline constexpr char kTextSpellingModuleEntry[] = "CorvaneTextSpeller";
using TextSpellingModuleEntry = const TextSpeller* (*)();
