#include "io/byte_cursor.h"

#include <gtest/gtest.h>

#include "io/byte_sink.h"

namespace {

using std::string_literals::operator""s;

TEST(ByteCursor, ReadsLittleEndian) {
  const std::string bytes =
      "\x01\x02\x01\xFE\xFF\xFF\xFF\x01\x00\x00\x00\x00\x00\x00\x80"
      "\x00\x00\x00\x00\x00\x00\xF8\x3F"s;
  ByteCursor cursor(bytes);
  EXPECT_EQ(cursor.Uint8(), 1);
  EXPECT_EQ(cursor.Uint16(), 0x0102);
  EXPECT_EQ(cursor.Int32(), -2);
  EXPECT_EQ(cursor.Uint64(), 0x8000000000000001u);
  EXPECT_EQ(cursor.Double(), 1.5);
  EXPECT_TRUE(cursor.AtEnd());
  EXPECT_FALSE(cursor.Overrun());
}

TEST(ByteCursor, GivesZeroPastTheEndAndSaysSo) {
  const std::string bytes = "\xFF\xFF\xFF";
  ByteCursor cursor(bytes);
  EXPECT_EQ(cursor.Uint32(), 0u);
  EXPECT_TRUE(cursor.Overrun());
  EXPECT_TRUE(cursor.AtEnd());
  EXPECT_EQ(cursor.Uint8(), 0);
  ByteCursor behind(bytes, 100);
  EXPECT_TRUE(behind.AtEnd());
  ByteCursor skipping(bytes, 1);
  skipping.Skip(static_cast<size_t>(-1));
  EXPECT_TRUE(skipping.Overrun());
  EXPECT_EQ(skipping.Position(), 3u);
}

TEST(ByteCursor, TakesTextUpToItsZeroByte) {
  const std::string bytes = "ab\0c"s;
  ByteCursor cursor(bytes);
  EXPECT_EQ(cursor.ZeroTerminated(), "ab");
  EXPECT_EQ(cursor.Position(), 3u);
  EXPECT_EQ(cursor.ZeroTerminated(), "c");
  EXPECT_TRUE(cursor.Overrun());
}

TEST(ByteSink, WritesLittleEndianAndText) {
  StringSink sink;
  sink.Uint16(0x0102);
  sink.Int32(-2);
  sink.Uint32(3);
  sink.Uint64(0x8000000000000001u);
  sink.Double(1.5);
  sink.Zeros(2);
  sink.Put('x');
  sink.Narrow("\u00e9\u0141");
  sink.Utf16("a\U0001F600");
  sink.Printf("%03d|%s", 7, "seven");
  sink.Fixed(1.25, 1);
  EXPECT_EQ(sink.Bytes(),
            "\x02\x01\xFE\xFF\xFF\xFF\x03\x00\x00\x00\x01\x00\x00\x00\x00\x00\x00\x80"
            "\x00\x00\x00\x00\x00\x00\xF8\x3F\x00\x00x\xE9?a\x00\x3D\xD8\x00\xDE"s
            "007|seven1.2");
}

TEST(ByteSink, HandsOnLargeAmounts) {
  StringSink sink;
  for (int i = 0; i < 100000; ++i) sink.Write("0123456789");
  EXPECT_EQ(sink.Bytes().size(), 1000000u);
  EXPECT_EQ(sink.Bytes().substr(999990), "0123456789");
}

}  // namespace
