#include "platform/folder.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include <dirent.h>
#include <sys/stat.h>

#include "platform/path_text.h"
#include "platform/posix/errors.h"

WideString JoinedPath(const WideString& folder, std::u16string_view name) {
  WideString path = folder;
  if (!path.empty() && path.back() != u'/' && path.back() != kPathSeparator) path += kPathSeparator;
  return path.append(name);
}

std::u16string_view NameIn(std::u16string_view path) {
  return path.substr(path.find_last_of(kPathSeparators) + 1);
}

WideString FolderOf(const WideString& path) {
  const size_t size = path.size() - NameIn(path).size();
  return path.substr(0, size > 1 ? size - 1 : size);
}

uint32_t FileAttributes(const WideString& path, uint32_t* error) {
  struct stat details {};
  if (stat(PathBytes(path).c_str(), &details) != 0) {
    if (error) *error = FailWithErrno();
    return kNoAttributes;
  }
  return S_ISDIR(details.st_mode) ? kAttributeDirectory : kAttributeNormal;
}

bool IsRegularFile(const WideString& path) {
  struct stat details {};
  return stat(PathBytes(path).c_str(), &details) == 0 && S_ISREG(details.st_mode);
}

bool IsPlainFolder(const WideString& path) {
  struct stat details {};
  return lstat(PathBytes(path).c_str(), &details) == 0 && S_ISDIR(details.st_mode);
}

std::optional<FileIdentity> IdentityOf(const WideString& path) {
  struct stat details {};
  if (stat(PathBytes(path).c_str(), &details) != 0) return std::nullopt;
  return FileIdentity{details.st_dev, details.st_ino};
}

uint32_t ListFolder(const WideString& path, std::vector<WideString>& names) {
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(PathBytes(path).c_str()), closedir);
  if (!folder) return FailWithErrno();
  std::vector<std::string> found;
  for (;;) {
    errno = 0;
    const dirent* entry = readdir(folder.get());
    if (!entry) break;
    const std::string name = entry->d_name;
    if (name != "." && name != "..") found.push_back(name);
  }
  const uint32_t status = errno == 0 ? 0 : FailWithErrno();
  std::sort(found.begin(), found.end());
  for (const std::string& name : found) names.push_back(WidePath(name));
  return status;
}

bool IsSameFile(const WideString& first, const WideString& second) {
  const std::optional<FileIdentity> identity = IdentityOf(first);
  return identity && identity == IdentityOf(second);
}

bool IsInsideFolder(const WideString& path, const WideString& folder) {
  std::error_code failure;
  const auto inner = std::filesystem::weakly_canonical(PathBytes(path), failure);
  if (failure) return false;
  const auto outer = std::filesystem::weakly_canonical(PathBytes(folder), failure);
  if (failure || !inner.is_absolute()) return false;
  const auto end = std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end());
  return end.first == outer.end() && end.second != inner.end();
}

namespace {

uint32_t CreateFoldersAs(const WideString& path, mode_t mode) {
  const std::string folder = PathBytes(path);
  for (size_t end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
    const std::string part = folder.substr(0, end);
    const mode_t partMode = end == std::string::npos ? mode : 0777;
    if (!part.empty() && mkdir(part.c_str(), partMode) != 0 && errno != EEXIST) {
      return FailWithErrno();
    }
    if (end == std::string::npos) break;
  }
  if (FileAttributes(path) == kAttributeDirectory) return 0;
  errno = EACCES;
  return FailWithErrno();
}

}  // namespace

uint32_t CreateFolders(const WideString& path) { return CreateFoldersAs(path, 0777); }

uint32_t CreatePrivateFolder(const WideString& path) { return CreateFoldersAs(path, 0700); }

uint64_t FileSize(const WideString& path) {
  struct stat details {};
  if (stat(PathBytes(path).c_str(), &details) != 0) return 0;
  return static_cast<uint64_t>(details.st_size);
}

uint32_t RemoveFolder(const WideString& path) {
  std::error_code failure;
  std::filesystem::remove_all(PathBytes(path), failure);
  if (!failure) return 0;
  errno = failure.value();
  return FailWithErrno();
}

uint32_t RenameFolder(const WideString& from, const WideString& to) {
  return std::rename(PathBytes(from).c_str(), PathBytes(to).c_str()) == 0 ? 0 : FailWithErrno();
}
