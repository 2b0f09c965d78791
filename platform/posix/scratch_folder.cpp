#include "platform/scratch_folder.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <string>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/path_text.h"
#include "platform/posix/errors.h"
#include "platform/posix/file_descriptor.h"

namespace {

// What begins like this is cleared up, so no user may ever give a folder such a name.
constexpr std::string_view kNameStart = ".corvane-map-unfinished-check-";
constexpr size_t kNameSize = kNameStart.size() + 6;

std::string Parent() {
  const char* parent = std::getenv("TMPDIR");
  return parent && *parent ? parent : "/tmp";
}

FileDescriptor OpenFolder(const std::string& path) {
  return FileDescriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

bool Lock(const FileDescriptor& folder) { return flock(folder.Get(), LOCK_EX | LOCK_NB) == 0; }

// Whether an open folder still stands under its name, and belongs to this user.
bool IsOurs(const FileDescriptor& folder, const std::string& path) {
  struct stat opened {};
  struct stat named {};
  return fstat(folder.Get(), &opened) == 0 && lstat(path.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino &&
         opened.st_uid == geteuid();
}

// Makes a folder, locked for as long as this process lives. Another one that clears up may come
// upon it before it is locked; then the next is tried. Some network folders know no locks, and
// nobody clears them.
FileDescriptor Make(std::string& path) {
  constexpr int kAttempts = 100;
  const std::string pattern = Parent() + "/" + std::string(kNameStart) + "XXXXXX";
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    path = pattern;
    if (!mkdtemp(path.data())) break;
    FileDescriptor folder = OpenFolder(path);
    const bool isTaken = folder && !Lock(folder) && errno == EWOULDBLOCK;
    if (folder && !isTaken && IsOurs(folder, path)) return folder;
  }
  path.clear();
  return FileDescriptor();
}

}  // namespace

void ScratchFolder::ClearLeftBehind() {
  std::error_code failure;
  for (std::filesystem::directory_iterator entry(Parent(), failure), end; !failure && entry != end;
       entry.increment(failure)) {
    const std::string path = entry->path().string();
    const std::string_view name = std::string_view(path).substr(path.rfind('/') + 1);
    if (name.size() != kNameSize || !name.starts_with(kNameStart)) continue;
    const FileDescriptor folder = OpenFolder(path);
    std::error_code ignored;
    if (folder && Lock(folder) && IsOurs(folder, path)) std::filesystem::remove_all(path, ignored);
  }
}

ScratchFolder::ScratchFolder() {
  std::string path;
  FileDescriptor folder = Make(path);
  if (folder) {
    m_path = WidePath(path);
    m_lock = folder.Release();
  } else {
    m_status = FailWithErrno();
  }
}

ScratchFolder::~ScratchFolder() {
  if (m_path.empty()) return;
  try {
    std::error_code ignored;
    std::filesystem::remove_all(PathBytes(m_path), ignored);
  } catch (const std::bad_alloc&) {
  }
  if (m_lock >= 0) close(m_lock);
}
