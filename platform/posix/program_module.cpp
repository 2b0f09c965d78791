#include "platform/program_module.h"

#include <string>

#include <dlfcn.h>
#include <limits.h>
#include <unistd.h>

namespace {

// The folder of the running program. $ORIGIN in the module's path would do the same, but not in a
// sanitizer build, where it stands for the folder of the sanitizer's library.
std::string ProgramFolder() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0) return {};
  const std::string program(path, static_cast<size_t>(length));
  return program.substr(0, program.rfind('/'));
}

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
