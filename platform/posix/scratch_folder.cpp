#include "platform/scratch_folder.h"

#include <cstdlib>
#include <ctime>
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

constexpr std::string_view kNameStart = "corvane-";
constexpr size_t kNameSize = kNameStart.size() + 6;

// A folder this young may belong to a process that has not locked it yet.
constexpr std::time_t kSecondsToLock = 60;

std::string Parent() {
  const char* parent = std::getenv("TMPDIR");
  return parent && *parent ? parent : "/tmp";
}

// The folder, locked for this process; nothing when another one has the lock.
FileDescriptor LockFolder(const std::string& path) {
  FileDescriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (folder && flock(folder.Get(), LOCK_EX | LOCK_NB) != 0) return FileDescriptor();
  return folder;
}

// Whether a folder that could be locked is of a process of ours that was killed.
bool IsLeftBehind(const FileDescriptor& folder) {
  struct stat details {};
  return fstat(folder.Get(), &details) == 0 && details.st_uid == geteuid() &&
         details.st_mtime + kSecondsToLock < std::time(nullptr);
}

void ClearWhatWasLeftBehind(const std::string& parent) {
  std::error_code failure;
  for (std::filesystem::directory_iterator entry(parent, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    const std::string name = entry->path().filename().string();
    if (name.size() != kNameSize || !name.starts_with(kNameStart)) continue;
    const FileDescriptor folder = LockFolder(entry->path().string());
    std::error_code ignored;
    if (folder && IsLeftBehind(folder)) std::filesystem::remove_all(entry->path(), ignored);
  }
}

}  // namespace

ScratchFolder::ScratchFolder() {
  const std::string parent = Parent();
  ClearWhatWasLeftBehind(parent);
  std::string path = parent + "/" + std::string(kNameStart) + "XXXXXX";
  if (mkdtemp(path.data())) {
    m_path = WidePath(path);
    m_lock = LockFolder(path).Release();
  } else {
    m_status = FailWithErrno();
  }
}

// Without memory even for a name there is no way to clear up, and nobody to tell.
ScratchFolder::~ScratchFolder() {
  if (m_path.empty()) return;
  try {
    std::error_code ignored;
    std::filesystem::remove_all(PathBytes(m_path), ignored);
  } catch (const std::bad_alloc&) {
  }
  if (m_lock >= 0) close(m_lock);
}
