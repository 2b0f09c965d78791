#include "platform/text_decoder.h"

#include <gtest/gtest.h>

namespace {

std::string Decoded(const std::string& encoding, std::string_view bytes) {
  TextDecoder decoder;
  EXPECT_TRUE(decoder.Open(encoding)) << encoding;
  std::string text;
  decoder.Decode(bytes, text);
  decoder.Finish(text);
  return text;
}

TEST(TextDecoder, KnowsTheNamesOfEncodings) {
  EXPECT_EQ(Decoded("windows-1250",
                    "\xC8"
                    "esko \x8A"),
            "Česko Š");
  EXPECT_EQ(Decoded("Windows-1251", "\xCC\xEE\xF1\xEA\xE2\xE0"), "Москва");
  EXPECT_EQ(Decoded("iso-8859-2",
                    "\xA3\xF3"
                    "d\xBC"),
            "Łódź");
  EXPECT_EQ(Decoded("ISO-8859-15", "\xA4 \xBD"), "€ œ");
  EXPECT_EQ(Decoded("cp932", "\x93\x8C\x8B\x9E \\~"), "東京 \\~");
  EXPECT_EQ(Decoded("utf-16be", std::string_view("\0A\x01\x41", 4)), "A\u0141");
}

TEST(TextDecoder, RefusesWhatTheSystemDoesNotKnow) {
  TextDecoder decoder;
  for (const char* name : {"", "x-none", "utf-16be//IGNORE", "../../tmp/x"})
    EXPECT_FALSE(decoder.Open(name)) << name;
}

TEST(TextDecoder, TakesCharactersInPieces) {
  const std::string_view tokyo = "\x93\x8C\x8B\x9E";
  TextDecoder decoder;
  ASSERT_TRUE(decoder.Open("cp932"));
  std::string text;
  for (const char byte : tokyo) decoder.Decode({&byte, 1}, text);
  EXPECT_EQ(text, "東京");
  decoder.Finish(text);
  EXPECT_EQ(text, "東京");
}

TEST(TextDecoder, BytesThatStartNoCharacterAreTold) {
  EXPECT_EQ(Decoded("cp932",
                    "a\xFF"
                    "b"),
            "a\uFFFDb");
  EXPECT_EQ(Decoded("cp932", "a\x93"), "a\uFFFD");
  EXPECT_EQ(Decoded("windows-1250", "a\x81z"), "a\uFFFDz");
}

TEST(TextDecoder, BeginsAnew) {
  TextDecoder decoder;
  std::string text;
  ASSERT_TRUE(decoder.Open("cp932"));
  decoder.Decode("\x93", text);
  ASSERT_TRUE(decoder.Open("windows-1251"));
  decoder.Decode("\x8C", text);
  EXPECT_EQ(text, "Њ");
}

TEST(TextDecoder, LongTextsGrow) {
  std::string bytes;
  std::string expected;
  for (int i = 0; i < 100000; ++i) {
    bytes += "\x93\x8C";
    expected += "東";
  }
  EXPECT_TRUE(Decoded("cp932", bytes) == expected);
}

}  // namespace
