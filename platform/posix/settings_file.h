#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// Makes an empty file that only this user can read, with the folders above it. An existing file
/// stays as it is. Returns 0 or the platform's error code.
uint32_t EnsurePrivateFile(const std::string& path);

/// Moves the content of a damaged SQLite file, and of the journal beside it, to another name:
/// `path` with ".damaged" behind it, and a number where that is taken. The file itself stays and is
/// empty then, since other programs may have it open. `isDamaged` is asked for the copy, while no
/// other program can use the file. Returns 0 or the platform's error code; `aside` is the name of
/// the copy, or empty when there was no damage (any more).
uint32_t PutAside(const std::string& path,
                  const std::function<bool(const std::string& copy)>& isDamaged,
                  std::string& aside);
