#pragma once

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>

/// Carries bytes from one thread to another. Whoever is ahead waits for the other.
class BytePipe {
 public:
  /// Waits until all bytes have found room; throws them away once nobody reads any more.
  void Write(std::string_view bytes);
  /// Nothing more will be written.
  void CloseWriting();

  /// Puts up to `size` of the next bytes at `data`. Returns how many, 0 only at the end.
  size_t Read(char* data, size_t size);
  /// Nothing more will be read.
  void CloseReading();

 private:
  static constexpr size_t kRoom = size_t{1} << 20;

  size_t Filled() const { return m_written - m_read; }

  std::mutex m_mutex;
  std::condition_variable m_changed;
  const std::unique_ptr<char[]> m_bytes = std::make_unique_for_overwrite<char[]>(kRoom);
  size_t m_written = 0;  ///< bytes in all
  size_t m_read = 0;     ///< of which these have been read
  bool m_isWritten = false;
  bool m_isRead = false;
};
