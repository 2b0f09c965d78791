#include "base/localized_text.h"

#include <atomic>

#include "base/text.h"
#include "resources/string_tables.h"

namespace {

std::atomic<ELanguage> currentLanguage = ELanguage::kEnglish;

const StringTable& TableOf(ELanguage language) {
  switch (language) {
    case ELanguage::kFrench:
      return kStringsFr;
    case ELanguage::kGerman:
      return kStringsDe;
    case ELanguage::kDutch:
      return kStringsNl;
    case ELanguage::kEnglish:
      break;
  }
  return kStringsEn;
}

}  // namespace

void SetLanguage(ELanguage language) { currentLanguage = language; }

ELanguage CurrentLanguage() { return currentLanguage; }

std::string_view LoadTextUtf8(uint32_t id) { return TableOf(currentLanguage).Find(id); }

WideString LoadText(uint32_t id) { return Utf8ToWide(LoadTextUtf8(id)); }
