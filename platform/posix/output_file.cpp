#include "platform/output_file.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/interruption.h"
#include "platform/path_text.h"
#include "platform/posix/errors.h"
#include "platform/posix/file_descriptor.h"

namespace {

constexpr std::string_view kTemporarySuffix = ".corvane-tmp";

// The file that `path` leads to, through all links, also when that file is not there yet.
std::string FollowLinks(std::string path) {
  char target[PATH_MAX];
  for (int depth = 0; depth < 40; ++depth) {
    const ssize_t length = readlink(path.c_str(), target, sizeof target);
    if (length < 0) break;
    std::string link(target, static_cast<size_t>(length));
    const size_t slash = path.rfind('/');
    if (!link.starts_with('/') && slash != std::string::npos) link.insert(0, path, 0, slash + 1);
    path = std::move(link);
  }
  return path;
}

// Where the name begins in a path.
size_t NameStart(const std::string& path) { return path.rfind('/') + 1; }

// Opens the folder of a file, for looking names up in it.
int OpenFolderOf(const std::string& path) {
  const std::string folder = path.substr(0, NameStart(path));
  return open(folder.empty() ? "." : folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
}

// A hidden name beside the target, the same on every run, so that what a killed run leaves behind
// is used up by the next one. `attempt` above 0 names further ones.
std::string TemporaryName(const std::string& target, int attempt) {
  std::string suffix(kTemporarySuffix);
  if (attempt > 0) suffix += std::to_string(getpid()) + "-" + std::to_string(attempt);
  return "." + target.substr(NameStart(target), NAME_MAX - 1 - suffix.size()) + suffix;
}

// Whether a temporary file that was there may be emptied: ours alone. In a folder that others may
// write to, they could have put a second name of another file there, or a file that they keep open.
bool IsOursAlone(const struct stat& file) {
  return S_ISREG(file.st_mode) && file.st_nlink == 1 && file.st_uid == geteuid();
}

// Takes the lock of a temporary file. Some network folders know no locks; there a new file may be
// used without one.
bool Lock(const FileDescriptor& file, bool isNew) {
  return flock(file.Get(), LOCK_EX | LOCK_NB) == 0 || (isNew && errno != EWOULDBLOCK);
}

// Opens a temporary file that no other process is writing: locked, and still under its name once
// the lock is ours (its former owner may have given it the target's name meanwhile). EBUSY for a
// name that is taken.
int OpenLocked(int folder, const std::string& name, mode_t mode) {
  constexpr int kFlags = O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  // A new file is ours even where a foreign file system says that it belongs to somebody else.
  FileDescriptor file(openat(folder, name.c_str(), kFlags | O_CREAT | O_EXCL, mode));
  const bool isNew = static_cast<bool>(file);
  if (!isNew && errno != EEXIST) return -1;
  if (!isNew) file = FileDescriptor(openat(folder, name.c_str(), kFlags));
  struct stat opened {};
  struct stat named {};
  if (!file || !Lock(file, isNew) || fstat(file.Get(), &opened) != 0 ||
      fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) != 0 ||
      opened.st_ino != named.st_ino || opened.st_dev != named.st_dev ||
      (!isNew && !IsOursAlone(opened))) {
    errno = EBUSY;
    return -1;
  }
  if (ftruncate(file.Get(), 0) != 0) return -1;
  return file.Release();
}

// Gives the new file the owner and the permissions of the old one. The owner can only be kept by
// those who may give files away. Memory cards have one set of permissions for all files, and some
// of their drivers refuse every change, even to the same.
bool TakeOver(int file, const struct stat& old) {
  if (fchown(file, old.st_uid, old.st_gid) != 0) errno = 0;
  struct stat made {};
  if (fstat(file, &made) != 0) return false;
  return made.st_mode == old.st_mode || fchmod(file, old.st_mode & 07777) == 0;
}

// False, with the cause in errno, when memory does not suffice.
bool Append(std::string& content, std::string_view bytes) {
  try {
    content.append(bytes);
    return true;
  } catch (const std::bad_alloc&) {
    errno = ENOMEM;
    return false;
  }
}

// Whether the user has interrupted the program, which may have been while it waited for the disk.
bool IsInterrupted() {
  if (!InterruptionScope::IsPending()) return false;
  errno = EINTR;
  return true;
}

// Whether a call that syncs has done it. Some file systems know no such thing.
bool IsSynced(int result) { return result == 0 || errno == EINVAL || errno == ENOTSUP; }

// ".trip.gpx.corvane-tmp", or further ones with a process and a number behind.
bool IsTemporaryName(std::string_view name) {
  const size_t suffix = name.rfind(kTemporarySuffix);
  return suffix != std::string_view::npos && name.starts_with('.') &&
         name.find_first_not_of("0123456789-", suffix + kTemporarySuffix.size()) ==
             std::string_view::npos;
}

// Removes a temporary file that no process has locked. Whoever creates it right now looks whether
// it still stands under its name once the lock is there.
void RemoveUnfinished(int folder, const char* name) {
  const FileDescriptor file(openat(folder, name, O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  struct stat details {};
  if (!file || fstat(file.Get(), &details) != 0 || !IsOursAlone(details)) return;
  if (flock(file.Get(), LOCK_EX | LOCK_NB) == 0) unlinkat(folder, name, 0);
}

}  // namespace

uint32_t SyncFileSystem(const WideString& path) {
  const std::string name = path.empty() ? "." : PathBytes(path);
  const FileDescriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  return file && IsSynced(syncfs(file.Get())) ? 0 : FailWithErrno();
}

void ClearUnfinishedFiles(const WideString& folder) {
  const std::string path = PathBytes(folder);
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(path.empty() ? "." : path.c_str()),
                                                    closedir);
  if (!entries) return;
  while (const dirent* entry = readdir(entries.get())) {
    if (IsTemporaryName(entry->d_name)) RemoveUnfinished(dirfd(entries.get()), entry->d_name);
  }
}

OutputFile::OutputFile(const WideString& path, Durability durability)
    : m_target(PathBytes(path)), m_durability(durability) {
  struct stat existing {};
  const bool exists = stat(m_target.c_str(), &existing) == 0;
  // Links in a circle, or a file in place of a folder on the way.
  if (!exists && errno != ENOENT) {
    m_status = FailWithErrno();
    return;
  }
  if (exists && S_ISDIR(existing.st_mode)) {
    errno = EISDIR;
    m_status = FailWithErrno();
    return;
  }
  if (exists && !S_ISREG(existing.st_mode)) {
    m_mode = Mode::kDirect;
    m_file = open(m_target.c_str(), O_WRONLY | O_CLOEXEC);
    if (m_file < 0) m_status = FailWithErrno();
    return;
  }
  m_target = FollowLinks(m_target);
  if (exists && access(m_target.c_str(), W_OK) != 0) {
    m_status = FailWithErrno();
    return;
  }
  OpenReplacement();
  if (m_file < 0 && exists && (errno == EACCES || errno == EROFS || errno == EPERM)) {
    m_mode = Mode::kInPlace;
    m_replacesFile = true;
  } else if (m_file < 0) {
    m_status = FailWithErrno();
  } else if (exists) {
    m_replacesFile = true;
    if (!TakeOver(m_file, existing)) m_status = FailWithErrno();
  }
}

void OutputFile::OpenReplacement() {
  constexpr int kAttempts = 100;
  m_folder = OpenFolderOf(m_target);
  if (m_folder < 0) return;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    m_temporary = TemporaryName(m_target, attempt);
    m_file = OpenLocked(m_folder, m_temporary, 0666);
    if (m_file >= 0 || errno != EBUSY) return;
  }
}

OutputFile::~OutputFile() {
  Discard();
  if (m_folder >= 0) close(m_folder);
}

void OutputFile::Discard() {
  if (m_file < 0) return;
  if (m_mode == Mode::kReplace) unlinkat(m_folder, m_temporary.c_str(), 0);
  close(m_file);
  m_file = -1;
}

void OutputFile::Write(std::string_view bytes) {
  if (m_status != 0) return;
  if (m_mode == Mode::kInPlace) {
    if (!Append(m_content, bytes)) m_status = FailWithErrno();
  } else if (!WriteFully(m_file, bytes)) {
    m_status = FailWithErrno();
  } else {
    m_size += bytes.size();
    WriteBehind();
  }
}

// A file goes to the disk before it gets its name, so that a power cut leaves the old one or the
// new one; where another file has that name, the file system itself sees to it. What the disk has
// begun with early need not be waited for then.
void OutputFile::WriteBehind() {
#ifdef SYNC_FILE_RANGE_WRITE
  constexpr uint64_t kStep = uint64_t{1} << 20;
  if (!(NeedsSync() || m_replacesFile) || m_size - m_begunSize < kStep) return;
  // Only a hint: errors come up when the file is closed.
  sync_file_range(m_file, static_cast<off64_t>(m_begunSize),
                  static_cast<off64_t>(m_size - m_begunSize), SYNC_FILE_RANGE_WRITE);
  m_begunSize = m_size;
#endif
}

uint32_t OutputFile::Commit() {
  if (m_status != 0) {
    Discard();
    return m_status;
  }
  if (m_mode == Mode::kInPlace) {
    OverwriteTarget();
    return m_status;
  }
  // The lock goes with the descriptor, so the name is changed first. Network folders tell of a
  // write that failed only when a descriptor is closed: a second one is, before the old file goes.
  const int second = dup(m_file);
  if (second < 0 || close(second) != 0 || !SyncFile(m_file) || IsInterrupted()) {
    m_status = FailWithErrno();
    Discard();
    return m_status;
  }
  const char* const name = m_target.c_str() + NameStart(m_target);
  if (m_mode == Mode::kReplace && renameat(m_folder, m_temporary.c_str(), m_folder, name) != 0) {
    m_status = FailWithErrno();
    Discard();
    return m_status;
  }
  if (!SyncFolder()) m_status = FailWithErrno();
  if (close(m_file) != 0) m_status = FailWithErrno();
  m_file = -1;
  return m_status;
}

bool OutputFile::NeedsSync() const {
  return m_durability == Durability::kSynced ||
         (m_durability == Durability::kSyncedTogether && m_replacesFile);
}

bool OutputFile::SyncFile(int file) const {
  return !NeedsSync() || m_mode == Mode::kDirect || IsSynced(fsync(file));
}

// The name is a matter of the folder. One that may be written but not read cannot be synced.
bool OutputFile::SyncFolder() const {
  if (m_durability != Durability::kSynced || m_mode != Mode::kReplace) return true;
  const FileDescriptor folder(openat(m_folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return !folder || IsSynced(fsync(folder.Get()));
}

// There is no room for a second file here. The former content is kept in memory and put back when
// the new one does not fit.
void OutputFile::OverwriteTarget() {
  const FileDescriptor file(open(m_target.c_str(), O_RDWR | O_CLOEXEC));
  if (!file) {
    m_status = FailWithErrno();
    return;
  }
  std::string former;
  char piece[65536];
  ssize_t count = 0;
  while ((count = read(file.Get(), piece, sizeof piece)) > 0) {
    if (Append(former, {piece, static_cast<size_t>(count)})) continue;
    m_status = FailWithErrno();
    return;
  }
  const auto overwrite = [this, &file](const std::string& content) {
    return lseek(file.Get(), 0, SEEK_SET) == 0 && WriteFully(file.Get(), content) &&
           ftruncate(file.Get(), static_cast<off_t>(content.size())) == 0 && SyncFile(file.Get());
  };
  if (count < 0 || !overwrite(m_content)) {
    m_status = FailWithErrno();
    if (count == 0) overwrite(former);
  }
}
