#include "platform/text_encoder.h"

#include <string>

#include <gtest/gtest.h>

#include "platform/text_speller.h"

namespace {

TEST(TextEncoder, EncodesWithQuestionMarksForWhatIsLacking) {
  TextEncoder encoder;
  ASSERT_TRUE(encoder.Open("windows-1250"));
  EXPECT_EQ(encoder.Encode("Plze\u0148"), "Plze\xF2");
  EXPECT_EQ(encoder.Encode("a\u0416\U0001F600z"), "a??z");
  EXPECT_EQ(encoder.Encode("a\xFFz"), "a?z");
  EXPECT_EQ(encoder.Encode(std::string(5000, 'a') + "\u0148"), std::string(5000, 'a') + "\xF2");
  EXPECT_EQ(encoder.Encode(""), "");
}

TEST(TextEncoder, KnowsWhatItHolds) {
  TextEncoder encoder;
  ASSERT_TRUE(encoder.Open("ISO-8859-7"));
  EXPECT_TRUE(encoder.Holds("\u03B1"));
  EXPECT_TRUE(encoder.Holds("a"));
  EXPECT_FALSE(encoder.Holds("\u0416"));
}

TEST(TextEncoder, DoesNotOpenWhatTheSystemDoesNotKnow) {
  TextEncoder encoder;
  EXPECT_FALSE(encoder.Open("klingon"));
  EXPECT_FALSE(encoder.Open(""));
  EXPECT_FALSE(encoder.Open("ascii//TRANSLIT"));
}

TEST(TextSpeller, SpellsOtherAlphabets) {
  const TextSpeller* const speller = LoadTextSpeller();
  ASSERT_NE(speller, nullptr);
  EXPECT_EQ(speller->Compose("c\u030C"), "\u010D");
  EXPECT_EQ(speller->InLatin("\u0416\u0443\u043A\u043E\u0432"), "Zhukov");
  EXPECT_EQ(speller->InAscii(speller->InLatin("\u0391\u03B8\u03AE\u03BD\u03B1")), "Athina");
  EXPECT_EQ(speller->InAscii("\u010D \u0141 \u0153 \u20AC \u201Ex\u201C"), "c L oe EUR \"x\"");
  EXPECT_EQ(LoadTextSpeller(), speller);
}

}  // namespace
