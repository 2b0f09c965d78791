#pragma once

#include <string_view>

#include "platform/zip_archive.h"

// The module that unpacks archives; hardly any conversion needs the library behind it. Module and
// program are always built together.

inline constexpr char kZipArchiveModule[] = "corvane_zip_archives";
/// Name of the module's one function, which does what `OpenZipArchive` does. The archive is the
/// caller's.
inline constexpr char kZipArchiveModuleEntry[] = "CorvaneOpenZipArchive";
using ZipArchiveModuleEntry = ZipArchive* (*)(std::string_view bytes);
