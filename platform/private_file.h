#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"

/// The system's folder for temporary files.
WideString TemporaryFolderPath();

/// Writes a file that only this user can read, whole or not at all. A link of that name is
/// replaced, never followed: other users may write to the folder too. Returns 0 or the platform's
/// error code.
uint32_t WritePrivateFile(const WideString& path, std::string_view bytes);
