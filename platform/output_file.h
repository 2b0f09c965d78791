#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/wide_string.h"

/// When a file and its name have reached the disk.
enum class Durability {
  kSynced,          ///< before `Commit` says that it is written
  kSyncedTogether,  ///< a file that takes another's place before it does; a new one, and the names,
                    ///< with `SyncFileSystem`, which the caller asks for once, behind the last
  kLeftToTheSystem,
};

/// Waits until everything that was written to the file system of `path` has reached the disk; empty
/// stands for the working folder.
/// Returns 0 or the platform's error code.
uint32_t SyncFileSystem(const WideString& path);

/// Removes the temporary files in a folder that killed processes of this user have left. Those of
/// living ones stay.
void ClearUnfinishedFiles(const WideString& folder);

/// A file that appears whole or not at all: everything goes to a temporary file in the target's
/// folder, which takes the target's name in `Commit`. Links are followed and permissions kept.
/// Where the folder is not writable but the target is, the target is written in place at the end.
class OutputFile {
 public:
  /// Opens the temporary file; `Status` tells whether that worked.
  explicit OutputFile(const WideString& path, Durability durability = Durability::kSynced);
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
  bool NeedsSync() const;
  bool SyncFile(int file) const;
  bool SyncFolder() const;

  std::string m_target;
  const Durability m_durability;
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
