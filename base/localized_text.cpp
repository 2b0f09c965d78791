#include "base/localized_text.h"

#include <atomic>

#include "base/text.h"
#include "resources/string_tables.h"

namespace {

std::atomic<Language> currentLanguage = Language::kEnglish;

const StringTable& TableOf(Language language) {
  switch (language) {
    case Language::kFrench:
      return kStringsFr;
    case Language::kGerman:
      return kStringsDe;
    case Language::kDutch:
      return kStringsNl;
    case Language::kEnglish:
      break;
  }
  return kStringsEn;
}

}  // namespace

void SetLanguage(Language language) { currentLanguage = language; }

Language CurrentLanguage() { return currentLanguage; }

std::string_view LoadTextUtf8(uint32_t id) { return TableOf(currentLanguage).Find(id); }

WideString LoadText(uint32_t id) { return Utf8ToWide(LoadTextUtf8(id)); }
