#include "core/byte_sink.h"

#include <bit>

#include "core/text.h"
#include "platform/unicode.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;

}  // namespace

void ByteSink::Narrow(std::string_view utf8) {
  AppendNarrowUtf8(m_buffer, utf8);
  if (m_buffer.size() >= kPieceSize) Drain();
}

void ByteSink::Utf16(std::string_view utf8) {
  for (size_t i = 0; i < utf8.size();) {
    if (static_cast<unsigned char>(utf8[i]) < 0x80) {
      Put(utf8[i++]);
      Put('\0');
      continue;
    }
    const DecodedCodePoint decoded = DecodeUtf8(utf8, i);
    WideString units;
    AppendUtf16(units, decoded.valid ? decoded.codePoint : kReplacement);
    for (const char16_t unit : units) Uint16(unit);
    i += decoded.length;
  }
  if (m_buffer.size() >= kPieceSize) Drain();
}

void ByteSink::Double(double value) { Uint64(std::bit_cast<uint64_t>(value)); }
