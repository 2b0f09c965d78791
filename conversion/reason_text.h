#pragma once

#include <cstdint>
#include <string>

#include "base/wide_string.h"

/// Why a file operation failed, as a sentence of its own that begins with a blank; empty when
/// nothing is known, 0. `path` is the file it was about.
std::string DescribeReason(uint32_t platformError, const WideString& path);
