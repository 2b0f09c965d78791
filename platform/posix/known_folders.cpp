#include "platform/known_folders.h"

#include <cstdlib>
#include <string>

#include "platform/path_text.h"

WideString SettingsFolder() {
  // A relative XDG_CONFIG_HOME is invalid by its own rules and counts as not set.
  const char* config = std::getenv("XDG_CONFIG_HOME");
  if (config && config[0] == '/') return WidePath(std::string(config) + "/CorvaneMap");
  const char* home = std::getenv("HOME");
  if (home && *home) return WidePath(std::string(home) + "/.config/CorvaneMap");
  return {};
}
