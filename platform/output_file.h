#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/wide_string.h"

/// A file that appears whole or not at all: everything goes to a temporary file in the target's
/// folder, which takes the target's name in `Commit`. Links are followed and permissions kept.
/// Where the folder is not writable but the target is, the target is written in place at the end.
class OutputFile {
 public:
  /// Opens the temporary file; `Status` tells whether that worked.
  explicit OutputFile(const WideString& path);
  /// Without a successful `Commit` the target stays what it was.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// 0, or the platform's error code of the first failure so far.
  uint32_t Status() const { return m_status; }

  /// Appends bytes. After a failure nothing more is written.
  void Write(std::string_view bytes);

  /// Puts the file in the target's place. Returns `Status`.
  uint32_t Commit();

 private:
  enum class Mode { kReplace, kInPlace, kDirect };

  void OpenReplacement();
  void OverwriteTarget();
  void Discard();
  void WriteBehind();

  std::string m_target;
  Mode m_mode = Mode::kReplace;
  std::string m_temporary;  ///< in the mode kReplace: the name of that file
  std::string m_content;    ///< in the mode kInPlace: all that was written
  int m_folder = -1;  ///< where the temporary file is: with this folder's path in front, its name
                      ///< could be too long where the target's is not
  int m_file = -1;
  bool m_replacesFile = false;  ///< in the mode kReplace: the target exists
  uint64_t m_size = 0;          ///< written so far
  uint64_t m_begunSize = 0;     ///< of which the disk was told to begin
  uint32_t m_status = 0;
};
