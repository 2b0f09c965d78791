#include "platform/posix/errors.h"

#include <cerrno>

#include "base/status.h"

uint32_t StatusOfErrno(int error) {
  switch (error) {
    case 0:
      return kStatusSuccess;
    case ENOENT:
    case ENOTDIR:
      return kStatusFileNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      return kStatusAccessDenied;
    case ENOMEM:
      return kStatusOutOfMemory;
    case EBUSY:
    case ETXTBSY:
      return kStatusSharingViolation;
    case EINVAL:
      return kStatusInvalidParameter;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return kStatusDiskFull;
    case ENAMETOOLONG:
      return kStatusNameTooLong;
    default:
      return kStatusInternalError;
  }
}

uint32_t FailWithErrno() { return StatusOfErrno(errno); }
