#pragma once

#include <cstdint>

/// Results of readers, writers and services: platform error codes of Windows and compound-file
/// status values, the same on every platform. 0 is success.
enum StatusCode : uint32_t {
  kStatusSuccess = 0,
  kStatusFailure = 1,            ///< what most formats give for a file that could not be used
  kStatusFileNotFound = 2,       ///< ERROR_FILE_NOT_FOUND
  kStatusDeclined = 3,           ///< the user has declined a question; nothing is reported
  kStatusAccessDenied = 5,       ///< ERROR_ACCESS_DENIED; also a folder where a file was asked for
  kStatusInvalidHandle = 6,      ///< ERROR_INVALID_HANDLE
  kStatusOutOfMemory = 8,        ///< ERROR_NOT_ENOUGH_MEMORY
  kStatusBadFormat = 11,         ///< ERROR_BAD_FORMAT: not this format
  kStatusInvalidData = 13,       ///< ERROR_INVALID_DATA
  kStatusBadLength = 24,         ///< ERROR_BAD_LENGTH
  kStatusSharingViolation = 32,  ///< ERROR_SHARING_VIOLATION: the file is locked
  kStatusNotSupported = 50,      ///< ERROR_NOT_SUPPORTED
  kStatusInvalidParameter = 87,  ///< ERROR_INVALID_PARAMETER
  kStatusDiskFull = 112,         ///< ERROR_DISK_FULL
  kStatusModuleNotFound = 126,   ///< ERROR_MOD_NOT_FOUND
  kStatusNameTooLong = 206,      ///< ERROR_FILENAME_EXCED_RANGE
  kStatusCancelled = 1223,       ///< ERROR_CANCELLED: the user has cancelled
  kStatusInternalError = 1359,   ///< ERROR_INTERNAL_ERROR: every error without a number of its own
  kStatusFileCorrupt = 1392,     ///< ERROR_FILE_CORRUPT
  kStatusNotImplemented = 0x80004001,      ///< E_NOTIMPL
  kStatusStreamNotFound = 0x80030002,      ///< STG_E_FILENOTFOUND
  kStatusStorageSharing = 0x80030020,      ///< STG_E_SHAREVIOLATION: the compound file is locked
  kStatusNotAStorage = 0x80030050,         ///< STG_E_FILEALREADYEXISTS: no compound file
  kStatusStorageFull = 0x80030070,         ///< STG_E_MEDIUMFULL
  kStatusStorageCorrupt = 0x80030109,      ///< STG_E_DOCFILECORRUPT: damaged or cut
  kStatusStorageOutOfMemory = 0x8007000E,  ///< E_OUTOFMEMORY
  kStatusModuleMissing = 0x8007007E,       ///< a part of the program is not installed
  kStatusInvalidArgument = 0x80070057,     ///< E_INVALIDARG
};
