#include "platform/posix/program_folder.h"

#include <limits.h>
#include <unistd.h>

// $ORIGIN in a module's path would do the same for modules, but not in a sanitizer build, where it
// stands for the folder of the sanitizer's library.
std::string ProgramFolder() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0) return {};
  const std::string program(path, static_cast<size_t>(length));
  return program.substr(0, program.rfind('/'));
}
