#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <fmt/printf.h>

#include "base/numbers.h"

/// Where writers put their bytes: a buffer that is handed on in large pieces. Text is appended as
/// it stands, numbers are little-endian.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  ByteSink(const ByteSink&) = delete;
  ByteSink& operator=(const ByteSink&) = delete;

  void Write(std::string_view bytes) {
    if (bytes.size() > Room()) return WriteBeyondRoom(bytes);
    m_next += bytes.copy(m_next, bytes.size());
  }
  void Put(char byte) {
    if (Room() == 0) Drain();
    *m_next++ = byte;
  }

  /// As C's printf; `format` must suit the arguments. Text is given as std::string or a view.
  template <typename... Args>
  void Printf(std::string_view format, const Args&... args) {
    Write(fmt::sprintf(fmt::string_view(format.data(), format.size()), args...));
  }

  /// A number as "%.*f".
  void Fixed(double value, int decimals) {
    NumberRoom room;
    Write(FixedText(room, value, decimals));
  }

  /// A whole number as "%0*d": zeros behind the sign up to `width` characters.
  void Whole(int64_t value, size_t width = 0) {
    NumberRoom room;
    Write(WholeText(room, value, width));
  }

  /// UTF-8 text narrowed to 8 bits.
  void Narrow(std::string_view utf8);

  /// UTF-8 text as UTF-16 little-endian, without a terminator. Bytes that start no character come
  /// out as U+FFFD.
  void Utf16(std::string_view utf8);

  void Uint16(uint16_t value) { Integer(value, 2); }
  void Int32(int32_t value) { Integer(static_cast<uint32_t>(value), 4); }
  void Uint32(uint32_t value) { Integer(value, 4); }
  void Uint64(uint64_t value) { Integer(value, 8); }
  void Double(double value);
  void Zeros(size_t count);

 protected:
  /// Hands on pieces of up to `pieceSize` bytes; longer texts go through as they are.
  explicit ByteSink(size_t pieceSize = kFilePiece)
      : m_start(std::make_unique_for_overwrite<char[]>(pieceSize)),
        m_next(m_start.get()),
        m_end(m_start.get() + pieceSize) {}

  /// Hands the buffered bytes on. Every final class calls this when it is done.
  void Drain() {
    Consume({m_start.get(), static_cast<size_t>(m_next - m_start.get())});
    m_next = m_start.get();
  }
  virtual void Consume(std::string_view bytes) = 0;

 private:
  static constexpr size_t kFilePiece = size_t{1} << 17;

  void Integer(uint64_t value, size_t width) {
    char bytes[sizeof value];
    for (size_t i = 0; i < width; ++i) bytes[i] = static_cast<char>(value >> (8 * i) & 0xFF);
    Write({bytes, width});
  }

  /// Of the buffer, in bytes.
  size_t Room() const { return static_cast<size_t>(m_end - m_next); }
  void WriteBeyondRoom(std::string_view bytes);

  const std::unique_ptr<char[]> m_start;
  char* m_next;
  char* const m_end;
  std::string m_narrow;  ///< the text that `Narrow` makes
};

/// A sink that keeps everything in memory.
class StringSink final : public ByteSink {
 public:
  StringSink() : ByteSink(kPiece) {}

  /// All bytes so far.
  const std::string& Bytes() {
    Drain();
    return m_bytes;
  }

 private:
  // There is a string sink for every small record and every request.
  static constexpr size_t kPiece = size_t{1} << 10;

  void Consume(std::string_view bytes) override { m_bytes.append(bytes); }

  std::string m_bytes;
};
