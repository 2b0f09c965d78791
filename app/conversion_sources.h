#pragma once

#include <vector>

#include "base/wide_string.h"

/// A file that a run converts.
struct ConversionSource {
  WideString path;
  WideString below = {};  ///< the folders between the folder that was given and the file
  bool fromFolder = false;
};

/// Stands for standard input among the sources, and for standard output as the target.
inline constexpr std::u16string_view kStream = u"-";

/// Appends what lies in a folder, in byte order of the names; with `recursive` what lies in the
/// folders below too, those aside that links lead to. Folders are sources as files are, which
/// nothing reads. Returns 0 or the platform's error code for the folder itself.
uint32_t ListSources(const WideString& folder, bool recursive,
                     std::vector<ConversionSource>& sources);
