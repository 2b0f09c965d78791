#include "platform/program_module.h"

#include <string>

#include <dlfcn.h>

#include "platform/posix/program_folder.h"

namespace {

void* OpenModule(const std::string& name) {
  const std::string folder = ProgramFolder();
  if (folder.empty()) return nullptr;
  void* const beside = dlopen((folder + name).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (beside) return beside;
  const std::string installed = folder + "/" CORVANE_MODULE_FOLDER;
  return dlopen((installed + name).c_str(), RTLD_NOW | RTLD_LOCAL);
}

}  // namespace

void* LoadModuleEntry(const char* module, const char* entry) {
  void* const library = OpenModule("/" + std::string(module) + ".so");
  return library ? dlsym(library, entry) : nullptr;
}
