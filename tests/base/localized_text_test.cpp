#include "base/localized_text.h"

#include <algorithm>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/text_ids.h"
#include "resources/string_tables.h"

namespace {

const std::map<std::string, const StringTable*> kTables = {
    {"en", &kStringsEn}, {"fr", &kStringsFr}, {"de", &kStringsDe}, {"nl", &kStringsNl}};

// The conversions of printf: a "%", flags, width and precision, and a letter or another "%".
std::vector<std::string> Placeholders(std::string_view text) {
  std::vector<std::string> found;
  for (size_t start = text.find('%'); start < text.size(); start = text.find('%', start)) {
    const size_t end =
        std::min(text.find_first_not_of("-+ '0123456789.", start + 1), text.size() - 1);
    found.emplace_back(text.substr(start, end + 1 - start));
    start = end + 1;
  }
  return found;
}

TEST(Placeholders, AreFoundWhole) {
  EXPECT_EQ(Placeholders("%02d:%s 5 %% of %'d, %.1f%"),
            (std::vector<std::string>{"%02d", "%s", "%%", "%'d", "%.1f", "%"}));
  EXPECT_TRUE(Placeholders("none").empty());
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

struct Habit {
  const char* language;
  const char* avoided;
  const char* why;
};

// What the words of a language are written with; one word for one thing.
constexpr Habit kHabits[] = {
    {"fr", "[A-Za-z]'[A-Za-z]", "an apostrophe is curved"},
    {"fr", " ([:;?!](\\s|$)|\u00BB)", "no line ends in front of a double mark"},
    {"fr", "\u00AB ", "no line ends behind a quote"},
    {"fr", "\\.\\.\\.$", "dots are one character"},
    {"de", "\\.\\.\\.$", "dots are one character"},
    {"nl", "\\.\\.\\.$", "dots are one character"},
    {"nl", "[A-Za-z]'[A-Za-z]", "an apostrophe is curved"},
    {"de", "Etappenziel|Stopp|Station|\\bHalte?\\b", "a stop is a Wegpunkt"},
    {"de", "Routenanbieter", "a directions provider is a Routendienst"},
    {"de", "\\b(kein|der|Der|den) Weg\\b", "a way is a Route or a Strecke"},
    {"de", "Aufteilung", "a CSV layout is a Layout"},
    {"nl", "[Gg]een weg (gevonden|van|naar|door)|de weg (langs|mag)", "a way is a route"},
    {"nl", "routeaanbieder", "a directions provider is a routedienst"},
    {"nl", "[Vv]erzoek", "a request is an aanvraag"},
    {"fr", "\\bchemin (vers|de)\\b", "a way is a trajet"},
    {"fr", "fourgonnette|[Aa]utobus", "vehicles have the names of the list"},
    {"en", "[Ff]avourite", "the tab of the window says Favorites"},
};

TEST(StringTables, KeepTheHabitsOfTheirLanguage) {
  for (const Habit& habit : kHabits) {
    const std::regex avoided(habit.avoided);
    const StringTable& table = *kTables.at(habit.language);
    for (size_t i = 0; i < table.count; ++i) {
      const std::string text(table.begin[i].text);
      // Bars stand in filters of file dialogs, whose labels have their own rules.
      if (text.find('|') != std::string::npos) continue;
      EXPECT_FALSE(std::regex_search(text, avoided))
          << habit.language << ' ' << table.begin[i].id << ": " << habit.why << ": " << text;
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
  SetLanguage(Language::kGerman);
  EXPECT_EQ(CurrentLanguage(), Language::kGerman);
  EXPECT_EQ(LoadTextUtf8(103), "Breitengrad");
  SetLanguage(Language::kFrench);
  EXPECT_EQ(LoadTextUtf8(1005), "Oui");
  SetLanguage(Language::kDutch);
  EXPECT_EQ(LoadText(1006), u"Nee");
  SetLanguage(Language::kEnglish);
  EXPECT_EQ(LoadText(104), u"Name");
}

}  // namespace
