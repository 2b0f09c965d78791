#pragma once

#include <string_view>

/// True when the bytes begin like a compound file.
bool HasCompoundFileSignature(std::string_view bytes);

/// True when a compound file can be handed to a library that trusts its numbers: all tables, chains
/// and directory entries lie inside the file, no two of them share a sector, nothing runs in a
/// circle, and no stream claims more than its sectors hold. Linear in the size of the file.
bool IsSoundCompoundFile(std::string_view bytes);
