#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/posix/file_descriptor.h"
#include "platform/wide_string.h"

/// Opens the regular file at `path` for reading and tells its size. Returns 0 or the platform's
/// error code, which is also kept for `LastError`.
uint32_t OpenRegularFile(const WideString& path, FileDescriptor& file, size_t& size);
