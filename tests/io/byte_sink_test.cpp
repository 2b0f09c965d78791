#include "io/byte_sink.h"

#include <limits>
#include <string>
#include <string_view>
#include <vector>

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

// Hands its pieces on as they come.
class PieceSink final : public ByteSink {
 public:
  const std::vector<std::string>& Pieces() {
    Drain();
    return m_pieces;
  }

 private:
  void Consume(std::string_view bytes) override { m_pieces.emplace_back(bytes); }

  std::vector<std::string> m_pieces;
};

std::string Joined(const std::vector<std::string>& pieces) {
  std::string all;
  for (const std::string& piece : pieces) all += piece;
  return all;
}

TEST(ByteSink, KeepsBytesInOrderAcrossItsPieces) {
  PieceSink sink;
  std::string expected;
  for (int i = 0; i < 20000; ++i) {
    sink.Put('<');
    sink.Write("seven..");
    sink.Fixed(-1.5, 2);
    sink.Whole(42, 4);
    sink.Uint16(0x4241);
    sink.Narrow("\u00e9");
    sink.Utf16("u");
    sink.Zeros(3);
    expected += "<seven..-1.500042AB\xE9u\0\0\0\0"s;
  }
  EXPECT_EQ(Joined(sink.Pieces()), expected);
  EXPECT_GT(sink.Pieces().size(), 2u);
}

TEST(StringSink, KeepsBytesInOrderWhateverTheirNumber) {
  StringSink sink;
  std::string expected;
  for (int i = 0; i < 300; ++i) {
    sink.Write(std::string(static_cast<size_t>(i) * 7, 'w'));
    sink.Uint16(0x4241);
    EXPECT_TRUE(sink.Bytes().ends_with("AB"));
    expected += std::string(static_cast<size_t>(i) * 7, 'w') + "AB";
  }
  EXPECT_EQ(sink.Bytes(), expected);
}

TEST(ByteSink, HandsOnWhatIsLargerThanAPiece) {
  const std::string large(1000000, 'x');
  PieceSink sink;
  sink.Write("before");
  sink.Write(large);
  sink.Write("after");
  sink.Zeros(500000);
  sink.Put('!');
  EXPECT_EQ(Joined(sink.Pieces()), "before" + large + "after" + std::string(500000, '\0') + "!");
}

TEST(ByteSink, WritesNumbersOfAnyLength) {
  StringSink sink;
  sink.Fixed(1e22, 1);
  sink.Whole(-5, 40);
  sink.Fixed(-std::numeric_limits<double>::infinity(), 6);
  EXPECT_EQ(sink.Bytes(), "10000000000000000000000.0-" + std::string(38, '0') + "5-inf");
}

}  // namespace
