#include "io/byte_sink.h"

#include <algorithm>
#include <bit>

#include "base/text.h"
#include "base/unicode.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;

}  // namespace

void ByteSink::Narrow(std::string_view utf8) {
  m_narrow.clear();
  AppendNarrowUtf8(m_narrow, utf8);
  Write(m_narrow);
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
}

void ByteSink::Double(double value) { Uint64(std::bit_cast<uint64_t>(value)); }

void ByteSink::Zeros(size_t count) {
  while (count > 0) {
    if (Room() == 0) Drain();
    const size_t fitting = std::min(count, Room());
    m_next = std::fill_n(m_next, fitting, '\0');
    count -= fitting;
  }
}

void ByteSink::WriteBeyondRoom(std::string_view bytes) {
  Drain();
  if (bytes.size() > Room()) {
    Consume(bytes);
  } else {
    m_next += bytes.copy(m_next, bytes.size());
  }
}
