#include "core/byte_sink.h"

#include <bit>

#include "core/text.h"

void ByteSink::Narrow(std::string_view utf8) {
  AppendNarrowUtf8(m_buffer, utf8);
  if (m_buffer.size() >= kPieceSize) Drain();
}

void ByteSink::Utf16(std::string_view utf8) {
  for (const char16_t unit : Utf8ToWideLossy(utf8)) Uint16(unit);
  if (m_buffer.size() >= kPieceSize) Drain();
}

void ByteSink::Double(double value) { Uint64(std::bit_cast<uint64_t>(value)); }
