#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "settings/storage.h"

// Lists are kept as values "0", "1" and so on of a folder, with their count in "Number".

/// Calls `take` with the bytes of each entry, in order. A folder without "Number" is an empty list.
/// Throws storage::Exception.
void ReadIndexedEntries(const storage::SFolder& folder,
                        const std::function<void(const std::string& bytes)>& take);

/// Writes the entries and their count, in a transaction of the caller's. Entries of a longer list
/// before stay behind; the count decides. Throws storage::Exception.
void WriteIndexedEntries(storage::Storage& storage, const std::string& path,
                         const std::vector<std::string>& entries);
