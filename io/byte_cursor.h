#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

/// Reads little-endian values off the front of a record. Reading past the end gives zeros and
/// marks the cursor as overrun, so that a reader checks once a record instead of once a value.
class ByteCursor {
 public:
  explicit ByteCursor(std::string_view bytes, size_t position = 0)
      : m_bytes(bytes), m_position(std::min(position, bytes.size())) {}

  size_t Position() const { return m_position; }
  size_t Remaining() const { return m_bytes.size() - m_position; }
  bool AtEnd() const { return m_position == m_bytes.size(); }
  /// True once a read or a skip has asked for more than there was.
  bool Overrun() const { return m_overrun; }

  uint8_t Uint8() { return static_cast<uint8_t>(Integer(1)); }
  uint16_t Uint16() { return static_cast<uint16_t>(Integer(2)); }
  int32_t Int32() { return static_cast<int32_t>(Integer(4)); }
  uint32_t Uint32() { return static_cast<uint32_t>(Integer(4)); }
  uint64_t Uint64() { return Integer(8); }
  double Double() { return std::bit_cast<double>(Integer(8)); }

  /// The next `count` bytes, or what there is of them.
  std::string_view Take(size_t count) {
    if (count > Remaining()) {
      m_overrun = true;
      count = Remaining();
    }
    const std::string_view taken = m_bytes.substr(m_position, count);
    m_position += count;
    return taken;
  }
  void Skip(size_t count) { Take(count); }

  /// Text up to its zero byte, which is consumed too. Without one, the rest of the bytes.
  std::string_view ZeroTerminated() {
    const size_t end = m_bytes.find('\0', m_position);
    if (end == std::string_view::npos) {
      m_overrun = true;
      return Take(Remaining());
    }
    const std::string_view text = m_bytes.substr(m_position, end - m_position);
    m_position = end + 1;
    return text;
  }

  /// The bytes of 16-bit text up to its zero unit, which is consumed too. Without one, the rest of
  /// the bytes.
  std::string_view ZeroTerminatedUtf16() {
    for (size_t end = m_position; m_bytes.size() - end >= 2; end += 2) {
      if (m_bytes[end] != '\0' || m_bytes[end + 1] != '\0') continue;
      const std::string_view text = m_bytes.substr(m_position, end - m_position);
      m_position = end + 2;
      return text;
    }
    m_overrun = true;
    return Take(Remaining());
  }

 private:
  uint64_t Integer(size_t width) {
    const std::string_view bytes = Take(width);
    if (bytes.size() < width) return 0;
    uint64_t value = 0;
    for (size_t i = 0; i < width; ++i) value |= uint64_t{static_cast<uint8_t>(bytes[i])} << (8 * i);
    return value;
  }

  std::string_view m_bytes;
  size_t m_position;
  bool m_overrun = false;
};
