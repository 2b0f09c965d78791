#pragma once

#include <cstddef>

/// Bounds what copies of texts may cost that stand in a file only once. So that a few bytes of a
/// hostile file cannot ask for another megabyte each, all copies together may be some times as long
/// as the texts. Real files stay far below.
class RepeatAllowance {
 public:
  /// To be told of every text that may be copied later.
  void AddText(size_t bytes) { m_left += kRepeats * bytes; }

  /// Whether another copy of so many bytes may be made. Names of usual length are free.
  bool TakeCopy(size_t bytes) {
    constexpr size_t kFree = 64;
    if (bytes <= kFree) return true;
    if (bytes > m_left) return false;
    m_left -= bytes;
    return true;
  }

 private:
  static constexpr size_t kRepeats = 4;

  size_t m_left = size_t{1} << 20;
};
