#include "conversion/byte_pipe.h"

#include <algorithm>

void BytePipe::Write(std::string_view bytes) {
  std::unique_lock lock(m_mutex);
  while (!bytes.empty()) {
    m_changed.wait(lock, [this] { return Filled() < kRoom || m_isRead; });
    if (m_isRead) return;
    const size_t place = m_written % kRoom;
    const size_t count = bytes.copy(&m_bytes[place], std::min(kRoom - place, kRoom - Filled()));
    m_written += count;
    bytes.remove_prefix(count);
    m_changed.notify_all();
  }
}

void BytePipe::CloseWriting() {
  const std::lock_guard lock(m_mutex);
  m_isWritten = true;
  m_changed.notify_all();
}

size_t BytePipe::Read(char* data, size_t size) {
  std::unique_lock lock(m_mutex);
  m_changed.wait(lock, [this] { return Filled() > 0 || m_isWritten; });
  const size_t place = m_read % kRoom;
  const size_t count = std::min({size, Filled(), kRoom - place});
  std::copy_n(&m_bytes[place], count, data);
  m_read += count;
  m_changed.notify_all();
  return count;
}

void BytePipe::CloseReading() {
  const std::lock_guard lock(m_mutex);
  m_isRead = true;
  m_changed.notify_all();
}
