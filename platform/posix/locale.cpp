#include "platform/locale.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string_view>

#include <langinfo.h>
#include <locale.h>

#include "base/languages.h"

namespace {

// The first of the variables that decide a category, in the order in which the system asks them.
std::string_view LocaleName(const char* category) {
  for (const char* variable : {"LC_ALL", category, "LANG"}) {
    const char* value = std::getenv(variable);
    if (value && *value) return value;
  }
  return "C";
}

}  // namespace

uint32_t PrimaryLanguage() {
  const std::string_view locale = LocaleName("LC_MESSAGES");
  const std::string_view name = locale.substr(0, locale.find_first_of("_.@"));
  const auto* const found = std::ranges::find(kLanguages, name, &LanguageRow::code);
  return found == std::end(kLanguages) ? 0 : static_cast<uint32_t>(found->language);
}

NumberSeparators LocaleSeparators() {
  NumberSeparators separators{".", ","};
  const locale_t locale = newlocale(LC_NUMERIC_MASK, "", nullptr);
  if (locale) {
    const std::string_view decimal = nl_langinfo_l(RADIXCHAR, locale);
    if (!decimal.empty()) separators.decimal = decimal;
    freelocale(locale);
  }
  if (separators.decimal == ",") separators.list = ";";
  return separators;
}
