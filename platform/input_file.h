#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/wide_string.h"

/// A whole file in memory for reading. The bytes are a private copy: what another program does to
/// the file later changes nothing here.
class InputFile {
 public:
  InputFile() = default;
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// Reads `path`. Returns 0 or the platform's error code; only regular files can be opened. A file
  /// that another program writes to meanwhile is in use: half of it could be old and half new.
  uint32_t Open(const WideString& path);

  /// The file's content, valid as long as this object and up to what was discarded.
  std::string_view Bytes() const { return {m_data, m_size}; }

  /// Gives the memory of all bytes before `offset` back to the system. They must not be read
  /// again. Cheap enough to be called after every line.
  void DiscardBefore(size_t offset) {
    if (offset - m_discarded >= kDiscardStep && offset <= m_size) Release(offset);
  }

 private:
  static constexpr size_t kDiscardStep = size_t{1} << 20;

  void Release(size_t offset);

  const char* m_data = nullptr;
  size_t m_size = 0;
  size_t m_discarded = 0;
};
