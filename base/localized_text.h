#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/wide_string.h"

/// Languages of the program, by the primary language identifiers of Windows.
enum class Language : uint32_t { kGerman = 0x07, kEnglish = 0x09, kFrench = 0x0C, kDutch = 0x13 };

/// The language of all texts of this process; English at start. Any thread may load texts, also
/// while the language changes.
void SetLanguage(Language language);
Language CurrentLanguage();

/// The text of a number in the current language, as UTF-8; empty for an unknown number. The text
/// lives as long as the process.
std::string_view LoadTextUtf8(uint32_t id);

/// The same as wide text.
WideString LoadText(uint32_t id);
