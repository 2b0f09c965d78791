#include "platform/known_folders.h"

#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include "platform/path_text.h"

namespace {

// Where the desktop notes the folders of a user.
constexpr std::string_view kFoldersFile = "/user-dirs.dirs";
constexpr std::string_view kDownloadKey = "XDG_DOWNLOAD_DIR=\"";
constexpr std::string_view kHomeMark = "$HOME";

// The folder that a file names; empty when it names none. Such a folder is absolute, or begins with
// the home.
std::string NamedDownloadFolder(const std::string& file, const std::string& home) {
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) {
    if (!line.starts_with(kDownloadKey)) continue;
    std::string folder = line.substr(kDownloadKey.size());
    folder = folder.substr(0, folder.find('"'));
    if (folder.starts_with(kHomeMark)) folder.replace(0, kHomeMark.size(), home);
    if (folder.starts_with('/')) return folder;
  }
  return {};
}

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

WideString StateFolder() { return ProgramFolderIn("XDG_STATE_HOME", "/.local/state"); }

WideString DownloadFolder() {
  const char* const home = std::getenv("HOME");
  if (!home || !*home) return {};
  const char* const config = std::getenv("XDG_CONFIG_HOME");
  const std::string folder =
      NamedDownloadFolder((config && config[0] == '/' ? config : std::string(home) + "/.config") +
                              std::string(kFoldersFile),
                          home);
  return WidePath(folder.empty() ? std::string(home) + "/Downloads" : folder);
}
