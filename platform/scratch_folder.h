#pragma once

#include "base/wide_string.h"

/// A folder of its own for temporary files, gone with its content when this goes.
class ScratchFolder {
 public:
  ScratchFolder();

  /// Removes those that killed processes of this user have left behind.
  static void ClearLeftBehind();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  /// Empty when no folder could be made.
  const WideString& Path() const { return m_path; }
  /// 0, or the platform's error code when no folder could be made.
  uint32_t Status() const { return m_status; }

 private:
  WideString m_path;
  uint32_t m_status = 0;
  int m_lock = -1;  ///< tells other processes that this one is alive
};
