#pragma once

#include <cstdint>

#include "base/wide_string.h"
#include "platform/file_state.h"
#include "platform/posix/file_descriptor.h"

/// Opens the regular file at `path` for reading and tells its state. Returns 0 or the platform's
/// error code.
uint32_t OpenRegularFile(const WideString& path, FileDescriptor& file, FileState& state);

/// Returns 0 when nobody has written to an open file since it had this state, otherwise the error
/// code of a file in use. What was read meanwhile may be of two states, half and half.
uint32_t CheckUnchanged(int descriptor, const FileState& state);
