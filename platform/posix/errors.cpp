#include "platform/posix/errors.h"

#include <cerrno>

#include "platform/last_error.h"

uint32_t StatusOfErrno(int error) {
  switch (error) {
    case 0:
      return 0;
    case ENOENT:
    case ENOTDIR:
      return 2;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      return 5;
    case ENOMEM:
      return 8;
    case EBUSY:
    case ETXTBSY:
      return 32;
    case EINVAL:
      return 87;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return 112;
    case ENAMETOOLONG:
      return 206;
    default:
      return 1359;
  }
}

uint32_t FailWithErrno() {
  const uint32_t status = StatusOfErrno(errno);
  SetLastError(status);
  return status;
}
