#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "base/wide_string.h"

/// File attributes as the unattended conversion asks for them.
inline constexpr uint32_t kAttributeDirectory = 0x10;
inline constexpr uint32_t kAttributeNormal = 0x80;
/// What `FileAttributes` gives for a path that does not exist or cannot be looked at.
inline constexpr uint32_t kNoAttributes = 0xFFFFFFFF;

/// The separator that this platform puts between a folder and a name, and all that it understands.
/// Elsewhere a backslash is a letter of a name.
#if defined(_WIN32)
inline constexpr char16_t kPathSeparator = u'\\';
inline constexpr std::u16string_view kPathSeparators = u"\\/";
#else
inline constexpr char16_t kPathSeparator = u'/';
inline constexpr std::u16string_view kPathSeparators = u"/";
#endif

/// The path of `name` in `folder`.
WideString JoinedPath(const WideString& folder, std::u16string_view name);

/// What stands behind the folder in a path, whole: two names may differ in front of a backslash.
std::u16string_view NameIn(std::u16string_view path);

/// The folder in a path without the last separator; empty for none.
WideString FolderOf(const WideString& path);

/// kAttributeDirectory, kAttributeNormal, or kNoAttributes, whose cause, the platform's error code,
/// is put into `error` then. Links are followed.
uint32_t FileAttributes(const WideString& path, uint32_t* error = nullptr);

/// True for a file whose content stays in it, unlike that of a pipe or a device. Links are
/// followed.
bool IsRegularFile(const WideString& path);

/// What tells one existing file or folder from every other, whatever paths lead to it.
struct FileIdentity {
  uint64_t device = 0;
  uint64_t number = 0;

  bool operator==(const FileIdentity&) const = default;
  bool operator<(const FileIdentity& other) const {
    return device != other.device ? device < other.device : number < other.number;
  }
};

/// The identity of what `path` leads to; nothing where that does not exist.
std::optional<FileIdentity> IdentityOf(const WideString& path);

/// The names in a folder in byte order, without "." and "..". Returns 0 or the platform's error
/// code; what was listed before a failure stays in `names`.
uint32_t ListFolder(const WideString& path, std::vector<WideString>& names);

/// True for a folder itself, not for a link to one.
bool IsPlainFolder(const WideString& path);

/// True when both paths lead to the same existing file or folder.
bool IsSameFile(const WideString& first, const WideString& second);

/// True when `path` leads to a place below `folder`, once links and dots are followed. Neither need
/// exist.
bool IsInsideFolder(const WideString& path, const WideString& folder);

/// Creates `path` and the folders above it. Returns 0 or the platform's error code.
uint32_t CreateFolders(const WideString& path);

/// As `CreateFolders`, but where `path` itself is new, only this user can look into it.
uint32_t CreatePrivateFolder(const WideString& path);

/// The size of the file in bytes, 0 when there is none.
uint64_t FileSize(const WideString& path);

/// Removes a folder with all that it holds; no effect when there is none. Returns 0 or the
/// platform's error code.
uint32_t RemoveFolder(const WideString& path);

/// Gives a folder another name in the same parent folder, which must not be there. Returns 0 or the
/// platform's error code.
uint32_t RenameFolder(const WideString& from, const WideString& to);
