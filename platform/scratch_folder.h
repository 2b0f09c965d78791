#pragma once

#include "base/wide_string.h"

/// A folder of its own for temporary files, gone with its content when this goes.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  /// Empty when no folder could be made; `LastError` then tells why.
  const WideString& Path() const { return m_path; }

 private:
  WideString m_path;
};
