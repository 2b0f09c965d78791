#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
#include "platform/settings_backend.h"

/// Folder of the user's store in which all settings of the program lie.
inline constexpr std::string_view kSettingsRoot = "Software\\CorvaneMap";

/// Handles on the settings store: a tree of folders and typed values. A reader opens, a writer
/// creates. Names are UTF-8 and don't tell a from A. Handles are cheap to copy and share the store,
/// which sees the values of a folder as they were when the first of them was read; for what
/// another program has written since, make a new `Storage`.
namespace storage {

/// Why an operation of the store has failed.
enum class Reason : uint32_t {
  kEmptyHandle = 0,  ///< a read or write through a handle that stands for nothing
  kInvalidData = 1,  ///< the value is of another kind
  kBadLength = 2,    ///< the value holds too little or too much
  kNotFound = 3,     ///< no such value
  kOther = 4,
};

/// The only failure of the store. `what` is the class that failed ("Storage", "SFolder", "SValue",
/// "Key") or the name of the value.
class Exception : public std::runtime_error {
 public:
  Exception(const std::string& text, uint32_t failure);

  Reason reason;
  uint32_t status;  ///< the platform's error code
};

/// A value of a folder, there or not.
class SValue {
 public:
  SValue() = default;

  /// False when a read would not find the value.
  bool Exists() const;

  /// The value as bytes; a number gives its bytes, the lowest first. Reads throw `Exception`.
  std::string ReadBytes() const;
  /// The value as a number. Of other sizes the lowest four bytes count, and missing ones are 0.
  uint32_t ReadNumber() const;
  WideString ReadText() const;

  /// Writes throw `Exception`.
  void WriteBytes(std::string_view bytes);
  void WriteNumber(uint32_t number);
  void WriteText(std::u16string_view text);

 private:
  friend class SFolder;
  SValue(std::shared_ptr<SettingsBackend> backend, std::string folder, std::string_view name);

  SettingsValue Read() const;
  void Write(const SettingsValue& value);

  std::shared_ptr<SettingsBackend> m_backend;
  std::string m_folder;
  std::string m_name;
};

/// A folder, there or not: when it is missing, reading a value of it fails.
class SFolder {
 public:
  SFolder() = default;

  /// Makes the sub-folder if it is missing. Throws `Exception`.
  SFolder CreateFolder(std::string_view name);
  SFolder OpenFolder(std::string_view name) const;

  /// The handle of a value. It comes into being with the first write, which needs a folder that
  /// has been created.
  SValue CreateValue(std::string_view name);
  SValue OpenValue(std::string_view name) const;

  /// The names of all values in the folder. Throws `Exception`.
  std::vector<std::string> ValueNames() const;
  /// The names of the folders right below this one. Throws `Exception`, but a folder that is not
  /// there has none.
  std::vector<std::string> FolderNames() const;

  /// Removes a value, or a folder with all that is below it. What is not there need not be removed.
  /// Throws `Exception`.
  void RemoveValue(std::string_view name);
  void RemoveFolder(std::string_view name);

 private:
  friend class Storage;
  SFolder(std::shared_ptr<SettingsBackend> backend, std::string path);

  std::shared_ptr<SettingsBackend> m_backend;
  std::string m_path;
};

/// The root of a store.
class Storage {
 public:
  Storage() = default;
  explicit Storage(std::shared_ptr<SettingsBackend> backend);

  /// Makes the folder and those above it where they are missing. Throws `Exception`.
  SFolder CreateFolder(std::string_view path);
  SFolder OpenFolder(std::string_view path) const;

 private:
  friend class Transaction;
  std::shared_ptr<SettingsBackend> m_backend;
};

/// All writes between its making and `Commit` appear together or not at all, and no other program
/// writes meanwhile. Without a commit they are taken back.
class Transaction {
 public:
  /// Throws `Exception`.
  explicit Transaction(Storage& storage);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Throws `Exception`; nothing has been written then.
  void Commit();

 private:
  std::shared_ptr<SettingsBackend> m_backend;
};

/// The path of a folder below another.
std::string PathOf(std::string_view folder, std::string_view name);

/// Runs `action`; gives 0 or the platform's error code of the `Exception` that left it.
template <typename Action>
uint32_t StatusOf(Action action) {
  try {
    action();
    return 0;
  } catch (const Exception& failure) {
    return failure.status;
  }
}

/// The store of the current user; an empty handle when the user has no home. Cheap: no file is
/// opened before something is read.
Storage OpenUserStorage();

}  // namespace storage
