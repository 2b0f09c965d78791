#include "platform/posix/settings_file.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/folder.h"
#include "platform/path_text.h"
#include "platform/posix/errors.h"
#include "platform/posix/file_descriptor.h"

namespace {

constexpr const char* kJournalSuffix = "-journal";
constexpr const char* kAsideSuffix = ".damaged";
constexpr int kMostAsides = 1000;

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

// True when the open file is the one that the path leads to.
bool IsStillNamed(const FileDescriptor& file, const std::string& path) {
  struct stat opened {};
  struct stat named {};
  return fstat(file.Get(), &opened) == 0 && stat(path.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

}  // namespace

uint32_t EnsurePrivateFile(const std::string& path) {
  struct stat details {};
  if (stat(path.c_str(), &details) == 0)
    return S_ISREG(details.st_mode) ? 0 : StatusOfErrno(EISDIR);
  if (const uint32_t status = CreateFolders(WidePath(path.substr(0, path.rfind('/')))))
    return status;
  const FileDescriptor file(
      open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
  return file || errno == EEXIST ? 0 : FailWithErrno();
}

uint32_t PutAside(const std::string& path, const std::function<bool()>& isDamaged,
                  std::string& aside) {
  aside.clear();
  // The lock keeps a second program from renaming the sound file that the first one has put in the
  // damaged one's place.
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file) return errno == ENOENT ? 0 : FailWithErrno();
  if (flock(file.Get(), LOCK_EX) != 0) return FailWithErrno();
  if (!IsStillNamed(file, path) || !isDamaged()) return 0;

  const std::string name = FreeName(path);
  // The journal goes first: beside a new file it would be taken for that one's own.
  if (rename((path + kJournalSuffix).c_str(), (name + kJournalSuffix).c_str()) != 0 &&
      errno != ENOENT)
    return FailWithErrno();
  if (rename(path.c_str(), name.c_str()) != 0) return FailWithErrno();
  aside = name;
  return 0;
}
