#include "core/localized_text.h"

#include <map>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "resources/string_tables.h"

namespace {

const std::map<std::string, const StringTable*> kTables = {
    {"en", &kStringsEn}, {"fr", &kStringsFr}, {"de", &kStringsDe}, {"nl", &kStringsNl}};

std::vector<std::string> Placeholders(std::string_view text) {
  static const std::regex pattern("%[-+ 0]*[0-9]*(?:\\.[0-9]+)?[a-zA-Z%]");
  const std::string owned(text);
  std::vector<std::string> found;
  for (std::sregex_iterator i(owned.begin(), owned.end(), pattern), end; i != end; ++i)
    found.push_back(i->str());
  return found;
}

// What stands between the bars, where a text has bars: file patterns must be the same everywhere.
std::string_view BehindFirstBar(std::string_view text) {
  const size_t bar = text.find('|');
  return bar == text.npos ? std::string_view() : text.substr(bar);
}

TEST(StringTables, HoldTheSameNumbersRising) {
  ASSERT_GT(kStringsEn.count, 150u);
  for (const auto& [language, table] : kTables) {
    ASSERT_EQ(table->count, kStringsEn.count) << language;
    for (size_t i = 0; i < table->count; ++i) {
      EXPECT_EQ(table->begin[i].id, kStringsEn.begin[i].id) << language;
      EXPECT_FALSE(table->begin[i].text.empty()) << language << ' ' << table->begin[i].id;
    }
  }
}

TEST(StringTables, HoldTheSamePlaceholdersInTheSameOrder) {
  for (const auto& [language, table] : kTables) {
    for (size_t i = 0; i < table->count; ++i) {
      const NumberedString& english = kStringsEn.begin[i];
      EXPECT_EQ(Placeholders(table->begin[i].text), Placeholders(english.text))
          << language << ' ' << english.id;
      EXPECT_EQ(BehindFirstBar(table->begin[i].text), BehindFirstBar(english.text))
          << language << ' ' << english.id;
    }
  }
}

TEST(StringTables, FindByNumber) {
  EXPECT_EQ(kStringsEn.Find(109), "The file cannot be write.");
  EXPECT_EQ(kStringsEn.Find(0), "");
  EXPECT_EQ(kStringsEn.Find(99999), "");
}

TEST(LocalizedText, FollowsTheLanguage) {
  EXPECT_EQ(LoadTextUtf8(103), "Latitude");
  SetLanguage(ELanguage::kGerman);
  EXPECT_EQ(CurrentLanguage(), ELanguage::kGerman);
  EXPECT_EQ(LoadTextUtf8(103), "Breitengrad");
  SetLanguage(ELanguage::kFrench);
  EXPECT_EQ(LoadTextUtf8(1005), "Oui");
  SetLanguage(ELanguage::kDutch);
  EXPECT_EQ(LoadText(1006), u"Nee");
  SetLanguage(ELanguage::kEnglish);
  EXPECT_EQ(LoadText(104), u"Name");
}

}  // namespace
