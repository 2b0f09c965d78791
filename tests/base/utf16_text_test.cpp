#include <string>

#include <gtest/gtest.h>

#include "base/text.h"

namespace {

using std::string_literals::operator""s;

TEST(Utf16Text, TakesPairsOfSurrogatesTogether) {
  // U+1F600 between two letters, in both byte orders.
  EXPECT_EQ(DecodeTextFileToUtf8("\xFF\xFE"
                                 "a\0\x3D\xD8\0\xDE"
                                 "b\0"s),
            "a\U0001F600b");
  EXPECT_EQ(DecodeTextFileToUtf8("\xFE\xFF\0"
                                 "a\xD8\x3D\xDE\0\0"
                                 "b"s),
            "a\U0001F600b");
  // The first and the last character outside the BMP.
  EXPECT_EQ(DecodeTextFileToUtf8("\xFF\xFE\0\xD8\0\xDC\xFF\xDB\xFF\xDF"s), "\U00010000\U0010FFFF");
}

TEST(Utf16Text, ReplacesSurrogatesWithoutTheirPartner) {
  EXPECT_EQ(DecodeTextFileToUtf8("\xFF\xFE\x3D\xD8"
                                 "a\0"s),
            "\uFFFDa");
  EXPECT_EQ(DecodeTextFileToUtf8("\xFF\xFE\x3D\xD8\x3D\xD8\0\xDE"s), "\uFFFD\U0001F600");
  EXPECT_EQ(DecodeTextFileToUtf8("\xFF\xFE\0\xDE\x3D\xD8"s), "\uFFFD\uFFFD");
  EXPECT_EQ(DecodeTextFile("\xFE\xFF\0"
                           "a\xD8\x3D"s),
            u"a\uFFFD");
}

TEST(Utf16Text, DropsACutUnit) {
  EXPECT_EQ(DecodeTextFileToUtf8("\xFF\xFE"
                                 "a\0b"s),
            "a");
  EXPECT_EQ(DecodeTextFileToUtf8("\xFF\xFE"
                                 "a\0\x3D\xD8\0"s),
            "a\uFFFD");
}

TEST(Utf8Text, IsJudgedByEveryByte) {
  const std::string ascii(100, 'a');
  EXPECT_TRUE(IsValidUtf8(""));
  EXPECT_TRUE(IsValidUtf8(ascii + "\xC3\xA9" + ascii));
  EXPECT_FALSE(IsValidUtf8(ascii + "\xE9" + ascii));
  EXPECT_FALSE(IsValidUtf8(ascii + "\xC3"));
  EXPECT_FALSE(IsValidUtf8("\x80" + ascii));
  EXPECT_FALSE(IsValidUtf8(ascii + "\xC3\xA9\xED\xA0\x80"));
}

}  // namespace
