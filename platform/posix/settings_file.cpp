#include "platform/posix/settings_file.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/folder.h"
#include "platform/path_text.h"
#include "platform/posix/errors.h"
#include "platform/posix/file_descriptor.h"
#include "platform/posix/lock_patience.h"

namespace {

constexpr const char* kJournalSuffix = "-journal";
constexpr const char* kAsideSuffix = ".damaged";
constexpr int kMostAsides = 1000;
constexpr mode_t kPrivate = S_IRUSR | S_IWUSR;

// The bytes of the file that SQLite locks, whether they are there or not: who holds them all keeps
// every other program from reading and writing.
constexpr off_t kLockStart = 0x40000000;
constexpr off_t kLockSize = 512;

bool Exists(const std::string& path) {
  struct stat details {};
  return lstat(path.c_str(), &details) == 0;
}

std::string FreeName(const std::string& path) {
  std::string name = path + kAsideSuffix;
  for (int number = 2; Exists(name) && number <= kMostAsides; ++number)
    name = path + kAsideSuffix + "-" + std::to_string(number);
  return name;
}

// Locks the file until it is closed.
bool LockAgainstSqlite(const std::string& path, const FileDescriptor& file) {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = kLockStart;
  lock.l_len = kLockSize;
  LockPatience patience(path);
  do {
    if (fcntl(file.Get(), F_SETLK, &lock) == 0) return true;
    if (errno != EACCES && errno != EAGAIN) return false;
  } while (patience.WaitAMoment());
  errno = EBUSY;
  return false;
}

bool CopyContent(const FileDescriptor& from, const std::string& path) {
  const FileDescriptor to(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kPrivate));
  if (!to) return false;
  char piece[65536];
  for (;;) {
    const ssize_t count = read(from.Get(), piece, sizeof piece);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return count == 0;
    if (!WriteFully(to.Get(), {piece, static_cast<size_t>(count)})) return false;
  }
}

// A journal that is not there is copied too.
bool CopyJournal(const std::string& path, const std::string& copy) {
  const FileDescriptor journal(open((path + kJournalSuffix).c_str(), O_RDONLY | O_CLOEXEC));
  return journal ? CopyContent(journal, copy + kJournalSuffix) : errno == ENOENT;
}

void Remove(const std::string& copy) {
  unlink((copy + kJournalSuffix).c_str());
  unlink(copy.c_str());
}

}  // namespace

uint32_t EnsurePrivateFile(const std::string& path) {
  struct stat details {};
  if (stat(path.c_str(), &details) == 0)
    return S_ISREG(details.st_mode) ? 0 : StatusOfErrno(EISDIR);
  if (const uint32_t status = CreateFolders(WidePath(path.substr(0, path.rfind('/')))))
    return status;
  const FileDescriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kPrivate));
  return file || errno == EEXIST ? 0 : FailWithErrno();
}

uint32_t PutAside(const std::string& path,
                  const std::function<bool(const std::string& copy)>& isDamaged,
                  std::string& aside) {
  aside.clear();
  const FileDescriptor file(open(path.c_str(), O_RDWR | O_CLOEXEC));
  if (!file) return errno == ENOENT ? 0 : FailWithErrno();
  if (!LockAgainstSqlite(path, file)) return FailWithErrno();

  const std::string copy = FreeName(path);
  if (!CopyContent(file, copy) || !CopyJournal(path, copy)) {
    const uint32_t status = FailWithErrno();
    Remove(copy);
    return status;
  }
  // Another program may have been here first.
  if (!isDamaged(copy)) {
    Remove(copy);
    return 0;
  }
  // Beside an empty file the journal would bring the damage back.
  if (unlink((path + kJournalSuffix).c_str()) != 0 && errno != ENOENT) return FailWithErrno();
  if (ftruncate(file.Get(), 0) != 0) return FailWithErrno();
  aside = copy;
  return 0;
}
