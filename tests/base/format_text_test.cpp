#include "base/format_text.h"

#include <gtest/gtest.h>

#include "base/text_ids.h"
#include "resources/string_tables.h"

namespace {

bool HasNumber(std::string_view text) {
  return text.find("%d") != text.npos || text.find("%'d") != text.npos;
}

TEST(FormatText, FillsThePlaceholders) {
  EXPECT_EQ(FormatText(kTextPointCount, 12), "12 points");
  EXPECT_EQ(FormatText(kTextColumn, 3), "Column 03");
  EXPECT_EQ(FormatText(kTextWrongValue, "maybe", "AUTO_CALC", "0, 1"),
            "The value \"maybe\" of AUTO_CALC is not allowed. Allowed: 0, 1");
}

TEST(FormatText, ChoosesTheFormByTheNumber) {
  EXPECT_EQ(FormatText(kTextPointCount, 1), "1 point");
  EXPECT_EQ(FormatText(kTextPointCount, 0), "0 points");
  EXPECT_EQ(FormatText(kTextDetailsLost, "a", 1, 2, 0.5),
            "a: 1 comment and 2 altitudes dropped; positions move by up to 0.5 m");
  SetLanguage(Language::kFrench);
  EXPECT_EQ(FormatText(kTextPointCount, 0), "0 point");
  EXPECT_EQ(FormatText(kTextPointCount, 2), "2 points");
  SetLanguage(Language::kEnglish);
}

TEST(FormatText, HasTheDecimalSignOfTheLanguage) {
  SetLanguage(Language::kGerman);
  EXPECT_EQ(FormatText(kTextNothingLost, "3.5.itn", 2, 1.25),
            "3.5.itn: gepr\u00FCft: alle 2 Wegpunkte sind unver\u00E4ndert, auf 1,2 m genau");
  EXPECT_EQ(LocalNumber("12.5km"), "12,5km");
  SetLanguage(Language::kEnglish);
  EXPECT_EQ(LocalNumber("12.5km"), "12.5km");
}

TEST(FormatText, GroupsThousandsWhereTheTextWantsIt) {
  const auto inLanguage = [](Language language, uint64_t count) {
    SetLanguage(language);
    std::string text = FormatText(kTextSymbolCount, count);
    SetLanguage(Language::kEnglish);
    return text;
  };
  EXPECT_EQ(inLanguage(Language::kEnglish, 0), "0 symbols");
  EXPECT_EQ(inLanguage(Language::kEnglish, 1), "1 symbol");
  EXPECT_EQ(inLanguage(Language::kEnglish, 999), "999 symbols");
  EXPECT_EQ(inLanguage(Language::kEnglish, 1000), "1,000 symbols");
  EXPECT_EQ(inLanguage(Language::kEnglish, 1234567), "1,234,567 symbols");
  EXPECT_EQ(inLanguage(Language::kFrench, 0), "0 symbole");
  EXPECT_EQ(inLanguage(Language::kFrench, 12345), "12\u202f345 symboles");
  EXPECT_EQ(inLanguage(Language::kGerman, 1), "1 Symbol");
  EXPECT_EQ(inLanguage(Language::kGerman, 12345), "12.345 Symbole");
  EXPECT_EQ(inLanguage(Language::kDutch, 2), "2 symbolen");
}

// A choice without its two forms could not be made.
TEST(StringTables, HaveTwoFormsInEveryChoice) {
  for (const StringTable* table : {&kStringsEn, &kStringsFr, &kStringsDe, &kStringsNl}) {
    for (size_t i = 0; i < table->count; ++i) {
      const std::string_view text = table->begin[i].text;
      for (size_t start = text.find('{'); start != text.npos; start = text.find('{', start + 1)) {
        const size_t middle = text.find('~', start);
        const size_t end = text.find('}', start);
        ASSERT_NE(end, text.npos) << text;
        EXPECT_LT(middle, end) << text;
        EXPECT_TRUE(HasNumber(text.substr(start, middle - start))) << text;
        EXPECT_TRUE(HasNumber(text.substr(middle, end - middle))) << text;
      }
    }
  }
}

TEST(FormatText, ShowsControlCharactersAndBrokenBytesAsReplacements) {
  EXPECT_EQ(FormatText(kTextReason, "\x1B[2J \xC3\xA9 \xFF"), "Reason: \uFFFD[2J \u00E9 \uFFFD");
}

TEST(Printable, KeepsTextAndReplacesCommands) {
  EXPECT_EQ(Printable("Gr\u00FC\u00DFe"), "Gr\u00FC\u00DFe");
  EXPECT_EQ(Printable("a\nb\x7F\u0085"), "a\uFFFDb\uFFFD\uFFFD");
}

}  // namespace
