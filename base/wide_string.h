#pragma once

#include <string>

/// Paths and everything that is shown: UTF-16, 16 bits a unit on every platform. A path that is no
/// valid UTF-8 keeps each undecodable byte as a lone surrogate U+DC80 to U+DCFF.
using WideString = std::u16string;
