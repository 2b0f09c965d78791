#include "platform/zip_archive.h"

#include "base/status.h"
#include "platform/clock.h"
#include "platform/posix/zip_archives/module.h"
#include "platform/program_module.h"

std::unique_ptr<ZipArchive> OpenZipArchive(std::string_view bytes) {
  static const auto open = reinterpret_cast<ZipArchiveModuleEntry>(
      LoadModuleEntry(kZipArchiveModule, kZipArchiveModuleEntry));
  return std::unique_ptr<ZipArchive>(open ? open(bytes) : nullptr);
}

uint32_t MakeZipArchive(const std::vector<ZipEntry>& entries, std::string& archive) {
  static const auto make = reinterpret_cast<ZipMakerModuleEntry>(
      LoadModuleEntry(kZipArchiveModule, kZipMakerModuleEntry));
  return make ? make(entries, UnixNow(), archive) : kStatusModuleMissing;
}
