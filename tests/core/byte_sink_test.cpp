#include "core/byte_sink.h"

#include <gtest/gtest.h>

namespace {

using std::string_literals::operator""s;

TEST(ByteSink, WritesNumbersLittleEndian) {
  StringSink sink;
  sink.Put('\x7F');
  sink.Uint16(0x0102);
  sink.Int32(-2);
  sink.Uint32(0x80000001);
  sink.Uint64(0x0102030405060708);
  sink.Double(-1.5);
  sink.Zeros(2);
  EXPECT_EQ(sink.Bytes(),
            "\x7F\x02\x01\xFE\xFF\xFF\xFF\x01\x00\x00\x80\x08\x07\x06\x05\x04\x03\x02\x01"
            "\x00\x00\x00\x00\x00\x00\xF8\xBF\x00\x00"s);
}

TEST(ByteSink, WritesText) {
  StringSink sink;
  sink.Write("a\0b"s);
  sink.Narrow("Caf\u00e9 \u0141");
  sink.Utf16("A\u0141\U0001F600");
  EXPECT_EQ(sink.Bytes(), "a\0bCaf\xE9 ?A\0\x41\x01\x3D\xD8\x00\xDE"s);
}

}  // namespace
