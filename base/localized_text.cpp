#include "base/localized_text.h"

#include <atomic>

#include "base/text.h"
#include "base/text_ids.h"
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

// Nothing counts as one in French.
bool IsSingular(uint64_t count) {
  return count == 1 || (count == 0 && currentLanguage.load() == Language::kFrench);
}

std::string GroupedNumber(uint64_t number) {
  constexpr size_t kGroup = 3;
  std::string text = std::to_string(number);
  const std::string_view separator = LoadTextUtf8(kTextThousandsSeparator);
  for (size_t end = text.size(); end > kGroup; end -= kGroup) text.insert(end - kGroup, separator);
  return text;
}

}  // namespace

void SetLanguage(Language language) { currentLanguage = language; }

Language CurrentLanguage() { return currentLanguage; }

std::string_view LoadTextUtf8(uint32_t id) { return TableOf(currentLanguage).Find(id); }

WideString LoadText(uint32_t id) { return Utf8ToWide(LoadTextUtf8(id)); }

std::string CountText(uint32_t textId, uint64_t count) {
  constexpr std::string_view kNumber = "%s";
  std::string text(LoadTextUtf8(IsSingular(count) ? textId : textId + 1));
  const size_t place = text.find(kNumber);
  if (place != std::string::npos) text.replace(place, kNumber.size(), GroupedNumber(count));
  return text;
}
