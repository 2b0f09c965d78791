#pragma once

#include <cstdint>

/// What tells whether a file was written to.
struct FileState {
  int64_t size = 0;      ///< bytes
  int64_t modified = 0;  ///< nanoseconds of Unix time

  bool operator==(const FileState&) const = default;
};
