#include "platform/posix/regular_file.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/status.h"
#include "platform/path_text.h"
#include "platform/posix/errors.h"

namespace {

FileState StateOf(const struct stat& details) {
  constexpr int64_t kNanoseconds = 1000000000;
  return {details.st_size, details.st_mtim.tv_sec * kNanoseconds + details.st_mtim.tv_nsec};
}

}  // namespace

uint32_t OpenRegularFile(const WideString& path, FileDescriptor& file, FileState& state) {
  // Without O_NONBLOCK, opening a named pipe would wait for somebody to write into it.
  file = FileDescriptor(open(PathBytes(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file) return FailWithErrno();
  struct stat details {};
  if (fstat(file.Get(), &details) != 0) return FailWithErrno();
  if (S_ISDIR(details.st_mode)) return kStatusAccessDenied;
  if (!S_ISREG(details.st_mode)) return kStatusInvalidParameter;
  state = StateOf(details);
  return kStatusSuccess;
}

uint32_t CheckUnchanged(int descriptor, const FileState& state) {
  struct stat details {};
  if (fstat(descriptor, &details) == 0) {
    if (StateOf(details) == state) return kStatusSuccess;
    errno = EBUSY;
  }
  return FailWithErrno();
}
