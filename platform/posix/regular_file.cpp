#include "platform/posix/regular_file.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/last_error.h"
#include "platform/path_text.h"
#include "platform/posix/errors.h"

namespace {

constexpr uint32_t kInvalidParameter = 87;

}  // namespace

uint32_t OpenRegularFile(const WideString& path, FileDescriptor& file, size_t& size) {
  // Without O_NONBLOCK, opening a named pipe would wait for somebody to write into it.
  file = FileDescriptor(open(PathBytes(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file) return FailWithErrno();
  struct stat details {};
  if (fstat(file.Get(), &details) != 0) return FailWithErrno();
  if (!S_ISREG(details.st_mode)) {
    const uint32_t status = S_ISDIR(details.st_mode) ? StatusOfErrno(EISDIR) : kInvalidParameter;
    SetLastError(status);
    return status;
  }
  size = static_cast<size_t>(details.st_size);
  return 0;
}
