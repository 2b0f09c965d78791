#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/zip_archive.h"

// The module that unpacks archives; hardly any conversion needs the library behind it. Module and
// program are always built together.

inline constexpr char kZipArchiveModule[] = "corvane_zip_archives";
/// Name of the function that does what `OpenZipArchive` does. The archive is the
/// caller's.
inline constexpr char kZipArchiveModuleEntry[] = "CorvaneOpenZipArchive";
using ZipArchiveModuleEntry = ZipArchive* (*)(std::string_view bytes);

/// Name of the function that does what `MakeZipArchive` does; `time` is that of the files, in
/// seconds since 1970.
inline constexpr char kZipMakerModuleEntry[] = "CorvaneMakeZipArchive";
using ZipMakerModuleEntry = uint32_t (*)(const std::vector<ZipEntry>& entries, int64_t time,
                                         std::string& archive);
