#include "platform/compound_file.h"

#include <dlfcn.h>
#include <limits.h>
#include <unistd.h>

#include "base/status.h"
#include "platform/posix/compound_files/module.h"

namespace {

constexpr char kModuleName[] = "/corvane_compound_files.so";

// The folder of the running program. $ORIGIN in the module's path would do the same, but not in a
// sanitizer build, where it stands for the folder of the sanitizer's library.
std::string ProgramFolder() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0) return {};
  const std::string program(path, static_cast<size_t>(length));
  return program.substr(0, program.rfind('/'));
}

// The module stands beside a program that was just built, and in a folder of its own beside an
// installed one. It stays loaded until the process ends.
const CompoundFileModule* LoadModule() {
  const std::string folder = ProgramFolder();
  if (folder.empty()) return nullptr;
  void* library = dlopen((folder + kModuleName).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) {
    const std::string installed = folder + "/" CORVANE_MODULE_FOLDER;
    library = dlopen((installed + kModuleName).c_str(), RTLD_NOW | RTLD_LOCAL);
  }
  if (!library) return nullptr;
  const auto entry =
      reinterpret_cast<CompoundFileModuleEntry>(dlsym(library, kCompoundFileModuleEntry));
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
