#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "base/text.h"

namespace {

constexpr std::string_view kAlphabet = "abcdefghijklmnopqrstuvwxyz";

// Text is converted in runs of ASCII, so every case stands at every place between two such runs.
template <typename Check>
void AtEveryPlace(Check check) {
  for (size_t before = 0; before < 20; ++before) {
    for (size_t after = 0; after < 20; ++after)
      check(std::string(kAlphabet.substr(0, before)), std::string(kAlphabet.substr(0, after)));
  }
}

WideString WideAscii(const std::string& text) { return {text.begin(), text.end()}; }

TEST(NarrowUtf8, KeepsWhatEightBitsHoldAndAsksForTheRest) {
  AtEveryPlace([](const std::string& before, const std::string& after) {
    EXPECT_EQ(NarrowUtf8(before + after), before + after);
    EXPECT_EQ(NarrowUtf8(before + "\u00FF\u0080" + after), before + "\xFF\x80" + after);
    EXPECT_EQ(NarrowUtf8(before + "\u0141" + after), before + "?" + after);
    EXPECT_EQ(NarrowUtf8(before + "\U0001F697" + after), before + "??" + after);
    EXPECT_EQ(NarrowUtf8(before + "\xE9" + after), before + "?" + after);
    EXPECT_EQ(NarrowUtf8(before + "\xE2\x82" + after), before + "??" + after);
  });
}

TEST(AppendNarrowUtf8, AddsToWhatIsThere) {
  std::string text = "\xE9";
  AppendNarrowUtf8(text, "caf\u00E9");
  EXPECT_EQ(text,
            "\xE9"
            "caf\xE9");
  AppendNarrowUtf8(text, "");
  EXPECT_EQ(text.size(), 5u);
}

TEST(WidenToUtf8, GivesEveryByteItsCharacter) {
  AtEveryPlace([](const std::string& before, const std::string& after) {
    EXPECT_EQ(WidenToUtf8(before + "\x80\xE9" + after), before + "\u0080\u00E9" + after);
    EXPECT_EQ(WidenToUtf8(before + '\0' + after), before + '\0' + after);
  });
}

TEST(Utf8ToWide, DecodesBetweenRunsOfAscii) {
  AtEveryPlace([](const std::string& before, const std::string& after) {
    EXPECT_EQ(Utf8ToWide(before + "\u00E9\u20AC\U0001F697" + after),
              WideAscii(before) + u"\u00E9\u20AC\U0001F697" + WideAscii(after));
    EXPECT_EQ(Utf8ToWideLossy(before + "\xFF" + after),
              WideAscii(before) + u"\uFFFD" + WideAscii(after));
    EXPECT_THROW(Utf8ToWide(before + "\xFF" + after), std::range_error);
  });
}

TEST(MendUtf8, ReplacesWhatStartsNoCharacterAndKeepsTheRest) {
  EXPECT_EQ(MendUtf8(""), "");
  EXPECT_EQ(MendUtf8("Caf\u00E9 \u0141 \U0001F600"), "Caf\u00E9 \u0141 \U0001F600");
  EXPECT_EQ(MendUtf8("Caf\xE9!"), "Caf\uFFFD!");
  EXPECT_EQ(MendUtf8("\xFF\x80\u00E9\xC3"), "\uFFFD\uFFFD\u00E9\uFFFD");
}

TEST(IsValidUtf8, FindsOneWrongByteAnywhere) {
  AtEveryPlace([](const std::string& before, const std::string& after) {
    EXPECT_TRUE(IsValidUtf8(before + "\u00E9" + after));
    EXPECT_TRUE(IsValidUtf8(before + after));
    EXPECT_FALSE(IsValidUtf8(before + "\xE9" + after));
    EXPECT_FALSE(IsValidUtf8(before + "\xED\xA0\x80" + after));
    EXPECT_FALSE(IsValidUtf8(before + after + "\xC3"));
  });
}

TEST(DecodeTextFileToUtf8, ReplacesWhatIsNoUtf8BehindTheMark) {
  AtEveryPlace([](const std::string& before, const std::string& after) {
    EXPECT_EQ(DecodeTextFileToUtf8("\xEF\xBB\xBF" + before + "\u00E9\xE9" + after),
              before + "\u00E9\uFFFD" + after);
  });
}

}  // namespace
