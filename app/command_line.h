#pragma once

#include <string_view>
#include <vector>

#include "base/localized_text.h"
#include "base/wide_string.h"

/// Cuts a command line into tokens at blanks. A token that begins with a double quote runs to the
/// next one; there is no other escape. Without `keepProgramName` the first token is left out.
std::vector<WideString> ParseCommandLine(std::u16string_view commandLine, bool keepProgramName);

/// The first token that contains "LANG_", which names the language; empty when there is none.
WideString FindLanguageToken(const std::vector<WideString>& tokens);

/// Removes every token that contains "LANG_".
void DropLanguageTokens(std::vector<WideString>& tokens);

/// The language for this run: of the token (English when it names none), else of the stored
/// identifier unless that is 0, else of the user's locale; English where nothing fits.
Language ChooseLanguage(std::u16string_view token, uint32_t storedLanguage,
                        uint32_t localeLanguage);
