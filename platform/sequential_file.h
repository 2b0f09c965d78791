#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/wide_string.h"
#include "platform/file_state.h"

/// A file that is read once from its start to its end, piece by piece, so that no more of it is in
/// memory than the piece.
class SequentialFile {
 public:
  SequentialFile() = default;
  ~SequentialFile();
  SequentialFile(const SequentialFile&) = delete;
  SequentialFile& operator=(const SequentialFile&) = delete;

  /// Opens `path`. Returns 0 or the platform's error code; only regular files can be opened.
  uint32_t Open(const WideString& path);

  /// Puts up to `size` of the next bytes at `data`. Returns how many, 0 only at the file's end;
  /// nothing when the file cannot be read, with the cause in `Status`.
  std::optional<size_t> Read(char* data, size_t size);

  /// Returns 0 when nobody has written to the file since it was opened, otherwise the error code of
  /// a file in use: what was read may be of two states, half and half.
  uint32_t CheckUnchanged() const;

  /// The size of the file in bytes when it was opened.
  uint64_t Size() const { return static_cast<uint64_t>(m_state.size); }
  /// 0, or the platform's error code of a read that has failed.
  uint32_t Status() const { return m_status; }

 private:
  int m_file = -1;
  FileState m_state;
  uint32_t m_status = 0;
};
