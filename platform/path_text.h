#pragma once

#include <string>
#include <string_view>

#include "base/wide_string.h"

/// The path as the file system spells it. Lone surrogates U+DC80 to U+DCFF become the bytes that
/// they stand for, so that every path survives the trip to wide and back.
std::string PathBytes(const WideString& path);

/// The reverse of `PathBytes`: valid UTF-8 is decoded, every other byte becomes a lone surrogate.
WideString WidePath(std::string_view bytes);
