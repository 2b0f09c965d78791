#include <string_view>

#include <gtest/gtest.h>

#include "io/byte_cursor.h"

namespace {

using std::string_view_literals::operator""sv;

TEST(ByteCursorWideText, EndsAtItsZeroUnit) {
  // U+0100 and "A" have zero bytes that make no zero unit, one behind the other.
  ByteCursor cursor("\x00\x01\x41\x00\x00\x00\x00\x00\x42\x00\x43"sv);
  EXPECT_EQ(cursor.ZeroTerminatedUtf16(), "\x00\x01\x41\x00"sv);
  EXPECT_EQ(cursor.ZeroTerminatedUtf16(), "");
  EXPECT_EQ(cursor.Position(), 8u);
  EXPECT_FALSE(cursor.Overrun());
  EXPECT_EQ(cursor.ZeroTerminatedUtf16(), "B\0C"sv);
  EXPECT_TRUE(cursor.Overrun());
  EXPECT_TRUE(cursor.AtEnd());
}

TEST(ByteCursorWideText, OneZeroByteAtTheEndIsNoZeroUnit) {
  ByteCursor cursor("\x41\x00\x00"sv);
  EXPECT_EQ(cursor.ZeroTerminatedUtf16(), "\x41\x00\x00"sv);
  EXPECT_TRUE(cursor.Overrun());
}

}  // namespace
