#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "base/localized_text.h"

/// A language of the program, and what it is called where.
struct LanguageRow {
  Language language;
  std::string_view code;     ///< in the names of locales
  std::u16string_view word;  ///< on the command line
  std::string_view name;     ///< in the language itself, UTF-8
};

/// All of them, by their own names.
inline constexpr LanguageRow kLanguages[] = {
    {Language::kGerman, "de", u"LANG_GERMAN", "Deutsch"},
    {Language::kEnglish, "en", u"LANG_ENGLISH", "English"},
    {Language::kFrench, "fr", u"LANG_FRENCH", "Français"},
    {Language::kDutch, "nl", u"LANG_DUTCH", "Nederlands"},
};

/// The number of a language in the settings.
constexpr int32_t NumberOf(Language language) { return static_cast<int32_t>(language); }

inline constexpr int32_t kHighestLanguage =
    NumberOf(std::ranges::max_element(kLanguages, {}, &LanguageRow::language)->language);
