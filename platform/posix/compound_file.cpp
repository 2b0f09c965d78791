#include "platform/compound_file.h"

#include "base/status.h"
#include "platform/posix/compound_files/module.h"
#include "platform/program_module.h"

namespace {

const CompoundFileModule* LoadModule() {
  const auto entry = reinterpret_cast<CompoundFileModuleEntry>(
      LoadModuleEntry(kCompoundFileModule, kCompoundFileModuleEntry));
  return entry ? entry() : nullptr;
}

// Null when the part of the program is not installed.
const CompoundFileModule* Module() {
  static const CompoundFileModule* const module = LoadModule();
  return module;
}

}  // namespace

uint32_t ReadSoundStorageStream(std::string_view storage, std::string_view streamName,
                                std::string& content) {
  const CompoundFileModule* const module = Module();
  return module ? module->readStream(storage, streamName, content) : kStatusModuleMissing;
}

uint32_t ReplaceSoundStorageStream(std::string_view storage, std::string_view streamName,
                                   std::string_view content, std::string& patched) {
  const CompoundFileModule* const module = Module();
  return module ? module->replaceStream(storage, streamName, content, patched)
                : kStatusModuleMissing;
}
