#include "platform/locale.h"

#include <cstdlib>
#include <string_view>

#include <langinfo.h>
#include <locale.h>

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
  if (name == "de") return 0x07;
  if (name == "en") return 0x09;
  if (name == "fr") return 0x0C;
  if (name == "nl") return 0x13;
  return 0;
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
