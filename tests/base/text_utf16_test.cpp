#include <gtest/gtest.h>

#include "base/text.h"

namespace {

using std::string_view_literals::operator""sv;

TEST(Utf16LeToUtf8, DecodesEveryPlane) {
  EXPECT_EQ(Utf16LeToUtf8("A\0\xE9\0\x41\x01\x3D\xD8\x00\xDE"sv), "A\u00e9\u0141\U0001F600");
  EXPECT_EQ(Utf16LeToUtf8(""), "");
}

TEST(Utf16LeToUtf8, ReplacesCutPairsAndDropsAnOddByte) {
  EXPECT_EQ(Utf16LeToUtf8("\x3D\xD8"sv), "\uFFFD");
  EXPECT_EQ(Utf16LeToUtf8("\x00\xDE\x41\x00"sv), "\uFFFDA");
  EXPECT_EQ(Utf16LeToUtf8("\x3D\xD8\x41\x00"sv), "\uFFFDA");
  EXPECT_EQ(Utf16LeToUtf8("A\0B"sv), "A");
}

}  // namespace
