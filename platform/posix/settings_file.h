#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// Makes an empty file that only this user can read, with the folders above it. An existing file
/// stays as it is. Returns 0 or the platform's error code.
uint32_t EnsurePrivateFile(const std::string& path);

/// Gives a damaged settings file, and the journal beside it, another name: `path` with ".damaged"
/// behind it, and a number where that is taken. `isDamaged` is asked again while no other program
/// can do the same. Returns 0 or the platform's error code; `aside` is the new name, or empty when
/// the file is gone or sound by now.
uint32_t PutAside(const std::string& path, const std::function<bool()>& isDamaged,
                  std::string& aside);
