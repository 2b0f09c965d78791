#include "app/command_line.h"

#include <gtest/gtest.h>

namespace {

using Tokens = std::vector<WideString>;

TEST(ParseCommandLine, CutsAtBlanksAndQuotes) {
  EXPECT_EQ(ParseCommandLine(u"prog  a   b \r ", false), (Tokens{u"a", u"b"}));
  EXPECT_EQ(ParseCommandLine(u"prog a", true), (Tokens{u"prog", u"a"}));
  EXPECT_EQ(ParseCommandLine(u"\"C:\\my prog\" \"a b\" itn", false), (Tokens{u"a b", u"itn"}));
  EXPECT_EQ(ParseCommandLine(u"prog \"a b\"itn", false), (Tokens{u"a b", u"itn"}));
  EXPECT_EQ(ParseCommandLine(u"prog \"open end", false), (Tokens{u"open end"}));
  EXPECT_EQ(ParseCommandLine(u"prog a\"b c", false), (Tokens{u"a\"b", u"c"}));
  EXPECT_EQ(ParseCommandLine(u"prog \"\" b", false), (Tokens{u"", u"b"}));
  EXPECT_EQ(ParseCommandLine(u"prog", false), Tokens{});
  EXPECT_EQ(ParseCommandLine(u"", false), Tokens{});
  EXPECT_EQ(ParseCommandLine(u"   ", true), Tokens{});
}

TEST(LanguageTokens, AreFoundAnywhereAndDropped) {
  Tokens tokens{u"a.itn", u"xLANG_x", u"ov2", u"LANG_GERMAN"};
  EXPECT_EQ(FindLanguageToken(tokens), u"xLANG_x");
  DropLanguageTokens(tokens);
  EXPECT_EQ(tokens, (Tokens{u"a.itn", u"ov2"}));
  EXPECT_EQ(FindLanguageToken(tokens), u"");
}

TEST(ChooseLanguage, PrefersTheTokenThenTheSettingThenTheLocale) {
  EXPECT_EQ(ChooseLanguage(u"LANG_FRENCH", 0x07, 0x13), Language::kFrench);
  EXPECT_EQ(ChooseLanguage(u"LANG_ENGLISH", 0x07, 0x13), Language::kEnglish);
  EXPECT_EQ(ChooseLanguage(u"LANG_DUTCH", 0x07, 0), Language::kDutch);
  EXPECT_EQ(ChooseLanguage(u"LANG_GERMAN", 0, 0), Language::kGerman);
  EXPECT_EQ(ChooseLanguage(u"LANG_KLINGON", 0x07, 0x13), Language::kEnglish);
  EXPECT_EQ(ChooseLanguage(u"", 0x07, 0x13), Language::kGerman);
  EXPECT_EQ(ChooseLanguage(u"", 0x99, 0x13), Language::kEnglish);
  EXPECT_EQ(ChooseLanguage(u"", 0, 0x13), Language::kDutch);
  EXPECT_EQ(ChooseLanguage(u"", 0, 0x11), Language::kEnglish);
}

}  // namespace
