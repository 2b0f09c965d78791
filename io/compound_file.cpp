#include "io/compound_file.h"

#include <new>

#include "base/status.h"
#include "io/compound_file_check.h"
#include "platform/compound_file.h"

namespace {

constexpr size_t kLargestStream = 0x70000000;

uint32_t CheckStorage(std::string_view storage) {
  if (!HasCompoundFileSignature(storage)) return kStatusNotAStorage;
  return IsSoundCompoundFile(storage) ? kStatusSuccess : kStatusStorageCorrupt;
}

}  // namespace

uint32_t ReadStorageStream(std::string_view storage, std::string_view streamName,
                           std::string& content) try {
  const uint32_t status = CheckStorage(storage);
  return status ? status : ReadSoundStorageStream(storage, streamName, content);
} catch (const std::bad_alloc&) {
  return kStatusStorageOutOfMemory;
}

uint32_t ReplaceStorageStream(std::string_view storage, std::string_view streamName,
                              std::string_view content, std::string& patched) try {
  if (content.size() > kLargestStream) return kStatusStorageFull;
  const uint32_t status = CheckStorage(storage);
  return status ? status : ReplaceSoundStorageStream(storage, streamName, content, patched);
} catch (const std::bad_alloc&) {
  return kStatusStorageOutOfMemory;
}
