#pragma once

#include <cstddef>

/// Size and alignment, in bytes, of what `PreferLargePages` is told of.
inline constexpr size_t kLargePageSize = size_t{1} << 21;

/// Asks for `memory`, a block of `kLargePageSize` at such an address, to be one large page rather
/// than hundreds of small ones, each of which the system would have to fetch when it is first
/// touched. Only a hint.
void PreferLargePage(void* memory);
