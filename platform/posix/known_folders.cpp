#include "platform/known_folders.h"

#include <cstdlib>
#include <string>

#include "platform/path_text.h"

namespace {

// The folder of the program in the one that `variable` names, or in `inHome`. A relative path in
// such a variable is invalid by its own rules and counts as not set.
WideString ProgramFolderIn(const char* variable, const char* inHome) {
  const char* parent = std::getenv(variable);
  if (parent && parent[0] == '/') return WidePath(std::string(parent) + "/CorvaneMap");
  const char* home = std::getenv("HOME");
  if (home && *home) return WidePath(std::string(home) + inHome + "/CorvaneMap");
  return {};
}

}  // namespace

WideString SettingsFolder() { return ProgramFolderIn("XDG_CONFIG_HOME", "/.config"); }

WideString CacheFolder() { return ProgramFolderIn("XDG_CACHE_HOME", "/.cache"); }

WideString DataFolder() { return ProgramFolderIn("XDG_DATA_HOME", "/.local/share"); }
