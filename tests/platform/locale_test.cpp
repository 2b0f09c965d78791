#include "platform/locale.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace {

TEST(Locale, TellsTheLanguageOfTheEnvironment) {
  unsetenv("LC_MESSAGES");
  unsetenv("LANG");
  const struct {
    const char* name;
    uint32_t language;
  } kCases[] = {{"fr_CH.UTF-8", 0x0C},
                {"de", 0x07},
                {"nl_BE", 0x13},
                {"en_GB.UTF-8", 0x09},
                {"ja_JP.UTF-8", 0},
                {"nld@euro", 0},
                {"nl@euro", 0x13},
                {"den_CA", 0},
                {"C", 0},
                {"", 0}};
  for (const auto& expected : kCases) {
    setenv("LC_ALL", expected.name, 1);
    EXPECT_EQ(PrimaryLanguage(), expected.language) << expected.name;
  }
  unsetenv("LC_ALL");
  setenv("LANG", "de_DE", 1);
  EXPECT_EQ(PrimaryLanguage(), 0x07u);
  setenv("LC_MESSAGES", "fr_FR", 1);
  EXPECT_EQ(PrimaryLanguage(), 0x0Cu);
  unsetenv("LC_MESSAGES");
  unsetenv("LANG");
}

TEST(Locale, SeparatesListsByCommaWithoutADecimalComma) {
  setenv("LC_ALL", "C", 1);
  EXPECT_EQ(LocaleSeparators().decimal, ".");
  EXPECT_EQ(LocaleSeparators().list, ",");
  unsetenv("LC_ALL");
}

}  // namespace
