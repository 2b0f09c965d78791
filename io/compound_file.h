#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// OLE compound files ("structured storage"): a small file system of storages and streams inside
// one file. Both operations work on the bytes of a whole file and look for a stream at its top
// level, whose name (UTF-8) must be equal in every character; a storage of that name is no match.
//
// Results are 0 or the status codes of Windows:
//   0x80030002  the file has no such stream
//   0x80030050  the bytes are no compound file
//   0x80030070  the new file would be larger than compound files can be (2 GB)
//   0x80030109  a compound file that is damaged, or cut
//   0x8007000E  out of memory
//   0x8007007E  the part of the program that handles compound files is not installed

/// Gives the content of a stream in `content`, which stays as it is on failure.
uint32_t ReadStorageStream(std::string_view storage, std::string_view streamName,
                           std::string& content);

/// Gives in `patched` a compound file that has `content` in the stream and is like `storage` in
/// all else: every other stream keeps its bytes. `patched` stays as it is on failure.
uint32_t ReplaceStorageStream(std::string_view storage, std::string_view streamName,
                              std::string_view content, std::string& patched);
