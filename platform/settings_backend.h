#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/wide_string.h"

/// A stored value: bytes, a 32-bit number, a 64-bit number, or text without a terminator.
using SettingsValue = std::variant<std::string, uint32_t, uint64_t, WideString>;

/// Most bytes that one value can hold.
inline constexpr size_t kLargestSettingsValue = size_t{1} << 20;

/// Separates the folders of a path: `Software\CorvaneMap\CSV`.
inline constexpr char kSettingsPathSeparator = '\\';

/// A tree of folders and typed values behind the settings store. Folder and value names are UTF-8,
/// compared without regard to the case of A to Z. Every operation returns 0 or a platform error
/// code: 2 for a value or folder that is not there, 6 for a write into a folder that was never
/// created, 24 for a value that is too large.
///
/// Reading creates nothing. The values of a folder are fetched together and stay as they were
/// then until something is written or a save begins, so keep an object no longer than needed.
class SettingsBackend {
 public:
  virtual ~SettingsBackend() = default;

  /// Makes the folder and those above it.
  virtual uint32_t CreateFolder(std::string_view path) = 0;
  virtual uint32_t Read(std::string_view folder, std::string_view name, SettingsValue& value) = 0;
  virtual uint32_t Write(std::string_view folder, std::string_view name,
                         const SettingsValue& value) = 0;
  /// Appends the names of the folder's values to `names`.
  virtual uint32_t ListValues(std::string_view folder, std::vector<std::string>& names) = 0;
  /// Appends the names of the folders right below `path` to `names`.
  virtual uint32_t ListFolders(std::string_view path, std::vector<std::string>& names) = 0;
  virtual uint32_t RemoveValue(std::string_view folder, std::string_view name) = 0;
  /// Removes a folder with its values and all folders below it.
  virtual uint32_t RemoveFolder(std::string_view path) = 0;

  /// From here to `CommitSave` no other program writes, and what is written here appears as one.
  virtual uint32_t BeginSave() = 0;
  virtual uint32_t CommitSave() = 0;
  /// Takes back what was written since `BeginSave`.
  virtual void AbandonSave() = 0;
};

/// The file that keeps them, there or not; empty when the user has no home.
WideString UserSettingsFile();

/// The settings of the current user; null when the user has no home. Touches no file yet.
std::unique_ptr<SettingsBackend> OpenUserSettings();

/// What the user wants to know about the settings: the defaults are used then.
struct SettingsNews {
  /// The name under which a damaged settings file was put aside; empty when none was.
  WideString damagedFile;
  /// Another program held the settings file for so long that it could not be read.
  bool wasLocked = false;
};

/// What has happened in this process since the last call.
SettingsNews TakeSettingsNews();
