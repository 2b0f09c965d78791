#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A ZIP archive, whose entries are unpacked piece by piece as they are read.
class ZipArchive {
 public:
  virtual ~ZipArchive() = default;

  virtual size_t Count() const = 0;
  /// Path of an entry inside the archive, with "/" between its folders.
  virtual std::string Name(size_t index) const = 0;
  /// Of an entry in the archive, in bytes; what it unpacks to is known only when that is done.
  virtual uint64_t PackedSize(size_t index) const = 0;

  /// Begins to read an entry. False when it is encrypted or packed in an unknown way.
  virtual bool Open(size_t index) = 0;
  /// Puts up to `size` of the opened entry's next bytes at `data`. Returns how many, 0 only at its
  /// end; nothing when it is damaged.
  virtual std::optional<size_t> Read(char* data, size_t size) = 0;
};

/// Opens the archive whose bytes these are; they must outlive it. Null when they are none, and
/// where the part of the program that unpacks is not installed.
std::unique_ptr<ZipArchive> OpenZipArchive(std::string_view bytes);

/// A file for a new archive.
struct ZipEntry {
  std::string name;  ///< UTF-8, with "/" between folders
  std::string bytes;
};

/// Makes an archive in memory, its files stored as they are. Returns 0, kStatusFailure, or
/// kStatusModuleMissing where the part of the program that packs is not installed.
uint32_t MakeZipArchive(const std::vector<ZipEntry>& entries, std::string& archive);
