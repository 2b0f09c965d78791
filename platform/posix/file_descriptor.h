#pragma once

#include <string_view>
#include <utility>

#include <unistd.h>

/// An open file that is closed with its owner.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept
      : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
  }
  ~FileDescriptor() {
    if (m_descriptor >= 0) close(m_descriptor);
  }

  explicit operator bool() const { return m_descriptor >= 0; }
  int Get() const { return m_descriptor; }
  int Release() { return std::exchange(m_descriptor, -1); }

 private:
  int m_descriptor = -1;
};

/// Writes all bytes. False when a write fails; errno says why.
bool WriteFully(int descriptor, std::string_view bytes);
